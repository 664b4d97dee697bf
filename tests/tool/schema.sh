#!/usr/bin/env bash
# The schemas of records: of one message, and of all by their names.
#   schema.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

kovra schema free-ram
expect 0 '{
  "$schema": "https://json-schema.org/draft/2020-12/schema",
  "$id": "urn:kovra:1:free-ram",
  "title": "free-ram",
  "description": "free RAM",
  "type": "object",
  "properties": {
    "bytes_free": {
      "type": "integer",
      "minimum": 0,
      "maximum": 4294967295
    }
  },
  "additionalProperties": false
}' ""

# Without a name there are all messages, those that are only written as well, in their order.
kovra schema
expectStatus 0
all=$out
kovra list --format json
names=$(jq -r '.[].name' <<<"$out")
checks=$((checks + 1))
[[ $(jq -r keys_unsorted[] <<<"$all") == "$names" ]] || complain "the messages are not those of list"
for name in $names; do
  kovra schema "$name"
  expectStatus 0
  same "standard error" "" "$err"
  checks=$((checks + 1))
  [[ $(jq -S . <<<"$out") == "$(jq -S --arg name "$name" '.[$name]' <<<"$all")" ]] ||
    complain "$name: alone and among all it is not the same"
done

kovra schema -o schema.json free-ram
expect 0 "" ""
checks=$((checks + 1))
[[ $(jq -r .title schema.json) == free-ram ]] || complain "the file holds another schema"
kovra schema -o no/schema.json free-ram
expectStatus 3
checks=$((checks + 1))
"$tool" schema >/dev/full 2>"$work/err"
[[ $? == 3 ]] || complain "a full disk goes unnoticed"

# Hostile arguments.
help="Try 'kovra schema --help'."
kovra schema fre-ram
expect 2 "" "kovra: error: MESSAGE: unknown message \"fre-ram\". Did you mean \"free-ram\"?
$help"
unknown="; 'kovra list' names those that are read"
kovra schema $'x\e[2J\n<b>\xff'
expect 2 "" "kovra: error: MESSAGE: unknown message \"x\\x1b[2J\\n<b>\\xff\"$unknown
$help"
kovra schema "$(printf 'a%.0s' {1..5000})"
expectStatus 2
kovra schema free-ram free-flash
expectStatus 2

finish

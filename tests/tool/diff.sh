#!/usr/bin/env bash
# `kovra diff` compares what two replies say, for people and as a patch that makes one record of the
# other.
#   diff.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

# compared STATUS TEXT [OPTION]...: of the replies a.xml and b.xml.
compared() {
  local status=$1 text=$2
  shift 2
  kovra diff "$@" a.xml b.xml
  expect "$status" "$text" ""
}
# replies A B: what stands in a configuration.
replies() {
  printf '<configuration>%s</configuration>' "$1" >a.xml
  printf '<configuration>%s</configuration>' "$2" >b.xml
}

cat >patch.py <<'END'
"""Applies patches of RFC 6902 to records: patch.py FOLDER..., each with the files before.json, after.json
(records, or what holds one), patch.json and call: how kovra ended, and how it was called."""
import json
import sys


def load(name):
    whole = json.load(open(name))
    return whole["readings"][0]["record"] if "readings" in whole else whole


def apply(step, record):
    names = [n.replace("~1", "/").replace("~0", "~") for n in step["path"].split("/")[1:]]
    at = record
    for name in names[:-1]:
        at = at[int(name)] if isinstance(at, list) else at[name]
    last = int(names[-1]) if isinstance(at, list) else names[-1]
    exists = last < len(at) if isinstance(at, list) else last in at
    if step["op"] == "add" and isinstance(at, list):
        assert last <= len(at), step
        at.insert(last, step["value"])
    elif step["op"] == "add":
        assert not exists, step
        at[last] = step["value"]
    elif step["op"] == "replace":
        assert exists, step
        at[last] = step["value"]
    else:
        assert step["op"] == "remove" and exists, step
        del at[last]


def spelled(record):
    return json.dumps(record, sort_keys=True)


for folder in sys.argv[1:]:
    status, called = open(f"{folder}/call").read().split("\n", 1)
    try:
        before, patch, after = (load(f"{folder}/{name}.json") for name in ("before", "patch", "after"))
        if int(status) != (spelled(before) != spelled(after)):
            print(f"{called}: exit status {status}")
        for step in patch:
            apply(step, before)
        if spelled(before) != spelled(after):
            print(f"{called}: not the second record")
    except (AssertionError, LookupError, TypeError, ValueError) as problem:
        print(f"{called}: no patch of the first: {problem!r}")
END
# keep BEFORE AFTER: the last call's patch makes the second record of the first, which is tried in the end.
keep() {
  local folder
  folder=$(mktemp -d patched.XXXX)
  cp "$1" "$folder/before.json"
  cp "$2" "$folder/after.json"
  printf %s "$out" >"$folder/patch.json"
  printf '%s\n' "$status" "$called" >"$folder/call"
  checks=$((checks + 2))
}
# patched A B [--as NAME]
patched() {
  local a=$1 b=$2
  shift 2
  "$tool" decode --format json --show-secrets "$@" "$a" >before.json
  "$tool" decode --format json --show-secrets "$@" "$b" >after.json
  kovra diff --format json --show-secrets "$@" "$a" "$b"
  keep before.json after.json
}

# Every kind of value.
replies '<lcd_contrast min="0" max="63">40</lcd_contrast><error_control>med</error_control><standby_timeout>30</standby_timeout>' \
  '<lcd_contrast min="0" max="63">45</lcd_contrast><error_control>high</error_control><standby_timeout>31</standby_timeout>'
compared 1 "~ lcd_contrast: 40 [0..63] -> 45 [0..63]
~ error_control: med (1) -> high (2)
~ standby_timeout: 30 -> 31"
patched a.xml b.xml
replies '<ethernet><ip_address>10.0.0.1</ip_address></ethernet><wireless><ssid>a</ssid><channel>1</channel></wireless>' \
  '<ethernet><ip_address>10.0.0.2</ip_address><dhcp>enabled</dhcp></ethernet><wireless><channel>1</channel></wireless><error_control>loud</error_control>'
kovra diff a.xml b.xml
expectStatus 1
holds "differences" '~ ethernet.ip_address: "10.0.0.1" -> "10.0.0.2"
+ ethernet.dhcp: *
- wireless.ssid: "a"
+ error_control: "loud" (*, unknown)
' "$out"
patched a.xml b.xml
patched b.xml a.xml

# Lists by their numbers; what is added or removed is told value by value.
jobs() {
  printf '<get_job_list>'
  for id; do printf '<job><action_id>%d</action_id><uuid>u%d</uuid></job>' "$id" "$id"; done
  printf '</get_job_list>'
}
jobs 1 2 >a.xml
jobs 1 3 4 5 >b.xml
kovra diff a.xml b.xml
expectStatus 1
holds "differences" '~ jobs\[1].action_id: 2 -> 3
~ jobs\[1].uuid: "u2" -> "u3"
+ jobs\[2].action_id: 4
+ jobs\[2].uuid: "u4"
+ jobs\[3].action_id: 5
+ jobs\[3].uuid: "u5"*' "$out"
patched a.xml b.xml
patched b.xml a.xml
kovra diff --format json b.xml a.xml
same "the removals, the last first" "/jobs/3 /jobs/2" "$(jq -r '.[] | select(.op == "remove").path' <<<"$out" | paste -sd' ')
"

# The same is told by nothing.
kovra diff a.xml a.xml
expect 0 "" ""
kovra diff --format json a.xml a.xml
expect 0 "[]" ""

# Other types: JSON against JSON. Whole numbers with and without a sign are one type.
echo '{"a": 1, "b": [1, 2, {"c": null}], "d": 1, "e/~": 1, "g": {"h": {}}}' >a.json
echo '{"a": "1", "b": {"x": 1}, "d": 1.0, "e/~": -2, "g": {"h": []}}' >b.json
kovra diff a.json b.json
expect 1 '! a: a whole number 1 -> a text "1"
! b: a list [1, 2, {c: (nothing)}] -> a record {x: 1}
! d: a whole number 1 -> a measure 1
~ e/~: 1 -> -2
! g.h: a record (empty) -> a list (none)' ""
kovra diff --format json a.json b.json
keep a.json b.json

# Secrets are only told to differ, also in JSON, which does not say what is one.
secret() { printf '<wireless><key>%s</key></wireless>' "$1"; }
replies "$(secret hush)" "$(secret quiet)"
compared 1 "~ wireless.key: differ"
compared 1 '~ wireless.key: "hush" -> "quiet"' --show-secrets
kovra diff --format json a.xml b.xml
expect 1 "[]" "kovra: warning: wireless.key: a secret, left out of the patch; see --show-secrets"
patched a.xml b.xml
for file in a b; do
  "$tool" decode --format json --show-secrets $file.xml >$file.json
  jq .readings[0].record $file.json >$file.alone.json
  "$tool" decode --format json $file.xml >$file.masked.json
done
for pair in "a.xml b.json" "a.json b.xml" "a.json b.json" "a.alone.json b.xml" \
  "a.alone.json b.alone.json" "a.json b.alone.json"; do
  # shellcheck disable=SC2086 # two files
  kovra diff $pair
  expect 1 "~ wireless.key: differ" ""
done
kovra diff a.masked.json b.xml
expect 0 "? wireless.key: not compared, masked in the first" ""
kovra diff a.xml b.masked.json
expect 0 "? wireless.key: not compared, masked in the second" ""
kovra diff a.masked.json b.masked.json
expect 0 "? wireless.key: not compared, masked in both" ""
kovra diff --format json a.xml b.masked.json
expect 0 "[]" "kovra: warning: wireless.key: masked, not compared"
replies "" "$(secret hush)"
compared 1 "+ wireless.key: ******"
kovra diff b.xml a.xml
expect 1 "- wireless.key: ******" ""
kovra diff --format json a.xml b.xml
expectStatus 1
same "the patch" '[{"op":"add","path":"/wireless","value":{}}]' "$(jq -c . <<<"$out")
"
same "standard error" "kovra: warning: wireless.key: a secret, left out of the patch; see --show-secrets" "$err"
# What is left of it can be applied, and no mask gets into any record.
replies "$(secret hush)" "<error_control>high</error_control>$(secret quiet)"
"$tool" decode --format json --show-secrets a.xml >before.json
"$tool" decode --format json --show-secrets b.xml | jq '.readings[0].record | .wireless.key = "hush"' >after.json
kovra diff --format json a.xml b.xml
keep before.json after.json
printf '<data><mag><track1>;4711?</track1></mag></data>' >a.xml
printf '<data><mag><track1>;4712?</track1></mag></data>' >b.xml
compared 1 "~ track1: differ"

# A reply is the same as the JSON that is printed of it, and every sample makes every other one of
# its root, both ways.
previous='' previousRoot=''
while read -r root file; do
  "$tool" decode --format json --show-secrets "$file" >said.json
  kovra diff "$file" said.json
  expect 0 "" ""
  if [[ $root == "$previousRoot" && $(jq -s '.[0].readings | length' said.json) == 1 ]]; then
    name=$(jq -r '.readings[0].document' said.json)
    patched "$previous" "$file" --as "$name"
    patched "$file" "$previous" --as "$name"
  fi
  previous=$file previousRoot=$root
done < <(find "$samples" -name '*.xml' ! -name '*.bad.xml' | sort | while read -r file; do
  echo "$("$tool" decode --format json "$file" | jq -r .root) $file"
done | sort)

# Several documents of one root: a heading for each; a patch is for one.
printf '<get_sensor_status><sensor_states><door_open>yes</door_open></sensor_states></get_sensor_status>' >a.xml
sed 's/yes/no/' a.xml >b.xml
kovra diff a.xml b.xml
expect 1 'sensor-status:
~ door_open: yes -> no
sensor-states:
~ door_open: "yes" -> "no"' ""
kovra diff --format json a.xml b.xml
expect 3 "" "a.xml: error: holds several documents; choose one of them with --as"
patched a.xml b.xml --as sensor-states
"$tool" decode --format json a.xml >a.json
kovra diff --as sensor-states a.json b.xml
expectStatus 1
holds "differences" '~ door_open: "yes" -> "no"*' "$out"
echo '{}' >alone.json
kovra diff alone.json b.xml
expect 3 "" "alone.json: error: does not tell its document; choose one with --as"

# Refused.
echo '<get_free_ram/>' >c.xml
kovra diff a.xml c.xml
expect 3 "" "c.xml: error: found root <get_free_ram>; expected <get_sensor_status>, as in a.xml"
kovra diff a.json c.xml
expectStatus 3
refused() {  # TEXT MESSAGE
  printf '%s' "$1" >bad
  echo before >result
  kovra diff -o result bad a.xml
  expectStatus 3
  holds "message" "$2" "$err"
  same "what was there" before "$(<result)
"
}
refused '' 'bad:1:1: error: found an empty text*'
refused '<a/>' 'bad:1:1: error: found root element <a>*'
refused '<get_sensor_status>' 'bad:1:20: error: *'
refused '{"a": ' 'bad:1:*: error: *'
refused '{"a": 1, "a": 2}' 'bad:1:10: error: *'
refused $'{"a": "\xff"}' 'bad:1:*: error: *'
refused '{"readings": []}' 'bad: error: holds no reading*'
refused '{"readings": [{"document": "x"}]}' 'bad: error: holds a reading without a record*'
refused '{"readings": [{"document": 5, "record": {}}]}' 'bad: error: holds a reading without a record*'
refused '{"readings": [{"document": "x", "record": 5}]}' 'bad: error: holds a reading without a record*'
refused '{"kovra": 1, "ok": false, "error": {}}' 'bad: error: holds no reading*'
refused '{"code": 1, "name": "x"}' 'bad: error: holds no record*'
kovra diff missing.xml a.xml
expect 3 "" "missing.xml: error: No such file or directory"
kovra diff --max-size 10 a.xml b.xml
expect 3 "" "a.xml: error: larger than 10 bytes; see --max-size"

# What only one of two readings says was nothing in the other; a byte order mark stands before JSON, too.
printf '\xef\xbb\xbf {"readings": [{"document": "free-ram", "record": {"bytes_free": 1}}]}' >one.json
printf '{"readings": [{"document": "free-ram", "record": {"bytes_free": 1}},
  {"document": "free-flash", "record": {"bytes_free": 2}}]}' >two.json
kovra diff one.json two.json
expectStatus 1
holds "standard output" "*+ *bytes_free: 2" "${out%$'\n'}"
kovra diff two.json one.json
holds "standard output" "*- *bytes_free: 2" "${out%$'\n'}"
kovra diff --as free-flash one.json two.json
expect 3 "" "one.json: error: holds no reading of free-flash"

# Nothing drives the terminal.
printf '{"a\\u001b[2J": "\\u001b[31m\\u202e"}' >a.json
printf '{"a\\u001b[2J": "x\\ny", "b\\n": {}}' >b.json
kovra diff a.json b.json
expect 1 '~ a\x1b[2J: "\x1b[31m\u202e" -> "x\ny"
+ b\n: (empty)' ""

# Standard input, colours, a file.
replies '<standby_timeout>30</standby_timeout><ethernet/>' '<standby_timeout>31</standby_timeout>'
kovra diff - b.xml <a.xml
expect 1 "~ standby_timeout: 30 -> 31" ""
replies '<standby_timeout>30</standby_timeout>' '<error_control>med</error_control>'
kovra diff --color always a.xml b.xml
expect 1 $'\e[1;31m- standby_timeout: 30\e[0m\n\e[32m+ error_control: med (1)\e[0m' ""
kovra diff -o result a.xml b.xml
expect 1 "" ""
same "the file" $'- standby_timeout: 30\n+ error_control: med (1)' "$(<result)
"

# The command line.
for arguments in "a.xml" "a.xml b.xml c.xml" "- -" "--format yaml a.xml b.xml" "--as nothing a.xml b.xml" ""; do
  # shellcheck disable=SC2086 # several
  kovra diff $arguments
  expectStatus 2
  same "standard output" "" "$out"
done

# Many members take no time that grows faster than they do.
for end in 1 2; do
  awk -v end=$end 'BEGIN { printf "{"; for (i = 0; i < 100000; ++i) printf "\"m%d\": %d,", i, i * end;
    print "\"z\": [" end "]}" }' >many$end.json
done
checks=$((checks + 1))
timeout 60 "$tool" diff --max-size 100000000 many1.json many2.json >lines
[[ $? == 1 && $(wc -l <lines) == 100000 ]] || complain "many members: $(wc -l <lines)"

python3 patch.py patched.*/ >wrong || complain "the patches were not tried"
[[ ! -s wrong ]] || complain "$(<wrong)"

finish

#!/usr/bin/env bash
# The list of messages, for people and for programs.
#   list_messages.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

kovra list
expectStatus 0
table=$out
kovra list --format table
same "standard output" "${table%$'\n'}" "$out"

kovra list --format json
expectStatus 0
same "standard error" "" "$err"
json=$out
jsonIs() {  # jq's program, expected
  checks=$((checks + 1))
  local found
  found=$(jq -c "$1" <<<"$json")
  [[ $found == "$2" ]] || complain "$1 gives" "$found"
}
checks=$((checks + 1))
[[ $(jq -r '.[] | select(.read) | .name' <<<"$json") == "$(cut -d' ' -f1 <<<"${table%$'\n'}")" ]] ||
  complain "what is read is not what the table lists"
message() { echo ".[] | select(.name == \"$1\")"; }
member() { echo "$(message "$1") | .members[] | select(.name == \"$2\")"; }
jsonIs 'map(select(.written | not) | keys_unsorted) | unique' \
  '[["name","title","roots","read","written","members"]]'
jsonIs 'map(select(.written) | keys_unsorted) | unique' \
  '[["name","title","roots","read","written","members","command","purpose","required","choices"]]'
jsonIs "$(message device-control-motor) | [.command, .required, (.choices | length)]" \
  '["device-control motor",["state"],0]'
jsonIs "$(message printer-id) | .choices[0] | [.name, .form, .words, .required]" \
  '["fields","words",["model","printhead"],true]'
jsonIs "$(message configuration) | .choices[] | select(.name == \"card\") | [.form, .least, .most]" \
  '["number",1,2]'
jsonIs "$(message free-ram)" '{"name":"free-ram","title":"free RAM","roots":["get_free_ram"],"read":true,"written":false,"members":[{"name":"bytes_free","kind":"natural","elements":["bytes_free"],"secret":false}]}'
jsonIs "$(message device-control-motor) | [.read, .written, .roots]" '[false,true,[]]'
jsonIs "$(message configuration) | [.read, .written, .roots[0]]" '[true,true,"configuration"]'
jsonIs "$(member job-list jobs) | [.kind, .elements, (.members | map(.name))]" \
  '["list",["job"],["action_id","uuid","print_state"]]'
jsonIs "$(member general-status printer_state) | .words[] | select(.name == \"offline\")" \
  '{"code":7,"name":"offline"}'
jsonIs "$(member configuration wireless) | .members[] | select(.name == \"ssid\") | .most_bytes" 33
jsonIs "$(member general-status alarms) | .form" '"hexadecimal"'
jsonIs '[.. | objects | .form? // empty] | unique - ["flag", "word", "words", "number"]' \
  '["hardware_address","hexadecimal","ipv4","setting"]'
jsonIs "$(member job-status copies_done) | .elements" '["status_printing/copies_done"]'
jsonIs "$(member magnetic-tracks track1) | .secret" true
jsonIs '[.. | objects | .kind? // empty] | unique' \
  '["flag","integer","keyword","list","natural","real","record","text"]'

# The kinds of findings: each line of the table is one of the list, which has what explaining it says.
kovra list --findings
expectStatus 0
table=$out
kovra list --findings --format json
expectStatus 0
json=$out
checks=$((checks + 1))
[[ $(jq -r '.[] | [.id, .severity, .kind, .title] | join(" ")' <<<"$json") == \
  "$(tr -s ' ' <<<"${table%$'\n'}")" ]] || complain "the findings differ" "$table"
jsonIs 'map(.message) | index("")' null
jsonIs '.[-1].id' '"XML"'
for id in K001 K104 K118 XML; do
  kovra explain --format json "$id"
  jsonIs ".[] | select(.id == \"$id\")" "$(jq -c '.findings[0]' <<<"$out")"
done
kovra list --format json
json=$out

kovra list -o list.json --format json
expect 0 "" ""
checks=$((checks + 1))
[[ $(<list.json) == "${json%$'\n'}" ]] || complain "the file holds something else"
checks=$((checks + 1))
"$tool" list >/dev/full 2>"$work/err"
[[ $? == 3 ]] || complain "a full disk goes unnoticed"

kovra vocabulary
words=$out
kovra vocabulary --format json
expectStatus 0
checks=$((checks + 1))
[[ $(jq -r '.[]' <<<"$out") == "${words%$'\n'}" ]] || complain "the list has other words"
kovra vocabulary -o words --format dict
expect 0 "" ""
checks=$((checks + 1))
[[ $(tr -d '"' <words) == "${words%$'\n'}" ]] || complain "the file has other words"

finish

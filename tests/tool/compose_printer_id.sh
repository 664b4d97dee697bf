#!/usr/bin/env bash
# `kovra compose printer-id` makes the request from the JSON that `kovra decode` prints.
#   compose_printer_id.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

"$tool" decode --format json "$samples/identity/full.xml" >full.json
model='    <printer_model>HX-500 Retransfer</printer_model>'
printhead='    <printhead_serial>PH-0098-1145</printhead_serial>'
document() {
  printf '<?xml version="1.0" encoding="UTF-8" ?>\n<printer_id>\n%s\n</printer_id>' "$1"
}

kovra compose printer-id full.json --fields model
expect 0 "$(document "$model")" ""
kovra compose printer-id full.json --fields printhead
expect 0 "$(document "$printhead")" ""
kovra compose printer-id full.json --fields printhead,model
expect 0 "$(document "$model"$'\n'"$printhead")" ""
jq '.readings[0].record' full.json | "$tool" compose printer-id --fields model >out.xml
[[ $(<out.xml) == "$(document "$model")" ]] || complain "the record alone: $(<out.xml)"

echo '{"printer_model": 500}' >wrong.json
kovra compose printer-id wrong.json --fields model
expect 1 "" 'wrong.json: error: printer_model: found a number; expected a text'
echo '{"printer_serial": -1}' >wrong.json
kovra compose printer-id wrong.json --fields model
expect 1 "" 'wrong.json: error: printer_serial: found a number; expected a whole number from 0 to 4294967295
wrong.json: error: printer_model: found nothing; expected a value: the document is made of it'

echo '{"printer_model": "HX-500 Retransfer"}' >part.json
kovra compose printer-id part.json --fields model
expect 0 "$(document "$model")" ""
kovra compose printer-id part.json --fields model,printhead
expectStatus 1
same "standard output" "" "$out"
holds "standard error" 'part.json: error: printhead_serial: found nothing; expected *' "$err"
kovra compose printer-id part.json --fields model,printhead --zero-missing
expect 0 "$(document "$model"$'\n'"    <printhead_serial></printhead_serial>")" ""

kovra compose printer-id --fields model full.json
expect 0 "$(document "$model")" ""

kovra compose printer-id full.json --fields serial
expectStatus 2
kovra compose printer-id full.json
expectStatus 2

finish

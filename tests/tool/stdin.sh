#!/usr/bin/env bash
# Standard input is read for "-" and when no file is named, and messages call it <stdin>.
#   stdin.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

cp "$samples/status/minimal.xml" .
minimal='general-status <get_general_status>
! printer_state  offline (7)'

kovra decode <minimal.xml
expect 0 "$minimal" ""
kovra decode - <minimal.xml
expect 0 "$minimal" ""
kovra decode minimal.xml - <minimal.xml
expect 0 "minimal.xml: $minimal

<stdin>: $minimal" ""

kovra decode </dev/null
expect 1 "" "<stdin>:1:1: error: found an empty text; expected an XML document"
kovra decode --max-size 10 <minimal.xml
expect 1 "" "<stdin>: error: larger than 10 bytes; see --max-size"
kovra decode <&-
expect 3 "" "<stdin>: error: Bad file descriptor"
kovra decode <.
expect 3 "" "<stdin>: error: Is a directory"

# In pieces, as networks bring it.
kovra decode < <(
  while IFS= read -rn1 letter; do
    printf %s "$letter"
    sleep 0.001
  done <minimal.xml
)
expect 0 "$minimal" ""

kovra decode < <(printf '<get_general_status><fan>1</fan><error>1</error></get_general_status>')
expect 0 "general-status <get_general_status>
! error  1" "<stdin>:1:21: warning: <fan>: unknown element, skipped"

# Only the text of the object may differ: the source is named as it was given.
kovra decode --format jsonl - <minimal.xml
same "standard output" '{"source":"-","kovra":1,"ok":true,"root":"get_general_status","readings":[{"document":"general-status","result":true,"record":{"printer_state":{"code":7,"name":"offline"}}}],"notes":[]}' "$out"
kovra decode --format json - <minimal.xml
expect 0 "$(<"$samples/status/minimal.json")" ""

finish

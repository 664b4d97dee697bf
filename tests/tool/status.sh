#!/usr/bin/env bash
# The exit status tells the worst of what happened, and one bad file does not stop the others.
#   status.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

cp "$samples"/status/{minimal,heating}.xml .
printf '<get_general_status><error>1</error>' >cut.xml
printf '<other/>' >other.xml
mkdir folder

minimal='general-status <get_general_status>
! printer_state  offline (7)'
cut='cut.xml:1:37: error: malformed: found the end of the text*</get_general_status>'$'\n'

kovra decode minimal.xml
expect 0 "$minimal" ""

kovra decode cut.xml
expectStatus 1
same "standard output" "" "$out"
holds "standard error" "$cut" "$err"

kovra decode other.xml
expectStatus 1
same "standard output" "" "$out"
holds "standard error" 'other.xml:1:1: error: found root element <other>; expected *' "$err"

kovra decode missing.xml
expect 3 "" "missing.xml: error: No such file or directory"
kovra decode folder
expect 3 "" "folder: error: Is a directory"
kovra decode ""
expect 3 "" ": error: No such file or directory"
touch closed.xml
chmod 0 closed.xml
if [[ ! -r closed.xml ]]; then  # whoever may read everything cannot see this
  kovra decode closed.xml
  expect 3 "" "closed.xml: error: Permission denied"
fi

# Going on: every good reply is shown, every bad one is told of, the highest status stays.
kovra decode missing.xml minimal.xml cut.xml minimal.xml
expectStatus 3
same "standard output" "minimal.xml: $minimal

minimal.xml: $minimal" "$out"
holds "standard error" "missing.xml: error: No such file or directory"$'\n'"$cut" "$err"
kovra decode cut.xml minimal.xml
expectStatus 1
kovra decode minimal.xml cut.xml minimal.xml
expectStatus 1

# --as reads a reply as one document, or not at all.
kovra decode --as general-status minimal.xml
expect 0 "$minimal" ""
kovra decode --as general-status minimal.xml other.xml
expectStatus 1
same "standard output" "minimal.xml: $minimal" "$out"
holds "standard error" "other.xml:1:1: error: found root element <other>; expected <get_general_status>"$'\n' "$err"

# A limit keeps one input from eating all memory, be it endless.
kovra decode --max-size "$(wc -c <minimal.xml)" minimal.xml
expect 0 "$minimal" ""
kovra decode --max-size "$(($(wc -c <minimal.xml) - 1))" minimal.xml heating.xml
expect 1 "" "minimal.xml: error: larger than $(($(wc -c <minimal.xml) - 1)) bytes; see --max-size
heating.xml: error: larger than $(($(wc -c <minimal.xml) - 1)) bytes; see --max-size"
kovra decode --max-size 100000 /dev/zero
expect 1 "" "/dev/zero: error: larger than 100000 bytes; see --max-size"
kovra decode /dev/zero
expect 1 "" "/dev/zero: error: larger than 8388608 bytes; see --max-size"

finish

#!/usr/bin/env bash
# Lists of files: one on each line or NUL-separated, from a file or from standard input.
#   list.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

sources() { jq -r .source <<<"$out" | paste -sd'|'; }
hasSources() {  # expected
  checks=$((checks + 1))
  [[ $(sources) == "$1" ]] || complain "$called: read $(sources), not $1" "$err"
}

for name in one two "with blank " $'with\nend' three; do
  cp "$samples/status/minimal.xml" "$name"
done

printf 'one\n\nwith blank \ntwo' >list
kovra decode --format jsonl --errors stderr --files-from list
expectStatus 0
hasSources 'one|with blank |two'
kovra decode --format jsonl --errors stderr --files-from - <list
expectStatus 0
hasSources 'one|with blank |two'
kovra decode --format jsonl --errors stderr --files-from list three
expectStatus 0
hasSources 'three|one|with blank |two'

printf 'one\0with\nend\0\0two\0' >list0
kovra decode --format jsonl --errors stderr -0 --files-from list0
expectStatus 0
hasSources 'one|with|end|two'
kovra decode --format jsonl --errors stderr --null --files-from=- <list0
expectStatus 0
hasSources 'one|with|end|two'

# Several may come, so each table names its file; none may come, and that is fine.
echo one >single
kovra decode --files-from single
expect 0 "one: general-status <get_general_status>
! printer_state  offline (7)" ""
kovra decode --files-from /dev/null <one
expect 0 "" ""

# What is wrong with a name or with the list itself.
printf 'one\nmissing\ntwo\n' >list
kovra decode --format jsonl --errors stderr --files-from list
expectStatus 3
hasSources 'one|two'
same "standard error" "missing: error: No such file or directory" "$err"
kovra decode --files-from nolist
expect 3 "" "nolist: error: No such file or directory"
kovra decode --files-from .
expect 3 "" ".: error: Is a directory"
kovra decode --files-from list0
expect 3 "" 'one\x00with: error: a NUL byte in the name of a file
end\x00\x00two\x00: error: a NUL byte in the name of a file'
kovra decode --max-size 1000 --files-from /dev/zero
expect 3 "" "/dev/zero: error: a name of more than 65536 bytes in the list of files"

# Standard input cannot be both.
echo - >dash
kovra decode --format jsonl --errors stderr --files-from dash <one
expectStatus 0
hasSources -
kovra decode --files-from - <dash
expect 3 "" "<stdin>: error: holds the names of files already"
kovra decode --files-from - - <dash
expect 3 "" "<stdin>: error: holds the names of files already
<stdin>: error: holds the names of files already"

# What is decoded is passed on before the tool waits for more names.
checks=$((checks + 1))
mkfifo names
"$tool" decode --format jsonl --errors stderr --files-from names >decoded &
exec 3>names
echo one >&3
for ((i = 0; i < 100; ++i)); do
  [[ -s decoded ]] && break
  sleep 0.1
done
[[ $(jq -r .source decoded) == one ]] || complain "the first of a slow list is held back"
exec 3>&-
wait

# A long list.
yes "$PWD/one" | head -n 30000 >long
checks=$((checks + 1))
kovra decode --format jsonl --errors stderr --files-from long
expectStatus 0
(($(wc -l <"$work/.out") == 30000)) || complain "of 30000 files $(wc -l <"$work/.out") were decoded"

finish

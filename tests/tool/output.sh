#!/usr/bin/env bash
# Output that cannot be written is an error, and data and messages come in a sensible order.
#   output.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

cp "$samples"/status/{minimal,unknown-elements}.xml .

fails() {  # reason, status, message: of a call whose output could not be written
  checks=$((checks + 1))
  [[ $2 == 3 && $3 == "kovra: error: standard output: $1" ]] || complain "$call: $2, $3"
}

for call in "decode minimal.xml" "decode --format json minimal.xml" "decode --help" "--help" \
  "--version" "list" "vocabulary"; do
  # shellcheck disable=SC2086 # words apart
  message=$("$tool" $call 2>&1 >/dev/full)
  fails "No space left on device" "$?" "$message"
  # shellcheck disable=SC2086
  message=$("$tool" $call 2>&1 >&-)
  fails "Bad file descriptor" "$?" "$message"
done

# Whoever has nothing to write needs no output.
checks=$((checks + 1))
message=$("$tool" decode /dev/null 2>&1 >&-)
[[ $? == 1 && $message == "/dev/null:1:1: error: found an empty text; "* ]] ||
  complain "a refusal with standard output closed: $message"

# A reader that leaves early ends the tool soon and without a word, as it ends other programs; but
# whoever made them go on all the same is told.
yes minimal.xml | {
  "$tool" decode --files-from - 2>"$work/err"
  echo "$?" >"$work/status"
} | head -n 1 >/dev/null
checks=$((checks + 1))
[[ $(<"$work/status") == 141 && ! -s $work/err ]] ||
  complain "a reader that leaves: $(<"$work/status")" "$(<"$work/err")"
(
  trap "" PIPE
  yes minimal.xml 2>/dev/null | {
    "$tool" decode --files-from - 2>"$work/err"
    echo "$?" >"$work/status"
  } | head -n 1 >/dev/null
)
checks=$((checks + 1))
[[ $(<"$work/status") == 3 && $(<"$work/err") == "kovra: error: standard output: Broken pipe" ]] ||
  complain "a reader that leaves, and nobody dies of it: $(<"$work/status")" "$(<"$work/err")"

# Both streams in one place: a reply's notes stand behind its table and before the next one.
checks=$((checks + 1))
found=$("$tool" decode unknown-elements.xml missing.xml minimal.xml 2>&1)
expected='unknown-elements.xml: general-status <get_general_status>
  printer_state   standby (4)
  num_jobs_total  17
unknown-elements.xml:3:3: warning: <firmware>: unknown element, skipped
unknown-elements.xml:5:3: warning: <cover>: unknown element, skipped
unknown-elements.xml:9:3: warning: <Error>: unknown element, skipped
unknown-elements.xml:11:3: warning: <power_saving>: unknown element, skipped
missing.xml: error: No such file or directory

minimal.xml: general-status <get_general_status>
! printer_state  offline (7)'
[[ $found == "$expected" ]] || complain "order" "$(diff <(echo "$expected") <(echo "$found"))"

# In JSON the notes are data.
kovra decode --format json unknown-elements.xml
expectStatus 0
same "standard error" "" "$err"

# What is standard output already is not replaced, whatever its name.
{
  echo before
  "$tool" decode -o /dev/stdout "$samples/status/minimal.xml"
  echo behind
} >log 2>err
holds "what others wrote, and the table" $'before\ngeneral-status*\nbehind' "$(<log)"

# Where nothing could be read there is nothing to be told: the file of yesterday stays, and where
# there was none there is none.
printf 'minimal.xml\n' >names
mkdir folder
for call in decode "decode --format flat" "decode --format json" "decode --format prom" \
  "decode --format jsonl --errors stderr" "decode --stream" "decode --lines" check \
  "check --format json" coverage "coverage --format json" report redact; do
  for inputs in missing.xml "missing.xml folder" "--files-from missing" "missing.xml lost.xml -j 3"; do
    [[ $call != redact || $inputs == missing.xml ]] || continue # it takes one, or a folder
    echo yesterday >kept
    # shellcheck disable=SC2086 # words apart
    kovra $call $inputs --output kept
    expectStatus 3
    same "standard output" "" "$out"
    same "the file" "yesterday" "$(<kept)
"
    # shellcheck disable=SC2086
    kovra $call $inputs --output new
    expectStatus 3
    checks=$((checks + 1))
    [[ ! -e new ]] || complain "$called: there is a new file" "$(<new)"
  done
done
# What is too large was not read either.
kovra decode missing.xml minimal.xml --max-size 5 --output kept
expectStatus 3
same "the file" "yesterday" "$(<kept)
"
# But one that was read is told of, and so are inputs that are data themselves.
kovra decode missing.xml minimal.xml --output kept
expectStatus 3
holds "the file" "*printer_state  offline*" "$(<kept)"
echo '<nobody/>' >refused.xml
echo yesterday >kept
kovra decode missing.xml refused.xml --output kept
expectStatus 3
same "the file" "" "$(<kept)"
kovra decode --format jsonl missing.xml --output kept
expectStatus 3
holds "the file" '{"source":"missing.xml",*' "$(<kept)"
: >none
kovra decode --files-from none --output kept
expectStatus 0
same "the file" "" "$(<kept)"
# Standard output has what there is.
kovra check --format json missing.xml
expectStatus 3
same "unreadable" "1" "$(jq .unreadable <<<"$out")
"
kovra check --format json missing.xml --output /dev/stdout
expectStatus 3
same "unreadable" "1" "$(jq .unreadable <<<"$out")
"

finish

#!/usr/bin/env bash
# A line for each value, and the way back.
#   flat.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

cp "$samples/config/full.xml" reply.xml
cp "$samples/status/minimal.xml" .

kovra decode --format flat minimal.xml
expect 0 '# general-status <get_general_status>
printer_state = "offline"' ""
printf '<get_general_status><printer_state>a "b" \033[2J</printer_state><error>1</error></get_general_status>' >odd.xml
kovra decode --format flat odd.xml minimal.xml
expectStatus 0
same "standard output" '# odd.xml: general-status <get_general_status>
odd.xml: printer_state = 38  # "a "b" \x1b[2J"
odd.xml: error = 1
# minimal.xml: general-status <get_general_status>
minimal.xml: printer_state = "offline"' "$out"
holds "standard error" '*: unknown word *' "$err"

# Secrets are masked, and a masked one is none.
kovra decode --format flat reply.xml
holds "standard output" '*wireless.key = "\*\*\*\*\*\*"*' "$out"
printf '%s' "$out" >masked
kovra compose configuration --sections wireless masked
expectStatus 1

# Back again: the same documents as by JSON.
kovra decode --format flat --show-secrets reply.xml
printf '%s' "$out" >flat
kovra decode --format json --show-secrets reply.xml
printf '%s' "$out" >json
for section in wireless ethernet cards lamination usage_counters transfer_settings; do
  kovra compose configuration --sections "$section" json
  byJson=$out
  kovra compose configuration --sections "$section" flat
  expectStatus 0
  checks=$((checks + 1))
  [[ $out == "$byJson" ]] || complain "$section: another document"
done
for kind in media caps; do
  reply=$(find "$samples/$kind" -name '*.xml' ! -name '*.bad.xml' | sort | head -n 1)
  message=$([[ $kind == caps ]] && echo capabilities || echo media)
  kovra decode --format json --show-secrets "$reply" && printf '%s' "$out" >json
  kovra decode --format flat --show-secrets "$reply" && printf '%s' "$out" >flat
  kovra compose "$message" json
  byJson="$status $out"
  kovra compose "$message" flat
  checks=$((checks + 1))
  [[ "$status $out" == "$byJson" ]] || complain "$reply: another document" "$err"
done

# What is not right is told with its line.
wrong() {  # lines, message
  printf '%s\n' "$1" >wrong
  kovra compose configuration --sections ethernet wrong
  expect 1 "" "wrong:$2"
}
wrong $'# a\nb' '2:1: error: found a line without " = "; expected path = value'
wrong $'# \na[1] = 1' "2:1: error: found a path that the lines before do not lead to; expected members of records, and entries in their order"
printf 'a = "x\n' >wrong
kovra compose configuration --sections ethernet wrong
expectStatus 1
holds "standard error" 'wrong:1:5: error: malformed value: *' "$err"
checks=$((checks + 1))
[[ $err != *'"x'* ]] || complain "a value in a message" "$err"
{
  for ((i = 0; i < 1000; ++i)); do echo "a$i = 1"; done
  for ((i = 0; i < 16000; ++i)); do echo "b[$i] = 1"; done
} >wrong
kovra compose configuration --sections ethernet wrong
expect 1 "" "wrong:16385:1: error: found more than 16384 values in all"

finish

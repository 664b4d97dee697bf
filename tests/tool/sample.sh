#!/usr/bin/env bash
# Samples: what the command line says of them. What they tell is tested with the tool's parts.
#   sample.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

# The same for a seed, on every machine.
first='<?xml version="1.0" encoding="UTF-8"?>
<get_free_ram>
  <bytes_free>65</bytes_free>
</get_free_ram>'
kovra sample free-ram
expect 0 "$first" ""
kovra sample free-ram --seed 1
expect 0 "$first" ""
kovra sample free-ram --seed 18446744073709551615
expectStatus 0
kovra sample general-status --seed 3
third=$out
kovra sample general-status --count 3 -o three.xml
expect 0 "" ""
checks=$((checks + 1))
[[ $(<three.xml) == *"${third%$'\n'}" && $(grep -c '^</' three.xml) == 3 ]] ||
  complain "three replies do not end with the third"
kovra decode --stream --format jsonl three.xml
expectStatus 0
holds "standard error" '*: 3 *' "$err"

# said PATH=VALUE JSON MESSAGE: the reply says it, whatever is odd beside it.
said() {
  local odd
  for odd in '' --odd; do
    # shellcheck disable=SC2086 # none for none
    kovra sample "$3" --set "$1" --seed 5 $odd
    expectStatus 0
    "$tool" decode --as "$3" --format json --show-secrets <"$work/.out" >decoded.json
    checks=$((checks + 1))
    local found
    found=$(jq -c ".readings[0].record | .${1%%=*}" decoded.json)
    [[ $found == "$2" ]] || complain "$called says $found" "$out"
  done
}
said printer_state=idle '{"code":2,"name":"idle"}' general-status
said printer_lock=locked true general-status
said 'jobs[4].uuid=a&b<c>"d' '"a&b<c>\"d"' job-list
said 'error=-17' -17 general-status
said lcd_contrast.max=90 90 configuration
said wireless.ip_address=192.0.2.77 '"192.0.2.77"' configuration
said wireless.key=secret '"secret"' configuration
said input_feeder=77 77 sensor-information
said lam_ndc_rsp=OK '"OK"' laminator-response
said imageSharpeningLevels.high=yes true capabilities
said 'barcodes[1].name=Über' '"Über"' capabilities
kovra sample configuration --set lcd_contrast=5
kovra decode --format json < <(printf %s "$out")
checks=$((checks + 1))
[[ $(jq -c .readings[0].record.lcd_contrast <<<"$out") == '{"min":5,"max":5,"val":5}' ||
  $(jq -cS .readings[0].record.lcd_contrast <<<"$out") == '{"max":5,"min":5,"val":5}' ]] ||
  complain "a setting is not set" "$(jq .readings[0].record.lcd_contrast <<<"$out")"

wrong() {  # message, argument...
  local message=$1
  shift
  kovra sample "$@"
  expect 2 "" "kovra: error: $message
Try 'kovra sample --help'."
}
wrong "MESSAGE is required"
wrong 'MESSAGE: unknown message "job-lst". Did you mean "job-list"?' job-lst
wrong "MESSAGE: unknown message \"device-control-motor\"; 'kovra list' names those that are read" \
  device-control-motor
wrong '--set x: expected PATH=VALUE' free-ram --set x
wrong '--set =1: expected PATH=VALUE' free-ram --set =1
wrong '--set bytes_free: it is set already' free-ram --set bytes_free=1 --set bytes_free=2
wrong '--set byte_free: no reply tells such a member. Did you mean "bytes_free"?' \
  free-ram --set byte_free=1
wrong '--set jobs[200].uuid: no reply tells such a member. Did you mean "jobs[0].uuid" or "jobs[2].uuid"?' job-list --set 'jobs[200].uuid=1'
wrong '--set jobs[99999999999999999999].uuid: no reply tells such a member.' \
  job-list --set 'jobs[99999999999999999999].uuid=1'
wrong '--set bytes_free: <bytes_free>: "5x" is not a whole decimal number' \
  free-ram --set bytes_free=5x
wrong '--set jobs[0].uuid: a reply cannot say this text' job-list --set 'jobs[0].uuid= blanks '
for control in $'\x01' $'\x1f' $'\x7f'; do
  wrong "--set uuid: XML cannot carry control characters" job-status --set "uuid=a${control}b"
done
said 'uuid=a b~' '"a b~"' job-status
wrong $'--set x\\x1b[2J: no reply tells such a member.' free-ram --set $'x\e[2J=1'
for hostile in $'\xff' $'\e[2J' $'a\001b' "$(printf 'x%.0s' {1..5000})" ''; do
  kovra sample job-list --set "jobs[0].uuid=$hostile"
  expectStatus 2
done
for count in 0 -1 x 99999999999999999999; do
  kovra sample free-ram --count "$count"
  expectStatus 2
  kovra sample free-ram --seed "x$count"
  expectStatus 2
done
kovra sample free-ram -o no/such/file
expectStatus 3
checks=$((checks + 1))
"$tool" sample free-ram >/dev/full 2>"$work/err"
[[ $? == 3 ]] || complain "a full disk goes unnoticed"

finish

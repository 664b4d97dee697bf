#!/usr/bin/env bash
# A reply, changed in one place, and composed: the sections that changed and nothing else.
#   compose_changes.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

cp "$samples/config/full.xml" reply.xml
printf 'seven blue umbrellas\n' >key

changed() {  # sections expected, option...
  local sections=$1
  shift
  kovra compose configuration --from reply.xml "$@"
  expectStatus 0
  same "standard error" "" "$err"
  local document=$out
  # The same, step by step: decode, change, choose, compose.
  kovra decode --show-secrets --format json reply.xml
  jq "$change" <<<"$out" >changed.json
  kovra compose configuration --sections "$sections" changed.json
  expectStatus 0
  checks=$((checks + 1))
  [[ $document == "$out" ]] ||
    complain "$change: another document" "$(diff <(echo "$out") <(echo "$document"))"
}

change='.readings[0].record.wireless.ssid = "NewNet" | .readings[0].record.ethernet.dhcp = true'
changed ethernet,wireless --set wireless.ssid=NewNet --set ethernet.dhcp=yes
change='.readings[0].record.wireless.key = "seven blue umbrellas"'
changed wireless --set-file wireless.key=key
change='.readings[0].record.error_control = "high"'
changed error_control --set error_control=high
changed error_control --set error_control=2
change='.readings[0].record.wireless.channel = 6'
changed wireless --set wireless.channel=6
changed wireless,ethernet --sections wireless,ethernet --set wireless.channel=6

# From standard input, from JSON, into a file.
kovra compose configuration --from - --set error_control=high <reply.xml
expectStatus 0
document=$out
kovra decode --show-secrets --format json reply.xml
printf '%s' "$out" >record.json
kovra compose configuration --set error_control=high record.json
expect 0 "${document%$'\n'}" ""
kovra compose configuration --from reply.xml --set error_control=high --output document
expect 0 "" ""
same "the file" "${document%$'\n'}" "$(<document)
"

refused() {  # status, messages, option...
  local expected=$1 messages=$2
  shift 2
  echo before >document
  kovra compose configuration "$@" --output document
  expectStatus "$expected"
  same "standard output" "" "$out"
  holds "standard error" "$messages" "$err"
  same "the file" "before" "$(<document)
"
}
wrong() {  # message, option...
  local message=$1
  shift
  refused 2 "kovra: error: $message
Try 'kovra compose configuration --help'.
" "$@"
}

# What arguments would show to everybody has to come from a file.
wrong "wireless.key is a secret, and every list of processes shows arguments; put it into a file: --set-file wireless.key=FILE ('-': standard input)" \
  --from reply.xml --set "wireless.key=seven blue umbrellas"
wrong 'unknown member "wireles.ssid". Did you mean "wireless.ssid"\?' \
  --from reply.xml --set wireles.ssid=x
wrong 'unknown member "x".' --from reply.xml --set x=1
wrong 'only one of the files can be standard input' --from - --set-file wireless.key=-
wrong 'only one of the files can be standard input' \
  --from reply.xml --set-file wireless.key=- --set-file wireless.ssid=-
wrong 'feeder_mode: expected one of: *' --from reply.xml --set feeder_mode=99
wrong 'wireless.crypto: expected one of: *' --from reply.xml --set wireless.crypto=-1
wrong 'unknown member "wireless.ssid.x".*' --from reply.xml --set wireless.ssid.x=1
wrong 'error_control: expected one of: none, med, high. Did you mean "med"\?' \
  --from reply.xml --set error_control=mad
wrong "ethernet.dhcp: expected yes or no" --from reply.xml --set ethernet.dhcp=maybe
wrong "wireless.channel: expected a whole number" --from reply.xml --set wireless.channel=six
wrong "wireless: expected one of its members: *" --from reply.xml --set wireless=x
wrong "expected a member, '=' and its value" --from reply.xml --set wireless
wrong "expected a member, '=' and its value" --from reply.xml --set =x
wrong "--sections is required" --from reply.xml
refused 3 "missing: error: No such file or directory
" --from missing --set error_control=high
refused 3 "missing: error: No such file or directory
" --from reply.xml --set-file wireless.key=missing
refused 1 "reply.xml: error: nothing changes: the record says so already
" --from reply.xml --set ethernet.dhcp=no
refused 1 "reply.xml: error: wireless.ip_address: found *; expected *" \
  --from reply.xml --set wireless.ip_address=x
refused 1 "/dev/null:1:1: error: found an empty text; *" --from /dev/null --set error_control=high
cp "$samples/status/minimal.xml" other.xml
refused 1 "other.xml:*error: *" --from other.xml --set error_control=high

# A printer that does not tell a section does not lose the rest of it.
cp "$samples/config/minimal.xml" small.xml
refused 1 "small.xml: error: wireless.ip_address: found nothing; expected *" \
  --from small.xml --set wireless.ssid=x
kovra compose configuration --from small.xml --set wireless.ssid=x --zero-missing
expectStatus 0
holds "standard output" "*<ssid>x</ssid>*" "$out"

# No secret is repeated by a message.
printf 'a key that is far too long for any member %0300d' 0 >key
kovra compose configuration --from reply.xml --set-file wireless.key=key
expectStatus 1
checks=$((checks + 1))
[[ $err != *"far too long"* ]] || complain "a key in a message" "$err"

finish

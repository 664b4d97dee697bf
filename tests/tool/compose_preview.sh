#!/usr/bin/env bash
# `kovra compose --dry-run` tells what changes would do, as `kovra diff` tells it, and makes no
# document. What is refused without it is refused with it.
#   compose_preview.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

cp "$samples/config/full.xml" reply.xml
kovra decode --show-secrets --format json reply.xml
printf '%s' "$out" >record.json
kovra decode --format json reply.xml
printf '%s' "$out" >masked.json
printf 'seven blue umbrellas\n' >key

preview() { kovra compose configuration --dry-run "$@"; }

edits=(--set error_control=high --set wireless.channel=6 --set usb_timeout.read=31
  --set ethernet.ip_address=192.0.2.7 --set-file wireless.key=key)
changes='~ ethernet.ip_address: "192.168.40.21" -> "192.0.2.7"
~ wireless.key: differ
~ wireless.channel: 11 -> 6
~ usb_timeout.read: 30 [1..120] -> 31 [1..120]
~ error_control: med (1) -> high (2)'
preview --from reply.xml "${edits[@]}"
expect 0 "$changes" ""
preview "${edits[@]}" record.json
expect 0 "$changes" ""
preview "${edits[@]}" <record.json
expect 0 "$changes" ""
preview "${edits[@]}" --color always record.json
holds "standard output" $'\e\[35m~ \e\[0methernet*' "$out"

# The same as diff tells of the reply and the document; that lacks what does not change.
edits=(--set error_control=high --set usb_timeout.read=31)
kovra compose configuration --from reply.xml "${edits[@]}" --output document
kovra diff reply.xml document
told=$(grep -v '^- ' <<<"$out")
preview --from reply.xml "${edits[@]}"
expect 0 "$told" ""
holds "standard output" '~ usb_timeout.read: 30 \[1..120\] -> 31 \[1..120\]
~ error_control: *' "$out"

# A record that people wrote has words and codes where a reading has both.
jq -c '.readings[0].record | .error_control = "med" | .feeder_mode = 3' record.json >written.json
preview --set error_control=high --set feeder_mode=1 written.json
expectStatus 0
holds "standard output" '~ error_control: med (1) -> high (2)
~ feeder_mode: auto (3) -> * (1)
' "$out"

# A measure that is given without a fraction is one all the same.
preview --from reply.xml --set takeup_motor.S0=1
expectStatus 0
holds "standard output" '~ takeup_motor.S0: * \[*\] -> 1 \[*\]
' "$out"

# Masks that stay are no change; one that is overwritten cannot be compared.
preview --set error_control=high masked.json
expect 0 '~ error_control: med (1) -> high (2)' ""

# Whatever it is, a change that the document cannot hold is refused beforehand: nobody shall take the
# others for all that there is.
left='wireless.channel: not in the document that this record and these choices make; --sections wireless writes it'
preview --from reply.xml --sections ethernet --set wireless.channel=6 --set ethernet.dhcp=yes
expect 1 "" "reply.xml: error: $left"
preview --from reply.xml --sections ethernet --set wireless.channel=6
expect 1 "" "reply.xml: error: $left"
preview --from reply.xml --sections ethernet
expect 0 "" "kovra: nothing would change"
# Of two edits of one member the last one counts.
preview --from reply.xml --set wireless.channel=6 --set wireless.channel=7
holds "standard output" '~ wireless.channel: 11 -> 7
' "$out"

# Every message that is made of a record has it.
kovra decode --show-secrets --format json "$samples/media/full.xml"
printf '%s' "$out" >media.json
kovra compose media --dry-run --set 'cards[0].thickness=31' media.json
expect 0 '~ cards[0].thickness: 30 -> 31' ""

# The same refusals.
for arguments in "--from reply.xml" "--from reply.xml --set wireles.ssid=x" \
  "--from reply.xml --set wireless.key=x" "--from missing --set error_control=high" \
  "--from reply.xml --set ethernet.dhcp=no" "--from reply.xml --set wireless.ip_address=x" \
  "--from /dev/null --set error_control=high" "--set error_control=high /dev/null" \
  "--from reply.xml --sections nope --set error_control=high" \
  "--from reply.xml --set tricolor_settings.red=1" "--from reply.xml --set lcd_contrast=64" \
  "--from reply.xml --sections ethernet --set wireless.ssid=x" \
  "--set wireless.ssid=x --sections wireless masked.json"; do
  # shellcheck disable=SC2086 # words apart
  kovra compose configuration $arguments
  wanted=$err expected=$status
  checks=$((checks + 1))
  ((expected != 0)) || complain "$called: was not refused"
  # shellcheck disable=SC2086
  preview $arguments
  expectStatus "$expected"
  same "standard output" "" "$out"
  same "standard error" "${wanted%$'\n'}" "$err"
done

# There is no document, so none can be written or overwritten.
echo before >document
preview --from reply.xml --set error_control=high --output document
expectStatus 2
same "the file" "before" "$(<document)
"
kovra compose device-control fan --dry-run
expectStatus 2

finish

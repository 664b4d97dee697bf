#!/usr/bin/env bash
# A reply, changed in one place, and composed: the sections that changed and nothing else.
#   compose_changes.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

cp "$samples/config/full.xml" reply.xml
printf 'seven blue umbrellas\n' >key
cp "$samples/config/minimal.xml" small.xml
echo '{"wireless": {"channel": "six"}, "error_control": "med"}' >bad.json

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
for path in 'cards[0]type' 'cards[0.type' 'cards0].type' 'cards[x].type' 'cards[].type' cards.type \
  'cards[0]..type'; do
  wrong "unknown member \"${path//[/\\[}\". Did you mean \"cards\[0].type\"\?" \
    --from reply.xml --set "$path=1"
done
wrong 'unknown member "cards\[1]thikness". Did you mean "cards\[1].thickness"\?' \
  --from reply.xml --set 'cards[1]thikness=1'
wrong 'unknown member "wireless\[0].channel". Did you mean "wireless.channel"\?' \
  --from reply.xml --set 'wireless[0].channel=1'
wrong "cards: expected one of its entries: cards\[0]" --from reply.xml --set cards=1
wrong "cards\[1]: expected one of its members: type, *" --from reply.xml --set 'cards[1]=1'
wrong "cards\[9].type: the record has no such place" --from reply.xml --set 'cards[9].type=1'
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
refused 1 "reply.xml: error: nothing changes: the document would be the same
" --from reply.xml --set ethernet.dhcp=no

# Of a bad value its own problem is told, and nothing of sections that nobody meant.
refused 1 "reply.xml: error: wireless.ip_address: found \"x\"; expected an IPv4 address, four numbers with dots between them
" --from reply.xml --set wireless.ip_address=x
refused 1 "small.xml: error: wireless.ip_address: found \"x\"; expected *, four numbers with dots between them
" --from small.xml --set wireless.ip_address=x
refused 1 "reply.xml: error: wireless.channel: found *; expected *
reply.xml: error: film.oem_country: found a text of 33 bytes; expected *
" --from reply.xml --set wireless.channel=99999999999 \
  --set film.oem_country=_________________________________
refused 1 "bad.json: error: wireless.channel: found *; expected a whole number *
" --set error_control=high bad.json
# What the section itself lacks is a problem of its own.
refused 1 "reply.xml: error: film.ribbonNameCode: found nothing; expected *
" --from reply.xml --set film.type=1

# What no section writes cannot be changed, whatever changes beside it, and whatever it is now.
for value in 1 128; do
  for beside in "" "--set wireless.ssid=x" "--sections wireless" "--zero-missing"; do
    # shellcheck disable=SC2086 # words apart
    refused 1 "reply.xml: error: tricolor_settings.red: is read from the printer only; no section writes it
" --from reply.xml --set tricolor_settings.red=$value $beside
  done
done
refused 1 "reply.xml: error: bemf_potentiometer: is read from the printer only; no section writes it
" --from reply.xml --set bemf_potentiometer=77
left='not in the document that this record and these choices make'
refused 1 "reply.xml: error: wireless.ssid: $left; --sections wireless writes it
" --from reply.xml --sections ethernet --set ethernet.dhcp=yes --set wireless.ssid=x
refused 1 "reply.xml: error: feeder_mode: $left
" --from reply.xml --sections cards --card 1 --set feeder_mode=auto
refused 1 "reply.xml: error: cards\[1].type: $left
" --from reply.xml --sections cards --card 1 --set 'cards[1].type=5'
refused 1 "reply.xml: error: ribbon.ribbonNameCode: found nothing; *
reply.xml: error: film.ribbonNameCode: found nothing; *
" --from reply.xml --set ribbon.description=Umbrella
# Another way of writing what is there is no member that cannot be written.
for same in physical_address=02:00:5E:10:20:3A error_control=med error_control=1 \
  usb_timeout.read=30 ethernet.dhcp=off film.description=Umbrella; do
  refused 1 "reply.xml: error: nothing changes: the document would be the same
" --from reply.xml --set $same
done

# The bounds that the printer gave hold, at both ends, also where they are to be changed.
bounds='expected a number from 0 to 63, the bounds that the printer gave'
for value in 64 -1 63.5 1e300 nan inf; do
  for path in lcd_contrast lcd_contrast.val; do
    refused 1 "reply.xml: error: lcd_contrast: found *; $bounds
" --from reply.xml --set $path=$value
  done
done
refused 1 "reply.xml: error: lcd_contrast: found 64; $bounds
" --from reply.xml --set lcd_contrast.max=99 --set lcd_contrast=64
refused 1 "reply.xml: error: cards\[1].laminator_adjustments.speed_adjust: found 1.5; expected a number from -1 to 1, *
" --from reply.xml --set 'cards[1].laminator_adjustments.speed_adjust=1.5'
# Neither do changed bounds leave a value out.
for change in min=41 max=39 min=60 max=1 max=-1 min=99; do
  refused 1 "reply.xml: error: lcd_contrast: found 40; expected a number from *, the bounds that it is to have
" --from reply.xml --set lcd_contrast.$change
done
refused 1 "reply.xml: error: lcd_contrast: found 50; expected a number from 0 to 45, *
" --from reply.xml --set lcd_contrast=50 --set lcd_contrast.max=45
kovra compose configuration --from reply.xml --set lcd_contrast.min=40 --set lcd_contrast.max=50
expectStatus 0
# What another change overwrites is none.
kovra compose configuration --from reply.xml --set lcd_contrast=80 --set lcd_contrast=50
expectStatus 0
holds "standard output" "*<lcd_contrast min=\"0\" max=\"63\">50</lcd_contrast>*" "$out"
for value in 0 63; do
  kovra compose configuration --from reply.xml --set lcd_contrast=$value
  expectStatus 0
  holds "standard output" "*<lcd_contrast min=\"0\" max=\"63\">$value</lcd_contrast>*" "$out"
done
# Bounds that admit nothing, or that are not there, are none.
for attributes in '' ' min="0"' ' min="5" max="5"' ' min="9" max="1"' ' min="0" max="0"'; do
  printf '<configuration><lcd_contrast%s>5</lcd_contrast></configuration>' "$attributes" >bounds.xml
  kovra compose configuration --from bounds.xml --zero-missing --set lcd_contrast=700
  expectStatus 0
  holds "standard output" '*>700</lcd_contrast>*' "$out"
done
refused 1 "/dev/null:1:1: error: found an empty text; *" --from /dev/null --set error_control=high
cp "$samples/status/minimal.xml" other.xml
refused 1 "other.xml:*error: *" --from other.xml --set error_control=high

# A printer that does not tell a section does not lose the rest of it.
refused 1 "small.xml: error: wireless.ip_address: found nothing; expected *" \
  --from small.xml --set wireless.ssid=x
kovra compose configuration --from small.xml --set wireless.ssid=x --zero-missing
expectStatus 0
holds "standard output" "*<ssid>x</ssid>*" "$out"

# Some members follow from others in a document. What was changed and would not be is refused, of the
# others there is a warning.
refused 1 "reply.xml: error: internal_encoder.contactless_encoder: the document says nothing, not uhf (3)
" \
  --from reply.xml --set internal_encoder.contactless_encoder=uhf
kovra compose configuration --from reply.xml --set internal_encoder.contactless_encoder=uhf --dry-run
expectStatus 1
same "standard output" "" "$out"
kovra compose configuration --from reply.xml --set internal_encoder.contact_encoding=no
expectStatus 0
same "standard error" \
  "reply.xml: warning: internal_encoder.comms_channel: the document says serial (1), not usb (2)" "$err"
holds "standard output" "*<contact_encoding>no</contact_encoding>*" "$out"

# No secret is repeated by a message.
printf 'a key that is far too long for any member %0300d' 0 >key
kovra compose configuration --from reply.xml --set-file wireless.key=key
expectStatus 1
checks=$((checks + 1))
[[ $err != *"far too long"* ]] || complain "a key in a message" "$err"

finish

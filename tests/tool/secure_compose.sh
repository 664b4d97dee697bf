#!/usr/bin/env bash
# kovra compose: documents of the secure-action exchange, whose secrets come from files or standard
# input, and commands for devices.
#   secure_compose.sh <tool> <samples folder>
set -uo pipefail
# shellcheck source=support.bash
source "$(dirname "$0")/support.bash"

head='<?xml version="1.0" encoding="UTF-8" ?>'

# given JSON KIND OPTION...: composes from the record in a file, and from standard input alike.
given() {
  printf '%s' "$1" >record.json
  shift
  kovra compose "$@" record.json
  local fromFile=$out
  kovra compose "$@" <record.json
  [[ $out == "$fromFile" ]] || complain "$called: standard input gives another document"
}

given '{"nonce": "8F31"}' nonce
expect 0 "$head
<nonce>8F31</nonce>" ''

given '{"action": "reset_oem", "model": "KX-200", "serial": "K1", "nonce": "8F31"}' secure-request
expect 0 "$head
<secure_action_request>
    <action name=\"reset_oem\">
        <printer model=\"KX-200\" serial=\"K1\" nonce=\"8F31\" />
    </action>
</secure_action_request>" ''

directive='{"action": "printer", "model": "KX-200", "serial": "K1", "nonce": "8F31", "hmac": "9b1c"}'
given "$directive" secure-directive --timeout 30
expect 0 "$head
<secure_action_request>
    <action>
        <printer model=\"KX-200\" serial=\"K1\" nonce=\"8F31\" />
        <hmac>9b1c</hmac>
        <timeout>30</timeout>
    </action>
</secure_action_request>" ''
given "$directive" secure-directive
expectStatus 0
[[ $out != *timeout* ]] || complain "$called: a timeout that nobody asked for"

given '{"current_passkey": "open sesame"}' passkey
expect 0 "$head
<passkey>open sesame</passkey>" ''

given '{"new_passkey": "new", "current_passkey": "old"}' passkey-change
expect 0 "$head
<keys>
    <set>
        <current_passkey>old</current_passkey>
        <new_passkey>new</new_passkey>
    </set>
</keys>" ''

keys='{"data_encryption_key": "d", "printer_lock_key": "l", "host_authentication_key": "h"}'
given "$keys" keys
expect 0 "$head
<keys>
    <host_authentication_key>h</host_authentication_key>
    <data_encryption_key>d</data_encryption_key>
    <printer_lock_key>l</printer_lock_key>
</keys>" ''

given '{"current_passkey": "p", "current_printer_lock_key": "c", "new_printer_lock_key": "n"}' \
  keys-change
expect 0 "$head
<keys>
    <set>
        <current_passkey>p</current_passkey>
        <current_printer_lock_key>c</current_printer_lock_key>
        <new_printer_lock_key>n</new_printer_lock_key>
    </set>
</keys>" ''

# What decode shows is taken back, but never its mask.
for sample in nonce passkey security-keys security-key-change; do
  kind=${sample#security-}
  kind=${kind/key-change/keys-change}
  "$tool" decode --format json --show-secrets "$samples/security/$sample.xml" >shown.json
  kovra compose "$kind" shown.json
  expectStatus 0
  same "the document" "$(<"$samples/security/$sample.xml")" "$out"
  [[ $sample == nonce ]] && continue
  "$tool" decode --format json "$samples/security/$sample.xml" >masked.json
  kovra compose "$kind" masked.json
  expectStatus 1
  holds 'standard error' '*found a masked secret; expected the secret itself*' "$err"
  same 'standard output' '' "$out"
done

# refused KIND JSON PATTERN: nothing is written, and no secret stands in the message.
refused() {
  printf '%s' "$2" >record.json
  kovra compose "$1" record.json
  expectStatus 1
  same 'standard output' '' "$out"
  holds 'standard error' "$3" "$err"
  [[ $err != *hush* ]] || complain "$called: tells a secret" "$err"
}
refused keys '{"printer_lock_key": "hush"}' '*host_authentication_key: found nothing; expected a text*'
refused keys '{"printer_lock_key": ["hush"]}' '*printer_lock_key: found a value of another kind;*'
refused keys '{"lock_key": "hush"}' '*lock_key: found an unknown key;*'
refused passkey '{"current_passkey": "hush", "new_passkey": "hush"}' '*new_passkey: found a value;*'
refused passkey-change '{"current_passkey": "hush"}' '*new_passkey: found nothing;*'
refused keys-change '{"current_passkey": "hush"}' '*found no key;*'
refused keys-change '{"current_passkey": "hush", "new_printer_lock_key": "hush"}' \
  '*current_printer_lock_key: found nothing;*'
refused keys-change '{"current_passkey": "hush", "new_passkey": "hush"}' '*new_passkey: found a value;*'
refused secure-request '{"action": "open_the_lid"}' '*action: found a text of 12 bytes; expected one of: *'
refused nonce '{"nonce": "01234567890123456789012345678901"}' '*nonce: found *; expected a text of at most 31 *'
refused keys '{"printer_lock_key": "hush' '*malformed JSON*'

# Secrets are no arguments.
for kind in passkey keys keys-change; do
  kovra compose "$kind" --current_passkey hush
  expectStatus 2
done

# device OPTION... : the one element of a command.
device() {
  local expected=$1
  shift
  kovra compose device-control "$@"
  expect 0 "$head
<device_control>
    $expected
</device_control>" ''
}
device '<motor state="on" direction="forward" distance="0" speed="50">card_x</motor>' \
  motor --motor card_x --state on --direction forward --speed 50
device '<motor state="on" direction="reverse">ribbon</motor>' \
  motor --motor ribbon --state on --direction reverse
device '<motor state="off">flipper</motor>' motor --motor flipper --state off
device '<motor state="on" direction="reverse" speed="-3" />' \
  motor --state on --direction reverse --speed=-3
device '<motor state="warm_up" rpm="12.5" period="5" />' \
  motor --state warm_up --rpm 12.5 --period 5
device '<cam state="up">print</cam>' cam --state up --text print
device '<calibrate type="high" torque="1.5" rpm="60.0" />' calibrate --type high --torque 1.5 --rpm 60
device '<calibrate type="save_cal" />' calibrate --type save_cal
device '<fan state="on">head</fan>' fan --state on --text head
device '<sensor state="off" />' sensor --state off
device '<clutch state="on" />' clutch --state on
device '<advance panel="yellow">ribbon</advance>' advance --panel yellow --text ribbon
device '<laminator spool="both">scal</laminator>' laminator --spool both
device '<laminator spool="top">scal</laminator>' laminator --spool top
device '<laminator spool="bottom">scal</laminator>' laminator --spool bottom
device '<laminator>heat</laminator>' laminator --text heat
device '<radio iterations="1">scan</radio>' radio --text scan
device '<rfid antenna="2">modulate</rfid>' rfid --mode modulate --antenna 2

# misused PATTERN OPTION...: a mistake on the command line.
misused() {
  local pattern=$1
  shift
  kovra compose device-control "$@"
  expectStatus 2
  same 'standard output' '' "$out"
  holds 'standard error' "$pattern" "$err"
}
misused '*--motor: found "wheel"; expected one of: card_feed, *' motor --motor wheel --state off
misused '*--state: found nothing;*' motor --motor card_x
misused '*--speed: found nothing;*' motor --motor card_x --state on --direction forward
misused '*--speed: found 50; expected none*' motor --motor ribbon --state on --direction forward --speed 50
misused '*--rpm: found *; expected none*' motor --state off --rpm 12
misused '*--state: found "warm_up";*' motor --motor card_x --state warm_up
misused '*--torque: found nothing;*' calibrate --type low --rpm 60
misused '*--antenna: found nothing;*' rfid --mode on
misused '*--mode: found nothing;*' rfid --antenna 1
misused '*--text: found a text beside a spool;*' laminator --spool top --text heat
misused $'kovra: error: --motor: found "wheel"; *\nkovra: error: --state: found "stop"; *\nTry *' \
  motor --motor wheel --state stop
misused '*' wheel --state on
misused '*' motor --state on --direction forward --speed fast

# No copy for debugging: none of these is there unless somebody else wrote it.
if [[ ! -e /tmp/composedXML ]]; then
  kovra compose device-control fan --state on
  [[ ! -e /tmp/composedXML ]] || complain "$called: leaves a copy"
fi

finish

#!/usr/bin/env bash
# Explain knows every name that findings, replies and records have, tells where it occurs and what
# writes it, and what somebody may have meant.
#   explain.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

kovra explain K104
expect 0 'K104 repeated_element: element for the second time
  severity  warning
  meaning   The element, or another one for the same member, stood there before; what it said then was overwritten, or merged with what it says now.
  example   <get_general_status><error>5</error><error>6</error></get_general_status>
  gives     <error>: for the second time, overwrites "5"' ""
first=$out
for name in k104 repeated_element repeated-element REPEATED_ELEMENT; do
  kovra explain "$name"
  expect 0 "${first%$'\n'}" ""
done
kovra explain XML
expectStatus 0
holds "standard output" "XML no_strict_xml: *gives     strict XML parsers stop here: *" "$out"

# Every kind of finding that the documentation tells has an example that gives it.
while read -r id; do
  kovra explain --format json "$id"
  expectStatus 0
  checks=$((checks + 1))
  jq -e --arg id "$id" '.findings | length == 1 and .[0].id == $id and
    ([.[0] | .kind, .severity, .title, .explanation, .message] | all(length > 0))' \
    <<<"$out" >/dev/null || complain "$called:" "$out"
done < <(grep -oE '^\| K[01][0-9]{2}( to K[0-9]+)?' "$samples/../docs/json.md" |
  sed -E 's/.*(K[0-9]+) to K0*([0-9]+)/\1 \2/; s/^\| //' |
  while read -r id last; do
    if [[ -n $last ]]; then printf 'K%03d\n' $(seq "$((10#${id#K}))" "$last"); else echo "$id"; fi
  done)
((checks > 80)) || complain "too few kinds: $checks checks"

# A member: by its path, the end of it, its name, an element, with the document in front.
kovra explain configuration.wireless.ssid
expect 0 'configuration.wireless.ssid: a text of at most 33 bytes
  message   all settings of the printer: interfaces, media, mechanics, cards
  element   /configuration/wireless/ssid, /configuration/ethernet/ssid
  written   kovra compose configuration --sections wireless' ""
first=$out
for name in wireless.ssid /configuration/wireless/ssid /set_configuration/wireless/ssid \
  wireless/ssid Wireless.SSID; do
  kovra explain "$name"
  expect 0 "${first%$'\n'}" ""
done
paths() {  # expected, name
  kovra explain --format json "$2"
  expectStatus 0
  same "the paths" "$1" "$(jq -r '.members[] | .message + "." + .path' <<<"$out" | paste -sd' ')
"
}
paths "wireless-status.ssid access-points.accessPoints[].ssid configuration.wireless.ssid" ssid
paths "access-points.accessPoints[].ssid" SSID
paths "configuration.cards[].type media.cards[].type" 'cards[3].type'
paths "configuration.lcd_contrast" lcd_contrast.max
paths "configuration.num_cards_printed configuration.num_lines_printed" usage_counters
paths "general-status.printer_lock" unlocked
paths "general-status.printer_state" printing_heating

kovra explain configuration.wireless.key
holds "standard output" "*  secret    yes, *" "$out"
kovra explain unlocked
holds "standard output" "*: a flag*  word      unlocked (0)*  beside    locked (1)*" "$out"
kovra explain general-status.printer_state
holds "standard output" "*  words     *printing_heating (3), *" "$out"
kovra explain "1/2 YMCKO"
holds "standard output" "*  word      1/2 ymcko (258), 1/2 YMCKO (258)
  beside    *1/2 ymckoko (259), *" "$out"
kovra explain get_general_status
holds "standard output" "general-status: *  root      get_general_status
  verbs     kovra decode
  members   printer_state, alarms, *" "$out"
kovra explain passkey-change
holds "standard output" "passkey-change: *
  verbs     kovra compose passkey-change*" "$out"

kovra explain --format json wep104
expectStatus 0
same "the object" '{"message":"configuration","path":"wireless.security","elements":["/configuration/wireless/security","/configuration/ethernet/security"],"kind":"keyword","secret":false,"meant":[{"code":2,"word":"wep104"},{"code":2,"word":"WEP104"}],"words":14,"written_by":[{"choice":"sections","word":"wireless"}]}' \
  "$(jq -c '.members[] | select(.message == "configuration") | .words |= length' <<<"$out")
"
kovra explain --format json bssid
same "the object" '["kovra","name","findings","messages","members"] hardware_address' \
  "$(jq -r '"\(keys_unsorted | tojson) \(.members[] | select(.message == "configuration").form)"' <<<"$out")
"

# What a section writes is what composing it asks for, no more and no less.
while read -r section; do
  kovra compose configuration --sections "$section" <<<'{}'
  asked=$(grep -oP '^<stdin>: error: \K[^:]*' <<<"$err" | sort)
  while read -r path; do
    kovra explain --format json "configuration.$path"
    checks=$((checks + 1))
    jq -e --arg path "$path" --arg word "$section" '.members[] | select(.path == $path) |
      .written_by | any(.word == $word)' <<<"$out" >/dev/null || complain "$called: $section" "$out"
  done <<<"$asked"
done < <("$tool" compose configuration --help |
  tr '\n' ' ' | grep -oE '\b(ethernet|wireless|cards|cleaning|lamination|error_control)\b' | sort -u)
kovra explain --format json configuration.tricolor_settings
same "the writers" "[]" "$(jq -c '.members[0].written_by' <<<"$out")
"

# Every word of the vocabulary, with the rest of its words.
while read -r word; do
  checks=$((checks + 1))
  "$tool" explain "$word" >/dev/null 2>&1 || complain "explain $word: exit status $?"
done < <("$tool" vocabulary | awk 'NR % 7 == 1' && echo printer && echo adc_value && echo enabled)

# Nothing of that name.
unknown() {  # what is suggested, name
  kovra explain -o result "$2"
  expect 1 "" "kovra: error: nothing is called \"$2\".$1"
  checks=$((checks + 1))
  [[ ! -e result ]] || complain "$called: a file was made"
}
unknown ' Did you mean "printing"?' printng
unknown ' Did you mean "configuration.wireless.ssid"?' confguration.wireless.ssid
unknown "" zzzzzzzzzzzz
unknown "" ""
unknown "" ...
unknown "" ///
unknown " Did you mean \"wireless.bssid\" or \"wireless.ssid\"?" .wireless.ssid.ssid
unknown "" "$(printf 'x%.0s' {1..100000})"
kovra explain $'\e[2J\xff'
expect 1 "" 'kovra: error: nothing is called "\x1b[2J\xff".'
kovra explain
expectStatus 2
kovra explain one two
expectStatus 2
kovra explain --format xml ssid
expectStatus 2
kovra explain --color always ssid
holds "standard output" $'\e\[1mwireless-status.ssid\e\[0m: *' "$out"

# What a member is: a line for each form that a value has.
is() {  # name, what
  kovra explain "$1"
  expectStatus 0
  same "the first line" "$1: $2" "${out%%$'\n'*}"$'\n'
}
is configuration.wireless.ip_address "a text: an IPv4 address"
is 'access-points.accessPoints[].bssid' "a text: a hardware address"
is general-status.alarms "a whole number without a sign, which replies write as 0x1A"
is general-status.error "a whole number"
is sensor-status.voltage_24 "a number with a fraction"
is general-status.printer_state "a keyword"
is configuration.lcd_contrast "a setting: a value val between bounds min and max"

# A message, for programs: its roots, and what can be done with it.
message() {  # name, facts
  kovra explain --format json "$1"
  expectStatus 0
  same "the message" "$2" "$(jq -c '.messages[0] | [.name, .roots, .read, .written, .command]' \
    <<<"$out")
"
  checks=$((checks + 1))
  jq -e '.messages[0] | (.title | length > 0) and (.members | length > 0)' <<<"$out" >/dev/null ||
    complain "$called:" "$out"
}
message general-status '["general-status",["get_general_status"],true,false,null]'
message passkey '["passkey",["passkey"],true,true,"passkey"]'

# Examples that cannot stand in a line are told of, or shown in part.
kovra explain K001
holds "standard output" $'*\n  example   an empty text\n*' "$out"
kovra explain K011
holds "standard output" $'*\n  example   <a><a>*<a ...\n*' "$out"

# A root is the message that has it, with and without the slash in front.
for name in /get_general_status get_general_status; do
  kovra explain "$name"
  same "the first line" "general-status: state, alarms, lock and job counters" "${out%%$'\n'*}"$'\n'
done
kovra explain --format json no_strict_xml
expectStatus 0
same "the finding" '["XML","no_strict_xml"]' "$(jq -c '.findings[0] | [.id, .kind]' <<<"$out")
"

checks=$((checks + 1))
"$tool" explain ssid >/dev/full 2>/dev/null
(($? == 3)) || complain "a full disk is not noticed"
finish

#!/usr/bin/env bash
# What `kovra compose` says of a text that it refuses: a line for each mistake with the place and the
# path, and nothing of the text but names of keys, since any of its values may be a secret.
#   compose_refusals.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

# refused PLACE SENTENCE JSON KIND OPTION...: from a file and from standard input alike.
refused() {
  local place=$1 sentence=$2
  printf "$3" >record.json
  shift 3
  kovra compose "$@" record.json
  expect 1 "" "record.json:$place error: $sentence"
  kovra compose "$@" <record.json
  expect 1 "" "<stdin>:$place error: $sentence"
}
# secret PLACE PATTERN JSON KIND OPTION...: the same, where only no "hush" and no 4711 may show.
secret() {
  local place=$1 pattern=$2
  printf "$3" >record.json
  shift 3
  kovra compose "$@" record.json
  expectStatus 1
  same "standard output" "" "$out"
  holds "standard error" "record.json:$place error: $pattern"$'\n' "$err"
  checks=$((checks + 1))
  [[ $err != *hush* && $err != *4711* ]] || complain "$called: tells a secret" "$err"
}
beyond='found a number beyond all bounds; expected one that a double can hold'
lcd=(configuration --sections lcd_contrast)

# Numbers that no double holds, at any depth, also below keys that no record has.
refused 1:21: "standby_timeout: $beyond" '{"standby_timeout": 1e400}' "${lcd[@]}"
refused 2:24: "wireless.channel: $beyond" '{"wireless":\n{"ssid": "", "channel":-4711e999}}' "${lcd[@]}"
refused 1:14: "[2].a[1]: $beyond" '[0,1,{"a":[0,4711e4711]}]' media
refused 1:1: "$beyond" '1e400' keys
refused 1:32: "readings[0].record.a: $beyond" '{"readings": [{"record": {"a": 1e400}}]}' media
secret 1:21: "current_passkey: $beyond" '{"current_passkey": 4711e400}' passkey
secret '' 'current_passkey: found a value of another kind; expected a text' \
  '{"current_passkey": 47110815471108154711}' passkey

# No value is repeated, of whatever type, under whatever key, in whatever is no JSON.
for value in '"hush"' 4711 -4711 4711.25 4711e4 true null '["hush"]' '{"hush": 4711}'; do
  for kind in passkey keys secure-request nonce media capabilities "printer-id --fields model" \
    "configuration --sections wireless"; do
    for json in "%s" '{"unknown": %s}' '{"printer_serial": %s}' '{"cards": [%s]}' \
      '{"readings": [{"document": %s, "record": {}}]}' '{"readings": %s}' \
      '{"wireless": {"key": %s, "channel": "hush"}}' '{"action": %s}' '{"fonts": %s}'; do
      # shellcheck disable=SC2059 # the format is one
      printf "$json" "$value" >record.json
      # shellcheck disable=SC2086 # words
      kovra compose $kind record.json
      checks=$((checks + 1))
      ((status == 0)) && continue  # some kinds do not know the key and some take the value
      [[ $(grep -cv '^record.json: error: [^[:cntrl:]]*$' <<<"${err%$'\n'}") == 0 ]] ||
        complain "$called" "$json" "$err"
      # The key in '{"hush": ...}' is the path.
      [[ ${err//hush: found/} != *hush* && $err != *4711* && $err != *'found true'* ]] ||
        complain "$called: tells a secret" "$json $value" "$err"
    done
  done
done
secret '' 'found a text of 4 bytes; expected an object' '"hush"' passkey
secret '' 'readings: found an unknown message; expected passkey' \
  '{"readings": [{"document": "hush", "record": {}}]}' passkey
secret '' 'action: found a text of 9 bytes; expected one of: *' '{"action": "lock\\u0000hush"}' secure-request
syntax='malformed JSON: syntax error while parsing'
for broken in '1:1:|value - invalid literal|hush' \
  '1:21:|value - invalid literal|{"current_passkey": hush}' \
  '1:26:|value - invalid string: missing closing quote|{"current_passkey": "hush' \
  '1:26:|value - invalid string: ill-formed UTF-8 byte|{"current_passkey": "hush\377"}' \
  '1:33:|object separator - unexpected *|{"current_passkey": 4711, "hush"}' \
  '1:*:|object key - unexpected *|{"current_passkey": "hush", 4711}' \
  '1:33:|object - unexpected string literal; expected *|{"current_passkey": "hush" "hush"}' \
  '1:32:|value - unexpected *|{"current_passkey": "hush"} 4711' \
  '1:22:|value - invalid number; *|{"current_passkey": -hush4711}' \
  '1:*:|value - invalid string: *|{"current_passkey": "hush\\q"}' \
  '1:*:|value - invalid string: *|{"current_passkey": "hush\\ud800"}' \
  '1:*:|value - invalid string: control character*|{"current_passkey": "hush; last read: hush\001"}'; do
  IFS='|' read -r place reason json <<<"$broken"
  secret "$place" "$syntax $reason" "$json" passkey
done

# A key that stands there twice, and where it does.
twice='found a key for the second time; expected each key once'
refused 2:3: "current_passkey: $twice" '{"current_passkey": "a",\n  "current_passkey": "b"}' passkey
refused 3:4: "cards[1].information.type: $twice" \
  '{"cards": [{}, {"information":\n{"type": 1,"\\u00e9": 2,\n   "type": 1}}]}' media
refused 1:12: "cards: $twice" '{"cards":0,"c\\u0061rds":0}' media
refused 1:14: 'a"b\: '"$twice" '{"a\\"b\\\\":1, "a\\"b\\\\":2}' media
refused 1:8: "$twice" '{"":1, "":2}' media
refused 1:15: "readings: $twice" '{"readings":0,"readings":0}' media

# What stands behind a NUL is part of the text.
refused 1:24: "malformed JSON: a NUL byte" '{"current_passkey":"a"}\0{' passkey

# A name is told to its end, and drives no terminal.
secret '' 'a\\x00b\\x1b\\n: found *' '{"a\\u0000b\\u001b\\n": 4711}' passkey
refused 1:19: "a\\x00b: $twice" '{"a\\u0000b":1,    "a\\u0000b":2}' media

# All mistakes are told at once, in the order of the record.
secret '' 'wireless.channel: found a text of 4 bytes; expected a whole number from -2147483648 to 2147483647
record.json: error: wireless.key: found a value of another kind; expected a text
record.json: error: cards\[0\]: found a number; expected an object
record.json: error: wifi: found an unknown key; expected one of: *' \
  '{"wireless": {"channel": "hush", "key": 4711}, "cards": [1], "wifi": {}}' "${lcd[@]}"

# Characters that XML has none for: they are not written as references that no parser takes.
plain='expected a text without control characters other than tabs and line ends'
unfit="found a text with a character that XML cannot carry; $plain"
for code in 0001 0008 000b 000c 000e 001b 001f fffe ffff; do
  refused '' "printer_model: $unfit" "{\"printer_model\": \"HX\\\\u$code\"}" printer-id --fields model
  secret '' "current_passkey: found a text of * bytes; $plain" \
    "{\"current_passkey\": \"hush\\\\u$code\"}" passkey
done
refused '' "wireless.ssid: $unfit" \
  '{"wireless": {"ssid": "\\u001b[2J"}, "lcd_contrast": {"min": 0, "max": 1, "val": 0}}' "${lcd[@]}"
printf '{"printer_model": "\\u0009\\u000a\\u000d\\u0020\\u007f\\u0085\\ue000\\ufffd\\ud83d\\ude00"}' >record.json
kovra compose printer-id --fields model record.json
expectStatus 0
kovra compose device-control fan --state on --text $'\e[2J'
expectStatus 2
holds "standard error" "kovra: error: --text: $unfit"$'\n*' "$err"

# A keyword that the document would say in another word.
modes='expected one of: hopper (1), manual (0), auto (3), alreadyinprinter (2)'
mode=(configuration --sections feeder_mode)
for value in 99 -1 4 '{"code": 99}' '{"code": 99, "name": "auto"}'; do
  refused '' "feeder_mode: found a code that no keyword has; $modes" "{\"feeder_mode\": $value}" \
    "${mode[@]}"
done
for value in '{"code": 1, "name": "auto"}' '{"code": 1, "name": "hush"}' '{"code": 1, "name": 3}' \
  '{"code": 1, "name": "HOPPER"}' '{"name": "auto", "code": 1}'; do
  refused '' "feeder_mode: found the code and the name of different keywords; $modes" \
    "{\"feeder_mode\": $value}" "${mode[@]}"
done
for value in '{"code": 1, "name": null, "raw": "hush"}' '{"code": 99, "name": null}'; do
  refused '' "feeder_mode: found a word that is no keyword; $modes" "{\"feeder_mode\": $value}" \
    "${mode[@]}"
done
for value in 3 '{"code": 3}' '{"code": 3, "name": "auto"}' '"auto"'; do
  echo "{\"feeder_mode\": $value}" >record.json
  kovra compose "${mode[@]}" record.json
  expectStatus 0
  holds "the document" '*<feeder_mode>auto</feeder_mode>*' "$out"
done
# At any depth, wherever the record stands, all of them.
echo '{"readings": [{"document": "media", "record": {"cards": [{"coercivity": 7},
  {"coercivity": {"code": 0, "name": "low"}}]}}]}' >record.json
kovra compose media record.json
words='expected one of: none (0), low (1), high (2)'
expect 1 "" "record.json: error: readings[0].record.cards[0].coercivity: found a code that no keyword has; $words
record.json: error: readings[0].record.cards[1].coercivity: found the code and the name of different keywords; $words"
# What the document does not have may say what it likes, and so may what keeps its word.
echo '{"feeder_mode": 99, "lcd_contrast": {"val": 1, "min": 0, "max": 9}}' >record.json
kovra compose "${lcd[@]}" record.json
expectStatus 0
kovra compose configuration --set lcd_contrast=2 record.json
expectStatus 0
kovra compose configuration --set lcd_contrast=2 --set feeder_mode=auto record.json
expectStatus 0
# A reply says it in its own word.
echo '<configuration><feeder_mode>tripel</feeder_mode><error_control>loud</error_control></configuration>' >reply.xml
kovra compose "${mode[@]}" --from reply.xml
expect 1 "" "reply.xml: error: feeder_mode: found a word that is no keyword; $modes"
kovra compose configuration --from reply.xml --set feeder_mode=auto
expectStatus 0
holds "the document" '*<feeder_mode>auto</feeder_mode>*' "$out"
kovra compose configuration --from reply.xml --set feeder_mode=auto --dry-run
expect 0 '~ feeder_mode: "tripel" (1, unknown) -> auto (3)' ""

finish

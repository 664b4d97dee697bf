#!/usr/bin/env bash
# `kovra compose configuration` makes the request from the JSON that `kovra decode` prints.
#   compose_configuration.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

"$tool" decode --format json --show-secrets "$samples/config/full.xml" >full.json
"$tool" decode --format json "$samples/config/full.xml" >masked.json
jq '.readings[0].record | .ribbon.ribbonNameCode = "YMCKO" | .film.ribbonNameCode = 271' \
  full.json >record.json
all=$("$tool" compose configuration --help | tr -d ' \n' | sed 's/.*bycommas:\([a-z_,]*\)--.*/\1/')

# The whole, as the library writes it.
kovra compose configuration record.json --sections "$all"
expect 0 "$(<"$samples/config/request.xml")" ""
kovra compose configuration record.json --sections "$all" --filmless
expect 0 "$(<"$samples/config/request-filmless.xml")" ""

# Parts, from the whole envelope and from standard input.
contrast='<?xml version="1.0" encoding="UTF-8" ?>
<configuration>
    <lcd_contrast min="0" max="63">40</lcd_contrast>
</configuration>'
kovra compose configuration full.json --sections lcd_contrast
expect 0 "$contrast" ""
kovra compose configuration --sections lcd_contrast <full.json
expect 0 "$contrast" ""
kovra compose configuration - --sections=lcd_contrast <full.json
expect 0 "$contrast" ""
kovra compose configuration --sections lcd_contrast full.json
expect 0 "$contrast" ""
kovra compose configuration --sections lcd_contrast --sections physical_address full.json
expectStatus 0
holds "standard output" '*<physical_address>*<lcd_contrast *' "$out"
kovra compose configuration record.json --sections cards,ethernet --card 2
expectStatus 0
holds "standard output" '*<description>Visitor badge</description>*' "$out"
[[ $out != *"Custom 1"* && $out != *ethernet* ]] || complain "more than the second card: $out"

# A masked key is no key. Where it is not sent it does not matter.
kovra compose configuration masked.json --sections wireless
expect 1 "" 'masked.json: error: readings[0].record.wireless.key: found a masked secret; expected the secret itself'
kovra compose configuration masked.json --sections lcd_contrast
expect 0 "$contrast" ""
kovra compose configuration full.json --sections wireless
expectStatus 0
holds "standard output" '*<key>seven red umbrellas</key>*' "$out"

# Records that do not fit: one line with the path, and nothing written.
refused() {  # jq program, expected line behind the name of the file
  jq "$1" record.json >wrong.json
  kovra compose configuration wrong.json --sections standby_timeout
  expect 1 "" "wrong.json: error: $2"
}
refused '.wireless.channel = "six"' \
  'wireless.channel: found a text of 3 bytes; expected a whole number from -2147483648 to 2147483647'
refused '.standby_timeout = 2147483648' \
  'standby_timeout: found a number; expected a whole number from -2147483648 to 2147483647'
refused '.ocp_language.name = "x" * 64' \
  'ocp_language.name: found a text of 64 bytes; expected a text of at most 63 bytes, none of them NUL'
refused '.cards[1].cardFeatures.chip = true' \
  'cards[1].cardFeatures.chip: found an unknown key; expected one of: mag_stripe, contact_encode, non_contact_encode'
refused '.cards += [{}]' 'cards: found a list of 3; expected at most 2 entries'
refused '.physical_address = "02:00"' \
  'physical_address: found a text of 5 bytes; expected six hexadecimal bytes with colons between them'
refused '.feeder_mode = "tray"' \
  'feeder_mode: found a text of 4 bytes; expected one of: hopper, manual, auto, alreadyinprinter'
refused '.takeup_motor.S0.val = null' 'takeup_motor.S0.val: found nothing; expected a number'
refused '[.]' 'found a list; expected an object'

# Every mistake is told, in the order of the record.
jq '.wireless.channel = "six" | .standby_timeout = 2147483648 | .wifi = {}' record.json >wrong.json
kovra compose configuration wrong.json --sections standby_timeout
expectStatus 1
same "standard output" "" "$out"
holds "standard error" 'wrong.json: error: wireless.channel: found a text of 3 bytes; *
wrong.json: error: standby_timeout: found a number; *
wrong.json: error: wifi: found an unknown key; *' "$err"
checks=$((checks + 1))
(($(wc -l <<<"${err%$'\n'}") == 3)) || complain "$called: more than three lines" "$err"

# A member that a chosen section is made of has to be there, unless zeros are wanted.
echo '{"lcd_contrast": {"min": 0, "max": 63}}' >part.json
kovra compose configuration part.json --sections standby_timeout,lcd_contrast
expectStatus 1
same "standard output" "" "$out"
holds "standard error" 'part.json: error: standby_timeout: found nothing; expected *
part.json: error: lcd_contrast.val: found nothing; expected *' "$err"
kovra compose configuration part.json --sections standby_timeout,lcd_contrast --zero-missing
expect 0 '<?xml version="1.0" encoding="UTF-8" ?>
<configuration>
    <standby_timeout>0</standby_timeout>
    <lcd_contrast min="0" max="63">0</lcd_contrast>
</configuration>' ""

# Texts that hold no record.
echo '{"standby_timeout": }' >broken.json
kovra compose configuration broken.json --sections standby_timeout
expectStatus 1
same "standard output" "" "$out"
holds "standard error" 'broken.json:1:21: error: malformed JSON: *' "$err"
"$tool" decode --format json "$samples/identity/full.xml" >identity.json
kovra compose configuration identity.json --sections standby_timeout
expect 1 "" 'identity.json: error: readings: found printer-id; expected configuration'
head -c 100000 /dev/zero | tr '\0' '[' >deep.json
kovra compose configuration deep.json --sections standby_timeout
expectStatus 1
kovra compose configuration missing.json --sections standby_timeout
expect 3 "" 'missing.json: error: No such file or directory'

# Choices.
kovra compose configuration record.json --sections standby_timeout --card 1
expect 1 "" 'record.json: error: sections: found no cards; expected the section cards, of which one card was chosen'
for wrong in "--sections nothing" "--sections cards --card 3" "--sections cards --card 0" ""; do
  # shellcheck disable=SC2086 # words
  kovra compose configuration record.json $wrong
  expectStatus 2
  same "standard output" "" "$out"
done
kovra compose
expectStatus 2
kovra compose configuration --help
expectStatus 0
for section in physical_address wireless internal_encoder; do
  holds "help" "*$section*" "$out"
done

finish

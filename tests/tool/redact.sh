#!/usr/bin/env bash
# `kovra redact` copies replies byte for byte, but for what tells whose they are; the copy decodes to
# the same record but for that, and what cannot be copied so is refused.
#   redact.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

# becomes REPLY COPY [OPTION]...: of the reply on standard input.
becomes() {
  local reply=$1 copy=$2
  shift 2
  kovra redact "$@" < <(printf '%s\n' "$reply")
  expect 0 "$copy" ""
}
# becomesSo BEFORE AFTER: what stands in an identity becomes the other.
inside() { becomes "<printer_id>$1</printer_id>" "<printer_id>$2</printer_id>" "${@:3}"; }

# Each group, in the members of the catalogue. Serial numbers keep their form, also as numbers.
inside '<printer_serial>20417733</printer_serial>' '<printer_serial>10000001</printer_serial>'
inside '<printer_serial>4294967295</printer_serial>' '<printer_serial>1000000001</printer_serial>'
inside '<printer_serial>0x1fC</printer_serial>' '<printer_serial>0x0aB</printer_serial>'
inside '<printhead_serial>PH-0098-z</printhead_serial>' '<printhead_serial>AA-0000-b</printhead_serial>'
inside '<physical_address>02:1a:2b:3c:4d:5e</physical_address>' \
  '<physical_address>02:00:00:00:00:01</physical_address>'
inside '<physical_address>02-1A-2B-3C-4D-5E</physical_address>' \
  '<physical_address>02-00-00-00-00-01</physical_address>'
inside '<physical_address>02:1a:2b</physical_address>' '<physical_address>00:0a:0b</physical_address>'
inside '<physical_address>none</physical_address>' '<physical_address>none</physical_address>'
inside '<physical_address>00:00:00:00:00:00</physical_address>' \
  '<physical_address>00:00:00:00:00:00</physical_address>'
becomes '<get_job_list><job><uuid>5D2C8F5E-7b1a-4c39-9e0d-1f6a3b8c4d21</uuid></job></get_job_list>' \
  '<get_job_list><job><uuid>00000000-0000-4000-8000-000000000001</uuid></job></get_job_list>'
becomes '<configuration><wireless><ssid>Office</ssid><key>hush</key></wireless></configuration>' \
  '<configuration><wireless><ssid>network-1</ssid><key>key-1</key></wireless></configuration>'
becomes '<data><mag><track1>;4711=2811?</track1><track2>x</track2></mag></data>' \
  '<data><mag><track1>track-1</track1><track2>track-2</track2></mag></data>'
becomes '<passkey>none</passkey>' '<passkey>key-1</passkey>'
becomes '<action>reset<printer serial="K2001234" nonce="8F31"/></action>' \
  '<action>key-1<printer serial="A0000001" nonce="key-2"/></action>'

# Addresses of one subnet stay in one; masks and empty ones stay; there are more than three.
ethernet() { printf '<configuration><ethernet>%s</ethernet></configuration>' "$1"; }
becomes "$(ethernet '<ip_address>192.168.40.21</ip_address><subnet_mask>255.255.254.0</subnet_mask><gateway>192.168.40.1</gateway><dns>192.168.40.255</dns>')" \
  "$(ethernet '<ip_address>192.0.2.1</ip_address><subnet_mask>255.255.254.0</subnet_mask><gateway>192.0.2.2</gateway><dns>192.0.2.255</dns>')"
becomes "$(ethernet '<ip_address>0.0.0.0</ip_address><gateway>255.0.255.0</gateway>')" \
  "$(ethernet '<ip_address>0.0.0.0</ip_address><gateway>192.0.2.0</gateway>')"
becomes "$(ethernet '<ip a="10.0.0.1" b="10.0.1.1" c="10.0.2.1" d="10.0.3.1" e="10.0.0.1" f="fe80::1"/>')" \
  "$(ethernet '<ip a="192.0.2.1" b="198.51.100.1" c="203.0.113.1" d="198.18.0.1" e="192.0.2.1" f="2001:db8::1"/>')"

# Elements and attributes that are not known, by the words of their names; what tells of a number or
# a state stays.
inside '<userName>Ada</userName><IPAddress>10.1.1.1</IPAddress><wpa-psk>x</wpa-psk>' \
  '<userName>user-1</userName><IPAddress>192.0.2.1</IPAddress><wpa-psk>key-1</wpa-psk>'
inside '<serial2 value="A1"/><x hostname=lab7 y="lab7"/><skip>mac</skip><job_count>55</job_count>' \
  '<serial2 value="A2"/><x hostname=host-1 y="host-1"/><skip>mac</skip><job_count>55</job_count>'
inside '<owner><first>Ada</first><state>in</state></owner><job><n>5</n></job>' \
  '<owner><first>user-1</first><state>in</state></owner><job><n>job-1</n></job>'

# The bytes around a value stay: blanks, references, CDATA, other attributes, declarations.
becomes $'\xef\xbb\xbf<?xml version=\'1.0\'?>\n<!-- a > b --><get_wireless_status a = \'1\'\t>\r\n<ssid >\n Tom &amp; co &#x41;\t\tB \n</ssid ><ssid><![CDATA[ <Tom>&amp; ]]></ssid><x y=\'&quot;\'/>&unknown;</get_wireless_status>\r\n' \
  $'\xef\xbb\xbf<?xml version=\'1.0\'?>\n<!-- a > b --><get_wireless_status a = \'1\'\t>\r\n<ssid >\n network-1 \n</ssid ><ssid><![CDATA[ network-2 ]]></ssid><x y=\'&quot;\'/>&unknown;</get_wireless_status>\r\n'
# One value in several spellings is one.
becomes '<get_wireless_status><ssid>Tom &amp; co</ssid><ssid>Tom  &#38; &#x63;o</ssid><ssid><![CDATA[Tom & co]]></ssid><x ssid="Tom &amp; co"/></get_wireless_status>' \
  '<get_wireless_status><ssid>network-1</ssid><ssid>network-1</ssid><ssid><![CDATA[network-1]]></ssid><x ssid="network-1"/></get_wireless_status>'
# A reference that swallows a tag.
becomes '<get_wireless_status><ssid>ab&#x<b>x41;cd</ssid></get_wireless_status>' \
  '<get_wireless_status><ssid>network-1</ssid></get_wireless_status>'

# Other occurrences, of four characters and more: comments, unknown elements, other texts, and what
# stands behind the document, of which also the elements are looked at.
becomes '<!-- Office,abc --><get_wireless_status><ssid>Office</ssid><x ssid="abc">in Of&#102;ice abc</x><!--xOfficex--></get_wireless_status><!DOCTYPE Office>tail: Office <printer_id><printer_serial>77</printer_serial><a b="Office"/></printer_id>' \
  '<!-- network-1,abc --><get_wireless_status><ssid>network-1</ssid><x ssid="network-2">in network-1 abc</x><!--xnetwork-1x--></get_wireless_status><!DOCTYPE network-1>tail: network-1 <printer_id><printer_serial>11</printer_serial><a b="network-1"/></printer_id>'
inside '<printhead_serial>AB12</printhead_serial><firmware_version>1-AB12</firmware_version>' \
  '<printhead_serial>AA01</printhead_serial><firmware_version>1-AA01</firmware_version>'
inside '<physical_address>02:1a:2b:3c:4d:5e</physical_address><!-- 02:1A:2B:3C:4D:5E -->' \
  '<physical_address>02:00:00:00:00:01</physical_address><!-- 02:00:00:00:00:01 -->'
# Numbers and names stay, and that is told, without the value.
kovra redact <<<'<get_wireless_status><ssid>error</ssid><error>1</error><state error="1">error</state></get_wireless_status>'
expectStatus 0
same "data" '<get_wireless_status><ssid>network-1</ssid><error>1</error><state error="1">error</state></get_wireless_status>' "$out"
same "messages" '<stdin>:1:41: warning: what became network-1 elsewhere is a name, a number or a word here, and stays' "$err"

# One message for each value, and not more than a few of many.
{
  printf '<get_wireless_status>'
  for i in {1..15}; do printf '<x ssid="name%d"/><name%d/><name%d/>\n' $i $i $i; done
  printf '</get_wireless_status>'
} >named.xml
kovra redact named.xml
expectStatus 0
same "the number of messages" 11 "$(wc -l <<<"${err%$'\n'}")
"
holds "messages" 'named.xml:1:40: warning: what became network-1 *named.xml:10:*network-10 *named.xml: warning: 5 more*' "$err"

# Overlapping values, one in another, repeated ones, and pseudonyms that are values.
becomes '<get_wireless_status><ssid>abcdef</ssid><x ssid="defghi" job="bcde"/><y>abcdefghi abcdeabcdef</y></get_wireless_status>' \
  '<get_wireless_status><ssid>network-1</ssid><x ssid="network-2" job="job-1"/><y>network-1network-2 ajob-1network-1</y></get_wireless_status>'
becomes '<get_wireless_status><ssid>aaaa</ssid><y>aaaaaaaa aaaaa</y></get_wireless_status>' \
  '<get_wireless_status><ssid>network-1</ssid><y>network-1network-1 network-1network-1</y></get_wireless_status>'
becomes '<get_wireless_status><ssid>network-2</ssid><a ssid="network-1"/><b ssid="Home"/></get_wireless_status>' \
  '<get_wireless_status><ssid>network-3</ssid><a ssid="network-4"/><b ssid="network-5"/></get_wireless_status>'
becomes "$(ethernet '<ip_address>192.0.2.1</ip_address><gateway>10.0.0.1</gateway>')" \
  "$(ethernet '<ip_address>198.51.100.1</ip_address><gateway>203.0.113.1</gateway>')"
inside '<printer_serial>10000001</printer_serial><a serial="20000000"/>' \
  '<printer_serial>10000002</printer_serial><a serial="10000003"/>'
# One that stands for several things has one pseudonym, which fits where a number is read.
inside '<x key="20417733"/><printer_serial>20417733</printer_serial>' \
  '<x key="10000001"/><printer_serial>10000001</printer_serial>'

# What is kept; secrets never are.
reply='<configuration><physical_address>02:1a:2b:3c:4d:5e</physical_address><wireless><ssid>Office</ssid><key>hush</key></wireless><a serial="A1" job="x"/></configuration>'
becomes "$reply" "${reply/hush/key-1}" --keep serial,address --keep network,job
becomes "$reply" '<configuration><physical_address>02:1a:2b:3c:4d:5e</physical_address><wireless><ssid>network-1</ssid><key>key-1</key></wireless><a serial="A1" job="job-1"/></configuration>' --keep serial,address
for group in key track secret ''; do
  kovra redact --keep "$group" <<<"$reply"
  expectStatus 2
done

# Encodings come back as they were.
printf '%s' $'<?xml version="1.0" encoding="ISO-8859-1"?><get_wireless_status><ssid>B\xfcro</ssid><x>B\xfcro \xe4</x></get_wireless_status>' >latin.xml
kovra redact latin.xml
same "Latin 1" $'<?xml version="1.0" encoding="ISO-8859-1"?><get_wireless_status><ssid>network-1</ssid><x>network-1 \xe4</x></get_wireless_status>' "$out
"
for encoding in UTF-16LE UTF-16BE; do
  wide() { printf '\ufeff<?xml version="1.0" encoding="UTF-16"?><get_wireless_status><ssid>%s</ssid><x>\U1F600</x></get_wireless_status>' "$1" | iconv -t $encoding; }
  wide 'Büro' >wide.xml
  wide network-1 >expected
  checks=$((checks + 1))
  "$tool" redact wide.xml | cmp - expected || complain "$encoding does not come back"
done
printf '<get_wireless_status><ssid>\xff\xfeab</ssid><x>\xff\xfeab \xff</x></get_wireless_status>' >broken.xml
kovra redact broken.xml
same "bytes that are no UTF-8" $'<get_wireless_status><ssid>network-1</ssid><x>network-1 \xff</x></get_wireless_status>' "$out
"

# members FILE: its record as lines of paths and values, without what is replaced.
replaced=$("$tool" redact --list | awk 'NF == 3 { print $3 }' | sed 's/.*[.]//' | sort -u | paste -sd'|')
members() {
  "$tool" decode --format json --show-secrets "$1" |
    jq -c --arg names "^($replaced)$" '.readings[] | .document as $d | .record |
      paths(scalars) as $p | select(all($p[]; tostring | test($names) | not)) | [$d, $p, getpath($p)]'
}
# All samples: the same record but for that, and other lines only where something was replaced.
mkdir copies
mapfile -t files < <(find "$samples" -name '*.xml' ! -name '*.bad.xml' | sort)
for file in "${files[@]}"; do
  kovra redact -o copy.xml "$file"
  expect 0 "" ""
  checks=$((checks + 2))
  [[ $(members "$file") == "$(members copy.xml)" ]] || complain "$file: another record"
  [[ $(wc -l <"$file") == $(wc -l <copy.xml) ]] || complain "$file: other lines"
done
for secret in 192.168.40.21 20417733 'seven red' 02:00:5e:aa 'Badge office'; do
  checks=$((checks + 1))
  "$tool" redact "$samples/config/full.xml" | grep -qF "$secret" && complain "$secret is told"
done

# Several replies: one value has one pseudonym, wherever it stands, also in names of copies; the map.
mkdir -p in/a in/b to
printf '<printer_id><printer_serial>20417733</printer_serial></printer_id>' >in/a/printer-20417733.xml
printf '<!-- 20417733 --><get_wireless_status><ssid>B\xc3\xbcro</ssid></get_wireless_status>' >in/b/link.xml
kovra redact --output-dir to --map map.json in/b/link.xml in/a/printer-20417733.xml
expect 0 "" ""
same "names" $'link.xml\nprinter-10000001.xml' "$(ls to)
"
same "a copy" '<!-- 10000001 --><get_wireless_status><ssid>network-1</ssid></get_wireless_status>' "$(<to/link.xml)
"
same "the map" '{"kovra":1,"pseudonyms":[{"group":"network","original":"Büro","pseudonym":"network-1"},{"group":"serial","original":"20417733","pseudonym":"10000001"}]}' "$(jq -c . map.json)
"
same "its mode" 600 "$(stat -c %a map.json)
"
# Names that are taken: nothing is written unless that is wanted; the map becomes private then, too.
echo before >to/link.xml && chmod 644 map.json && rm to/printer*
kovra redact --output-dir to in/b/link.xml in/a/printer-20417733.xml
expect 3 "" "to/link.xml: error: is there already; see --force"
kovra redact --map map.json in/b/link.xml
expect 3 "" "map.json: error: is there already; see --force"
same "names" link.xml "$(ls to)
"
same "what was there" before "$(<to/link.xml)
"
kovra redact --force --map map.json --output-dir to in/b/link.xml
expect 0 "" ""
same "the mode" 600 "$(stat -c %a map.json)
"
holds "the copy" '<!-- 20417733 *network-1*' "$(<to/link.xml)"
kovra redact --force --output-dir to in/b/link.xml in/a/../b/link.xml
expect 3 "" "to/link.xml: error: would be the copy of several replies"

# Several in one input, and several at once.
kovra redact --stream --output-dir copies -j 2 < <(cat in/a/*.xml in/b/*.xml)
expect 0 "" ""
same "names" $'stdin-1.xml\nstdin-2.xml' "$(ls copies)
"
kovra redact --output-dir copies -j 2 "$samples"/status/{idle,wireless_link,job_list_full}.xml
expect 0 "" ""
mv copies parallel && mkdir copies
kovra redact --output-dir copies "$samples"/status/{idle,wireless_link,job_list_full}.xml
checks=$((checks + 1))
diff -r -x 'stdin*' copies parallel || complain "several at once give other copies"

# Refused: nothing is written, and what was there stays. The others are copied.
echo before >copy.xml
for bad in '' '<a/>' '<printer_id><printer_serial>1</printer_serial>' \
  '<printer_id/><printer_serial>5</printer' $'<printer_id>\x00</printer_id>'; do
  kovra redact -o copy.xml < <(printf '%s\n' "$bad")
  expectStatus 1
  same "standard output" "" "$out"
  same "what was there" before "$(<copy.xml)
"
done
same "nothing left over" "" "$(find . -name 'copy.xml.*')"
kovra redact --output-dir copies --force missing.xml <(echo '<a/>') in/a/printer-20417733.xml
expectStatus 3
holds "messages" 'missing.xml: error: No such file*/dev/fd/*: error: *expected the root element*' "$err"
holds "a copy" '*10000001*' "$(<copies/printer-10000001.xml)"
kovra redact --max-size 10 in/b/link.xml
expect 1 "" "in/b/link.xml: error: larger than 10 bytes; see --max-size"

# The command line.
kovra redact a.xml b.xml
expectStatus 2
holds "messages" '*several replies need --output-dir*' "$err"
kovra redact --output-dir nowhere in/b/link.xml
expectStatus 2
kovra redact --output-dir to -o x in/b/link.xml
expectStatus 2
kovra redact --list --keep job,network
expectStatus 0
holds "the list" 'key*nonce*serial *printer_id*address*configuration *wireless.bssid*' "${out//printer-id/printer_id}"
checks=$((checks + 1))
grep -qE '^(job|network) ' <<<"$out" && complain "what is kept is listed"
message=$("$tool" redact in/b/link.xml 2>&1 >/dev/full)
same "a full disk" "kovra: error: standard output: No space left on device" "$message
"

# Hostile: no time that grows faster than the text.
{
  printf '<get_wireless_status>'
  awk 'BEGIN { for (i = 1; i <= 30000; ++i)
    printf "<x ssid=\"%040d%d\" ip=\"10.%d.%d.%d\"/><y>10.0.0.1</y>", 0, i, i / 65536, i / 256 % 256, i % 256 }'
  printf '</get_wireless_status>'
} >many.xml
{
  printf '<get_wireless_status><x ssid="'
  head -c 2000000 /dev/zero | tr '\0' a
  printf '"/><y>'
  head -c 4000000 /dev/zero | tr '\0' a
  printf '</y></get_wireless_status>&#'
  head -c 1000000 /dev/zero | tr '\0' '&'
} >long.xml
for file in many long; do
  checks=$((checks + 1))
  timeout 60 "$tool" redact -o copy.xml $file.xml || complain "$file.xml: status $?"
done
kovra redact many.xml
holds "the end of many" '*<x ssid="network-30000" ip="198.18.114.48"/><y>192.0.2.1</y></get_wireless_status>' "${out: -150}"

finish

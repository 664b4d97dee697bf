#!/usr/bin/env bash
# Coverage sums up what is unknown in many replies, most frequent first, with an example each that
# tells no secret.
#   coverage.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

clean=$samples/status/minimal.xml
status() { printf '<get_general_status>%s</get_general_status>' "$1"; }

kovra coverage "$clean"
expect 0 "Replies
  1 read, 1 decoded, 1 clean, 0 refused, 0 unreadable" ""

status $'\n<firmware>1.2</firmware><cover/><firmware>3</firmware>' >one.xml
status '<cover b="1"/><firmware>2</firmware><error unit = "none">5</error>' >two.xml
status '<printer_state>sleeping</printer_state><error unit="x">5</error>' >three.xml
printf '<html lang="en"/>' >html.xml
printf '<html>' >broken.xml
kovra coverage one.xml two.xml three.xml html.xml broken.xml missing.xml "$clean"
expect 3 'Replies
  6 read, 4 decoded, 1 clean, 2 refused, 1 unreadable

Unknown documents
  1  in 1 reply  /html  html.xml:1: <html

Unknown elements
  3  in 2 replies  /get_general_status/firmware  one.xml:2: <firmware>1.2</firmware>
  2  in 2 replies  /get_general_status/cover     one.xml:2: <cover/>

Attributes that are not read
  2  in 2 replies  /get_general_status/error@unit  two.xml:1: unit = "none"

Unknown words
  1  in 1 reply  /get_general_status/printer_state "sleeping"  three.xml:1' \
  "missing.xml: error: No such file or directory"
text=$out
kovra coverage one.xml html.xml
expectStatus 1
kovra coverage one.xml two.xml
expectStatus 0
kovra coverage --max-size 5 one.xml
expectStatus 1
holds "standard output" "*0 read, 0 decoded, 0 clean, 0 refused, 1 unreadable*" "$out"

for jobs in 1 3; do
  kovra coverage -j "$jobs" --format json one.xml two.xml three.xml html.xml broken.xml "$clean"
  expectStatus 1
  same "the object" '{"kovra":1,"replies":6,"decoded":4,"clean":1,"refused":2,"unreadable":0,"unlisted":0,"roots":[{"path":"/html","times":1,"replies":1,"example":{"source":"html.xml","line":1,"value":"<html"}}],"elements":[{"path":"/get_general_status/firmware","times":3,"replies":2,"example":{"source":"one.xml","line":2,"value":"<firmware>1.2</firmware>"}},{"path":"/get_general_status/cover","times":2,"replies":2,"example":{"source":"one.xml","line":2,"value":"<cover/>"}}],"attributes":[{"path":"/get_general_status/error","attribute":"unit","times":2,"replies":2,"example":{"source":"two.xml","line":1,"value":"unit = \"none\""}}],"words":[{"path":"/get_general_status/printer_state","word":"sleeping","times":1,"replies":1,"example":{"source":"three.xml","line":1,"value":"sleeping"}}]}' \
    "$(jq -c . <<<"$out")
"
done
kovra coverage -j 2 one.xml two.xml three.xml html.xml broken.xml missing.xml "$clean"
same "standard output of several workers" "${text%$'\n'}" "$out"
kovra coverage --stream --format json < <(cat one.xml html.xml two.xml)
same "the example" '{"source":"-","number":2,"line":1,"value":"<html"}' \
  "$(jq -c '.roots[0].example' <<<"$out")
"

# The counts are those of decode's notes, over all samples.
mapfile -t replies < <(find "$samples" -name '*.xml' | sort)
kovra coverage --format json "${replies[@]}"
expectStatus 1
counts=$(jq -c '[.replies, .decoded, .clean, (.elements, .attributes, .words, .roots | map(.times) | add // 0)]' <<<"$out")
kovra decode --format jsonl "${replies[@]}"
same "the counts" "$(jq -sc 'def n(k): map(.notes[]?, .error | select(.kind? == k)) | length;
  [length, (map(select(.ok)) | length), (map(select(.ok and .notes == [])) | length),
   n("unknown_element"), n("unread_attribute"), n("unknown_word"), n("unknown_root")]' <<<"$out")" "$counts
"

# What is not listed is told.
{
  printf '<get_general_status>'
  printf '<other/>%.0s' {1..1003}
  printf '</get_general_status>'
} >many.xml
kovra coverage many.xml
expect 0 'Replies
  1 read, 1 decoded, 0 clean, 0 refused, 0 unreadable

Unknown elements
  1000  in 1 reply  /get_general_status/other  many.xml:1: <other/>

3 more notes were not listed' ""

# No secret, no command to the terminal, no endless line.
hushed() {
  printf '%s' "$1" >secret.xml
  for format in text json; do
    kovra coverage --format "$format" secret.xml
    checks=$((checks + 1))
    [[ $out == *secret.xml* && $out$err != *hush* ]] || complain "$called: $1" "$out"
  done
}
hushed '<configuration><wireless><new_password>hush</new_password></wireless></configuration>'
hushed '<configuration><key>hush</key><wireless psk="hush"/></configuration>'
hushed '<keys><other>hush</other></keys>'
hushed '<data><mag><track9 a="hush"/></mag></data>'
printf '<get_general_status><x>\x1b[2J\xff\n%0200d</x></get_general_status>' 0 >$'odd\n.xml'
kovra coverage $'odd\n.xml'
holds "standard output" '*odd\\n.xml:1: <x>\\x1b\[2J\\xff\\n000*...'$'\n' "$out"
printf '<get_general_status><%0100000d/><a%0100000d/></get_general_status>' 0 0 >long.xml
kovra coverage long.xml
checks=$((checks + 1))
((${#out} < 3000)) || complain "$called: ${#out} bytes"
kovra coverage --format json /dev/null $'odd\n.xml'
expectStatus 1
jq -e . <<<"$out" >/dev/null || complain "$called: no JSON" "$out"

for wrong in --format=jsonl --as=media --strict; do
  kovra coverage "$wrong" one.xml
  expectStatus 2
done
kovra coverage -o result one.xml
expect 0 "" ""
holds "the file" "Replies*firmware*" "$(<result)"
checks=$((checks + 1))
"$tool" coverage one.xml >/dev/full 2>/dev/null
(($? == 3)) || complain "a full disk is not noticed"
# What is too long for a line is cut behind a whole character.
for letters in x xx xxx; do
  printf '<get_general_status><%s>%s</%s></get_general_status>' "$letters" \
    "$(printf '\xe2\x82\xac%.0s' {1..40})" "$letters" >wide.xml
  kovra coverage wide.xml
  expectStatus 0
  checks=$((checks + 1))
  iconv -f UTF-8 -t UTF-8 <<<"$out" >/dev/null && grep -q '€\.\.\.$' <<<"$out" ||
    complain "$called: half a character" "$out"
done

finish

#!/usr/bin/env bash
# Check tells all that is wrong with a reply, as compilers do, shows the line without what is secret
# in it, has a strict parser's opinion, and ends as its help says.
#   check.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

clean=$samples/status/minimal.xml
refused=$samples/caps/minimal.bad.xml
note='<get_general_status><error/></get_general_status>'

# Clean, information, warning, error, unreadable: the exit status, without and with --strict.
kovra check "$clean"
expect 0 "" ""
kovra check --strict "$clean"
expect 0 "" ""
kovra check - <<<"$note"
expect 0 "<stdin>:1:21: note: <error>: empty, not read [K115]" ""
kovra check --strict <<<"$note"
expect 1 "<stdin>:1:21: note: <error>: empty, not read [K115]" ""
printf '<get_general_status>\n  <firmware>1.2</firmware>\n</get_general_status>' >warned.xml
kovra check warned.xml "$clean"
expect 1 "warned.xml:2:3: warning: <firmware>: unknown element, skipped [K101]" ""
cp "$refused" refused.xml
kovra check refused.xml
expect 1 "refused.xml:1:54: error: malformed: found </get_capability> in <get_capabilities>, opened at line 1; expected </get_capabilities> [K009]" ""
kovra check missing.xml warned.xml .
expect 3 "warned.xml:2:3: warning: <firmware>: unknown element, skipped [K101]" "missing.xml: error: No such file or directory
.: error: Is a directory"
kovra check --max-size 5 warned.xml
expect 1 "" "warned.xml: error: larger than 5 bytes; see --max-size"
kovra check "$samples"/../samples/status/*.bad.xml /dev/null
expectStatus 1
holds "standard output" "*/dev/null:1:1: error: found an empty text; expected an XML document \[K001\]*" "$out"
kovra check --as configuration warned.xml
expectStatus 1
holds "standard output" "*\[K014\]*" "$out"
kovra check --stream <<<"$note$note<html/>"
expectStatus 1
same "places" "<stdin>#1:1:21: <stdin>#2:1:21: <stdin>#3:1:1:" "$(cut -d' ' -f1 <<<"${out%$'\n'}" | paste -sd' ')
"

# Notes beyond those that are listed: nobody knows what they are, so they fail.
{
  printf '<get_general_status>'
  printf '<error/>%.0s' {1..1001}
  printf '</get_general_status>'
} >many.xml
kovra check many.xml
expectStatus 1
same "the last line" "many.xml: note: 1 more note [K118]" "$(tail -n 1 <<<"${out%$'\n'}")
"

# What Kovra takes and XML does not: one finding of the tool's own, in its place.
strict() {  # place, message, reply
  printf '%b' "$3" >strict.xml
  kovra check strict.xml
  expectStatus 1
  same "the finding" "strict.xml:$1: warning: strict XML parsers stop here: $2 [XML]" \
    "$(grep -F '[XML]' <<<"$out")
"
}
status() { printf '<get_general_status>%s</get_general_status>' "$1"; }
invalid="not well-formed (invalid token)"
strict 1:21 "undefined entity" "$(status '&nope;')"
strict 1:23 "$invalid" "$(status ' & ')x"
strict 1:30 "$invalid" "$(status '<error a=1>5</error>')"
strict 1:45 "junk after document element" "<get_general_status a='&#x41;&amp;'/>       <x/>"
strict 3:5 "$invalid" "<get_general_status>\r\n\n é &</get_general_status>"
strict 1:22 "$invalid" '\xef\xbb\xbf'"$(status '&')"
strict 1:31 "unknown encoding" '<?xml version="1.0" encoding="windows-1252"?>'"$(status '<error>5</error>')"
strict 1:8 "$invalid" '<html>&</html>'
utf16() { printf '%s' "$1" | sed 's/./&\\x00/g'; }
strict 1:47 "$invalid" '\xff\xfe'"$(utf16 '<?xml version="1.0" encoding="UTF-16"?><html>&</html>')"
kovra check --context always strict.xml
(($(wc -l <<<"$out") == 3)) || complain "$called: lines of UTF-16" "$out"
# Where Kovra says itself that it is no XML, once is enough.
for broken in '<a>&#</a>' '<a>' 'text' '' '<get_general_status a="1" a="2"/>'; do
  kovra check <<<"$broken"
  expectStatus 1
  checks=$((checks + 1))
  [[ $out != *'[XML]'* && $(wc -l <<<"${out%$'\n'}") == 1 ]] || complain "$called: two opinions" "$out"
done

# The line of the reply: tabs, wide characters, what drives a terminal, several lines, the end.
context() {  # expected below the message, reply
  printf '%b' "$2" >context.xml
  kovra check --context always context.xml
  same "the excerpt" "$1" "$(grep '^ .*|' <<<"$out")${1:+$'\n'}"
  kovra check --context never context.xml
  holds "no excerpt" "context.xml:*]" "${out%$'\n'}"
  [[ $out != *'|'* ]] || complain "$called: an excerpt" "$out"
}
context '    2 |         <x>1</x>
      |         ^~~~~~~~' '<get_general_status>\n\t<x>1</x>\n</get_general_status>'
context '    2 | <!--日本é--><x>日</x><!--z-->
      |             ^~~~~~~~~' '<get_general_status>\r\n<!--日本é--><x>日</x><!--z-->\r\n</get_general_status>'
context '    2 | <!--\x1b[2J\u202e--><x>\x07</x>
      |     ^~~~
    2 | <!--\x1b[2J\u202e--><x>\x07</x>
      |                     ^~~~~~~~~~~' \
  '<get_general_status>\n<!--\x1b[2J\xe2\x80\xae--><x>\x07</x>\n</get_general_status>'
context '    1 | <get_general_status><x>
      |                     ^~~' '<get_general_status><x>\n1</x></get_general_status>'
context '    2 | <x>
      |    ^' '<get_general_status>\n<x>'
context '' ''
zeros=$(printf '%0500d' 0)
context "    1 | ...000000000000000000--><x>1</x><!--00000000000000000000000000000000...
      |                         ^~~~~~~~" \
  "<get_general_status><!--$zeros--><x>1</x><!--$zeros--></get_general_status>"

# Colours only where they are asked for, and an excerpt only where it is or on a terminal.
kovra check --color always --context always warned.xml
same "in colours" $'\e[1mwarned.xml:2:3:\e[0m \e[35mwarning:\e[0m <firmware>: unknown element, skipped [K101]
\e[2m    2 | \e[0m  <firmware>1.2</firmware>
\e[2m      | \e[0m\e[35m  ^~~~~~~~~~~~~~~~~~~~~~~~\e[0m' "$out"

# Nothing tells a secret, however broken the reply is.
hushed() {
  printf '%s' "$1" >secret.xml
  for format in text json jsonl; do
    kovra check --context always --format "$format" secret.xml
    expectStatus 1
    checks=$((checks + 1))
    [[ $out$err != *hush* ]] || complain "$called: tells a secret of $1" "$out"
  done
}
wireless() { printf '<configuration><wireless>%s</wireless></configuration>' "$1"; }
hushed "$(wireless '<key>hush</key><x/>')"
hushed "$(wireless '<x/><key>a & hush</key><key a="hush">hush</key>')"
hushed "$(wireless '<x/><key><![CDATA[</key>hush]]></key>')"
hushed "$(wireless '<x/><key>a<!--</key>-->hush</key>')"
hushed "$(wireless '<x/><key>hush')"
hushed "$(wireless '<x/><key>a>hush</key')"
hushed "$(wireless '<x/><w:Key>hush</w:Key>')"
hushed "$(wireless '<x/><new_psk>hush</new_psk><user secret="hush" token=hush/>')"
hushed '<get_general_status><x/><key>hush</key></get_general_status>'
hushed '<passkey>hush</passkey><x/>'
hushed '<passkey>hush<x></passkey>'
hushed '<keys><x/><printer_lock_key>hush</printer_lock_key></keys>'
hushed '<data><mag><track1>hush</track1><x/></mag></data>'
hushed '<secure_action_request><x/><action name="a"><printer nonce="hush"/></action></secure_action_request>'

# The JSON has what decode says in its notes, on every sample, and nothing beside but the strict
# parser's opinion.
mapfile -t replies < <(find "$samples" -name '*.xml' | LC_ALL=C sort)
"$tool" decode --format jsonl "${replies[@]}" 2>/dev/null |
  jq -c 'if .ok then .source as $source | .notes[] | {$source} + . else {source} + .error end' >told
"$tool" check --format jsonl "${replies[@]}" | jq -c 'select(.id != "XML") | del(.kovra)' >found
checks=$((checks + ${#replies[@]}))
(($(wc -l <told) > ${#replies[@]})) || complain "check: hardly any findings to compare"
diff told found >different || complain "check: other findings than decode" "$(<different)"

kovra check --format jsonl --stream <<<"<a/>$note"
expect 1 '{"source":"-","number":1,"kovra":1,"id":"K013","kind":"unknown_root","severity":"error","line":1,"column":1,"offset":0,"end_line":1,"end_column":3,"end_offset":2,"path":"/a","element":"a","found":"root element <a>","expected":["the root element of a reply that Kovra reads"],"message":"found root element <a>; expected the root element of a reply that Kovra reads"}
{"source":"-","number":2,"kovra":1,"id":"K115","kind":"empty_element","severity":"information","line":1,"column":21,"offset":20,"end_line":1,"end_column":29,"end_offset":28,"path":"/get_general_status/error","element":"error","message":"<error>: empty, not read"}' ""
kovra check --format json "$clean" missing.xml
expect 3 '{
  "kovra": 1,
  "findings": [],
  "replies": 1,
  "clean": 1,
  "errors": 0,
  "warnings": 0,
  "information": 0,
  "unreadable": 1
}' "missing.xml: error: No such file or directory"
printf '%s' "$note" >$'odd\xff"\n.xml'
kovra check --format json --strict warned.xml refused.xml $'odd\xff"\n.xml'
expectStatus 1
same "the object" '{"kovra":1,"findings":["K101","K009","K115"],"replies":3,"clean":0,"errors":1,"warnings":1,"information":1,"unreadable":0}' \
  "$(jq -c '.findings |= map(.id)' <<<"$out")
"
same "the source" 'odd�"\n.xml' "$(jq -r '.findings[2].source | @json' <<<"$out" | sed 's/^"//; s/"$//; s/\\"/"/')
"
kovra check $'odd\xff"\n.xml'
expect 0 'odd\xff"\n.xml:1:21: note: <error>: empty, not read [K115]' ""

# Several at once give the same bytes; a file as output appears whole.
mapfile -t replies < <(find "$samples" -name '*.xml' | sort)
for format in text json jsonl; do
  kovra check --context always --format "$format" missing.xml "${replies[@]}"
  alone=$out
  kovra check --context always --format "$format" -j 3 -o result missing.xml "${replies[@]}"
  expect 3 "" "missing.xml: error: No such file or directory"
  checks=$((checks + 1))
  [[ $(<result)$'\n' == "$alone" ]] || complain "$called: other findings"
done
jq -e . <result >/dev/null || complain "no JSON"

for wrong in --format=xml --context=some --as=nope --color=red; do
  kovra check "$wrong" warned.xml
  expectStatus 2
done
checks=$((checks + 1))
"$tool" check warned.xml >/dev/full 2>/dev/null
(($? == 3)) || complain "a full disk is not noticed"

finish

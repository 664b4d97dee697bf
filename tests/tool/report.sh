#!/usr/bin/env bash
# `kovra report`: what the page says of replies, that nothing in a reply or in the name of its file
# becomes markup, which replies are of one printer, and how it ends.
#   report.sh <tool> <samples folder>
set -uo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
source "$tests/support.bash" "$@"
assets=$samples/../tools/kovra/report
export SOURCE_DATE_EPOCH=1000000000

# report STATUS ARGUMENT...: makes report.html; what it says is in report.json.
mark=''
report() {
  local expected=$1
  shift
  rm -f report.html
  kovra report --output report.html "$@"
  expectStatus "$expected"
  same "standard output" "" "$out"
  checks=$((checks + 1))
  python3 -B "$tests/report_page.py" report.html "$assets/report.css" "$assets/report.js" \
    ${mark:+"$mark"} >report.json || complain "$called: no page"
}

says() {  # FILTER EXPECTED: of the last page
  same "$1" "$2" "$(jq -rc "$1" report.json)"$'\n'
}

general() { printf '<get_general_status>%s</get_general_status>\n' "$1"; }
identity() { printf '<printer_id><printer_serial>%s</printer_serial></printer_id>\n' "$1"; }

# ---- What it says

report 0 "$samples/status/alarm.xml" "$samples/status/minimal.xml" "$samples/status/printing.xml"
says .title "3 printers, 2 need a person"
says .tally '["2 Now","1 Nothing to do"]'
says .made '["2001-09-09 01:46 UTC"]'
says '[.printers[].name]' '["alarm","minimal","printing"]'
says '.printers[0].signs[]' "Printer state: alarm handling
Alarms: bits 1, 3, 4, 19 (0x8001a)
Error: 91
Warning: 36"
says '.printers[0].states' '["Printer state: alarm handling","Laminator state: not used"]'
says '.printers[0].told["general-status"][0:3]' \
  '["printer_state: alarm_handling (6)","alarms: 0x8001a","error: 91"]'
says '.printers[1].signs' '["Printer state: offline"]'
says '.printers[2].signs' '[]'
says '.refused + .notes' '[]'

report 0 "$samples/status/media_described.xml" "$samples/identity/full.xml"
says '[.printers[] | .need]' '["Soon","Not known"]'
says '.printers[0].levels' '[{"what":"Ribbon","said":"12 of 350","bar":[12,35,350]}]'
says '.printers[0].signs' '["Ribbon: 12 of 350: low"]'
says '.printers[1].about' '["HX-500 Retransfer","Serial number 20417733"]'

# Every supply has a bar, under one name whatever the message; the last one counts.
supplies() {
  printf '<%s><initial_size>%s</initial_size><panels_remaining>%s</panels_remaining></%s>' \
    "$1" "$2" "$3" "$1"
}
printf '<get_media_status>%s</get_media_status>' "$(supplies ribbon 500 0)$(supplies film 1000 101
  )$(supplies top_laminate 250 25)$(supplies bottom_laminate 250 251)" >p.media-status.xml
printf '<configuration><media_info>%s</media_info><lamination><bottom_laminate>%s</bottom_laminate></lamination></configuration>' \
  "$(supplies film 1000 99)" "$(supplies laminate_installed 600 411)" >p.configuration.xml
bars='[.printers[0].levels[] | "\(.what) \(.said) \(.bar // "none")"]'
report 0 p.media-status.xml
says "$bars" '["Ribbon 0 of 500 [0,50,500]","Film 101 of 1000 [101,100,1000]","Top laminate 25 of 250 [25,25,250]","Bottom laminate 251 of 250 none"]'
says '.printers[0].signs' '["Ribbon: 0 of 500: empty","Top laminate: 25 of 250: low"]'
report 0 p.media-status.xml p.configuration.xml
says "$bars" '["Ribbon 0 of 500 [0,50,500]","Film 99 of 1000 [99,100,1000]","Top laminate 25 of 250 [25,25,250]","Bottom laminate 411 of 600 [411,60,600]"]'
says '.printers[0].signs' '["Ribbon: 0 of 500: empty","Film: 99 of 1000: low","Top laminate: 25 of 250: low"]'
report 0 p.configuration.xml p.media-status.xml
says '.printers[0].signs' '["Ribbon: 0 of 500: empty","Top laminate: 25 of 250: low"]'

# The countdown to a cleaning: with the interval where another reply tells it.
count() {
  printf '<get_count><total_cards_until_next_cleaning>%s</total_cards_until_next_cleaning></get_count>' "$1"
}
settings='<configuration><cleaning_thresholds><alcohol_card_cleaning min="0" max="9000">%s</alcohol_card_cleaning><pre_warning min="0" max="9000">%s</pre_warning></cleaning_thresholds></configuration>'
# shellcheck disable=SC2059 # the text is a form
{
  count 180 >a.get_count.xml && printf "$settings" 3000 200 >a.configuration.xml
  count 301 >b.get_count.xml && printf "$settings" 3000 0 >b.configuration.xml
}
count 101 >c.xml
count -3 >d.xml
count 2500 >e.xml
report 0 [a-e]*.xml
says '.printers[] | "\(.name) \(.need) \(.levels[0].said) \(.levels[0].bar) \(.signs)"' \
  'd Now -3 [0,100,3000] ["Total cards until next cleaning: -3: overdue"]
a Soon 180 of 3000 [180,200,3000] ["Total cards until next cleaning: 180 of 3000: due soon"]
c Nothing to do 101 [101,100,3000] []
b Nothing to do 301 of 3000 [301,300,3000] []
e Nothing to do 2500 [2500,100,3000] []'
count 0 >c.xml
report 0 c.xml
says '.printers[0] | "\(.levels[0].bar) \(.signs)"' '[0,100,1000] ["Total cards until next cleaning: 0: due"]'

# Lists are history: what is wrong there can wait, and the same thing is told once.
printf '<get_job_list>%s</get_job_list>' "$(for state in done_ok done_error done_error parsed; do
  printf '<job><print_state>%s</print_state></job>' $state
done)" >jobs.xml
report 0 jobs.xml
says '.printers[0] | "\(.need) \(.signs)"' 'Soon ["Jobs print state: done error (2 times)"]'

# A word that nobody knows is no reason to call anybody, nor to be calm.
general '<printer_state>sleeping</printer_state>' >word.xml
report 0 word.xml
says '.printers[0] | "\(.need) \(.signs)"' 'Not known ["Printer state: unknown word \"sleeping\""]'

# Choices and counters are no troubles.
general '<num_jobs_done_error>7</num_jobs_done_error><printer_state>idle</printer_state>' >calm.xml
report 0 calm.xml
says '.printers[0] | "\(.need) \(.signs)"' 'Nothing to do []'
report 0 "$samples/caps/full.xml"
says '.printers[0].signs' '[]'

# ---- Which replies are of one printer

mkdir -p fleet/hx-1 fleet/hx-2
general '<error>0</error>' >fleet/hx-1.general-status.xml
identity 77 >fleet/HX-1_PRINTER_ID.xml
identity 78 >fleet/hx-1.printer_id.xml
general '<error>4</error>' >fleet/hx-2/get_general_status.xml
identity 79 >fleet/hx-2/printer-id.xml
general '<error>5</error>' >fleet/10.0.0.5.xml
general '<error>6</error>' >fleet/10.0.0.6.xml
find fleet -name '*.xml' | LC_ALL=C sort >list
printers='.printers[] | "\(.name) \(.about) \(.told | keys)"'
report 0 --files-from list
says "$printers" '10.0.0.5 [] ["general-status"]
10.0.0.6 [] ["general-status"]
hx-2 ["Serial number 79"] ["general-status","printer-id"]
HX-1 ["Serial number 77"] ["printer-id"]
hx-1 ["Serial number 78"] ["general-status","printer-id"]'

# Another serial number in the same group is another printer; what says none is of the first.
report 0 --group-by folder --files-from list
says '[.printers[] | "\(.name) \(.about) \(.told | keys)"] | sort[]' 'fleet ["Serial number 77"] ["general-status","printer-id"]
fleet ["Serial number 78"] ["printer-id"]
fleet/hx-2 ["Serial number 79"] ["general-status","printer-id"]'

# The same serial number joins, with all that its groups say; the last one of a message counts.
general '<error>0</error>' >x.general-status.xml
identity 5 >x.printer-id.xml
general '<error>9</error>' >y.general-status.xml
identity 5 >y.printer-id.xml
report 0 [xy].*.xml
says '.printers[] | "\(.name) \(.need) \(.told["general-status"])"' 'x Now ["error: 9"]'
report 0 y.*.xml x.*.xml
says '.printers[] | "\(.name) \(.need) \(.told["general-status"])"' 'y Nothing to do ["error: 0"]'

# A stream is of many printers, unless it is said to be of one.
cat x.*.xml >stream
report 0 --stream stream
says '[.printers[].name]' '["stream#2","stream#1"]'
report 0 --stream --group-by input stream
says '.printers[] | "\(.name) \(.told | keys)"' 'stream ["general-status","printer-id"]'
report 0 --stream - <stream
says '[.printers[].name]' '["<stdin>#2","<stdin>#1"]'
report 0 --stream --group-by input <stream
says '[.printers[].name]' '["<stdin>"]'
kovra report --group-by bogus x.printer-id.xml
expectStatus 2

# ---- What is refused, and notes

: >empty.xml
echo '<get_general_status><error>' >cut.xml
echo '<get_general_status><firmware/><error>1</error></get_general_status>' >n1.xml
cp n1.xml n2.xml
report 1 empty.xml n1.xml cut.xml n2.xml
says .title "2 printers, 2 need a person"
says '.tally[1:]' '["2 refused","2 notes"]'
says '.refused[] | sub(": .*"; "")' $'empty.xml:1:1\ncut.xml:2:1'
same "refusals on standard error" "${err%$'\n'}" "$(jq -r '.refused[] | sub(": "; ": error: ")' report.json)"$'\n'
says '.notes' '["Warning: <firmware>: unknown element, skipped; n1.xml:1:21 and 1 other place"]'
report 3 missing.xml empty.xml
says '.refused[]' $'missing.xml: No such file or directory\nempty.xml:1:1: found an empty text; expected an XML document'
says '.title, .printers' $'0 printers, none needs a person\n[]'
report 1 --max-size 20 n1.xml
says '.refused[]' 'n1.xml: larger than 20 bytes; see --max-size'

# More notes than anybody reads are counted.
{
  printf '<get_general_status>'
  for ((i = 0; i < 900; ++i)); do printf '<other%d/>' "$i"; done
  printf '</get_general_status>'
} >many1.xml
sed 's/other/more/g' many1.xml >many2.xml
report 0 many1.xml many2.xml
says '(.notes | length), .tally[1]' $'1000\n1800 notes'
holds "page" '*<p>800 more notes are not listed;*' "$(<report.html)"

# ---- Hostile texts

# Every text, every attribute and the names of the elements that are not known.
xml='zq&lt;i onclick=&quot;x&quot;>&amp;&apos;'
mkdir hostile
mapfile -t replies < <(find "$samples" -name '*.xml' ! -name '*.bad.xml')
python3 - "$xml" "${replies[@]}" <<'END'
import pathlib, re, sys
hostile = sys.argv[1]
for name in sys.argv[2:]:
    path = pathlib.Path(name)
    text = path.read_text(encoding="latin-1")
    text = re.sub(r"<!\[CDATA\[.*?\]\]>", "x", text, flags=re.S)
    text = re.sub(r'(<[^?!][^<>]*?=)("[^"]*"|\'[^\']*\')', lambda m: f'{m[1]}"{hostile}"', text)
    text = re.sub(r">[^<>]+</", lambda m: f">{hostile}</", text)
    pathlib.Path("hostile", f"{path.parent.name}-{path.name}").write_text(text, encoding="latin-1")
END
mark='zq<i onclick'
report 0 hostile/*.xml
checks=$((checks + 3))
(($(jq '.printers | length' report.json) > 50)) || complain "too few printers"
(($(jq '[.printers[].told[][] | select(contains("zq<i"))] | length' report.json) > 60)) ||
  complain "too few hostile values"
(($(jq '[.notes[] | select(contains("zq<i"))] | length' report.json) > 60)) ||
  complain "too few hostile notes"

# Characters that drive terminals and rearrange lines, in texts, words and names of files.
mark='drîve'
direction=$'\u202e' control=$'\u009b' isolate=$'\u2066'
printf '<printer_id><printer_model>a%sdrîve</printer_model><vendor>%s%s&#27;&#7;</vendor></printer_id>' \
  "$direction" "$control" "$isolate" >model.xml
general "<printer_state>drîve${direction}now</printer_state>" >state.xml
echo '<drîve/>' >root.xml
report 1 model.xml state.xml root.xml
holds "refused" '*drîve*' "$(jq -r '.refused[]' report.json)"
says '.printers[] | .about[0], .signs[0]' 'a\u202edrîve
null
null
Printer state: unknown word "drîve\u202enow"'
mark='"><img src=x onerror=1>'
file=$'"><img src=x onerror=1>\n\e[31m\u202e\''
cp x.general-status.xml "$file.xml"
cp x.general-status.xml $'bad\xff.xml'
cp cut.xml "$file.cut"
cp n1.xml "$file.note.xml"
report 1 "$file.xml" $'bad\xff.xml' "$file.cut" "$file.note.xml"
says '[.printers[].name] | sort[]' '"><img src=x onerror=1>\n\x1b[31m\u202e'\''
"><img src=x onerror=1>\n\x1b[31m\u202e'\''.note
bad\xff'
holds "refused" '*onerror=1>\\n*' "$(jq -r '.refused[]' report.json)"
holds "notes" '*onerror=1>\\n*' "$(jq -r '.notes[]' report.json)"
mark=''

# ---- Secrets

hidden=0
kovra decode --format jsonl "${replies[@]}"
mapfile -t keeping < <(jq -r 'select(any(.. | strings; . == "******")) | .source' <<<"$out")
for reply in "${keeping[@]}"; do
  kovra decode --format json "$reply"
  paths=$(jq -c '[paths(. == "******")]' <<<"$out")
  kovra decode --format json --show-secrets "$reply"
  mapfile -t values < <(jq -r --argjson paths "$paths" 'getpath($paths[]) | tostring' <<<"$out")
  report 0 "$reply"
  for value in "${values[@]}"; do
    ((${#value} > 3)) || continue
    checks=$((checks + 1)) hidden=$((hidden + 1))
    ! grep -qF -e "$value" report.json || complain "$called: tells a secret"
  done
  holds "page" '*\*\*\*\*\*\**' "$(<report.json)"
done
checks=$((checks + 1))
((hidden > 20)) || complain "only $hidden secrets were looked for"

# ---- How it ends

# Several at once make the same page; so does standard output.
report 0 hostile/*.xml
cp report.html alone.html
report 0 -j 3 hostile/*.xml
checks=$((checks + 2))
cmp -s report.html alone.html || complain "another page by several workers"
kovra report hostile/*.xml
expectStatus 0
cmp -s "$work/.out" alone.html || complain "another page on standard output"

# A file is whole or as it was.
echo before >old.html
kovra report --bogus --output old.html x.printer-id.xml
expectStatus 2
kovra report --output nowhere/old.html x.printer-id.xml
expectStatus 3
same "old.html" "before" "$(<old.html)"$'\n'
checks=$((checks + 1))
message=$("$tool" report x.printer-id.xml 2>&1 >/dev/full)
[[ $? == 3 && $message == "kovra: error: standard output: No space left on device" ]] ||
  complain "a full disk: $message"

# Where memory ends, the old page stays. Instrumented programs do not start with so little.
if (ulimit -v 60000 && "$tool" --version) >/dev/null 2>&1; then
  for ((i = 0; i < 1000; ++i)); do printf '%s' "$(<x.general-status.xml)"; done >thousand
  for ((i = 0; i < 40; ++i)); do cat thousand; done >large
  status=0
  (ulimit -v 60000 && "$tool" report --stream --output old.html large) 2>message || status=$?
  checks=$((checks + 1))
  ((status == 3)) || complain "no memory: $status" "$(head -n 3 message)"
  same "old.html" "before" "$(<old.html)"$'\n'
fi
checks=$((checks + 1))
[[ -z $(find . -name '*.html.*') ]] || complain "left over" "$(ls)"

# ---- What there is to read about it

kovra report --help
expectStatus 0
manual=$(sed 's/\\-/-/g' "$samples/../docs/man/kovra-report.1")
for option in $(grep -oE -e '--[a-z-]+' <<<"${out%%One HTML*}" | sort -u); do
  holds "the man page" "*$option*" "$manual"
done

finish

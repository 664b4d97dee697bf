#!/usr/bin/env bash
# What people see on a terminal: colours, lines that fit, and what matters first. Elsewhere there are
# neither colours nor broken lines.
#   people.sh <tool> <samples folder>
set -uo pipefail
terminal=$(realpath "$(dirname "$0")/on_terminal.py")
source "$(dirname "$0")/support.bash" "$@"
unset NO_COLOR COLUMNS
export TERM=xterm

cp "$samples"/status/{minimal,unknown-elements,media_full}.xml "$samples"/config/{full,odd}.xml .
cp "$samples/logs/laminator_response.xml" .

# sees COLUMNS STREAMS ARGUMENT...: $out is what stands on the terminal.
sees() {
  local columns=$1 streams=$2
  shift 2
  status=0
  python3 "$terminal" "$columns" "$streams" "$tool" "$@" >"$work/.out" 2>"$work/.err" || status=$?
  out=$(cat "$work/.out" && printf .) err=$(cat "$work/.err" && printf .)
  out=${out%.} err=${err%.}
  called="on a terminal of $columns columns ($streams): kovra $*"
  checks=$((checks + 1))
  [[ -z $err ]] || complain "$called" "$err"
}

plain() { sed 's/\x1b\[[0-9;]*m//g' <<<"$1"; }
widest() { plain "$1" | LC_ALL=C.UTF-8 wc -L; }

# fits COLUMNS: no line of the last call is wider.
fits() {
  checks=$((checks + 1))
  (($(widest "$out") <= $1)) || complain "$called: too wide" "$(plain "$out")"
}

red=$'\e[1;31m' magenta=$'\e[35m' faint=$'\e[2m' bold=$'\e[1m' end=$'\e[0m'

# A table: what needs somebody in colour.
sees 80 out decode minimal.xml
same "the terminal" "${bold}general-status${end} <get_general_status>
$red! ${end}printer_state  ${red}offline (7)$end" "$out"
sees 80 err decode minimal.xml
same "the terminal" "" "$out"

# Neither on a terminal that has no colours nor for those who want none; --color overrides both.
wanted='general-status <get_general_status>
! printer_state  offline (7)'
NO_COLOR=1 sees 80 out decode minimal.xml
same "the terminal" "$wanted" "$out"
TERM=dumb sees 80 out decode minimal.xml
same "the terminal" "$wanted" "$out"
sees 80 out decode --color never minimal.xml
same "the terminal" "$wanted" "$out"
NO_COLOR='' sees 80 out decode minimal.xml
holds "the terminal" $'*\e[1;31m*' "$out"
sees 80 out decode --color auto minimal.xml
holds "the terminal" $'*\e[1;31m*' "$out"
unset TERM
sees 80 out decode minimal.xml
same "the terminal" "$wanted" "$out"
export TERM=xterm
kovra decode --color always minimal.xml
holds "standard output" $'*\e[1;31m*' "$out"
kovra decode minimal.xml
expect 0 "$wanted" ""

# Data that goes into a file has neither, even where standard output is a terminal.
kovra decode --output elsewhere full.xml
sees 40 out decode --output file full.xml
same "the terminal" "" "$out"
same "the file" "$(<elsewhere)" "$(<file)
"
sees 40 out diff --output file minimal.xml unknown-elements.xml
expectStatus 1
checks=$((checks + 1))
[[ -s file && $(<file) != *$'\e'* ]] || complain "$called: a colour in a file" "$(<file)"

# Notes: the name of the file once, wrapped behind their places.
notes=$'unknown-elements.xml:
  3:3   warning: <firmware>: unknown element,
        skipped
  5:3   warning: <cover>: unknown element,
        skipped
  9:3   warning: <Error>: unknown element,
        skipped
  11:3  warning: <power_saving>: unknown
        element, skipped'
sees 46 err decode unknown-elements.xml
same "the terminal" "$notes" "$(plain "$out")
"
holds "the terminal" "${bold}unknown-elements.xml:$end
  3:3   ${magenta}warning:$end <firmware>*" "$out"
kovra decode unknown-elements.xml
same "standard error" "unknown-elements.xml:3:3: warning: <firmware>: unknown element, skipped
unknown-elements.xml:5:3: warning: <cover>: unknown element, skipped
unknown-elements.xml:9:3: warning: <Error>: unknown element, skipped
unknown-elements.xml:11:3: warning: <power_saving>: unknown element, skipped" "$err"

# One alone stands behind the name, and so do all other messages.
printf '<get_general_status><fan>1</fan></get_general_status>' >one.xml
sees 200 err decode one.xml
same "the terminal" "one.xml:1:21: ${magenta}warning:$end <fan>: unknown element, skipped" "$out"
sees 200 err decode missing.xml
expectStatus 3
same "the terminal" "missing.xml: ${red}error:$end No such file or directory" "$out"
sees 30 err decode --color never --bogus
expectStatus 2
same "the terminal" "kovra: error: The following
    argument was not expected:
    --bogus
Try 'kovra decode --help'." "$out"
printf '<get_general_status><error/></get_general_status>' >note.xml
sees 80 err decode note.xml
same "the terminal" "note.xml:1:21: ${faint}note:$end <error>: empty, not read" "$out"

# What a reply holds moves neither the colours nor the place of a line.
printf '<get_general_status><printer_state>\xc2\x9b31m error: note: </printer_state><a/><b/></get_general_status>' >evil.xml
sees 80 out+err decode evil.xml
checks=$((checks + 1))
[[ $(plain "$out") != *$'\e'* && $out != *$'\xc2\x9b'* ]] || complain "$called: drives the terminal" "$out"
holds "the terminal" "*${magenta}warning:$end*" "$out"

# Lines fit the terminal as far as their words do, and lose no word.
for columns in 60 200; do
  for reply in odd.xml media_full.xml; do
    sees "$columns" out decode "$reply"
    fits "$columns"
    words=$(plain "$out" | tr -s ' \n' ' ')
    kovra decode "$reply"
    same "the words at $columns columns" "$(tr -s ' \n' ' ' <<<"$out")" "$words
"
  done
done
COLUMNS=60 sees 33 err decode odd.xml
fits 60
# Who waits for longer than a second sees how far it is, but not on the terminal of the data.
reply='<get_general_status><error>5</error></get_general_status>'
mkfifo slow
for streams in err out+err; do
  {
    sleep 1.5
    for _ in {1..128}; do echo "$reply"; done
  } >slow &
  sees 80 "$streams" decode --stream slow
  if [[ $streams == err ]]; then
    holds "the terminal" $'\r\e[Kkovra: 64 read, 64 decoded, 0 refused, 0 notes, * seconds\r\e[K' "$out"
  else
    checks=$((checks + 1))
    [[ $out != *" read, "* ]] || complain "$called: progress among the data"
  fi
done

# A width that is none is passed over, and a terminal that tells none has 80 columns.
for wrong in 0 -5 10000 wide; do
  COLUMNS=$wrong sees 33 err decode odd.xml
  fits 33
done
sees 0 err decode odd.xml
fits 80

# Where the examples of what is unknown find no room beside it, they stand below.
sees 200 out coverage unknown-elements.xml
fits 200
beside=$(plain "$out")
sees 40 out coverage unknown-elements.xml
below=$(plain "$out")
checks=$((checks + 1))
(($(wc -l <<<"$below") > $(wc -l <<<"$beside"))) || complain "$called: nothing is below" "$below"
same "the words" "$(tr -s ' \n' ' ' <<<"$beside")" "$(tr -s ' \n' ' ' <<<"$below")
"
sees 40 out decode laminator_response.xml
same "the terminal" "laminator-response <lam_ndc_rsp>
  lam_ndc_rsp  OK T1=173 T2=171 F=2
               S=0x0040" "$(plain "$out")
"

# Characters count as wide as terminals show them, in whatever locale.
printf '<get_media_status><film><description>\xe6\xbc\xa2\xe5\xad\x97 \xe6\xbc\xa2\xe5\xad\x97 r\xc3\xa9sum\xc3\xa9 x</description></film></get_media_status>' >wide.xml
for locale in C C.UTF-8; do
  LC_ALL=$locale sees 30 out decode wide.xml
  same "the terminal" "media-status
  <get_media_status>
  film
    description  漢字 漢字
                 résumé x
    code         \"漢字 漢字
                 résumé x\"
                 (263,
                 unknown)" "$(plain "$out")
"
done

# Help fits, and is not wider than it is good to read.
for columns in 80 200; do
  sees "$columns" out decode --help
  expectStatus 0
  fits 80
done

# Whoever forgot the file is told that the tool waits for it.
for arguments in "" -; do
  # shellcheck disable=SC2086 # none for none
  sees 80 in+out+err decode $arguments <minimal.xml
  expectStatus 0
  same "the terminal" "kovra: reading a reply from the terminal; Ctrl-D ends it
$wanted" "$(plain "$out")
"
done
sees 80 in+out+err decode minimal.xml <minimal.xml
same "the terminal" "$wanted" "$(plain "$out")
"

# Settings in one line; false is told only where it depends on the reply.
kovra decode full.xml
holds "standard output" $'*\n    read *30 \[1..120]\n*' "$out"
checks=$((checks + 1))
[[ $out != *"reports false"* ]] || complain "$called: false is said of a message that always has it"
kovra decode "$samples/status/empty-elements.xml"
holds "standard output" $'*\n  (the library reports false for this reply)\n' "$out"

# Lines of changes, findings and lists are broken between words, too. No colour is one that cannot be
# read on white: neither yellow nor white nor a bright one.
printf '<configuration><wireless><ssid>%s</ssid></wireless></configuration>' 'a name of many words' >a.xml
printf '<configuration><wireless><ssid>%s</ssid></wireless></configuration>' 'many words as a name' >b.xml
sees 40 out diff --color never a.xml b.xml
same "the terminal" '~ wireless.ssid: "a name of many words"
    -> "many words as a name"' "$out"
sees 40 out compose configuration --from full.xml --dry-run --color never \
  --set wireless.ssid='many words as a name'
same "the terminal" '~ wireless.ssid: "Badge office, second
    floor" -> "many words as a name"' "$out"
sees 40 out check --color never --context never unknown-elements.xml
holds "the terminal" 'unknown-elements.xml:3:3: warning:
    <firmware>: unknown element, skipped
    \[K101]
*' "$out"
for call in "diff full.xml a.xml" "diff a.xml full.xml" "check odd.xml" "decode odd.xml" list \
  "list --findings" "decode unknown-elements.xml" "explain K104"; do
  for columns in 60 80; do
    # shellcheck disable=SC2086 # words apart
    sees $columns out+err $call
    checks=$((checks + 2))
    long=$(plain "$out" | awk -v most=$columns 'length($0) > most && NF > 2')
    [[ -z $long ]] || complain "$called: too wide" "$long"
    ! grep -qE $'\e''\[([0-9]+;)*(33|37|9[0-7])m' <<<"$out" || complain "$called: a colour" "$out"
  done
done

# On the narrowest terminals values stand below their names. No line is longer than a word that no
# line can hold, and no word is lost.
words() { tr -s ' \n' '\n' | LC_ALL=C sort; }
for file in full.xml odd.xml media_full.xml unknown-elements.xml; do
  kovra decode --color never $file
  wanted=$(words <<<"$out")
  for columns in 10 20 30 39; do
    sees $columns out decode --color never $file
    same "all words" "$wanted" "$(words <<<"$out")
"
    checks=$((checks + 1))
    long=$(awk -v most=$columns 'length($0) > most && NF > 1' <<<"$out")
    [[ -z $long ]] || complain "$called: too wide" "$long"
  done
done
sees 20 out decode full.xml
holds "the terminal" '*
  physical_address
   02:00:5e:10:20:3a
  ethernet
    ip_address
      192.168.40.21
*
    ssid     Badge
             office,
             second
             floor
*' "$out"
for columns in 1 5; do # whatever it looks like
  sees $columns out decode full.xml
  expectStatus 0
  sees $columns out check full.xml odd.xml
  sees $columns out diff full.xml odd.xml
  sees $columns out explain wireless
  sees $columns out+err decode odd.xml missing.xml
done

finish

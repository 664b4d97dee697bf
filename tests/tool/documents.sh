#!/usr/bin/env bash
# What docs/json.md and the man page show in code font the tool knows; and the kinds of notes, the
# commands, the options and the devices that the tool has are all told there.
#   documents.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"
docs=$samples/../docs

# words: each word of the text on standard input, once. A word begins with a letter, or with the
# dashes of an option; the names of files have none, nor have remarks behind a "#".
words() {
  sed -E "s/(^| )# .*//; s/[^ '\"]*\.(xml|json|dict)\b//g" |
    grep -oP '(?<![A-Za-z0-9_\\-])-{0,2}[A-Za-z][A-Za-z0-9_-]*' | LC_ALL=C sort -u
}

# Blocks between ``` and those that are indented, and what stands between `` ` ``.
codeOfMarkdown() {
  awk '/^```/ { fenced = !fenced; next }
       fenced || /^    / { print; next }
       { n = split($0, parts, "`"); for (i = 2; i <= n; i += 2) print parts[i] }' "$1"
}

# What is bold, and what is printed as it stands. The page of a command is no word of its own.
codeOfMan() {
  awk '/^\.nf/ { literal = 1 } /^\.fi/ { literal = 0 }
       /^\.(B|BR|RB|BI|IB) / { sub(/^\.[A-Z]+ /, ""); print; next }
       literal && !/^\./ { print }' "$1" | sed -E 's/\\-/-/g; s/\\\(aq/'\''/g; s/\\&//g; s/kovra-([a-z]+ \(1\))/kovra \1/'
}

# names TITLE: what is listed under that title of a help.
names() {
  awk -v title="$1:" '$0 == title { on = 1; next } !NF { on = 0 } on && /^  [^ ]/ { print $1 }'
}

# help COMMAND...: appends its help, and those of the commands below it, to the file "helps".
commands='' devices='' kinds=''
help() {
  kovra "$@" --help
  expectStatus 0
  printf %s "$out" >>helps
  local below
  for below in $(names Subcommands <<<"$out"); do
    case $# in
      0) commands+=" $below" ;;
      1) kinds+=" $below" ;;
      *) devices+=" $below" ;;
    esac
    help "$@" "$below"
  done
}
help

# What it says of all samples, of a reply with more notes than are listed, and of an unknown word.
{
  echo '<get_general_status>'
  printf '<other/>%.0s' {1..1001}
  echo '</get_general_status>'
} >noted.xml
mapfile -t replies < <(find "$samples" -name '*.xml' ! -name '*.bad.xml' && echo noted.xml)
kovra decode --format jsonl "${replies[@]}"
expectStatus 0
noteKinds=$(jq -r '.notes[].kind' <<<"$out" | sort -u)
jq -r '(paths | .[] | strings), .notes[].kind' <<<"$out" | sort -u >said
unknown='<get_general_status><printer_state>sleeping</printer_state></get_general_status>'
kovra decode <<<"$unknown"
expectStatus 0
printf %s "$out" >>said

# What checking says, with the finding of its own.
kovra check --format json <<<'<get_wireless_status><ssid>Tom & Jerry</ssid></get_wireless_status>'
expectStatus 1
jq -r '(paths | .[] | strings), .findings[].kind' <<<"$out" | sort -u >>said

# refusal RECORD OPTION...: the message that json.md shows for it is the one that the tool gives.
refusal() {
  printf '%s' "$1" >settings.json
  shift
  kovra compose configuration "$@" settings.json
  expectStatus 1
  checks=$((checks + 1))
  grep -qxF "      ${err%$'\n'}" "$docs/json.md" || complain "json.md does not show" "$err"
  printf %s "$err" >>said
}
decoded='{"kovra": 1, "readings": [{"document": "configuration", "record": {'
refusal "$decoded"'"wireless": {"channel": "six"}}}]}' --sections wireless
refusal "$decoded"'"lcd_contrast": {"val": 40, "min": 0, "max": 63}}}]}' --set lcd_contrast=64
refusal "$decoded"'"error_control": 1}}]}' --set tricolor_settings.red=5
refusal "$decoded"$'\n\n\n\n\n\n\n\n\n\n''"cards": [],
      "cards": []}}]}' --sections wireless

kovra vocabulary
expectStatus 0
printf %s "$out" >vocabulary
kovra list
expectStatus 0
words < <(cat helps said vocabulary; printf %s "$out"; basename -a "$docs"/man/* | sed 's/[.][0-9]$//') >known

# knows DOCUMENT CODE [WORD=REASON]...: the words of the code in it are known, apart from those that
# are named here, with the reason.
knows() {
  local document=$1 code=$2 expected='' unknown
  shift 2
  checks=$((checks + 1))
  if (($# > 0)); then expected=$(printf '%s\n' "${@%%=*}" | LC_ALL=C sort); fi
  unknown=$(words <<<"$code" | LC_ALL=C comm -23 - known)
  same "the list of words in $document that nothing knows" "$expected" "${unknown:+$unknown$'\n'}"
}
# Of the kinds of notes and refusals that no sample has, a test of the library knows.
mapfile -t findings < <(grep '^| K' "$docs/json.md" | grep -oE '`[a-z_0-9]+`' | tr -d '`' |
  while read -r kind; do grep -qw "$kind" known || echo "$kind=a finding"; done)
knows json.md "$(codeOfMarkdown "$docs/json.md" | sed 's/\bK[01][0-9][0-9]\b//g')" "${findings[@]}" \
  zero_missing='a choice' \
  KIND='stands for one' null='of JSON' -s='of jq' \
  samples='a folder' select='of jq' tsv='of jq'
manual=$(codeOfMan "$docs/man/kovra.1")
composing=$(codeOfMan "$docs/man/kovra-compose.1")
# Other pages are named after the commands.
knows kovra-json.5 "$(codeOfMan "$docs/man/kovra-json.5" | sed 's/kovra-\([a-z]*\)/\1/g')" \
  null='of JSON' select='of jq'
knows kovra.1 "$(sed 's/kovra-\([a-z]*\)/\1/g' <<<"$manual")"

# tells WHAT CODE WORD...: each of the words is in the code.
tells() {
  local what=$1 code=$2 word
  shift 2
  checks=$((checks + 1))
  (($# > 0)) || complain "nothing to look for: $what"
  for word; do
    checks=$((checks + 1))
    grep -qE -e "(^|[^A-Za-z0-9_-])$word($|[^A-Za-z0-9_-])" <<<"$code" || complain "$what: no $word"
  done
}
# shellcheck disable=SC2086 # words
{
  tells "commands of the man page" "$manual" $commands
  tells "documents that the man page composes" "$manual" $kinds
  tells "documents of the page on composing" "$composing" $kinds
  tells "devices of the page on composing" "$composing" $devices
  tells "kinds of notes in json.md" "$(grep '^| K' "$docs/json.md")" $noteKinds
}
finish

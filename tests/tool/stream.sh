#!/usr/bin/env bash
# Replies one after the other in one input: each is taken as soon as it is there, a broken one is
# told of and the next one found, and several at once give the same bytes.
#   stream.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

reply='<get_general_status><error>1</error></get_general_status>'
declaration='<?xml version="1.0" encoding="UTF-8"?>'

# numbersOf: "1+ 2- ..." of the last call's objects, whether each was decoded.
numbersOf() { jq -r '"\(.number)\(if .ok then "+" else "-" end)"' <<<"$out" | paste -sd' '; }

streamed() {  # what is expected of the bytes in "in": numbers and whether they are good
  kovra decode --stream --format jsonl <in
  checks=$((checks + 1))
  [[ $(numbersOf) == "$1" ]] || complain "$called: $(numbersOf), not $1" "$(cat -v in)"
}

printf '%s' "$reply$reply$reply" >in && streamed "1+ 2+ 3+"
printf '%s\n' "$declaration" "$reply" "$declaration$reply" "<!-- a note -->" "$reply" >in &&
  streamed "1+ 2+ 3+"
printf '%s\0%s\0\0%s' "$reply" "$reply" "$reply" >in && streamed "1+ 2+ 3+"
printf '%s\n<!-- the end -->\n' "$reply" >in && streamed "1+"
printf '\xef\xbb\xbf%s\xef\xbb\xbf%s' "$reply" "$reply" >in && streamed "1+ 2+"
printf '' >in && streamed ""
printf ' \n\0\n ' >in && streamed ""

# A root within another element of its name, brackets in CDATA, comments and values.
printf '<a><a/><a></a></a>%s' "$reply" >in && streamed "1- 2+"
printf '<get_general_status><b><![CDATA[</get_general_status>%s]]></b></get_general_status>%s' \
  "$declaration" "$reply" >in && streamed "1+ 2+"
printf '<get_general_status><!-- </get_general_status> --><b c="/>"/></get_general_status>%s' \
  "$reply" >in && streamed "1+ 2+"

# A root that is an element of another reply as well.
printf '<secure_action_request><action name="x"/></secure_action_request>%s' "$reply" >in &&
  streamed "1+ 2+"

# Broken ones: cut anywhere, followed by one with or without a declaration.
for ((length = 1; length < ${#reply}; ++length)); do
  printf '%s%s%s' "${reply:0:length}" "$declaration$reply" "$reply" >in && streamed "1- 2+ 3+"
done
for ((length = ${#reply} - 40; length < ${#reply} - 22; ++length)); do
  printf '%s%s' "${reply:0:length}" "$reply" >in && streamed "1- 2+"
done
printf '%s' "garbage $reply" >in && streamed "1- 2+"
printf '%s' "</error>$reply" >in && streamed "1- 2+"
printf '%s' "<get_general_status><error></get_general_status>$reply" >in && streamed "1- 2+"
printf '%s' "<a b='>$reply" >in && streamed "1- 2+"
printf '%s' "<a><!-- $declaration$reply" >in && streamed "1- 2+"
printf '%s' "<a><![CDATA[ $reply$reply" >in && streamed "1- 2+ 3+"
printf '%s' "<a><!-- $reply<get_general_status><!-- a note --></get_general_status>" >in &&
  streamed "1- 2+ 3+"
for ((length = 1; length < ${#declaration}; ++length)); do
  printf '%s%s' "${declaration:0:length}" "$reply" >in && streamed "1- 2+"
done
for cut in '<' '<!' '<!-' '<![CDA' '<?' '</'; do
  printf '%s%s' "<get_general_status>$cut" "$reply" >in && streamed "1- 2+"
done
printf '<get_general_status><error><action name="x"/>%s' "$reply" >in && streamed "1- 2+ 3+"
printf '%s<get_general_status><error>' "$declaration" >in && streamed "1-"
printf '<a>\0%s' "$reply" >in && streamed "1- 2+"
printf '%s\0%s' "$declaration" "$reply" >in && streamed "1- 2+"

# One that is too large is passed over.
kovra decode --stream --format jsonl --max-size 100 < <(
  printf '%s<a>%0200000d</a>%s' "$reply" 0 "$reply"
)
expectStatus 1
same "replies" "1+ 2- 3+" "$(numbersOf)
"
holds "standard output" '*"message":"larger than 100 bytes; see --max-size"*' "$out"

# A reply a line, as it is or as a JSON string.
printf '%s\n\n%s\r\n"%s"\n"\\u003cget_general_status/>"\n"x\n%s' "$reply" "$reply" "$reply" "$reply" >in
kovra decode --lines --format jsonl <in
same "replies" "1+ 3+ 4+ 5+ 6- 7+" "$(numbersOf)
"
kovra decode --lines --format jsonl --max-size 100 < <(printf '%s\n%0200000d\n%s' "$reply" 0 "$reply")
same "replies" "1+ 2- 3+" "$(numbersOf)
"

# Each line comes as soon as its reply is there, while the input stays open.
for options in "--stream" "--stream -j 2" "--lines" "--lines -j 2"; do
  mkfifo pipe
  # shellcheck disable=SC2086 # words apart
  "$tool" decode $options --format jsonl <pipe >decoded 2>summary &
  exec 3>pipe
  for count in 1 2 3; do
    printf '%s' "$reply" >&3
    if [[ $options == --lines* ]]; then printf '\n' >&3; fi
    for ((i = 0; i < 100; ++i)); do
      (($(wc -l <decoded) == count)) && break
      sleep 0.05
    done
    checks=$((checks + 1))
    (($(wc -l <decoded) == count)) || complain "$options: $(wc -l <decoded) lines, not $count"
  done
  exec 3>&-
  wait
  rm pipe
  checks=$((checks + 1))
  [[ $(<summary) == "kovra: 3 read, 3 decoded, 0 refused, 0 notes, "*" seconds" ]] ||
    complain "$options: $(<summary)"
done

# What is there is worked on before standard input is waited for.
printf '%s' "$reply" >first.xml
for jobs in 1 2; do
  rm -f decoded
  mkfifo pipe
  "$tool" decode -j "$jobs" --format jsonl first.xml - <pipe >decoded 2>summary &
  exec 3>pipe
  for ((i = 0; i < 100; ++i)); do
    if [[ -s decoded ]]; then break; fi
    sleep 0.05
  done
  checks=$((checks + 1))
  (($(wc -l <decoded) == 1)) || complain "-j $jobs: nothing while standard input is open"
  printf '%s' "$reply" >&3
  exec 3>&-
  wait
  rm pipe
  checks=$((checks + 1))
  (($(wc -l <decoded) == 2)) || complain "-j $jobs: $(wc -l <decoded) lines, not 2"
done

# A comment that was cut hides no more than 64 KiB of what follows in an open stream.
mkfifo pipe
"$tool" decode --stream --format jsonl <pipe >decoded 2>summary &
exec 3>pipe
printf '<a><!-- cut' >&3
count=$(((1 << 16) / ${#reply} + 1))
for ((i = 0; i < count; ++i)); do printf '%s' "$reply"; done >&3
for ((i = 0; i < 100; ++i)); do
  (($(wc -l <decoded) == count + 1)) && break
  sleep 0.05
done
checks=$((checks + 1))
[[ $(jq -c .ok decoded | sort | uniq -c | xargs) == "1 false $count true" ]] ||
  complain "a cut comment" "$(jq -c .ok decoded | sort | uniq -c)"
exec 3>&-
wait
rm pipe

# Several at once give the same bytes, also where the first one is slow.
{
  printf '<get_general_status>%0400000d</get_general_status>' 0
  for ((i = 0; i < 2000; ++i)); do
    printf '<get_general_status><error>%d</error></get_general_status>' "$i"
    if ((i % 100 == 0)); then printf '<broken>'; fi
  done
} >many
for format in table json jsonl; do
  kovra decode --stream --format "$format" <many
  alone=$out aloneErr=$(grep -v seconds <<<"$err")
  for jobs in 2 3 0; do
    kovra decode --stream --format "$format" -j "$jobs" <many
    checks=$((checks + 2))
    [[ $out == "$alone" ]] || complain "$called: other data"
    [[ $(grep -v seconds <<<"$err") == "$aloneErr" ]] || complain "$called: other messages"
  done
done
mapfile -d '' files < <(find "$samples" -name '*.xml' -print0 | sort -z)
kovra decode --format jsonl --errors stderr missing.xml "${files[@]}"
alone=$out aloneErr=$err
kovra decode --format jsonl --errors stderr -j 2 missing.xml "${files[@]}"
checks=$((checks + 2))
[[ $out == "$alone" ]] || complain "$called: other data"
[[ $err == "$aloneErr" ]] || complain "$called: other messages"
expectStatus 3

# Output that cannot be written ends the work of several, too.
checks=$((checks + 1))
message=$("$tool" decode --stream -j 2 --format jsonl <many 2>&1 >/dev/full)
[[ $? == 3 && $message == "kovra: error: standard output: No space left on device" ]] ||
  complain "a full disk: $message"

# Lines of several writers into one pipe do not mix.
for i in 1 2 3 4; do
  "$tool" decode --stream --format jsonl <many 2>/dev/null &
done | cat >mixed
wait
checks=$((checks + 1))
grep -v '^{"source":"-","number":1,' mixed | jq -c .kovra 2>&1 | sort | uniq -c >kinds
[[ $(awk '{ print $2 }' kinds) == 1 ]] || complain "mixed lines" "$(head kinds)"

# Failures are data, may be kept, and may be forgiven.
mkdir kept
printf '%s<a>\0%s' "$reply" "$reply" >"some replies.xml"
kovra decode --stream --format jsonl --save-failures kept --exit-zero "some replies.xml" missing.xml
expectStatus 3
same "kept files" "some_replies-2.xml" "$(ls kept)
"
same "a kept file" "<a>" "$(<kept/some_replies-2.xml)
"
holds "standard output" '*{"source":"missing.xml","kovra":1,"ok":false,"error":{"message":"No such file or directory"}}*' "$out"
kovra decode --stream --save-failures kept --exit-zero "some replies.xml"
expectStatus 0
same "kept files" $'some_replies-2.2.xml\nsome_replies-2.xml' "$(ls kept)
"
kovra decode --stream --save-failures nowhere "some replies.xml"
expectStatus 2

# Its name is that of the input, in letters that every file system has and without .xml; a file that
# is a single reply has no number.
mkdir named
for name in 'Zz09-_.a.xml' '@[`{:;' x .xml Az.xm 'with blank.XML'; do printf '<a>' >"$name"; done
kovra decode --save-failures named 'Zz09-_.a.xml' '@[`{:;' x .xml Az.xm 'with blank.XML'
expectStatus 1
kovra decode --save-failures named - <x
expectStatus 1
same "kept files" $'.xml.xml\nAz.xm.xml\nZz09-_.a.xml\n______.xml\nstdin.xml\nwith_blank.XML.xml\nx.xml' \
  "$(LC_ALL=C ls -A named)
"

# A file as output appears whole or not at all.
echo before >result
kovra decode --stream --output result "some replies.xml"
expectStatus 1
holds "result" "some replies.xml#1: general-status*" "$(<result)"
echo before >result
kovra decode --bogus --output result "some replies.xml"
expectStatus 2
same "result" "before" "$(<result)
"
ln -s result link
kovra decode --output link "$samples/status/minimal.xml"
expectStatus 0
holds "result" "general-status*" "$(<result)"
kovra decode --output nowhere/result "$samples/status/minimal.xml"
expectStatus 3
checks=$((checks + 1))
[[ -L link && -z $(find . -name 'result.*') ]] || complain "left over" "$(ls)"

# A declaration that comes in pieces is one.
declared='<?xml version="1.0"?><get_free_ram><bytes_free>1</bytes_free></get_free_ram>'
for ((i = 1; i < 24; ++i)); do
  checks=$((checks + 1))
  found=$({ printf %s "${declared:0:i}"; sleep 0.02; printf %s "${declared:i}"; } |
    "$tool" decode --stream --format jsonl 2>/dev/null | jq -c .ok | paste -sd' ')
  [[ $found == true ]] || complain "a declaration cut after $i bytes gives: $found"
done

# Where the system has no threads for so many at once, there are fewer of them. Instrumented programs
# do not start with so little memory.
if (ulimit -v 200000 && "$tool" --version) >/dev/null 2>&1; then
  printf '%s' "$reply$reply$reply" >in
  checks=$((checks + 1))
  found=$(ulimit -v 200000 && "$tool" decode --stream --format jsonl -j 1000 in 2>/dev/null | jq -c .ok |
    paste -sd' ')
  [[ $found == "true true true" ]] || complain "few threads: $found"

  # However little memory there is: all replies, or a sentence, and then no file and no piece of one.
  for ((i = 0; i < 200; ++i)); do printf '%s' "$reply"; done >in
  scarce='^kovra: error: (not enough memory|Resource temporarily unavailable)$'
  for ((size = 16000; size < 120000; size += 4000)); do
    rm -f out* && status=0
    (ulimit -v "$size" && exec "$tool" decode --stream --format jsonl -j 8 -o out in) >/dev/null 2>err ||
      status=$?
    checks=$((checks + 1))
    case $status in
      0 | 1) (($(wc -l <out) == 200)) || complain "within $size kB: $(wc -l <out) lines" ;;
      3) [[ $(<err) =~ $scarce && ! -e out ]] || complain "within $size kB" "$(<err)" ;;
      126 | 127) [[ ! -e out ]] || complain "within $size kB: a file by a tool that did not start" ;;
      *) complain "within $size kB: exit status $status" "$(<err)" ;;
    esac
    found=$(compgen -G 'out.*' || true)
    [[ -z $found ]] || complain "within $size kB: $found is left"
  done

  # A reply for which there is too little costs the others nothing, whatever is done with them.
  large=$(yes '<a/>' | head -n 600000 | tr -d '\n')
  printf '%s' "$reply<get_free_ram>$large</get_free_ram>$reply" >in
  for jobs in 1 2; do
    for verb in "decode --format jsonl" check coverage report "redact --output-dir copies"; do
      rm -rf copies && mkdir copies && status=0
      # shellcheck disable=SC2086 # a verb and its options
      (ulimit -v 60000 && exec "$tool" $verb --stream -j "$jobs" in) >out 2>err || status=$?
      checks=$((checks + 1))
      ((status == 1)) || complain "$verb -j $jobs: exit status $status" "$(<err)"
      case $verb in
        decode*)
          found=$(jq -c 'if .ok then .number else .error.message end' out | paste -sd' ')
          [[ $found == '1 "not enough memory" 3' ]] || complain "$verb -j $jobs: $found"
          ;;
        redact*)
          found=$(find copies -type f | wc -l)
          ((found == 2)) || complain "$verb -j $jobs: $found copies"
          ;;&
        *) [[ $(<err) == "in#2: error: not enough memory" ]] || complain "$verb -j $jobs" "$(<err)" ;;
      esac
    done
  done
fi

finish

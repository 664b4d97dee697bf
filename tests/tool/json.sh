#!/usr/bin/env bash
# The JSON is valid whatever the reply holds, and both of its forms say the same.
#   json.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

cd "$samples" || exit 1
mapfile -d '' replies < <(find . -name '*.xml' ! -name '*.bad.xml' -print0 | sort -z)
mapfile -d '' broken < <(find . -name '*.bad.xml' -print0 | sort -z)

# One object for each reply, in the order of the files; nothing for those that are refused.
kovra decode --format json "${replies[@]}" "${broken[@]}"
expectStatus 1
checks=$((checks + 1))
(($(jq -s length <<<"$out") == ${#replies[@]})) || complain "$(jq -s length <<<"$out") objects"
indented=$out
kovra decode --format jsonl --errors stderr "${replies[@]}" "${broken[@]}"
expectStatus 1
checks=$((checks + 2))
[[ $(jq -S -c 'del(.source)' <<<"$out") == "$(jq -S -c . <<<"$indented")" ]] ||
  complain "json and jsonl differ" "$(diff <(jq -S -c 'del(.source)' <<<"$out") <(jq -S -c . <<<"$indented"))"
[[ $(jq -r .source <<<"$out") == "$(printf '%s\n' "${replies[@]}")" ]] ||
  complain "sources" "$(jq -r .source <<<"$out")"

# One line for each, nothing but printable ASCII, the source and the version in front.
checks=$((checks + 3))
(($(wc -l <"$work/.out") == ${#replies[@]})) || complain "$(wc -l <"$work/.out") lines"
odd=$(LC_ALL=C grep -n '[^ -~]' "$work/.out")
[[ -z $odd ]] || complain "beyond ASCII" "$odd"
odd=$(grep -v '^{"source":"[^"]*","kovra":1,"ok":true,"root":' "$work/.out")
[[ -z $odd ]] || complain "another beginning" "$odd"

# Bytes that are no UTF-8, wherever a reply or its file can hold them.
cd "$work" || exit 1
name=$(printf 'reply-\377.xml')
printf '<get_general_status>\n<\344/>\n<laminator_state>\377\300\200</laminator_state></get_general_status>' >"$name"
kovra decode --format jsonl --errors stderr "$name"
expectStatus 0
same "standard error" "" "$err"
words=uninitialized,initializing,ready,standby,laminating,not_ready,not_used,init_error,comm_error,fault_error,door_open
expected='{"source":"reply-\ufffd.xml","kovra":1,"ok":true,"root":"get_general_status","readings":[{"document":"general-status","result":true,"record":{"laminator_state":{"code":0,"name":null,"raw":"\ufffd\ufffd\ufffd"}}}],"notes":['
expected+='{"id":"K101","kind":"unknown_element","severity":"warning","line":2,"column":1,"offset":21,"end_line":2,"end_column":5,"end_offset":25,"path":"/get_general_status/\ufffd","element":"\ufffd","message":"<\ufffd>: unknown element, skipped"}'
place='"path":"/get_general_status/laminator_state","element":"laminator_state","found":"\ufffd'
expected+=',{"id":"K113","kind":"unknown_word","severity":"warning","line":3,"column":1,"offset":26,"end_line":3,"end_column":39,"end_offset":64,'$place'\ufffd\ufffd","expected":["'${words//,/\",\"}'"],"message":"<laminator_state>: unknown word \"\ufffd\ufffd\ufffd\"; one of: '${words//,/, }'"}'
for byte in 0 1 2; do
  expected+=',{"id":"K106","kind":"replaced_bytes","severity":"warning","line":3,"column":'$((18 + byte))',"offset":'$((43 + byte))',"end_line":3,"end_column":'$((19 + byte))',"end_offset":'$((44 + byte))','$place'","message":"<laminator_state>: bytes that are no character, U+FFFD in their place"}'
done
same "standard output" "$expected]}" "$out"

# A reply cut anywhere is refused with one line, or is decoded to valid JSON.
reply=$samples/status/control-characters.xml
length=$(wc -c <"$reply")
mkdir cut
for ((i = 0; i < length; ++i)); do head -c "$i" "$reply" >"cut/$(printf %04d "$i")"; done
kovra decode --format jsonl --errors stderr cut/*
expectStatus 1
checks=$((checks + 3))
jq . "$work/.out" >/dev/null || complain "cut replies: no JSON"
(($(wc -l <"$work/.out") + $(wc -l <"$work/.err") == length)) ||
  complain "$length cut replies, $(wc -l <"$work/.out") objects, $(wc -l <"$work/.err") messages"
odd=$(LC_ALL=C.UTF-8 grep -nv '^cut/[0-9]*:[0-9]*:[0-9]*: error: [^[:cntrl:]]*$' "$work/.err")
odd=$(grep -v 'found no root element' <<<"$odd")
[[ -z $odd ]] || complain "messages" "$odd"

finish

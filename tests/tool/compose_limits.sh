#!/usr/bin/env bash
# What a record may hold is bounded while it is read, so that no text takes much more memory than it
# has bytes; where memory runs out all the same, that is told like any other refusal.
#   compose_limits.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

# repeated COUNT TEXT [SEPARATOR]
repeated() {
  jq -nj --argjson count "$1" --arg text "$2" --arg between "${3-,}" \
    '[range($count) | $text] | join($between)'
}
refused() {  # PLACE SENTENCE, of record.json
  kovra compose media record.json
  expect 1 "" "record.json:$1 error: $2"
}
taken() {
  kovra compose media record.json
  expectStatus 0
  same "standard error" "" "$err"
}

# Entries of a list and keys of an object.
printf '{"cards":[%s]}' "$(repeated 256 '{}')" >record.json
taken
printf '{"cards":[%s]}' "$(repeated 257 '{}')" >record.json
refused 1:779: 'cards: found more than 256 entries; expected at most 256'
printf '{"a":{%s}}' "$(seq -f '"%.0f":0' -s, 256)" >record.json
kovra compose media record.json
expect 1 "" 'record.json: error: a: found an unknown key; expected one of: cards, films, laminates, ribbons'
printf '{"a":{%s}}' "$(seq -f '"%.0f":0' -s, 257)" >record.json
kovra compose media record.json
expectStatus 1
holds "standard error" 'record.json:1:*: error: a: found more than 256 entries; expected at most 256'$'\n' "$err"

# Values in all: the record, a list of 127 entries with a setting of 126 parts each, and another list
# of 125 are 16384.
setting="{$(seq -f '"%.0f":0' -s, 126)}"
printf '{"a":[%s],"b":[%s]}' "$(repeated 127 "{\"s\":$setting}")" "$(repeated 125 0)" >record.json
kovra compose media record.json
expect 1 "" 'record.json: error: a: found an unknown key; expected one of: cards, films, laminates, ribbons
record.json: error: b: found an unknown key; expected one of: cards, films, laminates, ribbons'
printf '{"a":[%s],"b":[%s]}' "$(repeated 127 "{\"s\":$setting}")" "$(repeated 126 0)" >record.json
kovra compose media record.json
expectStatus 1
holds "standard error" 'record.json:1:*: error: found more than 16384 values in all; expected at most 16384'$'\n' "$err"

# Names.
long=$(repeated 256 x '')
printf '{"cards":{"%s":0}}' "$long" >record.json
refused '' "cards: found an object; expected a list"
printf '{"cards":{"%s":0}}' "${long}x" >record.json
refused 1:11: "cards: found a name of 257 bytes; expected at most 256"

# Levels.
printf '{"a":%s%s}' "$(repeated 31 '[' '')" "$(repeated 31 ']' '')" >record.json
kovra compose media record.json
expect 1 "" 'record.json: error: a: found an unknown key; expected one of: cards, films, laminates, ribbons'
printf '{"a":%s' "$(repeated 32 '[' '')" >record.json
refused 1:37: "a$(repeated 30 '[0]' ''): found more than 32 levels of lists and objects; expected at most 32"
printf '{"notes":%s' "$(repeated 32 '[' '')" >record.json
refused 1:41: 'notes: found more than 32 levels of lists and objects; expected at most 32'
head -c 1000000 /dev/zero | tr '\0' '[' >record.json
refused 1:33: "$(repeated 31 '[0]' ''): found more than 32 levels of lists and objects; expected at most 32"

# What decode prints is taken however many notes a reply earned.
printf '<media>%s</media>' "$(repeated 1500 '<unheard/>' '')" >reply.xml
"$tool" decode --format json reply.xml >record.json
checks=$((checks + 1))
(($(jq '.notes | length' record.json) == 1001)) || complain "$(jq '.notes | length' record.json) notes"
taken
# Not so in place of a record.
echo '{"notes": [], "cards": []}' >record.json
kovra compose media record.json
expect 1 "" 'record.json: error: notes: found an unknown key; expected one of: cards, films, laminates, ribbons'

# The size, as for decode.
echo '{"cards": []}' >record.json
kovra compose media --max-size 14 record.json
expectStatus 0
kovra compose media record.json --max-size 13
expect 1 "" 'record.json: error: larger than 13 bytes; see --max-size'
kovra compose media /dev/zero
expect 1 "" '/dev/zero: error: larger than 8388608 bytes; see --max-size'
for kind in nonce secure-request secure-directive passkey passkey-change keys keys-change \
  capabilities "printer-id --fields model" "configuration --sections cards"; do
  # shellcheck disable=SC2086 # words
  kovra compose $kind --max-size 3 <record.json
  expect 1 "" '<stdin>: error: larger than 3 bytes; see --max-size'
done

# Memory. An instrumented tool takes all that there is for itself; nothing can be said of it.
within() {  # KILOBYTES ARGUMENT...: runs the tool in so much address space
  status=0
  (ulimit -v "$1" && exec "$tool" "${@:2}") >"$work/.out" 2>"$work/.err" || status=$?
}
within 4000000 --version
((status == 0)) || finish

# What the tool needs to compose anything at all.
echo '{}' >empty.json
low=0 high=4000000
while ((high - low > 64)); do
  within $(((low + high) / 2)) compose media empty.json
  if ((status == 0)); then high=$(((low + high) / 2)); else low=$(((low + high) / 2)); fi
done 2>/dev/null  # with too little to begin with, the shell tells how that ended
base=$high

# The C library's heap grows by steps: the last one may have been full, and a further one begun. That
# counts for the smallest records, where it is more than 50 times their size.
steps=272

# boundedBy REFUSAL: record.json takes at most 50 times its size on top of that, and is then refused
# for its contents, not for want of memory.
boundedBy() {
  local budget=$((base + steps + 50 * $(wc -c <record.json) / 1024))
  within $budget compose media record.json
  checks=$((checks + 1))
  ((status == 1)) && [[ $(<.err) == record.json:*"$1"* ]] ||
    complain "$(wc -c <record.json) bytes within $budget kB of memory: $status" "$(<.err)"
}
printf '{"cards":[%s]}' "$(repeated 40000 '{}')" >record.json
boundedBy 'found more than 256 entries'
printf '{"a":[%s]}' "$(repeated 1000 "[$(repeated 100 0)]")" >record.json
boundedBy 'found more than 16384 values'
printf '[%s]' "$(repeated 200 "[$(repeated 200 '""')]")" >record.json
boundedBy 'found more than 16384 values'
printf '[%s]' "$(repeated 40 "$(repeated 30 '[' '')$(repeated 30 ']' '')")" >record.json
boundedBy 'expected an object'
printf '[%s]' "$(repeated 60000 "" ' ')" >record.json
boundedBy 'expected an object'
printf '{"cards":"%s"}' "$(head -c 200000 /dev/zero | tr '\0' x)" >record.json
boundedBy 'expected a list'
printf '{"%s":1}' "$(head -c 200000 /dev/zero | tr '\0' x)" >record.json
boundedBy 'found a name of 200000 bytes'

# As many cards as there may be, with all that they have and with nothing, of which the document is
# as long all the same.
jq '{cards: [.readings[0].record.cards[0] as $card | range(256) | $card]}' \
  "$samples/media/full.json" >full.json
printf '{"cards":[%s]}%140000s' "$(repeated 256 '{}')" '' >padded.json
for record in full padded; do
  within $((base + 50 * $(wc -c <$record.json) / 1024)) compose media --all-types $record.json
  checks=$((checks + 2))
  ((status == 0)) || complain "$record.json takes more than 50 times its size" "$(<.err)"
  (($(grep -c '<card>' .out) == 256)) || complain "$record.json: $(grep -c '<card>' .out) cards"
done

# However little memory there is: the whole document, or one line that names the file.
cp .out whole.xml
refusals=0
for ((size = base; size < base + 16384; size += 256)); do
  within $size compose media --all-types padded.json
  checks=$((checks + 1))
  if ((status == 0)); then
    cmp -s .out whole.xml || complain "within $size kB: another document"
  else
    refusals=$((refusals + 1))
    ((status == 1)) && [[ ! -s .out && $(<.err) == "padded.json: error: not enough memory" ]] ||
      complain "within $size kB: exit status $status" "$(<.err)"
  fi
done
((refusals > 0 && status == 0)) || complain "memory ran out $refusals times, and $status at last"

finish

#!/usr/bin/env bash
# What the tool knows: its documents, and every word of them.
#   vocabulary.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

kovra list
expectStatus 0
holds "standard output" 'general-status * get_general_status * state, alarms, lock and job counters'$'\n*' "$out"
documents=$(cut -d' ' -f1 <<<"${out%$'\n'}")
checks=$((checks + 1))
[[ $(sort <<<"$documents" | uniq -d) == "" ]] || complain "names that occur twice" "$documents"

# Each of them can be asked for.
while IFS= read -r document; do
  kovra decode --as "$document" < <(echo '<no_such_root/>')
  expectStatus 1
  holds "standard error" '<stdin>:1:1: error: found root element <no_such_root>; expected *' "$err"
done <<<"$documents"

kovra vocabulary
expectStatus 0
words=$out
for word in get_general_status printer_state printing_heating laminator_state door_open locked; do
  holds "standard output" "*"$'\n'"$word"$'\n*' $'\n'"$words"
done
checks=$((checks + 1))
[[ $(printf %s "$words") == "$(printf %s "$words" | LC_ALL=C sort -u)" ]] ||
  complain "the words are not sorted, or not unique"
kovra vocabulary --format words
same "standard output" "${words%$'\n'}" "$out"
kovra vocabulary --format dict
same "standard output" "$(sed 's/.*/"&"/' <<<"${words%$'\n'}")" "$out"

finish

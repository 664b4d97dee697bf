#!/usr/bin/env bash
# The corpus stays small enough to be replayed by every test run, no input is there twice for a
# target, and names tell an effect.
#   corpus.sh FOLDER
set -euo pipefail
cd "$1"

most=$((4 * 1024 * 1024))
bad=0
complain() {
  printf '%s\n' "$@" >&2
  bad=1
}

files=$(find . -type f)
count=$(wc -l <<<"$files")
bytes=$(find . -type f -printf '%s\n' | awk '{ sum += $1 } END { print sum + 0 }')
((count > 50)) || complain "only $count inputs in $1"
((bytes < most)) || complain "$bytes bytes, which is not below $most"

# Words with dashes between them; the sum of an input, which libFuzzer takes for a name, is no word.
unnamed=$(grep -Ev '/[a-z0-9]+(-[a-z0-9]+)+(\.xml)?$' <<<"$files" || true)
[[ -z $unnamed ]] || complain "names that tell no effect:" "$unnamed"
numbers=$(grep -E '[0-9a-f]{32}' <<<"$files" || true)
[[ -z $numbers ]] || complain "names that are numbers:" "$numbers"

for folder in */; do
  twice=$(find "$folder" -type f -exec sha256sum {} + | sort | uniq -D -w 64 | cut -c 67-)
  [[ -z $twice ]] || complain "the same input more than once:" "$twice"
done

echo "$count inputs, $bytes bytes"
exit "$bad"

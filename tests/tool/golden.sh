#!/usr/bin/env bash
# The tool's JSON for every sample is the golden file beside it, and every broken twin gets its
# message. Samples are decoded in their own folder, so that no path shows.
#   golden.sh <tool> <samples folder>
set -uo pipefail

tool=$(realpath "$1") samples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

good=0 broken=0 problems=0
complain() {
  printf '%s\n' "$@" >&2
  problems=$((problems + 1))
}

same() {  # sample, expected file, found file
  [[ -f $2 ]] || { complain "$1: $2 is missing"; return; }
  local difference
  difference=$(diff -u "$2" "$3") || complain "$1: not what $2 holds" "$difference"
}

checkGood() {
  "$tool" decode --format json "$1" >"$work/out" 2>"$work/err"
  local status=$?
  ((status == 0)) || complain "$1: exit status $status" "$(<"$work/err")"
  jq . "$work/out" >/dev/null || complain "$1: jq does not read the output"
  [[ -s $work/out ]] || complain "$1: no output"
  same "$1" "${1%.xml}.json" "$work/out"
}

checkBroken() {
  "$tool" decode --format json "$1" >"$work/out" 2>"$work/err"
  local status=$?
  ((status == 1)) || complain "$1: exit status $status, not 1"
  jq . "$work/out" >/dev/null || complain "$1: jq does not read the output"
  same "$1" "${1%.xml}.txt" "$work/err"
}

while IFS= read -r -d '' path; do
  cd "$(dirname "$path")" || exit 1
  name=$(basename "$path")
  if [[ $name == *.bad.xml ]]; then
    broken=$((broken + 1))
    checkBroken "$name"
  else
    good=$((good + 1))
    checkGood "$name"
  fi
done < <(find "$(realpath "$samples")" -name '*.xml' -print0 | sort -z)

# An expectation without its sample is never looked at: somebody renamed one of the two.
while IFS= read -r -d '' path; do
  [[ -f ${path%.*}.xml ]] || complain "${path#"$samples"/}: its sample is missing"
done < <(find "$samples" \( -name '*.json' -o -name '*.bad.txt' \) -print0)

((good > 0)) || complain "no sample was found"
((broken > 0)) || complain "no broken sample was found"
echo "$good samples, $broken broken ones, $problems problems"
((problems == 0))

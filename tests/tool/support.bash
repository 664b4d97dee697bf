# Shared by the scripts beside it; sourced with their arguments: <tool> <samples folder>
# shellcheck shell=bash

# shellcheck disable=SC2034 # for those who source this
tool=$(realpath "$1") samples=$(realpath "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1

checks=0 problems=0
complain() {
  printf '%s\n' "$@" >&2
  problems=$((problems + 1))
}

# kovra ARGUMENT...: runs the tool; $out and $err are what it wrote, $status is how it ended. Ends
# of lines count: a final one is kept.
kovra() {
  status=0
  "$tool" "$@" >"$work/.out" 2>"$work/.err" || status=$?
  out=$(cat "$work/.out" && printf .) err=$(cat "$work/.err" && printf .)
  out=${out%.} err=${err%.}
  called="kovra $*"
}

# expect STATUS OUT ERR: of the last call; texts without the end of their last line.
expect() {
  expectStatus "$1"
  same "standard output" "$2" "$out"
  same "standard error" "$3" "$err"
}

expectStatus() {
  checks=$((checks + 1))
  ((status == $1)) || complain "$called: exit status $status, not $1" "$err"
}

same() {  # what, expected, found
  checks=$((checks + 1))
  local expected=$2
  if [[ -n $expected ]]; then expected+=$'\n'; fi
  [[ $3 == "$expected" ]] ||
    complain "$called: $1 is not as expected" "$(diff <(printf %s "$expected") <(printf %s "$3"))"
}

holds() {  # what, pattern, text
  checks=$((checks + 1))
  # shellcheck disable=SC2053 # the pattern is one
  [[ $3 == $2 ]] || complain "$called: $1 does not match $2" "$3"
}

finish() {
  echo "$checks checks, $problems problems"
  ((checks > 0 && problems == 0))
  exit
}

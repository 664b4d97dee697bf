#!/usr/bin/env bash
# Completions, as each shell gives them after it has read what the tool prints. A shell that is not
# installed is told of and skipped.
#   completion.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

for shell in bash zsh fish; do
  kovra completion "$shell" -o "for.$shell"
  expect 0 "" ""
done
mkdir -p folder/sub
touch folder/inner.xml reply.xml "folder/a b.xml"

# byBash WORD...: what bash offers for the last one.
byBash() {
  # shellcheck disable=SC2016 # for the other shell
  bash --norc -c 'source for.bash; [[ $(complete -p kovra) == "complete -F _kovra kovra" ]] || exit
    COMP_WORDS=(kovra "$@"); COMP_CWORD=$#; _kovra; printf "%s\n" "${COMPREPLY[@]}"' - "$@" 2>&1
}
byZsh() {
  # shellcheck disable=SC2016
  zsh -f -c 'compdef() { known=$* }; compadd() { given+=("$2") }; _files() { given+=(FILES) }
    source ./for.zsh; [[ $known == "_kovra kovra" ]] || exit
    words=(kovra "$@"); CURRENT=$#words; _kovra
    for word in $given; do [[ $word == ${words[CURRENT]}* || $word == FILES ]] && print -r -- $word; done' \
    - "$@" 2>&1
}
byFish() {
  local HOME=$work line
  line=$(printf '%s ' kovra "${@:1:$#-1}")${*: -1}
  XDG_CONFIG_HOME=$work XDG_DATA_HOME=$work \
    fish --no-config -c "source for.fish; complete -C '$line'" 2>&1 | cut -f1
}

# offers SHELL EXPECTED WORD...: just these, in any order.
offers() {
  local shell=$1 expected=$2 found
  shift 2
  checks=$((checks + 1))
  found=$("by${shell^}" "$@" | LC_ALL=C sort | paste -sd' ')
  [[ $found == "$expected" ]] || complain "$shell offers behind '$*': $found" "instead of: $expected"
}

verbs=$("$tool" --help | awk '/^Subcommands:/ { on = 1; next } !NF { on = 0 } on && /^  [a-z]/ { print $1 }' |
  LC_ALL=C sort | paste -sd' ')
messages=$("$tool" list | cut -d' ' -f1 | grep ^card | LC_ALL=C sort | paste -sd' ')
below=$("$tool" compose device-control --help |
  awk '/^Subcommands:/ { on = 1; next } !NF { on = 0 } on && /^  [a-z]/ { print $1 }' |
  LC_ALL=C sort | paste -sd' ')
for shell in bash zsh fish; do
  if ! command -v "$shell" >/dev/null; then
    echo "skipped: $shell is not installed"
    continue
  fi
  offers "$shell" decode dec
  offers "$shell" "flat json jsonl prom table" decode --format ""
  offers "$shell" "json jsonl" decode --format j
  offers "$shell" "bash fish zsh" completion ""
  offers "$shell" "$messages" decode --as card
  offers "$shell" "$messages" sample card
  offers "$shell" "--filmless --from" compose configuration --f
  offers "$shell" "--files-from --format" decode --f
  offers "$shell" "--max-size" decode --format json reply.xml --max
  offers "$shell" "$below" compose device-control ""
done
for word in $verbs; do offers bash "$word" "$word"; done
offers bash "reply.xml" decode r
offers bash "folder/a b.xml folder/inner.xml folder/sub" decode --output folder/
offers bash folder/sub decode --save-failures folder/
offers bash "ethernet,wireless" compose configuration --sections ethernet,w
offers bash "json jsonl" decode --format = j
offers bash "flat json jsonl prom table" decode --format =
offers bash "" nonsense --fo

# What the words of a command line are nothing runs.
offers bash "" decode --format "\$(touch ran)"
checks=$((checks + 1))
[[ ! -e ran ]] || complain "a word was run"

kovra completion tcl
expect 2 "" "kovra: error: SHELL: tcl not in {bash,zsh,fish}
Try 'kovra completion --help'."
kovra completion
expectStatus 2
kovra completion bash zsh
expectStatus 2
kovra completion $'\e[2J'
expectStatus 2
holds "standard error" '*\\x1b\[2J*' "$err"
checks=$((checks + 1))
"$tool" completion bash >/dev/full 2>"$work/err"
[[ $? == 3 ]] || complain "a full disk goes unnoticed"
if command -v shellcheck >/dev/null; then
  checks=$((checks + 1))
  shellcheck -s bash for.bash >found || complain "shellcheck:" "$(<found)"
fi

finish

#!/usr/bin/env bash
# Wrong command lines end with 2, a word on what is wrong and nothing read; help and version are
# data.
#   usage.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

cp "$samples/status/minimal.xml" .

wrong() {  # message, command that helps, argument...
  local message=$1 helper=$2
  shift 2
  kovra "$@"
  expect 2 "" "kovra: error: $message
Try '$helper --help'."
}

wrong "A subcommand is required" kovra
wrong "The following argument was not expected: --bogus" "kovra decode" decode --bogus minimal.xml
wrong "The following argument was not expected: -x" "kovra decode" decode -x
wrong '--as: unknown message "nope"; expected one of: '"$("$tool" list | cut -d' ' -f1 | paste -sd, | sed 's/,/, /g')" \
  "kovra decode" decode --as nope minimal.xml
wrong "--format: xml not in {table,flat,json,jsonl,prom}" "kovra decode" decode --format xml minimal.xml
wrong "--null requires --files-from" "kovra decode" decode --null minimal.xml
wrong "The following argument was not expected: extra" "kovra list" list extra
wrong "--format: xml not in {words,dict,json}" "kovra vocabulary" vocabulary --format xml
wrong "--format: xml not in {table,json}" "kovra list" list --format xml
# What may have been meant, wherever one of a few words stands.
wrong '--format: jsn not in {table,flat,json,jsonl,prom}. Did you mean "json"?' "kovra decode" \
  decode --format jsn minimal.xml
wrong '--format: tabl not in {table,json}. Did you mean "table"?' "kovra list" list --format tabl
wrong '--format: jsonk not in {text,json,jsonl}. Did you mean "json" or "jsonl"?' "kovra check" \
  check --format jsonk minimal.xml
wrong '--color: alway not in {auto,always,never}. Did you mean "always"?' "kovra diff" \
  diff --color alway minimal.xml minimal.xml
wrong "--color: x not in {auto,always,never}" "kovra diff" diff --color x minimal.xml minimal.xml
wrong '--context: nevr not in {auto,always,never}. Did you mean "never"?' "kovra check" \
  check --context nevr minimal.xml
wrong '--keep: seril not in {serial,address,network,job}. Did you mean "serial"?' "kovra redact" \
  redact --keep seril minimal.xml
wrong '--only: mag-encodr not in {mag-encoder,internal-encoder}. Did you mean "mag-encoder"?' \
  "kovra compose capabilities" compose capabilities --only mag-encodr record.json
wrong '--as: unknown message "general-state". Did you mean "general-status"?' "kovra decode" \
  decode --as general-state minimal.xml
wrong '--as: unknown message "confguration". Did you mean "configuration"?' "kovra diff" \
  diff --as confguration minimal.xml minimal.xml
wrong 'SHELL: bsh not in {bash,zsh,fish}. Did you mean "bash" or "zsh"?' "kovra completion" \
  completion bsh
wrong 'SHELL: tcl not in {bash,zsh,fish}' "kovra completion" completion tcl
# Options, those of decode where no verb stands in front of them.
wrong 'The following argument was not expected: --formt. Did you mean "--format"?' "kovra check" \
  check --formt json minimal.xml
wrong 'The following argument was not expected: -format. Did you mean "--format"?' "kovra decode" \
  decode -format json minimal.xml
wrong 'The following argument was not expected: --formt. Did you mean "kovra decode --format"?' \
  kovra --formt
wrong 'The following argument was not expected: --formt. Did you mean "kovra decode --format"?' \
  kovra --formt=json minimal.xml
wrong 'The following argument was not expected: --vresion. Did you mean "--version"?' kovra --vresion
wrong "The following argument was not expected: -x" kovra -x
wrong "The following argument was not expected: --nothing-like-it" kovra --nothing-like-it
wrong 'The following argument was not expected: --stat. Did you mean "--state"?' \
  "kovra compose device-control fan" compose device-control fan --stat on
for size in 0 -1 010 0x10 1e6 10M 99999999999999999999; do
  wrong "--max-size: \"$size\" is no number of bytes above 0" "kovra decode" \
    decode "--max-size=$size" minimal.xml
  wrong "--max-size: \"$size\" is no number of bytes above 0" "kovra compose media" \
    compose media "--max-size=$size" minimal.xml
done
kovra decode --as
expectStatus 2
kovra bogus
expectStatus 2
kovra decode --format json --format table minimal.xml
expectStatus 2

# What a message repeats of the command line cannot drive the terminal.
kovra decode "--$(printf '\033[2J')"
expectStatus 2
holds "standard error" '*--\\x1b\[2J*' "$err"

kovra --version
expectStatus 0
holds "standard output" 'kovra [0-9]*.[0-9]*.[0-9]*' "$out"

# helps COMMAND...: its help, and that of all commands in it, fits into 80 columns.
helps() {
  kovra "$@" --help
  expectStatus 0
  same "standard error" "" "$err"
  holds "standard output" "*Usage: kovra*$**--help*" "$out"
  checks=$((checks + 1))
  local long inner
  long=$(grep -E '.{81}' <<<"$out")
  [[ -z $long ]] || complain "$called: too wide:" "$long"
  commands=$((commands + 1))
  for inner in $(sed -n '/^Subcommands:/,/^$/p' <<<"$out" | grep -oE '^  [a-z][a-z-]*'); do
    helps "$@" "$inner"
  done
}
commands=0
helps
checks=$((checks + 1))
((commands > 30)) || complain "only $commands commands have a help"

# What does not fit is continued below itself, and no word of it is lost.
kovra decode --help
holds "standard output" "*
  -0,--null                   Names in that file end with NUL bytes, not with
                              lines
*" "$out"

# Names of files that look like something else are names all the same.
for name in list "[a,b]" "[]" ++ "{}" "%%" "a b" "a,b" =; do
  cp minimal.xml "$name"
  kovra decode "$name"
  expect 0 'general-status <get_general_status>
! printer_state  offline (7)' ""
done
cp -- minimal.xml --as
kovra decode -- --as
expectStatus 0
kovra decode --format=jsonl -- minimal.xml - <minimal.xml
expectStatus 0

finish

# Shared by the scripts beside it; sourced with their arguments: <tool> <source folder> <libkovra.so.1>
# shellcheck shell=bash

# shellcheck disable=SC2034 # for those who source this
tool=$(realpath "$1") root=$(realpath "$2") library=$(realpath "$3")
export KOVRA_LIBRARY=$library PYTHONPATH=$root/bindings/python
work=$(mktemp -d)
cd "$work" || exit 1

# What a script starts in the background ends with it.
finishAll() {
  local job
  for job in $(jobs -p); do kill "$job" 2>/dev/null; done
  wait
  rm -rf "$work"
}
trap finishAll EXIT

skip() {
  echo "skipped: $*"
  exit 77
}

need() {  # program, package
  command -v "$1" >/dev/null || skip "$1 is not there (package $2)"
}

fail() {
  printf '%s\n' "$@" >&2
  exit 1
}

# within SECONDS COMMAND...: tries until it succeeds.
within() {
  local tries=$(($1 * 5))
  shift
  for (( ; tries > 0; --tries)); do
    if "$@" >/dev/null 2>&1; then return 0; fi
    sleep 0.2
  done
  return 1
}

# replies COUNT: so many general status replies, one a line, no two alike.
replies() {
  seq "$1" | sed 's|.*|<get_general_status><printer_state>idle</printer_state><num_jobs_total>&</num_jobs_total></get_general_status>|'
}

#!/usr/bin/env bash
# check.sh COMPILER SOURCE OPTION...: the source compiles as it is, and with its mistake it does not,
# for the reason that it states.
set -euo pipefail
compiler=$1 source=$2
shift 2

"$compiler" "$@" -fsyntax-only "$source"

expected=$(sed -n 's|^// Expected: ||p' "$source")
[[ -n $expected ]] || { echo "$source expects nothing"; exit 1; }
if said=$("$compiler" "$@" -DMISTAKE -fsyntax-only "$source" 2>&1); then
  echo "the mistake compiles"
  exit 1
fi
grep -qF -- "$expected" <<<"$said" || {
  echo "nothing says: $expected"
  echo "$said"
  exit 1
}

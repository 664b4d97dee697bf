#!/usr/bin/env bash
# A host runs with its library, and with a later one that holds more in each result: all that it
# prints is the same, but for the version.
#   growth.sh <host> <folder of the library> <folder of the later library> <version>
set -euo pipefail

host=$1 now=$2 later=$3 version=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

LD_LIBRARY_PATH=$now "$host" >"$work/now" 2>"$work/now.version"
LD_LIBRARY_PATH=$later "$host" >"$work/later" 2>"$work/later.version"
[[ $(<"$work/now.version") == "$version" ]] || { echo "another library ran" >&2; exit 1; }
[[ $(<"$work/later.version") == later ]] || { echo "the later library did not run" >&2; exit 1; }
(($(wc -l <"$work/now") > 100)) || { echo "the host printed next to nothing" >&2; exit 1; }
cmp "$work/now" "$work/later"

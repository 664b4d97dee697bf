#!/usr/bin/env bash
# A host's calls compile without a warning, with NULL and with nullptr, and do what is said of them.
#   calls.sh <include folder> <libkovra.so> <compiler> <standard>
set -euo pipefail

include=$1 library=$2 compiler=$3 standard=$4
folder=$(dirname "$library")
read -ra tinyxml <<<"$(pkg-config --cflags --libs tinyxml)"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for nothing in NULL nullptr; do
  "$compiler" -std="$standard" -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
    -DTIXML_USE_STL -DNOTHING="$nothing" -I "$include" "$(dirname "$0")/calls.cpp" \
    -o "$work/calls" -L "$folder" -lkovra "${tinyxml[@]}"
  LD_LIBRARY_PATH=$folder "$work/calls" || { echo "with $nothing" >&2; exit 1; }
done

#!/usr/bin/env bash
# Doxygen has nothing to complain of in the public headers, and its manual has what hosts look for.
#   manual.sh <source folder> <version>
set -euo pipefail

source=$1
export KOVRA_VERSION=$2 KOVRA_MANUAL_DIR
KOVRA_MANUAL_DIR=$(mktemp -d)
trap 'rm -rf "$KOVRA_MANUAL_DIR"' EXIT

warnings=$(cd "$source" && doxygen docs/Doxyfile 2>&1)
[[ -z $warnings ]] || { printf 'doxygen says:\n%s\n' "$warnings" >&2; exit 1; }
for page in classKovra_1_1Value classKovra_1_1Decoding classKovra_1_1Reply classKovra_1_1KVXStatusParser \
  classKVXHelper structKovra_1_1KVGeneralStatus kovra_8h kovra_8hpp; do
  [[ -s $KOVRA_MANUAL_DIR/html/$page.html ]] || { echo "the manual lacks $page" >&2; exit 1; }
done
grep -qF "$KOVRA_VERSION" "$KOVRA_MANUAL_DIR/html/index.html" ||
  { echo "the manual does not tell its version" >&2; exit 1; }

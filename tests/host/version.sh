#!/usr/bin/env bash
# The version and the names that are kept in several files are the same in all of them.
#   version.sh <source folder> <version of the project>
set -euo pipefail

source=$1 version=$2
export LC_ALL=C
bad=0
same() {  # WHERE FOUND WANTED
  [[ $2 == "$3" ]] || { printf '%s has "%s", not "%s"\n' "$1" "$2" "$3" >&2; bad=1; }
}

same debian/changelog "$(sed -nE '1s/^kovra \(([^)]*)\) .*/\1/p' "$source/debian/changelog")" "$version"
same bindings/python/pyproject.toml \
  "$(sed -nE 's/^version = "(.*)"$/\1/p' "$source/bindings/python/pyproject.toml")" "$version"

# What waits for a release, or the newest one.
newest=$(sed -nE 's/^## \[?([^] ]*).*/\1/p' "$source/CHANGELOG.md" | head -n 1)
[[ $newest == Unreleased ]] || same CHANGELOG.md "$newest" "$version"

# The package promises the exported names, each with the release that brought it.
symbols=$(sed -nE 's/^ (\([^)]*\))?([^ @]+)@Base [0-9.]+$/\2/p' "$source/debian/libkovra1.symbols")
lines=$(grep -c '^ ' "$source/debian/libkovra1.symbols")
same debian/libkovra1.symbols "$(wc -l <<<"$symbols") names" "$lines names"
if ! difference=$(diff <(sort <<<"$symbols") "$source/tests/host/exports.txt"); then
  printf 'debian/libkovra1.symbols (<) and exports.txt (>):\n%s\n' "$difference" >&2
  bad=1
fi
while read -r release; do
  dpkg --compare-versions "$release" le "$version" 2>/dev/null ||
    { echo "debian/libkovra1.symbols speaks of $release, which is to come" >&2; bad=1; }
done < <(sed -nE 's/^ .*@Base ([0-9.]+)$/\1/p' "$source/debian/libkovra1.symbols" | sort -u)

exit "$bad"

#!/usr/bin/env bash
# The bill of materials is the same each time, and names whatever the library and the tool are linked
# with.
#   bill.sh <source folder> <libkovra.so> <tool, or nothing>
set -euo pipefail

source=$1 library=$2 tool=$3
export SOURCE_DATE_EPOCH=1700000000
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
bill() { python3 -B "$source/scripts/bill.py" "$source/scripts/packages.txt" "$work/kovra-7.8.9.tar.xz"; }

echo "a tarball" >"$work/kovra-7.8.9.tar.xz"
bill >"$work/bill"
bill | cmp - "$work/bill"
digest=$(sha256sum <"$work/kovra-7.8.9.tar.xz")
found=$(jq -r '[.spdxVersion, .creationInfo.created, (.packages[0] | .versionInfo, .checksums[0].checksumValue)]
  | join(" ")' "$work/bill")
wanted="SPDX-2.3 2023-11-14T22:13:20Z 7.8.9 ${digest%% *}"
[[ $found == "$wanted" ]] || { printf 'the bill says %s\n       and not %s\n' "$found" "$wanted" >&2; exit 1; }
dangling=$(jq -r '[.packages[].SPDXID] as $known
  | .relationships[] | .spdxElementId, .relatedSpdxElement | select(IN($known[]) | not)' "$work/bill")
[[ -z $dangling ]] || { echo "the bill relates what it lacks: $dangling" >&2; exit 1; }

# Another tarball is another document.
space() { jq -r .documentNamespace; }
echo "another tarball" >"$work/kovra-7.8.9.tar.xz"
[[ $(space <"$work/bill") != "$(bill | space)" ]] || { echo "two tarballs, one namespace" >&2; exit 1; }

# Packages for building and for running come of one source.
linked=$(jq -r '[.relationships[] | select(.relationshipType | endswith("_LINK")) | .relatedSpdxElement] as $linked
  | .packages[] | select(.SPDXID | IN($linked[])) | .sourceInfo' "$work/bill" | sed 's/.* //')
needed=$(readelf --dynamic --wide "$library" ${tool:+"$tool"} |
  sed -nE 's/.*\(NEEDED\).*\[(.*)\]/\1/p' | sort -u | grep -v '^libkovra')
while IFS= read -r name; do
  package=$(dpkg-query --search "*/$name" | sed 's/:.*//' | head -n 1)
  origin=$(dpkg-query --show --showformat '${source:Package}\n' "$package" | head -n 1)
  grep -qxF "$origin" <<<"$linked" ||
    { echo "$name of $origin is linked, but not in the bill" >&2; exit 1; }
done <<<"$needed"

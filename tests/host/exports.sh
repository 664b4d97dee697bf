#!/usr/bin/env bash
# The shared library shows the public interface, name by name as exports.txt beside this lists it,
# and needs nothing beyond TinyXML and the runtimes.
#   exports.sh <libkovra.so>
set -euo pipefail

library=$1
bad=0
complain() {
  printf '%s\n' "$@" >&2
  bad=1
}

names=$(nm -D --defined-only --demangle "$library" | sed -E 's/^[0-9a-f]* +[A-Za-z] //')

owned='(Kovra::|KVXHelper(::|$)|KVXDeviceControl(::|$)|kovra_)'
table='(vtable|VTT|typeinfo|typeinfo name) for '
thunk='(non-virtual|virtual) thunk to '
surplus=$(grep -Ev "^($table|$thunk)?$owned" <<<"$names" || true)
internal=$(grep -E "^($table|$thunk)?Kovra::frame::" <<<"$names" || true)
[[ -z $surplus ]] || complain "exported, but not part of the interface:" "$surplus"
[[ -z $internal ]] || complain "exported, but internal:" "$internal"

# Hosts that were linked against an earlier build look for these very names.
list=$(dirname "$0")/exports.txt
export LC_ALL=C
sort --check "$list" || complain "exports.txt is not sorted"
found=$(nm -D --defined-only "$library" | sed -E 's/^[0-9a-f]* +[A-Za-z] //' | sort)
vanished=$(comm -13 <(echo "$found") "$list")
[[ -z $vanished ]] || complain "no longer exported, though hosts need them:" "$(c++filt <<<"$vanished")"
added=$(comm -23 <(echo "$found") "$list")
[[ -z $added ]] || complain "exported, but missing in tests/host/exports.txt:" "$added"

dynamic=$(readelf --dynamic --wide "$library")
soname=$(sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p' <<<"$dynamic")
[[ $soname == libkovra.so.1 ]] || complain "SONAME is '$soname', not libkovra.so.1"

needed=$(sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' <<<"$dynamic")
foreign=$(grep -Ev '^(libtinyxml|libstdc\+\+|libm|libgcc_s|libc|ld-linux.*)\.so\.' <<<"$needed" || true)
[[ -z $foreign ]] || complain "needed, but neither TinyXML nor a runtime:" "$foreign"
grep -q '^libtinyxml\.so' <<<"$needed" || complain "TinyXML is not among what is needed: $needed"

echo "$(wc -l <<<"$names") exported names"
exit "$bad"

#!/usr/bin/env bash
# Each public header compiles alone, twice in a row and without a warning.
#   headers.sh <include folder> <compiler> <standard>
set -euo pipefail

include=$1 compiler=$2 standard=$3
read -ra tinyxml <<<"$(pkg-config --cflags tinyxml)"

compile() {  # header, option...: stands in for a host's file that includes only this header
  local header=$1 language=$standard
  shift
  # The face needs C++17.
  if [[ $header == *.hpp && ($standard == c++11 || $standard == c++14) ]]; then language=c++17; fi
  printf '#include "%s"\n#include "%s"\n' "$header" "$header" |
    "$compiler" -std="$language" -Wall -Wextra -Wpedantic -Werror -fsyntax-only \
      -I "$include" "$@" -x c++ -
}

headers=0 bad=0
while IFS= read -r header; do
  headers=$((headers + 1))
  if ! compile "$header" -DTIXML_USE_STL ${tinyxml[@]+"${tinyxml[@]}"}; then
    echo "$header does not compile alone" >&2
    bad=$((bad + 1))
  fi
done < <(cd "$include" && find . -name '*.h' -printf '%P\n' -o -name '*.hpp' -printf '%P\n' | sort)

# The face and the records need no TinyXML.
without=$(mktemp -d)
trap 'rm -rf "$without"' EXIT
echo '#error TinyXML is not needed here' >"$without/tinyxml.h"
while IFS= read -r header; do
  compile "$header" -I "$without" || { echo "$header needs TinyXML" >&2; bad=$((bad + 1)); }
done < <(cd "$include" && find . -name '*records.h' -printf '%P\n' -o -name '*.hpp' -printf '%P\n')

# What a host in another language than English has to know stands in the header that it reads.
says() {  # header, word
  grep -qF "$2" "$include/$1" || { echo "$1 does not speak of $2" >&2; bad=$((bad + 1)); }
}
while IFS= read -r header; do
  says "$header" 'size() * MB_CUR_MAX'
  says "$header" 'setlocale(LC_CTYPE, "")'
done < <(cd "$include" && grep -lE 'wchar_t (const&|\*) text,' ./*.h | sed 's|^\./||')
for header in kvxhelper.h kvxstatusparser.h kvxconfigparser.h kvxsetconfig.h kvxmediaparser.h \
  kvxsetmedia.h kvxdevicecontrol.h kovra.hpp; do
  says "$header" LC_NUMERIC
done

# Without its std::string support TinyXML has another layout: such a host must be turned away.
# Debian's tinyxml.h switches the support on by itself, so one that does not stands in for it.
other=$(mktemp -d)
trap 'rm -rf "$without" "$other"' EXIT
touch "$other/tinyxml.h"
refusal=$(compile kvxhelper.h -I "$other" 2>&1) || true
if [[ $refusal != *"error"*"-DTIXML_USE_STL"* ]]; then
  printf 'kvxhelper.h does not ask for -DTIXML_USE_STL, it says:\n%s\n' "$refusal" >&2
  bad=$((bad + 1))
fi

echo "$headers headers, $bad problems"
((headers > 0 && bad == 0))

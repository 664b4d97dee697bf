#!/usr/bin/env bash
# A host builds against the installed tree, by find_package, and by pkg-config with each compiler and
# each language that is here, and runs.
#   install.sh <source folder> <build folder> <cmake> <compiler> <generator>
set -euo pipefail

source=$1 build=$2 cmake=$3 compiler=$4 generator=$5
unset DESTDIR  # a packaging run may have set it

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# The tree is installed, then moved: nothing in it may remember where it stood.
"$cmake" --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/prefix"
prefix=$work/prefix
pc=$(find "$prefix" -name kovra.pc)
[[ -n $pc ]] || { echo "no kovra.pc was installed" >&2; exit 1; }
libdir=$(dirname "$(dirname "$pc")")
sample=$source/samples/status/printing.xml
strict=(-Wall -Wextra -Wpedantic -Werror)

reply() {  # element...: a reply of a printer that is printing
  printf '<get_general_status>%s</get_general_status>' "<printer_state>printing</printer_state>$*"
}
reply '<user>Zoë</user><place>Büro</place>' >"$work/utf-8"
iconv -f UTF-8 -t ISO-8859-1 "$work/utf-8" >"$work/latin-1"

expect() {  # program: it tells the printer's state, whatever letters a reply has and where it runs
  local locale input found
  while read -r locale input; do
    found=$(LC_ALL=$locale LD_LIBRARY_PATH=$libdir "$1" <"$input") || found+=" and failed"
    [[ $found == "printer state: 5" ]] ||
      { printf '%s in %s printed "%s" for %s\n' "$1" "$locale" "$found" "$input" >&2; exit 1; }
  done <<END
C $sample
C.UTF-8 $sample
C.UTF-8 $work/utf-8
de_DE.UTF-8 $work/utf-8
de_DE.ISO-8859-1 $work/latin-1
END
}

"$cmake" -S "$source/examples" -B "$work/cmake" -G "$generator" -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$prefix" \
  -DCMAKE_CXX_FLAGS="${strict[*]}" >"$work/log" || { cat "$work/log"; exit 1; }
"$cmake" --build "$work/cmake" >"$work/log" || { cat "$work/log"; exit 1; }
grep -qF "kovra_DIR:PATH=$libdir/cmake/kovra" "$work/cmake/CMakeCache.txt" ||
  { echo "find_package found another kovra" >&2; exit 1; }
expect "$work/cmake/status"

# The other programs, each as somebody would use it.
expectOutput() {  # WANTED PROGRAM ARGUMENT...
  local wanted=$1 found
  found=$(LD_LIBRARY_PATH=$libdir "$work/cmake/$2" "${@:3}" 2>&1) || found+=" and failed"
  # shellcheck disable=SC2053 # a pattern
  [[ $found == $wanted ]] || { printf '%s printed "%s"\n' "${*:2}" "$found" >&2; exit 1; }
}
expectOutput '*state: printing*<user>: unknown element, skipped \[K101\]*' show_status <"$work/utf-8"
expectOutput '1:1: found an empty text; expected an XML document and failed' show_status </dev/null
expectOutput '*<ssid>New Net</ssid>*<key>seven red umbrellas</key>*' \
  set_wifi 'New Net' <"$source/samples/config/full.xml"
expectOutput '*wireless.channel: found nothing; *and failed' \
  set_wifi 'New Net' <<<'<configuration><wireless><ssid>x</ssid></wireless></configuration>'
expectOutput '*general-status.alarms: 1 of 2*' fleet_gaps "$sample" "$work/utf-8"

expectOutput '*<printhead_serial>PH-0042</printhead_serial>*' set_printhead PH-0042
expectOutput '{"kovra":1,"ok":true,*"code":5,*' decode "$sample"
expectOutput '{"kovra":1,"ok":false,*K001*and failed' decode /dev/null

export PKG_CONFIG_PATH=$libdir/pkgconfig
read -ra flags <<<"$(pkg-config --cflags --libs kovra)"
hosts=0
for host in "$compiler" g++ clang++ clang++-14; do
  if ! command -v "$host" >/dev/null; then continue; fi
  for standard in c++11 c++17 c++20; do
    "$host" -std=$standard "${strict[@]}" "$source/examples/status.cpp" \
      "$source/tests/host/decimals.cpp" -o "$work/status" "${flags[@]}"
    expect "$work/status"
    hosts=$((hosts + 1))
  done
  for standard in c++17 c++20; do
    "$host" -std=$standard "${strict[@]}" "$source/examples/show_status.cpp" \
      -o "$work/cmake/show_status" "${flags[@]}"
    expectOutput '*state: printing*<user>: unknown element, skipped \[K101\]*' \
      show_status <"$work/utf-8"
  done
done
((hosts >= 3)) || { echo "only $hosts hosts were built" >&2; exit 1; }

[[ -s $prefix/share/man/man3/libkovra.3 ]] ||
  { echo "libkovra.3 was not installed" >&2; exit 1; }

# The tool lies beside its library, if it was built.
if [[ -e $prefix/bin/kovra ]]; then
  LD_LIBRARY_PATH=$libdir "$prefix/bin/kovra" --version
  for file in man/man1/kovra.1 man/man1/kovra-decode.1 man/man5/kovra-json.5 \
    doc/kovra/handbook.html bash-completion/completions/kovra zsh/site-functions/_kovra \
    fish/vendor_completions.d/kovra.fish; do
    [[ -s $prefix/share/$file ]] || { echo "$file was not installed" >&2; exit 1; }
  done
fi

# The README shows the same program.
program=$(sed -n '/^#include/,$p' "$source/examples/status.cpp")
[[ $(<"$source/README.md") == *"$program"* ]] ||
  { echo "the program in README.md is not examples/status.cpp" >&2; exit 1; }

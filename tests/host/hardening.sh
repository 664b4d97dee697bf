#!/usr/bin/env bash
# What is shipped is linked and compiled so that a mistake in it is hard to use.
#   hardening.sh <build folder> <libkovra.so> <tool, or nothing> <yes if it is optimized>
set -euo pipefail

build=$1 library=$2 tool=$3 optimized=$4
export LC_ALL=C
bad=0
complain() {
  printf '%s\n' "$@" >&2
  bad=1
}

# has FILE WHAT READELF_OPTION PATTERN
has() {
  grep -Eq "$4" <<<"$(readelf --wide "$3" "$1")" || complain "${1##*/} has no $2"
}

for binary in "$library" ${tool:+"$tool"}; do
  has "$binary" "table of calls that becomes read-only" --program-headers 'GNU_RELRO'
  has "$binary" "binding of all calls when it is loaded" --dynamic '\(FLAGS_1\).*\bNOW\b'
  has "$binary" "address of its own choosing" --file-header 'Type: +DYN'
  has "$binary" "stack that is data only" --program-headers 'GNU_STACK +(0x0+ +){2}0x0+ +0x0+ +0x0+ +RW +'
  if [[ $optimized == yes ]]; then
    has "$binary" "guarded stack" --dyn-syms ' __stack_chk_fail(@| |$)'
    has "$binary" "checked copy" --dyn-syms ' __[a-z]+_chk(@| |$)'
  fi
done
if [[ -n $tool ]]; then has "$tool" "mark of a program at any address" --dynamic '\(FLAGS_1\).*\bPIE\b'; fi

# The rest is not for a build that the debugger looks at.
if [[ $optimized != yes ]]; then exit "$bad"; fi

# The start files of the C library carry no mark of protected jumps, so the linker drops that of ours:
# it is read from what goes into the library and the tool.
if [[ $(uname -m) == x86_64 ]]; then
  marks=0
  while IFS= read -r object; do
    marks=$((marks + 1))
    has "$object" "protected returns and jumps" --notes 'x86 feature: IBT, SHSTK'
  done < <(find "$build/src/CMakeFiles/kovra_objects.dir" ${tool:+"$build/tools"} -name '*.cpp.o')
  ((marks > 50)) || complain "only $marks objects were found"
fi

# How far copies are checked is not told by a binary, but by how it was compiled.
level=2
if grep -q '^KOVRA_HAS_FORTIFY_SOURCE_3:INTERNAL=1$' "$build/CMakeCache.txt"; then level=3; fi
unchecked=$(jq -r --arg flag "-D_FORTIFY_SOURCE=$level" \
  '.[] | select(.command | test("kovra_objects[.]dir|kovra_tool_objects[.]dir|kovra-tool[.]dir"))
   | select(.command | contains($flag) | not) | .file' "$build/compile_commands.json")
[[ -z $unchecked ]] || complain "compiled without _FORTIFY_SOURCE=$level:" "$unchecked"

exit "$bad"

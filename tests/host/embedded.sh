#!/usr/bin/env bash
# The library within another build, which has TinyXML and nothing else of what the tool and the
# tests need: by add_subdirectory as a shared library, by FetchContent as an archive. Installed with
# such a build it is found again where the tree was moved to.
#   embedded.sh <source folder> <cmake> <compiler> <launcher, or nothing> <generator>
set -euo pipefail

source=$1 cmake=$2 compiler=$3 launcher=$4 generator=$5
unset DESTDIR  # a packaging run may have set it
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export CCACHE_BASEDIR=$work CCACHE_NOHASHDIR=1  # what was compiled for the one is there for the other
reply='<get_general_status><printer_state>printing</printer_state></get_general_status>'

quietly() { "$@" >"$work/log" 2>&1 || { tail -n 40 "$work/log" >&2; echo "failed: $*" >&2; exit 1; }; }

# What a host gets: the sources, without what git keeps beside them, and no older build.
mkdir "$work/kovra"
(cd "$source" && cp -r CMakeLists.txt cmake include src tools tests bindings fuzz docs examples "$work/kovra")

missing=()
for package in CLI11 nlohmann_json EXPAT GTest Threads benchmark Python3; do
  missing+=("-DCMAKE_DISABLE_FIND_PACKAGE_$package=ON")
done

# host FOLDER LINES: a project with hosts in each language, that has found another TINYXML before.
host() {
  mkdir "$work/$1"
  cat >"$work/$1/CMakeLists.txt" <<END
cmake_minimum_required(VERSION 3.22)
project(host LANGUAGES CXX)
find_package(PkgConfig REQUIRED)
pkg_check_modules(TINYXML REQUIRED IMPORTED_TARGET expat)
$2
foreach(standard 11 14 17 20)
  add_executable(status\${standard} "$source/examples/status.cpp")
  set_target_properties(status\${standard} PROPERTIES CXX_STANDARD \${standard} CXX_STANDARD_REQUIRED ON)
  target_link_libraries(status\${standard} PRIVATE kovra::kovra)
endforeach()
foreach(standard 17 20)
  add_executable(show\${standard} "$source/examples/show_status.cpp")
  set_target_properties(show\${standard} PROPERTIES CXX_STANDARD \${standard} CXX_STANDARD_REQUIRED ON)
  target_link_libraries(show\${standard} PRIVATE kovra::kovra)
endforeach()
END
}

# build FOLDER OPTION...: everything that "all" has; the host's hosts say what the printer does.
build() {
  local folder=$1 program found
  shift
  quietly "$cmake" -S "$work/$folder" -B "$work/$folder/build" -G "$generator" \
    -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DCMAKE_CXX_COMPILER="$compiler" \
    ${launcher:+-DCMAKE_CXX_COMPILER_LAUNCHER="$launcher"} "$@"
  quietly "$cmake" --build "$work/$folder/build"
  for program in "$work/$folder/build"/{status{11,14,17,20},show{17,20}}; do
    found=$("$program" <<<"$reply")
    [[ $found == "printer state: 5" || $found == *"state: printing"* ]] ||
      { printf '%s of %s printed "%s"\n' "${program##*/}" "$folder" "$found" >&2; exit 1; }
  done
  found=$(find "$work/$folder/build" \( -name kovra -o -name '*_tests' \) -type f -perm -u+x)
  [[ -z $found ]] || { echo "$folder built more than the library: $found" >&2; exit 1; }
}

host beside "add_subdirectory($work/kovra kovra)"
build beside -DBUILD_SHARED_LIBS=ON "${missing[@]}"
needed=$(readelf --dynamic --wide "$work/beside/build/status11")
[[ $needed == *libkovra.so.1* ]] || { echo "the host does not need the shared library" >&2; exit 1; }
quietly "$cmake" --install "$work/beside/build" --prefix "$work/nothing"
[[ -z $(find "$work/nothing" -type f 2>/dev/null) ]] ||
  { echo "the library was installed though nobody asked for it" >&2; exit 1; }

host fetched "include(FetchContent)
FetchContent_Declare(kovra SOURCE_DIR $work/kovra)
FetchContent_MakeAvailable(kovra)"
build fetched -DKOVRA_INSTALL=ON "${missing[@]}"
needed=$(readelf --dynamic --wide "$work/fetched/build/status11")
[[ $needed != *libkovra* ]] || { echo "the host needs a shared library all the same" >&2; exit 1; }

# The archive is installed with the host, moved, and found by CMake and by pkg-config, also for C.
quietly "$cmake" --install "$work/fetched/build" --prefix "$work/first"
mv "$work/first" "$work/prefix"
host archive "find_package(kovra 1 REQUIRED)"
build archive -DCMAKE_PREFIX_PATH="$work/prefix"
grep -qE "^kovra_DIR:PATH=$work/prefix/" "$work/archive/build/CMakeCache.txt" ||
  { echo "find_package found another kovra" >&2; exit 1; }
pc=$(find "$work/prefix" -name kovra.pc)
export PKG_CONFIG_PATH=${pc%/*}
read -ra flags <<<"$(pkg-config --cflags --libs --static kovra)"
quietly "${CC:-cc}" "$source/tests/host/c_host.c" -o "$work/c_host" "${flags[@]}"
"$work/c_host"

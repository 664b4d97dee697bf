# Shared by the scripts beside it; sourced, not run.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
buildDir=${KOVRA_BUILD_DIR:-$root/build}
# shellcheck disable=SC2034 # for those who source this
jobs=$(nproc)

# giveUp WHY...: ends with one sentence.
giveUp() {
  printf '%s\n' "$*" >&2
  exit 1
}

if ! mkdir -p "$buildDir" 2>/dev/null || [[ ! -w $buildDir ]]; then
  giveUp "$buildDir cannot be written to; KOVRA_BUILD_DIR names another folder to build in."
fi
buildDir=$(cd "$buildDir" && pwd)

# needRoom MEGABYTES: says so before a compiler does, by a message of its own in every file.
needRoom() {
  local room
  room=$(df --output=avail -BM "$buildDir" | tail -n 1 | tr -dc 0-9)
  if ((room < $1)); then
    giveUp "$buildDir has room for $room MB, and the build takes $1 MB; KOVRA_BUILD_DIR names another folder."
  fi
}
# Nothing that is built takes less.
needRoom 200

# needCheckout: for what only belongs to the tree.
needCheckout() {
  git -C "$root" rev-parse --git-dir >/dev/null 2>&1 ||
    giveUp "$root is no checkout: git tells which files belong to the tree."
}

# takesNothing ARGUMENTS...: for scripts without options; --help shows the lines at their head.
takesNothing() {
  if (($# == 0)); then return; fi
  sed -n '2,/^set/{/^set/!s/^# \{0,1\}//p}' "$root/scripts/${0##*/}"
  if [[ $1 == -h || $1 == --help ]]; then exit 0; fi
  echo "${0##*/} takes no arguments" >&2
  exit 2
}

heading() { printf '== %s\n' "$*"; }

# quietly LOG COMMAND...: runs a command that talks much, and shows the end of it when it fails.
quietly() {
  local log=$1
  shift
  mkdir -p "$(dirname "$log")"
  if ! "$@" >"$log" 2>&1; then
    tail -n 80 "$log"
    return 1
  fi
}

# packagesFor USE...: package and least version, a line each.
packagesFor() {
  local package use floor wanted
  while read -r package use floor; do
    for wanted in "$@"; do
      if [[ $use == "$wanted" ]]; then echo "$package ${floor:-0}"; fi
    done
  done < <(grep -v '^#' "$root/scripts/packages.txt")
}

# missingPackages USE...: what is not installed, or older than it must be.
missingPackages() {
  local package floor found
  while read -r package floor; do
    found=$(dpkg-query -W -f '${db:Status-Status} ${Version}' "$package" 2>/dev/null) || found=
    if [[ $found != "installed "* ]] ||
      dpkg --compare-versions "${found#installed }" lt "$floor"; then
      echo "$package"
    fi
  done < <(packagesFor "$@")
}

# installPackages USE...: brings what is missing; does nothing, offline too, when all is there.
installPackages() {
  local missing=() asRoot=()
  mapfile -t missing < <(missingPackages "$@")
  if ((${#missing[@]} == 0)); then return; fi

  local advice="apt-get install ${missing[*]}"
  if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
      giveUp "Debian packages are missing, and there is no sudo; as root: $advice"
    fi
    asRoot=(sudo)
  fi
  heading "installing ${missing[*]}"
  asRoot+=(env DEBIAN_FRONTEND=noninteractive apt-get)
  if ! { "${asRoot[@]}" update && "${asRoot[@]}" install --yes --no-install-recommends \
    "${missing[@]}"; } >"$buildDir/install.log" 2>&1; then
    giveUp "Debian packages cannot be installed (why: $buildDir/install.log); as root: $advice"
  fi

  mapfile -t missing < <(missingPackages "$@")
  if ((${#missing[@]} > 0)); then
    giveUp "Still missing, or older than scripts/packages.txt asks for: ${missing[*]}"
  fi
}

# projectVersion: the version of this tree, which CMakeLists.txt has.
projectVersion() { sed -nE '/^project\(/,/\)$/s/^ *VERSION ([0-9.]+)$/\1/p' "$root/CMakeLists.txt"; }

# treeInto FOLDER: what belongs to the tree: no build folder, nothing that git ignores or lost.
treeInto() {
  mkdir -p "$1"
  (cd "$root" && git ls-files -z --cached --others --exclude-standard --deduplicate |
    while IFS= read -r -d '' file; do if [[ -e $file ]]; then printf '%s\0' "$file"; fi; done |
    xargs -0 cp --parents --preserve=mode -t "$1")
}

# The addresses that sanitizers choose collide with strongly randomised ones; without a symbolizer
# they need leave to ask binutils for names and lines.
fixedAddresses=()
if setarch -R true 2>/dev/null; then fixedAddresses=(setarch -R); fi
export ASAN_OPTIONS=allow_addr2line=1 TSAN_OPTIONS=allow_addr2line=1
export UBSAN_OPTIONS=print_stacktrace=1:allow_addr2line=1

# build NAME PRESET COMPILER OPTION...: warnings are errors. All is built, or the targets of the array
# onlyTargets.
onlyTargets=()
build() {
  local name=$1 preset=$2 compiler=$3
  shift 3
  # The largest, with all tests and a sanitizer's tables.
  if [[ ! -e $buildDir/$name ]]; then needRoom 1400; fi
  quietly "$buildDir/$name.log" cmake --preset "$preset" -B "$buildDir/$name" \
    -DCMAKE_CXX_COMPILER="$compiler" -DKOVRA_WERROR=ON -DKOVRA_BUILD_TESTS=ON "$@" &&
    quietly "$buildDir/$name.log" \
      "${fixedAddresses[@]}" cmake --build "$buildDir/$name" -j "$jobs" \
      "${onlyTargets[@]/#/--target=}"
}

# fuzzTargets: their names, a line each.
fuzzTargets() {
  local source
  for source in "$root"/fuzz/*_fuzz.cpp; do basename "$source" .cpp; done
}

# writeWords NAME FILE: the printer's own words, as a dictionary for fuzz targets.
writeWords() {
  "${fixedAddresses[@]}" "$buildDir/$1/tools/kovra" vocabulary --format dict >"$2"
}

# fuzzSeeds TARGET: what a target begins with, a folder on each line.
fuzzSeeds() {
  echo "$root/samples"
  if [[ -d $root/fuzz/corpus/${1%_fuzz} ]]; then echo "$root/fuzz/corpus/${1%_fuzz}"; fi
}

# fuzzOnce NAME TARGET PLACE OPTION...: fuzzes from the seeds. The folder PLACE is made anew, and takes
# what reaches something new and what fails; beside it are PLACE.log and PLACE.status, how it ended.
fuzzOnce() {
  local name=$1 target=$2 place=$3 seeds status=0
  shift 3
  mapfile -t seeds < <(fuzzSeeds "$target")
  rm -rf "$place"
  mkdir "$place"
  "${fixedAddresses[@]}" "$buildDir/$name/fuzz/$target" -timeout=10 -artifact_prefix="$place/" "$@" \
    "$place" "${seeds[@]}" >"$place.log" 2>&1 || status=$?
  echo "$status" >"$place.status"
}

# fuzzAll NAME FOLDER RUNS OPTION...: every target so many times, in FOLDER/TARGET-RUN, and as many at
# once as there are cores.
fuzzAll() {
  local name=$1 folder=$2 runs=$3 run target targets
  shift 3
  mapfile -t targets < <(fuzzTargets)
  for ((run = 1; run <= runs; ++run)); do
    for target in "${targets[@]}"; do
      while (($(jobs -rp | wc -l) >= jobs)); do wait -n || true; done
      fuzzOnce "$name" "$target" "$folder/$target-$run" "$@" &
    done
  done
  wait
}

# fuzzingEnd LOG: what a target that failed has said, without its progress.
fuzzingEnd() { grep -v '^#[0-9]' "$1" | tail -n 60 || true; }

# Shared by the scripts beside it; sourced, not run.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
buildDir=${KOVRA_BUILD_DIR:-$root/build}
# shellcheck disable=SC2034 # for those who source this
jobs=$(nproc)
mkdir -p "$buildDir"
buildDir=$(cd "$buildDir" && pwd)

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

  if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
      echo "These Debian packages are missing; install them and start again:" >&2
      echo "  apt-get install ${missing[*]}" >&2
      exit 1
    fi
    asRoot=(sudo)
  fi
  heading "installing ${missing[*]}"
  asRoot+=(env DEBIAN_FRONTEND=noninteractive apt-get)
  quietly "$buildDir/install.log" "${asRoot[@]}" update || exit 1
  quietly "$buildDir/install.log" \
    "${asRoot[@]}" install --yes --no-install-recommends "${missing[@]}" || exit 1

  mapfile -t missing < <(missingPackages "$@")
  if ((${#missing[@]} > 0)); then
    echo "Still missing, or older than scripts/packages.txt asks for: ${missing[*]}" >&2
    exit 1
  fi
}

#!/usr/bin/env bash
# The scripts in bad weather: each gives one sentence that says what is missing, and does nothing.
#   weather.sh <source folder>
set -euo pipefail

source=$1
work=$(mktemp -d)
trap 'chmod -R u+w "$work" && rm -rf "$work"' EXIT
# A folder with a blank, which is no checkout: what somebody has who unpacked a tarball.
tree="$work/a folder"
mkdir -p "$tree" "$work/bin"
cp -r "$source/scripts" "$source/CMakeLists.txt" "$source/CHANGELOG.md" "$tree"
bad=0

# gives STATUS SENTENCE COMMAND...: ends so, with that as its only line.
gives() {
  local wanted=$1 sentence=$2 status=0 said
  shift 2
  said=$("$@" 2>&1) || status=$?
  if ((status != wanted)) || [[ $said != *"$sentence"* || $said == *$'\n'* ]]; then
    printf '%s: status %s\n%s\n' "$*" "$status" "$said" >&2
    bad=1
  fi
}

printf '#!/bin/sh\nprintf "Avail\\n    5M\\n"\n' >"$work/bin/df"
chmod +x "$work/bin/df"
for script in abi coverage demo documents fuzz measure package release tarball test; do
  gives 1 "a folder/build has room for 5 MB" env PATH="$work/bin:$PATH" "$tree/scripts/$script"
  gives 1 "/proc/version cannot be written to" \
    env KOVRA_BUILD_DIR=/proc/version "$tree/scripts/$script"
done
for script in package release tarball mutants; do
  gives 1 "a folder is no checkout: git tells" "$tree/scripts/$script"
done
gives 1 "There are no figures yet" "$tree/scripts/coverage" --show
gives 2 "there is no stage \"nosuch\"" "$tree/scripts/test" nosuch
for script in coverage fuzz abi; do
  gives 2 "usage: scripts/$script" "$tree/scripts/$script" --nosuch
done
for script in demo documents package release tarball; do
  "$tree/scripts/$script" --help | grep -q '^[A-Z]' || { echo "$script --help says nothing" >&2; bad=1; }
  status=0
  "$tree/scripts/$script" now >"$work/out" 2>&1 || status=$?
  if ((status != 2)) || [[ $(tail -n 1 "$work/out") != "$script takes no arguments" ]]; then
    cat "$work/out" >&2
    bad=1
  fi
done

# Packages are missing: no network, or nobody who may install them.
mkdir "$work/offline" "$work/plain" "$work/open"
printf '#!/bin/sh\nexit 1\n' | tee "$work/offline/dpkg-query" "$work/plain/dpkg-query" \
  >"$work/offline/apt-get"
printf '#!/bin/sh\nexec "$@"\n' >"$work/offline/sudo"
chmod +x "$work"/offline/* "$work"/plain/*
for program in apt-get bash cp df dirname dpkg env grep mkdir nproc tail tr; do
  ln -s "$(command -v "$program")" "$work/plain/$program"
done
chmod 755 "$work"
chmod 777 "$work/open"
asUser=()
if ((EUID == 0)); then asUser=(setpriv --reuid=65534 --regid=65534 --clear-groups); fi
for script in demo test; do
  said=$(env PATH="$work/offline:$PATH" "$tree/scripts/$script" 2>&1) && bad=1
  if [[ ${said##*$'\n'} != "Debian packages cannot be installed (why: "*"); as root: apt-get install "* ]]; then
    printf '%s without network:\n%s\n' "$script" "$said" >&2
    bad=1
  fi
  gives 1 "there is no sudo; as root: apt-get install" \
    "${asUser[@]}" env PATH="$work/plain" KOVRA_BUILD_DIR="$work/open" "$tree/scripts/$script"
done

# A folder that one may only read.
rm -rf "$tree/build"
chmod -R a-w "$tree"
for script in abi coverage demo documents fuzz measure test; do
  gives 1 "a folder/build cannot be written to; KOVRA_BUILD_DIR names another" \
    "${asUser[@]}" "$tree/scripts/$script"
done

exit "$bad"

#!/usr/bin/env bash
# Hosts in C compile without a warning and find what kovra.h says.
#   c.sh <include folder> <libkovra.so> <compiler> <standard>
set -euo pipefail

include=$1 library=$2 compiler=$3 standard=$4
folder=$(dirname "$library")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for host in c_host c_memory; do
  "$compiler" -std="$standard" -Wall -Wextra -Wpedantic -Werror -I "$include" \
    "$(dirname "$0")/$host.c" -o "$work/$host" -L "$folder" -lkovra
  LD_LIBRARY_PATH=$folder "$work/$host"
done

#!/usr/bin/env bash
# GNU parallel shares replies out to several calls of the tool; no line is mixed or lost.
#   parallel.sh <tool> <source folder> <libkovra.so.1>
set -uo pipefail
source "$(dirname "$0")/support.sh" "$@"
need parallel parallel
need jq jq

mkdir replies
replies 2000 | split -l 1 -a 4 -d --additional-suffix=.xml - replies/printer-

# Files, each call with as many as fit.
find replies -name '*.xml' -print0 |
  parallel -0 -j 4 -n 100 "$tool" decode --format jsonl --errors stderr >shared || fail "parallel"
"$tool" decode --format jsonl --errors stderr replies/*.xml >alone || fail "alone"
cmp <(sort shared) <(sort alone) || fail "files: another result"

# A stream, cut into blocks at ends of lines.
replies 20000 >stream
parallel --pipepart -a stream --block 100k -j 4 \
  "$tool" decode --lines --format jsonl --errors stderr >shared || fail "parallel"
jq .readings[0].record.num_jobs_total shared | sort -n >numbers
cmp numbers <(seq 20000) || fail "stream: another result"
echo "2000 files and 20000 lines"

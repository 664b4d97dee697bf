#!/usr/bin/env bash
# Metrics for Prometheus: in its format, without a complaint of its checker where that is there.
#   prom.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

cp "$samples/status/minimal.xml" .
kovra decode --format prom minimal.xml
expectStatus 0
same "standard error" "" "$err"
holds "standard output" '# HELP kovra_reply_decoded *
# TYPE kovra_reply_decoded gauge
kovra_reply_decoded 1
*# TYPE kovra_general_status_printer_state gauge
*kovra_general_status_printer_state{state="offline"} 1
*' "$out"
checks=$((checks + 1))
[[ $(grep -c 'printer_state{.*} 1$' <<<"$out") == 1 ]] || complain "states" "$out"

# Several replies have labels; one that was refused is told, too. The file appears whole.
mapfile -d '' files < <(find "$samples" -name '*.xml' -print0 | sort -z)
kovra decode --format prom --output all.prom "${files[@]}" missing.xml minimal.xml minimal.xml
expectStatus 3
same "standard output" "" "$out"
holds "metrics" '*kovra_reply_decoded{source="missing.xml"} 0
*' "$(<all.prom)
"
checks=$((checks + 4))
grep -v '^#' all.prom | grep -qvE '^kovra_[a-z0-9_]+(\{([a-z0-9_]+="([^"\\]|\\["\\n])*",?)+\})? (NaN|[-+]?(Inf|[0-9].*))$' &&
  complain "odd lines" "$(grep -v '^#' all.prom | grep -vE '^kovra_[a-z0-9_]+(\{([a-z0-9_]+="([^"\\]|\\["\\n])*",?)+\})? (NaN|[-+]?(Inf|[0-9].*))$' | head -n 5)"
twice=$(grep -v '^#' all.prom | sed 's/ [^ ]*$//' | sort | uniq -d)
[[ -z $twice ]] || complain "series that stand twice" "$twice"
twice=$(grep '^# TYPE' all.prom | sort | uniq -d)
[[ -z $twice ]] || complain "metrics that stand twice" "$twice"
apart=$(grep -v '^#' all.prom | sed 's/[{ ].*//' | uniq | sort | uniq -d)
[[ -z $apart ]] || complain "metrics that do not stand together" "$apart"
if command -v promtool >/dev/null; then
  checks=$((checks + 1))
  promtool check metrics <all.prom >found 2>&1 || complain "promtool" "$(<found)"
else
  echo "promtool is not there: its check is skipped"
fi

# Texts of a reply end no label, and no secret is a metric.
printf '<configuration><wireless><ssid>a"b\\c</ssid></wireless></configuration>' >quoted.xml
kovra decode --format prom quoted.xml
holds "standard output" '*{ssid="a\\"b\\\\c"} 1*' "$out"
checks=$((checks + 1))
grep -q 'umbrella' all.prom && complain "a key" "$(grep umbrella all.prom)"

finish

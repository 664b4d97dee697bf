#!/usr/bin/env bash
# Metrics reach Prometheus by way of its node exporter's textfile collector.
#   prometheus.sh <tool> <source folder> <libkovra.so.1>
set -uo pipefail
source "$(dirname "$0")/support.sh" "$@"
need prometheus-node-exporter prometheus-node-exporter
need prometheus prometheus
need python3 python3

exporter=127.0.0.1:19100 server=127.0.0.1:19090
ask() { python3 -c 'import sys, urllib.request; sys.stdout.write(urllib.request.urlopen(sys.argv[1], timeout=5).read().decode())' "$1"; }
query() { ask "http://$server/api/v1/query?query=$1"; }

mkdir metrics data
state() {  # word
  printf '<get_general_status><printer_state>%s</printer_state></get_general_status>' "$1" |
    "$tool" decode --format prom --output metrics/printer.prom || fail "no metrics"
}
state idle

prometheus-node-exporter --collector.disable-defaults --collector.textfile \
  --collector.textfile.directory=metrics --web.listen-address="$exporter" >exporter.log 2>&1 &
within 20 ask "http://$exporter/metrics" || fail "node exporter" "$(<exporter.log)"
scrape=$(ask "http://$exporter/metrics")
[[ $scrape == *'kovra_general_status_printer_state{state="idle"} 1'* ]] || fail "no state" "$scrape"
[[ $scrape == *'node_textfile_scrape_error 0'* ]] || fail "the collector complains" "$scrape"

cat >prometheus.yml <<END
global: {scrape_interval: 1s}
scrape_configs: [{job_name: printers, static_configs: [{targets: ["$exporter"]}]}]
END
prometheus --config.file=prometheus.yml --storage.tsdb.path=data --web.listen-address="$server" \
  >prometheus.log 2>&1 &
holds() { [[ $(query "kovra_general_status_printer_state%7Bstate%3D%22$1%22%7D") == *',"1"]'* ]]; }
within 60 holds idle || fail "Prometheus knows no state" "$(query kovra_general_status_printer_state)" "$(tail -n 5 prometheus.log)"

# The printer goes offline: the file is replaced as a whole, and the next scrape shows it.
state offline
within 30 holds offline || fail "the new state does not arrive"
echo "idle and offline arrived"

#!/usr/bin/env bash
# Workers of Dask decode with the Python package; the result is that of one process.
#   dask.sh <tool> <source folder> <libkovra.so.1>
set -uo pipefail
source "$(dirname "$0")/support.sh" "$@"
python=/usr/bin/python3
[[ -x $python ]] || skip "$python is not there"
"$python" -c 'import distributed' 2>/dev/null || skip "Dask is not there (package python3-distributed)"

cat >fleet.py <<'END'
"""Counts the jobs of 100,000 replies, alone and with two workers."""
import collections

import distributed

STATES = ["idle", "offline", "printing", "standby", "nobody knows"]


def reply(number):
    return (f"<get_general_status><printer_state>{STATES[number % 5]}</printer_state>"
            f"<num_jobs_total>{number}</num_jobs_total></get_general_status>")


def summary(first, last):
    import kovra

    states, jobs, notes = collections.Counter(), 0, 0
    for number in range(first, last):
        reading = kovra.decode(reply(number))
        record = reading["readings"][0]["record"]
        states[record["printer_state"]["name"]] += 1
        jobs += record["num_jobs_total"]
        notes += len(reading["notes"])
    return states, jobs, notes


def together(parts):
    states, jobs, notes = collections.Counter(), 0, 0
    for part in parts:
        states += part[0]
        jobs += part[1]
        notes += part[2]
    return states, jobs, notes


if __name__ == "__main__":
    TOTAL, STEP = 100_000, 5_000
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster:
        with distributed.Client(cluster) as client:
            tasks = [client.submit(summary, n, n + STEP) for n in range(0, TOTAL, STEP)]
            shared = together(client.gather(tasks))
            workers = len(client.scheduler_info()["workers"])
    assert workers == 2, workers
    alone = summary(0, TOTAL)
    assert shared == alone, (shared, alone)
    assert alone[1] == TOTAL * (TOTAL - 1) // 2 and alone[2] == TOTAL // 5, alone
    print(f"{TOTAL} replies, {workers} workers: {dict(shared[0])}")
END
"$python" fleet.py 2>dask.log || fail "$(tail -n 20 dask.log)"

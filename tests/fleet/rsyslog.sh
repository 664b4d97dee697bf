#!/usr/bin/env bash
# rsyslog hands messages that are replies to the tool, which stays and decodes them one by one.
#   rsyslog.sh <tool> <source folder> <libkovra.so.1>
set -uo pipefail
source "$(dirname "$0")/support.sh" "$@"
need rsyslogd rsyslog
need python3 python3
need jq jq

cat >take <<END
#!/bin/sh
exec "$tool" decode --lines --format jsonl --errors stderr >>"$work/decoded" 2>>"$work/errors"
END
chmod +x take
cat >rsyslog.conf <<END
global(workDirectory="$work" maxMessageSize="64k")
module(load="imptcp")
module(load="omprog")
template(name="reply" type="string" string="%msg:2:\$:drop-last-lf%\n")
input(type="imptcp" address="127.0.0.1" port="15514")
if \$programname == "printer" then action(type="omprog" binary="$work/take" template="reply")
END
rsyslogd -n -f rsyslog.conf -i "$work/pid" >rsyslog.log 2>&1 &
cat >send.py <<'END'
import socket, sys
with socket.create_connection(("127.0.0.1", 15514), timeout=5) as host:
    for line in sys.stdin:
        host.sendall(b"<14>Nov 22 05:00:00 host printer: " + line.encode())
END
connected() { python3 send.py </dev/null; }
within 20 connected || fail "rsyslog does not listen" "$(<rsyslog.log)"
replies 1000 | python3 send.py || fail "nothing could be sent"
complete() { [[ $(wc -l <decoded) == 1000 ]]; }
within 60 complete || fail "$(wc -l <decoded) of 1000 replies" "$(tail -n 3 rsyslog.log errors)"
jq .readings[0].record.num_jobs_total decoded | cmp - <(seq 1000) || fail "another order"
echo "1000 replies, in order"

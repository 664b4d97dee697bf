#!/usr/bin/env bash
# Keys, pass phrases and track data stand in no output of `kovra decode`, in whatever form, unless
# they are asked for.
#   secrets.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"

# hidden SECRET REPLY
hidden() {
  printf '%s' "$2" >reply.xml
  for format in table json jsonl; do
    kovra decode --format "$format" reply.xml
    expectStatus 0
    checks=$((checks + 3))
    [[ $out == *'******'* ]] || complain "$called: no mask" "$out"
    [[ $out$err != *"$1"* ]] || complain "$called: tells a secret" "$out" "$err"
    kovra decode --format "$format" --show-secrets reply.xml
    expectStatus 0
    [[ $out == *"$1"* ]] || complain "$called: hides what was asked for" "$out"
    [[ $err != *"$1"* ]] || complain "$called: tells a secret in a note" "$err"
  done
}

long=$(printf '4711%.0s' {1..100})
for track in track1 track2 track3; do
  hidden 4711 "<data><mag><$track>;4711=2811?</$track></mag></data>"
  hidden 4711 "<data><mag><$track>$long</$track></mag></data>"
done
hidden hush '<passkey>hush</passkey>'
hidden hush '<keys><printer_lock_key>hush</printer_lock_key></keys>'
hidden hush '<configuration><wireless><key>hush</key></wireless></configuration>'

finish

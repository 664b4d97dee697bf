#!/usr/bin/env bash
# Every command that the documents, the manual and the helps show does what they say.
#   commands.sh <tool> <samples folder>
set -euo pipefail
exec python3 -B "$(dirname "$0")/../documents/commands.py" "$1" "$2/.."

#!/usr/bin/env bash
# The drawing of the rooms shows what the sources include, and a change of that is noticed.
#   rooms.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"
root=$samples/.. called=rooms.py
rooms() { python3 -B "$root/docs/scripts/rooms.py" "$@"; }

checks=$((checks + 1))
rooms --check "$root" "$root/docs/rooms.svg" || complain "docs/rooms.svg is another"

# notices WHAT FILE LINE: with that line in a file of the tree.
notices() {
  rm -rf tree && mkdir tree
  cp -r "$root"/{include,src,tools} tree
  mkdir -p "$(dirname "tree/$2")"
  echo "$3" >>"tree/$2"
  checks=$((checks + 1))
  local said
  said=$(rooms --check tree "$root/docs/rooms.svg" 2>&1) && complain "nothing notices $1"
  holds "what is said of $1" "$1" "$said"
}
notices 'src/frame -> families: an arrow that is not drawn' \
  src/frame/text.hpp '#include "media/media_tables.hpp"'
notices 'tools/kovra -> src/frame: an arrow that is not drawn' \
  tools/kovra/table.hpp '#include "../../src/frame/text.hpp"'
notices 'src/media/media_tables.hpp includes src/caps/caps_words.hpp: a family knows no other' \
  src/media/media_tables.hpp '#include "caps/caps_words.hpp"'
notices '*docs/rooms.svg is another: run scripts/documents' src/doors/doors.hpp '#include "kvxhelper.h"'
rm tree/src/doors -r
find tree/tools -type f -exec sed -i '/#include/d' {} +
checks=$((checks + 1))
said=$(rooms --check tree "$root/docs/rooms.svg" 2>&1) && complain "an arrow that is gone goes unnoticed"
holds "what is said" 'tools/kovra -> include/face: no file includes it any more' "$said"
finish

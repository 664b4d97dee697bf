#!/usr/bin/env bash
# Every manual page of a command tells all options of its help, is named in that of the tool, and
# has no mistake that the formatter sees.
#   pages.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"
pages=$samples/../docs/man

# helpOf VERB...: its help, and those of the commands below it.
helpOf() {
  kovra "$@" --help
  expectStatus 0
  printf %s "$out"
  local below
  for below in $(awk '/^Subcommands:/ { on = 1; next } !NF { on = 0 } on && /^  [^ ]/ { print $1 }' <<<"$out"); do
    helpOf "$@" "$below"
  done
}

optionsOf() { grep -oE '^  (-[a-z0-9],)?--?[a-z-]+' | grep -oE -e '-{1,2}[a-z0-9][a-z-]*' | sort -u; }

for page in "$pages"/kovra-*.1; do
  verb=$(basename "$page" .1)
  verb=${verb#kovra-}
  helpOf "$verb" >help
  checks=$((checks + 1))
  grep -qE '^Examples?:$' help || complain "$verb: its help has no example"
  plain=$(sed 's/\\-/-/g' "$page")
  while read -r option; do
    checks=$((checks + 1))
    [[ $option == -h || $option == --help ]] ||
      grep -qE -e "(^|[^a-z-])$option($|[^a-z-])" <<<"$plain" || complain "$page: no $option"
  done < <(optionsOf <help)
  checks=$((checks + 2))
  grep -qxF ".BR kovra\\-$verb (1)," "$pages/kovra.1" || complain "kovra.1 does not name $page"
  for section in NAME SYNOPSIS DESCRIPTION "EXIT STATUS" EXAMPLES "SEE ALSO"; do
    grep -qx ".SH $section" "$page" || complain "$page: no $section"
  done
done

# Every verb has a page.
kovra --help
for verb in $(awk '/^Subcommands:/ { on = 1; next } !NF { on = 0 } on && /^  [a-z]/ { print $1 }' <<<"$out"); do
  checks=$((checks + 1))
  [[ -e $pages/kovra-$verb.1 ]] || complain "$verb has no page"
done

# What a page refers to as a page of ours is there.
while IFS=: read -r page reference; do
  checks=$((checks + 1))
  name=$(sed -E 's/^\.BR ([^ ]+) \(([0-9])\).*/\1.\2/; s/\\-/-/g' <<<"$reference")
  [[ -e $pages/$name ]] || complain "$page refers to $name"
done < <(grep -E '^\.BR (lib)?kovra[^ ]* \([0-9]\)' "$pages"/*)

# Without a formatter there is nobody to see a mistake.
for page in "$pages"/*.[0-9]; do
  if command -v groff >/dev/null; then
    checks=$((checks + 1))
    warnings=$(groff -man -Tutf8 -ww "$page" 2>&1 >/dev/null)
    [[ -z $warnings ]] || complain "$page:" "$warnings"
  fi
done
finish

#!/usr/bin/env bash
# docs/handbook.md is what the tool tells, all of it; the page has the same, and needs nothing else.
#   handbook.sh <tool> <samples folder>
set -uo pipefail
source "$(dirname "$0")/support.bash" "$@"
docs=$samples/../docs
handbook=$docs/handbook.md
print() { python3 -B "$docs/scripts/handbook.py" "$@"; }

checks=$((checks + 1))
print --check "$tool" "$handbook" || complain "docs/handbook.md is another"
checks=$((checks + 1))
print --html "$tool" page.html || complain "no page"

# A handbook that tells anything else is noticed.
sed 's/`printing_heating`/`printing_hearing`/' "$handbook" >other.md
checks=$((checks + 1))
! print --check "$tool" other.md 2>/dev/null || complain "another handbook is taken for the right one"

# has WHAT TEXT: in code font, in the handbook and on the page.
has() {
  checks=$((checks + 1))
  grep -qF "\`$2\`" "$handbook" || complain "the handbook has no $1 $2"
  grep -qF "<code>$2</code>" page.html || complain "the page has no $1 $2"
}
kovra vocabulary
while read -r word; do has word "$word"; done <<<"${out%$'\n'}"
kovra list --findings
while read -r id _ kind _; do has finding "$id" && has kind "$kind"; done <<<"${out%$'\n'}"
kovra list --format json
while read -r code; do has command "kovra compose $code"; done < <(jq -r '.[].command // empty' <<<"$out")

# Links lead to what is there, each to one place, and none leads away.
checks=$((checks + 3))
targets=$(grep -oP '<section id="\K[^"]+' page.html | sort)
[[ -z $(uniq -d <<<"$targets") ]] || complain "anchors that occur twice:" "$(uniq -d <<<"$targets")"
dead=$(grep -oP 'href="#\K[^"]+' page.html | sort -u | comm -23 - <(echo "$targets"))
[[ -z $dead ]] || complain "links to nothing:" "$dead"
away=$(grep -oE '(src|href)="[^#"][^"]*"|url\([^)]*\)|https?:' page.html)
[[ -z $away ]] || complain "the page needs:" "$away"

# The browser runs and shows what the page was made with, and nothing else.
for element in style script; do
  checks=$((checks + 1))
  digest=$(python3 -c '
import base64, hashlib, re, sys
text = re.search(f"<{sys.argv[1]}>(.*?)</{sys.argv[1]}>", open("page.html").read(), re.S)[1]
print(base64.b64encode(hashlib.sha256(text.encode()).digest()).decode())' "$element")
  grep -qF "$element-src &#x27;sha256-$digest&#x27;" page.html || complain "the policy has no $element"
done
finish

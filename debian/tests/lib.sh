# What the tests beside this have in common; sourced, not run.
# shellcheck shell=bash

work=${AUTOPKGTEST_TMP:-$(mktemp -d)}
reply='<get_general_status><printer_state>printing</printer_state></get_general_status>'

fail() {
  printf '%s\n' "$*" >&2
  exit 1
}

# expectHosts FOLDER: the examples there do what they are made for.
expectHosts() {
  [[ $("$1/status" <<<"$reply") == "printer state: 5" ]] || fail "status reads another state"
  [[ $("$1/show_status" <<<"$reply") == *"state: printing"* ]] || fail "show_status shows no state"
  echo "$reply" >"$work/reply.xml"
  [[ $("$1/fleet_gaps" "$work/reply.xml") == *general-status* ]] || fail "fleet_gaps finds nothing"
  # shellcheck disable=SC2154 # those who source this have it
  [[ $("$1/set_wifi" 'New Net' <<<"$wifi") == *"<ssid>New Net</ssid>"* ]] ||
    fail "set_wifi does not set the name"
  [[ $("$1/set_printhead" PH-0042) == *"<printhead_serial>PH-0042</printhead_serial>"* ]] ||
    fail "set_printhead does not set the serial number"
  [[ $("$1/decode" "$work/reply.xml") == *printing* ]] || fail "decode says no state"
}

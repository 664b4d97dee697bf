#!/usr/bin/env bash
# `kovra compose capabilities` and `kovra compose media`: documents of what decode shows.
#   caps_compose.sh <tool> <samples folder>
set -uo pipefail
# shellcheck source=tests/tool/support.bash
source "$(dirname "$(realpath "$0")")/support.bash"

declaration='<?xml version="1.0" encoding="UTF-8" ?>'
caps=$samples/caps/full.json media=$samples/media/full.json

# Capabilities, whole: everything goes out, by the writer's own rules.
kovra compose capabilities "$caps"
expectStatus 0
same "standard error" "" "$err"
holds "the document" "$declaration
<capabilities>
    <host_ports>
        <host_port>
            <port_id>1</port_id>
            <type>usb_2_0</type>
        </host_port>*" "$out"
holds "the scalable font" "*<name>Swiss 721</name>
            <name>yes</name>
            <style>regular</style>*" "$out"
holds "the print system" "*<print_system>retransfer</print_system>*" "$out"
holds "the stripe" "*<mag_encoder>iso</mag_encoder>
    <mag_stripe>front</mag_stripe>*" "$out"
[[ $out != *staff.xml* ]] || complain "$called: a template's location was written"
printf %s "$out" >written.xml

kovra compose capabilities --direct-to-card "$caps"
expectStatus 0
holds "the print system" "*<print_system>direct_to_card</print_system>*" "$out"

# Parts of them.
kovra compose capabilities --only mag-encoder "$caps"
expect 0 "$declaration
<capabilities>
    <mag_encoder>iso</mag_encoder>
</capabilities>" ""
kovra compose capabilities "$caps" --only internal-encoder
expect 0 "$declaration
<capabilities>
    <internal_encoder>
        <comms_channel>usb_2_0</comms_channel>
        <contact_encoding>yes</contact_encoding>
        <contactless_encoder>mifare</contactless_encoder>
    </internal_encoder>
</capabilities>" ""

# What is written is read again, and the record alone is as good as the whole output.
kovra decode --format json written.xml
expectStatus 0
printf %s "$out" | jq .readings[0].record >again.json
kovra compose capabilities again.json
expectStatus 0
holds "the document" "*<capabilities>*</capabilities>*" "$out"

# Problems: one line with the place of the value, and nothing else.
echo '{"fonts": [{}, {"style": "oblique"}]}' >bad.json
kovra compose capabilities bad.json
expectStatus 1
same "standard output" "" "$out"
holds "the message" 'bad.json: error: fonts\[1\].style: found a text of 7 bytes; expected *regular, bold, italic, none
' "$err"
kovra compose capabilities --only printer "$caps"
expectStatus 2
same "standard output" "" "$out"

# Cards: the common types unless all are wanted.
cards() { grep -c '<card>' <<<"$out"; }
kovra compose media "$media"
expectStatus 0
same "standard error" "" "$err"
holds "the document" "$declaration
<media>
    <cards>
        <card>
            <information>
                <type>0</type>*" "$out"
[[ $(cards) == 2 ]] || complain "$called: $(cards) cards, not 2"
[[ $out != *film* ]] || complain "$called: a film was written"
holds "a temperature" '*<top_single min="0" max="0">175</top_single>*' "$out"

kovra compose media --all-types --without-transfer <"$media"
expectStatus 0
[[ $(cards) == 3 ]] || complain "$called: $(cards) cards, not 3"
[[ $out != *transfer_* ]] || complain "$called: transfer settings were written"

echo '{"cards": [{"transfer_temps": {"top_single": {"min": "low"}}}]}' >bad.json
kovra compose media bad.json
expectStatus 1
same "standard output" "" "$out"
holds "the message" 'bad.json: error: cards\[0\].transfer_temps.top_single.min: found a text of 3 bytes; expected *
' "$err"

finish

/// @file
/// The status replies as tables.

#ifndef KOVRA_STATUS_STATUS_TABLES_HPP
#define KOVRA_STATUS_STATUS_TABLES_HPP

#include <algorithm>
#include <cstring>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

#include "frame/field.hpp"
#include "frame/kvxhelper_words.hpp"
#include "frame/text.hpp"
#include "kvxsensorrecords.h"
#include "kvxstatusrecords.h"
#include "kvxwirelessrecords.h"
#include "status/status_words.hpp"

namespace Kovra::status {

using namespace frame;

// General status.

inline constexpr Table generalStatus = {
    keyword<&KVGeneralStatus::printer_state, printerStates>("printer_state"),
    hexadecimal<&KVGeneralStatus::alarms>("alarms"),
    number<&KVGeneralStatus::error>("error"),
    flagIf<&KVGeneralStatus::printer_lock, "locked", "unlocked">("printer_lock"),
    number<&KVGeneralStatus::num_jobs_receiving_or_pending>("num_jobs_receiving_or_pending"),
    number<&KVGeneralStatus::num_jobs_inprogress>("num_jobs_inprogress"),
    number<&KVGeneralStatus::num_jobs_done_ok>("num_jobs_done_ok"),
    number<&KVGeneralStatus::num_jobs_done_error>("num_jobs_done_error"),
    number<&KVGeneralStatus::num_jobs_total>("num_jobs_total"),
    number<&KVGeneralStatus::action_id_next>("action_id_next"),
    number<&KVGeneralStatus::warning>("warning"),
    keyword<&KVGeneralStatus::laminator_state, laminatorStates>("laminator_state"),
    number<&KVGeneralStatus::param_chg_counter>("param_chg_counter"),
};

inline constexpr char const* generalStatusRoots[] = {"get_general_status"};

// Job list.

inline constexpr Table jobInfo = {
    number<&_KVJobInfo::action_id>("action_id"),
    text<&_KVJobInfo::uuid>("uuid"),
    keyword<&_KVJobInfo::print_state, jobStates>("print_state"),
};

inline constexpr auto jobEntries =
    atMost(std::extent_v<decltype(KVJobList::jobs)>, entries<jobInfo>("job"));

constexpr int roomOf(KVJobList const& list) {
  return static_cast<int>(std::size(list.jobs));
}

/// Hosts give the room that they have in `count` and find there how many entries were filled. Jobs
/// that find no room are skipped and leave the result as it is.
struct JobListReading {
  static bool read(Element root, KVJobList& list, Watch const& watch) {
    int const capacity = std::clamp(list.count, 0, roomOf(list));
    list.count = 0;
    remark(watch, [](Observer& observer) { observer.list(list_); });
    return walkEntries(root, jobEntries.item, [&](Element child, bool result) {
      if (list.count == capacity) {
        remark(watch, [&](Observer& observer) {
          observer.surplusEntry(root, child, static_cast<std::size_t>(capacity));
        });
        return result;
      }
      int const index = list.count++;
      return readEntry(child, jobEntries, &list.jobs[index], list_, static_cast<std::size_t>(index),
                       watch);
    });
  }

 private:
  static constexpr std::string_view list_ = memberName<&KVJobList::jobs>;
};

inline constexpr Table jobList = {
    listOfRoot<&KVJobList::jobs, jobEntries>(),
    aside<&KVJobList::count>(),
};

inline constexpr char const* jobListRoots[] = {"get_job_list"};

// Job status.

inline constexpr Table jobPrinting = {
    number<&KVJobStatus::copies_done>("copies_done"),
    number<&KVJobStatus::copies_total_specified>("copies_total_specified"),
    number<&KVJobStatus::error_code>("error_code"),
    keyword<&KVJobStatus::print_state, jobStates>("print_state"),
    keyword<&KVJobStatus::laminator_state, laminatorStates>("laminator_state"),
    keyword<&KVJobStatus::position_in_transport, jobStates>("position_in_transport"),
};

/// Deliberately one table for all encoders: a state is stored by its own name, whichever encoder's
/// element it stands in.
inline constexpr Table encoderStates = {
    sharing(keyword<&KVJobStatus::mag_state, jobStates>("mag_state")),
    sharing(keyword<&KVJobStatus::contact_state, jobStates>("contact_state")),
    sharing(keyword<&KVJobStatus::contactless_state, jobStates>("contactless_state")),
};

inline constexpr Table jobStatus = {
    number<&KVJobStatus::action_id>("action_id"),
    text<&KVJobStatus::uuid>("uuid"),
    flagIf<&KVJobStatus::ready_for_next_job, "yes", "no">("ready_for_next_job"),
    group<KVJobStatus, jobPrinting>("status_printing"),
    group<KVJobStatus, encoderStates>("status_mag"),
    group<KVJobStatus, encoderStates>("status_contact"),
    group<KVJobStatus, encoderStates>("status_contactless"),
};

inline constexpr char const* jobStatusRoots[] = {"get_job_status"};

// Card counters and up-times. Their members are `unsigned long`, whose numbers keep 16 bits.

inline constexpr Table cardCount = {
    number<&KVCardCount::total_cards_done>("total_cards_done"),
    number<&KVCardCount::laminator_cards_laminated>("laminator_cards_laminated"),
    number<&KVCardCount::laminator_cards_processed>("laminator_cards_processed"),
};

inline constexpr Table upTimes = {
    number<&KVUpTimes::laminator_total_up_time>("laminator_total_up_time"),
    number<&KVUpTimes::laminator_top_bulb_on_time>("laminator_top_bulb_on_time"),
    number<&KVUpTimes::laminator_bottom_bulb_on_time>("laminator_bottom_bulb_on_time"),
};

// Cleaning.

/// Hosts get this one number without a record around it, in a variable of theirs that may have no
/// value yet.
struct CardsUntilCleaning {
  std::optional<int> total_cards_until_next_cleaning;
};

/// A number of which it matters whether it was read at all.
struct SoughtNumberKind : NeverWritten, NeverAssigned {
  static constexpr Shape shape = Shape::integer;

  static bool read(Element element, std::optional<int>& out) {
    int number = 0;
    if (!NumberKind::read(element, number)) return false;
    out = number;
    return true;
  }
  static void report(Observer& observer, std::string_view name, Element element,
                     std::optional<int> const& value) {
    NumberKind::report(observer, name, element, value.value());
  }
};

inline constexpr Table cardsUntilCleaning = {
    row<&CardsUntilCleaning::total_cards_until_next_cleaning, SoughtNumberKind>(
        "total_cards_until_next_cleaning"),
};

inline constexpr Table cleaningStatus = {
    keyword<&KVCleaningStatus::cleaning_status, cleaningStates>("cleaning_status"),
};

// Free memory: RAM and flash differ in the root only.

inline constexpr Table freeSpace = {
    number<&__MEMORY::bytes_free>("bytes_free"),
};

/// One root for two replies: a count reply may hold the card counters, the cards until the next
/// cleaning, or both.
inline constexpr char const* countRoots[] = {"get_count"};
inline constexpr char const* upTimeRoots[] = {"get_laminator_up_times"};
inline constexpr char const* cleaningStatusRoots[] = {"get_cleaning_status"};
inline constexpr char const* freeRamRoots[] = {"get_free_ram"};
inline constexpr char const* freeFlashRoots[] = {"get_free_flash"};

// Media status.

inline constexpr std::string_view descriptionName = memberName<&_MediaStatusInfo::description>;
inline constexpr std::string_view codeName = memberName<&_MediaStatusInfo::code>;

// A ribbon's kind, by its panels.

/// The array of a consumable's description, also where only its first character is known.
using Description = std::span<char, sizeof(_MediaStatusInfo::description)>;

/// Deliberately appends to what the description holds already, be it an earlier panel or a text of
/// the host, who clears the record to have the panels alone.
struct PanelReading : NeverWritten, NeverAssigned {
  static bool read(Element panel, Description& description, Watch const& watch) {
    WordText words;
    if (!words.read(panel)) {
      remark(watch, [&](Observer& observer) { observer.emptyElement(panel); });
      return false;
    }
    std::size_t const before = ::strnlen(description.data(), description.size());
    appendBounded(words.get(), description.data(), static_cast<int>(description.size()));
    remark(watch, [&](Observer& observer) {
      std::string_view const kept = description.data();
      observer.member(descriptionName, kept);
      if (std::strlen(panel.text()) > kept.size() - before) observer.cutText(panel, kept);
    });
    return true;
  }
};

inline constexpr Table ribbonPanels = {adding(reading<Description, PanelReading>("panel"))};

/// What a ribbon's or film's kind is told in.
inline constexpr Table kindMembers = {
    text<&_MediaStatusInfo::description>(""),
    keyword<&_MediaStatusInfo::code, ribbonNames>(""),
};

/// The code is that of all panels joined, and stays as it was when the last one has no text.
struct SequenceReading : NeverWritten, NeverAssigned {
  static constexpr Table panels = {
      text<&_MediaStatusInfo::description>(""),
      keyword<&_MediaStatusInfo::code, ribbonDescriptions>(""),
  };
  static constexpr Table members = {group<_MediaStatusInfo, panels>("panel")};

  static bool read(Element sequence, _MediaStatusInfo& ribbon, Watch const& watch) {
    Description description(ribbon.description);
    if (!walk(sequence, ribbonPanels, description, watch)) return false;
    ribbon.code = ribbonDescriptions.codeOf(ribbon.description);
    remark(watch, [&](Observer& observer) {
      if (!showKeyword(observer, codeName, ribbon.description, ribbon.code, ribbonDescriptions)) {
        observer.unknownWord(sequence, ribbon.description, ribbonDescriptions);
      }
    });
    return true;
  }

  static void outline(Outline& outline) {
    outlineOf(ribbonPanels, outline);
    outlineWords(ribbonDescriptions, outline);
  }
};

// A ribbon's or film's kind, by its name.

/// The description fills two members: its own, and the code of the ribbon that it names.
struct NameReading : NeverWritten, NeverAssigned {
  static constexpr auto const& members = kindMembers;

  static bool read(Element element, _MediaStatusInfo& media, Watch const& watch) {
    bool const read = readText(element, media.description);
    if (read) media.code = codeIn(element);
    remark(watch, [&](Observer& observer) {
      if (!read) return observer.emptyElement(element);
      reportText(observer, descriptionName, element, textIn(media.description));
      reportKeyword(observer, codeName, element, media.code, ribbonNames);
    });
    return read;
  }

  static void outline(Outline& outline) { outlineWords(ribbonNames, outline); }

 private:
  static int codeIn(Element element) {
    WordText text;
    text.read(element);
    return ribbonNames.codeOf(text.get());
  }
};

// The consumables. Where they differ is meant.

inline constexpr Table ribbon = {
    number<&_MediaStatusInfo::type>("type"),
    // Both tell the kind, in the same two members.
    sharing(reading<_MediaStatusInfo, SequenceReading>("sequence")),
    sharing(reading<_MediaStatusInfo, NameReading>("description")),
    text<&_MediaStatusInfo::oem_country>("oem_country"),
    number<&_MediaStatusInfo::initial_size>("initial_size"),
    sharing(number<&_MediaStatusInfo::remaining>("panels_remaining")),
    sharing(number<&_MediaStatusInfo::remaining>("ribbon_remaining")),
    text<&_MediaStatusInfo::part_number>("part_number"),
    number<&_MediaStatusInfo::diam_payout>("diam_ribbon_payout"),
    number<&_MediaStatusInfo::diam_takeup>("diam_ribbon_takeup"),
};

/// No "sequence", no "part_number", and what remains has one name only.
inline constexpr Table film = {
    number<&_MediaStatusInfo::type>("type"),
    reading<_MediaStatusInfo, NameReading>("description"),
    text<&_MediaStatusInfo::oem_country>("oem_country"),
    number<&_MediaStatusInfo::initial_size>("initial_size"),
    number<&_MediaStatusInfo::remaining>("panels_remaining"),
    number<&_MediaStatusInfo::diam_payout>("diam_ribbon_payout"),
    number<&_MediaStatusInfo::diam_takeup>("diam_ribbon_takeup"),
};

/// The type goes into `code`, where hosts look for a laminate's kind; `type` stays theirs. The
/// description is no ribbon's name and has no code.
inline constexpr Table laminate = {
    number<&_MediaStatusInfo::code>("type"),
    text<&_MediaStatusInfo::description>("description"),
    text<&_MediaStatusInfo::oem_country>("oem_country"),
    number<&_MediaStatusInfo::initial_size>("initial_size"),
    number<&_MediaStatusInfo::remaining>("panels_remaining"),
};

inline constexpr Table mediaStatus = {
    nested<&MediaStatus::ribbon, ribbon>("ribbon"),
    nested<&MediaStatus::film, film>("film"),
    nested<&MediaStatus::top_laminate, laminate>("top_laminate"),
    nested<&MediaStatus::bottom_laminate, laminate>("bottom_laminate"),
};

inline constexpr char const* mediaStatusRoots[] = {"get_media_status"};

// Sensor status.

/// Flags are deliberately negative: any word but the one that clears it, also a misspelling, is an
/// open door or a blocked sensor.
inline constexpr Table sensorStates = {
    text<&_SENSOR::ribbon_takeup_encoder>("ribbon_takeup_encoder"),
    flagUnless<&_SENSOR::door_open, "no", "yes">("door_open"),
    flagUnless<&_SENSOR::flipoptions_door_open, "no", "yes">("flipoptions_door_open"),
    flagUnless<&_SENSOR::flipper_card_blocked, "no", "yes">("flipper_card_blocked"),
    flagUnless<&_SENSOR::flipper_rotation_blocked, "no", "yes">("flipper_rotation_blocked"),
    flagUnless<&_SENSOR::cardout_sensor_set, "no", "yes">("cardout_sensor_set"),
    flagUnless<&_SENSOR::option_mag_blocked, "no", "yes">("option_mag_blocked"),
    flagUnless<&_SENSOR::option_cam_blocked, "no", "yes">("option_cam_blocked"),
    flagUnless<&_SENSOR::card_exit_blocked, "no", "yes">("card_exit_blocked"),
    flagUnless<&_SENSOR::card_edge_blocked, "no", "yes">("card_edge_blocked"),
    text<&_SENSOR::tricolor_state>("tricolor_state"),
    flagUnless<&_SENSOR::head_cam_blocked, "no", "yes">("head_cam_blocked"),
    number<&_SENSOR::tricolor_error>("tricolor_error"),
    flagUnless<&_SENSOR::printhead_fan, "off", "on">("printhead_fan"),
};

inline constexpr Table sensorValues = {
    number<&_SENSOR::voltage_24>("voltage_24"),
    number<&_SENSOR::voltage_raw>("voltage_raw"),
    number<&_SENSOR::mag_track_1>("mag_track_1"),
    number<&_SENSOR::mag_track_2>("mag_track_2"),
    number<&_SENSOR::mag_track_3>("mag_track_3"),
    number<&_SENSOR::print_head_temp>("print_head_temp"),
    number<&_SENSOR::mag_head_type>("mag_head_type"),
    number<&_SENSOR::ribbon_bemf>("ribbon_bemf"),
    number<&_SENSOR::tricolor_any>("tricolor_any"),
    number<&_SENSOR::tricolor_red>("tricolor_red"),
    number<&_SENSOR::tricolor_green>("tricolor_green"),
    number<&_SENSOR::tricolor_blue>("tricolor_blue"),
    number<&_SENSOR::platen_temp128>("platen_temp128"),
    number<&_SENSOR::RLEC>("RLEC"),
    number<&_SENSOR::RSEC>("RSEC"),
    number<&_SENSOR::RLDC>("RLDC"),
    number<&_SENSOR::RSDC>("RSDC"),
    number<&_SENSOR::RGSU>("RGSU"),
    number<&_SENSOR::RGSD>("RGSD"),
};

inline constexpr Table sensorStatus = {
    group<_SENSOR, sensorStates>("sensor_states"),
    group<_SENSOR, sensorValues>("sensor_values"),
};

inline constexpr char const* sensorStatusRoots[] = {"get_sensor_status"};

// Wireless.

/// A keyword whose code is combined by OR with what the member holds, so that a second element
/// merges into the first ("WEP" then "WPA2" gives 5): hosts rely on it. Words of code 0 and unknown
/// ones count as read and change nothing.
template <Vocabulary const& Words>
struct MergedKeywordKind : NeverWritten, NeverAssigned {
  static constexpr Shape shape = Shape::keyword;
  static constexpr Vocabulary const& words = Words;

  static_assert(Words.unknown == 0, "an unknown word sets nothing");

  static bool read(Element element, unsigned int& out) {
    WordText text;
    if (!text.read(element)) return false;
    out |= static_cast<unsigned int>(Words.codeOf(text.get()));
    return true;
  }

  /// Where the member holds more than this element's word, the word shown is that of the member. An
  /// unknown word adds nothing to what an earlier element said.
  static void report(Observer& observer, std::string_view name, Element element,
                     unsigned int value) {
    WordText text;
    text.read(element);
    int const code = static_cast<int>(value);
    Word const* const sent = Words.find(text.get());
    if (sent == nullptr) observer.unknownWord(element, element.text(), Words);
    if (sent == nullptr && code != 0) return;
    std::string_view const word =
        sent != nullptr && sent->code == code ? sent->text : Words.wordOf(code);
    bool const known = !word.empty() && (sent != nullptr || code != 0);
    if (sent != nullptr && known && sent->text != word) observer.otherSpelling(element, word);
    observer.keyword(name, code, known ? word : text.get(), known);
  }
};

template <auto M>
constexpr auto security(std::string_view element) {
  return row<M, MergedKeywordKind<securities>>(element);
}

template <auto M>
constexpr auto cipher(std::string_view element) {
  return row<M, MergedKeywordKind<ciphers>>(element);
}

// The state of the link.

inline constexpr Table packets = {
    number<&_tagPackets::octets>("octets"), number<&_tagPackets::upkts>("upkts"),
    number<&_tagPackets::nupkts>("nupkts"), number<&_tagPackets::discards>("discards"),
    number<&_tagPackets::errors>("errors"),
};

inline constexpr Table wirelessStatus = {
    keyword<&_tagWirelessStatus::state, wirelessStates>("state"),
    text<&_tagWirelessStatus::ssid>("ssid"),
    number<&_tagWirelessStatus::channel>("channel"),
    number<&_tagWirelessStatus::rssi>("rssi"),
    number<&_tagWirelessStatus::snr>("snr"),
    number<&_tagWirelessStatus::nf>("nf"),
    security<&_tagWirelessStatus::security>("security"),
    cipher<&_tagWirelessStatus::crypto>("crypto"),
    number<&_tagWirelessStatus::rate>("rate"),
    nested<&_tagWirelessStatus::in, packets>("in"),
    nested<&_tagWirelessStatus::out, packets>("out"),
    number<&_tagWirelessStatus::link_lost>("link_lost"),
};

// The radio.

inline constexpr Table radioStatus = {
    number<&_tagWirelessRadioStatus::mcasttxframe>("mcasttxframe"),
    number<&_tagWirelessRadioStatus::failed>("failed"),
    number<&_tagWirelessRadioStatus::retry>("retry"),
    number<&_tagWirelessRadioStatus::multiretry>("multiretry"),
    number<&_tagWirelessRadioStatus::framedup>("framedup"),
    number<&_tagWirelessRadioStatus::rtssuccess>("rtssuccess"),
    number<&_tagWirelessRadioStatus::rtsfailure>("rtsfailure"),
    number<&_tagWirelessRadioStatus::ackfailure>("ackfailure"),
    number<&_tagWirelessRadioStatus::rxfrag>("rxfrag"),
    number<&_tagWirelessRadioStatus::mcastrxframe>("mcastrxframe"),
    number<&_tagWirelessRadioStatus::fcserror>("fcserror"),
    number<&_tagWirelessRadioStatus::txframe>("txframe"),
    number<&_tagWirelessRadioStatus::tx_success>("tx_success"),
    number<&_tagWirelessRadioStatus::tx_retry>("tx_retry"),
    number<&_tagWirelessRadioStatus::rx_success>("rx_success"),
    number<&_tagWirelessRadioStatus::rx_duplicate>("rx_duplicate"),
    number<&_tagWirelessRadioStatus::rts_success>("rts_success"),
};

// Access points. Their elements are spelled in a style of their own.

inline constexpr Table accessPoint = {
    text<&_tagAccessPoint::ssid>("SSID"),
    address<&_tagAccessPoint::bssid>("BSSID"),
    flagIf<&_tagAccessPoint::selected, "true", "false">("Selected"),
    number<&_tagAccessPoint::channel>("Channel"),
    number<&_tagAccessPoint::privacy>("Privacy"),
    number<&_tagAccessPoint::signalStrength>("SignalStrength"),
    flagIf<&_tagAccessPoint::infrastructure, "true", "false">("Infrastructure"),
    security<&_tagAccessPoint::security>("Security"),
    cipher<&_tagAccessPoint::encryption>("Encryption"),
    number<&_tagAccessPoint::maxDataRate>("MaxDataRate"),
};

inline constexpr auto accessPointEntries = entries<accessPoint>("AccessPoint");

/// The count is stored before anything else, and it is that of all children, so it may be more than
/// what is stored. It is also all that a host with an array promises to have room for.
struct AccessPointsReading {
  static bool read(Element root, _tagAccessPoints& record, Watch const& watch) {
    record.count = static_cast<unsigned int>(countChildren(root));
    if (record.accessPoints == nullptr) return true;
    return readEntriesOf<&_tagAccessPoints::accessPoints>(
        root, accessPointEntries, {record.accessPoints, record.count}, watch);
  }
};

inline constexpr Table accessPoints = {
    aside<&_tagAccessPoints::count>(),
    listOfRoot<&_tagAccessPoints::accessPoints, accessPointEntries>(),
};

inline constexpr char const* wirelessStatusRoots[] = {"get_wireless_status"};
inline constexpr char const* radioStatusRoots[] = {"get_wireless_radio_status"};
inline constexpr char const* accessPointsRoots[] = {"AccessPoints"};

// Sensor states and information, of a class of their own.

// Sensor states: words, kept as they are.

inline constexpr Table detectorStates = {
    text<&_KVPrinterSensorInfo::ribbon_takeup_encoder>("ribbon_takeup_encoder"),
    text<&_KVPrinterSensorInfo::ribbon_payout_encoder>("ribbon_payout_encoder"),
    text<&_KVPrinterSensorInfo::door_open>("door_open"),
    text<&_KVPrinterSensorInfo::feeder_door_open>("feeder_door_open"),
    text<&_KVPrinterSensorInfo::flipper_sensor_blocked>("flipper_sensor_blocked"),
    text<&_KVPrinterSensorInfo::card_in_flipper>("card_in_flipper"),
    text<&_KVPrinterSensorInfo::out_of_cards>("out_of_cards"),
    text<&_KVPrinterSensorInfo::option_cam_state>("option_cam_state"),
    text<&_KVPrinterSensorInfo::option_card_motion>("option_card_motion"),
    text<&_KVPrinterSensorInfo::option_mag_blocked>("option_mag_blocked"),
    text<&_KVPrinterSensorInfo::internal_encoder_present>("internal_encoder_present"),
    text<&_KVPrinterSensorInfo::external_encoder_present>("external_encoder_present"),
    text<&_KVPrinterSensorInfo::uhf_encoder_present>("uhf_encoder_present"),
    text<&_KVPrinterSensorInfo::pusher_plate_blocked>("pusher_plate_blocked"),
    text<&_KVPrinterSensorInfo::feeder_mode>("feeder_mode"),
    text<&_KVPrinterSensorInfo::option_cam_blocked>("option_cam_blocked"),
    text<&_KVPrinterSensorInfo::card_edge_blocked>("card_edge_blocked"),
    text<&_KVPrinterSensorInfo::tricolor_state>("tricolor_state"),
    text<&_KVPrinterSensorInfo::head_cam_blocked>("head_cam_blocked"),
    text<&_KVPrinterSensorInfo::printhead_fan>("printhead_fan"),
};

inline constexpr Table detectors = {
    group<_KVPrinterSensorInfo, detectorStates>("sensor_states"),
};

// Sensor information: readings, area by area.

template <auto M>
constexpr auto sensor(std::string_view element) {
  return attribute<M, "reading">(element);
}

inline constexpr Table inputOutput = {
    sensor<&KVSensorInfo::atm_card_present>("atm_card_present"),
    sensor<&KVSensorInfo::input_feeder>("input_feeder"),
    sensor<&KVSensorInfo::output_hopper>("output_hopper"),
};

inline constexpr Table cardPath = {
    sensor<&KVSensorInfo::synchro_card>("synchro_card"),
    sensor<&KVSensorInfo::synchro_mag>("synchro_mag"),
    sensor<&KVSensorInfo::synchro_contact>("synchro_contact"),
    sensor<&KVSensorInfo::synchro_contactless>("synchro_contactless"),
    sensor<&KVSensorInfo::flipper_card_present>("flipper_card_present"),
};

inline constexpr Table doors = {
    sensor<&KVSensorInfo::head_open>("head_open"),
    sensor<&KVSensorInfo::input_media_open>("input_media_open"),
    sensor<&KVSensorInfo::output_media_open>("output_media_open"),
};

inline constexpr Table positioning = {
    sensor<&KVSensorInfo::head_down>("head_down"),
    sensor<&KVSensorInfo::flipper_ready_in>("flipper_ready_in"),
    sensor<&KVSensorInfo::flipper_ready_out>("flipper_ready_out"),
};

inline constexpr Table ribbonColor = {
    sensor<&KVSensorInfo::led_1>("led_1"),
    sensor<&KVSensorInfo::led_2>("led_2"),
    sensor<&KVSensorInfo::led_3>("led_3"),
};

inline constexpr Table ribbonSensors = {
    sensor<&KVSensorInfo::encoder>("encoder"),
    attribute<&KVSensorInfo::ribbon_sync_detection, "adc_value">("ribbon_sync_detection"),
    group<KVSensorInfo, ribbonColor>("color"),
};

inline constexpr Table intermediateMedia = {
    sensor<&KVSensorInfo::film_sensor>("film_sensor"),
    attribute<&KVSensorInfo::supply_motor_pulses, "count">("supply_motor_pulses"),
    attribute<&KVSensorInfo::takeup_encoder_pulses, "count">("takeup_encoder_pulses"),
};

inline constexpr Table webMedia = {
    group<KVSensorInfo, ribbonSensors>("ribbon"),
    group<KVSensorInfo, intermediateMedia>("intm"),
};

inline constexpr Table sensorInformation = {
    group<KVSensorInfo, inputOutput>("input_output"),
    group<KVSensorInfo, cardPath>("card_path"),
    group<KVSensorInfo, doors>("doors"),
    group<KVSensorInfo, positioning>("positioning"),
    group<KVSensorInfo, webMedia>("web_media"),
};

}  // namespace Kovra::status

#endif

/// @file
/// The reader of status replies.

#ifndef KVXSTATUSPARSER_H
#define KVXSTATUSPARSER_H

#include "kovra_base.h"
#include "kvxhelper.h"
#include "kvxstatusrecords.h"
#include "kvxwirelessrecords.h"

namespace Kovra {

/// Reads status replies into records. It holds no state: any number of threads may read different
/// records at once.
///
/// The entries (Parse...) take a reply as wide text: a reference to its first character and its
/// length in characters, which is also the most bytes that its narrow form may have in the
/// process's character set (LC_CTYPE); a longer text is cut, and a cut one is refused. A host whose
/// text is terminated passes `reply.size() * MB_CUR_MAX`, or any letter beyond ASCII may be one too
/// many. They return false, with the record untouched, for a length below 1, for a text that is not
/// well-formed or that could harm the parser (elements nested deeper than 128, more than 256
/// attributes on one element), and for another root.
///
/// Decimals (diameters, the supply voltage) have the point of LC_NUMERIC, which is a comma under
/// some locales while the printer's is not: a host calls setlocale(LC_CTYPE, ""), not LC_ALL.
///
/// The element readers (parse...) take an element of the host's own tree. They visit its children
/// in order, read those that they know, by exact name, and skip the others; a repeated element is
/// read again. Their result is whether the last known child could be read: false after an empty
/// one, though earlier members were filled, and false when there was none, or for a null element.
///
/// The conversions of keywords have an overload for texts that can only be read, so a pointer to
/// one needs its type: `int (KVXStatusParser::*convert)(char*) = &KVXStatusParser::lamStateToInt;`
class KOVRA_EXPORT KVXStatusParser {
 public:
  KVXStatusParser();
  ~KVXStatusParser();

  /// Reads a general status, root "get_general_status". The result is that of parseStatus.
  bool ParseStatus(wchar_t const& text, int len, KVGeneralStatus& out);

  /// Reads the children of a general status. An "alarms" text without "0x" stores nothing and
  /// counts as read; numbers that are no numbers read as 0.
  bool parseStatus(TiXmlElement* root, KVGeneralStatus& out);

  /// The printer's states: 1 "initializing", 2 "idle", 3 "xfer_rollers_heating" and
  /// "printing_heating", 4 "standby", 5 "printing", 6 "alarm_handling", 7 "offline",
  /// 8 "canceling", 9 "temp_out_of_range", 10 "mag_ops", 11 "contact_ops", 12 "contactless_ops",
  /// 13 "config_data", 14 "job_data", 15 "diagnostic_mode", 16 "xfer_rollers_cooling",
  /// "printing_cooling" and "laminating_cooling", 17 "insert_card", 18 "laminating",
  /// 19 "laminating_heating", 26 "cleaning", 35 "card_ready". Unknown words, and a null pointer,
  /// give 38. Case counts.
  int printerStateToInt(char* keyword);

  /// The laminator's states: 1 "uninitialized", 2 "initializing", 3 "ready", 4 "standby",
  /// 5 "laminating", 6 "not_ready", 7 "not_used", 8 "init_error", 9 "comm_error",
  /// 10 "fault_error", 11 "door_open". Unknown words, and a null pointer, give 0. Case counts.
  int lamStateToInt(char* keyword);

  /// Reads the list of jobs, root "get_job_list". The result is that of parseJobList.
  bool ParseJobList(wchar_t const& text, int len, KVJobList& out);

  /// Reads the "job" children into the list's entries, from the first one. On entry `count` says
  /// how many may be filled, never more than the record has; a negative one is none. Afterwards it
  /// says how many were; jobs beyond that were skipped. For a null element `count` stays.
  bool parseJobList(TiXmlElement* root, KVJobList& out);

  /// Reads the children of one "job" of the list.
  bool parseJobInfo(TiXmlElement* job, _KVJobInfo& out);

  /// Reads the status of a job, root "get_job_status". The result is that of parseJobStatus.
  bool ParseJobStatus(wchar_t const& text, int len, KVJobStatus& out);

  /// Reads the children of a job's status: those of "status_printing" by parseJobPrinting, those of
  /// "status_mag", "status_contact" and "status_contactless" each by getStatus.
  bool parseJobStatus(TiXmlElement* root, KVJobStatus& out);

  /// Reads the children of "status_printing": copies, error, states and position.
  bool parseJobPrinting(TiXmlElement* printing, KVJobStatus& out);

  /// Reads "mag_state", "contact_state" and "contactless_state" below any element, each into its
  /// own member: a "contact_state" inside "status_mag" is the contact encoder's all the same.
  bool getStatus(TiXmlElement* encoder, KVJobStatus& out);

  /// The states of a job, of its steps, and where its card is: 0 "initializing", 1 "receiving",
  /// 2 "receive_ok", 3 "receive_error", 4 "receive_offline", 5 "parsed", 6 "in_progress",
  /// 7 "done_ok", 8 "done_error", 9 "cancelled_by_user", 10 "cancelled_by_error", 11 "yes",
  /// 12 "no", 13 "yellow", 14 "magenta", 15 "cyan", 16 "black", 17 "clear", 18 "cleaning_up",
  /// 19 "encoding", 20 "verifying", 21 "reading" and "mag_read", 22 "read_error",
  /// 23 "read_ein_error", 24 "write_error", 25 "retrace_error", 26 "at_station",
  /// 27 "smart_encode_error", 28 "contact_error", 29 "contactless_error", 30 "not_in_printer",
  /// 31 "feeding", 32 "in_process", 33 "ejecting_eject", 34 "ejecting_reject",
  /// 35 "ejecting_feeder", 36 "held", 37 "transfer_wait", 38 "transferring", 39 "laminate",
  /// 40 "laminate_insert", 41 "laminating", 42 "waiting_printer", 43 "printing". Unknown words, and
  /// a null pointer, give -1. Case counts.
  int jobStatusToInt(char* keyword);

  /// Reads the status of the consumables, root "get_media_status". The result is that of
  /// parseMediaStatus.
  bool ParseMediaStatus(wchar_t const& text, int len, MediaStatus& out);

  /// Reads "ribbon", "film", "top_laminate" and "bottom_laminate", each by its reader below.
  bool parseMediaStatus(TiXmlElement* root, MediaStatus& out);

  /// Reads the children of "ribbon" into the ribbon. Its kind is said by a "description" (code by
  /// KVXHelper::RibbonNameToInt) or by a "sequence" of panels (see getRibbonDescription; code by
  /// KVXHelper::RibbonDescriptionToInt); the later one wins. An element that could not be read, and
  /// a sequence whose last panel is empty, leave the code.
  bool getRibbonStatus(TiXmlElement* ribbon, MediaStatus& out);

  /// Reads the children of "film" into the film. It has the elements of a ribbon apart from
  /// "sequence", "part_number" and "ribbon_remaining".
  bool getInTMStatus(TiXmlElement* film, MediaStatus& out);

  /// Reads the children of a laminate. Its "type" is stored in `code`, and `type` stays as it was;
  /// it has no diameters, no part number and no ribbon code.
  bool getLaminateStatus(TiXmlElement* laminate, _MediaStatusInfo& out);

  /// Appends the texts of the "panel" children to what @p description holds already, without a
  /// separator: panels "k" and "o" make an empty description "ko". @p description has the 32
  /// characters of _MediaStatusInfo::description; what does not fit, with a terminator, is cut. The
  /// result is that of the last panel.
  bool getRibbonDescription(TiXmlElement* sequence, char* description);

  /// Reads states and readings of the sensors, root "get_sensor_status". The result is that of
  /// parseSensorStatus.
  bool ParseSensorStatus(wchar_t const& text, int len, _SENSOR& out);

  /// Reads "sensor_states" by parseSensorState and "sensor_values" by parseSensorValue.
  bool parseSensorStatus(TiXmlElement* root, _SENSOR& out);

  /// Reads the children of "sensor_states". A flag is cleared by "no" (the fan's by "off") and set
  /// by any other text; an empty element leaves it.
  bool parseSensorState(TiXmlElement* states, _SENSOR& out);

  /// Reads the children of "sensor_values": numbers, of which those that are none read as 0.
  bool parseSensorValue(TiXmlElement* values, _SENSOR& out);

  // Counters, cleaning and memory.

  /// Reads the card counters, root "get_count". The result is that of parseCardCount.
  bool ParseCardCount(wchar_t const& text, int len, KVCardCount& out);

  /// Reads the children of a count reply that are card counters. Each keeps the low 16 bits of its
  /// number: 70000 reads as 4464.
  bool parseCardCount(TiXmlElement* root, KVCardCount& out);

  /// Reads the cards left before the next cleaning, root "get_count": the reply that may hold the
  /// card counters as well. The result is that of parseCleanLog. @p out is touched only when there
  /// is a number to store, so it needs no value before.
  bool ParseCleanLogCount(wchar_t const& text, int len, int& out);

  /// Reads the child "total_cards_until_next_cleaning" of a count reply; others are skipped.
  bool parseCleanLog(TiXmlElement* root, int& out);

  /// Reads the laminator's times, root "get_laminator_up_times". The result is that of parseUpTime.
  bool ParseUpTime(wchar_t const& text, int len, KVUpTimes& out);

  /// Reads the children of an up-time reply. Each keeps the low 16 bits of its number.
  bool parseUpTime(TiXmlElement* root, KVUpTimes& out);

  /// Reads the progress of a cleaning, root "get_cleaning_status": its children "cleaning_status".
  /// The result is whether the last of them could be read; an unknown word counts as read.
  bool ParseCleaningStatus(wchar_t const& text, int len, KVCleaningStatus& out);

  /// The cleaning's states: 0 "cleaning", 1 "start_cleaning", 2 "remove_ribbon", 3 "remove_cards",
  /// 4 "remove_ribbon_and_cards", 5 "insert_cleaning_card", 6 "reload_ribbon",
  /// 7 "reload_ribbon_and_cards", 8 "cleaning_aborted", 9 "cleaning_not_in_progress". Unknown
  /// words, and a null pointer, give 10. Case counts.
  int cleaningStateToInt(char* keyword);

  /// Reads the free RAM, root "get_free_ram". The result is that of getFreeSpace.
  bool GetPrinterFreeSpace(wchar_t const& text, int len, __MEMORY& out);

  /// Reads the free flash memory, root "get_free_flash". The result is that of getFreeSpace.
  bool GetFlashFreeSpace(wchar_t const& text, int len, __MEMORY& out);

  /// Reads the child "bytes_free" of either memory reply; its low 32 bits are kept.
  bool getFreeSpace(TiXmlElement* root, __MEMORY& out);

  // The wireless network.

  /// Reads the state of the wireless link, root "get_wireless_status". The result is that of
  /// parseWirelessStatus.
  bool ParseWirelessStatusXML(wchar_t const& text, int len, _tagWirelessStatus& out);

  /// Reads the children of a wireless status. What "security" and "crypto" say is combined with
  /// what their members hold, so a host sets those to zero first.
  bool parseWirelessStatus(TiXmlElement* root, _tagWirelessStatus& out);

  /// Reads the packet counters of one direction, the children of "in" or "out".
  bool ParsePacketsInfo(TiXmlElement* packets, _tagPackets& out);

  /// Reads the radio's frame counters, root "get_wireless_radio_status". The result is that of
  /// parseWirelessRadioStatus. The name lacks a letter on purpose: hosts link against it.
  bool ParseWirlessRadioXML(wchar_t const& text, int len, _tagWirelessRadioStatus& out);

  /// Reads the children of a radio reply.
  bool parseWirelessRadioStatus(TiXmlElement* root, _tagWirelessRadioStatus& out);

  /// Reads the access points in range, root "AccessPoints". The result is that of
  /// parseAllWirelessAccessPoint.
  bool ParseAccessPoints(wchar_t const& text, int len, _tagAccessPoints& out);

  /// Stores the number of child elements, whatever their names, in `count`; then, when the array is
  /// null, returns true. Otherwise reads every child "AccessPoint" into the next entry of the
  /// array, which must have room for `count` entries; that many are stored only when all children
  /// are access points. The result is that of the last one read, false when there was none. A null
  /// element gives false and stores nothing.
  bool parseAllWirelessAccessPoint(TiXmlElement* root, _tagAccessPoints& out);

  /// Reads the children of one "AccessPoint". Security and encryption are combined with what their
  /// members hold.
  bool parseWirelessAccessPoints(TiXmlElement* accessPoint, _tagAccessPoint& out);

  /// The link's states: 0 "off", 1 "disconnected", 2 "inactive", 3 "scanning", 4 "associating",
  /// 5 "associated", 6 "handshake", 7 "connected". Unknown words, and a null pointer, give 0. Case
  /// counts.
  int GetWirelessState(char* keyword);

  /// The security codes of a wireless status and of access points: combines the code of the
  /// element's text with @p out by OR: 1 "WEP" and "WEP40", 2 "WEP104",
  /// 3 "WPA", 4 "WPA2", 5 "WPA_WPA2" and "WPA2_WPA", each all in upper or all in lower case.
  /// "open", "none" and unknown words change nothing. False only when the element is null or has no
  /// text.
  bool GetSecurity(TiXmlElement* element, unsigned int& out);

  /// The same for the cipher codes: 1 "RC4", 2 "TKIP", 3 "CCMP", 4 "TKIP_CCMP" and "CCMP_TKIP";
  /// "none" and unknown words change nothing. Deliberately 4 is TKIP and CCMP, where the
  /// configuration reads both as 3, wirelessCryptoCcmp.
  bool GetCrypto(TiXmlElement* element, unsigned int& out);

  /// @name The same operations on texts that can only be read
  /// @{
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int printerStateToInt(Text const& keyword) {
    return printerStateToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int lamStateToInt(Text const& keyword) {
    return lamStateToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int jobStatusToInt(Text const& keyword) {
    return jobStatusToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int cleaningStateToInt(Text const& keyword) {
    return cleaningStateToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int GetWirelessState(Text const& keyword) {
    return GetWirelessState(detail::borrowed(keyword));
  }
  /// @}
};

}  // namespace Kovra

#endif

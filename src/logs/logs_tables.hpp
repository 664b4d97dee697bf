/// @file
/// Logs and auxiliary replies as tables.

#ifndef KOVRA_LOGS_LOGS_TABLES_HPP
#define KOVRA_LOGS_LOGS_TABLES_HPP

#include <algorithm>
#include <type_traits>

#include "frame/field.hpp"
#include "kvxlogrecords.h"
#include "kvxtrackrecords.h"

namespace Kovra::logs {

using namespace frame;

// Service history.

/// No row for `day`: the reply has none.
inline constexpr Table service = {
    number<&_tagLogServiceValues::number>("number"),
    number<&_tagLogServiceValues::code>("code"),
    number<&_tagLogServiceValues::year>("year"),
    number<&_tagLogServiceValues::month>("month"),
    number<&_tagLogServiceValues::card_count>("card_count"),
};

inline constexpr auto serviceEntries = entries<service>("service");

/// The count is that of all children when it is asked for, and the array's room, left as it is,
/// when entries are read: meant, so that an array of that many entries always suffices.
struct ServiceHistoryReading {
  static bool read(Element root, _tagLogServiceXML& record, Watch const& watch) {
    if (record.entries == nullptr) {
      record.count = static_cast<int>(countChildren(root));
      return true;
    }
    auto const room = static_cast<std::size_t>(std::max(record.count, 0));
    return readEntriesOf<&_tagLogServiceXML::entries>(root, serviceEntries, {record.entries, room},
                                                      watch);
  }
};

inline constexpr Table serviceHistory = {
    aside<&_tagLogServiceXML::count>(),
    listOfRoot<&_tagLogServiceXML::entries, serviceEntries>(),
};

inline constexpr char const* serviceHistoryRoots[] = {"get_log_service_history"};

// Cleaning history.

inline constexpr Table cleaning = {
    number<&_tagCleaningLogEntry::number>("number"),
    number<&_tagCleaningLogEntry::cards>("cards"),
    number<&_tagCleaningLogEntry::type>("type"),
};

using CleaningLog = _tagCleaningLogEntry[32];

/// Hosts get the entries without a record around them.
struct CleaningHistory {
  CleaningLog entries;
};

inline constexpr auto cleaningEntries =
    atMost(std::extent_v<CleaningLog>, entries<cleaning>("cleaning"));

struct CleaningHistoryReading {
  static bool read(Element root, CleaningLog& entries, Watch const& watch) {
    return readEntriesOf<&CleaningHistory::entries>(root, cleaningEntries, {entries}, watch);
  }
  static bool read(Element root, CleaningHistory& record, Watch const& watch) {
    return read(root, record.entries, watch);
  }
};

inline constexpr Table cleaningHistory = {
    listOfRoot<&CleaningHistory::entries, cleaningEntries>(),
};

inline constexpr char const* cleaningHistoryRoots[] = {"get_log_cleaning_history"};

// The magnetic stripe.

/// Whoever has a track has the card.
inline constexpr Table tracks = {
    secretText<&__GETTRACK::track1>("track1"),
    secretText<&__GETTRACK::track2>("track2"),
    secretText<&__GETTRACK::track3>("track3"),
};

inline constexpr Table stripe = {
    group<__GETTRACK, tracks>("mag"),
};

inline constexpr char const* stripeRoots[] = {"data"};

// The laminator's answer.

/// Hosts get the text in a buffer of this size, without a record around it.
struct LaminatorResponse {
  char lam_ndc_rsp[512];
};

/// The text is that of the root itself.
inline constexpr Table laminatorResponse = {
    text<&LaminatorResponse::lam_ndc_rsp>("lam_ndc_rsp"),
};

inline constexpr char const* laminatorResponseRoots[] = {"lam_ndc_rsp"};

}  // namespace Kovra::logs

#endif

#include "kvxlogparser.h"

#include <algorithm>
#include <memory>

#include "frame/typed/reply.hpp"
#include "logs/logs_replies.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

// Service history.

/// No row for `day`: the reply has none.
constexpr Table service = {
    number<&_tagLogServiceValues::number>("number"),
    number<&_tagLogServiceValues::code>("code"),
    number<&_tagLogServiceValues::year>("year"),
    number<&_tagLogServiceValues::month>("month"),
    number<&_tagLogServiceValues::card_count>("card_count"),
};

/// The count is that of all children when it is asked for, and the array's room, left as it is,
/// when entries are read: meant, so that an array of that many entries always suffices.
struct ServiceHistoryReading : EntriesOf<&_tagLogServiceXML::entries, "service", service> {
  static bool read(Element root, _tagLogServiceXML& record, Watch const& watch) {
    if (record.entries == nullptr) {
      record.count = static_cast<int>(countChildren(root));
      return true;
    }
    auto const room = static_cast<std::size_t>(std::max(record.count, 0));
    return EntriesOf::read(root, {record.entries, room}, watch);
  }
};

/// What a host does: it asks for the count, makes room, and reads again.
bool decodeServiceHistory(Element root, Observer& observer) {
  Watch const nobody;
  _tagLogServiceXML record{};
  ServiceHistoryReading::read(root, record, nobody);
  auto const room =
      std::make_unique<_tagLogServiceValues[]>(static_cast<std::size_t>(record.count));
  record.entries = room.get();
  observer.member(frame::Member<&_tagLogServiceXML::count>::name(), shown(record.count));
  return ServiceHistoryReading::read(root, record, observer);
}

// Cleaning history.

constexpr Table cleaning = {
    number<&_tagCleaningLogEntry::number>("number"),
    number<&_tagCleaningLogEntry::cards>("cards"),
    number<&_tagCleaningLogEntry::type>("type"),
};

using CleaningLog = _tagCleaningLogEntry[32];

/// Hosts get the entries without a record around them.
struct CleaningHistory {
  CleaningLog entries;
};

struct CleaningHistoryReading : EntriesOf<&CleaningHistory::entries, "cleaning", cleaning> {
  static bool read(Element root, CleaningLog& entries, Watch const& watch) {
    return EntriesOf::read(root, entries, watch);
  }
  static bool read(Element root, CleaningHistory& record, Watch const& watch) {
    return read(root, record.entries, watch);
  }
};

// Both logs.

constexpr char const* serviceHistoryRoots[] = {"get_log_service_history"};
constexpr char const* cleaningHistoryRoots[] = {"get_log_cleaning_history"};

constexpr ReplyReader replies[] = {
    {"service-history", "service events", serviceHistoryRoots, decodeServiceHistory,
     ServiceHistoryReading::outline},
    reader<CleaningHistory, CleaningHistoryReading>("cleaning-history", "cleanings",
                                                    cleaningHistoryRoots),
};

}  // namespace

std::span<frame::ReplyReader const> logReplies() {
  return replies;
}

KVXLogParser::KVXLogParser() = default;
KVXLogParser::~KVXLogParser() = default;

bool KVXLogParser::ParseLogServiceXML(wchar_t const& text, unsigned long len,
                                      _tagLogServiceXML& out) {
  return readReply<ServiceHistoryReading>(text, len, serviceHistoryRoots, out);
}

bool KVXLogParser::parseServiceHistoryValues(TiXmlElement* root, _tagLogServiceXML& out) {
  return readHost<ServiceHistoryReading>(root, out);
}

bool KVXLogParser::getServiceValues(TiXmlElement* element, _tagLogServiceValues& out) {
  return walk(element, service, out);
}

bool KVXLogParser::ParseCleaningLog(wchar_t const& text, unsigned long len,
                                    _tagCleaningLogEntry (&out)[32]) {
  return readReply<CleaningHistoryReading>(text, len, cleaningHistoryRoots, out);
}

bool KVXLogParser::getCleaningLogValues(TiXmlElement* root, _tagCleaningLogEntry (&out)[32]) {
  return readHost<CleaningHistoryReading>(root, out);
}

bool KVXLogParser::getCleaningLogEntry(TiXmlElement* element, _tagCleaningLogEntry& out) {
  return walk(element, cleaning, out);
}

}  // namespace Kovra

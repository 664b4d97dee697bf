#include "logs/logs_messages.hpp"

#include <memory>

#include "logs/logs_tables.hpp"

/// Hosts know the record by its entries.
template <>
inline constexpr std::string_view Kovra::detail::recordName<Kovra::logs::CleaningHistory> =
    Kovra::detail::recordName<Kovra::CleaningLog>;

namespace Kovra {

namespace {

using namespace logs;

/// What a host does: it asks for the count, makes room, and reads again.
struct RoomForServices : WithEntries<_tagLogServiceXML, _tagLogServiceValues> {
  static bool read(Element root, RoomForServices& room, Watch const& watch) {
    _tagLogServiceXML& record = room.record;
    ServiceHistoryReading::read(root, record, Watch());
    room.entries = std::make_unique<_tagLogServiceValues[]>(static_cast<std::size_t>(record.count));
    record.entries = room.entries.get();
    remark(watch, [&](Observer& observer) {
      observer.member(memberName<&_tagLogServiceXML::count>, record.count);
    });
    return ServiceHistoryReading::read(root, record, watch);
  }
};

constexpr MessageRow lines[] = {
    replyWithRoom<RoomForServices>("service-history", "service events", serviceHistoryRoots,
                                   serviceHistory),
    reply("cleaning-history", "cleanings", cleaningHistoryRoots, cleaningHistory,
          &readBy<CleaningHistoryReading, CleaningHistory>),
    reply("magnetic-tracks", "tracks read from a magnetic stripe", stripeRoots, stripe),
    reply("laminator-response", "answer of the laminator to a command", laminatorResponseRoots,
          laminatorResponse, &readAsText),
};

}  // namespace

std::span<frame::MessageRow const> logsMessages() {
  return lines;
}

}  // namespace Kovra

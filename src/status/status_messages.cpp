#include "status/status_messages.hpp"

#include "frame/message.hpp"
#include "status/status_tables.hpp"

namespace Kovra {

namespace {

using namespace status;

/// The list of a host that has room for as many jobs as the record takes.
struct WholeJobListReading {
  static bool read(Element root, KVJobList& list, Watch const& watch) {
    list.count = roomOf(list);
    return JobListReading::read(root, list, watch);
  }
};

/// What a host does: it asks for the count, makes room, and reads again.
struct RoomForAccessPoints : WithEntries<_tagAccessPoints, _tagAccessPoint> {
  static bool read(Element root, RoomForAccessPoints& room, Watch const& watch) {
    _tagAccessPoints& record = room.record;
    AccessPointsReading::read(root, record, Watch());
    room.entries = std::make_unique<_tagAccessPoint[]>(record.count);
    record.accessPoints = room.entries.get();
    remark(watch, [&](Observer& observer) {
      observer.member(memberName<&_tagAccessPoints::count>, record.count);
    });
    return AccessPointsReading::read(root, record, watch);
  }
};

constexpr MessageRow lines[] = {
    reply("general-status", "state, alarms, lock and job counters", generalStatusRoots,
          generalStatus),
    reply("job-list", "the jobs that the printer knows", jobListRoots, jobList,
          &readBy<WholeJobListReading, KVJobList>),
    reply("job-status", "the steps of one job and where its card is", jobStatusRoots, jobStatus),
    reply("media-status", "ribbon, film and laminates loaded", mediaStatusRoots, mediaStatus),
    reply("sensor-status", "doors, blockages, fan and raw readings", sensorStatusRoots,
          sensorStatus),
    reply("card-count", "cards printed and laminated", countRoots, cardCount),
    reply("cards-until-cleaning", "cards left before the next cleaning", countRoots,
          cardsUntilCleaning),
    reply("up-times", "up-time and bulb times of the laminator", upTimeRoots, upTimes),
    reply("cleaning-status", "progress of a cleaning", cleaningStatusRoots, cleaningStatus),
    reply("free-ram", "free RAM", freeRamRoots, freeSpace),
    reply("free-flash", "free flash memory", freeFlashRoots, freeSpace),
    reply("wireless-status", "state, signal and packets of the wireless link", wirelessStatusRoots,
          wirelessStatus),
    reply("wireless-radio", "frame counters of the wireless radio", radioStatusRoots, radioStatus),
    replyWithRoom<RoomForAccessPoints>("access-points", "access points in range", accessPointsRoots,
                                       accessPoints),
    reply("sensor-states", "states of the switches and detectors", sensorStatusRoots, detectors),
    reply("sensor-information", "readings of the sensors, area by area", sensorStatusRoots,
          sensorInformation),
};

}  // namespace

std::span<frame::MessageRow const> statusMessages() {
  return lines;
}

}  // namespace Kovra

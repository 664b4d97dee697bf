#include "caps/caps_tables.hpp"

#include <algorithm>
#include <utility>

namespace Kovra::caps {

// Lists.

namespace {

bool readIntoTheFirst(List const& list, Element element, void* entry, Watch const& watch) {
  remark(watch, [&](Observer& observer) { observer.list(list.member); });
  Element last;
  return walkEntries(element, list.item, [&](Element child, bool) {
    std::size_t const before = watch ? watch.observer()->told() : 0;
    bool const result = readEntry(child, list, entry, list.member, 0, watch);
    remark(watch, [&](Observer& observer) {
      if (observer.told() == before) return;
      if (last) observer.repeatedElement(child, last, {});
      last = child;
    });
    return result;
  });
}

List const& listIn(Row const& row) {
  return static_cast<List const&>(*static_cast<Entries const*>(row.with));
}

/// The record of a writer is only looked at.
_Capabilities& seen(void const* place) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): lists have one way for both
  return *static_cast<_Capabilities*>(const_cast<void*>(place));
}

bool readRowOfList(Row const& row, Element element, void* place, Watch const& watch) {
  return readList(listIn(row), element, *static_cast<_Capabilities*>(place), watch);
}

bool writeRowOfList(Row const& row, Sink& sink, void const* place, Circumstances circumstances,
                    bool result) {
  List const& list = listIn(row);
  int const count = list.count(seen(place));
  if (list.isOptional && count == 0) return result;
  return writeList(list, sink, list.array(seen(place)), count, circumstances);
}

/// Whoever assigns has made an array of as many entries as the value has.
Assigned assignRowOfList(Row const& row, void* place, std::string_view member, Value const& value,
                         Problems& problems) {
  if (member != row.member) return Assigned::notMine;
  List const& list = listIn(row);
  auto& caps = *static_cast<_Capabilities*>(place);
  return assignEntries(list, list.array(caps), list.capacity(caps), value, problems);
}

void outlineRowOfList(Row const& row, Outline& outline) {
  outlineEntries(listIn(row), outline);
}

}  // namespace

constinit Kind const hostListKind = {Shape::list,     readRowOfList, writeRowOfList,
                                     assignRowOfList, nullptr,       outlineRowOfList};

bool readList(List const& list, Element element, _Capabilities& caps, Watch const& watch) {
  std::size_t const room = list.capacity(caps);
  std::size_t const needed = countChildren(element);
  if (needed > room) {
    list.count(caps) = static_cast<int>(needed);
    return true;
  }
  if (list.intoTheFirst) return readIntoTheFirst(list, element, list.array(caps), watch);
  return readEntries(element, list, list.array(caps), room, list.member, watch);
}

bool writeList(List const& list, Sink& sink, void const* entries, int count,
               Circumstances circumstances) {
  sink.open(list.name.data());
  bool const result = writeEntries(sink, list, entries, count, circumstances | list.with);
  sink.close(list.name.data());
  return result;
}

// The reading.

namespace {

/// A reply may name a list twice, and a first one that does not fit raises its count. Each is
/// measured with the room that the host has, which is the count of before the reply; what the lists
/// need is put into the counts when all have been read, for each the most that was needed.
class RoomOnEntry {
 public:
  explicit RoomOnEntry(_Capabilities& caps) : caps_(caps) {
    std::transform(std::begin(lists), std::end(lists), places_.begin(), [&](List const* list) {
      return Place{list, static_cast<int>(list->capacity(caps)), list->count(caps)};
    });
  }

  /// Every list has the room that it had on entry.
  void offer() {
    for (Place const& place : places_) place.list->count(caps_) = place.room;
  }

  /// Takes note of a count that was raised since.
  void collect() {
    for (Place& place : places_) place.needed = std::max(place.needed, place.list->count(caps_));
  }

  /// Where no entry fits and none was needed, the host's count stays, whatever it is.
  void settle() {
    for (Place const& place : places_) {
      place.list->count(caps_) = place.needed > 0 ? place.needed : place.before;
    }
  }

 private:
  struct Place {
    List const* list;
    int room;
    int before;
    int needed = 0;
  };

  _Capabilities& caps_;
  std::array<Place, std::size(lists)> places_{};
};

}  // namespace

bool CapabilitiesReading::read(Element root, _Capabilities& caps, Watch const& watch) {
  RoomOnEntry room(caps);
  RowFinder rows(capabilities);
  Repeats repeats(capabilities, watch);
  bool const result = walkChildren(root, [&](Element child, bool earlier) {
    room.offer();
    bool const now = repeats.read(rows.find(child.name()), child, &caps, earlier);
    room.collect();
    return now;
  });
  room.settle();
  return result;
}

// Sharpening levels.

namespace {

void tellOfLevel(Observer& observer, Element child, bool read, Word const* word) {
  if (!read) return observer.emptyElement(child);
  if (word == nullptr) return observer.unknownWord(child, child.text(), sharpenings);
  observer.within(memberName<&_Capabilities::imageSharpeningLevels>, [&] {
    observer.member(word->text, true);
    return true;
  });
}

}  // namespace

bool SharpeningLevels::read(Element levels, _Capabilities& caps, Watch const& watch) {
  return walkEntries(levels, item, [&](Element child, bool) {
    WordText text;
    bool const read = text.read(child);
    Word const* const word = read ? sharpenings.find(text.get()) : nullptr;
    bool const isSaidAgain = word != nullptr && (caps.imageSharpeningLevels & word->code) != 0;
    if (word != nullptr) caps.imageSharpeningLevels |= word->code;
    remark(watch, [&](Observer& observer) {
      if (isSaidAgain) observer.repeatedElement(child, child, word->text);
      tellOfLevel(observer, child, read, word);
    });
    return read;
  });
}

bool SharpeningLevels::write(Sink& sink, int levels) {
  bool result = false;
  sink.open(name);
  for (Word const& word : sharpenings.words) {
    if ((levels & word.code) == 0) continue;
    sink.leaf(item, word.text.data());
    result = true;
  }
  sink.close(name);
  return result;
}

// Writing.

bool writeEncoderAlone(Sink& sink, _InternalEncoderInfo const& encoder) {
  bool const result = encoder.contact_station && contactStationRow.write(sink, encoder, 0, false);
  Circumstances const encoders =
      (encoder.contact_encoding ? Circumstances{hasContact} : 0) |
      (encoder.contactless_encoder != 0 ? Circumstances{hasContactless} : 0);
  if (encoders == 0 && encoder.comms_channel == 0) return result;
  if (encoders != 0) {
    return writeRowsBelow(sink, internalEncoderName, internalEncoderAlone, &encoder, encoders);
  }
  sink.open(internalEncoderName);  // a channel alone leaves the element empty: meant
  sink.close(internalEncoderName);
  return true;
}

bool writeCapabilities(Sink& sink, _Capabilities const& caps, int mode, bool direct) {
  Circumstances const circumstances = (direct ? Circumstances{directToCard} : 0) |
                                      (caps.laminatorPresent ? Circumstances{hasLaminator} : 0);
  switch (mode) {
    case 0:
      return writeAll(sink, capabilities, caps, circumstances, false);
    case 1:
      return magEncoderRow.write(sink, caps, 0, false);
    case 2:
      return writeEncoderAlone(sink, caps.internalEncoder);
    default:
      return false;
  }
}

}  // namespace Kovra::caps

#include "caps/caps_messages.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <string>

#include "caps/caps_tables.hpp"

namespace Kovra {

namespace {

using namespace caps;

/// Capabilities together with arrays for their lists, as a host would make them. They grow on
/// demand.
class Room {
 public:
  Room() = default;
  Room(Room const&) = delete;
  Room& operator=(Room const&) = delete;

  _Capabilities record{};

  /// What a host does: it reads to learn what the lists need, makes room, and reads again. The
  /// result is that of the entry, which hosts do not look at.
  static bool read(Element root, Room& room, Watch const& watch) {
    do {
      CapabilitiesReading::read(root, room.record, Watch());
    } while (room.grow());
    room.clear();
    CapabilitiesReading::read(root, room.record, watch);
    return false;
  }

  static Assigned assign(void* memory, Value const& value, Problems& problems) {
    auto& room = *static_cast<Room*>(memory);
    for (List const* const list : lists) {
      Value const* const entries = value.find(list->member);
      if (entries != nullptr) {
        list->count(room.record) = static_cast<int>(entries->size());
      }
    }
    room.grow();
    return assignAll(capabilities, room.record, value, problems);
  }

 private:
  struct Array {
    std::unique_ptr<std::byte[]> entries;
    std::size_t room = 0;
  };

  /// A few hundred entries are much. A reply that asks for far more is hostile.
  static constexpr std::size_t limit = std::size_t{1} << 28U;

  std::size_t wanted(List const& list) {
    return static_cast<std::size_t>(std::max(list.count(record), 0));
  }

  /// Makes room for as many entries as each count says. True when an array grew; entries that it
  /// had are gone then. Throws std::bad_alloc also for more than any printer's capabilities need.
  bool grow() {
    std::size_t needed = 0;
    for (List const* const list : lists) needed += wanted(*list) * list->size;
    if (needed > limit) throw std::bad_alloc();
    bool grew = false;
    for (std::size_t i = 0; i < arrays_.size(); ++i) {
      if (wanted(*lists[i]) <= arrays_[i].room) continue;
      place(i, wanted(*lists[i]));
      grew = true;
    }
    return grew;
  }

  void place(std::size_t index, std::size_t room) {
    List const& list = *lists[index];
    arrays_[index] = {std::make_unique<std::byte[]>(room * list.size), room};
    list.place(record, arrays_[index].entries.get());
    list.count(record) = static_cast<int>(room);
  }

  /// Clears the record and all entries, and keeps the room.
  void clear() {
    record = {};
    for (std::size_t i = 0; i < arrays_.size(); ++i) {
      if (arrays_[i].room > 0) place(i, arrays_[i].room);
    }
  }

  std::array<Array, std::size(lists)> arrays_;
};

constexpr ChoiceRow choices[] = {
    {"only", ChoiceRow::Form::word, "Nothing but this part: mag-encoder or internal-encoder",
     &partNames, false, "PART"},
    {"direct-to-card", ChoiceRow::Form::flag,
     "The printer prints without transfer film; the record's\nprintSystem is not looked at"},
};
enum : std::size_t { part, direct };

/// Whatever there was to write is composed.
bool write(Sink& sink, void const* record, Chosen chosen, Circumstances) {
  writeCapabilities(sink, *static_cast<_Capabilities const*>(record),
                    static_cast<int>(chosen[part]), chosen[direct] != 0);
  return true;
}

constexpr Composing composing = {
    .command = "capabilities",
    .title = "What a printer can do",
    .help = R"(Example:
  kovra compose capabilities record.json --only mag-encoder)",
    .root = capabilitiesRoots[0],
    .recordOf = "capabilities",
    .choices = choices,
    .assign = Room::assign,
    .write = write,
};

constexpr MessageRow lines[] = {
    alsoWritten(withoutResult(replyWithRoom<Room>("capabilities", "what the printer can do",
                                                  capabilitiesRoots, capabilities)),
                composing),
};

}  // namespace

std::span<frame::MessageRow const> capsMessages() {
  return lines;
}

}  // namespace Kovra

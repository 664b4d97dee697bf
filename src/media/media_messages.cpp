#include "media/media_messages.hpp"

#include <memory>

#include "kvxmediaparser.h"
#include "media/media_tables.hpp"

namespace Kovra {

namespace {

using namespace media;

/// A record with its lists, which is given back with all that it owns.
class Room {
 public:
  Room() : media_(GetKVMedia()) { BuildKVMedia(media_.get()); }

  _KVMediaInfo* get() const { return media_.get(); }

  /// The result is that of the entry, which hosts do not look at.
  static bool read(Element root, Room& room, Watch const& watch) {
    readBelow(root, catalogue, room.get(), watch);
    return false;
  }

 private:
  struct Destroy {
    void operator()(_KVMediaInfo* media) const { DestroyKVMedia(media); }
  };

  std::unique_ptr<_KVMediaInfo, Destroy> media_;
};

constexpr RecordType roomType{
    sizeof(Room),
    [](void* memory) { new (memory) Room(); },
    [](void* memory) { std::destroy_at(static_cast<Room*>(memory)); },
    [](void* memory) -> void* { return static_cast<Room*>(memory)->get(); },
    false,
    Kovra::detail::recordName<_KVMediaInfo>};

constexpr ChoiceRow choices[] = {
    {"all-types", ChoiceRow::Form::flag,
     "Cards of all types; without, those of the types 0 and 1\nonly"},
    {"without-transfer", ChoiceRow::Form::flag, "No transfer temperatures and speeds"},
};
enum : std::size_t { allTypes, withoutTransfer };

/// Without a card there is a document all the same.
bool write(Sink& sink, void const* record, Chosen chosen, Circumstances) {
  writeCards(sink, *static_cast<_KVMediaInfo const*>(record), chosen[allTypes] != 0,
             chosen[withoutTransfer] != 0);
  return true;
}

constexpr Composing composing = {
    .command = "media",
    .title = "Cards that the printer shall know",
    .help = R"(Films, ribbons and laminates of the record are not written.

Example:
  kovra compose media record.json --all-types)",
    .root = mediaRoots[0],
    .recordOf = "media",
    .choices = choices,
    .write = write,
};

constexpr MessageRow lines[] = {
    {.name = "media",
     .title = "cards, films and laminates that the printer knows",
     .roots = mediaRoots,
     .record = &roomType,
     .rows = catalogue,
     .read = &readBy<Room, Room>,
     .composing = &composing,
     .hasResult = false},
};

}  // namespace

std::span<frame::MessageRow const> mediaMessages() {
  return lines;
}

}  // namespace Kovra

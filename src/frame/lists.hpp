/// @file
/// Lists: elements whose children of one name are the entries of an array.

#ifndef KOVRA_FRAME_LISTS_HPP
#define KOVRA_FRAME_LISTS_HPP

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "frame/kinds.hpp"
#include "frame/member.hpp"
#include "frame/observer.hpp"
#include "frame/rows.hpp"
#include "frame/walk.hpp"

namespace Kovra::frame {

/// What the entries of a list are: children of one name, each of which is a record, or a code.
struct Entries {
  std::string_view item;  ///< their name
  std::size_t size;       ///< of an entry, in bytes
  Rows rows;              ///< of a record; one without an element has the child's own text
  Keywords const* codes = nullptr;  ///< of a code, which is the child's own text
  /// So many find a place of their own, whatever they say; 0 for any number.
  std::size_t most = 0;
};

/// Entries that are of a certain type.
template <class EntryType>
struct EntriesOf : Entries {
  using Entry = EntryType;
};

template <auto const& Table>
constexpr auto entries(std::string_view item) {
  using Entry = decltype(detail::recordOf(Table));
  return EntriesOf<Entry>{{item, sizeof(Entry), Table}};
}

/// Entries that are keywords' codes. One without text is the code of an unknown word, and is shown
/// as nothing.
template <Vocabulary const& Words>
constexpr auto codeEntries(std::string_view item) {
  return EntriesOf<int>{{item, sizeof(int), {}, &detail::any<Words>}};
}

/// The same entries, of which the list takes so many.
template <class Entry>
constexpr EntriesOf<Entry> atMost(std::size_t most, EntriesOf<Entry> entries) {
  entries.most = most;
  return entries;
}

/// What the entries of a row that is a list are; null for another row.
inline Entries const* entriesIn(Row const& row) {
  return row.kind->shape == Shape::list ? static_cast<Entries const*>(row.with) : nullptr;
}

/// The rows of what a row holds, be it the members of a record or of each entry of a list.
inline Rows rowsInside(Row const& row) {
  Entries const* const entries = entriesIn(row);
  return entries != nullptr ? entries->rows : rowsBelow(row);
}

/// The entry at `index` of those at `first`.
inline void* entryAt(Entries const& entries, void* first, std::size_t index) {
  return static_cast<std::byte*>(first) + index * entries.size;
}

/// How many child elements there are, whatever their names.
std::size_t countChildren(Element element);

/// Visits the children named `element`, the entries of a list, in their order; others are skipped.
/// The result is that of the last one visited; false when there was none.
template <class Visit>
bool walkEntries(Element parent, std::string_view element, Visit visit) {
  return walkChildren(parent, [&](Element child, bool result) {
    if (child.name() != element) return result;
    child.use();
    return visit(child, result);
  });
}

// One entry, which `list` shows at `index`.

bool readEntry(Element child, Entries const& entries, void* entry, std::string_view list,
               std::size_t index, Watch const& watch);
/// The entry is the one at `index` of the list that is being written.
bool writeEntry(Sink& sink, Entries const& entries, void const* entry, std::size_t index,
                Circumstances circumstances);
Assigned assignEntry(Entries const& entries, void* entry, Value const& value, Problems& problems);

// All entries.

/// Reads the children in order into the `room` entries from `first` on. Children of other names are
/// skipped, and so are those for which there is no room. The result is that of the last entry read;
/// false when there was none.
bool readEntries(Element parent, Entries const& entries, void* first, std::size_t room,
                 std::string_view list, Watch const& watch);

template <auto M, class Entry>
bool readEntriesOf(Element parent, EntriesOf<Entry> const& entries, std::span<Entry> room,
                   Watch const& watch) {
  return readEntries(parent, entries, room.data(), room.size(), memberName<M>, watch);
}

/// Adds the entries; the result is that of the last one, false when there is none.
bool writeEntries(Sink& sink, Entries const& entries, void const* first, int count,
                  Circumstances circumstances);

/// Assigns a list entry by entry, each to what `place` gives for its index. An entry that is
/// nothing stays as it is.
template <class Place>
Assigned assignList(Entries const& entries, Value const& value, Problems& problems, Place place) {
  if (!value.isList()) return fail(problems, described(value), "a list");
  auto all = Assigned::done;
  for (std::size_t i = 0; i < value.size(); ++i) {
    void* const entry = place(i);
    if (value.items()[i].isNothing()) continue;
    std::size_t const mark = problems.mark();
    all = both(all, assignEntry(entries, entry, value.items()[i], problems));
    problems.prefix(mark, '[' + std::to_string(i) + ']');
  }
  return all;
}

/// The same into an array of `room` entries; those behind the list's end stay as they are.
Assigned assignEntries(Entries const& entries, void* first, std::size_t room, Value const& value,
                       Problems& problems);

void outlineEntries(Entries const& entries, Outline& outline);

/// The row of a list whose entries are the root's own children, which a reading of the message's
/// own reads.
extern Kind const listKind;

template <auto M, auto const& E>
constexpr auto listOfRoot() {
  Row row = detail::memberRow<M>({}, listKind, static_cast<Entries const*>(&E)).row();
  row.isRead = row.isWritten = row.isAssigned = false;
  return Field<typename Member<M>::Record>(row);
}

}  // namespace Kovra::frame

#endif

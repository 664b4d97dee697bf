/// @file
/// The engine: what is done with a whole table. Reading an element by it, writing a record by it,
/// assigning values by it.

#ifndef KOVRA_FRAME_WALK_HPP
#define KOVRA_FRAME_WALK_HPP

#include <tinyxml.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "frame/assign.hpp"
#include "frame/bytes.hpp"
#include "frame/entry.hpp"
#include "frame/observer.hpp"
#include "frame/row.hpp"
#include "frame/sink.hpp"

namespace Kovra::frame {

// The walk.

/// Calls `visit` with every child element in document order. The result is that of the last child
/// that `visit` recognised: it gets the running result and returns the new one.
template <class Visit>
bool walkChildren(Element element, Visit visit) {
  bool result = false;
  for (Element child = element.firstChild(); child; child = child.nextSibling()) {
    result = visit(child, result);
  }
  return result;
}

/// Finds rows by the names of elements. Printers name a message's elements in the order of its
/// table, so the search begins behind the row that was found last.
class RowFinder {
 public:
  explicit RowFinder(Rows rows)
      : begin_(rows.data()), end_(rows.data() + rows.size()), next_(begin_) {}

  /// Null when no row reads an element of that name.
  Row const* find(std::string_view name) {
    if (begin_ == end_) return nullptr;
    Row const* row = next_;
    do {
      Row const* const here = row++;
      if (row == end_) row = begin_;
      if (sameText(here->element, name) && here->isRead) {
        next_ = row;
        return here;
      }
    } while (row != next_);
    return nullptr;
  }

 private:
  Row const* begin_;
  Row const* end_;
  Row const* next_;
};

/// Reads a child with the row that names it; without one it is skipped. The result is the new
/// running result.
bool readChild(Row const* row, Element child, void* record, Watch const& watch, bool result);

/// Reads children, and knows for those who watch which rows of a table said something, and by which
/// elements: one that comes again and says something overwrites what the earlier one said.
class Repeats {
 public:
  Repeats(Rows rows, Watch const& watch) : rows_(rows), watch_(watch) {
    if (watch) std::fill_n(said_.begin(), std::min(rows.size(), most), false);
  }

  /// As readChild().
  bool read(Row const* row, Element child, void* record, bool result) {
    Observer* const observer = watch_.observer();
    if (observer == nullptr || row == nullptr || row->adds) {
      return readChild(row, child, record, watch_, result);
    }
    std::size_t const before = observer->told();
    bool const now = readChild(row, child, record, watch_, result);
    if (observer->told() != before) note(*observer, *row, child);
    return now;
  }

 private:
  /// More rows than any table has.
  static constexpr std::size_t most = 128;

  void note(Observer& observer, Row const& row, Element child) {
    auto const index = static_cast<std::size_t>(&row - rows_.data());
    if (index >= most) return;
    if (row.isShared) {
      noteShared(observer, row, child);
    } else if (said_[index]) {
      tell(observer, row, child, child.at(earlier_[index]));
    }
    said_[index] = true;
    earlier_[index] = child.index();
  }
  static void noteShared(Observer& observer, Row const& row, Element child);
  static void tell(Observer& observer, Row const& row, Element child, Element earlier);

  Rows rows_;
  Watch const& watch_;
  std::array<bool, most> said_;              // cleared for those who watch
  std::array<std::uint32_t, most> earlier_;  // not cleared
};

/// Reads the children of `element` with `rows`: a child that a row names is read by it, others are
/// skipped, a repeated one is read again. The result is that of the last child that a row read;
/// false when there was none, or no element at all.
bool walkRows(Element element, Rows rows, void* record, Watch const& watch);

template <class Record, std::size_t N>
bool walk(Element element, Table<Record, N> const& table, std::type_identity_t<Record>& record,
          Watch const& watch) {
  return walkRows(element, table, &record, watch);
}

/// The same, and tells of an element below which there is nothing to read: also of a whole reply.
bool readBelow(Element element, Rows rows, void* record, Watch const& watch);

/// The walk that nobody watches, over an element of a host's own tree: what a host's call does.
bool walkRows(TiXmlElement const* element, Rows rows, void* record);

template <class Record, std::size_t N>
bool walk(TiXmlElement const* element, Table<Record, N> const& table,
          std::type_identity_t<Record>& record) {
  return walkRows(element, table, &record);
}

/// What `write` writes is the row's, for those who watch.
template <class Write>
bool writeWatched(Sink& sink, Row const& row, Write write) {
  if (sink.watch() == nullptr) return write();
  sink.watch()->enter(row);
  bool const result = write();
  sink.watch()->leave();
  return result;
}

/// Writes `record` with `rows`, row by row, as far as the circumstances allow. The result is that
/// of the last row that wrote something; `result` when none did.
bool writeRows(Sink& sink, Rows rows, void const* record, Circumstances circumstances, bool result);

template <class Record, std::size_t N>
bool writeAll(Sink& sink, Table<Record, N> const& table, std::type_identity_t<Record> const& record,
              Circumstances circumstances, bool result) {
  return writeRows(sink, table, &record, circumstances, result);
}

template <class Record, std::size_t N>
bool writeAll(TiXmlElement& parent, Table<Record, N> const& table,
              std::type_identity_t<Record> const& record, Circumstances circumstances,
              bool result) {
  TreeSink sink(parent);
  return writeRows(sink, table, &record, circumstances, result);
}

/// Adds the element `name` and writes the rows below it. The result is that of the last row
/// written; false when no row wrote anything.
bool writeRowsBelow(Sink& sink, char const* name, Rows rows, void const* record,
                    Circumstances circumstances);

template <class Record, std::size_t N>
bool writeBelow(TiXmlElement& parent, char const* name, Table<Record, N> const& table,
                std::type_identity_t<Record> const& record, Circumstances circumstances) {
  TreeSink sink(parent);
  return writeRowsBelow(sink, name, table, &record, circumstances);
}

/// Offers a value to the rows; the first that has a member of that name takes it.
Assigned assignMember(Rows rows, void* record, std::string_view member, Value const& value,
                      Problems& problems);

template <class Record, std::size_t N>
Assigned assignMember(Table<Record, N> const& table, std::type_identity_t<Record>& record,
                      std::string_view member, Value const& value, Problems& problems) {
  return assignMember(Rows(table), &record, member, value, problems);
}

/// Adds the members that the rows fill, each once, in the order of the rows.
void keysOf(Rows rows, Keys& keys);

/// Assigns all members of `value` to the record; members that it does not name stay as they are.
Assigned assignRows(Rows rows, void* record, Value const& value, Problems& problems);

template <class Record, std::size_t N>
Assigned assignAll(Table<Record, N> const& table, std::type_identity_t<Record>& record,
                   Value const& value, Problems& problems) {
  return assignRows(table, &record, value, problems);
}

void outlineOf(Rows rows, Outline& outline);

}  // namespace Kovra::frame

#endif

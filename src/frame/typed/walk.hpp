/// @file
/// Rows and tables, and what is done with a whole table: reading an element by it, writing a record
/// by it, assigning values by it.
///
/// A row is data. Its kind says what is done with a value of one type, in functions over an untyped
/// place; the row says where that place is. Only while compiling is a row one of a certain record
/// (`Field`), and a table one of such rows (`Table`): what walks over rows is compiled once.

#ifndef KOVRA_FRAME_TYPED_WALK_HPP
#define KOVRA_FRAME_TYPED_WALK_HPP

#include <tinyxml.h>

#include <cstddef>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "frame/assign.hpp"
#include "frame/bytes.hpp"
#include "frame/entry.hpp"
#include "frame/observer.hpp"
#include "kvxhelper.h"

/// The rows whose kinds are templates, compiled for each type of member and each vocabulary.
namespace Kovra::frame::typed {

using namespace frame;

/// The words of a document: the names of its elements and the keywords in their texts.
using Outline = std::set<std::string, std::less<>>;

/// Bits that say under which circumstances a row is written; a family gives them their meaning.
using Circumstances = unsigned long;

/// The members that a table's rows fill, by name: what may be assigned.
using Keys = std::vector<std::string_view>;

struct Row;
using Rows = std::span<Row const>;

/// What can be done with the values of one type, each at its place. What is null is never done.
struct Kind {
  /// Reads the element; the result is success. Tells the watch what it read.
  bool (*read)(Row const&, Element, void* place, Watch const&) = nullptr;
  /// Adds the element below the parent; the result is the new running result.
  bool (*write)(TiXmlElement& parent, char const* element, void const* place, Circumstances,
                bool result) = nullptr;
  /// Takes the value, if it is for the member, or for one of the members, of the row.
  Assigned (*assign)(Row const&, void* place, std::string_view member, Value const&,
                     Problem&) = nullptr;
  /// Adds the members that it takes values for.
  void (*keys)(Row const&, Keys&) = nullptr;
  /// Adds the words below the element.
  void (*outline)(Outline&) = nullptr;
};

/// One row of a document's table: an element, a place in the record, and what is done with both.
struct Row {
  std::string_view element;      ///< from a literal, so a zero byte stands behind it
  std::string_view member;       ///< empty where the kind itself knows the members
  void* (*place)(void* record);  ///< what the kind works on
  Kind const* kind;
  Circumstances needs = 0;  ///< those that all have to hold for the row to be written
  bool isRead = true;
  bool isWritten = true;
  bool isAssigned = true;
  bool counts = true;  ///< does the result of the reading count, or that of the row before?
};

// Rows by themselves.

bool readRow(Row const& row, Element element, void* record, Watch const& watch);
/// The result is the new running result; `result` when the row writes nothing.
bool writeRow(Row const& row, TiXmlElement& parent, void const* record, Circumstances circumstances,
              bool result);
Assigned assignRow(Row const& row, void* record, std::string_view member, Value const& value,
                   Problem& problem);
void keysOfRow(Row const& row, Keys& keys);
void outlineOfRow(Row const& row, Outline& outline);

/// A row of a certain record.
template <class Record>
class Field {
 public:
  constexpr explicit Field(Row const& row) : row_(row) {}

  constexpr Row const& row() const { return row_; }
  constexpr std::string_view element() const { return row_.element; }

  bool read(Element element, Record& record, Watch const& watch) const {
    return readRow(row_, element, &record, watch);
  }
  bool write(TiXmlElement& parent, Record const& record, Circumstances circumstances,
             bool result) const {
    return writeRow(row_, parent, &record, circumstances, result);
  }
  Assigned assign(Record& record, std::string_view member, Value const& value,
                  Problem& problem) const {
    return assignRow(row_, &record, member, value, problem);
  }
  void keys(Keys& keys) const { keysOfRow(row_, keys); }
  void outline(Outline& outline) const { outlineOfRow(row_, outline); }

 private:
  Row row_;
};

/// A row that is read and never written.
template <class Record>
constexpr Field<Record> readOnly(Field<Record> const& field) {
  Row row = field.row();
  row.isWritten = false;
  return Field<Record>(row);
}

/// A row that is written, and that takes a value from whoever composes, but is never read.
template <class Record>
constexpr Field<Record> neverRead(Field<Record> const& field) {
  Row row = field.row();
  row.isRead = false;
  return Field<Record>(row);
}

/// A row that is written and never read.
template <class Record>
constexpr Field<Record> writeOnly(Field<Record> const& field) {
  Row row = field.row();
  row.isRead = row.isAssigned = false;
  return Field<Record>(row);
}

/// A row whose success or failure is not that of the walk.
template <class Record>
constexpr Field<Record> uncounted(Field<Record> const& field) {
  Row row = field.row();
  row.counts = false;
  return Field<Record>(row);
}

/// A row that is written only where all the circumstances in `needs` hold.
template <class Record>
constexpr Field<Record> when(Circumstances needs, Field<Record> const& field) {
  Row row = field.row();
  row.needs = needs;
  return Field<Record>(row);
}

/// Two rows that read one element would leave the second unread.
constexpr bool namesAreUnique(Rows rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (rows[i].isRead && rows[j].isRead && rows[i].element == rows[j].element) return false;
    }
  }
  return true;
}

namespace detail {
/// Not to be called while compiling: what calls it does not compile.
inline void twoRowsReadOneElement() {}
}  // namespace detail

/// The rows of a record. Its type remembers the record; rows of another, and two that read one
/// element, do not compile.
template <class RecordType, std::size_t N>
class Table {
 public:
  using Record = RecordType;

  template <class... Records>
  consteval Table(Field<Records> const&... fields) : rows_{fields.row()...} {
    static_assert((std::is_same_v<Records, Record> && ...), "a table has rows of one record only");
    if (!namesAreUnique(rows_)) detail::twoRowsReadOneElement();
  }

  constexpr operator Rows() const { return rows_; }

 private:
  Row rows_[N];
};

template <class Record, class... Records>
Table(Field<Record> const&, Field<Records> const&...) -> Table<Record, 1 + sizeof...(Records)>;

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

/// Reads the children of `element` with `rows`: a child that a row names is read by it, others are
/// skipped, a repeated one is read again. The result is that of the last child that a row read;
/// false when there was none, or no element at all.
bool walkRows(Element element, Rows rows, void* record, Watch const& watch);

template <class Record, std::size_t N>
bool walk(Element element, Table<Record, N> const& table, std::type_identity_t<Record>& record,
          Watch const& watch) {
  return walkRows(element, table, &record, watch);
}

/// The walk that nobody watches, over an element of a host's own tree: what a host's call does.
bool walkRows(TiXmlElement const* element, Rows rows, void* record);

template <class Record, std::size_t N>
bool walk(TiXmlElement const* element, Table<Record, N> const& table,
          std::type_identity_t<Record>& record) {
  return walkRows(element, table, &record);
}

/// Writes `record` below `parent` with `rows`, row by row, as far as the circumstances allow. The
/// result is that of the last row that wrote something; `result` when none did.
bool writeRows(TiXmlElement& parent, Rows rows, void const* record, Circumstances circumstances,
               bool result);

template <class Record, std::size_t N>
bool writeAll(TiXmlElement& parent, Table<Record, N> const& table,
              std::type_identity_t<Record> const& record, Circumstances circumstances,
              bool result) {
  return writeRows(parent, table, &record, circumstances, result);
}

/// Adds the element `name` and writes the rows below it. The result is that of the last row
/// written; false when the element could not be made or no row wrote anything.
bool writeRowsBelow(TiXmlElement& parent, char const* name, Rows rows, void const* record,
                    Circumstances circumstances);

template <class Record, std::size_t N>
bool writeBelow(TiXmlElement& parent, char const* name, Table<Record, N> const& table,
                std::type_identity_t<Record> const& record, Circumstances circumstances) {
  return writeRowsBelow(parent, name, table, &record, circumstances);
}

/// Offers a value to the rows; the first that has a member of that name takes it.
Assigned assignMember(Rows rows, void* record, std::string_view member, Value const& value,
                      Problem& problem);

template <class Record, std::size_t N>
Assigned assignMember(Table<Record, N> const& table, std::type_identity_t<Record>& record,
                      std::string_view member, Value const& value, Problem& problem) {
  return assignMember(Rows(table), &record, member, value, problem);
}

/// Adds the members that the rows fill, each once, in the order of the rows.
void keysOf(Rows rows, Keys& keys);

/// Puts a name, or an index in brackets, before the path of a problem.
void prefix(Problem& problem, std::string const& step);

/// Assigns all members of `value` to the record; members that it does not name stay as they are.
Assigned assignRows(Rows rows, void* record, Value const& value, Problem& problem);

template <class Record, std::size_t N>
Assigned assignAll(Table<Record, N> const& table, std::type_identity_t<Record>& record,
                   Value const& value, Problem& problem) {
  return assignRows(table, &record, value, problem);
}

/// Assigns a list to an array of `count` records of `size` bytes each, entry by entry. An entry
/// that is nothing stays as it is, and so do those behind the list's end.
Assigned assignRowsOfEntries(Rows rows, void* entries, std::size_t count, std::size_t size,
                             Value const& value, Problem& problem);

template <class Record, std::size_t N, std::size_t M>
Assigned assignEntries(Table<Record, N> const& table, Record (&entries)[M], Value const& value,
                       Problem& problem) {
  return assignRowsOfEntries(table, entries, M, sizeof(Record), value, problem);
}

void outlineOf(Rows rows, Outline& outline);

}  // namespace Kovra::frame::typed

#endif

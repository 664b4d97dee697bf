/// @file
/// The engine: what is done with a whole table. Reading an element by it, writing a record by it,
/// assigning values by it.

#ifndef KOVRA_FRAME_WALK_HPP
#define KOVRA_FRAME_WALK_HPP

#include <tinyxml.h>

#include <cstddef>
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

void outlineOf(Rows rows, Outline& outline);

}  // namespace Kovra::frame

#endif

/// @file
/// Rows and tables: what a message is made of.
///
/// A row is data. Its kind says what is done with a value of one type, in functions over an untyped
/// place; the row says where that place is. Only while compiling is a row one of a certain record
/// (`Field`), and a table one of such rows (`Table`): what walks over rows is compiled once.

#ifndef KOVRA_FRAME_ROW_HPP
#define KOVRA_FRAME_ROW_HPP

#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "frame/assign.hpp"
#include "frame/observer.hpp"
#include "frame/sink.hpp"
#include "kovra_value.hpp"

namespace Kovra::frame {

/// The words of a document: the names of its elements and the keywords in their texts.
using Outline = std::set<std::string, std::less<>>;

/// Bits that say under which circumstances a row is written; a family gives them their meaning.
using Circumstances = unsigned long;

/// The members that a table's rows fill, by name: what may be assigned.
using Keys = std::vector<std::string_view>;

struct Row;
using Rows = std::span<Row const>;

/// What a value is, for those who describe records.
enum class Shape : std::uint8_t {
  odd,  ///< read and written by steps of its own; the row may have rows that tell of members
  flag,
  integer,
  natural,
  hexadecimal,  ///< a natural, behind "0x"
  real,
  text,
  secret,
  word,  ///< a text that is one of a vocabulary's words
  keyword,
  bits,
  address,
  ipv4,
  setting,  ///< with its bounds
  record,   ///< by the rows below
  group,    ///< members of the record itself, by the rows below
  list,     ///< the row has what its entries are
};

/// The rows below a row: those of a record, of a group, or of an odd row's members.
Rows rowsBelow(Row const& row);

/// What can be done with the values of one type, each at its place. What is null is never done.
struct Kind {
  Shape shape = Shape::odd;
  /// Reads the element; the result is success. Tells the watch what it read.
  bool (*read)(Row const&, Element, void* place, Watch const&) = nullptr;
  /// Adds the row's element; the result is the new running result.
  bool (*write)(Row const&, Sink&, void const* place, Circumstances, bool result) = nullptr;
  /// Takes the value, if it is for the member, or for one of the members, of the row.
  Assigned (*assign)(Row const&, void* place, std::string_view member, Value const&,
                     Problems&) = nullptr;
  /// Adds the members that it takes values for, where that is not the row's alone.
  void (*keys)(Row const&, Keys&) = nullptr;
  /// Adds the words below the element.
  void (*outline)(Row const&, Outline&) = nullptr;
  /// The words that name its values, or its bits.
  Vocabulary const& (*words)(Row const&) = nullptr;
};

/// One row of a document's table: an element, a place in the record, and what is done with both.
struct Row {
  std::string_view element;      ///< from a literal, so a zero byte stands behind it
  std::string_view member;       ///< empty where the kind itself knows the members
  void* (*place)(void* record);  ///< what the kind works on
  Kind const* kind;
  void const* with = nullptr;  ///< what the kind needs to know: its words, the rows below
  Circumstances needs = 0;     ///< those that all have to hold for the row to be written
  std::uint32_t size = 0;      ///< of the member, in bytes
  bool isRead = true;
  bool isWritten = true;
  bool isAssigned = true;
  bool counts = true;     ///< does the result of the reading count, or that of the row before?
  bool isNeeded = true;   ///< of a command: does it need the member where the row is written?
  bool adds = false;      ///< may its element come again, each time adding to the member?
  bool isShared = false;  ///< may the element of another row fill the same member?
  std::string_view alternative = {};  ///< another member, whose text may stand for a keyword's code
};

// Rows by themselves.

bool readRow(Row const& row, Element element, void* record, Watch const& watch);
/// Does the row write anything under these circumstances?
bool isWrittenUnder(Row const& row, Circumstances circumstances);
/// The result is the new running result; `result` when the row writes nothing.
bool writeRow(Row const& row, Sink& sink, void const* record, Circumstances circumstances,
              bool result);
Assigned assignRow(Row const& row, void* record, std::string_view member, Value const& value,
                   Problems& problems);
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
  bool write(Sink& sink, Record const& record, Circumstances circumstances, bool result) const {
    return writeRow(row_, sink, &record, circumstances, result);
  }
  Assigned assign(Record& record, std::string_view member, Value const& value,
                  Problems& problems) const {
    return assignRow(row_, &record, member, value, problems);
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

/// A row whose element may come again, and then adds to what its member holds.
template <class Record>
constexpr Field<Record> adding(Field<Record> const& field) {
  Row row = field.row();
  row.adds = true;
  return Field<Record>(row);
}

/// A row whose member the element of another row may fill as well, and then overwrites.
template <class Record>
constexpr Field<Record> sharing(Field<Record> const& field) {
  Row row = field.row();
  row.isShared = true;
  return Field<Record>(row);
}

/// A row of a keyword that whoever composes may give as the text of another member.
template <class Record>
constexpr Field<Record> orBy(std::string_view alternative, Field<Record> const& field) {
  Row row = field.row();
  row.alternative = alternative;
  return Field<Record>(row);
}

/// A row that is written only where all the circumstances in `needs` hold.
template <class Record>
constexpr Field<Record> when(Circumstances needs, Field<Record> const& field) {
  Row row = field.row();
  row.needs |= needs;
  return Field<Record>(row);
}

/// Two rows that read one element would leave the second unread.
constexpr bool namesAreUnique(Rows rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      bool const areRead = rows[i].isRead && rows[j].isRead && !rows[i].element.empty();
      if (areRead && rows[i].element == rows[j].element) return false;
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

}  // namespace Kovra::frame

#endif

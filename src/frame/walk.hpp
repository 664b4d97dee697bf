/// @file
/// A row of a document's table, and what is done with a whole table: reading an element by it,
/// writing a record by it, assigning values by it.

#ifndef KOVRA_FRAME_WALK_HPP
#define KOVRA_FRAME_WALK_HPP

#include <tinyxml.h>

#include <algorithm>
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

namespace Kovra::frame {

/// The words of a document: the names of its elements and the keywords in their texts.
using Outline = std::set<std::string, std::less<>>;

/// Bits that say under which circumstances a row is written; a family gives them their meaning.
using Circumstances = unsigned long;

/// The members that a table's rows fill, by name: what may be assigned.
using Keys = std::vector<std::string_view>;

/// One row of a document's table: which element it is, how it is read into the record and written
/// from it, and how a value is assigned to its member. A function that is null is something that
/// the row does not do.
template <class Record>
struct Field {
  std::string_view element;
  bool (*read)(Element, Record&, Watch const&);
  void (*outline)(Outline&);
  /// Adds the element below the parent; the result is the new running result.
  bool (*write)(TiXmlElement& parent, char const* element, Record const&, Circumstances,
                bool result) = nullptr;
  Assigned (*assign)(Record&, std::string_view member, Value const&, Problem&) = nullptr;
  Circumstances needs = 0;
  void (*keys)(Keys&) = nullptr;
  /// Does the result of the reading count, or does the walk keep the one that it had?
  bool counts = true;
};

/// A row that is read and never written.
template <class Record>
constexpr Field<Record> readOnly(Field<Record> field) {
  field.write = nullptr;
  return field;
}

/// A row that is written and never read.
template <class Record>
constexpr Field<Record> writeOnly(Field<Record> field) {
  field.read = nullptr;
  field.assign = nullptr;
  field.keys = nullptr;
  return field;
}

/// A row that is written, and that takes a value from whoever composes, but is never read.
template <class Record>
constexpr Field<Record> neverRead(Field<Record> field) {
  field.read = nullptr;
  return field;
}

/// A row whose success or failure is not that of the walk.
template <class Record>
constexpr Field<Record> uncounted(Field<Record> field) {
  field.counts = false;
  return field;
}

/// A row that is written only where all the circumstances in `needs` hold.
template <class Record>
constexpr Field<Record> when(Circumstances needs, Field<Record> field) {
  field.needs = needs;
  return field;
}

/// Two rows that read one element would leave the second unread.
template <class Record, std::size_t N>
constexpr bool namesAreUnique(Field<Record> const (&table)[N]) {
  for (std::size_t i = 0; i < N; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      bool const bothRead = table[i].read != nullptr && table[j].read != nullptr;
      if (bothRead && table[i].element == table[j].element) return false;
    }
  }
  return true;
}

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
template <class Record>
class RowFinder {
 public:
  explicit RowFinder(std::span<Field<Record> const> table) : table_(table) {}

  Field<Record> const* find(std::string_view name) {
    for (std::size_t tried = 0; tried < table_.size(); ++tried) {
      Field<Record> const& candidate = table_[next_];
      next_ = next_ + 1 < table_.size() ? next_ + 1 : 0;
      if (sameText(candidate.element, name) && candidate.read != nullptr) return &candidate;
    }
    return nullptr;
  }

 private:
  std::span<Field<Record> const> table_;
  std::size_t next_ = 0;
};

/// Reads a child with the row that names it; without one it is skipped. The result is the new
/// running result.
template <class Record>
bool readChild(Field<Record> const* field, Element child, Record& record, Watch const& watch,
               bool result) {
  if (field == nullptr) {
    remark(watch, [&](Observer& observer) { observer.unknownElement(child); });
    return result;
  }
  remark(watch, [&](Observer& observer) { observer.knownElement(child); });
  bool const read = field->read(child, record, watch);
  return field->counts ? read : result;
}

/// Reads the children of `element` with `table`: a child that a row names is read by it, others are
/// skipped, a repeated one is read again. The result is that of the last child that a row read;
/// false when there was none, or no element at all.
template <class Record>
bool walk(Element element, std::span<Field<Record> const> table, Record& record,
          Watch const& watch) {
  RowFinder<Record> rows(table);
  return walkChildren(element, [&](Element child, bool result) {
    return readChild(rows.find(child.name()), child, record, watch, result);
  });
}

template <class Record, std::size_t N>
bool walk(Element element, Field<Record> const (&table)[N], Record& record, Watch const& watch) {
  return walk(element, std::span<Field<Record> const>(table), record, watch);
}

/// The walk that nobody watches, over an element of a host's own tree: what a host's call does.
template <class Record, std::size_t N>
bool walk(TiXmlElement const* element, Field<Record> const (&table)[N], Record& record) {
  Watch const nobody;
  HostTree const tree(element);
  return walk(tree.root(), table, record, nobody);
}

/// Writes `record` below `parent` with `table`, row by row, as far as the circumstances allow. The
/// result is that of the last row that wrote something; `result` when none did.
template <class Record, std::size_t N>
bool writeAll(TiXmlElement& parent, Field<Record> const (&table)[N], Record const& record,
              Circumstances circumstances, bool result) {
  for (Field<Record> const& field : table) {
    if (field.write == nullptr || (field.needs & ~circumstances) != 0) continue;
    result = field.write(parent, field.element.data(), record, circumstances, result);
  }
  return result;
}

/// Offers a value to the rows; the first that has a member of that name takes it.
template <class Record, std::size_t N>
Assigned assignMember(Field<Record> const (&table)[N], Record& record, std::string_view member,
                      Value const& value, Problem& problem) {
  for (Field<Record> const& field : table) {
    if (field.assign == nullptr) continue;
    Assigned const result = field.assign(record, member, value, problem);
    if (result != Assigned::notMine) return result;
  }
  return Assigned::notMine;
}

/// Adds the members that the rows fill, each once, in the order of the rows.
template <class Record, std::size_t N>
void keysOf(Field<Record> const (&table)[N], Keys& keys) {
  for (Field<Record> const& field : table) {
    if (field.keys == nullptr) continue;
    Keys own;
    field.keys(own);
    for (std::string_view const key : own) {
      if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
    }
  }
}

/// The value has a key that no row of the table fills.
template <class Record, std::size_t N>
Assigned refuseKey(Field<Record> const (&table)[N], Problem& problem) {
  Keys keys;
  keysOf(table, keys);
  std::string known;
  for (std::string_view const key : keys) known.append(known.empty() ? "" : ", ").append(key);
  return fail(problem, "an unknown key", "one of: " + known);
}

/// Puts a name, or an index in brackets, before the path of a problem.
inline void prefix(Problem& problem, std::string const& step) {
  bool const deeper = !problem.path.empty() && problem.path.front() != '[';
  problem.path = step + (deeper ? "." : "") + problem.path;
}

/// Assigns all members of `value` to the record; members that it does not name stay as they are.
template <class Record, std::size_t N>
Assigned assignAll(Field<Record> const (&table)[N], Record& record, Value const& value,
                   Problem& problem) {
  if (value.kind != Value::Kind::record) return fail(problem, described(value), "an object");
  for (Kovra::Member const& member : value.members) {
    Assigned result = assignMember(table, record, member.name, member.value, problem);
    if (result == Assigned::notMine) result = refuseKey(table, problem);
    if (result == Assigned::failed) {
      prefix(problem, member.name);
      return result;
    }
  }
  return Assigned::done;
}

/// Assigns a list to an array of records, entry by entry. An entry that is nothing stays as it is,
/// and so do those behind the list's end.
template <class Record, std::size_t N, std::size_t M>
Assigned assignEntries(Field<Record> const (&table)[N], Record (&entries)[M], Value const& value,
                       Problem& problem) {
  if (value.kind != Value::Kind::list) return fail(problem, described(value), "a list");
  if (value.items.size() > M) {
    return fail(problem, "a list of " + std::to_string(value.items.size()),
                "at most " + std::to_string(M) + " entries");
  }
  for (std::size_t i = 0; i < value.items.size(); ++i) {
    if (value.items[i].kind == Value::Kind::nothing) continue;
    if (assignAll(table, entries[i], value.items[i], problem) == Assigned::failed) {
      prefix(problem, '[' + std::to_string(i) + ']');
      return Assigned::failed;
    }
  }
  return Assigned::done;
}

template <class Record, std::size_t N>
void outlineOf(Field<Record> const (&table)[N], Outline& outline) {
  for (Field<Record> const& field : table) {
    outline.emplace(field.element);
    if (field.outline != nullptr) field.outline(outline);
  }
}

}  // namespace Kovra::frame

#endif

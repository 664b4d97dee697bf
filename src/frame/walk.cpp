#include "frame/walk.hpp"

#include <algorithm>
#include <utility>

namespace Kovra::frame {

namespace {

/// The place of a record that is only looked at: kinds that write take it as constant again.
void const* placeIn(Row const& row, void const* record) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): nothing is written
  return row.place(const_cast<void*>(record));
}

/// The value has a key that no row fills.
Assigned refuseKey(Rows rows, Problems& problems) {
  Keys keys;
  keysOf(rows, keys);
  std::string known;
  for (std::string_view const key : keys) known.append(known.empty() ? "" : ", ").append(key);
  return fail(problems, "an unknown key", "one of: " + known);
}

}  // namespace

// Rows.

Rows rowsBelow(Row const& row) {
  Shape const shape = row.kind->shape;
  bool const hasRows = shape == Shape::record || shape == Shape::group || shape == Shape::odd;
  return hasRows && row.with != nullptr ? *static_cast<Rows const*>(row.with) : Rows();
}

bool readRow(Row const& row, Element element, void* record, Watch const& watch) {
  return row.kind->read(row, element, row.place(record), watch);
}

bool isWrittenUnder(Row const& row, Circumstances circumstances) {
  return row.isWritten && row.kind->write != nullptr && (row.needs & ~circumstances) == 0;
}

bool writeRow(Row const& row, Sink& sink, void const* record, Circumstances circumstances,
              bool result) {
  if (!isWrittenUnder(row, circumstances)) return result;
  return writeWatched(sink, row, [&] {
    return row.kind->write(row, sink, placeIn(row, record), circumstances, result);
  });
}

Assigned assignRow(Row const& row, void* record, std::string_view member, Value const& value,
                   Problems& problems) {
  if (!row.isAssigned || row.kind->assign == nullptr) return Assigned::notMine;
  return row.kind->assign(row, row.place(record), member, value, problems);
}

void keysOfRow(Row const& row, Keys& keys) {
  if (!row.isAssigned || row.kind->assign == nullptr) return;
  if (row.kind->keys != nullptr) {
    row.kind->keys(row, keys);
  } else if (!row.member.empty()) {
    keys.push_back(row.member);
  }
}

void outlineOfRow(Row const& row, Outline& outline) {
  if (!row.element.empty()) outline.emplace(row.element);
  if (row.kind->outline != nullptr) row.kind->outline(row, outline);
}

// Reading.

namespace {

/// Has the row's element a text, and no elements that are read?
bool isOfText(Row const& row, Element element) {
  switch (row.kind->shape) {
    case Shape::record:
    case Shape::group:
    case Shape::list:
      return false;
    case Shape::odd:
      return !element.firstChild();
    default:
      return true;
  }
}

/// What an element of single values said; that of a secret is not told.
std::string_view overwritten(Row const& row, Element earlier) {
  bool const isTold = row.kind->shape != Shape::secret && isOfText(row, earlier);
  char const* const text = isTold ? earlier.peek() : nullptr;
  return text != nullptr ? text : "";
}

}  // namespace

void Repeats::tell(Observer& observer, Row const& row, Element child, Element earlier) {
  observer.repeatedElement(child, earlier, overwritten(row, earlier));
}

/// What is overwritten is what the last element said that fills the member, be it of this row, of
/// another one of the table, or of a table of the same record.
void Repeats::noteShared(Observer& observer, Row const& row, Element child) {
  Element const earlier = observer.lastToFill(row.member, child);
  if (earlier) tell(observer, row, child, earlier);
}

bool readChild(Row const* row, Element child, void* record, Watch const& watch, bool result) {
  if (row == nullptr) return result;
  child.use();
  bool const read = readRow(*row, child, record, watch);
  return row->counts ? read : result;
}

bool walkRows(Element element, Rows rows, void* record, Watch const& watch) {
  RowFinder finder(rows);
  Repeats repeats(rows, watch);
  return walkChildren(element, [&](Element child, bool result) {
    return repeats.read(finder.find(child.name()), child, record, result);
  });
}

bool readBelow(Element element, Rows rows, void* record, Watch const& watch) {
  remark(watch, [&](Observer& observer) {
    if (!element.firstChild() && !element.holdsText()) observer.emptyElement(element);
  });
  return walkRows(element, rows, record, watch);
}

bool walkRows(TiXmlElement const* element, Rows rows, void* record) {
  HostTree const tree(element);
  return walkRows(tree.root(), rows, record, Watch());
}

// Writing.

bool writeRows(Sink& sink, Rows rows, void const* record, Circumstances circumstances,
               bool result) {
  for (Row const& row : rows) result = writeRow(row, sink, record, circumstances, result);
  return result;
}

bool writeRowsBelow(Sink& sink, char const* name, Rows rows, void const* record,
                    Circumstances circumstances) {
  sink.open(name);
  bool const result = writeRows(sink, rows, record, circumstances, false);
  sink.close(name);
  return result;
}

// Assigning.

Assigned assignMember(Rows rows, void* record, std::string_view member, Value const& value,
                      Problems& problems) {
  for (Row const& row : rows) {
    Assigned const result = assignRow(row, record, member, value, problems);
    if (result != Assigned::notMine) return result;
  }
  return Assigned::notMine;
}

void keysOf(Rows rows, Keys& keys) {
  for (Row const& row : rows) {
    Keys own;
    keysOfRow(row, own);
    for (std::string_view const key : own) {
      if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
    }
  }
}

Assigned assignRows(Rows rows, void* record, Value const& value, Problems& problems) {
  if (!value.isRecord()) return fail(problems, described(value), "an object");
  auto all = Assigned::done;
  for (Kovra::Member const& member : value.members()) {
    std::size_t const mark = problems.mark();
    Assigned result = assignMember(rows, record, member.name(), member.value(), problems);
    if (result == Assigned::notMine) result = refuseKey(rows, problems);
    problems.prefix(mark, member.name());
    all = both(all, result);
  }
  return all;
}

// Words.

void outlineOf(Rows rows, Outline& outline) {
  for (Row const& row : rows) outlineOfRow(row, outline);
}

}  // namespace Kovra::frame

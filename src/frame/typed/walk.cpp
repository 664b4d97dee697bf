#include "frame/typed/walk.hpp"

#include <algorithm>
#include <utility>

namespace Kovra::frame::typed {

namespace {

/// The place of a record that is only looked at: kinds that write take it as constant again.
void const* placeIn(Row const& row, void const* record) {
  return row.place(const_cast<void*>(record));
}

/// The value has a key that no row fills.
Assigned refuseKey(Rows rows, Problem& problem) {
  Keys keys;
  keysOf(rows, keys);
  std::string known;
  for (std::string_view const key : keys) known.append(known.empty() ? "" : ", ").append(key);
  return fail(problem, "an unknown key", "one of: " + known);
}

}  // namespace

// Rows.

bool readRow(Row const& row, Element element, void* record, Watch const& watch) {
  return row.kind->read(row, element, row.place(record), watch);
}

bool writeRow(Row const& row, TiXmlElement& parent, void const* record, Circumstances circumstances,
              bool result) {
  if (!row.isWritten || row.kind->write == nullptr || (row.needs & ~circumstances) != 0) {
    return result;
  }
  return row.kind->write(parent, row.element.data(), placeIn(row, record), circumstances, result);
}

Assigned assignRow(Row const& row, void* record, std::string_view member, Value const& value,
                   Problem& problem) {
  if (!row.isAssigned || row.kind->assign == nullptr) return Assigned::notMine;
  return row.kind->assign(row, row.place(record), member, value, problem);
}

void keysOfRow(Row const& row, Keys& keys) {
  if (row.isAssigned && row.kind->keys != nullptr) row.kind->keys(row, keys);
}

void outlineOfRow(Row const& row, Outline& outline) {
  outline.emplace(row.element);
  if (row.kind->outline != nullptr) row.kind->outline(outline);
}

// Reading.

bool readChild(Row const* row, Element child, void* record, Watch const& watch, bool result) {
  if (row == nullptr) {
    remark(watch, [&](Observer& observer) { observer.unknownElement(child); });
    return result;
  }
  remark(watch, [&](Observer& observer) { observer.knownElement(child); });
  bool const read = readRow(*row, child, record, watch);
  return row->counts ? read : result;
}

bool walkRows(Element element, Rows rows, void* record, Watch const& watch) {
  RowFinder finder(rows);
  return walkChildren(element, [&](Element child, bool result) {
    return readChild(finder.find(child.name()), child, record, watch, result);
  });
}

bool walkRows(TiXmlElement const* element, Rows rows, void* record) {
  HostTree const tree(element);
  return walkRows(tree.root(), rows, record, Watch());
}

// Writing.

bool writeRows(TiXmlElement& parent, Rows rows, void const* record, Circumstances circumstances,
               bool result) {
  for (Row const& row : rows) result = writeRow(row, parent, record, circumstances, result);
  return result;
}

bool writeRowsBelow(TiXmlElement& parent, char const* name, Rows rows, void const* record,
                    Circumstances circumstances) {
  TiXmlElement* const element = KVXHelper::AddTag(&parent, name);
  return element != nullptr && writeRows(*element, rows, record, circumstances, false);
}

// Assigning.

Assigned assignMember(Rows rows, void* record, std::string_view member, Value const& value,
                      Problem& problem) {
  for (Row const& row : rows) {
    Assigned const result = assignRow(row, record, member, value, problem);
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

void prefix(Problem& problem, std::string const& step) {
  bool const deeper = !problem.path.empty() && problem.path.front() != '[';
  problem.path = step + (deeper ? "." : "") + problem.path;
}

Assigned assignRows(Rows rows, void* record, Value const& value, Problem& problem) {
  if (value.kind != Value::Kind::record) return fail(problem, described(value), "an object");
  for (Kovra::Member const& member : value.members) {
    Assigned result = assignMember(rows, record, member.name, member.value, problem);
    if (result == Assigned::notMine) result = refuseKey(rows, problem);
    if (result == Assigned::failed) {
      prefix(problem, member.name);
      return result;
    }
  }
  return Assigned::done;
}

Assigned assignRowsOfEntries(Rows rows, void* entries, std::size_t count, std::size_t size,
                             Value const& value, Problem& problem) {
  if (value.kind != Value::Kind::list) return fail(problem, described(value), "a list");
  if (value.items.size() > count) {
    return fail(problem, "a list of " + std::to_string(value.items.size()),
                "at most " + std::to_string(count) + " entries");
  }
  for (std::size_t i = 0; i < value.items.size(); ++i) {
    if (value.items[i].kind == Value::Kind::nothing) continue;
    void* const entry = static_cast<std::byte*>(entries) + i * size;
    if (assignRows(rows, entry, value.items[i], problem) == Assigned::failed) {
      prefix(problem, '[' + std::to_string(i) + ']');
      return Assigned::failed;
    }
  }
  return Assigned::done;
}

// Words.

void outlineOf(Rows rows, Outline& outline) {
  for (Row const& row : rows) outlineOfRow(row, outline);
}

}  // namespace Kovra::frame::typed

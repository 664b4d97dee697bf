#include "frame/lists.hpp"

namespace Kovra::frame {

namespace {

/// Is the entry a record whose one member is the child's own text?
bool isItsText(Entries const& entries) {
  return entries.rows.size() == 1 && entries.rows.front().element.empty();
}

/// How the child itself is read and written, where it has no children.
Row ownRow(Entries const& entries) {
  Row row = entries.codes == nullptr ? entries.rows.front()
                                     : Row{.element = {},
                                           .member = {},
                                           .place = &detail::itself,
                                           .kind = &keywordKind,
                                           .with = entries.codes};
  row.element = entries.item;
  return row;
}

bool readCode(Element child, Entries const& entries, void* entry, std::string_view list,
              Watch const& watch) {
  bool const read = readRow(ownRow(entries), child, entry, Watch());
  remark(watch, [&](Observer& observer) {
    if (!read) return observer.emptyElement(child);
    reportKeyword(observer, list, child, *static_cast<int*>(entry), *entries.codes->read);
  });
  return read;
}

}  // namespace

std::size_t countChildren(Element element) {
  std::size_t count = 0;
  for (Element child = element.firstChild(); child; child = child.nextSibling()) ++count;
  return count;
}

bool readEntry(Element child, Entries const& entries, void* entry, std::string_view list,
               std::size_t index, Watch const& watch) {
  if (entries.codes != nullptr) {
    return watch.item(list, index, [&] { return readCode(child, entries, entry, list, watch); });
  }
  return watch.entry(list, index, [&] {
    if (!isItsText(entries)) return walkRows(child, entries.rows, entry, watch);
    return readChild(&entries.rows.front(), child, entry, watch, false);
  });
}

namespace {

bool writeOne(Sink& sink, Entries const& entries, void const* entry, Circumstances circumstances) {
  if (entries.codes != nullptr || isItsText(entries)) {
    return writeRow(ownRow(entries), sink, entry, circumstances, false);
  }
  return writeRowsBelow(sink, entries.item.data(), entries.rows, entry, circumstances);
}

}  // namespace

bool writeEntry(Sink& sink, Entries const& entries, void const* entry, std::size_t index,
                Circumstances circumstances) {
  if (sink.watch() != nullptr) sink.watch()->enterEntry(index);
  bool const result = writeOne(sink, entries, entry, circumstances);
  if (sink.watch() != nullptr) sink.watch()->leave();
  return result;
}

Assigned assignEntry(Entries const& entries, void* entry, Value const& value, Problems& problems) {
  if (entries.codes == nullptr) return assignRows(entries.rows, entry, value, problems);
  return assignRow(ownRow(entries), entry, {}, value, problems);
}

bool readEntries(Element parent, Entries const& entries, void* first, std::size_t room,
                 std::string_view list, Watch const& watch) {
  remark(watch, [&](Observer& observer) { observer.list(list); });
  std::size_t next = 0;
  return walkEntries(parent, entries.item, [&](Element child, bool result) {
    if (next == room) {
      remark(watch, [&](Observer& observer) { observer.surplusEntry(parent, child, room); });
      return result;
    }
    std::size_t const index = next++;
    return readEntry(child, entries, entryAt(entries, first, index), list, index, watch);
  });
}

bool writeEntries(Sink& sink, Entries const& entries, void const* first, int count,
                  Circumstances circumstances) {
  bool result = false;
  auto const* entry = static_cast<std::byte const*>(first);
  for (int i = 0; entry != nullptr && i < count; ++i, entry += entries.size) {
    result = writeEntry(sink, entries, entry, static_cast<std::size_t>(i), circumstances);
  }
  return result;
}

Assigned assignEntries(Entries const& entries, void* first, std::size_t room, Value const& value,
                       Problems& problems) {
  if (value.isList() && value.size() > room) {
    return fail(problems, "a list of " + std::to_string(value.size()),
                "at most " + std::to_string(room) + " entries");
  }
  return assignList(entries, value, problems,
                    [&](std::size_t index) { return entryAt(entries, first, index); });
}

void outlineEntries(Entries const& entries, Outline& outline) {
  outline.emplace(entries.item);
  if (entries.codes != nullptr) {
    outlineWords(*entries.codes->read, outline);
  } else if (!isItsText(entries)) {
    outlineOf(entries.rows, outline);
  }
}

constinit Kind const listKind = {.shape = Shape::list,
                                 .outline = [](Row const& row, Outline& outline) {
                                   outlineEntries(*static_cast<Entries const*>(row.with), outline);
                                 }};

}  // namespace Kovra::frame

#include "frame/message.hpp"

namespace Kovra::frame {

void outlineOf(MessageRow const& message, Outline& outline) {
  outline.insert(message.roots.begin(), message.roots.end());
  outlineOf(message.rows, outline);
  if (message.moreWords != nullptr) outlineWords(*message.moreWords, outline);
}

bool readByRows(MessageRow const& message, Element root, void* memory, Watch const& watch) {
  return readBelow(root, message.rows, memory, watch);
}

bool readAsText(MessageRow const& message, Element root, void* memory, Watch const& watch) {
  return readRow(message.rows.front(), root, memory, watch);
}

bool readReply(wchar_t const* text, std::size_t length, Roots roots, Rows rows, void* record) {
  return readWide(text, length, roots,
                  [&](Element root) { return walkRows(root, rows, record, Watch()); });
}

bool readNarrowReply(char const* text, Roots roots, Rows rows, void* record) {
  return readNarrow(text, roots,
                    [&](Element root) { return walkRows(root, rows, record, Watch()); });
}

bool readHostRow(TiXmlElement const* element, Row const& row, void* place) {
  if (element == nullptr) return false;
  HostTree const tree(element);
  return row.kind->read(row, tree.root(), place, Watch());
}

}  // namespace Kovra::frame

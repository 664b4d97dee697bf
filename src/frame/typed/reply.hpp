/// @file
/// How a reply's record is read: for the catalogue, and for hosts.

#ifndef KOVRA_FRAME_TYPED_REPLY_HPP
#define KOVRA_FRAME_TYPED_REPLY_HPP

#include <tinyxml.h>

#include <memory>
#include <string_view>

#include "frame/entry.hpp"
#include "frame/observer.hpp"
#include "frame/typed/field.hpp"
#include "frame/typed/reader.hpp"

namespace Kovra::frame::typed {

/// The catalogue's line of a reply whose record starts as zeros. `Reading` is a struct with
/// `read(root, record, watch)` and `outline(outline)`, TableReading or one with steps of its own.
template <class Record, class Reading>
constexpr ReplyReader reader(std::string_view name, std::string_view title, Roots roots) {
  return {name, title, roots,
          [](Element root, Observer& observer) {
            auto const record = std::make_unique<Record>();
            return Reading::read(root, *record, observer);
          },
          &Reading::outline};
}

/// The wide entry of a reply: `Reading` on the root, watched by nobody.
template <class Reading, class Length, class Record>
bool readReply(wchar_t const& text, Length length, Roots roots, Record& record) {
  return readWide(&text, length, roots, [&](Element root) {
    Watch const nobody;
    return Reading::read(root, record, nobody);
  });
}

/// The same for a reply whose text is narrow and terminated, so that no length is needed.
template <class Reading, class Record>
bool readNarrowReply(char const* text, Roots roots, Record& record) {
  return readNarrow(text, roots, [&](Element root) {
    Watch const nobody;
    return Reading::read(root, record, nobody);
  });
}

/// `Reading` on an element of a host's own tree; false for a null one.
template <class Reading, class Record>
bool readHost(TiXmlElement const* element, Record& record) {
  if (element == nullptr) return false;
  Watch const nobody;
  HostTree const tree(element);
  return Reading::read(tree.root(), record, nobody);
}

/// The same for a kind of value: `Kind` on the text of an element.
template <class Kind, class Value>
bool readHostValue(TiXmlElement const* element, Value& out) {
  if (element == nullptr) return false;
  HostTree const tree(element);
  return Kind::read(tree.root(), out);
}

}  // namespace Kovra::frame::typed

#endif

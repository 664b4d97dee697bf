// The readings over a parser that builds a tree. A library's file brings two small classes:
//   Element    a handle: operator bool, name(), text(), attribute(name), first(), next(), where the
//              last two go over elements only, and a text or attribute that is missing is empty
//   Document   made from a text that it may change, which outlives it; root() is false without one

#ifndef KOVRA_BENCH_TREE_HPP
#define KOVRA_BENCH_TREE_HPP

#include <string_view>

#include "readers/leaves.hpp"

namespace kovra_bench::tree {

template <class Element>
void read(Element root, KVGeneralStatus& out) {
  for (Element e = root.first(); e; e = e.next()) take(out, e.name(), e.text());
}

template <class Element>
void read(Element root, _tagAccessPoints& out) {
  out.count = 0;
  for (Element e = root.first(); e; e = e.next()) ++out.count;
  if (out.accessPoints == nullptr) return;
  _tagAccessPoint* entry = out.accessPoints;
  for (Element e = root.first(); e; e = e.next()) {
    if (e.name() != "AccessPoint") continue;
    for (Element leaf = e.first(); leaf; leaf = leaf.next()) {
      take(*entry, leaf.name(), leaf.text());
    }
    ++entry;
  }
}

template <class Element>
void readCard(Element element, _CardInfo& out) {
  for (Element e = element.first(); e; e = e.next()) {
    Part const part = partOf(e.name());
    if (part == Part::none) take(out, part, e.name(), e.text());
    for (Element leaf = e.first(); leaf; leaf = leaf.next()) {
      take(out, part, leaf.name(), leaf.text());
    }
  }
}

template <class Element>
void read(Element root, Kovra::_KVMediaInfo& out) {
  for (Element list = root.first(); list; list = list.next()) {
    if (list.name() != "cards") continue;
    for (Element e = list.first(); e; e = e.next()) {
      if (e.name() == "card") readCard(e, appendCard(out));
    }
  }
}

template <class Element>
void readBelow(Element parent, Settings& out) {
  for (Element e = parent.first(); e; e = e.next()) {
    if (e.first()) {
      readBelow(e, out);
    } else {
      take(out, e.text(), e.attribute("min"), e.attribute("max"));
    }
  }
}

template <class Element>
void read(Element root, Settings& out) {
  out.count = 0;
  readBelow(root, out);
}

/// A whole reader: text in, record out.
template <class Document, class Record, class Text>
bool read(Text text, std::string_view rootName, Record& out) {
  Narrow const narrow(text);
  Document const document(narrow.data(), narrow.size());
  auto const root = document.root();
  if (!root || root.name() != rootName) return false;
  read(root, out);
  return true;
}

template <class Document>
constexpr Reader readerOver(char const* library) {
  return {library,
          [](std::wstring_view text, KVGeneralStatus& out) {
            return read<Document>(text, "get_general_status", out);
          },
          [](std::wstring_view text, _tagAccessPoints& out) {
            return read<Document>(text, "AccessPoints", out);
          },
          [](std::string_view text, Kovra::_KVMediaInfo& out) {
            return read<Document>(text, "media", out);
          },
          [](std::string_view text, Settings& out) {
            return read<Document>(text, "configuration", out);
          }};
}

}  // namespace kovra_bench::tree

#endif

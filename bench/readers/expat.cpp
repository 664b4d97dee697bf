// By hand over expat, which builds no tree: it calls at each tag and text, and the reading keeps in
// mind where it is.

#include <expat.h>

#include <string>

#include "readers/leaves.hpp"

namespace kovra_bench {

namespace {

using Attributes = char const**;

// Readings. Each is told of an element at its start tag, and of the text of one without elements
// inside at its end tag. The root has depth 1.

struct GeneralStatus {
  KVGeneralStatus& out;

  void start(int, std::string_view, Attributes) {}
  void leaf(int depth, std::string_view name, char const* text) {
    if (depth == 2) take(out, name, text);
  }
};

struct AccessPoints {
  _tagAccessPoints& out;
  _tagAccessPoint* next = out.accessPoints;
  _tagAccessPoint* entry = nullptr;

  void start(int depth, std::string_view name, Attributes) {
    if (depth == 1) out.count = 0;
    if (depth != 2) return;
    ++out.count;
    entry = next != nullptr && name == "AccessPoint" ? next++ : nullptr;
  }
  void leaf(int depth, std::string_view name, char const* text) {
    if (depth == 3 && entry != nullptr) take(*entry, name, text);
  }
};

struct Cards {
  Kovra::_KVMediaInfo& out;
  bool inList = false;
  _CardInfo* card = nullptr;
  Part part = Part::none;

  void start(int depth, std::string_view name, Attributes) {
    if (depth == 2) inList = name == "cards";
    if (depth == 3) card = inList && name == "card" ? &appendCard(out) : nullptr;
    if (depth == 4) part = partOf(name);
  }
  void leaf(int depth, std::string_view name, char const* text) {
    if (card == nullptr) return;
    if (depth == 4 && part == Part::none) take(*card, part, name, text);
    if (depth == 5 && part != Part::none) take(*card, part, name, text);
  }
};

struct Configuration {
  Settings& out;
  std::string min{};
  std::string max{};

  void start(int depth, std::string_view, Attributes attributes) {
    if (depth == 1) out.count = 0;
    min.clear();
    max.clear();
    for (; *attributes != nullptr; attributes += 2) {
      if (std::string_view(attributes[0]) == "min") min = attributes[1];
      if (std::string_view(attributes[0]) == "max") max = attributes[1];
    }
  }
  void leaf(int, std::string_view, char const* text) { take(out, text, min.c_str(), max.c_str()); }
};

/// One parse, which drives a reading.
template <class Reading>
class Parse {
 public:
  Parse(std::string_view rootName, Reading reading) : rootName_(rootName), reading_(reading) {}
  Parse(Parse const&) = delete;
  Parse& operator=(Parse const&) = delete;
  ~Parse() { XML_ParserFree(parser_); }

  bool run(Narrow const& text) {
    if (parser_ == nullptr) return false;
    XML_SetUserData(parser_, this);
    XML_SetElementHandler(parser_, start, end);
    XML_SetCharacterDataHandler(parser_, characters);
    return XML_Parse(parser_, text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_OK;
  }

 private:
  static Parse& self(void* data) { return *static_cast<Parse*>(data); }

  static void start(void* data, char const* name, Attributes attributes) {
    Parse& parse = self(data);
    if (++parse.depth_ == 1 && name != parse.rootName_) {
      XML_StopParser(parse.parser_, XML_FALSE);
      return;
    }
    parse.text_.clear();
    parse.isLeaf_ = true;
    parse.reading_.start(parse.depth_, name, attributes);
  }

  static void end(void* data, char const* name) {
    Parse& parse = self(data);
    if (parse.isLeaf_) parse.reading_.leaf(parse.depth_, name, parse.text_.c_str());
    parse.isLeaf_ = false;
    --parse.depth_;
  }

  static void characters(void* data, char const* text, int length) {
    if (self(data).isLeaf_) self(data).text_.append(text, static_cast<std::size_t>(length));
  }

  std::string_view rootName_;
  Reading reading_;
  XML_Parser parser_ = XML_ParserCreate("UTF-8");
  int depth_ = 0;
  bool isLeaf_ = false;
  std::string text_;
};

template <class Reading, class Text>
bool read(Text text, std::string_view rootName, Reading reading) {
  return Parse<Reading>(rootName, reading).run(Narrow(text));
}

}  // namespace

Reader const readerOverExpat = {
    "expat",
    [](std::wstring_view text, KVGeneralStatus& out) {
      return read(text, "get_general_status", GeneralStatus{out});
    },
    [](std::wstring_view text, _tagAccessPoints& out) {
      return read(text, "AccessPoints", AccessPoints{out});
    },
    [](std::string_view text, Kovra::_KVMediaInfo& out) { return read(text, "media", Cards{out}); },
    [](std::string_view text, Settings& out) {
      return read(text, "configuration", Configuration{out});
    }};

}  // namespace kovra_bench

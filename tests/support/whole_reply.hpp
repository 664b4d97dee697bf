/// @file
/// What the readings hold and what the notes tell is the whole reply: a checker of that promise.
///
/// TinyXML is the second opinion on what a text says. Each text, CDATA section and attribute value
/// that it finds has to be accounted for: by a leaf of a reading, each leaf for one of them, or by
/// a note that tells of this very piece.

#ifndef KOVRA_TESTS_SUPPORT_WHOLE_REPLY_HPP
#define KOVRA_TESTS_SUPPORT_WHOLE_REPLY_HPP

#include <tinyxml.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kovra.hpp"

namespace Kovra::test {

// ---- What a text may mean ----------------------------------------------------------------------

/// The meanings that a text may have, as keys: itself, and where it has such a form a whole number,
/// a measure, a flag, an address. A leaf accounts for a text when one of these is its own.
using Meanings = std::vector<std::string>;

inline constexpr std::string_view yesWords[] = {"yes",  "enabled", "on",
                                                "true", "locked",  "present"};
inline constexpr std::string_view noWords[] = {"no",    "disabled", "off",
                                               "false", "unlocked", "notpresent"};

inline std::string measureKey(double value) {
  std::array<char, 40> key{};
  // A member holds a float: what two floats cannot tell apart is the same.
  std::snprintf(key.data(), key.size(), "measure %.9g",
                static_cast<double>(static_cast<float>(value)));
  return key.data();
}

/// Blanks behind a number say nothing.
inline bool isEnd(char const* end) {
  return end[std::strspn(end, " \t\r\n")] == '\0';
}

/// Decimal, or hexadecimal behind "0x", with nothing behind it; empty for anything else.
inline std::string wholeKey(std::string const& text) {
  bool const isHexadecimal = text.compare(0, 2, "0x") == 0;
  bool const isNegative = text.compare(0, 1, "-") == 0;
  char* end = nullptr;
  errno = 0;
  std::string key;
  if (isNegative) {
    key = std::to_string(std::strtoll(text.c_str(), &end, 10));
  } else {
    key = std::to_string(std::strtoull(text.c_str(), &end, isHexadecimal ? 16 : 10));
  }
  bool const isWhole = end != text.c_str() && isEnd(end) && errno == 0;
  return isWhole ? "whole " + key : "";
}

/// Six hexadecimal fields with colons, or four decimal ones with dots: digits may be left out in
/// front, so "0:1:2:3:4:5" is "00:01:02:03:04:05".
inline std::string addressKey(std::string const& text, char mark, int base, std::size_t count) {
  std::string key = "address";
  std::size_t fields = 0;
  for (std::size_t at = 0; at <= text.size();) {
    std::size_t const end = std::min(text.find(mark, at), text.size());
    std::string const field = text.substr(at, end - at);
    bool const isField =
        !field.empty() && field.size() <= 3 &&
        field.find_first_not_of(base == 16 ? "0123456789abcdefABCDEF" : "0123456789") == field.npos;
    if (!isField) return "";
    key += ' ' + std::to_string(std::strtol(field.c_str(), nullptr, base));
    ++fields;
    at = end + 1;
  }
  return fields == count ? key : "";
}

inline std::string addressKey(std::string const& text) {
  std::string const hardware = addressKey(text, ':', 16, 6);
  return hardware.empty() ? addressKey(text, '.', 10, 4) : hardware;
}

inline Meanings meaningsOf(std::string const& text) {
  Meanings keys = {"text " + text};
  auto const add = [&](std::string key) {
    if (!key.empty()) keys.push_back(std::move(key));
  };
  add(wholeKey(text));
  char* end = nullptr;
  double const measure = std::strtod(text.c_str(), &end);
  if (end != text.c_str() && isEnd(end)) add(measureKey(measure));
  if (std::find(std::begin(yesWords), std::end(yesWords), text) != std::end(yesWords)) {
    add("flag 1");
  }
  if (std::find(std::begin(noWords), std::end(noWords), text) != std::end(noWords)) add("flag 0");
  add(addressKey(text));
  // A word of a set is the name of a flag in it.
  add("bit " + text);
  return keys;
}

/// May two texts mean the same?
inline bool meanTheSame(std::string const& a, std::string const& b) {
  Meanings const others = meaningsOf(b);
  for (std::string const& key : meaningsOf(a)) {
    if (std::find(others.begin(), others.end(), key) != others.end()) return true;
  }
  return false;
}

// ---- What the readings hold --------------------------------------------------------------------

/// How many leaves there are of each meaning.
class Leaves {
 public:
  void add(Value const& value, std::string_view name = {}) {
    for (Value const& item : value.items()) add(item, name);
    for (Member const& member : value.members()) add(member.value(), member.name());
    switch (value.kind()) {
      case Value::Kind::flag:
        ++counts_[value.asBool() ? "flag 1" : "flag 0"];
        if (value.asBool()) ++counts_["bit " + std::string(name)];
        break;
      case Value::Kind::integer:
        ++counts_["whole " + std::to_string(value.asInteger())];
        break;
      case Value::Kind::natural:
        ++counts_["whole " + std::to_string(value.asNatural())];
        break;
      case Value::Kind::real:
        ++counts_[measureKey(value.asReal())];
        break;
      case Value::Kind::text:
        addText(std::string(value.asText()));
        break;
      case Value::Kind::keyword:
        ++counts_["text " + std::string(value.word())];
        break;
      case Value::Kind::nothing:
      case Value::Kind::list:
      case Value::Kind::record:
        break;
    }
  }

  /// Gives each of the texts a leaf of its own, as far as there are any; true for those that got
  /// none.
  std::vector<bool> missing(std::vector<Meanings> const& texts) {
    std::vector<bool> isMissing(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
      std::set<std::string> tried;
      isMissing[i] = !take(i, texts, tried);
    }
    return isMissing;
  }

 private:
  void addText(std::string const& text) {
    std::string const address = addressKey(text);
    ++counts_[address.empty() ? "text " + text : address];
  }

  /// Takes a leaf for a text; another one that holds it may be content with another leaf.
  bool take(std::size_t index, std::vector<Meanings> const& texts, std::set<std::string>& tried) {
    for (std::string const& key : texts[index]) {
      auto const leaf = counts_.find(key);
      if (leaf == counts_.end() || !tried.insert(key).second) continue;
      std::vector<std::size_t>& holders = holders_[key];
      if (holders.size() < leaf->second) {
        holders.push_back(index);
        return true;
      }
      for (std::size_t& holder : holders) {
        if (!take(holder, texts, tried)) continue;
        holder = index;
        return true;
      }
    }
    return false;
  }

  std::map<std::string, std::size_t> counts_;
  std::map<std::string, std::vector<std::size_t>> holders_;
};

// ---- What the text says ------------------------------------------------------------------------

/// Line and column, from 1.
using Spot = std::pair<int, int>;

/// A text, a CDATA section or the value of an attribute.
struct Said {
  std::string name;  ///< of the attribute, or of the element around the text
  std::string text;
  Spot spot;
  TiXmlElement const* element;  ///< whose it is
  bool isAttribute;
  std::string path;
};

/// A document as TinyXML reads it.
class SecondOpinion {
 public:
  explicit SecondOpinion(std::string const& text) {
    document_.SetTabSize(1);
    char const* const end = document_.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
    if (end != nullptr) behind_ = end;
    isRead_ = !document_.Error();
    if (isRead_) collect(document_, nullptr, "");
  }

  bool isRead() const { return isRead_; }
  std::vector<Said> const& said() const { return said_; }
  /// What stands behind the document, apart from blanks.
  bool hasTextBehind() const { return behind_.find_first_not_of(" \t\r\n") != std::string::npos; }
  /// All elements, in the order of the text.
  std::map<Spot, TiXmlElement const*> const& elements() const { return elements_; }
  TiXmlElement const* elementAt(Spot spot) const {
    auto const found = elements_.find(spot);
    return found != elements_.end() ? found->second : nullptr;
  }

 private:
  void collect(TiXmlNode const& parent, TiXmlElement const* element, std::string const& path) {
    for (TiXmlNode const* node = parent.FirstChild(); node != nullptr; node = node->NextSibling()) {
      if (TiXmlElement const* const child = node->ToElement()) {
        std::string const inner = path + '/' + child->ValueStr();
        elements_.emplace(Spot(child->Row(), child->Column()), child);
        addAttributes(*child, inner);
        collect(*child, child, inner);
      } else if (node->ToText() != nullptr && element != nullptr) {
        said_.push_back({element->ValueStr(),
                         node->ValueStr(),
                         {node->Row(), node->Column()},
                         element,
                         false,
                         path});
      }
    }
  }

  void addAttributes(TiXmlElement const& element, std::string const& path) {
    for (auto const* a = element.FirstAttribute(); a != nullptr; a = a->Next()) {
      said_.push_back({a->Name(),
                       a->ValueStr(),
                       {a->Row(), a->Column()},
                       &element,
                       true,
                       path + '@' + a->Name()});
    }
  }

  TiXmlDocument document_;
  std::string behind_;
  bool isRead_ = false;
  std::vector<Said> said_;
  std::map<Spot, TiXmlElement const*> elements_;
};

// ---- What the notes tell -----------------------------------------------------------------------

/// A note, and the element that it is about or that begins where it does.
struct Telling {
  std::string id;
  Spot begin;
  Spot end;
  TiXmlElement const* element;
  std::string found;
  std::string kept;
  std::string overwritten;  ///< the name of the elements one of which is overwritten
  std::vector<std::string> expected;
};

/// It is in the sentence where it is another one than the element's own.
inline std::string overwrittenBy(Note const& note) {
  std::string const sentence = note.message();
  bool const isAnother = sentence.find(">: overwrites ") == note.element().size() + 1;
  if (!isAnother) return note.element();
  std::size_t const begin = sentence.rfind('<') + 1;
  return sentence.substr(begin, sentence.find('>', begin) - begin);
}

/// Which of the things that were said notes tell of.
class Told {
 public:
  Told(Decoding const& decoding, SecondOpinion const& opinion) {
    for (Note const& note : decoding.notes()) {
      Spot const begin(note.line(), note.column());
      tellings_.push_back({note.id(),
                           begin,
                           {note.endLine(), note.endColumn()},
                           opinion.elementAt(begin),
                           note.found(),
                           note.kept(),
                           overwrittenBy(note),
                           note.expected()});
    }
  }

  bool has(Said const& said) const {
    return std::any_of(tellings_.begin(), tellings_.end(),
                       [&](Telling const& telling) { return tells(telling, said); });
  }
  bool has(std::string_view id) const {
    return std::any_of(tellings_.begin(), tellings_.end(),
                       [&](Telling const& telling) { return telling.id == id; });
  }
  /// Was the element skipped or overwritten, with all in it?
  bool isPassedOver(TiXmlElement const* element) const {
    return std::any_of(tellings_.begin(), tellings_.end(), [&](Telling const& telling) {
      return skips(telling, element, {element->Row(), element->Column()}) ||
             overwrites(telling, element);
    });
  }

 private:
  static bool isWithin(TiXmlNode const* outer, TiXmlNode const* node) {
    for (; node != nullptr; node = node->Parent()) {
      if (node == outer) return true;
    }
    return false;
  }

  /// Skipped is an unknown element, a further document, and an entry for which there is no room,
  /// with all behind it.
  static bool skips(Telling const& telling, TiXmlElement const* element, Spot spot) {
    bool const isList = telling.id == "K117";
    if (!isList && telling.id != "K101" && telling.id != "K108") return false;
    if (telling.begin <= spot && spot < telling.end) return true;
    if (!isList || telling.element == nullptr) return false;
    std::string const name = telling.element->ValueStr();
    TiXmlElement const* later = telling.element->NextSiblingElement(name);
    for (; later != nullptr; later = later->NextSiblingElement(name)) {
      if (isWithin(later, element)) return true;
    }
    return false;
  }

  static bool tells(Telling const& telling, Said const& said) {
    if (skips(telling, said.element, said.spot)) return true;
    bool const isOwn = telling.element != nullptr && telling.element == said.element;
    if (telling.id == "K102" || telling.id == "K103") {
      return said.spot == telling.begin && said.isAttribute == (telling.id == "K102");
    }
    if (overwrites(telling, said.element)) return true;
    if (telling.id == "K116") {
      return isOwn && said.isAttribute &&
             std::find(telling.expected.begin(), telling.expected.end(), said.name) !=
                 telling.expected.end();
    }
    // An ampersand's or a blank's own piece leaves the text around it to be accounted for.
    bool const isOfText = telling.id == "K105" || (telling.id >= "K110" && telling.id <= "K115");
    return isOfText && isOwn && (!said.isAttribute || telling.found == said.text);
  }

  /// The element is, or stands in, an earlier one of the name that is overwritten: beside the one
  /// that the note is about, or in a sibling of the element around that.
  static bool overwrites(Telling const& telling, TiXmlElement const* element) {
    if (telling.id != "K104" || telling.element == nullptr) return false;
    TiXmlNode const* const parent = telling.element->Parent();
    for (TiXmlNode const* earlier = element; earlier->Parent() != nullptr;
         earlier = earlier->Parent()) {
      bool const isNamed = earlier->ValueStr() == telling.overwritten;
      if (!isNamed || Spot(earlier->Row(), earlier->Column()) >= telling.begin) continue;
      bool const isSibling = earlier->Parent() == parent;
      if (isSibling || earlier->Parent()->Parent() == parent->Parent()) return true;
    }
    return false;
  }

  std::vector<Telling> tellings_;
};

// ---- The promise -------------------------------------------------------------------------------

/// Elements whose texts the readings hold in another form, and why.
struct OtherForm {
  char const* element;
  char const* why;
};
inline constexpr OtherForm otherForms[] = {
    {"panel", "panels are joined in the description of the ribbon"},
};

inline OtherForm const* otherFormOf(Said const& said) {
  auto const form = std::find_if(
      std::begin(otherForms), std::end(otherForms),
      [&](OtherForm const& known) { return !said.isAttribute && known.element == said.name; });
  return form != std::end(otherForms) ? form : nullptr;
}

/// What is neither in a reading nor told of, a path and a text each. `used` gets the elements of
/// the other forms without which there would be more.
inline std::vector<std::string> lostOf(std::string const& text, Decoding const& decoding,
                                       std::set<std::string>* used = nullptr) {
  std::vector<std::string> lost;
  SecondOpinion const opinion(text);
  if (!opinion.isRead()) return {"TinyXML does not read it"};
  Told const told(decoding, opinion);
  if (told.has("K118")) return {};  // there are more notes than are listed
  if (opinion.hasTextBehind() && !told.has("K108")) lost.push_back("what stands behind");
  Leaves leaves;
  for (Reading const& reading : decoding.readings()) leaves.add(reading.record());
  std::vector<Said> open;
  std::vector<Meanings> meanings;
  for (Said const& said : opinion.said()) {
    if (told.has(said)) continue;
    open.push_back(said);
    meanings.push_back(meaningsOf(said.text));
  }
  std::vector<bool> const missing = leaves.missing(meanings);
  for (std::size_t i = 0; i < open.size(); ++i) {
    if (!missing[i]) continue;
    OtherForm const* const form = otherFormOf(open[i]);
    if (form == nullptr) lost.push_back(open[i].path + ": " + open[i].text);
    if (form != nullptr && used != nullptr) used->insert(form->element);
  }
  return lost;
}

/// All that a reply is said to say: the readings, and the notes but for their places.
inline std::string everythingOf(Decoding const& decoding) {
  std::string all;
  for (Reading const& reading : decoding.readings()) {
    all += reading.message() + (reading.result() ? "+" : "-") + reading.record().toJson() + '\n';
  }
  for (Note const& note : decoding.notes()) {
    all += note.id() + ' ' + note.path() + ' ' + note.message() + ' ' + note.found() + ' ' +
           note.kept() + ' ' + std::to_string(note.count()) + '\n';
  }
  return all;
}

/// Does the reading of a text show that it is another one than it was, where what was changed does
/// not stand for the same, and no note passes over it?
inline bool showsChange(Decoding const& before, std::string const& text,
                        std::string const& changed) {
  Decoding const after = decode(changed);
  if (!after || everythingOf(before) != everythingOf(after)) return true;
  SecondOpinion const first(text);
  SecondOpinion const second(changed);
  if (first.said().size() != second.said().size()) return false;
  Told const told(after, second);
  for (std::size_t i = 0; i < first.said().size(); ++i) {
    Said const& one = first.said()[i];
    Said const& other = second.said()[i];
    if (!meanTheSame(one.text, other.text) && !told.has(other)) return false;
  }
  return true;
}

}  // namespace Kovra::test

#endif

/// @file
/// Texts at random, from a seed: nearly good ones, and changed copies of any.

#ifndef KOVRA_TESTS_SUPPORT_NASTY_TEXTS_HPP
#define KOVRA_TESTS_SUPPORT_NASTY_TEXTS_HPP

#include <algorithm>
#include <cstddef>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace Kovra::test {

/// What makes TinyXML read on in each of its encodings: undecided, UTF-8 (twice) and legacy.
inline std::vector<std::string> const encodings = {"", "\xEF\xBB\xBF", "<?xml version='1.0'?>",
                                                   "<?xml version='1.0' encoding='latin1'?>"};

inline std::vector<std::string> piecesOf(std::string const& all) {
  std::vector<std::string> pieces;
  std::istringstream stream(all);
  for (std::string piece; std::getline(stream, piece, '|');) pieces.push_back(piece);
  return pieces;
}

/// Texts that are nearly right: tags are mostly closed in order, and any piece may be a nasty one.
class NastyTexts {
 public:
  explicit NastyTexts(unsigned seed) : random_(seed) {}

  std::string next() {
    std::string text = oneOf(encodings);
    std::vector<std::string> open;
    for (std::size_t left = 1 + below(16); left > 0; --left) append(text, open);
    for (; !open.empty() && below(30) > 0; open.pop_back()) text += "</" + open.back() + ">";
    if (below(8) == 0) text.resize(below(text.size() + 1));
    return text;
  }

  /// A copy of `text` with a few changes: bytes, pieces put in, taken out or twice, the end cut.
  std::string changed(std::string text) {
    for (std::size_t left = 1 + below(4); left > 0; --left) change(text);
    return text;
  }

 private:
  void change(std::string& text) {
    std::size_t const at = below(text.size() + 1);
    std::size_t const length = below(1 + std::min<std::size_t>(text.size() - at, 30));
    switch (below(8)) {
      case 0:
        text.erase(at, length);
        break;
      case 1:
        text.insert(at, text.substr(at, length));
        break;
      case 2:
        text.insert(below(text.size() + 1), text.substr(at, length));
        break;
      case 3:
        if (below(10) == 0) text.resize(at);
        break;
      case 4:
        if (at < text.size()) text[at] = static_cast<char>(1 + below(255));
        break;
      case 5:
        text.insert(at, oneOf(nasty));
        break;
      default:
        text.insert(at, oneOf(harmless));
    }
  }

  void append(std::string& text, std::vector<std::string>& open) {
    switch (below(open.empty() ? 4 : 8)) {
      case 0:
      case 1:
      case 2:
        open.push_back(oneOf(names));
        text += "<" + open.back();
        while (below(3) == 0) {
          text += " " + oneOf(names);
          text += "=" + oneOf(values);
        }
        text += oneOf({">", ">", ">", " >", "\n>"});
        break;
      case 4:
      case 5:
        text += "</" + open.back() + oneOf({">", ">", " >"});
        open.pop_back();
        break;
      case 6:
        text += oneOf(harmless);
        break;
      default:
        text += below(6) == 0 ? oneOf(nasty) : oneOf(harmless);
    }
  }

  std::size_t below(std::size_t end) { return random_() % end; }
  std::string oneOf(std::vector<std::string> const& pieces) { return pieces[below(pieces.size())]; }

  std::vector<std::string> const names = piecesOf("a|b|ab|_|x.y-z:1|\xC3\xA9|version");
  std::vector<std::string> const values = piecesOf(
      "'c'|\"d\"|e|'>'|\"</a>\"|'&#65;'|'\xC3'|'\xC3''|'&'|''|<|&#|\"'\"|'&lt;'|'&#0;g'||"
      "'\r\n\t'|\xEF\xBB\xBF'h'");
  std::vector<std::string> const harmless = piecesOf(
      " |\n|\r\n|\t|\v|text| a & b |&amp;|&#65;|&#32;|&#160;|&#0;|&#x200000;|&|<!-- </a> -->|"
      "<![CDATA[</a>]]>|<![CDATA[]]>|<e/>|<e f='1'/>|<?xml?>|<?p?>|<!-->-->|<!x>|\xC3\xA9|"
      "\xEF\xBB\xBF|\xEF\xBF\xBE");
  std::vector<std::string> const nasty = piecesOf(
      "<|>|'|\"|=|&#|&#x|;|</|</a>|/>|<!--|-->|<!-->|<![CDATA[|]]>|<?xml|?>|<!|<?|<1|</x|&#z;|#1;|"
      "x1;|<a b|<a b=|<a b='|<a a='' a=''/>|version|<?xml version=|<?xml encoding='x|"
      " encoding='UTF-8' |<?XML VERSION='|\xC3|\xE2|\xF4|\xEF\xBB|\xEF\xBF\xBF|<\xEF\xBB\xBF|\x7F|"
      "\x85|\xA0");

  std::mt19937 random_;
};

}  // namespace Kovra::test

#endif

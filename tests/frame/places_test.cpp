#include "frame/places.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "support/nasty_texts.hpp"
#include "support/twin_trees.hpp"

namespace Kovra::frame {

namespace {

using namespace std::string_literals;

std::string const utf8Mark = "\xEF\xBB\xBF";

// The places of a tree's nodes and attributes as they are written here, and as TinyXML counts them.
void expectPlaces(std::string const& text, int tabSize, std::string const& dump) {
  SCOPED_TRACE(testing::PrintToString(text));
  std::size_t const bound = Tree::bound(text);
  EXPECT_EQ(test::byScanner(text, bound, static_cast<std::size_t>(tabSize)).text, dump);
  std::string const padded = text + std::string(padding, '\0');
  EXPECT_EQ(test::byTinyXml(padded.c_str(), tabSize).text, dump);
}
void expectPlaces(std::string const& text, std::string const& dump) {
  for (int const tabSize : {1, 4, 8}) expectPlaces(text, tabSize, dump);
}

TEST(Places, CountEveryKindOfLineEndOnce) {
  expectPlaces("<a>\r<b/>\r\n<c/>\n\r<d/>\n<e/>\n\n<f/>\r\r<g/>\r\n\r\n<h/>\n\r\n<i/></a>",
               "element 1:1 \"a\"\n"
               " element 2:1 \"b\"\n"
               " element 3:1 \"c\"\n"
               " element 4:1 \"d\"\n"
               " element 5:1 \"e\"\n"
               " element 7:1 \"f\"\n"
               " element 9:1 \"g\"\n"
               " element 11:1 \"h\"\n"
               " element 13:1 \"i\"\n");
}

TEST(Places, AreThoseOfAttributesAndTextsToo) {
  expectPlaces("<a\n  b='c'\r\n d = e>\n fg <!--h\n--> <![CDATA[\n]]><?i\n?> \n</a><?xml\n?><j/>",
               "element 1:1 \"a\" \"b\"=\"c\"@2:3 \"d\"=\"e\"@3:2\n"
               " text 4:2 \"fg\"\n"
               " comment 4:5 \"h\\x0A\"\n"
               " cdata 5:5 \"\\x0A\"\n"
               " unknown 6:4 \"?i\\x0A?\"\n"
               "declaration 8:5 \"\" \"version\"=\"\" \"encoding\"=\"\" \"standalone\"=\"\"\n"
               "element 9:3 \"j\"\n");
}

TEST(Places, CountATabUpToTheNextStop) {
  std::string const text = "<a>\t<b/>\t\t<c\td='e'/>\n\t<f/></a>";
  auto const dump = [](char const* b, char const* c, char const* d, char const* f) {
    return "element 1:1 \"a\"\n element 1:"s + b + " \"b\"\n element 1:" + c +
           " \"c\" \"d\"=\"e\"@1:" + d + "\n element 2:" + f + " \"f\"\n";
  };
  expectPlaces(text, 1, dump("5", "11", "14", "2"));
  expectPlaces(text, 3, dump("7", "16", "19", "4"));
  expectPlaces(text, 4, dump("5", "17", "21", "5"));
  expectPlaces(text, 8, dump("9", "25", "33", "9"));
}

TEST(Places, GiveNoWidthToAByteOrderMarkAndItsLike) {
  expectPlaces(utf8Mark + "<a>" + utf8Mark + "\xEF\xBF\xBE<b/>x\xEF\xBF\xBFy<c/></a>",
               "element 1:1 \"a\"\n"
               " element 1:4 \"b\"\n"
               " text 1:8 \"x\\xEF\\xBF\\xBFy\"\n"
               " element 1:10 \"c\"\n");
  // Byte by byte they are three letters.
  expectPlaces("<a>\xEF\xBB\xBF<b/></a>",
               "element 1:1 \"a\"\n"
               " text 1:4 \"\\xEF\\xBB\\xBF\"\n"
               " element 1:7 \"b\"\n");
}

TEST(Places, CountACharacterOfUtf8Once) {
  std::string const text = "<a>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\x80\xC1\xF5<b/></a>";
  std::string const value = "\"\\xC3\\xA9\\xE2\\x82\\xAC\\xF0\\x9F\\x98\\x80\\x80\\xC1\\xF5\"\n";
  expectPlaces(utf8Mark + text, "element 1:1 \"a\"\n text 1:4 " + value + " element 1:10 \"b\"\n");
  expectPlaces(text, "element 1:1 \"a\"\n text 1:4 " + value + " element 1:16 \"b\"\n");
}

// As many bytes as a lead byte announces, be they part of it or the markup that follows.
TEST(Places, LetACutSequenceSwallowWhatFollows) {
  expectPlaces(utf8Mark + "<!--\xC3--><b/>", "comment 1:1 \"\\xC3\"\nelement 1:8 \"b\"\n");
  expectPlaces(utf8Mark + "<!--\xE2--><b/>", "comment 1:1 \"\\xE2\"\nelement 1:7 \"b\"\n");
  expectPlaces(utf8Mark + "<!--\xEF--><b/>", "comment 1:1 \"\\xEF\"\nelement 1:7 \"b\"\n");
  expectPlaces(utf8Mark + "<!--\xF4--><b/>", "comment 1:1 \"\\xF4\"\nelement 1:6 \"b\"\n");
  expectPlaces(utf8Mark + "<\xF4/><b/><c/>",
               "element 1:1 \"\\xF4\"\nelement 1:3 \"b\"\nelement 1:6 \"c\"\n");
  expectPlaces(utf8Mark + "<\xC3\n/><b/>", "element 1:1 \"\\xC3\"\nelement 1:5 \"b\"\n");
}

TEST(Places, ChangeTheirEncodingBehindTheLastWordOfTheFirstDeclaration) {
  auto const expectBehind = [](std::string const& declaration, std::string const& words,
                               std::string const& column) {
    expectPlaces(declaration + "<a/>",
                 "declaration 1:1 \"\" " + words + "\nelement 1:" + column + " \"a\"\n");
  };
  std::string const utf8 = "\"version\"=\"\" \"encoding\"=\"UTF-8\" \"standalone\"=\"\"";
  expectBehind("<?xml encoding='UTF-8' \xC3\xA9?>", utf8, "27");
  expectBehind("<?xml \xC3\xA9 encoding='UTF-8'?>", utf8, "28");
  expectBehind("<?xml \xC3\xA9?>", "\"version\"=\"\" \"encoding\"=\"\" \"standalone\"=\"\"", "10");
  expectBehind("<?xml encoding='UTF-8\xC3\xA9'?>",
               "\"version\"=\"\" \"encoding\"=\"UTF-8\\xC3\\xA9\" \"standalone\"=\"\"", "26");
  expectBehind("<?xml encoding='x' \xC3\xA9?>",
               "\"version\"=\"\" \"encoding\"=\"x\" \"standalone\"=\"\"", "24");
  expectPlaces("<!--\xC3\xA9--><?xml encoding='UTF-8'?><!--\xC3\xA9--><b/>",
               "comment 1:1 \"\\xC3\\xA9\"\n"
               "declaration 1:10 \"\" " +
                   utf8 +
                   "\n"
                   "comment 1:34 \"\\xC3\\xA9\"\n"
                   "element 1:42 \"b\"\n");
}

TEST(Places, AreTheSameWhicheverWereAskedForBefore) {
  std::string const text =
      "<?xml encoding='UTF-8'?>\r\n<a>\xC3\xA9\t\n\r<b/>\xF4\x80\x80\x80<c/></a>";
  test::Scanned const scanned(text);
  for (std::size_t offset = 0; offset <= text.size(); ++offset) {
    Places places(text, scanned.scan(), 4);
    for (std::size_t earlier = 0; earlier < offset; ++earlier) {
      if (text[earlier] == '<') places.of(earlier);
    }
    Place const place = places.of(offset);
    Place const alone = Places(text, scanned.scan(), 4).of(offset);
    EXPECT_EQ(place.line, alone.line) << offset;
    EXPECT_EQ(place.column, alone.column) << offset;
  }
}

TEST(Places, AreTinyXmlsForEveryTabSize) {
  constexpr unsigned seed = 20231105;
  SCOPED_TRACE(seed);
  test::NastyTexts texts(seed);
  int good = 0;
  for (int i = 0; i < 4000 && !testing::Test::HasFailure(); ++i) {
    std::string text = texts.next();
    for (std::size_t at = text.find(' '); at != text.npos && i % 2 == 0;
         at = text.find(' ', at + 1)) {
      text[at] = "\t\n\r "[at % 4];
    }
    std::string const padded = text + std::string(padding, '\0');
    int const tabSize = 1 + i % 9;
    test::Outcome const ours = test::byScanner(text, 0, static_cast<std::size_t>(tabSize));
    EXPECT_EQ(ours.text, test::byTinyXml(padded.c_str(), tabSize).text)
        << testing::PrintToString(text);
    good += ours.accepted ? 1 : 0;
  }
  EXPECT_GT(good, 800);
}

}  // namespace

}  // namespace Kovra::frame

#include "frame/sink.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <string_view>

#include "frame/output.hpp"
#include "support/allocations.hpp"

namespace Kovra::frame {
namespace {

using test::Released;

/// What writers do: the events between the root's beginning and its end.
using Events = std::function<void(Sink&)>;

std::string printedByTinyXml(Events const& events) {
  TiXmlDocument document;
  TreeSink sink(*beginDocument(document, "root"));
  events(sink);
  TiXmlPrinter printer;
  printer.SetIndent("    ");
  document.Accept(&printer);
  return printer.Str();
}

std::string printedAsText(Events const& events) {
  TextSink sink;
  sink.declare();
  sink.open("root");
  events(sink);
  sink.close("root");
  return std::string(sink.printed());
}

/// What TinyXML prints of the same events, checked to be what the text is.
std::string printed(Events const& events) {
  std::string const text = printedAsText(events);
  EXPECT_EQ(text, printedByTinyXml(events));
  return text;
}

/// The same of a document with nothing but this as a text, and as an attribute.
void expectTheSameOf(std::string const& text) {
  printed([&](Sink& sink) { sink.leaf("leaf", text.c_str()); });
  printed([&](Sink& sink) {
    sink.open("element");
    sink.attribute("attribute", text.c_str());
    sink.close("element");
  });
}

constexpr char declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n";

TEST(TextSink, PrintsElementsInElements) {
  std::string const text = printed([](Sink& sink) {
    sink.leaf("name", "value");
    sink.open("outer");
    sink.attribute("first", "1");
    sink.attribute("second", "two");
    sink.open("inner");
    sink.leaf("deep", "down");
    sink.close("inner");
    sink.leaf("after", "it");
    sink.close("outer");
    sink.open("bounded");
    sink.attribute("min", "0");
    sink.text("7");
    sink.close("bounded");
  });
  EXPECT_EQ(text, std::string(declaration) + R"(<root>
    <name>value</name>
    <outer first="1" second="two">
        <inner>
            <deep>down</deep>
        </inner>
        <after>it</after>
    </outer>
    <bounded min="0">7</bounded>
</root>
)");
}

TEST(TextSink, DeclaresWhatFollows) {
  TextSink sink;
  EXPECT_EQ(sink.printed(), "");
  sink.declare();
  EXPECT_EQ(sink.printed(), declaration);
}

TEST(TextSink, TellsAnEmptyTextFromNone) {
  std::string const text = printed([](Sink& sink) {
    sink.leaf("empty", "");
    sink.open("none");
    sink.close("none");
    sink.open("attributed");
    sink.attribute("attribute", "");
    sink.close("attributed");
    sink.open("both");
    sink.attribute("attribute", "");
    sink.text("");
    sink.close("both");
  });
  EXPECT_EQ(text, std::string(declaration) + R"(<root>
    <empty></empty>
    <none />
    <attributed attribute="" />
    <both attribute=""></both>
</root>
)");
}

TEST(TextSink, PrintsARootWithoutAnything) {
  EXPECT_EQ(printed([](Sink&) {}), std::string(declaration) + "<root />\n");
}

TEST(TextSink, EscapesWhatTinyXmlEscapes) {
  std::string const text = printed([](Sink& sink) { sink.leaf("leaf", "a<b>&\"c'"); });
  EXPECT_NE(text.find("<leaf>a&lt;b&gt;&amp;&quot;c&apos;</leaf>"), text.npos);
  for (char const* const escaped :
       {"&", "&&", "&amp;", "<", ">", "<>", "]]>", "&#38;", "&#", "&x"}) {
    expectTheSameOf(escaped);
    expectTheSameOf(std::string("before") + escaped + "after");
  }
}

TEST(TextSink, PrintsEveryCharacterAsTinyXmlDoes) {
  std::string all;
  for (int code = 1; code < 256; ++code) {
    expectTheSameOf(std::string(1, static_cast<char>(code)));
    all += static_cast<char>(code);
  }
  expectTheSameOf(all);
  std::string const text = printed([](Sink& sink) { sink.leaf("leaf", "\x01\t\n\r\x1f "); });
  EXPECT_NE(text.find("<leaf>&#x01;&#x09;&#x0A;&#x0D;&#x1F; </leaf>"), text.npos);
}

TEST(TextSink, QuotesAnAttributeByWhatIsInIt) {
  std::string const text = printed([](Sink& sink) {
    sink.open("element");
    sink.attribute("none", "plain");
    sink.attribute("double", "\"");
    sink.attribute("single", "'");
    sink.attribute("both", "'\"");
    sink.close("element");
  });
  EXPECT_NE(text.find(R"(<element none="plain" double='&quot;' single="&apos;" )"
                      R"(both='&apos;&quot;' />)"),
            text.npos);
}

TEST(TextSink, PrintsTextsLongerThanItsRoomOnTheStack) {
  for (std::size_t const length : {16000U, 16383U, 16384U, 16385U, 100000U}) {
    expectTheSameOf(std::string(length, 'x'));
    expectTheSameOf(std::string(length, '<'));
    expectTheSameOf(std::string(length, '\x02'));
  }
  printed([](Sink& sink) {
    for (int i = 0; i < 5000; ++i) sink.leaf("element", "text");
  });
}

TEST(TextSink, IndentsAsDeepAsItGoes) {
  constexpr int depth = 120;
  printed([](Sink& sink) {
    for (int i = 0; i < depth; ++i) sink.open("a");
    for (int i = 0; i < depth; ++i) sink.close("a");
    for (int i = 0; i < depth; ++i) sink.open("b");
    sink.text("deep");
    for (int i = 0; i < depth; ++i) sink.close("b");
  });
}

TEST(TextSink, PrintsAnyDocumentAsTinyXmlDoes) {
  static constexpr std::string_view letters = "ab&x;<>\"'\n\x01\xc3\xa4 ";
  for (unsigned int seed = 0; seed < 300; ++seed) {
    printed([seed](Sink& sink) {
      std::mt19937 numbers(seed);
      auto const below = [&](std::size_t bound) { return numbers() % bound; };
      auto const text = [&] {
        std::string made;
        for (auto length = below(12); length > 0; --length) made += letters[below(letters.size())];
        return made;
      };
      std::function<void(int)> const content = [&](int depth) {
        for (auto children = below(4); children > 0; --children) {
          if (below(3) == 0) {
            sink.leaf("leaf", text().c_str());
            continue;
          }
          sink.open("open");
          if (below(2) == 0) sink.attribute("first", text().c_str());
          if (below(2) == 0) sink.attribute("second", text().c_str());
          if (below(3) == 0) {
            sink.text(text().c_str());
          } else if (depth < 5) {
            content(depth + 1);
          }
          sink.close("open");
        }
      };
      content(0);
    });
  }
}

TEST(TreeSink, AddsBelowTheElementThatItIsGiven) {
  TiXmlDocument document;
  TiXmlElement* const root = beginDocument(document, "root");
  TreeSink(*root).leaf("first", "1");
  TreeSink sink(*root);
  sink.open("second");
  sink.leaf("inner", "2");
  sink.close("second");
  sink.leaf("third", "3");
  ASSERT_NE(root->FirstChildElement("second"), nullptr);
  EXPECT_STREQ(root->FirstChildElement("first")->GetText(), "1");
  EXPECT_STREQ(root->FirstChildElement("second")->FirstChildElement("inner")->GetText(), "2");
  EXPECT_STREQ(root->FirstChildElement("third")->GetText(), "3");
}

constexpr char secret[] = "very-secret-key";

TEST(WipedCharacters, StandOneAfterTheOther) {
  WipedCharacters characters;
  EXPECT_EQ(characters.view(), "");
  characters.append(std::string_view("ab"));
  characters.append('c');
  characters.append(3, 'd');
  characters.append(0, 'e');
  EXPECT_EQ(characters.view(), "abcddd");
}

TEST(WipedCharacters, StayInOrderWhereverTheyMove) {
  WipedCharacters characters;
  std::string expected;
  for (int i = 0; i < 30000; ++i) {
    characters.append(std::to_string(i));
    characters.append(';');
    characters.append(2, '-');
    expected += std::to_string(i) + ";--";
  }
  EXPECT_EQ(characters.view(), expected);
}

TEST(WipedCharacters, HaveRoomForALongTextAtFirst) {
  std::string const text(100'000, 'x');
  WipedCharacters characters;
  characters.append(text);
  for (int i = 0; i < 4'000'000; ++i) characters.append('y');
  EXPECT_EQ(characters.view().substr(0, text.size()), text);
  EXPECT_EQ(characters.view().size(), 4'100'000U);
}

class WipedCharactersInPlace : public testing::Test {
 protected:
  bool holdSecret() const {
    return std::string_view(reinterpret_cast<char const*>(memory_), sizeof memory_).find(secret) !=
           std::string_view::npos;
  }

  alignas(WipedCharacters) unsigned char memory_[sizeof(WipedCharacters)] = {};
};

TEST_F(WipedCharactersInPlace, AreGoneInTheEnd) {
  auto* const characters = new (memory_) WipedCharacters();
  characters->append(std::string_view(secret));
  EXPECT_TRUE(holdSecret());
  std::destroy_at(characters);
  EXPECT_FALSE(holdSecret());
}

TEST_F(WipedCharactersInPlace, AreGoneWhereTheyMovedFrom) {
  auto* const characters = new (memory_) WipedCharacters();
  characters->append(std::string_view(secret));
  characters->append(20000, ' ');
  EXPECT_EQ(characters->view().substr(0, sizeof secret - 1), secret);
  EXPECT_FALSE(holdSecret());
  std::destroy_at(characters);
}

class WipedCharactersOnTheHeap : public test::HeapTest {};

TEST_F(WipedCharactersOnTheHeap, AreGoneBeforeTheirBlocksAreGivenBack) {
  Released const released(secret);
  {
    WipedCharacters characters;
    for (int block = 0; block < 4; ++block) {
      characters.append(100000, ' ');
      characters.append(std::string_view(secret));
    }
    ASSERT_NE(characters.view().find(secret), std::string_view::npos);
  }
  EXPECT_EQ(released.found(), 0U);
}

}  // namespace
}  // namespace Kovra::frame

#include "frame/tree.hpp"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <tinyxml.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/entry.hpp"
#include "support/allocations.hpp"
#include "support/locale.hpp"
#include "support/nasty_texts.hpp"
#include "support/twin_trees.hpp"
#include "support/white_space.hpp"

namespace Kovra::frame {

namespace {

using namespace std::string_literals;

using test::flawOf;
using test::Scanned;
using test::shapeOf;

std::string const utf8Mark = "\xEF\xBB\xBF";

// ---- Peculiarities of TinyXML ------------------------------------------------------------------

// A text's tree as it is written here, and as TinyXML builds it.
void expectShape(std::string const& text, std::string const& shape) {
  SCOPED_TRACE(testing::PrintToString(text));
  Scanned const scanned(text);
  EXPECT_EQ(scanned->fault, Fault::none);
  EXPECT_EQ(shapeOf(scanned.tree(), true), shape);
  EXPECT_EQ(test::difference(text), "");
}

void expectRefused(std::string const& text, Fault fault) {
  EXPECT_EQ(Scanned(text)->fault, fault) << testing::PrintToString(text);
  EXPECT_EQ(test::difference(text), "");
}

// Of an element with this content: that it is one text, or none at all.
void expectText(std::string const& content, std::string const& value,
                std::string const& mark = "") {
  expectShape(mark + "<a>" + content + "</a>",
              "element \"a\"\n text " + test::quoted(value) + "\n");
}
void expectNoText(std::string const& content, std::string const& mark = "") {
  expectShape(mark + "<a>" + content + "</a>", "element \"a\"\n");
}

void expectValue(std::string const& quoted, std::string const& value,
                 std::string const& mark = "") {
  expectShape(mark + "<a b=" + quoted + "/>", "element \"a\" \"b\"=" + test::quoted(value) + "\n");
}

TEST(Peculiarity, ALoneAmpersandVanishesAndAPendingBlankComesFirst) {
  expectText("a & b", "a  b");
  expectText("a&b", "ab");
  expectText("a &", "a ");
  expectText("& a", " a");
  expectText("a &&& b&nbsp;c&;", "a  bnbsp;c;");
  expectNoText("&");
  expectNoText("& &");
  expectValue("'c & d&'", "c  d");
}

TEST(Peculiarity, NamedReferencesAreThoseFive) {
  expectText("&lt;&gt;&amp;&quot;&apos;", "<>&\"'");
  expectText("&LT;&amp;lt;&ampamp;", "LT;&lt;ampamp;");
  expectValue("'&quot;&apos;'", "\"'");
}

TEST(Peculiarity, AReferenceReachesAnyDistanceForItsSemicolon) {
  expectText("&#<b c='d'></b></a>#65;", "A");
  expectText("&#x<b></a></b>x41;e", "Ae");
  expectText("&#" + std::string(100000, ' ') + "#65;", "A");
  expectShape("<a b='&#' c='#66;' d='e'/>", "element \"a\" \"b\"=\"B\" \"d\"=\"e\"\n");
}

TEST(Peculiarity, AReferenceTakesItsDigitsFromTheRight) {
  expectText("&#1#50;", "2");
  expectText("&#x41x42;", "B");
  expectText("&#x0000000000000000000041;&#00000000000000000000066;", "AB");
  expectText("&#xz<x41;", "A");
  expectText("&#x4A;&#x4a;", "JJ");
}

TEST(Peculiarity, AReferenceToZeroIsAnEmbeddedZeroByte) {
  for (char const* const zero : {"&#0;", "&#x0;", "&#;", "&#x;", "&#x00000000000000000;"}) {
    expectText("a"s + zero + "b", "a\0b"s);
    expectText(zero, "\0"s);
    expectValue("'a"s + zero + "b'", "a\0b"s);
    expectText("a"s + zero + "b", "a\0b"s, utf8Mark);
  }
}

TEST(Peculiarity, AReferenceInUtf8IsOfUpToFourBytes) {
  expectText("&#x7F;&#x80;&#x7FF;", "\x7F\xC2\x80\xDF\xBF", utf8Mark);
  expectText("&#x800;&#xD800;&#xFFFF;", "\xE0\xA0\x80\xED\xA0\x80\xEF\xBF\xBF", utf8Mark);
  expectText("&#x10000;&#x1FFFFF;", "\xF0\x90\x80\x80\xF7\xBF\xBF\xBF", utf8Mark);
  expectText("a&#x200000;b&#2097152;c&#xFFFFFFFF;", "abc", utf8Mark);
  expectNoText("&#x200000;", utf8Mark);
  // What each digit is worth wraps around at 2^32, but the sum does not.
  expectText("&#x100000041;", "A", utf8Mark);
  expectText("a&#4294967361;", "a", utf8Mark);
}

TEST(Peculiarity, AReferenceInOtherEncodingsKeepsTheLowByte) {
  expectText("&#321;&#x20AC;&#x200041;",
             "A\xAC"
             "A");
  expectText("a&#256;", "a\0"s);
  expectShape("<?xml encoding='x'?><a>&#321;</a>",
              "declaration \"\" \"version\"=\"\" \"encoding\"=\"x\" \"standalone\"=\"\"\n"
              "element \"a\"\n"
              " text \"A\"\n");
}

TEST(Peculiarity, ABadReferenceRefusesTheText) {
  for (char const* const bad : {"&#6a;", "&#x6g;", "&#X41;", "&#x", "&#65", "&# 65;", "&#-1;"}) {
    expectRefused("<a>"s + bad + "</a>", Fault::badReference);
    expectRefused("<a b='"s + bad + "'/>", Fault::badReference);
  }
  expectShape("<a/>&#6a;", "element \"a\"\n");
  expectShape("<a><!--&#6a;--><![CDATA[&#6a;]]></a>",
              "element \"a\"\n comment \"&#6a;\"\n cdata \"&#6a;\"\n");
}

TEST(Peculiarity, WhetherATextIsBlankIsDecidedBehindItsReferences) {
  expectNoText("&#32;");
  expectNoText(" \r\n\t&#x9;&#10;&#13; ");
  expectText("&#32;b&#32;", " b ");
  expectText("b&#32; c", "b  c");
  expectText("&#32;&#0;", " \0"s);
}

TEST(Peculiarity, BlanksBecomeOneWithNoneAtEitherEnd) {
  expectText(" \t\r\n a \v\f b \n", "a b");
  expectValue("' \t\r\n a '", " \t\r\n a ");
}

TEST(Peculiarity, CdataIsANodeAlsoWhereItIsEmpty) {
  expectShape("<a><![CDATA[]]><![CDATA[ ]]><![CDATA[ &amp;<b> ]]></a>",
              "element \"a\"\n cdata \"\"\n cdata \" \"\n cdata \" &amp;<b> \"\n");
}

TEST(Peculiarity, TheDocumentEndsInSilenceAtTheTopLevel) {
  expectShape("<a/>text<b></c>", "element \"a\"\n");
  expectShape("<a/>&amp;<b>", "element \"a\"\n");
  expectShape("<a/><!-- b",
              "element \"a\"\n"
              "comment \" b\"\n");
  expectShape("<a/><![CDATA[b", "element \"a\"\ncdata \"b\"\n");
  expectShape("<a/><![CDATA[b]]>", "element \"a\"\ncdata \"b\"\n");
  expectShape("<a/><!b", "element \"a\"\nunknown \"!b\"\n");
  expectShape("<a/><", "element \"a\"\nunknown \"\"\n");
  expectShape("<a/><?xml version=1' encoding='b'?><b></c>",
              "element \"a\"\n"
              "declaration \"\" \"version\"=\"1\" \"encoding\"=\"\" \"standalone\"=\"\"\n");
  expectRefused("text<a/>", Fault::empty);
  expectRefused("<a/><b", Fault::endsInTag);
}

TEST(Peculiarity, ADeclarationIsWhateverBeginsLikeOne) {
  expectShape(
      "<?XmL-style VERSIONED='1.1' x='y' ENCODINGS='utf8-like' standalones=yes?><a>\xC3<</a>",
      "declaration \"\" \"version\"=\"1.1\" \"encoding\"=\"utf8-like\" "
      "\"standalone\"=\"yes?\"\n"
      "element \"a\"\n"
      " text \"\\xC3<\"\n");
  expectShape("<a><?xml version='1.0' encoding='UTF-8'>\xC3</a>",
              "element \"a\"\n"
              " declaration \"\" \"version\"=\"1.0\" \"encoding\"=\"UTF-8\" \"standalone\"=\"\"\n"
              " text \"\\xC3\"\n");
  expectShape("<?xml version='1' version='2&#0;3' encoding=''?>",
              "declaration \"\" \"version\"=\"2\" \"encoding\"=\"\" \"standalone\"=\"\"\n");
  // The first one at the top settles the encoding, for better or worse.
  expectShape("<a>\xC3</a><?xml?><?xml encoding='x'?><b>\xC3<</b>",
              "element \"a\"\n"
              " text \"\\xC3\"\n"
              "declaration \"\" \"version\"=\"\" \"encoding\"=\"\" \"standalone\"=\"\"\n"
              "declaration \"\" \"version\"=\"\" \"encoding\"=\"x\" \"standalone\"=\"\"\n"
              "element \"b\"\n"
              " text \"\\xC3<\"\n");
}

TEST(Peculiarity, AnEndTagIsTheOpenNameThenWhiteSpaceThenABracket) {
  expectShape("<a></a \n>", "element \"a\"\n");
  expectShape(utf8Mark + "<a></a\xEF\xBB\xBF></a>", "element \"a\"\nunknown \"/a\"\n");
  expectRefused("<a></ab>", Fault::wrongEndTag);
  expectRefused("<ab></a>", Fault::wrongEndTag);
  expectRefused("<a></ a>", Fault::wrongEndTag);
  expectRefused("<a></a/>", Fault::brokenEndTag);
}

TEST(Peculiarity, ALeadByteTakesOneToThreeBytesWithIt) {
  expectText("\xC3</a>b", "\xC3</a>b", utf8Mark);
  expectText("\xE2</b", "\xE2</b", utf8Mark);
  expectText("\xF4</a>b", "\xF4</a>b", utf8Mark);
  expectText("\xC3&amp;", "\xC3&amp;", utf8Mark);
  expectValue("'\xC3'c'", "\xC3'c", utf8Mark);
  expectText("\xC1\xF5", "\xC1\xF5", utf8Mark);
  expectText("\xC3", "\xC3");
  for (char const* const cut : {"\xC3", "\xE2", "\xE2\x82", "\xF4", "\xF4\x80\x80"}) {
    expectRefused(utf8Mark + "<a>" + cut, Fault::endsInElement);
    expectRefused(utf8Mark + "<a b='" + cut, Fault::endsInQuotes);
  }
}

TEST(Peculiarity, ThreeCharactersOfNoWidthAreWhiteSpaceInUtf8) {
  for (char const* const none : {"\xEF\xBB\xBF", "\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
    std::string const m = none;
    expectShape(
        utf8Mark + m + "<" + m + "a " + m + "b" + " " + m + "=" + m + "'c'" + m + "/>" + m + "<d/>",
        "element \"a\" \"b\"=\"c\"\nelement \"d\"\n");
    expectNoText(m, utf8Mark);
    expectText(m + "b" + m, "b" + m, utf8Mark);
    expectText(m, m);
  }
}

TEST(Peculiarity, BytesFrom127OnArePartOfNames) {
  expectShape("<\x7F\x80\xFF.-:_1 \xA4='b'></\x7F\x80\xFF.-:_1>",
              "element \"\\x7F\\x80\\xFF.-:_1\" \"\\xA4\"=\"b\"\n");
}

TEST(Peculiarity, ADocumentTypeEndsWithItsFirstBracket) {
  expectShape("<!DOCTYPE a [<!ELEMENT b>]><a/>", "unknown \"!DOCTYPE a [<!ELEMENT b\"\n");
  expectShape("<a><!b [<!c>]></a>", "element \"a\"\n unknown \"!b [<!c\"\n text \"]>\"\n");
}

TEST(Peculiarity, ValuesNeedNoQuotesAndNoBlanksBetweenThem) {
  expectValue("c", "c");
  expectValue("<c&amp;", "<c&amp;");
  expectValue("", "");
  expectValue(" \n'c'", "c");
  expectShape("<a b=></a>", "element \"a\" \"b\"=\"\"\n");
  expectShape("<a b= c=d e=f></a>", "element \"a\" \"b\"=\"c=d\" \"e\"=\"f\"\n");
  expectShape("<a b='c'd=\"e\"f=g/>", "element \"a\" \"b\"=\"c\" \"d\"=\"e\" \"f\"=\"g\"\n");
  expectRefused("<a b=c'></a>", Fault::strayQuote);
  expectRefused("<a b=c\"d></a>", Fault::strayQuote);
  expectRefused("<a b=c'd'></a>", Fault::strayQuote);
}

TEST(Peculiarity, ATextMayBeginWithWhiteSpaceWhereThatIsKept) {
  test::KeptWhiteSpace const kept;
  expectText(" b \r\n c\t", " b \r\n c\t");
  expectText("\n&#32;b &", "\n b ");
  expectNoText(" \n\t");
  expectNoText(" &#32; & ");
  expectShape("<a> <b/> c <d> </d>\n</a>",
              "element \"a\"\n element \"b\"\n text \" c \"\n element \"d\"\n");
  expectShape("<a> <![CDATA[ b ]]> </a>", "element \"a\"\n cdata \" b \"\n");
  expectText("\xEF\xBB\xBF b", "\xEF\xBB\xBF b", utf8Mark);
  expectNoText("\xEF\xBB\xBF ", utf8Mark);
  expectValue("' c '", " c ");
}

// What is white space beyond ASCII is the locale's affair, in texts as in front of names.
TEST(Peculiarity, WhiteSpaceIsTheLocales) {
  for (int byte = 0x80; byte < 0x100; ++byte) {
    std::string const letter(1, static_cast<char>(byte));
    std::string const reference = "&#" + std::to_string(byte) + ";";
    if (std::isspace(byte) != 0) {
      expectText("b" + letter + letter + "c" + letter, "b c");
      expectNoText(letter);
      expectNoText(reference);
      expectShape("<" + letter + "a b=c" + letter + "/>", "element \"a\" \"b\"=\"c\"\n");
    } else {
      expectText("b" + letter + "c", "b" + letter + "c");
      expectText(reference, letter);
      expectValue("c" + letter, "c" + letter);
    }
  }
}

// ---- Elements ----------------------------------------------------------------------------------

struct FirstChild {
  char const* content;
  char const* text;  // null: no child at all
};

TEST(Element, TextIsTheValueOfTheFirstChildWhateverThatIs) {
  for (FirstChild const& all : std::vector<FirstChild>{{"", nullptr},
                                                       {" &#32; ", nullptr},
                                                       {"<b>c</b>", "b"},
                                                       {"c<b/>", "c"},
                                                       {"<![CDATA[ <c> ]]>d", " <c> "},
                                                       {"<![CDATA[]]>d", ""},
                                                       {"<!-- c -->d", " c "},
                                                       {"<!c>d", "!c"},
                                                       {"<?c?>d", "?c?"},
                                                       {"<?xml version='1.0'?>d", ""},
                                                       {"c&#0;d", "c"},
                                                       {"&#0;d", ""}}) {
    std::string const text = "<a>"s + all.content + "</a>";
    Scanned const scanned(text);
    ASSERT_EQ(scanned->fault, Fault::none) << text;
    EXPECT_STREQ(firstElement(scanned.tree()).text(), all.text) << text;

    TiXmlDocument document;
    document.Parse(text.c_str());
    TiXmlNode const* const child = document.RootElement()->FirstChild();
    EXPECT_STREQ(child != nullptr ? child->Value() : nullptr, all.text) << text;
  }
  EXPECT_EQ(Element().text(), nullptr);
}

TEST(Element, AttributeIsFoundByItsWholeNameAndEndsAtAZeroByte) {
  Scanned const scanned("<a b='1' bb='2' B='' c='x&#0;y' \xC3\xA4=3><d b='4'/><e/></a>");
  Element const a = firstElement(scanned.tree());
  EXPECT_STREQ(a.attribute("b"), "1");
  EXPECT_STREQ(a.attribute("bb"), "2");
  EXPECT_STREQ(a.attribute("B"), "");
  EXPECT_STREQ(a.attribute("c"), "x");
  EXPECT_STREQ(a.attribute("\xC3\xA4"), "3");
  for (char const* const absent : {"", "bbb", "a", "C", "d"}) {
    EXPECT_EQ(a.attribute(absent), nullptr) << absent;
  }
  EXPECT_STREQ(a.firstChild().attribute("b"), "4");
  EXPECT_EQ(a.firstChild().attribute("bb"), nullptr);
  EXPECT_EQ(a.firstChild().nextSibling().attribute("b"), nullptr);
  EXPECT_EQ(Element().attribute("b"), nullptr);
}

TEST(Element, HasOnlyElementsForChildrenAndSiblings) {
  Scanned const scanned("<!--x--><a>t<!--x--><b>u</b>t<?xml?><c/><![CDATA[]]></a><!x><d/>t");
  Element const a = firstElement(scanned.tree());
  EXPECT_EQ(a.name(), "a");
  EXPECT_EQ(a.firstChild().name(), "b");
  EXPECT_FALSE(a.firstChild().firstChild());
  EXPECT_EQ(a.firstChild().nextSibling().name(), "c");
  EXPECT_FALSE(a.firstChild().nextSibling().firstChild());
  EXPECT_FALSE(a.firstChild().nextSibling().nextSibling());
  EXPECT_EQ(a.nextSibling().name(), "d");
  EXPECT_FALSE(a.nextSibling().nextSibling());
  EXPECT_FALSE(Element());
  EXPECT_FALSE(Element().firstChild());
}

TEST(Element, IsNoneWhereADocumentHasNone) {
  EXPECT_FALSE(firstElement(Scanned("<!-- x --><!y>").tree()));
  EXPECT_FALSE(firstElement(Scanned("").tree()));
}

// A host may have given an element more attributes than any text is let through with.
TEST(Element, MayHaveMoreAttributesThanSixteenBitsCount) {
  std::string const names = "first\0last"s;
  std::uint32_t const count = 65536 + 3;
  Tree tree(names.c_str(), names.size(), {});
  TreeBuilder builder(tree);
  tree.reserve(sizeof(Node) + count * sizeof(Attribute));
  std::uint32_t const element = builder.add(NodeKind::element, {5, 0}, 0, names.c_str());
  for (std::uint32_t i = 0; i < count; ++i) {
    tree.add(Attribute{i + 1 < count ? Piece{0, 5} : Piece{6, 4}, {5, 0}}, names.c_str());
  }
  EXPECT_STREQ(Element(tree, element).attribute("first"), "");
  EXPECT_STREQ(Element(tree, element).attribute("last"), "");
}

// ---- Memory ------------------------------------------------------------------------------------

std::string repeat(std::string_view piece, std::size_t times) {
  std::string text;
  while (times-- > 0) text += piece;
  return text;
}

// Texts that are little else than nodes or attributes, good ones and bad ones.
std::vector<std::string> denseTexts() {
  std::vector<std::string> texts;
  for (char const* const piece : {"<",
                                  ">",
                                  "<>",
                                  "<>x",
                                  "<a>",
                                  "<a/>",
                                  "<a/>x",
                                  "</a>",
                                  "<a></a>",
                                  "=",
                                  "<=>",
                                  "<a b=/>",
                                  "<a b=>",
                                  "<a b='' c=/>x",
                                  "<a b=c d=",
                                  "<?xml>",
                                  "<?xml>x",
                                  "<?xml version=>",
                                  "<?xml version= encoding= standalone=>",
                                  "<?xml version",
                                  "<!-->",
                                  "<!---->",
                                  "<!---->x",
                                  "<![CDATA[]]>",
                                  "<![CDATA[]]>x",
                                  "&#",
                                  "&#<a>#65;",
                                  "&#65;<>",
                                  "\xC3<",
                                  "\xF4<><"}) {
    for (char const* const start : {"", "<a>", "<a/>", "\xEF\xBB\xBF<a>", "<?xml?><a>", "<a "}) {
      for (char const* const end :
           {"", "</a>", "<", "<b", "<b c=''", "<?xml version", "<?xml x='"}) {
        for (std::size_t const times : {1U, 2U, 40U}) {
          texts.push_back(start + repeat(piece, times) + end);
        }
      }
    }
  }
  return texts;
}

TEST(TreeBound, IsNeverExceededByAnyTextGoodOrBad) {
  std::size_t good = 0;
  std::size_t bad = 0;
  std::vector<std::string> texts = denseTexts();
  test::NastyTexts nasty(20240713);
  for (int i = 0; i < 2000; ++i) texts.push_back(nasty.next());
  for (std::string const& text : texts) {
    Scanned const scanned(text, Tree::bound(text), test::lifted);
    EXPECT_FALSE(scanned.moved()) << testing::PrintToString(text);
    EXPECT_EQ(test::difference(text), "");
    (scanned->fault == Fault::none ? good : bad) += 1;
  }
  EXPECT_GT(good, 1000U);
  EXPECT_GT(bad, 1000U);
}

TEST(TreeBound, IsAtMostTwentyFourBytesForEachByteOfText) {
  constexpr std::size_t constant = 104;
  for (std::string const& text : denseTexts()) {
    EXPECT_LE(Tree::bound(text), 24 * text.size() + constant) << text;
  }
  EXPECT_LE(Tree::bound(""), constant);
  // The worst of all texts, which needs two thirds of it.
  std::string const worst = repeat("<>", 50000);
  EXPECT_GE(Tree::bound(worst), 24 * worst.size());
  std::string const most = "<a>" + repeat("<>x", 50000) + "</a>";
  Scanned const scanned(most);
  EXPECT_EQ(scanned->fault, Fault::none);
  EXPECT_GE(scanned.tree().nodes().size_bytes(), 16 * (most.size() - 10));
}

TEST(TreeBound, OfTwoTextsIsAtMostTheSumOfTheirs) {
  std::vector<std::string> const texts = denseTexts();
  for (std::size_t i = 0; i + 1 < texts.size(); ++i) {
    EXPECT_LE(Tree::bound(texts[i] + texts[i + 1]),
              Tree::bound(texts[i]) + Tree::bound(texts[i + 1]));
  }
}

TEST(TreeMemory, OfAnySizeAndWithAnyEndMakesTheSameTree) {
  std::string const text =
      "<?xml version='1' encoding='x'?><a b='c' d=e>f<g h=''/><i/><j k=l m='n'><o/></j>p</a><q/>";
  std::string const whole = shapeOf(Scanned(text).tree());
  for (std::size_t memory = 0; memory <= Tree::bound(text); ++memory) {
    Scanned const scanned(text, memory);
    EXPECT_EQ(shapeOf(scanned.tree()), whole) << memory;
    EXPECT_EQ(flawOf(scanned.tree(), text), "") << memory;
  }
}

TEST(TreeMemory, RefusesATextThatIsDeclaredTooLongBeforeItIsTouched) {
  Tree tree(nullptr, 0, {});
  Scan const refused = scan(nullptr, Tree::longestText + 1, tree);
  EXPECT_EQ(refused.fault, Fault::tooLong);
  EXPECT_TRUE(isHostile(refused.fault));
  EXPECT_TRUE(tree.nodes().empty());
}

// Pages that nobody touches cost nothing.
TEST(TreeMemory, TakesTheLongestText) {
  std::size_t const size = Tree::longestText + padding;
  void* const pages = ::mmap(nullptr, size, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (pages == MAP_FAILED) GTEST_SKIP() << "no such address space here";
  Tree tree(static_cast<char const*>(pages), 0, {});
  EXPECT_EQ(scan(static_cast<char*>(pages), Tree::longestText, tree).fault, Fault::empty);
  ::munmap(pages, size);
}

// ---- Heap --------------------------------------------------------------------------------------

using ReplyHeap = test::HeapTest;

std::size_t allocationsOf(std::function<void()> const& call) {
  test::Allocations const allocations;
  call();
  return allocations.made();
}

// What a reply asks of the heap, whichever way it comes.
void expectCalls(std::string const& text, std::size_t calls, Fault fault = Fault::none) {
  Fault found{};
  EXPECT_EQ(allocationsOf([&] { found = Reply(text.data(), text.size()).scan().fault; }), calls)
      << text.size();
  EXPECT_EQ(found, fault);
  std::wstring const wide(text.begin(), text.end());
  EXPECT_EQ(allocationsOf([&] { found = Reply(wide.data(), wide.size()).scan().fault; }), calls)
      << text.size();
  EXPECT_EQ(found, fault);
}

TEST_F(ReplyHeap, IsAskedForTheTextWhereItIsLongerThanTheStack) {
  auto const ofLength = [](std::size_t length) {
    return "<a>" + std::string(length - 7, 'x') + "</a>";
  };
  expectCalls(ofLength(PrivateText::shortText - 1), 0);
  expectCalls(ofLength(PrivateText::shortText), 0);
  expectCalls(ofLength(PrivateText::shortText + 1), 1);
}

TEST_F(ReplyHeap, IsAskedForTheNodesWhereTheyAreMoreThanTheStackHolds) {
  constexpr std::size_t most = std::tuple_size_v<NearNodes>;
  auto const ofNodes = [](std::size_t nodes) { return "<a>" + repeat("<b/>", nodes - 1) + "</a>"; };
  expectCalls(ofNodes(most - 1), 0);
  expectCalls(ofNodes(most), 0);
  expectCalls(ofNodes(most + 1), 1);
  // Three attributes take the place of two nodes.
  static_assert(3 * sizeof(Attribute) == 2 * sizeof(Node));
  std::string const start = "<a>" + repeat("<b/>", most - 4);
  expectCalls(start + "<b c='' d='' e=''/></a>", 0);
  expectCalls(start + "<b c='' d='' e='' f=''/></a>", 1);
  expectCalls(start + "<b c='' d='' e=''/>x</a>", 1);
}

// Wherever the stack ends within an element, what was read of it is there behind the move.
TEST_F(ReplyHeap, IsAskedForInTheMiddleOfAnElement) {
  constexpr std::size_t most = std::tuple_size_v<NearNodes>;
  for (std::string const element :
       {"<b c=\"d\">e</b>", "<b c=\"d\" f=\"g\"/>", "<b c='d'>e</b>", "<b c='d' f='g'/>"}) {
    for (std::size_t before = most - 8; before < most; ++before) {
      std::string const text = "<a>" + repeat("<x/>", before) + repeat(element, 8) + "</a>";
      expectCalls(text, 1);
      EXPECT_EQ(test::difference(text), "") << before << element;
      Reply const reply(text.data(), text.size());
      EXPECT_EQ(flawOf(reply.tree(), text), "") << before << element;
      std::size_t found = 0;
      for (Element b = firstElement(reply.tree()).firstChild(); b; b = b.nextSibling()) {
        found += b.attribute("c") != nullptr && std::string_view(b.attribute("c")) == "d";
      }
      EXPECT_EQ(found, 8U) << before << element;
    }
  }
}

// Hosts state a length of as many bytes as the widest characters may take.
TEST_F(ReplyHeap, IsNotAskedForAShortTextOfAsciiWhateverItsLength) {
  test::LocaleGuard const guard("C.UTF-8");
  for (std::size_t const size : {std::size_t{100}, std::size_t{2000}, PrivateText::shortText}) {
    std::wstring const text = L"<a>" + std::wstring(size - 7, L'x') + L"</a>";
    for (std::size_t const length : {size, size + 1, size * MB_CUR_MAX, std::size_t{INT_MAX}}) {
      Fault fault{};
      EXPECT_EQ(allocationsOf([&] { fault = Reply(text.c_str(), length).scan().fault; }), 0U);
      EXPECT_EQ(fault, Fault::none) << size << ' ' << length;
    }
  }
}

TEST_F(ReplyHeap, IsAskedTwiceAtTheMost) {
  expectCalls("<a>" + repeat("<b c='d'>e</b>", 10000) + "</a>", 2);
  expectCalls("<a>" + repeat("<b c='d'>e</b>", 10000), 2, Fault::endsInElement);
  expectCalls("<a>" + repeat("<>x", 100000) + "&#z;</a>", 2, Fault::badReference);
  expectCalls(repeat("<a>", 10000), 1, Fault::tooDeep);
  expectCalls("<a>" + std::string(1000000, 'x') + "</a>", 1);
  test::NastyTexts nasty(4711);
  for (int i = 0; i < 300; ++i) {
    std::string const text = "<a>" + repeat("<b/>", 599) + nasty.next() + nasty.next();
    EXPECT_LE(allocationsOf([&] { Reply(text.data(), text.size()); }), 2U) << text;
  }
}

// ---- The check of the checker ------------------------------------------------------------------

// One node of every kind; elements with attributes, texts and children, and without.
std::string const sound =
    "<?xml version='1.0' encoding='x'?><a bc='de' fg=\"hi\">jk<l>mn</l><o/><!--pq--><![CDATA[rs]]>"
    "<tu vw='xy'><z>12</z></tu><!34></a><56> 7";

// Whether it shows when `spoil` has changed one thing in that tree.
std::string flawAfter(std::function<void(Tree&)> const& spoil) {
  Scanned scanned(sound);
  spoil(scanned.tree());
  return flawOf(scanned.tree(), sound);
}

using Number = std::uint32_t;

std::vector<Number> wrongOnes(Number right) {
  std::vector<Number> numbers = {0, right + 1, right - 1, right + 2, right - 2, 1000, UINT32_MAX};
  numbers.erase(std::remove(numbers.begin(), numbers.end(), right), numbers.end());
  return numbers;
}

struct NodeNumber {
  char const* name;
  Number& (*of)(Node&);
};
constexpr NodeNumber nodeNumbers[] = {
    {"value.at", [](Node& node) -> Number& { return node.value.at; }},
    {"value.length", [](Node& node) -> Number& { return node.value.length; }},
    {"offset", [](Node& node) -> Number& { return node.offset; }},
    {"attribute", [](Node& node) -> Number& { return node.attribute; }}};

struct AttributeNumber {
  char const* name;
  Number& (*of)(Attribute&);
};
constexpr AttributeNumber attributeNumbers[] = {
    {"name.at", [](Attribute& attribute) -> Number& { return attribute.name.at; }},
    {"name.length", [](Attribute& attribute) -> Number& { return attribute.name.length; }},
    {"value.at", [](Attribute& attribute) -> Number& { return attribute.value.at; }},
    {"value.length", [](Attribute& attribute) -> Number& { return attribute.value.length; }}};

TEST(TreeFlaws, AreNoneInASoundTree) {
  Scanned const scanned(sound);
  EXPECT_EQ(scanned.tree().nodes().size(), 13U);
  EXPECT_EQ(scanned.tree().attributeCount(), 5U);
  EXPECT_EQ(flawAfter([](Tree&) {}), "");
}

TEST(TreeFlaws, ShowWhereANumberOfANodeIsWrong) {
  Number const nodes = static_cast<Number>(Scanned(sound).tree().nodes().size());
  for (Number node = 0; node < nodes; ++node) {
    for (NodeNumber const& number : nodeNumbers) {
      for (Number const wrong : wrongOnes(number.of(Scanned(sound).tree().at(node)))) {
        EXPECT_NE(flawAfter([&](Tree& tree) { number.of(tree.at(node)) = wrong; }), "")
            << number.name << " of node " << node << " is " << wrong;
      }
    }
  }
}

TEST(TreeFlaws, ShowWhereAKindOrAFlagOfANodeIsWrong) {
  Number const nodes = static_cast<Number>(Scanned(sound).tree().nodes().size());
  for (Number node = 0; node < nodes; ++node) {
    Node const right = Scanned(sound).tree().node(node);
    for (NodeKind const kind : {NodeKind::element, NodeKind::text, NodeKind::cdata,
                                NodeKind::comment, NodeKind::unknown, NodeKind::declaration}) {
      bool const same = kind == right.kind;
      EXPECT_EQ(flawAfter([&](Tree& tree) { tree.at(node).kind = kind; }).empty(), same) << node;
    }
    EXPECT_NE(flawAfter([&](Tree& tree) { tree.at(node).hasChild = !right.hasChild; }), "") << node;
  }
}

TEST(TreeFlaws, ShowWhereANumberOfAnAttributeIsWrong) {
  Number const declared = Scanned(sound).tree().attributesOf(0);
  for (Number i = declared; i < Scanned(sound).tree().attributeCount(); ++i) {
    for (AttributeNumber const& number : attributeNumbers) {
      for (Number const wrong : wrongOnes(number.of(Scanned(sound).tree().attributeAt(i)))) {
        EXPECT_NE(flawAfter([&](Tree& tree) { number.of(tree.attributeAt(i)) = wrong; }), "")
            << number.name << " of attribute " << i << " is " << wrong;
      }
    }
  }
}

// A wrong link may make another tree that is one, with which every test compares the dump.
TEST(TreeFlaws, OrAnotherDumpShowWhereALinkIsWrong) {
  std::string const right = shapeOf(Scanned(sound).tree());
  Number const nodes = static_cast<Number>(Scanned(sound).tree().nodes().size());
  std::size_t flaws = 0;
  std::size_t others = 0;
  for (Number node = 0; node < nodes; ++node) {
    for (Number wrong = 0; wrong <= nodes + 1; ++wrong) {
      if (wrong == Scanned(sound).tree().node(node).next) continue;
      Scanned scanned(sound);
      scanned.tree().at(node).next = wrong;
      bool const flawed = !flawOf(scanned.tree(), sound).empty();
      EXPECT_TRUE(flawed || shapeOf(scanned.tree()) != right) << node << " to " << wrong;
      (flawed ? flaws : others) += 1;
    }
  }
  EXPECT_GT(flaws, 10 * others);
}

// What stands in a declaration's words has no order and no end of its own.
TEST(TreeFlaws, ShowWhereAWordOfADeclarationStrays) {
  for (Number const wrong : {Number{1000}, UINT32_MAX}) {
    EXPECT_NE(flawAfter([&](Tree& tree) { tree.attributeAt(0).value.at = wrong; }), "");
    EXPECT_NE(flawAfter([&](Tree& tree) { tree.attributeAt(0).value.length = wrong; }), "");
    EXPECT_NE(flawAfter([&](Tree& tree) { tree.attributeAt(0).name.length = wrong; }), "");
  }
}

}  // namespace

}  // namespace Kovra::frame

#include "kvxhelper.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <climits>
#include <cstring>
#include <functional>
#include <iterator>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/tree.hpp"

namespace Kovra {
namespace {

using test::AttributeElement;
using test::filled;
using test::printed;
using test::same;
using test::TextElement;
using test::Tree;
using test::untouched;

TiXmlElement* const noElement = nullptr;
using Buffer = std::array<char, 16>;

/// What reading into a sentinel gave.
template <class Value>
struct Got {
  bool result;
  Value value;
};

template <class Value, class Read>
Got<Value> got(Read read) {
  auto value = filled<Value>();
  bool const result = read(value);
  return {result, value};
}

/// A buffer that holds `text` and a terminator, and the sentinel everywhere else.
Buffer holding(std::string const& text) {
  auto buffer = filled<Buffer>();
  std::memcpy(buffer.data(), text.c_str(), text.size() + 1);
  return buffer;
}

// ---- Text of an element ----------------------------------------------------------------------

Got<Buffer> textOf(TiXmlElement* element, int length) {
  return got<Buffer>([&](Buffer& out) { return KVXHelper::GetString(element, out[0], length); });
}

TEST(GetStringOfText, CopiesTheWholeTextWithItsTerminatorAndNothingBehind) {
  auto const [result, buffer] = textOf(Tree("<e>ribbon</e>").root(), 16);
  EXPECT_TRUE(result);
  EXPECT_TRUE(same(buffer, holding("ribbon")));
}

TEST(GetStringOfText, CutsATextThatDoesNotFit) {
  struct {
    char const* text;
    char const* kept;
  } const cases[] = {{"", ""},
                     {"1234567", "1234567"},    // with the terminator it just fits
                     {"12345678", "1234567"},   // all but the terminator would fit
                     {"123456789", "1234567"},  // longer
                     {"12345678901234567890", "1234567"}};
  for (auto const& [text, kept] : cases) {
    auto const [result, buffer] = textOf(TextElement(text).get(), 8);
    EXPECT_TRUE(result) << text;
    EXPECT_TRUE(same(buffer, holding(kept))) << text;
  }
}

TEST(GetStringOfText, StoresOnlyTheTerminatorWhenThatIsAllThatFits) {
  auto const [result, buffer] = textOf(TextElement("x").get(), 1);
  EXPECT_TRUE(result);
  EXPECT_TRUE(same(buffer, holding("")));
}

TEST(GetStringOfText, StoresNothingWhenNotEvenTheTerminatorFits) {
  for (int const length : {0, -1, INT_MIN}) {
    auto const [result, buffer] = textOf(TextElement("x").get(), length);
    EXPECT_FALSE(result) << length;
    EXPECT_TRUE(untouched(buffer)) << length;
  }
}

TEST(GetStringOfText, TakesTheFirstChildWhateverItIs) {
  struct {
    char const* xml;
    char const* text;
  } const cases[] = {{"<e>text<f/></e>", "text"},
                     {"<e><f>inner</f>text</e>", "f"},
                     {"<e><!--remark-->text</e>", "remark"},
                     {"<e><![CDATA[<raw>]]>text</e>", "<raw>"},
                     {"<e>a &lt; b</e>", "a < b"}};
  for (auto const& [xml, text] : cases) {
    auto const [result, buffer] = textOf(Tree(xml).root(), 16);
    EXPECT_TRUE(result) << xml;
    EXPECT_TRUE(same(buffer, holding(text))) << xml;
  }
}

// What every reader of texts has in common: it needs a first child.

struct TextReader {
  char const* name;
  /// Reads into a sentinel; true when the result is as given and the sentinel is still whole.
  std::function<bool(TiXmlElement*)> keepsTargetAndFails;
};

template <class Value, class Read>
TextReader textReader(char const* name, Read read) {
  return {name, [read](TiXmlElement* element) {
            auto const [result, value] = got<Value>([&](Value& out) { return read(element, out); });
            return !result && untouched(value);
          }};
}

template <class Number>
TextReader numberReader(char const* name) {
  return textReader<Number>(name, [](TiXmlElement* element, Number& out) {
    return KVXHelper::GetNumber(element, out, true);
  });
}

std::vector<TextReader> textReaders() {
  return {textReader<Buffer>("GetString",
                             [](TiXmlElement* element, Buffer& out) {
                               return KVXHelper::GetString(element, out[0],
                                                           static_cast<int>(out.size()));
                             }),
          textReader<char>("GetBool", [](TiXmlElement* element,
                                         char& out) { return KVXHelper::GetBool(element, out); }),
          textReader<std::array<unsigned char, 6>>(
              "GetPhysicalAddress",
              [](TiXmlElement* element, std::array<unsigned char, 6>& out) {
                return KVXHelper::GetPhysicalAddress(element, out.data());
              }),
          numberReader<int>("int"),
          numberReader<unsigned short>("unsigned short"),
          numberReader<unsigned long>("unsigned long"),
          numberReader<unsigned int>("unsigned int"),
          numberReader<long>("long"),
          numberReader<float>("float")};
}

TEST(TextReaders, KeepTheTargetOfAnEmptyElement) {
  for (TextReader const& reader : textReaders()) {
    for (char const* const xml : {"<e/>", "<e></e>", "<e> </e>", "<e a='5'/>"}) {
      EXPECT_TRUE(reader.keepsTargetAndFails(Tree(xml).root())) << reader.name << " of " << xml;
    }
  }
}

TEST(TextReaders, KeepTheTargetOfANullElement) {
  for (TextReader const& reader : textReaders()) {
    EXPECT_TRUE(reader.keepsTargetAndFails(noElement)) << reader.name;
  }
}

// ---- Flags in texts --------------------------------------------------------------------------

struct FlagCase {
  std::string text;
  bool flag;
};

/// Only the two words themselves, letter by letter, mean true.
std::vector<FlagCase> flagCases() {
  return {{"enabled", true},
          {"yes", true},
          {"Enabled", false},
          {"ENABLED", false},
          {"Yes", false},
          {"YES", false},
          {"TRUE", false},
          {"true", false},
          {"1", false},
          {"on", false},
          {"no", false},
          {"disabled", false},
          {"", false},
          {"yes ", false},
          {" yes", false},
          {"yess", false},
          {"enable", false},
          {"yes" + std::string(100, ' '), false},
          {std::string(100, 'y'), false}};
}

TEST(GetBoolOfText, KnowsTwoWordsForTrue) {
  for (auto const& [text, flag] : flagCases()) {
    TextElement element(text);
    auto const [result, value] =
        got<char>([&](char& out) { return KVXHelper::GetBool(element.get(), out); });
    EXPECT_TRUE(result) << text;
    EXPECT_EQ(value, flag ? 1 : 0) << text;
  }
}

TEST(GetBoolOfText, StoresBoolsByTheSameWords) {
  for (auto const& [text, flag] : flagCases()) {
    TextElement element(text);
    bool value = !flag;
    EXPECT_TRUE(KVXHelper::GetBool(element.get(), value)) << text;
    EXPECT_EQ(value, flag) << text;
  }
}

TEST(GetBoolOfText, ClearsABoolWhenThereIsNoText) {
  bool empty = true;
  EXPECT_FALSE(KVXHelper::GetBool(Tree("<e/>").root(), empty));
  EXPECT_FALSE(empty);
  bool missing = true;
  EXPECT_FALSE(KVXHelper::GetBool(noElement, missing));
  EXPECT_FALSE(missing);
}

TEST(GetBoolOfText, ReadsTheNameOfAnElementThatStandsFirst) {
  char flag = 0;
  EXPECT_TRUE(KVXHelper::GetBool(Tree("<e><yes>no</yes></e>").root(), flag));
  EXPECT_EQ(flag, 1);
}

// ---- Numbers in texts ------------------------------------------------------------------------

template <class Number>
Got<Number> numberOf(char const* text, bool flag) {
  TextElement element(text);
  return got<Number>([&](Number& out) { return KVXHelper::GetNumber(element.get(), out, flag); });
}

template <class Number>
struct NumberCase {
  char const* text;
  Number number;
};

template <class Number>
void expectNumbers(std::initializer_list<NumberCase<Number>> cases) {
  for (auto const& [text, number] : cases) {
    for (bool const ignored : {false, true}) {
      auto const [result, value] = numberOf<Number>(text, ignored);
      EXPECT_TRUE(result) << '"' << text << '"';
      EXPECT_EQ(value, number) << '"' << text << '"';
    }
  }
}

TEST(GetNumber, ReadsInts) {
  expectNumbers<int>({{"42", 42},
                      {"-42", -42},
                      {"+7", 7},
                      {"007", 7},
                      {"  42xyz", 42},
                      {"\t\n 42", 42},
                      {"12abc", 12},
                      {"12 34", 12},
                      {"3.9", 3},
                      {"2147483647", INT_MAX},
                      {"-2147483648", INT_MIN}});
}

TEST(GetNumber, ReadsNoNumberAsZero) {
  char const* const texts[] = {"", "abc", "-", "+", " ", "x1", "- 5", "0x1A", "..5"};
  for (char const* const text : texts) {
    expectNumbers<int>({{text, 0}});
    expectNumbers<unsigned short>({{text, 0}});
    expectNumbers<unsigned long>({{text, 0}});
    expectNumbers<unsigned int>({{text, 0}});
    expectNumbers<long>({{text, 0}});
  }
}

TEST(GetNumber, KeepsTheLow32BitsOfAnInt) {
  expectNumbers<int>({{"2147483648", INT_MIN},
                      {"4294967295", -1},
                      {"4294967296", 0},
                      {"4294967338", 42},
                      {"-2147483649", INT_MAX},
                      {"99999999999999999999", -1}});  // the C library stops at LONG_MAX
}

TEST(GetNumber, KeepsTheLow16BitsOfAnUnsignedShort) {
  expectNumbers<unsigned short>(
      {{"65535", 65535}, {"65536", 0}, {"70000", 4464}, {"-1", 65535}, {" 12abc", 12}});
}

TEST(GetNumber, KeepsOnlyTheLow16BitsOfAnUnsignedLong) {
  expectNumbers<unsigned long>({{"65535", 65535},
                                {"65536", 0},
                                {"65537", 1},
                                {"70000", 4464},
                                {"-1", 65535},
                                {"4294967295", 65535},
                                {" 12abc", 12}});
}

TEST(GetNumber, KeepsTheLow32BitsOfAnUnsignedInt) {
  expectNumbers<unsigned int>({{"70000", 70000U},
                               {"4294967295", 4294967295U},
                               {"4294967296", 0U},
                               {"-1", 4294967295U},
                               {" 12abc", 12U}});
}

TEST(GetNumber, ReadsALongWhole) {
  expectNumbers<long>({{"70000", 70000},
                       {"4294967296", 4294967296},
                       {"9223372036854775807", LONG_MAX},
                       {"-9223372036854775808", LONG_MIN},
                       {"9223372036854775808", LONG_MAX},
                       {"-9223372036854775809", LONG_MIN},
                       {" -12abc", -12}});
}

TEST(GetNumber, ReadsFloats) {
  float const infinity = std::numeric_limits<float>::infinity();
  expectNumbers<float>({{"2.5", 2.5F},
                        {"-2.5xyz", -2.5F},
                        {"  +1e3", 1000.0F},
                        {"0.1", 0.1F},
                        {".5", 0.5F},
                        {"7", 7.0F},
                        {"0x10", 16.0F},
                        {"1,5", 1.0F},
                        {"340282346638528859811704183484516925440", FLT_MAX},
                        {"1e300", infinity},
                        // Just above the middle of two floats, yet a double in the middle.
                        {"1.0000000596046447753906251", 1.0F},
                        {"abc", 0.0F},
                        {"", 0.0F},
                        {"-", 0.0F}});
}

TEST(GetNumber, ReadsTheFirstChildWhateverItIs) {
  struct {
    char const* xml;
    int number;
  } const cases[] = {{"<e><!-- 12 -->34</e>", 12},
                     {"<e><![CDATA[56]]></e>", 56},
                     {"<e><seven>7</seven></e>", 0},
                     {"<e>  42xyz</e>", 42}};
  for (auto const& [xml, number] : cases) {
    int value = -1;
    EXPECT_TRUE(KVXHelper::GetNumber(Tree(xml).root(), value, false)) << xml;
    EXPECT_EQ(value, number) << xml;
  }
}

// ---- Hardware addresses ----------------------------------------------------------------------

TEST(GetPhysicalAddress, ReadsSixFieldsAndStoresSixBytes) {
  struct {
    char const* text;
    std::array<unsigned char, 6> bytes;
  } const cases[] = {{"00:1a:2b:3c:4d:5e", {0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}},
                     {"FF:EE:DD:CC:BB:AA", {0xFF, 0xEE, 0xDD, 0xCC, 0xBB, 0xAA}},
                     {"00:1A:2b", {0x00, 0x1A, 0x2B, 0, 0, 0}},
                     {"1:2:3:4:5:6", {1, 2, 3, 4, 5, 6}},
                     {"01:02:03:04:05:06:07", {1, 2, 3, 4, 5, 6}},
                     {"01:02:zz:04:05:06", {1, 2, 0, 0, 0, 0}},
                     {"01-02-03-04-05-06", {1, 0, 0, 0, 0, 0}},
                     {"123:45", {0x12, 0, 0, 0, 0, 0}},
                     {"-1:02", {0xFF, 2, 0, 0, 0, 0}},  // only the low byte of a field counts
                     {"none", {0, 0, 0, 0, 0, 0}},
                     {"", {0, 0, 0, 0, 0, 0}}};
  for (auto const& [text, bytes] : cases) {
    auto expected = filled<std::array<unsigned char, 8>>();
    std::copy(bytes.begin(), bytes.end(), expected.begin());
    auto stored = filled<std::array<unsigned char, 8>>();
    EXPECT_TRUE(KVXHelper::GetPhysicalAddress(TextElement(text).get(), stored.data())) << text;
    EXPECT_TRUE(same(stored, expected)) << text;
  }
}

TEST(GetPhysicalAddress, FailsWithoutATarget) {
  EXPECT_FALSE(KVXHelper::GetPhysicalAddress(TextElement("01:02").get(), nullptr));
}

// ---- Attributes ------------------------------------------------------------------------------

/// Each reader of attributes with a sentinel to read into.
template <class Expect>
void withEachAttributeReader(Expect expect) {
  expect("GetString", [](TiXmlElement* element, char* name) {
    return got<Buffer>([&](Buffer& out) {
      return KVXHelper::GetString(element, name, out.data(), static_cast<int>(out.size()));
    });
  });
  expect("GetNumberFromAttr(int)", [](TiXmlElement* element, char* name) {
    return got<int>([&](int& out) { return KVXHelper::GetNumberFromAttr(element, name, out); });
  });
  expect("GetNumberFromAttr(float)", [](TiXmlElement* element, char* name) {
    return got<float>([&](float& out) { return KVXHelper::GetNumberFromAttr(element, name, out); });
  });
  expect("GetInt", [](TiXmlElement* element, char* name) {
    return got<int>([&](int& out) { return KVXHelper::GetInt(element, name, out); });
  });
  expect("GetShort", [](TiXmlElement* element, char* name) {
    return got<unsigned short>(
        [&](unsigned short& out) { return KVXHelper::GetShort(element, name, out); });
  });
  expect("GetBool", [](TiXmlElement* element, char* name) {
    return got<char>([&](char& out) { return KVXHelper::GetBool(element, name, out); });
  });
  expect("GetIP", [](TiXmlElement* element, char* name) {
    return got<unsigned long>(
        [&](unsigned long& out) { return KVXHelper::GetIP(element, name, out); });
  });
}

TEST(AttributeReaders, KeepTheTargetWhenThereIsNothingToRead) {
  withEachAttributeReader([](char const* name, auto read) {
    char present[] = "a";
    char otherCase[] = "A";
    AttributeElement element("1");
    Tree textOnly("<e>1</e>");
    auto const expectNothing = [&](auto const& outcome, char const* what) {
      EXPECT_FALSE(outcome.result) << name << " of " << what;
      EXPECT_TRUE(untouched(outcome.value)) << name << " of " << what;
    };
    expectNothing(read(nullptr, present), "a null element");
    expectNothing(read(textOnly.root(), present), "an element without attributes");
    expectNothing(read(element.get(), otherCase), "an attribute of another name");
    expectNothing(read(element.get(), nullptr), "a null name");
  });
}

Got<Buffer> attributeOf(TiXmlElement* element, int length) {
  return got<Buffer>(
      [&](Buffer& out) { return KVXHelper::GetString(element, "a", out.data(), length); });
}

TEST(GetStringOfAttribute, CopiesTheWholeValueWithItsTerminatorAndNothingBehind) {
  auto const [result, buffer] = attributeOf(Tree("<e b='x' a=' two  blanks '/>").root(), 16);
  EXPECT_TRUE(result);
  EXPECT_TRUE(same(buffer, holding(" two  blanks ")));
}

TEST(GetStringOfAttribute, CutsAValueThatDoesNotFit) {
  struct {
    char const* value;
    char const* kept;
  } const cases[] = {{"", ""},
                     {"1234567", "1234567"},
                     {"12345678", "1234567"},
                     {"12345678901234567890", "1234567"}};
  for (auto const& [value, kept] : cases) {
    auto const [result, buffer] = attributeOf(AttributeElement(value).get(), 8);
    EXPECT_TRUE(result) << value;
    EXPECT_TRUE(same(buffer, holding(kept))) << value;
  }
}

TEST(GetStringOfAttribute, StoresNothingWhenNotEvenTheTerminatorFits) {
  for (int const length : {0, -1, INT_MIN}) {
    auto const [result, buffer] = attributeOf(AttributeElement("x").get(), length);
    EXPECT_FALSE(result) << length;
    EXPECT_TRUE(untouched(buffer)) << length;
  }
}

TEST(GetStringOfAttribute, FailsWithoutATarget) {
  EXPECT_FALSE(KVXHelper::GetString(AttributeElement("x").get(), "a", nullptr, 8));
}

TEST(NumberAttributes, ReadDecimalIntegers) {
  struct {
    char const* value;
    int number;
  } const cases[] = {{"42", 42},
                     {"-42", -42},
                     {"+7", 7},
                     {" 42xyz", 42},
                     {"3.9", 3},
                     {"0x1A", 0},
                     {"010", 10},
                     {"2147483647", INT_MAX},
                     {"-2147483648", INT_MIN}};
  for (auto const& [value, number] : cases) {
    AttributeElement element(value);
    auto const viaNumber =
        got<int>([&](int& out) { return KVXHelper::GetNumberFromAttr(element.get(), "a", out); });
    auto const viaInt =
        got<int>([&](int& out) { return KVXHelper::GetInt(element.get(), "a", out); });
    EXPECT_TRUE(viaNumber.result) << value;
    EXPECT_EQ(viaNumber.value, number) << value;
    EXPECT_TRUE(viaInt.result) << value;
    EXPECT_EQ(viaInt.value, number) << value;
  }
}

TEST(NumberAttributes, ReadFloats) {
  struct {
    char const* value;
    float number;
  } const cases[] = {{"2.5", 2.5F},
                     {"-1e3", -1000.0F},
                     {" 0.1xyz", 0.1F},
                     {"7", 7.0F},
                     {"1.0000000596046447753906251", 1.0F}};
  for (auto const& [value, number] : cases) {
    AttributeElement element(value);
    auto const [result, stored] = got<float>(
        [&](float& out) { return KVXHelper::GetNumberFromAttr(element.get(), "a", out); });
    EXPECT_TRUE(result) << value;
    EXPECT_EQ(stored, number) << value;
  }
}

TEST(NumberAttributes, KeepTheTargetWhenTheValueIsNoNumber) {
  for (char const* const value : {"", "x", "-", "abc1", " ", "e5", ".", "+.", "--1"}) {
    AttributeElement element(value);
    auto const number =
        got<int>([&](int& out) { return KVXHelper::GetNumberFromAttr(element.get(), "a", out); });
    auto const integer =
        got<int>([&](int& out) { return KVXHelper::GetInt(element.get(), "a", out); });
    auto const real = got<float>(
        [&](float& out) { return KVXHelper::GetNumberFromAttr(element.get(), "a", out); });
    EXPECT_FALSE(number.result || integer.result || real.result) << '"' << value << '"';
    EXPECT_TRUE(untouched(number.value)) << '"' << value << '"';
    EXPECT_TRUE(untouched(integer.value)) << '"' << value << '"';
    EXPECT_TRUE(untouched(real.value)) << '"' << value << '"';
  }
}

TEST(NumberAttributes, OfFloatsAreNotReadWhereAHexadecimalHasNoDigits) {
  for (char const* const value : {"0x", "-0x", "0X", "0xg"}) {
    AttributeElement element(value);
    auto const real = got<float>(
        [&](float& out) { return KVXHelper::GetNumberFromAttr(element.get(), "a", out); });
    EXPECT_FALSE(real.result) << value;
    EXPECT_TRUE(untouched(real.value)) << value;
  }
  AttributeElement element("0x1p1");
  auto const real =
      got<float>([&](float& out) { return KVXHelper::GetNumberFromAttr(element.get(), "a", out); });
  EXPECT_TRUE(real.result);
  EXPECT_EQ(real.value, 2.0F);
}

Got<unsigned short> shortOf(std::string const& value) {
  AttributeElement element(value);
  return got<unsigned short>(
      [&](unsigned short& out) { return KVXHelper::GetShort(element.get(), "a", out); });
}

TEST(GetShort, ReadsUnsignedDecimals) {
  struct {
    std::string value;
    unsigned short number;
  } const cases[] = {{"0", 0},
                     {"65535", 65535},
                     {" 12abc", 12},
                     {"65536", 0},
                     {"70000", 4464},
                     {"-1", 65535},
                     {std::string(30, '0') + "7", 7},   // the last of 31 characters
                     {std::string(31, '0') + "7", 0}};  // what stands behind them is not read
  for (auto const& [value, number] : cases) {
    auto const [result, stored] = shortOf(value);
    EXPECT_TRUE(result) << value;
    EXPECT_EQ(stored, number) << value;
  }
}

TEST(GetShort, SucceedsAndKeepsTheTargetWhenTheValueIsNoNumber) {
  for (char const* const value : {"x", "", "-", " "}) {
    auto const [result, stored] = shortOf(value);
    EXPECT_TRUE(result) << '"' << value << '"';
    EXPECT_TRUE(untouched(stored)) << '"' << value << '"';
  }
}

TEST(GetBoolOfAttribute, KnowsTwoWordsForTrue) {
  for (auto const& [value, flag] : flagCases()) {
    AttributeElement element(value);
    auto const [result, stored] =
        got<char>([&](char& out) { return KVXHelper::GetBool(element.get(), "a", out); });
    EXPECT_TRUE(result) << value;
    EXPECT_EQ(stored, flag ? 1 : 0) << value;
  }
}

TEST(GetIP, NeverReadsAnything) {
  for (char const* const value : {"192.168.0.1", "0", "", "x"}) {
    AttributeElement element(value);
    auto const [result, stored] = got<unsigned long>(
        [&](unsigned long& out) { return KVXHelper::GetIP(element.get(), "a", out); });
    EXPECT_FALSE(result) << value;
    EXPECT_TRUE(untouched(stored)) << value;
  }
}

// ---- Adding children -------------------------------------------------------------------------

/// What `add` makes of an element `p`, as text; an operation that fails shows.
template <class Add>
std::string added(Add add) {
  TiXmlElement parent("p");
  bool const result = add(&parent);
  return (result ? "" : "failed: ") + printed(parent);
}

TEST(AddTag, AddsAnEmptyChildAndReturnsIt) {
  TiXmlElement parent("p");
  TiXmlElement* const child = KVXHelper::AddTag(&parent, "n");
  ASSERT_NE(child, nullptr);
  EXPECT_EQ(child->Parent(), &parent);
  EXPECT_EQ(child->FirstChild(), nullptr);
  EXPECT_EQ(child->FirstAttribute(), nullptr);
  EXPECT_EQ(printed(parent), "<p><n /></p>");
}

TEST(AddTag, AppendsInTheOrderOfTheCalls) {
  TiXmlElement parent("p");
  EXPECT_TRUE(KVXHelper::AddTagNumber(&parent, "a", 1));
  TiXmlElement* const group = KVXHelper::AddTag(&parent, "b");
  EXPECT_TRUE(KVXHelper::AddTagBool(group, "c", 1));
  EXPECT_TRUE(KVXHelper::AddTagString(&parent, "a", "again"));
  EXPECT_TRUE(KVXHelper::AddTagNumber(group, "d", 2));
  EXPECT_EQ(printed(parent), "<p><a>1</a><b><c>yes</c><d>2</d></b><a>again</a></p>");
}

TEST(AddTagString, AddsTheTextAsItIs) {
  auto const text = [](char const* value) {
    return added([&](TiXmlElement* p) { return KVXHelper::AddTagString(p, "n", value); });
  };
  EXPECT_EQ(text("ribbon"), "<p><n>ribbon</n></p>");
  EXPECT_EQ(text("  two  blanks "), "<p><n>  two  blanks </n></p>");
  EXPECT_EQ(text("a<b>&\"c'"), "<p><n>a&lt;b&gt;&amp;&quot;c&apos;</n></p>");
  EXPECT_EQ(text("]]>"), "<p><n>]]&gt;</n></p>");
  EXPECT_EQ(text("\xC3\xA9"), "<p><n>\xC3\xA9</n></p>");
  EXPECT_EQ(text(""), "<p><n></n></p>");
}

TEST(AddTagString, LinksOneOrdinaryTextNode) {
  TiXmlElement parent("p");
  ASSERT_TRUE(KVXHelper::AddTagString(&parent, "n", "<raw>"));
  TiXmlNode const* const child = parent.FirstChild()->FirstChild();
  ASSERT_NE(child, nullptr);
  ASSERT_NE(child->ToText(), nullptr);
  EXPECT_FALSE(child->ToText()->CDATA());
  EXPECT_STREQ(child->Value(), "<raw>");
  EXPECT_EQ(child->NextSibling(), nullptr);
}

TEST(AddTagString, AddsALongTextWhole) {
  std::string const text(100000, 'x');
  EXPECT_EQ(added([&](TiXmlElement* p) { return KVXHelper::AddTagString(p, "n", text.c_str()); }),
            "<p><n>" + text + "</n></p>");
}

TEST(AddTagNumber, PrintsDecimals) {
  auto const text = [](int value) {
    return added([&](TiXmlElement* p) { return KVXHelper::AddTagNumber(p, "n", value); });
  };
  EXPECT_EQ(text(0), "<p><n>0</n></p>");
  EXPECT_EQ(text(-7), "<p><n>-7</n></p>");
  EXPECT_EQ(text(INT_MAX), "<p><n>2147483647</n></p>");
  EXPECT_EQ(text(INT_MIN), "<p><n>-2147483648</n></p>");
}

TEST(AddTagUnsigned, PrintsDecimals) {
  auto const text = [](unsigned int value) {
    return added([&](TiXmlElement* p) { return KVXHelper::AddTagUnsigned(p, "n", value); });
  };
  EXPECT_EQ(text(0), "<p><n>0</n></p>");
  EXPECT_EQ(text(UINT_MAX), "<p><n>4294967295</n></p>");
}

TEST(AddTagLong, PrintsDecimals) {
  auto const text = [](long value) {
    return added([&](TiXmlElement* p) { return KVXHelper::AddTagLong(p, "n", value); });
  };
  EXPECT_EQ(text(0), "<p><n>0</n></p>");
  EXPECT_EQ(text(LONG_MAX), "<p><n>9223372036854775807</n></p>");
  EXPECT_EQ(text(LONG_MIN), "<p><n>-9223372036854775808</n></p>");
}

TEST(AddTagFloat, PrintsFourDecimals) {
  auto const text = [](float value) {
    return added([&](TiXmlElement* p) { return KVXHelper::AddTagFloat(p, "n", value); });
  };
  EXPECT_EQ(text(1.5F), "<p><n>1.5000</n></p>");
  EXPECT_EQ(text(-0.00004F), "<p><n>-0.0000</n></p>");
  EXPECT_EQ(text(0.00006F), "<p><n>0.0001</n></p>");
  EXPECT_EQ(text(FLT_MAX), "<p><n>340282346638528859811704183484516925440.0000</n></p>");
  EXPECT_EQ(text(-FLT_MAX), "<p><n>-340282346638528859811704183484516925440.0000</n></p>");
}

TEST(AddTagDouble, PrintsSixDecimals) {
  auto const text = [](double value) {
    return added([&](TiXmlElement* p) { return KVXHelper::AddTagDouble(p, "n", value); });
  };
  EXPECT_EQ(text(1.5), "<p><n>1.500000</n></p>");
  EXPECT_EQ(text(-2.0 / 3), "<p><n>-0.666667</n></p>");
  EXPECT_EQ(text(-DBL_MAX),
            "<p><n>-"
            "17976931348623157081452742373170435679807056752584499659891747680315726078002853"
            "87605895586327668781715404589535143824642343213268894641827684675467035375169860"
            "49910576551282076245490090389328944075868508455133942304583236903222948165808559"
            "332123348274797826204144723168738177180919299881250404026184124858368"
            ".000000</n></p>");
}

TEST(AddTagBool, SaysYesForAnythingButZero) {
  auto const text = [](long flag) {
    return added([&](TiXmlElement* p) { return KVXHelper::AddTagBool(p, "n", flag); });
  };
  for (long const flag : {1L, 2L, -1L, 256L, 4294967296L, LONG_MIN}) {
    EXPECT_EQ(text(flag), "<p><n>yes</n></p>") << flag;
  }
  EXPECT_EQ(text(0), "<p><n>no</n></p>");
}

TEST(AddTagPhysicalAddress, PrintsSixLowerCaseFields) {
  auto const text = [](std::array<unsigned char, 6> const& address) {
    return added(
        [&](TiXmlElement* p) { return KVXHelper::AddTagPhysicalAddress(p, "n", address.data()); });
  };
  EXPECT_EQ(text({0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F}), "<p><n>0a:0b:0c:0d:0e:0f</n></p>");
  EXPECT_EQ(text({0xFF, 0x80, 0x00, 0x01, 0x10, 0x7F}), "<p><n>ff:80:00:01:10:7f</n></p>");
}

TEST(AddTagMinMaxVal, WritesWholeBoundsAsAttributesAndTheValueAsText) {
  auto const text = [](_MinMaxVal const& value) {
    return added([&](TiXmlElement* p) { return KVXHelper::AddTagMinMaxVal(p, "n", value); });
  };
  EXPECT_EQ(text({-5, 10, 7}), "<p><n min=\"-5\" max=\"10\">7</n></p>");
  EXPECT_EQ(text({INT_MIN, INT_MAX, INT_MIN}),
            "<p><n min=\"-2147483648\" max=\"2147483647\">-2147483648</n></p>");
}

TEST(AddTagMinMaxVal, GivesFloatBoundsTwoDecimalsAndTheValueFour) {
  auto const text = [](_MinMaxValFloat const& value) {
    return added([&](TiXmlElement* p) { return KVXHelper::AddTagMinMaxVal(p, "n", value); });
  };
  EXPECT_EQ(text({0.0F, 10.0F, 2.5F}), "<p><n min=\"0.00\" max=\"10.00\">2.5000</n></p>");
  EXPECT_EQ(text({-0.126F, 0.126F, 0.126F}), "<p><n min=\"-0.13\" max=\"0.13\">0.1260</n></p>");
  EXPECT_EQ(text({-FLT_MAX, FLT_MAX, FLT_MAX}),
            "<p><n min=\"-340282346638528859811704183484516925440.00\" "
            "max=\"340282346638528859811704183484516925440.00\">"
            "340282346638528859811704183484516925440.0000</n></p>");
}

TEST(AddTagMinMaxVal, SetsTheLowerBoundFirst) {
  TiXmlElement parent("p");
  ASSERT_TRUE(KVXHelper::AddTagMinMaxVal(&parent, "n", _MinMaxVal{1, 2, 3}));
  TiXmlAttribute const* const first = parent.FirstChildElement()->FirstAttribute();
  EXPECT_STREQ(first->Name(), "min");
  EXPECT_STREQ(first->Next()->Name(), "max");
  EXPECT_EQ(first->Next()->Next(), nullptr);
}

// ---- Decimals with commas --------------------------------------------------------------------

using HelperInCommaLocale = test::CommaLocale;
INSTANTIATE_TEST_SUITE_P(All, HelperInCommaLocale, test::commaLocales(), test::nameOfLocale);

TEST_P(HelperInCommaLocale, ReadsDecimalsUpToTheirCommaAndNoFurtherThanAPoint) {
  expectNumbers<float>({{"2,5", 2.5F}, {"2.5", 2.0F}, {" -0,125x", -0.125F}, {"1e3", 1000.0F}});
  expectNumbers<int>({{"1.000", 1}, {"1,9", 1}});
  struct {
    char const* value;
    float number;
  } const cases[] = {{"2,5", 2.5F}, {"2.5", 2.0F}, {"-0,125", -0.125F}, {"1,5e3", 1500.0F}};
  for (auto const& [value, number] : cases) {
    AttributeElement element(value);
    auto const [result, stored] = got<float>(
        [&](float& out) { return KVXHelper::GetNumberFromAttr(element.get(), "a", out); });
    EXPECT_TRUE(result) << value;
    EXPECT_EQ(stored, number) << value;
  }
}

TEST_P(HelperInCommaLocale, WritesDecimalsWithCommasAndWholeNumbersPlain) {
  TiXmlElement parent("p");
  EXPECT_TRUE(KVXHelper::AddTagFloat(&parent, "f", -1234.5F));
  EXPECT_TRUE(KVXHelper::AddTagDouble(&parent, "d", 1.5));
  EXPECT_TRUE(KVXHelper::AddTagMinMaxVal(&parent, "m", _MinMaxValFloat{-0.5F, 10.25F, 2.125F}));
  EXPECT_TRUE(KVXHelper::AddTagNumber(&parent, "n", 1234567));
  EXPECT_TRUE(KVXHelper::AddTagLong(&parent, "l", -1234567));
  EXPECT_EQ(printed(parent),
            "<p><f>-1234,5000</f><d>1,500000</d><m min=\"-0,50\" max=\"10,25\">2,1250</m>"
            "<n>1234567</n><l>-1234567</l></p>");
}

// ---- Setting attributes ----------------------------------------------------------------------

TEST(AddTagAttrib, SetsTheAttributeOfTheElementItself) {
  EXPECT_EQ(added([](TiXmlElement* p) { return KVXHelper::AddTagAttrib(p, "a", "v"); }),
            "<p a=\"v\" />");
  EXPECT_EQ(added([](TiXmlElement* p) { return KVXHelper::AddTagAttrib(p, "a", ""); }),
            "<p a=\"\" />");
  EXPECT_EQ(added([](TiXmlElement* p) { return KVXHelper::AddTagAttrib(p, "a", 0); }),
            "<p a=\"0\" />");
  EXPECT_EQ(added([](TiXmlElement* p) { return KVXHelper::AddTagAttrib(p, "a", INT_MIN); }),
            "<p a=\"-2147483648\" />");
}

TEST(AddTagAttrib, KeepsTheOrderOfTheCallsAndReplacesAnEarlierValue) {
  TiXmlElement element("p");
  EXPECT_TRUE(KVXHelper::AddTagAttrib(&element, "a", "first"));
  EXPECT_TRUE(KVXHelper::AddTagAttrib(&element, "b", 2));
  EXPECT_TRUE(KVXHelper::AddTagAttrib(&element, "a", 3));
  EXPECT_EQ(printed(element), "<p a=\"3\" b=\"2\" />");
  EXPECT_TRUE(KVXHelper::AddTagAttrib(&element, "b", "fourth"));
  EXPECT_EQ(printed(element), "<p a=\"3\" b=\"fourth\" />");
}

// ---- Arguments -------------------------------------------------------------------------------

TEST(Writers, AddNothingForANullArgument) {
  using Add = std::function<bool(TiXmlElement*, char*)>;
  unsigned char const address[6] = {};
  _MinMaxVal const whole{1, 2, 3};
  _MinMaxValFloat const real{1, 2, 3};
  Add const adders[] = {
      [](auto* p, auto* n) { return KVXHelper::AddTag(p, n) != nullptr; },
      [](auto* p, auto* n) { return KVXHelper::AddTagString(p, n, "text"); },
      [](auto* p, auto* n) { return KVXHelper::AddTagNumber(p, n, 1); },
      [](auto* p, auto* n) { return KVXHelper::AddTagFloat(p, n, 1); },
      [](auto* p, auto* n) { return KVXHelper::AddTagDouble(p, n, 1); },
      [](auto* p, auto* n) { return KVXHelper::AddTagUnsigned(p, n, 1); },
      [](auto* p, auto* n) { return KVXHelper::AddTagLong(p, n, 1); },
      [](auto* p, auto* n) { return KVXHelper::AddTagBool(p, n, 1); },
      [&](auto* p, auto* n) { return KVXHelper::AddTagPhysicalAddress(p, n, address); },
      [&](auto* p, auto* n) { return KVXHelper::AddTagMinMaxVal(p, n, whole); },
      [&](auto* p, auto* n) { return KVXHelper::AddTagMinMaxVal(p, n, real); },
      [](auto* p, auto* n) { return KVXHelper::AddTagAttrib(p, n, 1); },
      [](auto* p, auto* n) { return KVXHelper::AddTagAttrib(p, n, "value"); },
  };
  char name[] = "n";
  for (std::size_t i = 0; i < std::size(adders); ++i) {
    EXPECT_FALSE(adders[i](nullptr, name)) << i;
    EXPECT_FALSE(adders[i](nullptr, nullptr)) << i;
    EXPECT_EQ(added([&](TiXmlElement* p) { return adders[i](p, nullptr); }), "failed: <p />") << i;
  }
}

TEST(Writers, AddNothingForANullValue) {
  EXPECT_EQ(added([](TiXmlElement* p) { return KVXHelper::AddTagString(p, "n", nullptr); }),
            "failed: <p />");
  EXPECT_EQ(
      added([](TiXmlElement* p) { return KVXHelper::AddTagPhysicalAddress(p, "n", nullptr); }),
      "failed: <p />");
  EXPECT_EQ(added([](TiXmlElement* p) { return KVXHelper::AddTagAttrib(p, "n", nullptr); }),
            "failed: <p />");
}

// That these calls compile, without a cast and without a warning, is half of the promise.
TEST(Writers, TakeNamesInEveryForm) {
  char array[] = "array";
  char* const writable = array;
  char const* const readOnly = "const";
  char const constArray[] = "constarray";
  unsigned char const address[6] = {};
  auto const tag = [](auto... arguments) { return KVXHelper::AddTag(arguments...) != nullptr; };
  TiXmlElement p("p");

  EXPECT_TRUE(tag(&p, writable) && tag(&p, readOnly));
  EXPECT_NE(KVXHelper::AddTag(&p, array), nullptr);
  EXPECT_NE(KVXHelper::AddTag(&p, constArray), nullptr);
  EXPECT_NE(KVXHelper::AddTag(&p, "literal"), nullptr);
  EXPECT_EQ(KVXHelper::AddTag(&p, nullptr), nullptr);
  EXPECT_EQ(KVXHelper::AddTag(nullptr, "literal"), nullptr);
  EXPECT_EQ(printed(p), "<p><array /><const /><array /><constarray /><literal /></p>");

  EXPECT_TRUE(KVXHelper::AddTagString(&p, array, array));
  EXPECT_FALSE(KVXHelper::AddTagString(&p, nullptr, "x"));
  EXPECT_TRUE(KVXHelper::AddTagNumber(&p, array, 1));
  EXPECT_FALSE(KVXHelper::AddTagNumber(nullptr, nullptr, 1));
  EXPECT_TRUE(KVXHelper::AddTagFloat(&p, readOnly, 1));
  EXPECT_TRUE(KVXHelper::AddTagDouble(&p, readOnly, 1));
  EXPECT_TRUE(KVXHelper::AddTagUnsigned(&p, constArray, 1));
  EXPECT_TRUE(KVXHelper::AddTagLong(&p, constArray, 1));
  EXPECT_TRUE(KVXHelper::AddTagBool(&p, writable, 1));
  EXPECT_TRUE(KVXHelper::AddTagPhysicalAddress(&p, array, address));
  EXPECT_TRUE(KVXHelper::AddTagMinMaxVal(&p, array, _MinMaxVal{}));
  EXPECT_TRUE(KVXHelper::AddTagMinMaxVal(&p, readOnly, _MinMaxValFloat{}));
  EXPECT_FALSE(KVXHelper::AddTagMinMaxVal(&p, nullptr, _MinMaxValFloat{}));
  EXPECT_TRUE(KVXHelper::AddTagAttrib(&p, array, 1));
  EXPECT_TRUE(KVXHelper::AddTagAttrib(&p, readOnly, array));
  EXPECT_FALSE(KVXHelper::AddTagAttrib(&p, nullptr, 1));
  EXPECT_FALSE(KVXHelper::AddTagAttrib(&p, nullptr, "x"));
}

TEST(AttributeReaders, TakeNamesInEveryForm) {
  AttributeElement element("7");
  char array[] = "a";
  char* const writable = array;
  char const* const readOnly = "a";
  TiXmlElement* const e = element.get();
  char text[4];
  int number = 0;
  float real = 0;
  unsigned short small = 0;
  char flag = 1;
  unsigned long address = 0;
  EXPECT_TRUE(KVXHelper::GetString(e, array, text, 4));
  EXPECT_TRUE(KVXHelper::GetString(e, readOnly, text, 4));
  EXPECT_FALSE(KVXHelper::GetString(e, nullptr, text, 4));
  EXPECT_TRUE(KVXHelper::GetNumberFromAttr(e, writable, number));
  EXPECT_TRUE(KVXHelper::GetNumberFromAttr(e, readOnly, real));
  EXPECT_FALSE(KVXHelper::GetNumberFromAttr(e, nullptr, real));
  EXPECT_TRUE(KVXHelper::GetInt(e, array, number));
  EXPECT_TRUE(KVXHelper::GetShort(e, readOnly, small));
  EXPECT_FALSE(KVXHelper::GetShort(nullptr, "a", small));
  EXPECT_TRUE(KVXHelper::GetBool(e, array, flag));
  EXPECT_FALSE(KVXHelper::GetIP(e, array, address));
  EXPECT_FALSE(KVXHelper::GetIP(nullptr, nullptr, address));
}

// Programs that were linked against these symbols go on finding them.
TEST(KVXHelper, HasEveryOperationWithItsSignature) {
  using E = TiXmlElement*;
  using C = char*;
  [[maybe_unused]] bool (*const readers[])(E, C, int&) = {&KVXHelper::GetNumberFromAttr,
                                                          &KVXHelper::GetInt};
  [[maybe_unused]] bool (*const attributeText)(E, C, C, int) = &KVXHelper::GetString;
  [[maybe_unused]] bool (*const attributeFloat)(E, C, float&) = &KVXHelper::GetNumberFromAttr;
  [[maybe_unused]] bool (*const attributeShort)(E, C, unsigned short&) = &KVXHelper::GetShort;
  [[maybe_unused]] bool (*const attributeFlag)(E, C, char&) = &KVXHelper::GetBool;
  [[maybe_unused]] bool (*const attributeIp)(E, C, unsigned long&) = &KVXHelper::GetIP;
  [[maybe_unused]] bool (*const text)(E, char&, int) = &KVXHelper::GetString;
  [[maybe_unused]] bool (*const flag)(E, char&) = &KVXHelper::GetBool;
  [[maybe_unused]] bool (*const boolean)(E, bool&) = &KVXHelper::GetBool;
  [[maybe_unused]] bool (*const numberInt)(E, int&, bool) = &KVXHelper::GetNumber;
  [[maybe_unused]] bool (*const numberShort)(E, unsigned short&, bool) = &KVXHelper::GetNumber;
  [[maybe_unused]] bool (*const numberULong)(E, unsigned long&, bool) = &KVXHelper::GetNumber;
  [[maybe_unused]] bool (*const numberUInt)(E, unsigned int&, bool) = &KVXHelper::GetNumber;
  [[maybe_unused]] bool (*const numberLong)(E, long&, bool) = &KVXHelper::GetNumber;
  [[maybe_unused]] bool (*const numberFloat)(E, float&, bool) = &KVXHelper::GetNumber;
  [[maybe_unused]] bool (*const address)(E, unsigned char*) = &KVXHelper::GetPhysicalAddress;

  [[maybe_unused]] E (*const tag)(E, C) = &KVXHelper::AddTag;
  [[maybe_unused]] bool (*const addText)(E, C, char const*) = &KVXHelper::AddTagString;
  [[maybe_unused]] bool (*const addNumber)(E, C, int) = &KVXHelper::AddTagNumber;
  [[maybe_unused]] bool (*const addFloat)(E, C, float) = &KVXHelper::AddTagFloat;
  [[maybe_unused]] bool (*const addDouble)(E, C, double) = &KVXHelper::AddTagDouble;
  [[maybe_unused]] bool (*const addUnsigned)(E, C, unsigned int) = &KVXHelper::AddTagUnsigned;
  [[maybe_unused]] bool (*const addLongs[])(E, C, long) = {&KVXHelper::AddTagLong,
                                                           &KVXHelper::AddTagBool};
  [[maybe_unused]] bool (*const addAddress)(E, C, unsigned char const*) =
      &KVXHelper::AddTagPhysicalAddress;
  [[maybe_unused]] bool (*const addWhole)(E, C, _MinMaxVal const&) = &KVXHelper::AddTagMinMaxVal;
  [[maybe_unused]] bool (*const addReal)(E, C, _MinMaxValFloat const&) =
      &KVXHelper::AddTagMinMaxVal;
  [[maybe_unused]] bool (*const setText)(E, char const*, char const*) = &KVXHelper::AddTagAttrib;
  [[maybe_unused]] bool (*const setNumber)(E, C, int) = &KVXHelper::AddTagAttrib;

  [[maybe_unused]] int (*const conversions[])(C) = {
      &KVXHelper::RibbonNameToInt,     &KVXHelper::RibbonDescriptionToInt,
      &KVXHelper::RibbonTypeToInt,     &KVXHelper::FeederSmartToInt,
      &KVXHelper::FeederTypeToInt,     &KVXHelper::CoercivityToInt,
      &KVXHelper::LaminationTypeToInt, &KVXHelper::CommsChannelToInt,
      &KVXHelper::ContactlessEncToInt, &KVXHelper::PanelToInt,
      &KVXHelper::LaminatorWidthToInt, &KVXHelper::LaminatorRegistrationToInt};
  EXPECT_EQ(std::size(conversions), 12U);
  EXPECT_TRUE(std::is_empty_v<KVXHelper> && std::is_default_constructible_v<KVXHelper>);
}

// Looked at before any test may read a configuration.
bool const ribbonNameStartedAsZeros =
    std::all_of(std::begin(szRibbonName), std::end(szRibbonName), [](char c) { return c == 0; });

// ---- Under a locale with commas ----------------------------------------------------------------

/// What one decimal is when it is written, and what three spellings of it are when they are read.
void expectDecimals(std::string const& written, float withPoint, float withComma) {
  TiXmlElement element("e");
  KVXHelper::AddTagFloat(&element, "value", 1.5F);
  EXPECT_EQ(printed(*element.FirstChild()), "<value>" + written + "</value>");
  float read = 0;
  EXPECT_TRUE(KVXHelper::GetNumber(TextElement("1.5").get(), read, false));
  EXPECT_EQ(read, withPoint);
  EXPECT_TRUE(KVXHelper::GetNumber(TextElement("1,5").get(), read, false));
  EXPECT_EQ(read, withComma);
  EXPECT_TRUE(KVXHelper::GetNumberFromAttr(AttributeElement("1.5").get(), "a", read));
  EXPECT_EQ(read, withPoint);
}

TEST(Decimals, HaveThePointOfTheProcess) {
  expectDecimals("1.5000", 1.5F, 1);
  test::LocaleGuard const guard(test::commaLocale, LC_NUMERIC);
  expectDecimals("1,5000", 1, 1.5F);
}

TEST(Decimals, KeepThePrintersPointWhileOnlyCharactersAreTheLocales) {
  test::LocaleGuard const guard(test::commaLocale, LC_CTYPE);
  expectDecimals("1.5000", 1.5F, 1);
}

TEST(RibbonName, StartsAsZeros) {
  static_assert(sizeof szRibbonName == 32);
  EXPECT_TRUE(ribbonNameStartedAsZeros);
}

}  // namespace
}  // namespace Kovra

#include "frame/field.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "frame/sample.hpp"
#include "support/records.hpp"
#include "support/tree.hpp"

namespace Kovra::frame {
namespace {

using namespace test;

/// Expects that `children` are read with success, and change just what `change` changes.
template <class Change>
void expectRead(std::string const& children, Change change) {
  auto expected = filled<Sample>();
  change(expected);
  auto const [result, record] = walked(children);
  EXPECT_TRUE(result) << children;
  EXPECT_TRUE(same(record, expected)) << children;
}

void expectNothingRead(std::string const& children) {
  auto const [result, record] = walked(children);
  EXPECT_FALSE(result) << children;
  EXPECT_TRUE(untouched(record)) << children;
}

// ---- The walk -------------------------------------------------------------------------------

TEST(Walk, FailsWithoutAnElement) {
  auto record = filled<Sample>();
  EXPECT_FALSE(walk(nullptr, table, record));
  EXPECT_TRUE(untouched(record));
}

TEST(Walk, FailsWithoutChildElements) {
  for (char const* const children :
       {"", " ", "whole", "<!-- <whole>1</whole> -->", "<![CDATA[<whole>1</whole>]]>"}) {
    expectNothingRead(children);
  }
}

TEST(Walk, FailsWhenNoChildIsKnown) {
  expectNothingRead("<unknown>1</unknown><other/>");
}

TEST(Walk, KnowsElementsByTheirExactNames) {
  for (char const* const name : {"Whole", "WHOLE", "whole_", "whol", "x:whole", "wholes"}) {
    expectNothingRead("<" + std::string(name) + ">1</" + name + ">");
  }
}

TEST(Walk, ReadsChildrenAloneAndNotTheirChildren) {
  expectNothingRead("<other><whole>1</whole></other>");
}

TEST(Walk, SkipsUnknownChildrenAndWhateverIsNoElement) {
  expectRead(
      "text<!--a--><other>2</other><whole>1</whole>more<?x?><![CDATA[<whole>3</whole>]]><other/>",
      [](Sample& record) { record.whole = 1; });
}

TEST(Walk, ReadsInDocumentOrderSoThatTheLastOfSeveralStays) {
  expectRead("<whole>1</whole><narrow>2</narrow><whole>3</whole>", [](Sample& record) {
    record.whole = 3;
    record.narrow = 2;
  });
}

TEST(Walk, ResultIsThatOfTheLastKnownChild) {
  struct {
    char const* children;
    bool result;
  } const cases[] = {{"<whole>1</whole>", true},
                     {"<whole>1</whole><narrow/>", false},
                     {"<narrow/><whole>1</whole>", true},
                     {"<whole>1</whole><narrow/><other>2</other>", false},
                     {"<narrow/><whole>1</whole><other/>", true},
                     {"<whole>1</whole><whole/>", false}};
  for (auto const& [children, result] : cases) {
    auto const [walkResult, record] = walked(children);
    EXPECT_EQ(walkResult, result) << children;
    EXPECT_EQ(record.whole, 1) << children;
  }
}

TEST(Walk, FindsEveryRowInAnyOrderOfTheElements) {
  std::vector<std::string> elements = {"<whole>1</whole>", "<real>2</real>", "<sensor at='3'/>",
                                       "<group><grouped>4</grouped></group>"};
  std::sort(elements.begin(), elements.end());
  do {
    std::string children;
    for (std::string const& element : elements) children += element + "<other/>" + element;
    expectRead(children, [](Sample& record) {
      record.whole = 1;
      record.real = 2;
      record.reading = 3;
      record.grouped = 4;
    });
  } while (std::next_permutation(elements.begin(), elements.end()));
}

TEST(Walk, KeepsItsResultOverAnUncountedRow) {
  static constexpr Table rows = {number<&Sample::whole>("counted"),
                                 uncounted(number<&Sample::narrow>("uncounted"))};
  struct {
    char const* children;
    bool result;
  } const cases[] = {{"<counted>1</counted><uncounted/>", true},
                     {"<counted/><uncounted>2</uncounted>", false},
                     {"<uncounted>2</uncounted>", false}};
  for (auto const& [children, result] : cases) {
    Sample record{};
    EXPECT_EQ(walk(test::Tree("<s>" + std::string(children) + "</s>").root(), rows, record), result)
        << children;
  }
  Sample record{};
  walk(test::Tree("<s><uncounted>2</uncounted></s>").root(), rows, record);
  EXPECT_EQ(record.narrow, 2);
}

// ---- Rows that read one value ---------------------------------------------------------------

TEST(ValueRows, KeepTheMemberOfAnEmptyElement) {
  for (char const* const name :
       {"whole", "narrow", "counter", "natural", "wide-number", "real", "bits", "text", "word",
        "known", "shade", "lock", "door", "enabled", "wanted", "first", "mac"}) {
    expectNothingRead("<" + std::string(name) + "/>");
    expectNothingRead("<" + std::string(name) + "> </" + name + ">");
  }
}

TEST(AnyKeywordRow, StoresTheUnknownCodeForAnElementWithoutText) {
  for (char const* const empty : {"<any/>", "<any></any>", "<any> </any>"}) {
    auto expected = filled<Sample>();
    expected.any = words.unknown;
    auto const [result, record] = walked("<whole/>" + std::string(empty));
    EXPECT_FALSE(result) << empty;
    EXPECT_TRUE(same(record, expected)) << empty;
  }
  expectRead("<any/><any>dual</any>", [](Sample& record) { record.any = 2; });
  expectRead("<any>dual</any><any>other</any>", [](Sample& record) { record.any = 9; });
  expectRead("<any/><whole>1</whole>", [](Sample& record) { record.any = 9, record.whole = 1; });
}

TEST(NumberRow, ReadsInTheFormOfItsMember) {
  expectRead("<whole>-70000</whole>", [](Sample& record) { record.whole = -70000; });
  expectRead("<narrow>70000</narrow>", [](Sample& record) { record.narrow = 4464; });
  expectRead("<counter>70000</counter>", [](Sample& record) { record.counter = 4464; });
  expectRead("<natural>-1</natural>", [](Sample& record) { record.natural = UINT_MAX; });
  expectRead("<wide-number>-4294967296</wide-number>",
             [](Sample& record) { record.wide = -4294967296; });
  expectRead("<real>-2.5</real>", [](Sample& record) { record.real = -2.5F; });
}

TEST(NumberRow, ReadsNoNumberAsZero) {
  expectRead("<whole>none</whole>", [](Sample& record) { record.whole = 0; });
  expectRead("<real>none</real>", [](Sample& record) { record.real = 0; });
}

TEST(HexadecimalRow, ReadsDigitsBehindItsPrefix) {
  struct {
    char const* text;
    unsigned int bits;
  } const cases[] = {{"0x1A", 26},
                     {"0x1a", 26},
                     {"0x0", 0},
                     {"0xFFFFFFFF", UINT_MAX},
                     {"0x80000000", 1U << 31},
                     {"0x1Az", 26},
                     {"0x1A 2B", 26},
                     {"0x00000001", 1}};
  for (auto const& [text, bits] : cases) {
    expectRead("<bits>" + std::string(text) + "</bits>",
               [value = bits](Sample& record) { record.bits = value; });
  }
}

TEST(HexadecimalRow, CountsATextWithoutPrefixAsReadAndStoresNothing) {
  for (char const* const text : {"0", "26", "1A", "0X1A", "x1A", "0x", "0xz", "none", "-0x1"}) {
    expectRead("<bits>" + std::string(text) + "</bits>", [](Sample&) {});
  }
}

TEST(HexadecimalRow, ReadsAtMost31Characters) {
  expectRead("<bits>0x" + std::string(27, '0') + "1A</bits>",
             [](Sample& record) { record.bits = 26; });
  expectRead("<bits>0x" + std::string(28, '0') + "1A</bits>",
             [](Sample& record) { record.bits = 1; });
}

TEST(TextRow, KeepsWhatFitsAndLeavesTheRestOfTheArrayAlone) {
  struct {
    char const* text;
    char const* kept;
  } const cases[] = {{"x", "x"},
                     {"123456", "123456"},
                     {"1234567", "1234567"},  // with the terminator it just fits
                     {"12345678", "1234567"},
                     {"1234567890", "1234567"}};
  for (auto const& [text, kept] : cases) {
    expectRead("<text>" + std::string(text) + "</text>",
               [value = kept](Sample& record) { std::strcpy(record.text, value); });
  }
}

TEST(KeywordRow, StoresTheCodeOfTheWord) {
  expectRead("<word>single</word>", [](Sample& record) { record.word = 1; });
  expectRead("<word>twin</word>", [](Sample& record) { record.word = 2; });
  expectRead("<shade>DARK</shade>", [](Sample& record) { record.shade = dark; });
}

TEST(KeywordRow, StoresTheUnknownCodeForAnyOtherText) {
  for (std::string const& text : {std::string("triple"), std::string("Single"),
                                  std::string("single "), std::string(100, 's')}) {
    expectRead("<word><![CDATA[" + text + "]]></word>", [](Sample& record) { record.word = 9; });
  }
  expectRead("<shade>grey</shade>", [](Sample& record) { record.shade = unknownShade; });
}

TEST(FlagRows, AreSetByOneWordOrClearedByOneWord) {
  expectRead("<lock>locked</lock>", [](Sample& record) { record.locked = 1; });
  expectRead("<door>closed</door>", [](Sample& record) { record.open = false; });
  for (char const* const other : {"unlocked", "Locked", "lockedx", "Closed", "close", "misspelt"}) {
    expectRead("<lock>" + std::string(other) + "</lock>",
               [](Sample& record) { record.locked = 0; });
    expectRead("<door>" + std::string(other) + "</door>",
               [](Sample& record) { record.open = true; });
  }
}

TEST(KnownKeywordRow, KeepsTheCodeAtAnUnknownWord) {
  expectRead("<known>twin</known>", [](Sample& record) { record.known = 2; });
  expectRead("<known>triple</known>", [](Sample&) {});
  expectRead("<known>Twin</known>", [](Sample&) {});
}

TEST(SwitchRows, AreSetByTwoWordsAndClearedByAnyOther) {
  for (char const* const word : {"enabled", "yes"}) {
    expectRead("<enabled>" + std::string(word) + "</enabled>",
               [](Sample& record) { record.enabled = 1; });
    expectRead("<wanted>" + std::string(word) + "</wanted>",
               [](Sample& record) { record.wanted = true; });
  }
  for (char const* const word : {"disabled", "no", "Yes", "1", "on"}) {
    expectRead("<enabled>" + std::string(word) + "</enabled>",
               [](Sample& record) { record.enabled = 0; });
    expectRead("<wanted>" + std::string(word) + "</wanted>",
               [](Sample& record) { record.wanted = false; });
  }
}

TEST(BitRow, SetsAndClearsItsOwnBitOnly) {
  for (int const before : {0x00, 0xFF, 0xA5}) {
    auto start = filled<Sample>();
    start.flags = static_cast<unsigned char>(before);
    auto const after = [&](char const* children) { return walked(children, start).record.flags; };
    EXPECT_EQ(after("<first>yes</first>"), before | 1);
    EXPECT_EQ(after("<first>no</first>"), before & ~1);
    EXPECT_EQ(after("<third>enabled</third>"), before | 4);
    EXPECT_EQ(after("<third>other</third>"), before & ~4);
    EXPECT_EQ(after("<first/>"), before);
  }
}

TEST(BoundedRow, PutsItsValueWithinItsBounds) {
  struct {
    char const* children;
    _MinMaxVal level;
  } const cases[] = {{"<level min='1' max='9'>5</level>", {1, 9, 5}},
                     {"<level min='1' max='9'>1</level>", {1, 9, 1}},
                     {"<level min='1' max='9'>0</level>", {1, 9, 1}},
                     {"<level min='1' max='9'>10</level>", {1, 9, 9}},
                     {"<level min='-9' max='-1'>none</level>", {-9, -1, -1}},
                     {"<level min='9' max='1'>5</level>", {9, 1, 1}}};  // crossed: the upper one
  for (auto const& [children, level] : cases) {
    expectRead(children, [value = level](Sample& record) { record.level = value; });
  }
  expectRead("<ratio min='-0.5' max='0.5'>0.75</ratio>", [](Sample& record) {
    record.ratio = {-0.5F, 0.5F, 0.5F};
  });
}

TEST(BoundedRow, KeepsABoundThatIsAbsentAndCountsOnIt) {
  Sample start{};
  start.level = {2, 8, 3};
  auto const after = [&](char const* children) { return walked(children, start).record.level; };
  EXPECT_TRUE(same(after("<level>9</level>"), _MinMaxVal{2, 8, 8}));
  EXPECT_TRUE(same(after("<level min='4'>1</level>"), _MinMaxVal{4, 8, 4}));
  EXPECT_TRUE(same(after("<level min='4' max='x'>9</level>"), _MinMaxVal{4, 8, 8}));
  EXPECT_TRUE(same(walked("<level>5</level>", Sample{}).record.level, _MinMaxVal{0, 0, 0}));
}

TEST(BoundedRow, FailsWithoutATextButStillKeepsTheBounds) {
  Sample start{};
  start.level = {0, 100, 3};
  auto const [result, record] = walked("<level min='5' max='9'/>", start);
  EXPECT_FALSE(result);
  EXPECT_TRUE(same(record.level, _MinMaxVal{5, 9, 5}));
}

TEST(AddressRow, ReadsSixBytes) {
  expectRead("<mac>00:1A:2b</mac>", [](Sample& record) {
    unsigned char const bytes[6] = {0x00, 0x1A, 0x2B, 0, 0, 0};
    std::copy(std::begin(bytes), std::end(bytes), record.mac);
  });
}

TEST(AttributeRow, ReadsItsAttributeAndNotTheText) {
  expectRead("<sensor at='-5'>7</sensor>", [](Sample& record) { record.reading = -5; });
  expectRead("<sensor at='5'/>", [](Sample& record) { record.reading = 5; });
}

TEST(AttributeRow, KeepsTheMemberWithoutANumberInItsAttribute) {
  for (char const* const children : {"<sensor/>", "<sensor>7</sensor>", "<sensor At='5'/>",
                                     "<sensor at=''/>", "<sensor at='x'/>"}) {
    expectNothingRead(children);
  }
}

TEST(ValueRows, ReadTheFirstChildWhateverItIs) {
  expectRead("<whole><!-- 12 -->34</whole>", [](Sample& record) { record.whole = 12; });
  expectRead("<text><b>bold</b></text>", [](Sample& record) { std::strcpy(record.text, "b"); });
  expectRead("<word><![CDATA[dual]]></word>", [](Sample& record) { record.word = 2; });
  expectRead("<lock><locked/></lock>", [](Sample& record) { record.locked = 1; });
}

// ---- Rows that read children ----------------------------------------------------------------

TEST(NestedRow, ReadsChildrenIntoTheNestedRecord) {
  expectRead("<inner><depth>3</depth><tag>abcdef</tag></inner>", [](Sample& record) {
    record.inner.depth = 3;
    std::strcpy(record.inner.tag, "abc");
  });
}

TEST(NestedRow, KeepsToItsOwnTable) {
  expectNothingRead("<inner><whole>1</whole><grouped>2</grouped></inner>");
  expectNothingRead("<depth>1</depth>");
}

TEST(GroupRow, ReadsChildrenIntoTheSameRecord) {
  expectRead("<group><grouped>3</grouped></group>", [](Sample& record) { record.grouped = 3; });
  expectNothingRead("<group><whole>1</whole></group>");
  expectNothingRead("<grouped>3</grouped>");
}

TEST(RowsWithChildren, GiveTheResultOfTheirLastKnownChild) {
  for (char const* const children :
       {"<inner/>", "<group/>", "<inner>text</inner>", "<inner><tag/></inner>",
        "<inner><depth>3</depth><tag/></inner>", "<group><grouped/></group>",
        "<whole>1</whole><inner/>"}) {
    EXPECT_FALSE(walked(children).result) << children;
  }
  EXPECT_TRUE(walked("<inner><tag/><depth>3</depth></inner>").result);
}

TEST(ReadingRow, IsReadByItsOwnFunctionEachTime) {
  auto start = filled<Sample>();
  start.odd = 0;
  EXPECT_TRUE(walked("<odd/>", start).result);
  auto const [result, record] = walked("<odd/><odd>x</odd>", start);
  EXPECT_FALSE(result);
  EXPECT_EQ(record.odd, 2);
}

// ---- Lists ----------------------------------------------------------------------------------

struct ListRead {
  bool result;
  List list;
};

ListRead listOf(std::string const& children, std::size_t room = 2) {
  test::Tree tree("<list>" + children + "</list>");
  ListRead outcome{false, filled<List>()};
  Watch const nobody;
  outcome.result = readEntriesOf<&List::items>(HostTree(tree.root()).root(), items,
                                               {outcome.list.items, room}, nobody);
  return outcome;
}

TEST(Entries, FillTheRoomInOrderAndSkipWhatIsNoEntry) {
  auto expected = filled<List>();
  expected.items[0].depth = 1;
  expected.items[1].depth = 2;
  auto const [result, list] =
      listOf("<other/><item><depth>1</depth></item>text<item><depth>2</depth></item><other/>");
  EXPECT_TRUE(result);
  EXPECT_TRUE(same(list, expected));
}

TEST(Entries, AreNeverStoredBeyondTheRoom) {
  std::string const three = "<item><depth>1</depth></item><item><depth>2</depth></item><item/>";
  for (std::size_t room = 0; room <= 2; ++room) {
    auto expected = filled<List>();
    for (std::size_t i = 0; i < room; ++i) expected.items[i].depth = static_cast<int>(i) + 1;
    auto const [result, list] = listOf(three, room);
    EXPECT_EQ(result, room > 0) << room;
    EXPECT_TRUE(same(list, expected)) << room;
  }
}

TEST(Entries, GiveTheResultOfTheLastOneRead) {
  EXPECT_FALSE(listOf("").result);
  EXPECT_FALSE(listOf("<other/>").result);
  EXPECT_FALSE(listOf("<item><depth>1</depth></item><item/>").result);
  EXPECT_TRUE(listOf("<item/><item><depth>1</depth></item><other/>").result);
}

TEST(Entries, AreCountedWhateverTheirNames) {
  EXPECT_EQ(countChildren(HostTree(test::Tree("<list/>").root()).root()), 0U);
  EXPECT_EQ(
      countChildren(
          HostTree(test::Tree("<list>a<item/><!--b--><other/><item/>c</list>").root()).root()),
      3U);
}

// ---- Tables ---------------------------------------------------------------------------------

TEST(Tables, WithTwoRowsForOneElementAreNoticed) {
  Row const twice[] = {number<&Inner::depth>("depth").row(), text<&Inner::tag>("depth").row()};
  EXPECT_FALSE(namesAreUnique(twice));
}

TEST(Tables, TellEveryElementAndWordOfTheirDocument) {
  Outline outline;
  outlineOf(table, outline);
  EXPECT_EQ(outline, (Outline{"any",      "at",       "bits",   "closed", "counter",     "dark",
                              "depth",    "disabled", "door",   "dual",   "enabled",     "first",
                              "group",    "grouped",  "inner",  "known",  "level",       "lock",
                              "locked",   "mac",      "max",    "min",    "narrow",      "natural",
                              "no",       "odd",      "open",   "pale",   "ratio",       "real",
                              "sensor",   "shade",    "single", "tag",    "text",        "third",
                              "unlocked", "twin",     "wanted", "whole",  "wide-number", "word",
                              "yes"}));
}

TEST(Tables, TellEveryMemberThatMayBeAssigned) {
  Keys keys;
  keysOf(table, keys);
  EXPECT_EQ(keys, (Keys{"whole",  "narrow", "counter", "natural", "wide",   "real",  "text",
                        "word",   "known",  "any",     "shade",   "locked", "open",  "enabled",
                        "wanted", "flags",  "mac",     "level",   "ratio",  "inner", "grouped"}));
}

// ---- Writing --------------------------------------------------------------------------------

struct Written {
  bool result;
  std::string text;
};

template <std::size_t N>
Written written(Table<Sample, N> const& rows, Sample const& record, Circumstances circumstances = 0,
                bool before = false) {
  TiXmlElement parent("p");
  bool const result = writeAll(parent, rows, record, circumstances, before);
  return {result, test::printed(parent)};
}

TEST(WrittenRows, StandInTheOrderOfTheirTable) {
  Sample record{};
  record.whole = -7;
  record.natural = 4294967295U;
  record.wide = LONG_MIN;
  record.real = 2.5F;
  std::strcpy(record.text, "a<b");
  record.word = 2;
  record.known = 7;
  record.any = 7;
  record.shade = unknownShade;
  record.enabled = 1;
  record.flags = 4;
  record.level = {1, 9, 5};
  record.mac[1] = 0x0A;
  record.mac[5] = 0xFF;
  record.inner.depth = 3;
  record.grouped = 4;
  auto const [result, text] = written(table, record);
  EXPECT_TRUE(result);
  EXPECT_EQ(text,
            "<p><whole>-7</whole><narrow>0</narrow><natural>4294967295</natural>"
            "<wide-number>-9223372036854775808</wide-number><real>2.5000</real>"
            "<text>a&lt;b</text><word>dual</word><known></known><any></any><shade></shade>"
            "<enabled>enabled</enabled><wanted>no</wanted><first>no</first><third>yes</third>"
            "<mac>00:0a:00:00:00:ff</mac><level min=\"1\" max=\"9\">5</level>"
            "<ratio min=\"0.00\" max=\"0.00\">0.0000</ratio>"
            "<inner><depth>3</depth><tag></tag></inner><group><grouped>4</grouped></group></p>");
}

TEST(WrittenRows, EndATextWithoutTerminatorWhereItsArrayEnds) {
  constexpr Table rows = {text<&Sample::text>("text")};
  Sample record{};
  std::memcpy(record.text, "12345678", sizeof record.text);
  record.word = -1;  // a reader beyond the array would find no terminator here
  EXPECT_EQ(written(rows, record).text, "<p><text>12345678</text></p>");
}

TEST(WrittenRows, AreWrittenOnlyWhereAllTheirCircumstancesHold) {
  constexpr Table rows = {when(3, number<&Sample::whole>("both")),
                          number<&Sample::whole>("always")};
  for (Circumstances const circumstances : {0UL, 1UL, 2UL, 4UL}) {
    EXPECT_EQ(written(rows, Sample{}, circumstances).text, "<p><always>0</always></p>");
  }
  for (Circumstances const circumstances : {3UL, 7UL}) {
    EXPECT_EQ(written(rows, Sample{}, circumstances).text,
              "<p><both>0</both><always>0</always></p>");
  }
}

TEST(WrittenRows, KeepTheEarlierResultWhenNoneIsWritten) {
  constexpr Table rows = {when(1, number<&Sample::whole>("whole"))};
  EXPECT_FALSE(written(rows, Sample{}, 0, false).result);
  EXPECT_TRUE(written(rows, Sample{}, 0, true).result);
  EXPECT_TRUE(written(rows, Sample{}, 1, false).result);
}

TEST(OneWayRows, AreOnlyReadOrOnlyWritten) {
  static constexpr Table rows = {
      readOnly(number<&Sample::whole>("in")), writeOnly(number<&Sample::whole>("out")),
      readOnly(number<&Sample::narrow>("both")), writeOnly(number<&Sample::wide>("both"))};
  Sample record{};
  record.whole = 1;
  record.wide = 2;
  EXPECT_EQ(written(rows, record).text, "<p><out>1</out><both>2</both></p>");
  test::Tree tree("<p><in>3</in><both>4</both><out>5</out></p>");
  EXPECT_TRUE(walk(tree.root(), rows, record));
  EXPECT_EQ(record.whole, 3);
  EXPECT_EQ(record.narrow, 4);
  EXPECT_EQ(record.wide, 2);
}

TEST(OneWayRows, AreWrittenAndAssignedThoughNeverRead) {
  static constexpr Table rows = {neverRead(number<&Sample::whole>("whole"))};
  Sample record{};
  Problems problems;
  EXPECT_EQ(assignMember(rows, record, "whole", 5, problems), Assigned::done);
  EXPECT_TRUE(problems.empty());
  EXPECT_EQ(written(rows, record).text, "<p><whole>5</whole></p>");
  EXPECT_FALSE(walk(test::Tree("<p><whole>6</whole></p>").root(), rows, record));
  EXPECT_EQ(record.whole, 5);
}

TEST(AlwaysWrittenRow, HasAWordForEveryCode) {
  static constexpr Keywords always{.read = &words, .written = &words, .otherwise = "single"};
  constexpr Table rows = {keywordBy<&Sample::word, always>("word")};
  for (auto const& [code, word] : {std::pair(1, "single"), std::pair(2, "dual"),
                                   std::pair(7, "single"), std::pair(-1, "single")}) {
    Sample record{};
    record.word = code;
    EXPECT_EQ(written(rows, record).text, "<p><word>" + std::string(word) + "</word></p>");
  }
}

}  // namespace
}  // namespace Kovra::frame

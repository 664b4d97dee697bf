#include "frame/field.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "frame/reply.hpp"
#include "support/records.hpp"
#include "support/tree.hpp"

namespace Kovra::frame {
namespace {

using test::filled;
using test::same;
using test::Tree;
using test::untouched;

// A document of the test's own with a row of each kind.

enum Shade : int { unknownShade = -1, pale = 1, dark = 2 };

struct Inner {
  int depth;
  char tag[4];
};

struct Sample {
  int whole;
  unsigned short narrow;
  unsigned long counter;
  unsigned int natural;
  long wide;
  float real;
  unsigned int bits;
  char text[8];
  int word;
  Shade shade;
  char locked;
  bool open;
  unsigned char mac[6];
  int reading;
  Inner inner;
  int grouped;
  int odd;
};

constexpr Word wordRows[] = {{"single", 1}, {"dual", 2}, {"twin", 2}};
constexpr Vocabulary words{wordRows, Match::exact, 9};
constexpr Word shadeRows[] = {{"pale", pale}, {"dark", dark}};
constexpr Vocabulary shades{shadeRows, Match::anyCase, unknownShade};

constexpr Field<Inner> innerTable[] = {
    number<&Inner::depth>("depth"),
    text<&Inner::tag>("tag"),
};

constexpr Field<Sample> groupTable[] = {
    number<&Sample::grouped>("grouped"),
};

/// Counts how often it was read instead of reading anything.
struct CountReadings {
  template <class Watch>
  static bool read(TiXmlElement&, Sample& record, Watch& watch) {
    ++record.odd;
    remark(watch, [&](Observer& observer) { observer.member("odd", shown(record.odd)); });
    return record.odd % 2 == 1;
  }
};

constexpr Field<Sample> table[] = {
    number<&Sample::whole>("whole"),
    number<&Sample::narrow>("narrow"),
    number<&Sample::counter>("counter"),
    number<&Sample::natural>("natural"),
    number<&Sample::wide>("wide-number"),
    number<&Sample::real>("real"),
    hexadecimal<&Sample::bits>("bits"),
    text<&Sample::text>("text"),
    keyword<&Sample::word, words>("word"),
    keyword<&Sample::shade, shades>("shade"),
    flagIf<&Sample::locked, "locked">("lock"),
    flagUnless<&Sample::open, "closed">("door"),
    address<&Sample::mac>("mac"),
    attribute<&Sample::reading, "at">("sensor"),
    nested<&Sample::inner, innerTable>("inner"),
    group<Sample, groupTable>("group"),
    reading<Sample, CountReadings>("odd"),
};
static_assert(namesAreUnique(table));

/// What walking over a document gave.
struct Walked {
  bool result;
  Sample record;
};

Walked walked(std::string const& children, Sample record = filled<Sample>()) {
  Tree tree("<sample>" + children + "</sample>");
  bool const result = walk(tree.root(), table, record);
  return {result, record};
}

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

// ---- The walk --------------------------------------------------------------------------------

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

// ---- Rows that read one value ----------------------------------------------------------------

TEST(ValueRows, KeepTheMemberOfAnEmptyElement) {
  for (char const* const name : {"whole", "narrow", "counter", "natural", "wide-number", "real",
                                 "bits", "text", "word", "shade", "lock", "door", "mac"}) {
    expectNothingRead("<" + std::string(name) + "/>");
    expectNothingRead("<" + std::string(name) + "> </" + name + ">");
  }
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

// ---- Rows that read children -----------------------------------------------------------------

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

// ---- Tables ----------------------------------------------------------------------------------

TEST(Tables, WithTwoRowsForOneElementAreNoticed) {
  constexpr Field<Inner> twice[] = {number<&Inner::depth>("depth"), text<&Inner::tag>("depth")};
  static_assert(!namesAreUnique(twice));
  EXPECT_FALSE(namesAreUnique(twice));
}

TEST(Tables, TellEveryElementAndWordOfTheirDocument) {
  Outline outline;
  outlineOf(table, outline);
  EXPECT_EQ(outline,
            (Outline{"at",     "mac",    "sensor",  "bits",  "closed",  "counter",     "dark",
                     "depth",  "door",   "dual",    "group", "grouped", "inner",       "lock",
                     "locked", "narrow", "natural", "odd",   "pale",    "real",        "shade",
                     "single", "tag",    "text",    "twin",  "whole",   "wide-number", "word"}));
}

// ---- What an observer is told ----------------------------------------------------------------

/// The same walk, observed.
struct Watched {
  bool result;
  Value shown;
  std::vector<Note> notes;
};

Watched watched(std::string const& children) {
  Tree tree("<sample>" + children + "</sample>");
  Watched outcome;
  Observer observer(outcome.shown);
  Sample record{};
  outcome.result = walk(tree.root(), std::span<Field<Sample> const>(table), record, observer);
  for (auto const& remark : observer.remarks()) outcome.notes.push_back(remark.note);
  return outcome;
}

/// The only member that `children` show.
Value onlyMember(std::string const& children, char const* name) {
  Watched const outcome = watched(children);
  EXPECT_EQ(outcome.shown.members.size(), 1U) << children;
  Value const* const value = outcome.shown.find(name);
  EXPECT_NE(value, nullptr) << children;
  return value != nullptr ? *value : Value{};
}

Note onlyNote(std::string const& children) {
  std::vector<Note> const notes = watched(children).notes;
  EXPECT_EQ(notes.size(), 1U) << children;
  return notes.empty() ? Note{} : notes.front();
}

TEST(ObservedWalk, ReadsAsTheUnobservedOne) {
  for (char const* const children :
       {"", "<whole>1</whole>", "<whole>1</whole><narrow/>", "<narrow/><whole>1</whole><other/>",
        "<other/>", "<inner><depth>3</depth><tag/></inner>", "<inner/>", "<group/>", "<odd/>",
        "<odd/><odd/>", "<group><grouped>1</grouped></group>", "<bits>0</bits>", "<lock/>"}) {
    EXPECT_EQ(watched(children).result, walked(children, Sample{}).result) << children;
  }
}

TEST(ObservedWalk, ShowsOnlyWhatTheDocumentNamesInItsOrder) {
  Watched const outcome = watched("<narrow>2</narrow><other>9</other><whole>1</whole><real/>");
  ASSERT_EQ(outcome.shown.kind, Value::Kind::record);
  ASSERT_EQ(outcome.shown.members.size(), 2U);
  EXPECT_EQ(outcome.shown.members[0].name, "narrow");
  EXPECT_EQ(outcome.shown.members[1].name, "whole");
}

TEST(ObservedWalk, ShowsARepeatedMemberOnceWithItsLastValue) {
  EXPECT_EQ(onlyMember("<whole>1</whole><whole>2</whole>", "whole").integer, 2);
}

TEST(ObservedWalk, NamesMembersAndNotElements) {
  EXPECT_EQ(onlyMember("<wide-number>7</wide-number>", "wide").integer, 7);
  EXPECT_EQ(onlyMember("<lock>locked</lock>", "locked").flag, true);
}

TEST(ObservedWalk, ShowsEachKindOfValueAsTheRecordHoldsIt) {
  Value const natural = onlyMember("<narrow>70000</narrow>", "narrow");
  EXPECT_EQ(natural.kind, Value::Kind::natural);
  EXPECT_EQ(natural.natural, 4464U);
  Value const integer = onlyMember("<whole>-5</whole>", "whole");
  EXPECT_EQ(integer.kind, Value::Kind::integer);
  EXPECT_EQ(integer.integer, -5);
  Value const real = onlyMember("<real>24.35</real>", "real");
  EXPECT_EQ(real.kind, Value::Kind::real);
  EXPECT_EQ(real.real, 24.35);
  Value const bits = onlyMember("<bits>0x1A</bits>", "bits");
  EXPECT_EQ(bits.kind, Value::Kind::natural);
  EXPECT_EQ(bits.natural, 26U);
  EXPECT_TRUE(bits.hexadecimal);
  Value const text = onlyMember("<text>12345678</text>", "text");
  EXPECT_EQ(text.kind, Value::Kind::text);
  EXPECT_EQ(text.text, "1234567");
  Value const flag = onlyMember("<door>misspelt</door>", "open");
  EXPECT_EQ(flag.kind, Value::Kind::flag);
  EXPECT_TRUE(flag.flag);
  Value const mac = onlyMember("<mac>0A:1B:2C</mac>", "mac");
  EXPECT_EQ(mac.kind, Value::Kind::text);
  EXPECT_EQ(mac.text, "0a:1b:2c:00:00:00");
  EXPECT_EQ(onlyMember("<sensor at='5'/>", "reading").integer, 5);
  Value const word = onlyMember("<word>twin</word>", "word");
  EXPECT_EQ(word.kind, Value::Kind::keyword);
  EXPECT_EQ(word.integer, 2);
  EXPECT_EQ(word.text, "twin");
  EXPECT_TRUE(word.known);
}

TEST(ObservedWalk, ShowsNestedRecordsAndTheMembersOfGroups) {
  Value const inner = onlyMember("<inner><depth>3</depth></inner>", "inner");
  EXPECT_EQ(inner.kind, Value::Kind::record);
  ASSERT_NE(inner.find("depth"), nullptr);
  EXPECT_EQ(inner.find("depth")->integer, 3);
  EXPECT_EQ(inner.find("tag"), nullptr);
  EXPECT_EQ(onlyMember("<group><grouped>4</grouped></group>", "grouped").integer, 4);
}

TEST(ObservedWalk, DoesNotShowARecordOfWhichNothingWasRead) {
  EXPECT_TRUE(watched("<inner><other/></inner>").shown.members.empty());
}

TEST(ObservedWalk, HasNoNoteOnADocumentThatItKnowsWhole) {
  EXPECT_TRUE(watched("<whole>1</whole><narrow>65535</narrow><counter>65535</counter>"
                      "<natural>4294967295</natural><wide-number>-9223372036854775808</wide-number>"
                      "<real>2.5</real><bits>0xFFFFFFFF</bits><text>1234567</text><word>dual</word>"
                      "<shade>Pale</shade><lock>locked</lock><door>open</door>"
                      "<inner><depth>1</depth><tag>abc</tag></inner>"
                      "<group><grouped>1</grouped></group><whole> 7 </whole>"
                      "<mac>0A:1b:2c:3d:4e:5f</mac><sensor at='5'/>")
                  .notes.empty());
}

TEST(ObservedWalk, NotesUnknownElementsAtEveryDepth) {
  for (char const* const children :
       {"<other>1</other>", "<inner><other>1</other></inner>", "<group><other>1</other></group>"}) {
    Note const note = onlyNote(children);
    EXPECT_EQ(note.kind, Note::Kind::unknownElement) << children;
    EXPECT_EQ(note.element, "other") << children;
  }
}

TEST(ObservedWalk, NotesUnknownWordsWithTheWordsThatWouldBeRight) {
  Note const note = onlyNote("<word>triple</word>");
  EXPECT_EQ(note.kind, Note::Kind::unknownWord);
  EXPECT_EQ(note.element, "word");
  EXPECT_EQ(note.found, "triple");
  EXPECT_EQ(note.expected, (std::vector<std::string>{"single", "dual", "twin"}));
  Value const value = onlyMember("<word>triple</word>", "word");
  EXPECT_EQ(value.integer, 9);
  EXPECT_EQ(value.text, "triple");
  EXPECT_FALSE(value.known);
}

TEST(ObservedWalk, NotesTextsThatAreNoNumbers) {
  for (char const* const children :
       {"<whole>none</whole>", "<whole>12abc</whole>", "<whole>0x1A</whole>", "<real>2,5</real>",
        "<bits>26</bits>", "<bits>0x</bits>", "<whole>3.9</whole>", "<mac>00:1A:2b</mac>",
        "<mac>01:02:03:04:05:06:07</mac>"}) {
    Note const note = onlyNote(children);
    EXPECT_EQ(note.kind, Note::Kind::notANumber) << children;
    EXPECT_EQ(note.expected.size(), 1U) << children;
    EXPECT_NE(std::string(children).find(">" + note.found + "<"), std::string::npos) << children;
  }
}

TEST(ObservedWalk, DoesNotShowANumberThatWasNotStored) {
  EXPECT_TRUE(watched("<bits>26</bits>").shown.members.empty());
  // The prefix is within the characters that are read, its digits are not.
  EXPECT_TRUE(
      watched("<bits><![CDATA[0x" + std::string(40, ' ') + "1A]]></bits>").shown.members.empty());
}

TEST(ObservedWalk, NotesNumbersThatTheirMemberCannotHold) {
  struct {
    char const* children;
    char const* kept;
  } const cases[] = {{"<whole>2147483648</whole>", "-2147483648"},
                     {"<narrow>70000</narrow>", "4464"},
                     {"<narrow>-1</narrow>", "65535"},
                     {"<counter>65536</counter>", "0"},
                     {"<counter>-1</counter>", "65535"},
                     {"<natural>-1</natural>", "4294967295"},
                     {"<whole>99999999999999999999</whole>", "-1"},
                     {"<wide-number>9223372036854775808</wide-number>", "9223372036854775807"},
                     {"<wide-number>-9223372036854775809</wide-number>", "-9223372036854775808"}};
  for (auto const& [children, kept] : cases) {
    Note const note = onlyNote(children);
    EXPECT_EQ(note.kind, Note::Kind::changedNumber) << children;
    EXPECT_EQ(note.kept, kept) << children;
    EXPECT_NE(std::string(children).find(">" + note.found + "<"), std::string::npos) << children;
  }
}

TEST(ObservedWalk, NotesRealsThatTheirMemberCannotHold) {
  EXPECT_EQ(onlyNote("<real>1e300</real>").kind, Note::Kind::changedNumber);
}

TEST(ObservedWalk, NotesHexadecimalsThatTheirMemberCannotHold) {
  for (std::string const& text : {std::string("0x1FFFFFFFF"), "0x" + std::string(28, '0') + "1A"}) {
    EXPECT_EQ(onlyNote("<bits>" + text + "</bits>").kind, Note::Kind::changedNumber) << text;
  }
}

TEST(ObservedWalk, NotesTextsThatWereCut) {
  Note const note = onlyNote("<text>12345678</text>");
  EXPECT_EQ(note.kind, Note::Kind::cutText);
  EXPECT_EQ(note.found, "12345678");
  EXPECT_EQ(note.kept, "1234567");
}

TEST(ObservedWalk, NotesEmptyElementsOfEveryKindOfRow) {
  for (char const* const name :
       {"whole", "narrow", "counter", "natural", "wide-number", "real", "bits", "text", "word",
        "shade", "lock", "door", "mac", "inner", "group"}) {
    Note const note = onlyNote("<" + std::string(name) + "/>");
    EXPECT_EQ(note.kind, Note::Kind::emptyElement) << name;
    EXPECT_EQ(note.element, name);
  }
}

TEST(ObservedWalk, NotesWhichAttributeIsMissing) {
  Note const note = onlyNote("<sensor>7</sensor>");
  EXPECT_EQ(note.kind, Note::Kind::noAttribute);
  EXPECT_EQ(note.element, "sensor");
  EXPECT_EQ(note.expected, std::vector<std::string>{"at"});
}

TEST(ObservedWalk, KeepsTheTextOfASecretOutOfItsNotes) {
  for (char const* const children :
       {"<text>secret-text</text>", "<word>secret</word>", "<whole>secret</whole>",
        "<narrow>70000</narrow>", "<bits>secret</bits>", "<mac>se:cr:et</mac>"}) {
    Tree tree("<sample>" + std::string(children) + "</sample>");
    Value shown;
    Observer observer(shown);
    observer.secrecy(true);
    Sample record{};
    EXPECT_TRUE(walk(tree.root(), std::span<Field<Sample> const>(table), record, observer));
    for (Kovra::Member const& member : shown.members) {
      EXPECT_TRUE(member.value.secret) << children;
    }
    ASSERT_EQ(observer.remarks().size(), 1U) << children;
    EXPECT_EQ(observer.remarks()[0].note.found, "") << children;
    EXPECT_EQ(observer.remarks()[0].note.kept, "") << children;
  }
}

TEST(ObservedWalk, KnowsTheElementsThatARowTook) {
  Tree tree("<sample><other/><inner><depth>1</depth><odd/></inner></sample>");
  Value record;
  Observer observer(record);
  Sample sample{};
  walk(tree.root(), table, sample, observer);
  TiXmlElement* const other = tree.root()->FirstChildElement("other");
  TiXmlElement* const inner = tree.root()->FirstChildElement("inner");
  EXPECT_FALSE(observer.knows(*other));
  EXPECT_TRUE(observer.knows(*inner));
  EXPECT_TRUE(observer.knows(*inner->FirstChildElement("depth")));
  EXPECT_FALSE(observer.knows(*inner->FirstChildElement("odd")));
}

// ---- Lists -----------------------------------------------------------------------------------

struct List {
  Inner items[2];
};

using Items = EntriesOf<&List::items, "item", innerTable>;

struct ListRead {
  bool result;
  List list;
};

ListRead listOf(std::string const& children, std::size_t room = 2) {
  Tree tree("<list>" + children + "</list>");
  ListRead outcome{false, filled<List>()};
  Unwatched nobody;
  outcome.result = Items::read(*tree.root(), std::span(outcome.list.items, room), nobody);
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

TEST(Entries, AreShownWithTheirSurplusNoted) {
  Tree tree("<list><item><depth>1</depth></item><item/><other/><item/></list>");
  Value shown;
  Observer observer(shown);
  List list{};
  EXPECT_FALSE(Items::read(*tree.root(), std::span(list.items), observer));
  Value const* const items = shown.find("items");
  ASSERT_NE(items, nullptr);
  EXPECT_EQ(items->kind, Value::Kind::list);
  ASSERT_EQ(items->items.size(), 2U);
  ASSERT_NE(items->items[0].find("depth"), nullptr);
  EXPECT_EQ(items->items[0].find("depth")->integer, 1);
  EXPECT_TRUE(items->items[1].members.empty());
  ASSERT_EQ(observer.remarks().size(), 2U);
  EXPECT_EQ(observer.remarks()[0].note.kind, Note::Kind::unknownElement);
  EXPECT_EQ(observer.remarks()[1].note.kind, Note::Kind::surplusEntry);
  EXPECT_EQ(observer.remarks()[1].note.kept, "2");
}

TEST(Entries, ShowAListWithoutEntries) {
  Tree tree("<list/>");
  Value shown;
  Observer observer(shown);
  List list{};
  EXPECT_FALSE(Items::read(*tree.root(), std::span(list.items), observer));
  ASSERT_NE(shown.find("items"), nullptr);
  EXPECT_EQ(shown.find("items")->kind, Value::Kind::list);
  EXPECT_TRUE(shown.find("items")->items.empty());
}

TEST(Entries, AreCountedWhateverTheirNames) {
  EXPECT_EQ(countChildren(*Tree("<list/>").root()), 0U);
  EXPECT_EQ(countChildren(*Tree("<list>a<item/><!--b--><other/><item/>c</list>").root()), 3U);
}

// ---- Writing ---------------------------------------------------------------------------------

struct Written {
  bool result;
  std::string text;
};

template <std::size_t N>
Written written(Field<Sample> const (&rows)[N], Sample const& record,
                Circumstances circumstances = 0, bool before = false) {
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
  record.shade = unknownShade;
  record.mac[1] = 0x0A;
  record.mac[5] = 0xFF;
  record.inner.depth = 3;
  record.grouped = 4;
  auto const [result, text] = written(table, record);
  EXPECT_TRUE(result);
  EXPECT_EQ(text,
            "<p><whole>-7</whole><narrow>0</narrow><natural>4294967295</natural>"
            "<wide-number>-9223372036854775808</wide-number><real>2.5000</real>"
            "<text>a&lt;b</text><word>dual</word><shade></shade><mac>00:0a:00:00:00:ff</mac>"
            "<inner><depth>3</depth><tag></tag></inner><group><grouped>4</grouped></group></p>");
}

TEST(WrittenRows, EndATextWithoutTerminatorWhereItsArrayEnds) {
  constexpr Field<Sample> rows[] = {text<&Sample::text>("text")};
  Sample record{};
  std::memcpy(record.text, "12345678", sizeof record.text);
  record.word = -1;  // a reader beyond the array would find no terminator here
  EXPECT_EQ(written(rows, record).text, "<p><text>12345678</text></p>");
}

TEST(WrittenRows, AreWrittenOnlyWhereAllTheirCircumstancesHold) {
  constexpr Field<Sample> rows[] = {when(3, number<&Sample::whole>("both")),
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
  constexpr Field<Sample> rows[] = {when(1, number<&Sample::whole>("whole"))};
  EXPECT_FALSE(written(rows, Sample{}, 0, false).result);
  EXPECT_TRUE(written(rows, Sample{}, 0, true).result);
  EXPECT_TRUE(written(rows, Sample{}, 1, false).result);
}

TEST(OneWayRows, AreOnlyReadOrOnlyWritten) {
  static constexpr Field<Sample> rows[] = {
      readOnly(number<&Sample::whole>("in")), writeOnly(number<&Sample::whole>("out")),
      readOnly(number<&Sample::narrow>("both")), writeOnly(number<&Sample::wide>("both"))};
  static_assert(namesAreUnique(rows));
  Sample record{};
  record.whole = 1;
  record.wide = 2;
  EXPECT_EQ(written(rows, record).text, "<p><out>1</out><both>2</both></p>");
  Tree tree("<p><in>3</in><both>4</both><out>5</out></p>");
  EXPECT_TRUE(walk(tree.root(), rows, record));
  EXPECT_EQ(record.whole, 3);
  EXPECT_EQ(record.narrow, 4);
  EXPECT_EQ(record.wide, 2);
}

// ---- Assigning -------------------------------------------------------------------------------

TEST(AssignedValues, MakeTheRecordThatShowedThem) {
  std::string const children =
      "<whole>-7</whole><narrow>70000</narrow><counter>65535</counter><natural>4294967295</natural>"
      "<wide-number>-9223372036854775808</wide-number><real>24.35</real><text>1234567890</text>"
      "<word>twin</word><shade>DARK</shade><lock>locked</lock><door>open</door>"
      "<inner><depth>3</depth><tag>abc</tag></inner><group><grouped>4</grouped></group>";
  Sample assigned{};
  Problem problem;
  EXPECT_EQ(assignAll(table, assigned, watched(children).shown, problem), Assigned::done)
      << problem.path << problem.found;
  EXPECT_TRUE(same(assigned, walked(children, Sample{}).record));
}

TEST(AssignedValues, LeaveMembersThatTheyDoNotName) {
  auto record = filled<Sample>();
  auto expected = record;
  expected.whole = 5;
  Problem problem;
  EXPECT_EQ(assignAll(table, record, watched("<whole>5</whole>").shown, problem), Assigned::done);
  EXPECT_TRUE(same(record, expected));
}

/// The problem with a value for the member `name`.
Problem problemWith(std::string const& name, Value const& value) {
  Value whole;
  whole.kind = Value::Kind::record;
  whole.members.push_back({name, value});
  Sample record{};
  Problem problem;
  EXPECT_EQ(assignAll(table, record, whole, problem), Assigned::failed) << name;
  EXPECT_TRUE(same(record, Sample{})) << name;
  EXPECT_FALSE(problem.found.empty() || problem.expected.empty()) << name;
  return problem;
}

TEST(AssignedValues, ThatDoNotFitAreProblemsAndNothingIsStored) {
  using std::string_view;
  EXPECT_EQ(problemWith("whole", shown(2147483648L)).path, "whole");
  EXPECT_EQ(problemWith("whole", shown(string_view("5"))).found, "\"5\"");
  EXPECT_EQ(problemWith("narrow", shown(-1)).found, "-1");
  EXPECT_EQ(problemWith("natural", shown(-1)).found, "-1");
  EXPECT_EQ(problemWith("real", shown(string_view("5"))).path, "real");
  EXPECT_EQ(problemWith("text", shown(string_view("12345678"))).path, "text");
  EXPECT_EQ(problemWith("text", shown(string_view("a\0b", 3))).path, "text");
  EXPECT_EQ(problemWith("text", shown(5)).found, "5");
  EXPECT_EQ(problemWith("locked", shown(1)).found, "1");
  EXPECT_EQ(problemWith("word", shown(string_view("triple"))).path, "word");
  EXPECT_EQ(problemWith("unknown", shown(1)).path, "unknown");
  EXPECT_EQ(problemWith("inner", shown(1)).path, "inner");
  Value inner = watched("<inner><depth>3</depth></inner>").shown.members[0].value;
  inner.members[0].value = shown(true);
  EXPECT_EQ(problemWith("inner", inner).path, "inner.depth");
}

TEST(AssignedValues, MayNameAKeywordByItsWordItsCodeOrBoth) {
  for (Value const& value : {shown(std::string_view("dual")), shown(2), shown(2UL)}) {
    Value whole;
    whole.kind = Value::Kind::record;
    whole.members.push_back({"word", value});
    Sample record{};
    Problem problem;
    EXPECT_EQ(assignAll(table, record, whole, problem), Assigned::done) << problem.found;
    EXPECT_EQ(record.word, 2);
  }
  Value keyword;
  keyword.kind = Value::Kind::record;
  keyword.members.push_back({"code", shown(7)});
  keyword.members.push_back({"name", shown(std::string_view("dual"))});
  int code = 0;
  Problem problem;
  EXPECT_EQ(assignKeyword(code, keyword, words, problem), Assigned::done);
  EXPECT_EQ(code, 7);
}

// ---- Replies ---------------------------------------------------------------------------------

constexpr char const* roots[] = {"sample"};
constexpr ReplyReader reply = reader<Sample, TableReading<table>>("sample", "a test's own", roots);

TEST(ReplyReader, DecodesIntoARecordOfZeros) {
  Tree tree("<sample><odd/></sample>");
  Value record;
  Observer observer(record);
  EXPECT_TRUE(reply.decode(*tree.root(), observer));
  ASSERT_NE(record.find("odd"), nullptr);
  EXPECT_EQ(record.find("odd")->integer, 1);
}

}  // namespace
}  // namespace Kovra::frame

#include "frame/observer.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "frame/field.hpp"
#include "frame/sample.hpp"
#include "support/twin_trees.hpp"

namespace Kovra::frame {
namespace {

using namespace test;

/// The only member that `children` show.
Value onlyMember(std::string const& children, char const* name) {
  Watched const outcome(children);
  EXPECT_EQ(outcome.shown.size(), 1U) << children;
  Value const* const value = outcome.shown.find(name);
  EXPECT_NE(value, nullptr) << children;
  return value != nullptr ? *value : Value();
}

/// The only remark on `children`, which is about that element.
Remark onlyRemark(std::string const& children, std::string const& element) {
  Watched const outcome(children);
  EXPECT_EQ(outcome.remarks.size(), 1U) << children;
  if (outcome.remarks.empty()) return {};
  EXPECT_EQ(outcome.elementOf(outcome.remarks.front()), element) << children;
  EXPECT_EQ(outcome.remarks.front().count, 1U) << children;
  return outcome.remarks.front();
}

/// The name of the first element in `children`.
std::string firstIn(std::string const& children) {
  return children.substr(1, children.find_first_of(" />") - 1);
}

Remark onlyRemark(std::string const& children) {
  return onlyRemark(children, firstIn(children));
}

using Texts = std::vector<std::string>;

Texts wordsOf(Remark const& remark) {
  Texts all;
  if (remark.words == nullptr) return all;
  for (Word const& word : remark.words->words) all.emplace_back(word.text);
  return all;
}

TEST(ObservedWalk, ReadsAsTheUnobservedOne) {
  for (char const* const children :
       {"", "<whole>1</whole>", "<whole>1</whole><narrow/>", "<narrow/><whole>1</whole><other/>",
        "<other/>", "<inner><depth>3</depth><tag/></inner>", "<inner/>", "<group/>", "<odd/>",
        "<odd/><odd/>", "<group><grouped>1</grouped></group>", "<bits>0</bits>", "<lock/>"}) {
    EXPECT_EQ(Watched(children).result, walked(children, Sample{}).result) << children;
  }
}

TEST(ObservedWalk, ShowsOnlyWhatTheDocumentNamesInItsOrder) {
  Watched const outcome("<narrow>2</narrow><other>9</other><whole>1</whole><real/>");
  ASSERT_TRUE(outcome.shown.isRecord());
  ASSERT_EQ(outcome.shown.size(), 2U);
  EXPECT_EQ(outcome.shown.members()[0].name(), "narrow");
  EXPECT_EQ(outcome.shown.members()[1].name(), "whole");
}

TEST(ObservedWalk, ShowsARepeatedMemberOnceWithItsLastValue) {
  EXPECT_EQ(onlyMember("<whole>1</whole><whole>2</whole>", "whole").asInteger(), 2);
}

TEST(ObservedWalk, NamesMembersAndNotElements) {
  EXPECT_EQ(onlyMember("<wide-number>7</wide-number>", "wide").asInteger(), 7);
  EXPECT_TRUE(onlyMember("<lock>locked</lock>", "locked").asBool());
}

TEST(ObservedWalk, ShowsEachKindOfValueAsTheRecordHoldsIt) {
  Value const natural = onlyMember("<narrow>70000</narrow>", "narrow");
  EXPECT_EQ(natural.kind(), Value::Kind::natural);
  EXPECT_EQ(natural.asNatural(), 4464U);
  EXPECT_FALSE(natural.isHexadecimal());
  Value const integer = onlyMember("<whole>-5</whole>", "whole");
  EXPECT_EQ(integer.kind(), Value::Kind::integer);
  EXPECT_EQ(integer.asInteger(), -5);
  Value const real = onlyMember("<real>24.35</real>", "real");
  EXPECT_EQ(real.kind(), Value::Kind::real);
  EXPECT_EQ(real.asReal(), 24.35);
  Value const bits = onlyMember("<bits>0x1A</bits>", "bits");
  EXPECT_EQ(bits.kind(), Value::Kind::natural);
  EXPECT_EQ(bits.asNatural(), 26U);
  EXPECT_TRUE(bits.isHexadecimal());
  EXPECT_EQ(onlyMember("<text>12345678</text>", "text").asText(), "1234567");
  EXPECT_TRUE(onlyMember("<door>misspelt</door>", "open").asBool());
  EXPECT_EQ(onlyMember("<mac>0A:1B:2C</mac>", "mac").asText(), "0a:1b:2c:00:00:00");
  EXPECT_EQ(onlyMember("<sensor at='5'/>", "reading").asInteger(), 5);
  EXPECT_EQ(onlyMember("<level min='1' max='9'>5</level>", "level"),
            Value::object({{"min", 1}, {"max", 9}, {"val", 5}}));
  EXPECT_EQ(onlyMember("<third>yes</third><first>no</first>", "flags"),
            Value::object({{"third", true}, {"first", false}}));
  EXPECT_EQ(onlyMember("<word>twin</word>", "word"), Value::keyword(2, "twin"));
}

TEST(ObservedWalk, ShowsNestedRecordsAndTheMembersOfGroups) {
  EXPECT_EQ(onlyMember("<inner><depth>3</depth></inner>", "inner"), Value::object({{"depth", 3}}));
  EXPECT_EQ(onlyMember("<group><grouped>4</grouped></group>", "grouped").asInteger(), 4);
}

TEST(ObservedWalk, DoesNotShowARecordOfWhichNothingWasRead) {
  EXPECT_EQ(Watched("<inner><other/></inner>").shown, Value::object());
}

TEST(ObservedWalk, HasNoRemarkOnADocumentThatItKnowsWhole) {
  EXPECT_TRUE(Watched("<whole> 7 </whole><narrow>65535</narrow><counter>65535</counter>"
                      "<natural>4294967295</natural><wide-number>-9223372036854775808</wide-number>"
                      "<real>2.5</real><bits>0xFFFFFFFF</bits><text>1234567</text><word>dual</word>"
                      "<shade>pale</shade><lock>locked</lock><door>open</door>"
                      "<inner><depth>1</depth><tag>abc</tag></inner>"
                      "<group><grouped>1</grouped></group>"
                      "<mac>0A:1b:2c:3d:4e:5f</mac><sensor at='5'/><known>twin</known>"
                      "<enabled>disabled</enabled><wanted>yes</wanted><first>no</first>"
                      "<level min='1' max='9'>5</level><ratio min='1' max='9'>2.5</ratio>")
                  .remarks.empty());
}

TEST(ObservedWalk, RemarksOnNothingThatNoRowNames) {
  EXPECT_TRUE(Watched("<other>1</other><inner><other/><depth>1</depth></inner>").remarks.empty())
      << "what nothing used is found in the end";
}

TEST(ObservedWalk, RemarksOnElementsThatComeAgainWithWhatTheyOverwrite) {
  Watched const outcome("<whole>1</whole><text>one</text><whole>2</whole><whole>x</whole>");
  ASSERT_EQ(outcome.remarks.size(), 3U);
  EXPECT_EQ(outcome.remarks[0].what, Remarked::repeatedElement);
  EXPECT_EQ(outcome.remarks[0].found, "1");
  EXPECT_EQ(outcome.tree().view(outcome.tree().node(outcome.remarks[0].index + 1).value), "2")
      << "it is about the one that came again";
  EXPECT_EQ(outcome.remarks[1].what, Remarked::notANumber);
  EXPECT_EQ(outcome.remarks[2].what, Remarked::repeatedElement);
  EXPECT_EQ(outcome.remarks[2].found, "2");
  EXPECT_EQ(outcome.remarks[2].index, outcome.remarks[1].index);
}

TEST(ObservedWalk, RemarksOnRecordsThatComeAgainAndNotOnWhatStoodInThem) {
  Watched const outcome(
      "<inner><depth>1</depth></inner><inner><depth>2</depth></inner><odd/><odd/>");
  ASSERT_EQ(outcome.remarks.size(), 2U);
  for (Remark const& remark : outcome.remarks) {
    EXPECT_EQ(remark.what, Remarked::repeatedElement);
    EXPECT_EQ(remark.found, "");
    EXPECT_EQ(remark.earlier, "");
  }
  EXPECT_EQ(outcome.elementOf(outcome.remarks[0]), "inner");
  EXPECT_EQ(outcome.elementOf(outcome.remarks[1]), "odd");
}

TEST(ObservedWalk, RemarksOnNoElementThatOverwritesNothing) {
  for (char const* const children :
       {"<whole>1</whole><whole/>", "<whole/><whole>1</whole>", "<text>a</text><text/>",
        "<word>dual</word><word/>", "<inner><depth>1</depth></inner><inner/>",
        "<inner><depth>1</depth></inner><inner><other>2</other></inner>",
        "<inner/><inner><depth>1</depth></inner>", "<level>5</level><level/>",
        "<sensor at='5'/><sensor/>", "<bits>0x1</bits><bits>zz</bits>"}) {
    for (Remark const& remark : Watched(children).remarks) {
      EXPECT_NE(remark.what, Remarked::repeatedElement) << children;
    }
  }
}

TEST(ObservedWalk, RemarksOnTheLastElementThatSaidWhatIsOverwritten) {
  Watched const outcome("<whole>1</whole><whole/><whole>2</whole>");
  ASSERT_EQ(outcome.remarks.size(), 2U);
  EXPECT_EQ(outcome.remarks[0].what, Remarked::emptyElement);
  EXPECT_EQ(outcome.remarks[1].what, Remarked::repeatedElement);
  EXPECT_EQ(outcome.remarks[1].found, "1");
}

constexpr Table clearedRows = {clearedYesOrNo<&Sample::wanted>("wanted")};

TEST(ObservedWalk, RemarksOnAnElementThatClearsAFlagWithoutAWord) {
  for (bool const isSet : {true, false}) {
    std::string const first = isSet ? "<wanted>yes</wanted>" : "<wanted>no</wanted>";
    Scanned const scanned("<sample>" + first + "<wanted/></sample>");
    Value shown;
    Observer observer(scanned.tree(), shown);
    Sample record{};
    walk(firstElement(scanned.tree()), clearedRows, record, observer);
    EXPECT_FALSE(record.wanted);
    EXPECT_EQ(shown, Value::object({{"wanted", false}}));
    ASSERT_EQ(observer.remarks().size(), isSet ? 2U : 1U);
    EXPECT_EQ(observer.remarks().front().what, Remarked::emptyElement);
    if (!isSet) continue;
    EXPECT_EQ(observer.remarks().back().what, Remarked::repeatedElement);
    EXPECT_EQ(observer.remarks().back().found, "yes");
  }
}

/// The remarks on the children of a root that a table of the test's own reads.
template <auto const& Table>
std::vector<Remark> remarksOn(std::string const& children) {
  Scanned scanned("<sample>" + children + "</sample>");
  Value shown;
  Observer observer(scanned.tree(), shown);
  Sample record{};
  walk(firstElement(scanned.tree()), Table, record, observer);
  return observer.remarks();
}

constexpr Table addingRows = {adding(number<&Sample::whole>("whole")),
                              number<&Sample::narrow>("narrow")};
constexpr Table secretRows = {secretText<&Sample::text>("text")};

TEST(ObservedWalk, DoesNotRemarkOnElementsThatAddToTheirMember) {
  EXPECT_TRUE(remarksOn<addingRows>("<whole>1</whole><whole>2</whole>").empty());
  EXPECT_EQ(remarksOn<addingRows>("<narrow>1</narrow><narrow>2</narrow>").size(), 1U);
}

TEST(ObservedWalk, DoesNotTellASecretThatWasOverwritten) {
  std::vector<Remark> const remarks = remarksOn<secretRows>("<text>key</text><text>new</text>");
  ASSERT_EQ(remarks.size(), 1U);
  EXPECT_EQ(remarks[0].what, Remarked::repeatedElement);
  EXPECT_EQ(remarks[0].found, "");
}

TEST(ObservedWalk, RemarksOnUnknownWordsWithTheWordsThatWouldBeRight) {
  Remark const remark = onlyRemark("<word>triple</word>");
  EXPECT_EQ(remark.what, Remarked::unknownWord);
  EXPECT_EQ(remark.found, "triple");
  EXPECT_EQ(wordsOf(remark), (Texts{"single", "dual", "twin"}));
  EXPECT_EQ(onlyMember("<word>triple</word>", "word"), Value::unknownKeyword(9, "triple"));
}

TEST(ObservedWalk, RemarksOnWordsInAnotherSpelling) {
  Remark const remark = onlyRemark("<shade>Pale</shade>");
  EXPECT_EQ(remark.what, Remarked::otherSpelling);
  EXPECT_EQ(remark.found, "Pale");
  EXPECT_EQ(remark.kept, "pale");
  EXPECT_EQ(onlyMember("<shade>DARK</shade>", "shade"), Value::keyword(dark, "dark"));
}

TEST(ObservedWalk, RemarksOnWordsOfFlagsThatAreNeitherOfTheTwo) {
  for (auto const& [children, words] :
       {std::pair<char const*, Texts>{"<lock>Locked</lock>", {"locked", "unlocked"}},
        {"<door>ajar</door>", {"closed", "open"}}}) {
    Remark const remark = onlyRemark(children);
    EXPECT_EQ(remark.what, Remarked::unknownWord) << children;
    EXPECT_EQ(remark.words != nullptr ? wordsOf(remark) : remark.expected, words) << children;
  }
  for (char const* const children : {"<lock>unlocked</lock>", "<door>open</door>"}) {
    EXPECT_TRUE(Watched(children).remarks.empty()) << children;
  }
}

TEST(ObservedWalk, RemarksOnTextsThatAreNoNumbers) {
  for (char const* const children :
       {"<whole>none</whole>", "<whole>12abc</whole>", "<whole>0x1A</whole>", "<real>2,5</real>",
        "<bits>26</bits>", "<bits>0x</bits>", "<whole>3.9</whole>", "<mac>00:1A:2b</mac>",
        "<mac>01:02:03:04:05:06:07</mac>"}) {
    Remark const remark = onlyRemark(children);
    EXPECT_EQ(remark.what, Remarked::notANumber) << children;
    EXPECT_EQ(remark.expected.size(), 1U) << children;
    EXPECT_NE(std::string(children).find(">" + remark.found + "<"), std::string::npos) << children;
  }
}

TEST(ObservedWalk, DoesNotShowANumberThatWasNotStored) {
  EXPECT_TRUE(Watched("<bits>26</bits>").shown.empty());
  // The prefix is within the characters that are read, its digits are not.
  EXPECT_TRUE(Watched("<bits><![CDATA[0x" + std::string(40, ' ') + "1A]]></bits>").shown.empty());
}

TEST(ObservedWalk, RemarksOnNumbersThatTheirMemberCannotHold) {
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
    Remark const remark = onlyRemark(children);
    EXPECT_EQ(remark.what, Remarked::changedNumber) << children;
    EXPECT_EQ(remark.kept, kept) << children;
    EXPECT_NE(std::string(children).find(">" + remark.found + "<"), std::string::npos) << children;
  }
}

TEST(ObservedWalk, RemarksOnRealsThatTheirMemberCannotHold) {
  EXPECT_EQ(onlyRemark("<real>1e300</real>").what, Remarked::changedNumber);
}

TEST(ObservedWalk, RemarksOnHexadecimalsThatTheirMemberCannotHold) {
  for (std::string const& text : {std::string("0x1FFFFFFFF"), "0x" + std::string(28, '0') + "1A"}) {
    EXPECT_EQ(onlyRemark("<bits>" + text + "</bits>").what, Remarked::changedNumber) << text;
  }
}

TEST(ObservedWalk, RemarksOnValuesThatWerePutWithinTheirBounds) {
  for (char const* const children :
       {"<level min='1' max='9'>0</level>", "<level min='1' max='9'>10</level>",
        "<ratio min='1' max='9'>0.5</ratio>", "<ratio min='1' max='9'>1e300</ratio>"}) {
    Remark const remark = onlyRemark(children);
    EXPECT_EQ(remark.what, Remarked::changedNumber) << children;
    EXPECT_EQ(remark.kept[0], std::string(children).find(">0") != std::string::npos ? '1' : '9')
        << children;
  }
}

TEST(ObservedWalk, RemarksOnTextsThatWereCut) {
  Remark const remark = onlyRemark("<text>12345678</text>");
  EXPECT_EQ(remark.what, Remarked::cutText);
  EXPECT_EQ(remark.found, "12345678");
  EXPECT_EQ(remark.kept, "1234567");
}

TEST(ObservedWalk, RemarksOnEmptyElementsOfEveryKindOfRow) {
  for (char const* const name :
       {"whole",   "narrow", "counter", "natural", "wide-number", "real", "bits",
        "text",    "word",   "known",   "any",     "shade",       "lock", "door",
        "enabled", "wanted", "first",   "mac",     "inner",       "group"}) {
    Remark const remark = onlyRemark("<" + std::string(name) + "/>");
    EXPECT_EQ(remark.what, Remarked::emptyElement) << name;
  }
}

TEST(ObservedWalk, ShowsWhatAnElementWithoutTextStored) {
  Watched const found("<any>dual</any><any/>");
  EXPECT_FALSE(found.result);
  Value const* const any = found.shown.find("any");
  ASSERT_NE(any, nullptr);
  EXPECT_EQ(*any, Value::unknownKeyword(words.unknown, "")) << "and not the code that it overwrote";
  EXPECT_EQ(Watched("<word/>").shown.find("word"), nullptr) << "it stored nothing";
}

TEST(ObservedWalk, TellsWhichAttributeIsMissing) {
  Remark const remark = onlyRemark("<sensor>7</sensor>");
  EXPECT_EQ(remark.what, Remarked::noAttribute);
  EXPECT_EQ(remark.expected, Texts{"at"});
  EXPECT_EQ(onlyRemark("<level>0</level>").expected, (Texts{"min", "max"}));
}

TEST(ObservedWalk, RemarksOnWordsThatMeanNoOnlyBecauseTheyAreUnknown) {
  for (char const* const children :
       {"<enabled>on</enabled>", "<wanted>Yes</wanted>", "<first>maybe</first>"}) {
    Remark const remark = onlyRemark(children);
    EXPECT_EQ(remark.what, Remarked::unknownWord) << children;
    EXPECT_EQ(wordsOf(remark), (Texts{"enabled", "yes", "disabled", "no"}));
  }
}

TEST(ObservedWalk, KeepsTheTextOfASecretOutOfItsRemarks) {
  for (char const* const children :
       {"<text>secret-text</text>", "<word>secret</word>", "<whole>secret</whole>",
        "<narrow>70000</narrow>", "<bits>secret</bits>", "<mac>se:cr:et</mac>",
        "<real>1</real><real>2</real>"}) {
    Scanned const scanned("<sample>" + std::string(children) + "</sample>");
    Value shown;
    Observer observer(scanned.tree(), shown);
    observer.secrecy(true);
    Sample record{};
    EXPECT_EQ(walk(firstElement(scanned.tree()), table, record, observer), walked(children).result);
    for (Kovra::Member const& member : shown.members()) {
      EXPECT_TRUE(member.value().isSecret()) << children;
    }
    ASSERT_EQ(observer.remarks().size(), 1U) << children;
    EXPECT_EQ(observer.remarks()[0].found, "") << children;
    EXPECT_EQ(observer.remarks()[0].kept, "") << children;
  }
}

TEST(ObservedWalk, ListsAThousandRemarksAndCountsTheRest) {
  std::string children = "<odd/>";
  for (int i = 0; i < 1234; ++i) children += "<odd/>";
  Watched const outcome(children);
  EXPECT_EQ(outcome.shown.at("odd").asInteger(), 1235);
  EXPECT_EQ(outcome.remarks.size(), 1000U);
  EXPECT_EQ(outcome.unlisted, 234U);
}

/// The list of two, read of a text and watched.
struct WatchedList {
  explicit WatchedList(std::string const& text)
      : scanned(text), usage(scanned.tree().nodes().size(), scanned.tree().attributeCount()) {
    scanned.tree().watch(&usage);
  }

  template <class Into>
  bool read(Into& into) {
    Observer observer(scanned.tree(), into);
    List list{};
    bool const result =
        readEntriesOf<&List::items>(firstElement(scanned.tree()), items, {list.items, 2}, observer);
    remarks = observer.remarks();
    return result;
  }

  Scanned scanned;
  Usage usage;
  std::vector<Remark> remarks;
};

TEST(ObservedEntries, AreShownWithTheirSurplusToldOnce) {
  WatchedList list(
      "<list><item><depth>1</depth></item><item/><other/><item/><item>7</item></list>");
  Value shown;
  EXPECT_FALSE(list.read(shown));
  EXPECT_EQ(shown, Value::object(
                       {{"items", Value::list({Value::object({{"depth", 1}}), Value::object()})}}));
  ASSERT_EQ(list.remarks.size(), 1U);
  EXPECT_EQ(list.remarks[0].what, Remarked::surplusEntries);
  EXPECT_EQ(list.remarks[0].kept, "2");
  EXPECT_EQ(list.remarks[0].count, 2U);
  Element const root = firstElement(list.scanned.tree());
  EXPECT_EQ(list.remarks[0].index,
            root.firstChild().nextSibling().nextSibling().nextSibling().index())
      << "the first for which there is no room";
}

TEST(ObservedEntries, ShowAListWithoutEntries) {
  Value shown;
  EXPECT_FALSE(WatchedList("<list/>").read(shown));
  EXPECT_EQ(shown, Value::object({{"items", Value::list()}}));
}

TEST(ObservedEntries, MayBeSingleValues) {
  Scanned const scanned("<list/>");
  Value shown;
  Observer observer(scanned.tree(), shown);
  observer.item("items", 1, [&] {
    observer.member("whatever", 7);
    return true;
  });
  observer.item("items", 2, [] { return false; });
  EXPECT_EQ(shown.at("items"), Value::list({{}, 7, {}}));
  EXPECT_TRUE(observer.clearEntry("items", 1));
  EXPECT_FALSE(observer.clearEntry("items", 1)) << "it shows nothing";
  EXPECT_FALSE(observer.clearEntry("items", 99));
  EXPECT_EQ(shown.at("items"), Value::list({{}, {}, {}}));
}

// Trails.

/// What a reading of `children` leaves.
struct Trailed {
  explicit Trailed(std::string const& children) {
    Scanned const scanned("<sample>" + children + "</sample>");
    Observer observer(scanned.tree(), trail);
    Sample record{};
    walk(firstElement(scanned.tree()), table, record, observer);
  }
  bool has(std::string_view path) const { return trail.has(path); }

  Trail trail;
};

TEST(Trails, HaveWhatWasReadByItsPath) {
  Trailed const trail(
      "<wide-number>1</wide-number><inner><depth>1</depth></inner>"
      "<group><grouped>1</grouped></group><level min='1'>5</level><third>yes</third>"
      "<bits>0x1</bits><word>twin</word>");
  for (char const* const path : {"wide", "inner", "inner.depth", "grouped", "level", "level.min",
                                 "level.val", "flags", "flags.third", "bits", "word"}) {
    EXPECT_TRUE(trail.has(path)) << path;
  }
  for (char const* const path :
       {"", "wide-number", "whole", "inner.tag", "depth", ".depth", "inner.", "inner.depth.x",
        "nner.depth", "inner[0]", "level.max", "flags.first", "group"}) {
    EXPECT_FALSE(trail.has(path)) << path;
  }
}

TEST(Trails, LackRecordsOfWhichNothingWasRead) {
  EXPECT_FALSE(Trailed("<inner><other/></inner>").has("inner"));
  EXPECT_TRUE(Trailed("<inner><depth>1</depth></inner><inner/>").has("inner"));
}

TEST(Trails, HaveEntriesByTheirNumbers) {
  WatchedList list("<list><item/><item><depth>1</depth></item><item/></list>");
  Trail trail;
  EXPECT_TRUE(list.read(trail));
  EXPECT_EQ(list.remarks.size(), 1U) << "they are told of all the same";
  for (char const* const path : {"items", "items[0]", "items[1]", "items[1].depth"}) {
    EXPECT_TRUE(trail.has(path)) << path;
  }
  for (char const* const path :
       {"items[2]", "items[0].depth", "items[1].tag", "items[01]", "items[]", "[1]", "items.1"}) {
    EXPECT_FALSE(trail.has(path)) << path;
  }
}

TEST(Trails, HaveAListWithoutEntries) {
  Trail trail;
  EXPECT_FALSE(WatchedList("<list/>").read(trail));
  EXPECT_TRUE(trail.has("items"));
}

}  // namespace
}  // namespace Kovra::frame

#include "frame/observer.hpp"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

#include "frame/field.hpp"
#include "frame/sample.hpp"
#include "support/tree.hpp"

namespace Kovra::frame {
namespace {

using namespace test;

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
  Value const level = onlyMember("<level min='1' max='9'>5</level>", "level");
  EXPECT_EQ(level.kind, Value::Kind::record);
  ASSERT_EQ(level.members.size(), 3U);
  EXPECT_EQ(level.find("min")->integer, 1);
  EXPECT_EQ(level.find("max")->integer, 9);
  EXPECT_EQ(level.find("val")->integer, 5);
  Value const flags = onlyMember("<third>yes</third><first>no</first>", "flags");
  EXPECT_EQ(flags.kind, Value::Kind::record);
  ASSERT_EQ(flags.members.size(), 2U);
  EXPECT_TRUE(flags.find("third")->flag);
  EXPECT_FALSE(flags.find("first")->flag);
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
                      "<mac>0A:1b:2c:3d:4e:5f</mac><sensor at='5'/><known>twin</known>"
                      "<enabled>disabled</enabled><wanted>yes</wanted><first>no</first>"
                      "<level min='1' max='9'>5</level><ratio min='1' max='9'>2.5</ratio>")
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

TEST(ObservedWalk, NotesValuesThatWerePutWithinTheirBounds) {
  for (char const* const children :
       {"<level min='1' max='9'>0</level>", "<level min='1' max='9'>10</level>",
        "<ratio min='1' max='9'>0.5</ratio>", "<ratio min='1' max='9'>1e300</ratio>"}) {
    Note const note = onlyNote(children);
    EXPECT_EQ(note.kind, Note::Kind::changedNumber) << children;
    EXPECT_EQ(note.kept[0], std::string(children).find(">0") != std::string::npos ? '1' : '9')
        << children;
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
       {"whole",   "narrow", "counter", "natural", "wide-number", "real", "bits",
        "text",    "word",   "known",   "any",     "shade",       "lock", "door",
        "enabled", "wanted", "first",   "mac",     "inner",       "group"}) {
    Note const note = onlyNote("<" + std::string(name) + "/>");
    EXPECT_EQ(note.kind, Note::Kind::emptyElement) << name;
    EXPECT_EQ(note.element, name);
  }
}

TEST(ObservedWalk, ShowsWhatAnElementWithoutTextStored) {
  Watched const found = watched("<any>dual</any><any/>");
  EXPECT_FALSE(found.result);
  Value const* const any = found.shown.find("any");
  ASSERT_NE(any, nullptr);
  EXPECT_EQ(any->kind, Value::Kind::keyword);
  EXPECT_EQ(any->integer, words.unknown) << "and not the code that it overwrote";
  EXPECT_EQ(any->text, "");
  EXPECT_FALSE(any->known);
  EXPECT_EQ(watched("<word/>").shown.find("word"), nullptr) << "it stored nothing";
}

TEST(ObservedWalk, NotesWhichAttributeIsMissing) {
  Note const note = onlyNote("<sensor>7</sensor>");
  EXPECT_EQ(note.kind, Note::Kind::noAttribute);
  EXPECT_EQ(note.element, "sensor");
  EXPECT_EQ(note.expected, std::vector<std::string>{"at"});
  EXPECT_EQ(onlyNote("<level>0</level>").expected, (std::vector<std::string>{"min", "max"}));
}

TEST(ObservedWalk, NotesWordsThatMeanNoOnlyBecauseTheyAreUnknown) {
  for (char const* const children :
       {"<enabled>on</enabled>", "<wanted>Yes</wanted>", "<first>maybe</first>"}) {
    Note const note = onlyNote(children);
    EXPECT_EQ(note.kind, Note::Kind::unknownWord) << children;
    EXPECT_EQ(note.expected, (std::vector<std::string>{"enabled", "yes", "disabled", "no"}));
  }
}

TEST(ObservedWalk, KeepsTheTextOfASecretOutOfItsNotes) {
  for (char const* const children :
       {"<text>secret-text</text>", "<word>secret</word>", "<whole>secret</whole>",
        "<narrow>70000</narrow>", "<bits>secret</bits>", "<mac>se:cr:et</mac>"}) {
    test::Tree tree("<sample>" + std::string(children) + "</sample>");
    Value shown;
    Observer observer(shown);
    observer.secrecy(true);
    Sample record{};
    EXPECT_TRUE(walk(HostTree(tree.root()).root(), table, record, observer));
    for (Kovra::Member const& member : shown.members) {
      EXPECT_TRUE(member.value.secret) << children;
    }
    ASSERT_EQ(observer.remarks().size(), 1U) << children;
    EXPECT_EQ(observer.remarks()[0].note.found, "") << children;
    EXPECT_EQ(observer.remarks()[0].note.kept, "") << children;
  }
}

TEST(ObservedWalk, KnowsTheElementsThatARowTook) {
  test::Tree tree("<sample><other/><inner><depth>1</depth><odd/></inner></sample>");
  Value record;
  Observer observer(record);
  Sample sample{};
  HostTree const flat(tree.root());
  walk(flat.root(), table, sample, observer);
  Element const other = flat.root().firstChild();
  Element const inner = other.nextSibling();
  EXPECT_FALSE(observer.knows(other));
  EXPECT_TRUE(observer.knows(inner));
  EXPECT_TRUE(observer.knows(inner.firstChild()));
  EXPECT_FALSE(observer.knows(inner.firstChild().nextSibling()));
}

TEST(ObservedWalk, ListsAThousandNotesAndCountsTheRest) {
  std::string children;
  for (int i = 0; i < 1234; ++i) children += "<other/>";
  test::Tree tree("<sample>" + children + "</sample>");
  Value shown;
  Observer observer(shown);
  Sample record{};
  EXPECT_FALSE(walk(HostTree(tree.root()).root(), table, record, observer));
  EXPECT_EQ(observer.remarks().size(), 1000U);
  EXPECT_EQ(observer.unlisted(), 234U);
}

TEST(ObservedEntries, AreShownWithTheirSurplusNoted) {
  test::Tree tree("<list><item><depth>1</depth></item><item/><other/><item/></list>");
  Value shown;
  Observer observer(shown);
  List list{};
  EXPECT_FALSE(
      readEntriesOf<&List::items>(HostTree(tree.root()).root(), items, {list.items, 2}, observer));
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

TEST(ObservedEntries, ShowAListWithoutEntries) {
  test::Tree tree("<list/>");
  Value shown;
  Observer observer(shown);
  List list{};
  EXPECT_FALSE(
      readEntriesOf<&List::items>(HostTree(tree.root()).root(), items, {list.items, 2}, observer));
  ASSERT_NE(shown.find("items"), nullptr);
  EXPECT_EQ(shown.find("items")->kind, Value::Kind::list);
  EXPECT_TRUE(shown.find("items")->items.empty());
}

TEST(ObservedEntries, MayBeSingleValues) {
  Value shown;
  Observer observer(shown);
  observer.item("items", 1, [&] {
    observer.member("whatever", frame::shown(7));
    return true;
  });
  observer.item("items", 2, [] { return false; });
  Value const* const items = shown.find("items");
  ASSERT_NE(items, nullptr);
  ASSERT_EQ(items->items.size(), 3U);
  EXPECT_EQ(items->items[0].kind, Value::Kind::nothing);
  EXPECT_EQ(items->items[1].kind, Value::Kind::integer);
  EXPECT_EQ(items->items[1].integer, 7);
  EXPECT_EQ(items->items[2].kind, Value::Kind::nothing);
  observer.clearEntry("items", 1);
  observer.clearEntry("items", 99);
  EXPECT_EQ(shown.find("items")->items[1].kind, Value::Kind::nothing);
  EXPECT_EQ(shown.find("items")->items.size(), 3U);
}

}  // namespace
}  // namespace Kovra::frame

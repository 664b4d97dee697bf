// The way back: tables that write elements and take values.

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

#include "frame/field.hpp"
#include "support/tree.hpp"

namespace Kovra {
namespace {

using namespace frame;
using test::printed;
using test::Tree;

// A small family of its own.

enum Speed : int { slow = 0, fast = 1 };

struct Bound {
  _MinMaxVal whole;
  _MinMaxValFloat real;
};

struct Sample {
  int number;
  unsigned int natural;
  float real;
  char text[4];
  char secret[4];
  unsigned char hardware[6];
  bool on;
  char open;
  Speed speed;
  unsigned char level;
  unsigned char bits;
  Bound bound;
  Bound entries[2];
};

constexpr Word speedWords[] = {{"slow", slow}, {"fast", fast}, {"quick", fast}};
constexpr Vocabulary speeds{speedWords, Match::exact, -1};
static_assert(everyWordIsReachable(speeds));

constexpr Word levelWords[] = {{"low", 1}, {"high", 2}};
constexpr Vocabulary levels{levelWords, Match::exact, 0};
static_assert(everyWordIsReachable(levels));

constexpr Word bitWords[] = {{"first", 0x01}, {"third", 0x04}};
constexpr Vocabulary bits{bitWords, Match::exact, 0};
static_assert(everyWordIsReachable(bits));

constexpr Circumstances sunny = 1, windy = 2;

constexpr Table boundTable = {
    bounded<&Bound::whole>("whole"),
    when(windy, bounded<&Bound::real>("real")),
};

constexpr Keywords levelKeyword{
    .read = &levels, .written = &levels, .otherwise = "high", .knownOnly = true};

constexpr Table insideGroup = {
    number<&Sample::natural>("natural"),
};

constexpr Table table = {
    number<&Sample::number>("number"),
    group<Sample, insideGroup>("group"),
    number<&Sample::real>("real"),
    text<&Sample::text>("text"),
    secretText<&Sample::secret>("secret"),
    address<&Sample::hardware>("hardware"),
    enabled<&Sample::on>("on"),
    yesOrNo<&Sample::open>("open"),
    keyword<&Sample::speed, speeds>("speed"),
    keywordBy<&Sample::level, levelKeyword>("level"),
    bitFlag<&Sample::bits, bits>("first"),
    bitFlag<&Sample::bits, bits>("third"),
    when(sunny, nested<&Sample::bound, boundTable>("bound")),
};

std::string written(Sample const& sample, Circumstances circumstances) {
  TiXmlElement parent("p");
  EXPECT_TRUE(writeAll(parent, table, sample, circumstances, false));
  return printed(parent);
}

Sample example() {
  Sample sample{};
  sample.number = -5;
  sample.natural = 4000000000U;
  sample.real = 1.5F;
  std::memcpy(sample.text, "abcd", 4);  // not terminated
  std::strcpy(sample.secret, "key");
  sample.hardware[0] = 0xAB;
  sample.on = true;
  sample.open = 1;
  sample.speed = fast;
  sample.level = 1;
  sample.bits = 0xFC;
  sample.bound.whole = {1, 9, 5};
  sample.bound.real = {0.5F, 2.25F, 1.0F};
  return sample;
}

constexpr char plain[] =
    "<number>-5</number><group><natural>4000000000</natural></group><real>1.5000</real>"
    "<text>abcd</text><secret>key</secret><hardware>ab:00:00:00:00:00</hardware>"
    "<on>enabled</on><open>yes</open><speed>fast</speed><level>low</level>"
    "<first>no</first><third>yes</third>";

TEST(Writing, GoesRowByRow) {
  EXPECT_EQ(written(example(), 0), "<p>" + std::string(plain) + "</p>");
}

TEST(Writing, FollowsTheCircumstancesAlsoInNestedTables) {
  std::string const whole = "<whole min=\"1\" max=\"9\">5</whole>";
  EXPECT_EQ(written(example(), windy), "<p>" + std::string(plain) + "</p>");
  EXPECT_EQ(written(example(), sunny),
            "<p>" + std::string(plain) + "<bound>" + whole + "</bound></p>");
  EXPECT_EQ(written(example(), sunny | windy),
            "<p>" + std::string(plain) + "<bound>" + whole +
                "<real min=\"0.50\" max=\"2.25\">1.0000</real></bound></p>");
}

TEST(Writing, CodesWithoutAWord) {
  Sample sample = example();
  sample.speed = static_cast<Speed>(7);
  sample.level = 9;
  std::string const text = written(sample, 0);
  EXPECT_NE(text.find("<speed></speed><level>high</level>"), std::string::npos) << text;
}

TEST(Writing, ResultIsThatOfTheLastRow) {
  constexpr Table some = {number<&Sample::number>("number")};
  constexpr Table none = {readOnly(number<&Sample::number>("number")),
                          when(sunny, number<&Sample::number>("sunny"))};
  TiXmlElement parent("p");
  EXPECT_TRUE(writeAll(parent, some, example(), 0, false));
  EXPECT_FALSE(writeAll(parent, none, example(), 0, false)) << "the running result stays";
  EXPECT_TRUE(writeAll(parent, none, example(), 0, true));
  EXPECT_EQ(printed(parent), "<p><number>-5</number></p>");
  EXPECT_TRUE(writeBelow(parent, "below", some, example(), 0));
  EXPECT_FALSE(writeBelow(parent, "empty", none, example(), 0));
  EXPECT_EQ(printed(parent),
            "<p><number>-5</number><below><number>-5</number></below><empty /></p>");
}

TEST(Writing, OneWayRows) {
  constexpr Table ways = {
      readOnly(number<&Sample::number>("in")),
      writeOnly(number<&Sample::number>("out")),
      neverRead(number<&Sample::natural>("in")),
  };
  Sample sample = example();
  TiXmlElement parent("p");
  writeAll(parent, ways, sample, 0, false);
  EXPECT_EQ(printed(parent), "<p><out>-5</out><in>4000000000</in></p>");
  EXPECT_TRUE(walk(Tree("<p><in>3</in><out>4</out></p>").root(), ways, sample));
  EXPECT_EQ(sample.number, 3);
  EXPECT_EQ(sample.natural, 4000000000U);
}

TEST(Writing, UncountedRowsLeaveTheResult) {
  constexpr Table rows = {number<&Sample::number>("counts"),
                          uncounted(number<&Sample::natural>("does_not"))};
  Sample sample{};
  EXPECT_TRUE(walk(Tree("<p><counts>1</counts><does_not/></p>").root(), rows, sample));
  EXPECT_FALSE(walk(Tree("<p><counts/><does_not>1</does_not></p>").root(), rows, sample));
  EXPECT_FALSE(walk(Tree("<p><does_not>1</does_not></p>").root(), rows, sample));
  EXPECT_EQ(sample.natural, 1U);
}

// Values.

std::string told(Trouble const& trouble) {
  return (trouble.path.empty() ? "" : trouble.path + ": ") + "found " + trouble.found +
         "; expected " + trouble.expected;
}

/// "path: found ...; expected ...", a line for each problem, or "done".
std::string assigned(Sample& sample, Value const& value) {
  Problems problems;
  if (assignAll(table, sample, value, problems) == Assigned::done) return "done";
  std::string all;
  for (Trouble const& trouble : problems.all()) all += (all.empty() ? "" : "\n") + told(trouble);
  return all;
}

std::string refusal(std::string_view member, Value const& value) {
  Sample sample{};
  return assigned(sample, Value::object({{member, value}}));
}

TEST(Assigning, FillsTheMembersThatAreNamed) {
  Sample sample = example();
  EXPECT_EQ(
      assigned(sample,
               Value::object({{"number", 7},
                              {"natural", 8L},
                              {"real", 9},
                              {"text", "x"},
                              {"secret", "new"},
                              {"hardware", "01:02:03:04:05:FF"},
                              {"on", false},
                              {"open", false},
                              {"speed", "quick"},
                              {"level", 2},
                              {"bits", Value::object({{"first", true}, {"third", false}})},
                              {"bound", Value::object({{"whole", Value::object({{"val", 3}})}})}})),
      "done");
  EXPECT_EQ(sample.number, 7);
  EXPECT_EQ(sample.natural, 8U);
  EXPECT_EQ(sample.real, 9.0F);
  EXPECT_EQ(std::string(sample.text, 4), std::string("x\0\0\0", 4)) << "the rest is cleared";
  EXPECT_STREQ(sample.secret, "new");
  EXPECT_EQ(sample.hardware[0], 0x01);
  EXPECT_EQ(sample.hardware[5], 0xFF);
  EXPECT_FALSE(sample.on);
  EXPECT_EQ(sample.open, 0);
  EXPECT_EQ(sample.speed, fast);
  EXPECT_EQ(sample.level, 2);
  EXPECT_EQ(sample.bits, 0xF9) << "other bits stay";
  EXPECT_EQ(sample.bound.whole.val, 3);
  EXPECT_EQ(sample.bound.whole.max, 9) << "what is not named stays";
}

TEST(Assigning, TakesKeywordsInThreeForms) {
  Sample sample{};
  EXPECT_EQ(assigned(sample, Value::object({{"speed", 1}})), "done");
  EXPECT_EQ(sample.speed, fast);
  EXPECT_EQ(assigned(sample, Value::object({{"speed", "slow"}})), "done");
  EXPECT_EQ(sample.speed, slow);
  EXPECT_EQ(
      assigned(sample, Value::object({{"speed", Value::object({{"code", 7}, {"name", Value()}})}})),
      "done");
  EXPECT_EQ(static_cast<int>(sample.speed), 7) << "any code may be held";
}

TEST(Assigning, NamesTheKnownKeys) {
  EXPECT_EQ(refusal("numbr", 1),
            "numbr: found an unknown key; expected one of: number, natural, real, text, secret, "
            "hardware, on, open, speed, level, bits, bound");
  EXPECT_EQ(refusal("bound", Value::object({{"wole", 1}})),
            "bound.wole: found an unknown key; expected one of: whole, real");
  EXPECT_EQ(refusal("bound", Value::object({{"whole", Value::object({{"value", 1}})}})),
            "bound.whole.value: found an unknown key; expected one of: min, max, val");
  EXPECT_EQ(refusal("bits", Value::object({{"second", true}})),
            "bits.second: found an unknown key; expected one of: first, third");
  std::string const longer("first\0", 6);
  EXPECT_EQ(refusal("bits", Value::object({{longer, true}})),
            "bits." + longer + ": found an unknown key; expected one of: first, third")
      << "a word with more behind its end";
  EXPECT_EQ(refusal("group", Value::object({})).substr(0, 27), "group: found an unknown key")
      << "an element without a member";
}

TEST(Assigning, RefusesOtherKinds) {
  EXPECT_EQ(refusal("number", "six"),
            "number: found \"six\"; expected a whole number from -2147483648 to 2147483647");
  EXPECT_EQ(refusal("number", 1.5F),
            "number: found 1.500000; expected a whole number from -2147483648 to 2147483647");
  EXPECT_EQ(refusal("number", Value()),
            "number: found nothing; expected a whole number from -2147483648 to 2147483647");
  EXPECT_EQ(refusal("real", "1"), "real: found \"1\"; expected a number");
  EXPECT_EQ(refusal("text", 1), "text: found 1; expected a text");
  EXPECT_EQ(refusal("on", "enabled"), "on: found \"enabled\"; expected true or false");
  EXPECT_EQ(refusal("open", 1), "open: found 1; expected true or false");
  EXPECT_EQ(refusal("bits", 5), "bits: found 5; expected an object");
  EXPECT_EQ(refusal("bits", Value::object({{"first", 1}})),
            "bits.first: found 1; expected true or false");
  EXPECT_EQ(refusal("bound", Value::list({})), "bound: found a list; expected an object");
  EXPECT_EQ(refusal("speed", "sluggish"),
            "speed: found \"sluggish\"; expected one of: slow, fast, quick");
  EXPECT_EQ(refusal("speed", true),
            "speed: found true; expected a keyword: its code, or one of: slow, fast, quick");
  Sample sample{};
  EXPECT_EQ(assigned(sample, Value::list({})), "found a list; expected an object");
}

TEST(Assigning, RefusesWhatDoesNotFit) {
  EXPECT_EQ(refusal("number", 2147483648L),
            "number: found 2147483648; expected a whole number from -2147483648 to 2147483647");
  EXPECT_EQ(refusal("natural", -1),
            "natural: found -1; expected a whole number from 0 to 4294967295");
  EXPECT_EQ(refusal("text", "four"),
            "text: found \"four\"; expected a text of at most 3 bytes, none of them NUL");
  EXPECT_EQ(refusal("level", 256), "level: found 256; expected a code that the member can hold");
  EXPECT_EQ(refusal("level", -1), "level: found -1; expected a code that the member can hold");
  EXPECT_EQ(refusal("text", std::string("a\0b", 3)).substr(0, 5), "text:");
  EXPECT_EQ(refusal("text", "abc"), "done");
  EXPECT_NE(refusal("real", 1e39), "done");
  EXPECT_NE(refusal("real", std::numeric_limits<double>::quiet_NaN()), "done");
}

TEST(Assigning, RefusesHardwareAddressesThatAreNotWhole) {
  for (char const* const wrong :
       {"", "01:02:03:04:05", "01:02:03:04:05:06:07", "01-02-03-04-05-06", "01:02:03:04:05:0g"}) {
    EXPECT_EQ(refusal("hardware", wrong),
              "hardware: found \"" + std::string(wrong) +
                  "\"; expected six hexadecimal bytes with colons between them");
  }
  EXPECT_NE(refusal("hardware", std::string("01:02:03:04:05:06\0x", 19)), "done");
}

TEST(Assigning, TellsAllThatDoesNotFitInItsOrder) {
  Sample sample{};
  EXPECT_EQ(assigned(sample, Value::object({{"speed", "sluggish"},
                                            {"bound", Value::object({{"wole", 1}, {"real", 2}})},
                                            {"on", "enabled"},
                                            {"number", 7}})),
            "speed: found \"sluggish\"; expected one of: slow, fast, quick\n"
            "bound.wole: found an unknown key; expected one of: whole, real\n"
            "bound.real: found 2; expected an object\n"
            "on: found \"enabled\"; expected true or false");
}

TEST(Assigning, TellsNoSecrets) {
  EXPECT_EQ(refusal("secret", "hush").find("hush"), std::string::npos);
  EXPECT_EQ(refusal("secret", 4711).find("4711"), std::string::npos);
  EXPECT_NE(refusal("secret", 4711), "done");
}

TEST(Assigning, FillsArraysOfRecords) {
  Sample sample = example();
  auto const assign = [&](Value const& value) {
    Problems problems;
    return assignEntries(entries<boundTable>("entry"), sample.entries, 2, value, problems) ==
                   Assigned::done
               ? "done"
               : told(problems.all().front());
  };
  Value const five = Value::object({{"whole", Value::object({{"val", 5}})}});
  EXPECT_EQ(assign(Value::list({Value(), five})), "done");
  EXPECT_EQ(sample.entries[0].whole.val, 0) << "nothing leaves the entry";
  EXPECT_EQ(sample.entries[1].whole.val, 5);
  EXPECT_EQ(assign(Value::list({})), "done");
  EXPECT_EQ(sample.entries[1].whole.val, 5);
  EXPECT_EQ(assign(Value::list({five, five, five})),
            "found a list of 3; expected at most 2 entries");
  EXPECT_EQ(assign(five), "found an object; expected a list");
  EXPECT_EQ(assign(Value::list({five, Value::object({{"whole", 1}})})),
            "[1].whole: found 1; expected an object");
}

/// A remark in the words of this test.
std::string told(frame::Tree const& tree, Remark const& remark) {
  std::string const element = '<' + std::string(Element(tree, remark.index).name()) + "> ";
  std::string expected;
  for (std::string const& one : remark.expected) expected += (expected.empty() ? "" : ", ") + one;
  switch (remark.what) {
    case Remarked::cutText:
      return element + remark.found + " was cut to " + remark.kept;
    case Remarked::changedNumber:
      return element + remark.found + " became " + remark.kept;
    case Remarked::notANumber:
      return element + remark.found + " is not " + expected;
    case Remarked::noAttribute:
      return element + "has no " + expected;
    case Remarked::emptyElement:
      return element + "is empty";
    case Remarked::unknownWord:
      return element + remark.found + " is none of: " + listed(*remark.words);
    default:
      return element + "is something else";
  }
}

TEST(Assigning, TakesBackWhatAnObserverSaw) {
  Sample sent = example();
  TiXmlElement parent("p");
  writeAll(parent, table, sent, sunny | windy, false);
  HostTree const tree(&parent);
  Value seen;
  Observer observer(tree.tree(), seen);
  Sample read{};
  walk(tree.root(), table, read, observer);
  ASSERT_EQ(observer.remarks().size(), 1U);
  EXPECT_EQ(told(tree.tree(), observer.remarks()[0]), "<text> abcd was cut to abc")
      << "the text of four does not fit with its terminator";
  Sample again{};
  EXPECT_EQ(assigned(again, seen), "done");
  EXPECT_EQ(std::memcmp(&again, &read, sizeof read), 0);
}

// Remarks on settings with bounds and on flags.

std::string remarks(std::string const& children) {
  Tree tree("<p>" + children + "</p>");
  HostTree const flat(tree.root());
  Value seen;
  Observer observer(flat.tree(), seen);
  Sample sample{};
  walk(flat.root(), table, sample, observer);
  std::string all;
  for (Remark const& remark : observer.remarks()) all += told(flat.tree(), remark) + "\n";
  return all;
}

TEST(WatchedSettings, TellWhatWasMissingOrChanged) {
  auto const bound = [](std::string const& inner) {
    return remarks("<bound>" + inner + "</bound>");
  };
  EXPECT_EQ(bound("<whole min='1' max='9'>5</whole>"), "");
  EXPECT_EQ(bound("<whole min='1' max='9'>0</whole>"), "<whole> 0 became 1\n");
  EXPECT_EQ(bound("<real min='1' max='9.5'>10</real>"), "<real> 10 became 9.5\n");
  EXPECT_EQ(bound("<whole min='0' max='9'>x</whole>"), "<whole> x is not a whole decimal number\n");
  EXPECT_EQ(bound("<whole>0</whole>"), "<whole> has no min, max\n");
  EXPECT_EQ(bound("<whole min='0' max='9'/>"), "<whole> is empty\n");
}

TEST(WatchedSettings, OddWordsOfFlags) {
  EXPECT_EQ(remarks("<on>enabled</on><first>yes</first><open>disabled</open>"), "");
  EXPECT_EQ(remarks("<on>no</on>"), "");
  EXPECT_EQ(remarks("<on>Enabled</on>"), "<on> Enabled is none of: enabled, yes, disabled, no\n");
  EXPECT_EQ(remarks("<third>1</third>"), "<third> 1 is none of: enabled, yes, disabled, no\n");
  EXPECT_EQ(remarks("<third/><on/>"), "<third> is empty\n<on> is empty\n");
}

TEST(WatchedSettings, ShowTheirParts) {
  Tree tree(
      "<p><bound><whole max='9'>5</whole><real min='1' max='2'/></bound>"
      "<third>yes</third></p>");
  HostTree const flat(tree.root());
  Value seen;
  Observer observer(flat.tree(), seen);
  Sample sample{};
  walk(flat.root(), table, sample, observer);
  EXPECT_EQ(seen.at("bound.whole"), Value::object({{"max", 9}, {"val", 5}}))
      << "no lower bound was sent";
  EXPECT_EQ(seen.at("bound.real.val").asReal(), 1.0) << "clamped, though nothing was sent";
  EXPECT_EQ(seen.at("bits"), Value::object({{"third", true}}));
}

}  // namespace
}  // namespace Kovra

#include "frame/assign.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "frame/field.hpp"
#include "frame/sample.hpp"
#include "support/records.hpp"

namespace Kovra::frame {
namespace {

using namespace test;

TEST(AssignedValues, MakeTheRecordThatShowedThem) {
  std::string const children =
      "<whole>-7</whole><narrow>70000</narrow><counter>65535</counter><natural>4294967295</natural>"
      "<wide-number>-9223372036854775808</wide-number><real>24.35</real><text>1234567890</text>"
      "<word>twin</word><shade>DARK</shade><lock>locked</lock><door>open</door>"
      "<inner><depth>3</depth><tag>abc</tag></inner><group><grouped>4</grouped></group>"
      "<known>dual</known><enabled>yes</enabled><wanted>enabled</wanted><third>yes</third>"
      "<mac>0A:1b:2c:3d:4e:5f</mac><level min='1' max='9'>12</level>"
      "<ratio min='-0.5' max='0.5'>0.25</ratio>";
  Sample assigned{};
  Problems problems;
  EXPECT_EQ(assignAll(table, assigned, Watched(children).shown, problems), Assigned::done)
      << problems.all().front().path;
  EXPECT_TRUE(problems.empty());
  EXPECT_TRUE(same(assigned, walked(children, Sample{}).record));
}

TEST(AssignedValues, LeaveMembersThatTheyDoNotName) {
  auto record = filled<Sample>();
  auto expected = record;
  expected.whole = 5;
  Problems problems;
  EXPECT_EQ(assignAll(table, record, Value::object({{"whole", 5}}), problems), Assigned::done);
  EXPECT_TRUE(same(record, expected));
}

/// What is wrong with the values, all of which are.
std::vector<Trouble> troublesWith(Value const& values) {
  Sample record{};
  Problems problems;
  EXPECT_EQ(assignAll(table, record, values, problems), Assigned::failed);
  EXPECT_TRUE(same(record, Sample{}));
  for (Trouble const& trouble : problems.all()) {
    EXPECT_FALSE(trouble.found.empty() || trouble.expected.empty()) << trouble.path;
  }
  return {problems.all().begin(), problems.all().end()};
}

/// The only problem with a value for the member `name`.
Trouble problemWith(std::string_view name, Value const& value) {
  std::vector<Trouble> const troubles = troublesWith(Value::object({{name, value}}));
  EXPECT_EQ(troubles.size(), 1U) << name;
  return troubles.empty() ? Trouble() : troubles.front();
}

TEST(AssignedValues, ThatDoNotFitAreProblemsAndNothingIsStored) {
  EXPECT_EQ(problemWith("whole", 2147483648L).path, "whole");
  EXPECT_EQ(problemWith("whole", "5").found, "\"5\"");
  EXPECT_EQ(problemWith("narrow", -1).found, "-1");
  EXPECT_EQ(problemWith("natural", -1).found, "-1");
  EXPECT_EQ(problemWith("real", "5").path, "real");
  EXPECT_EQ(problemWith("text", "12345678").path, "text");
  EXPECT_EQ(problemWith("text", std::string_view("a\0b", 3)).path, "text");
  EXPECT_EQ(problemWith("text", 5).found, "5");
  EXPECT_EQ(problemWith("locked", 1).found, "1");
  EXPECT_EQ(problemWith("word", "triple").path, "word");
  EXPECT_EQ(problemWith("mac", "01:02").path, "mac");
  EXPECT_EQ(problemWith("flags", 4).path, "flags");
  EXPECT_EQ(problemWith("bits", 1).path, "bits");
  EXPECT_EQ(problemWith("inner", 1).path, "inner");
  EXPECT_EQ(problemWith("inner", Value::object({{"depth", true}})).path, "inner.depth");
}

TEST(AssignedValues, ThatDoNotFitAreAllToldInTheirOrder) {
  std::string told;
  for (Trouble const& trouble : troublesWith(
           Value::object({{"text", 5},
                          {"inner", Value::object({{"tag", "four"}, {"no", 1}, {"depth", true}})},
                          {"level", Value::object({{"max", "x"}, {"min", "y"}})},
                          {"flags", Value::object({{"second", true}, {"first", 1}})},
                          {"unknown", 1},
                          {"whole", "5"}}))) {
    told += trouble.path + ' ';
  }
  EXPECT_EQ(told,
            "text inner.tag inner.no inner.depth level.max level.min flags.second flags.first "
            "unknown whole ");
}

TEST(AssignedValues, ThatFitAreStoredBesideThoseThatDoNot) {
  Sample record{};
  Sample expected{};
  expected.whole = 5;
  expected.inner.depth = 6;
  Problems problems;
  EXPECT_EQ(assignAll(table, record,
                      Value::object({{"real", "x"},
                                     {"whole", 5},
                                     {"inner", Value::object({{"tag", 1}, {"depth", 6}})}}),
                      problems),
            Assigned::failed);
  EXPECT_EQ(problems.all().size(), 2U);
  EXPECT_TRUE(same(record, expected));
}

TEST(AssignedValues, OfWhichThousandsDoNotFitAreNotAllKept) {
  Value wrong = Value::object();
  for (int i = 0; i < 1000; ++i) wrong.add("unknown" + std::to_string(i), i);
  Sample record{};
  Problems problems;
  EXPECT_EQ(assignAll(table, record, wrong, problems), Assigned::failed);
  ASSERT_EQ(problems.all().size(), 100U);
  EXPECT_EQ(problems.all().back().path, "unknown99");
  EXPECT_EQ(assignAll(table, record, Value::object({{"inner", wrong}}), problems),
            Assigned::failed);
  EXPECT_EQ(problems.all().size(), 100U);
  EXPECT_EQ(problems.all().back().path, "unknown99") << "and keeps its path";
}

Value secret(Value value) {
  value.markSecret();
  return value;
}

TEST(AssignedValues, ThatAreSecretsAreNotTold) {
  EXPECT_EQ(problemWith("whole", secret("hush")).found, "a text of 4 bytes");
  EXPECT_EQ(problemWith("whole", secret(true)).found, "a flag");
  EXPECT_EQ(problemWith("whole", secret(2147483648L)).found, "a number");
  EXPECT_EQ(problemWith("whole", secret(2147483648UL)).found, "a number");
  EXPECT_EQ(problemWith("whole", secret(1.5F)).found, "a number");
  EXPECT_EQ(problemWith("whole", secret(Value::unknownKeyword(1, "hush"))).found, "a keyword");
  EXPECT_EQ(problemWith("word", secret("hush")).found, "a text of 4 bytes");
  EXPECT_EQ(problemWith("whole", secret(Value())).found, "nothing");
}

TEST(AssignedKeywords, ThatDoNotFitAreToldByTheirCodeUnlessTheyAreSecrets) {
  int code = 5;
  Problems problems;
  EXPECT_EQ(assignKeyword(code, 128, words, -128, 127, problems), Assigned::failed);
  EXPECT_EQ(assignKeyword(code, secret(128), words, -128, 127, problems), Assigned::failed);
  EXPECT_EQ(code, 5);
  ASSERT_EQ(problems.all().size(), 2U);
  EXPECT_EQ(problems.all()[0].found, "128");
  EXPECT_EQ(problems.all()[0].expected, "a code that the member can hold");
  EXPECT_EQ(problems.all()[1].found, "a code");
}

TEST(AssignedKeywords, AreWordsToTheirEnd) {
  int code = 5;
  Problems problems;
  Value const cut = std::string_view("dual\0more", 9);
  EXPECT_EQ(assignKeyword(code, cut, words, INT_MIN, INT_MAX, problems), Assigned::failed);
  EXPECT_EQ(code, 5);
}

/// What assigning `text` to an array of 8 gives: the text, or what was found.
std::string assigned(std::string const& text) {
  char out[8];
  std::memset(out, 'm', sizeof out);
  Problems problems;
  if (assignText(out, text, problems) == Assigned::failed) {
    EXPECT_EQ(std::string(out, sizeof out), "mmmmmmmm") << text;
    return problems.all().front().found + "; " + problems.all().front().expected;
  }
  for (std::size_t i = text.size(); i < sizeof out; ++i) EXPECT_EQ(out[i], '\0') << text;
  return out;
}

TEST(AssignedTexts, AreUtf8) {
  for (std::string const text : {"", "1234567", "\x7f", "\xc2\x80", "\xdf\xbf", "\xe0\xa0\x80",
                                 "\xed\x9f\xbf", "\xee\x80\x80", "\xef\xbf\xbd", "\xf0\x90\x80\x80",
                                 "\xf4\x8f\xbf\xbf", "a\xc3\xa9z\xe2\x82\xac"}) {
    EXPECT_EQ(assigned(text), text);
  }
  for (std::string const text : {"\x80",
                                 "\xbf",
                                 "a\xff",
                                 "\xfe",
                                 "\xc0\x80",
                                 "\xc1\xbf",
                                 "\xc2",
                                 "\xc2z",
                                 "\xc2\xc2\x80",
                                 "\xe0\x9f\xbf",
                                 "\xe2\x82",
                                 "\xe2\x82z",
                                 "\xed\xa0\x80",
                                 "\xed\xbf\xbf",
                                 "\xf0\x8f\xbf\xbf",
                                 "\xf0\x9f\x98",
                                 "\xf4\x90\x80\x80",
                                 "\xf5\x80\x80\x80",
                                 "\xf8\x88\x80\x80\x80",
                                 "\xe9t\xe9"}) {
    EXPECT_EQ(assigned(text), "a text that is no UTF-8; a text in UTF-8");
  }
}

TEST(AssignedTexts, HoldOnlyCharactersThatXmlHas) {
  for (char32_t code = 1; code < 0x20; ++code) {
    std::string const text = "a" + std::string(1, static_cast<char>(code));
    bool const inXml = code == '\t' || code == '\n' || code == '\r';
    EXPECT_EQ(assigned(text), inXml ? text
                                    : "a text with a character that XML cannot carry; a text "
                                      "without control characters other than tabs and line ends")
        << static_cast<unsigned>(code);
  }
  EXPECT_EQ(assigned("\xc2\x85"), "\xc2\x85") << "XML has those of this range";
  for (char const* const none : {"\xef\xbf\xbe", "\xef\xbf\xbf"}) {
    EXPECT_EQ(assigned(none).substr(0, 21), "a text with a charact");
  }
}

TEST(AssignedValues, UnderAnUnknownKeyAreToldTheKnownOnes) {
  Trouble const problem = problemWith("unknown", 1);
  EXPECT_EQ(problem.path, "unknown");
  EXPECT_EQ(problem.found, "an unknown key");
  EXPECT_NE(problem.expected.find("whole, narrow"), std::string::npos) << problem.expected;
  Value const flags = Value::object({{"second", true}});
  EXPECT_EQ(problemWith("flags", flags).path, "flags.second");
  EXPECT_EQ(problemWith("flags", flags).expected, "one of: first, third");
}

/// A list of entries: each with that depth, or nothing where it is negative.
Value listOfDepths(std::vector<int> const& depths) {
  Value list = Value::list();
  for (int const depth : depths) {
    list.append(depth < 0 ? Value() : Value::object({{"depth", depth}}));
  }
  return list;
}

TEST(AssignedEntries, FillTheArrayAndSkipWhatIsNothing) {
  auto list = filled<List>();
  auto expected = list;
  expected.items[1].depth = 5;
  Problems problems;
  EXPECT_EQ(assignEntries(items, list.items, 2, listOfDepths({-1, 5}), problems), Assigned::done);
  EXPECT_TRUE(same(list, expected));
  EXPECT_EQ(assignEntries(items, list.items, 2, listOfDepths({}), problems), Assigned::done);
  EXPECT_TRUE(same(list, expected));
}

TEST(AssignedEntries, ThatDoNotFitAreProblems) {
  List list{};
  Problems problems;
  EXPECT_EQ(assignEntries(items, list.items, 2, listOfDepths({1, 2, 3}), problems),
            Assigned::failed);
  EXPECT_EQ(problems.all().front().found, "a list of 3");
  EXPECT_TRUE(same(list, List{}));
  EXPECT_EQ(assignEntries(items, list.items, 2, 1, problems), Assigned::failed);
}

TEST(AssignedEntries, ThatDoNotFitAreAllToldByTheirNumbers) {
  List list{};
  Problems problems;
  Value const wrong =
      Value::list({Value::object({{"tag", 1}, {"depth", true}}), Value::object({{"depth", true}})});
  EXPECT_EQ(assignEntries(items, list.items, 2, wrong, problems), Assigned::failed);
  ASSERT_EQ(problems.all().size(), 3U);
  EXPECT_EQ(problems.all()[0].path, "[0].tag");
  EXPECT_EQ(problems.all()[1].path, "[0].depth");
  EXPECT_EQ(problems.all()[2].path, "[1].depth");
}

TEST(AssignedValues, MayNameAKeywordByItsWordItsCodeOrBoth) {
  for (Value const& value : {Value("dual"), Value(2), Value(2UL), Value::keyword(2, "dual"),
                             Value::keyword(2, "other")}) {
    Sample record{};
    Problems problems;
    EXPECT_EQ(assignAll(table, record, Value::object({{"word", value}}), problems), Assigned::done);
    EXPECT_EQ(record.word, 2);
  }
  for (Value const& both :
       {Value::object({{"code", 7}, {"name", "dual"}}), Value::keyword(7, "dual")}) {
    int code = 0;
    Problems problems;
    EXPECT_EQ(assignKeyword(code, both, words, INT_MIN, INT_MAX, problems), Assigned::done);
    EXPECT_EQ(code, 7);
  }
}

}  // namespace
}  // namespace Kovra::frame

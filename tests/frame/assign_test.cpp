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
  EXPECT_EQ(problemWith("mac", shown(string_view("01:02"))).path, "mac");
  EXPECT_EQ(problemWith("flags", shown(4)).path, "flags");
  EXPECT_EQ(problemWith("bits", shown(1)).path, "bits");
  EXPECT_EQ(problemWith("inner", shown(1)).path, "inner");
  Value inner = watched("<inner><depth>3</depth></inner>").shown.members[0].value;
  inner.members[0].value = shown(true);
  EXPECT_EQ(problemWith("inner", inner).path, "inner.depth");
}

Value secret(Value value) {
  value.secret = true;
  return value;
}

TEST(AssignedValues, ThatAreSecretsAreNotTold) {
  using std::string_view;
  EXPECT_EQ(problemWith("whole", secret(shown(string_view("hush")))).found, "a text of 4 bytes");
  EXPECT_EQ(problemWith("whole", secret(shown(true))).found, "a flag");
  EXPECT_EQ(problemWith("whole", secret(shown(2147483648L))).found, "a number");
  EXPECT_EQ(problemWith("whole", secret(shown(2147483648UL))).found, "a number");
  EXPECT_EQ(problemWith("whole", secret(shown(1.5F))).found, "a number");
  EXPECT_EQ(problemWith("whole", secret(shownKeyword(1, "hush", false))).found, "a keyword");
  EXPECT_EQ(problemWith("word", secret(shown(string_view("hush")))).found, "a text of 4 bytes");
  EXPECT_EQ(problemWith("whole", secret(Value())).found, "nothing");
}

TEST(AssignedKeywords, ThatDoNotFitAreToldByTheirCodeUnlessTheyAreSecrets) {
  int code = 5;
  Problem problem;
  EXPECT_EQ(assignKeyword(code, shown(128), words, -128, 127, problem), Assigned::failed);
  EXPECT_EQ(problem.found, "128");
  EXPECT_EQ(problem.expected, "a code that the member can hold");
  EXPECT_EQ(assignKeyword(code, secret(shown(128)), words, -128, 127, problem), Assigned::failed);
  EXPECT_EQ(problem.found, "a code");
  EXPECT_EQ(code, 5);
}

TEST(AssignedKeywords, AreWordsToTheirEnd) {
  int code = 5;
  Problem problem;
  Value const cut = shown(std::string_view("dual\0more", 9));
  EXPECT_EQ(assignKeyword(code, cut, words, INT_MIN, INT_MAX, problem), Assigned::failed);
  EXPECT_EQ(code, 5);
}

/// What assigning `text` to an array of 8 gives: the text, or what was found.
std::string assigned(std::string const& text) {
  char out[8];
  std::memset(out, 'm', sizeof out);
  Problem problem;
  if (assignText(out, shown(std::string_view(text)), problem) == Assigned::failed) {
    EXPECT_EQ(std::string(out, sizeof out), "mmmmmmmm") << text;
    return problem.found + "; " + problem.expected;
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
  Problem const problem = problemWith("unknown", shown(1));
  EXPECT_EQ(problem.path, "unknown");
  EXPECT_EQ(problem.found, "an unknown key");
  EXPECT_NE(problem.expected.find("whole, narrow"), std::string::npos) << problem.expected;
  Value flags;
  flags.kind = Value::Kind::record;
  flags.members.push_back({"second", shown(true)});
  EXPECT_EQ(problemWith("flags", flags).path, "flags.second");
  EXPECT_EQ(problemWith("flags", flags).expected, "one of: first, third");
}

/// A list of entries: each with that depth, or nothing where it is negative.
Value listOfDepths(std::vector<int> const& depths) {
  Value list;
  list.kind = Value::Kind::list;
  for (int const depth : depths) {
    Value& item = list.items.emplace_back();
    if (depth < 0) continue;
    item.kind = Value::Kind::record;
    item.members.push_back({"depth", shown(depth)});
  }
  return list;
}

TEST(AssignedEntries, FillTheArrayAndSkipWhatIsNothing) {
  auto list = filled<List>();
  auto expected = list;
  expected.items[1].depth = 5;
  Problem problem;
  EXPECT_EQ(assignEntries(items, list.items, 2, listOfDepths({-1, 5}), problem), Assigned::done);
  EXPECT_TRUE(same(list, expected));
  EXPECT_EQ(assignEntries(items, list.items, 2, listOfDepths({}), problem), Assigned::done);
  EXPECT_TRUE(same(list, expected));
}

TEST(AssignedEntries, ThatDoNotFitAreProblems) {
  List list{};
  Problem problem;
  EXPECT_EQ(assignEntries(items, list.items, 2, listOfDepths({1, 2, 3}), problem),
            Assigned::failed);
  EXPECT_EQ(problem.found, "a list of 3");
  EXPECT_TRUE(same(list, List{}));
  EXPECT_EQ(assignEntries(items, list.items, 2, shown(1), problem), Assigned::failed);

  Value wrong = listOfDepths({1, 2});
  wrong.items[1].members[0].value = shown(true);
  problem = {};
  EXPECT_EQ(assignEntries(items, list.items, 2, wrong, problem), Assigned::failed);
  EXPECT_EQ(problem.path, "[1].depth");
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
  EXPECT_EQ(assignKeyword(code, keyword, words, INT_MIN, INT_MAX, problem), Assigned::done);
  EXPECT_EQ(code, 7);
}

}  // namespace
}  // namespace Kovra::frame

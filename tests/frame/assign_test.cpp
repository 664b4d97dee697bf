#include "frame/assign.hpp"

#include <gtest/gtest.h>

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
  EXPECT_EQ(assignEntries(innerTable, list.items, listOfDepths({-1, 5}), problem), Assigned::done);
  EXPECT_TRUE(same(list, expected));
  EXPECT_EQ(assignEntries(innerTable, list.items, listOfDepths({}), problem), Assigned::done);
  EXPECT_TRUE(same(list, expected));
}

TEST(AssignedEntries, ThatDoNotFitAreProblems) {
  List list{};
  Problem problem;
  EXPECT_EQ(assignEntries(innerTable, list.items, listOfDepths({1, 2, 3}), problem),
            Assigned::failed);
  EXPECT_EQ(problem.found, "a list of 3");
  EXPECT_TRUE(same(list, List{}));
  EXPECT_EQ(assignEntries(innerTable, list.items, shown(1), problem), Assigned::failed);

  Value wrong = listOfDepths({1, 2});
  wrong.items[1].members[0].value = shown(true);
  problem = {};
  EXPECT_EQ(assignEntries(innerTable, list.items, wrong, problem), Assigned::failed);
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
  EXPECT_EQ(assignKeyword(code, keyword, words, problem), Assigned::done);
  EXPECT_EQ(code, 7);
}

}  // namespace
}  // namespace Kovra::frame

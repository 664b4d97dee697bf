// Changes that the command line tells, for every member of every document.

#include "edit.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <kovra.hpp>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "input.hpp"
#include "record.hpp"
#include "support/folder.hpp"

namespace Kovra::tool {

namespace {

using Visit = std::function<void(Message const&, MemberDescription const&, std::string const&)>;

void eachMember(Message const& message, std::vector<MemberDescription> const& members,
                std::string const& outer, Visit const& visit) {
  for (MemberDescription const& member : members) {
    std::string const path = outer + member.name();
    visit(message, member, path);
    bool const isList = member.kind() == Value::Kind::list;
    eachMember(message, member.members(), path + (isList ? "[0]." : "."), visit);
  }
}

void eachMember(Visit const& visit) {
  for (Message const& message : messages()) {
    if (message.isWritten()) eachMember(message, message.members(), {}, visit);
  }
}

/// A value that the member takes, as people write it; empty for what is no single value.
std::string goodFor(MemberDescription const& member) {
  switch (member.kind()) {
    case Value::Kind::flag:
      return "yes";
    case Value::Kind::keyword:
      return member.words().front().word();
    case Value::Kind::list:
    case Value::Kind::record:
      return member.form() == MemberDescription::Form::setting ? "12" : "";
    default:
      return "12";
  }
}

TEST(Edit, ReachesEveryMember) {
  std::size_t reached = 0;
  eachMember([&](Message const& message, MemberDescription const& member, std::string const& path) {
    std::string const value = goodFor(member);
    if (member.isSecret()) {
      EXPECT_THROW(editOf(message, path + '=' + value), EditFailure) << path;
    } else if (value.empty()) {
      EXPECT_THROW(editOf(message, path + "=x"), EditFailure) << path;
    } else {
      Value record = Value::object();
      Edit const edit = editOf(message, path + '=' + value);
      apply({edit}, record);
      EXPECT_EQ(record.at(edit.path), edit.value) << path;
      ++reached;
    }
  });
  EXPECT_GT(reached, 100U);
}

TEST(Edit, TakesValuesOfTheMembersKindOnly) {
  eachMember([&](Message const& message, MemberDescription const& member, std::string const& path) {
    bool const isText = member.kind() == Value::Kind::text && !member.isSecret();
    for (char const* const value : {"", " ", "maybe", "1x", "0x", "--1", "1e", "\xff"}) {
      std::string const assignment = path + '=' + value;
      if (isText) {
        EXPECT_EQ(editOf(message, assignment).value.asText(), value);
      } else {
        EXPECT_THROW(editOf(message, assignment), EditFailure) << assignment;
      }
    }
  });
}

Message messageNamed(std::string const& name) {
  for (Message const& message : messages()) {
    if (message.name() == name) return message;
  }
  ADD_FAILURE() << name;
  return messages().front();
}

TEST(Edit, RefusesWhatLeadsNowhere) {
  Message const message = messageNamed("configuration");
  for (char const* const assignment : {"",
                                       "=",
                                       "=x",
                                       "wireless",
                                       "nothing=1",
                                       "wireless.nothing=1",
                                       ".wireless=1",
                                       "wireless.=1",
                                       "wireless..ssid=x",
                                       "wireless.ssid.x=1",
                                       "wireless ssid=1",
                                       "[0]=1",
                                       ".=1",
                                       "a.b.c.d.e=1",
                                       "cards.type=1",
                                       "cards[].type=1",
                                       "cards[x].type=1",
                                       "cards[0=1",
                                       "cards[0]type=1",
                                       "cards[0]].type=1",
                                       "cards[0][0].type=1",
                                       "wireless[0].ssid=1",
                                       "cards[0].=1",
                                       "cards[-1].type=1",
                                       "[0].type=1",
                                       "wireless.[0]=1"}) {
    EXPECT_THROW(editOf(message, assignment), EditFailure) << assignment;
  }
}

TEST(Edit, SuggestsWhatMayHaveBeenMeant) {
  try {
    editOf(messageNamed("configuration"), "wireless.sid=x");
    FAIL();
  } catch (EditFailure const& failure) {
    EXPECT_STREQ(failure.what(),
                 "unknown member \"wireless.sid\". Did you mean \"wireless.ssid\"?");
  }
}

TEST(Edit, SuggestsEntriesOfLists) {
  Message const message = messageNamed("configuration");
  auto const complaint = [&](std::string const& assignment) -> std::string {
    try {
      editOf(message, assignment);
    } catch (EditFailure const& failure) {
      return failure.what();
    }
    return "nothing";
  };
  for (char const* const path : {"cards[0]type", "cards[].type", "cards.type", "cards[0.type"}) {
    EXPECT_EQ(complaint(std::string(path) + "=1"),
              "unknown member \"" + std::string(path) + "\". Did you mean \"cards[0].type\"?");
  }
  EXPECT_EQ(complaint("cards[12]tipe=1"),
            "unknown member \"cards[12]tipe\". Did you mean \"cards[12].type\"?");
  EXPECT_EQ(complaint("cards[0]=1").substr(0, 45), "cards[0]: expected one of its members: type, ");
}

/// Why the edits are refused of a record before and after them; empty where they are not.
std::string refusalOf(std::vector<Edit> const& edits, Value const& before, Value const& after) {
  try {
    requireWithinBounds(edits, before, after);
  } catch (RecordFailure const& failure) {
    return failure.why();
  }
  return "";
}

TEST(Edit, HoldsSettingsWithinTheirBounds) {
  auto const refusal = [](Value const& setting, Value const& value) {
    Value const record = Value::object({{"a", Value::object({{"b", setting}})}});
    return refusalOf({{"a.b.val", value}}, record, record);
  };
  auto const setting = [](Value const& least, Value const& most) {
    return Value::object({{"val", 1000}, {"min", least}, {"max", most}});
  };
  double const nan = std::numeric_limits<double>::quiet_NaN();
  std::string const expected = "expected a number from -1.5 to 9, the bounds that the printer gave";
  EXPECT_EQ(refusal(setting(-1.5, 9), 10), "a.b: found 10; " + expected);
  EXPECT_EQ(refusal(setting(-1.5, 9), -1.75), "a.b: found -1.75; " + expected);
  EXPECT_EQ(refusal(setting(-1.5, 9), nan), "a.b: found nan; " + expected);
  for (Value const& value : {Value(-1.5), Value(-1), Value(0.25), Value(9)}) {
    EXPECT_EQ(refusal(setting(-1.5, 9), value), "") << value.toJson();
  }
  for (Value const& none : {setting(0, 0), setting(5, 5), setting(9, 1), setting(nan, 1),
                            setting("0", "1"), setting({}, {}), Value::object({{"val", 1}}),
                            Value::object({{"val", 1}, {"min", 0}}), Value(7), Value()}) {
    EXPECT_EQ(refusal(none, 1e9), "") << none.toJson();
  }
  Value const other = Value::object({{"a", setting(0, 1000)}, {"val", 1}});
  EXPECT_EQ(
      refusalOf({{"val", 9}, {".val", 9}, {"a.max", 9}, {"x.y.val", 9}, {"min", 1}}, other, other),
      "");
}

TEST(Edit, HoldsValuesWithinChangedBounds) {
  auto const setting = [](int value, int least, int most) {
    return Value::object({{"a", Value::object({{"val", value}, {"min", least}, {"max", most}})}});
  };
  std::string const wrong =
      "a: found 40; expected a number from 41 to 63, the bounds that it is to have";
  EXPECT_EQ(refusalOf({{"a.min", 41}}, setting(40, 0, 63), setting(40, 41, 63)), wrong);
  EXPECT_EQ(refusalOf({{"a.max", 63}}, setting(40, 0, 63), setting(40, 41, 63)), wrong);
  EXPECT_EQ(refusalOf({{"a.min", 40}}, setting(40, 0, 63), setting(40, 40, 63)), "");
  EXPECT_EQ(refusalOf({{"a.max", 40}}, setting(40, 40, 63), setting(40, 40, 40)), "");
  EXPECT_EQ(refusalOf({{"a.max", 0}}, setting(40, 0, 63), setting(40, 0, 0)), "");
  for (auto const& [least, most] : {std::pair{41, 41}, {60, 20}, {63, 0}, {0, -1}}) {
    EXPECT_NE(refusalOf({{"a.max", most}}, setting(40, 0, 63), setting(40, least, most)), "")
        << least;
  }
  // Of a member of that name which is no bound.
  Value const plain = Value::object({{"a", Value::object({{"min", 9}, {"max", 99}})}});
  EXPECT_EQ(refusalOf({{"a.min", 9}, {"b.max", 1}}, plain, plain), "");
}

TEST(Edit, HoldsOnlyTheLastValueWithinBounds) {
  Value const record = Value::object({{"a", Value::object({{"val", 1}, {"min", 0}, {"max", 9}})}});
  std::vector<Edit> const edits = {{"a.val", 80}, {"a.val", 5}};
  EXPECT_TRUE(isOverwritten(edits, 0));
  EXPECT_FALSE(isOverwritten(edits, 1));
  EXPECT_EQ(refusalOf(edits, record, record), "");
  EXPECT_NE(refusalOf({{"a.val", 5}, {"a.val", 80}}, record, record), "");
}

TEST(Edit, TakesAllBehindTheFirstEqualsSign) {
  Message const message = messageNamed("configuration");
  EXPECT_EQ(editOf(message, "wireless.ssid=a=b = c").value.asText(), "a=b = c");
  EXPECT_EQ(editOf(message, "wireless.ssid=").value.asText(), "");
}

TEST(Edit, TakesSecretsFromFiles) {
  test::TemporaryFolder const folder;
  std::string const file = folder.file("key");
  test::writeFile(file, "sesame\r\n");
  eachMember([&](Message const& message, MemberDescription const& member, std::string const& path) {
    bool const isText = member.isSecret() && member.kind() == Value::Kind::text;
    if (!isText) return;
    Edit const edit = editOfFile(message, path + '=' + file);
    EXPECT_EQ(edit.value.asText(), "sesame") << path;
    EXPECT_TRUE(edit.value.isSecret()) << path;
  });
  EXPECT_THROW(editOfFile(messageNamed("configuration"), "wireless.ssid=" + file + "x"),
               InputFailure);
}

TEST(Edit, TakesFilesWithOrWithoutTheEndOfALine) {
  test::TemporaryFolder const folder;
  std::string const file = folder.file("ssid");
  Message const message = messageNamed("configuration");
  auto const read = [&](std::string const& text) {
    test::writeFile(file, text);
    Edit const edit = editOfFile(message, "wireless.ssid=" + file);
    EXPECT_FALSE(edit.value.isSecret());
    return std::string(edit.value.asText());
  };
  EXPECT_EQ(read(""), "");
  EXPECT_EQ(read("\n"), "");
  EXPECT_EQ(read("net"), "net");
  EXPECT_EQ(read("net\n"), "net");
  EXPECT_EQ(read("net\n\n"), "net\n");
  EXPECT_EQ(read("a\r\n"), "a");
}

TEST(Edit, TakesPartsOfASettingAlone) {
  Message const message = messageNamed("configuration");
  for (char const* const part : {"val", "min", "max"}) {
    Edit const edit = editOf(message, std::string("lcd_contrast.") + part + "=5");
    EXPECT_EQ(edit.path, std::string("lcd_contrast.") + part);
    EXPECT_EQ(edit.value, Value(5));
  }
  EXPECT_EQ(editOf(message, "lcd_contrast=0.5").value, Value(0.5));
  EXPECT_THROW(editOf(message, "lcd_contrast.value=5"), EditFailure);
  EXPECT_THROW(editOf(message, "lcd_contrast.min.x=5"), EditFailure);
}

TEST(Edit, TakesFlagsByTheirNames) {
  Message const message = messageNamed("capabilities");
  Edit const edit = editOf(message, "imageSharpeningLevels.high=yes");
  EXPECT_EQ(edit.path, "imageSharpeningLevels.high");
  EXPECT_EQ(edit.value, Value(true));
  EXPECT_THROW(editOf(message, "imageSharpeningLevels.highest=yes"), EditFailure);
  EXPECT_THROW(editOf(message, "imageSharpeningLevels.high=1"), EditFailure);
  EXPECT_THROW(editOf(message, "imageSharpeningLevels=yes"), EditFailure);
}

TEST(Edit, ChangesNothingThatTheRecordCannotHave) {
  Value record = Value::object({{"a", 1}});
  EXPECT_THROW(apply({{"a.b", 1}}, record), EditFailure);
  EXPECT_THROW(apply({{"b[1]", 1}}, record), EditFailure);
  EXPECT_EQ(record, Value::object({{"a", 1}}));
}

}  // namespace

}  // namespace Kovra::tool

// Motors through the face: what only one of the two forms of the command takes.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "kovra.hpp"

namespace Kovra {
namespace {

Value word(std::string const& text) {
  Value value;
  value.kind = Value::Kind::text;
  value.text = text;
  return value;
}

Value command(std::initializer_list<std::pair<char const*, Value>> members) {
  Value value;
  value.kind = Value::Kind::record;
  for (auto const& [name, member] : members) value.members.push_back({name, member});
  return value;
}

Value number(long integer) {
  Value value;
  value.kind = Value::Kind::integer;
  value.integer = integer;
  return value;
}

TEST(ComposedMotor, IsWarmedUpWithoutAName) {
  Composition const composition = composeDeviceControl(
      "motor", command({{"state", word("warm_up")}, {"rpm", number(12)}, {"period", number(5)}}));
  EXPECT_TRUE(composition.composed) << composition.problem.path;
  EXPECT_NE(composition.text.find(R"(<motor state="warm_up" rpm="12.0" period="5" />)"),
            std::string::npos)
      << composition.text;
}

TEST(ComposedMotor, IsNotWarmedUpByItsName) {
  for (char const* const motor :
       {"card_feed", "card_x", "ribbon", "head_lift", "options", "flipper"}) {
    for (Value const& state : {word("warm_up"), number(2)}) {
      Composition const composition =
          composeDeviceControl("motor", command({{"motor", word(motor)}, {"state", state}}));
      EXPECT_FALSE(composition.composed) << motor;
      EXPECT_EQ(composition.text, "") << motor;
      EXPECT_EQ(composition.problem.path, "state") << motor;
      EXPECT_EQ(composition.problem.found, "\"warm_up\"") << motor;
    }
    Composition const off =
        composeDeviceControl("motor", command({{"motor", word(motor)}, {"state", word("off")}}));
    EXPECT_TRUE(off.composed) << motor;
    EXPECT_NE(off.text.find(std::string(R"(<motor state="off">)") + motor + "</motor>"),
              std::string::npos)
        << off.text;
  }
}

}  // namespace
}  // namespace Kovra

// Motors through the face: what only one of the two forms of the command takes.

#include <gtest/gtest.h>

#include <string>

#include "kovra.hpp"
#include "support/values.hpp"

namespace Kovra {
namespace {

Composition composed(Value const& command) {
  return compose("device-control-motor", command);
}

TEST(ComposedMotor, IsWarmedUpWithoutAName) {
  Composition const composition =
      composed(Value::object({{"state", "warm_up"}, {"rpm", 12}, {"period", 5}}));
  EXPECT_TRUE(static_cast<bool>(composition)) << test::outcome(composition);
  EXPECT_NE(composition.text().find(R"(<motor state="warm_up" rpm="12.0" period="5" />)"),
            std::string::npos)
      << composition.text();
}

TEST(ComposedMotor, IsNotWarmedUpByItsName) {
  for (char const* const motor :
       {"card_feed", "card_x", "ribbon", "head_lift", "options", "flipper"}) {
    for (Value const& state : {Value("warm_up"), Value(2)}) {
      Composition const composition = composed(Value::object({{"motor", motor}, {"state", state}}));
      EXPECT_FALSE(composition) << motor;
      EXPECT_EQ(composition.text(), "") << motor;
      EXPECT_EQ(test::firstProblem(composition).path(), "state") << motor;
      EXPECT_EQ(test::firstProblem(composition).found(), "\"warm_up\"") << motor;
    }
    Composition const off = composed(Value::object({{"motor", motor}, {"state", "off"}}));
    EXPECT_TRUE(static_cast<bool>(off)) << motor;
    EXPECT_NE(off.text().find(std::string(R"(<motor state="off">)") + motor + "</motor>"),
              std::string::npos)
        << off.text();
  }
}

}  // namespace
}  // namespace Kovra

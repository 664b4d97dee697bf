#include "face/compose_choice.hpp"

#include <gtest/gtest.h>

namespace Kovra {
namespace {

constexpr frame::Word rows[] = {{"first", 1}, {"second", 4}};
constexpr frame::Vocabulary words{rows, frame::Match::exact, 0};

TEST(ComposeChoice, NamesStandInTheirOrder) {
  EXPECT_EQ(namesOf(words), (std::vector<std::string>{"first", "second"}));
}

TEST(ComposeChoice, BitsAreThoseOfAllNames) {
  Problem problem;
  long bits = 8;
  EXPECT_TRUE(bitsOf(bits, {}, words, "parts", problem));
  EXPECT_EQ(bits, 0);
  EXPECT_TRUE(bitsOf(bits, {"second", "first", "second"}, words, "parts", problem));
  EXPECT_EQ(bits, 5);
  EXPECT_EQ(problem.path + problem.found + problem.expected, "");
}

TEST(ComposeChoice, UnknownNameIsAProblem) {
  Problem problem;
  long bits = 0;
  EXPECT_FALSE(bitsOf(bits, {"first", "third"}, words, "parts", problem));
  EXPECT_EQ(problem.description(), "parts: found \"third\"; expected one of: first, second");
}

TEST(ComposeChoice, RefusingFillsInTheProblem) {
  Problem problem;
  EXPECT_FALSE(refuse(problem, "a.b", "this", "that"));
  EXPECT_EQ(problem.description(), "a.b: found this; expected that");
  EXPECT_FALSE(refuse(problem, "", "this", "that"));
  EXPECT_EQ(problem.description(), "found this; expected that");
}

}  // namespace
}  // namespace Kovra

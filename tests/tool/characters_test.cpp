#include "characters.hpp"

#include <gtest/gtest.h>

namespace Kovra::tool {

namespace {

TEST(Characters, AreTakenFromUtf8) {
  EXPECT_EQ(firstCharacter("a").code, U'a');
  EXPECT_EQ(firstCharacter("\xe6\x97\xa5z").code, U'\u65e5');
  EXPECT_EQ(firstCharacter("\xe6\x97\xa5z").length, 3U);
  for (char const* const none :
       {"\xff", "\xe6\x97", "\xc0\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80"}) {
    EXPECT_EQ(firstCharacter(none).length, 0U);
  }
}

// What moves the cursor, ends a line or turns the text around, first and last of each kind.
TEST(Characters, AreHarmlessBesideThoseThatChangeTheLine) {
  for (char32_t const bad :
       {char32_t{0}, U'\u001f', U'\u007f', U'\u009f', U'\u2028', U'\u2029', U'\u061c', U'\u200e',
        U'\u200f', U'\u202a', U'\u202e', U'\u2066', U'\u2069'}) {
    EXPECT_FALSE(isHarmless(bad)) << static_cast<unsigned>(bad);
  }
  for (char32_t const good : {U' ', U'~', U'\u00a0', U'\u061b', U'\u061d', U'\u200d', U'\u2010',
                              U'\u2027', U'\u202f', U'\u2065', U'\u206a', U'\U0001f600'}) {
    EXPECT_TRUE(isHarmless(good)) << static_cast<unsigned>(good);
  }
}

TEST(Characters, TakeAColumnEachWhereTheyAreNone) {
  EXPECT_EQ(columnsOf(std::string_view("a\xff\xe6\x97\xa5\xe6\x97")), 6U);
  EXPECT_EQ(columnsOf(U'\U000e0200'), 1U) << "behind all that take none or two";
}

TEST(Characters, TakeTheColumnsThatTerminalsGiveThem) {
  for (char32_t const one : {U'a', U'\u00e9', U'\u0416', U'\u2026', U'\uff61'}) {
    EXPECT_EQ(columnsOf(one), 1U) << static_cast<unsigned>(one);
  }
  for (char32_t const two :
       {U'\u1100', U'\u65e5', U'\uac00', U'\uff21', U'\U0001f600', U'\U00020000'}) {
    EXPECT_EQ(columnsOf(two), 2U) << static_cast<unsigned>(two);
  }
  for (char32_t const none : {U'\u0301', U'\u200b', U'\ufe0f', U'\ufeff'}) {
    EXPECT_EQ(columnsOf(none), 0U) << static_cast<unsigned>(none);
  }
}

}  // namespace

}  // namespace Kovra::tool

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

#include "terminal.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace Kovra::tool {

namespace {

TEST(Wrapped, BreaksAtWordsAndIndents) {
  EXPECT_EQ(wrapped("one two three four", 9, 2), "one two\n  three\n  four");
  EXPECT_EQ(wrapped("one two three four", 13, 0), "one two three\nfour");
  EXPECT_EQ(wrapped("one two three four", 0, 2), "one two three four");
  EXPECT_EQ(wrapped("", 5, 2), "");
}

TEST(Wrapped, LeavesLongWordsAndGapsWhole) {
  EXPECT_EQ(wrapped("a/very/long/path and more", 8, 2), "a/very/long/path\n  and\n  more");
  EXPECT_EQ(wrapped("  name    averylongvalue and", 12, 10),
            "  name    averylongvalue\n        and");
}

TEST(Wrapped, CountsColumnsNotBytesAndNoColors) {
  EXPECT_EQ(wrapped("\u00fc\u00fc \u00fc\u00fc x", 5, 0), "\u00fc\u00fc \u00fc\u00fc\nx");
  EXPECT_EQ(wrapped("\u4e2d\u6587 ab c", 6, 0), "\u4e2d\u6587\nab c");
  EXPECT_EQ(wrapped("\033[1;31mab\033[0m cd ef", 5, 0), "\033[1;31mab\033[0m cd\nef");
}

TEST(ShownColumns, CountNoColors) {
  EXPECT_EQ(shownColumns("plain"), 5U);
  EXPECT_EQ(shownColumns("\033[33m\u4e2d\033[0mx"), 3U);
  EXPECT_EQ(shownColumns(""), 0U);
}

}  // namespace

}  // namespace Kovra::tool

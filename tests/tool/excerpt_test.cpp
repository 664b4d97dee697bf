// The line that a finding is about.

#include "excerpt.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "characters.hpp"

namespace Kovra::tool {

namespace {

std::string shown(std::string_view text, Stretch piece, std::vector<Stretch> const& secrets = {},
                  std::size_t width = 40) {
  return excerpt(text, piece, secrets, 7, width, Style::error);
}

TEST(Excerpt, MarksThePieceInItsLine) {
  EXPECT_EQ(shown("one\ntwo three\nfour", {8, 13}), "    7 | two three\n      |     ^~~~~\n");
  EXPECT_EQ(shown("x", {0, 1}), "    7 | x\n      | ^\n");
  EXPECT_EQ(shown("one\r\ntwo", {5, 8}), "    7 | two\n      | ^~~\n");
  // One that goes on in the next line.
  EXPECT_EQ(shown("one\ntwo", {1, 6}), "    7 | one\n      |  ^~\n");
}

TEST(Excerpt, MarksTheEndOfALine) {
  EXPECT_EQ(shown("one\ntwo", {3, 4}), "    7 | one\n      |    ^\n");
  EXPECT_EQ(shown("one", {3, 3}), "    7 | one\n      |    ^\n");
  EXPECT_EQ(shown("one", {90, 100}), "    7 | one\n      |    ^\n");
}

TEST(Excerpt, IsNothingForNoLine) {
  EXPECT_EQ(shown("", {0, 0}), "");
  EXPECT_EQ(shown("a\n\nb", {2, 2}), "");
  EXPECT_TRUE(hasLines("text"));
  EXPECT_FALSE(hasLines("\xff\xfe<"));
}

TEST(Excerpt, PutsMarksUnderWhatTheTerminalShows) {
  EXPECT_EQ(shown("\tx", {1, 2}), "    7 |         x\n      |         ^\n");
  EXPECT_EQ(shown("\xe5\xad\x97x", {3, 4}), "    7 | \xe5\xad\x97x\n      |   ^\n");
  EXPECT_EQ(shown("\x1b[1mx", {4, 5}), "    7 | \\x1b[1mx\n      |        ^\n");
  EXPECT_EQ(shown("\xffx", {1, 2}), "    7 | \\xffx\n      |     ^\n");
}

TEST(Excerpt, MasksSecrets) {
  EXPECT_EQ(shown("<k>sesame open</k>", {3, 14}, {{3, 14}}),
            "    7 | <k>******</k>\n      |    ^~~~~~\n");
  EXPECT_EQ(shown("<k>a</k>b", {8, 9}, {{3, 4}}),
            "    7 | <k>******</k>b\n      |              ^\n");
  EXPECT_EQ(shown("abc\ndef", {1, 2}, {{0, 7}}), "    7 | ******\n      | ^~~~~~\n");
  EXPECT_EQ(shown("abc\ndef", {5, 6}, {{0, 7}}), "    7 | ******\n      | ^~~~~~\n");
}

std::size_t columnsOf(std::string_view line) {
  std::size_t columns = 0;
  while (!line.empty()) {
    Character const character = firstCharacter(line);
    columns += tool::columnsOf(character.code);
    line.remove_prefix(std::max<std::size_t>(character.length, 1));
  }
  return columns;
}

/// However wide the terminal is and wherever the piece stands, it is seen and nothing is wider.
TEST(Excerpt, FitsWhateverTheWidth) {
  std::string text;
  for (int i = 0; i < 60; ++i) text += i % 7 == 0 ? "\xe5\xad\x97" : i % 11 == 0 ? "\t" : "ab";
  std::string const secret = "open sesame";
  std::size_t const begin = text.find("ab", 30);
  text.insert(begin, secret);
  for (std::size_t width = 20; width < 90; width += 3) {
    for (std::size_t at = 0; at < text.size(); ++at) {
      std::string const lines = shown(text, {at, at + 3}, {{begin, begin + secret.size()}}, width);
      std::size_t const end = lines.find('\n');
      ASSERT_LE(columnsOf(lines.substr(0, end)), width) << lines;
      ASSERT_LE(columnsOf(lines.substr(end + 1, lines.size() - end - 2)), width) << lines;
      ASSERT_NE(lines.find('^', end), lines.npos) << lines;
      ASSERT_EQ(lines.find("sesame"), lines.npos) << lines;
    }
  }
}

TEST(Excerpt, LooksAtNoMoreThanItShows) {
  std::string const text(std::size_t{64} << 20U, 'x');
  for (std::size_t at = 0; at < text.size(); at += text.size() / 64) {
    EXPECT_LT(shown(text, {at, at + 1}).size(), 100U);
  }
}

}  // namespace

}  // namespace Kovra::tool

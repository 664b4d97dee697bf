// Lines for people.

#include <gtest/gtest.h>

#include <string>

#include "terminal.hpp"

namespace Kovra::tool {

namespace {

TEST(Wrapped, BreaksAtBlanks) {
  EXPECT_EQ(wrapped("one two three", 7, 0), "one two\nthree");
  EXPECT_EQ(wrapped("one two three", 8, 0), "one two\nthree");
  EXPECT_EQ(wrapped("one two three", 6, 2), "one\n  two\n three");
  EXPECT_EQ(wrapped("one two three", 7, 2), "one two\n  three");
  EXPECT_EQ(wrapped("one two three", 13, 0), "one two three");
  EXPECT_EQ(wrapped("one two three", 12, 0), "one two\nthree");
  EXPECT_EQ(wrapped("", 10, 4), "");
}

TEST(Wrapped, IsOneLineWithoutAWidth) {
  std::string const text(1000, 'x');
  EXPECT_EQ(wrapped(text + " y", 0, 4), text + " y");
}

TEST(Wrapped, LeavesLongWordsWhole) {
  EXPECT_EQ(wrapped("a longest-of-words b", 5, 1), "a\n longest-of-words\n b");
}

TEST(Wrapped, KeepsBlanksInFront) {
  EXPECT_EQ(wrapped("  label one two", 12, 8), "  label one\n        two");
}

TEST(Wrapped, CountsCharactersAndNotBytes) {
  EXPECT_EQ(wrapped("\xc3\xa4\xc3\xb6\xc3\xbc \xc3\xa4\xc3\xb6 b", 6, 0),
            "\xc3\xa4\xc3\xb6\xc3\xbc \xc3\xa4\xc3\xb6\nb");
}

/// No line is wider than it may be, and no word is lost. Where a line is too narrow for a word
/// behind the indent, that is less than was asked for.
TEST(Wrapped, FitsWhateverTheWidth) {
  std::string const text = "The quick brown fox jumps over the lazy dog and runs away";
  for (std::size_t width = 5; width < 70; ++width) {
    std::string lines = wrapped(text, width, 3);
    std::string all;
    for (std::size_t at = 0; at <= lines.size();) {
      std::size_t const end = std::min(lines.find('\n', at), lines.size());
      std::string line = lines.substr(at, end - at);
      EXPECT_LE(line.size(), width) << line;
      std::size_t const indent = line.find_first_not_of(' ');
      std::string const word = line.substr(indent, line.find(' ', indent) - indent);
      EXPECT_EQ(indent, at == 0 ? 0 : std::min<std::size_t>({3, width - word.size()})) << line;
      all += (at == 0 ? "" : " ") + line.substr(indent);
      at = end + 1;
    }
    EXPECT_EQ(all, text);
  }
}

TEST(Styled, IsPlainWhereNobodySeesColours) {
  if (hasColor()) GTEST_SKIP() << "standard output is a terminal";
  EXPECT_EQ(styled(Style::error, "text"), "text");
  EXPECT_EQ(styled(Style::plain, "text"), "text");
}

}  // namespace

}  // namespace Kovra::tool

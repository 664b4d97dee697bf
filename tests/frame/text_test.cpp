// Texts in arrays, and what is left of characters that were cut.

#include "frame/text.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace Kovra::frame {
namespace {

TEST(WholeCharacters, LoseWhatIsLeftOfALastOne) {
  for (std::string const character : {"\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
    EXPECT_EQ(wholeCharacters(character), character);
    EXPECT_EQ(wholeCharacters("ab" + character), "ab" + character);
    for (std::size_t kept = 1; kept < character.size(); ++kept) {
      EXPECT_EQ(wholeCharacters("ab" + character.substr(0, kept)), "ab") << kept;
      EXPECT_EQ(wholeCharacters(character + character.substr(0, kept)), character) << kept;
      EXPECT_EQ(wholeCharacters(character.substr(0, kept)), "") << kept;
    }
  }
}

TEST(WholeCharacters, KeepWhatWasNeverOne) {
  for (std::string const text : {"", "a", "\x80", "\x80\x80\x80\x80\x80", "a\x80",
                                 "a\x80\x80\x80\x80", "\xC3\xA9\x80", "\x7F\xBF"}) {
    EXPECT_EQ(wholeCharacters(text), text);
  }
}

TEST(AppendBounded, LeavesAnArrayWithoutRoomAsItIs) {
  char text[] = "~~~";
  EXPECT_FALSE(appendBounded("x", text, 0));
  EXPECT_FALSE(appendBounded("x", text, -1));
  EXPECT_STREQ(text, "~~~");
}

TEST(AppendBounded, CutsWhatDoesNotFitBeforeTheTerminator) {
  char text[6] = "ab";
  EXPECT_TRUE(appendBounded("cdef", text, sizeof text));
  EXPECT_STREQ(text, "abcde");
  char full[4] = {'a', 'b', 'c', 'd'};
  EXPECT_TRUE(appendBounded("x", full, sizeof full));
  EXPECT_EQ(std::memcmp(full, "abc", 4), 0);
}

}  // namespace
}  // namespace Kovra::frame

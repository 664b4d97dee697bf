#include "printable.hpp"

#include <gtest/gtest.h>

#include <string>

namespace Kovra::tool {

namespace {

TEST(Printable, LeavesTextOfAnyLanguageAlone) {
  for (char const* const text : {"", "plain (text) ~", "M\xc3\xbcnchen", "\xe6\x97\xa5\xe6\x9c\xac",
                                 "\xf0\x9f\x96\xa8", "\xc2\xa0", "\xf4\x8f\xbf\xbf"}) {
    EXPECT_EQ(printable(text), text);
  }
}

TEST(Printable, EscapesEveryControlCharacter) {
  for (int byte = 0; byte < 0x20; ++byte) {
    std::string const out = printable(std::string(1, static_cast<char>(byte)));
    EXPECT_EQ(out.front(), '\\') << byte;
    EXPECT_EQ(out.find_first_not_of("\\xnrt0123456789abcdef"), out.npos) << byte;
  }
  EXPECT_EQ(printable("a\nb\rc\td"), "a\\nb\\rc\\td");
  EXPECT_EQ(printable(std::string("\0", 1)), "\\x00");
  EXPECT_EQ(printable("\x1b[2J\x07\x7f"), "\\x1b[2J\\x07\\x7f");
}

TEST(Printable, EscapesControlCharactersBeyondAscii) {
  EXPECT_EQ(printable("\xc2\x80"), "\\u0080");
  EXPECT_EQ(printable("\xc2\x9b"
                      "31m"),
            "\\u009b31m");
  EXPECT_EQ(printable("\xc2\x9f\xc2\xa0"), "\\u009f\xc2\xa0");
}

TEST(Printable, EscapesWhatRearrangesALine) {
  EXPECT_EQ(printable("a\xe2\x80\xa8"
                      "b"),
            "a\\u2028b");
  EXPECT_EQ(printable("\xe2\x80\xae"
                      "lmx"),
            "\\u202elmx");
  EXPECT_EQ(printable("\xe2\x81\xa6"), "\\u2066");
  EXPECT_EQ(printable("\xe2\x80\xa6"), "\xe2\x80\xa6");  // an ellipsis is welcome
}

TEST(Printable, EscapesBytesThatAreNoUtf8) {
  EXPECT_EQ(printable("M\xfcnchen"), "M\\xfcnchen");  // no byte of UTF-8 at all
  EXPECT_EQ(printable("\x9b"
                      "31m"),
            "\\x9b31m");                           // the one-byte form of CSI
  EXPECT_EQ(printable("\xc3"), "\\xc3");           // cut
  EXPECT_EQ(printable("\xe6\x97"), "\\xe6\\x97");  // cut
  EXPECT_EQ(printable("\xc3"
                      "a"),
            "\\xc3"
            "a");                                                    // not continued
  EXPECT_EQ(printable("\xc0\x9b"), "\\xc0\\x9b");                    // longer than it need be
  EXPECT_EQ(printable("\xe0\x82\x9b"), "\\xe0\\x82\\x9b");           // longer than it need be
  EXPECT_EQ(printable("\xed\xa0\x80"), "\\xed\\xa0\\x80");           // half of a surrogate pair
  EXPECT_EQ(printable("\xf4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80");  // beyond Unicode
  EXPECT_EQ(printable("\xf8\x88\x80\x80\x80"), "\\xf8\\x88\\x80\\x80\\x80");
}

TEST(Printable, GoesOnBehindABrokenSequence) {
  EXPECT_EQ(printable("\xe6\x97\xc3\xbc!"), "\\xe6\\x97\xc3\xbc!");
}

}  // namespace

}  // namespace Kovra::tool

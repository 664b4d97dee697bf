// The loops in blocks give what the plain ones give, wherever a byte stands.

#include "frame/bytes.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace Kovra::frame {
namespace {

/// A text that ends with a zero byte, in a block of exactly its size and one that may be read.
class Padded {
 public:
  explicit Padded(std::string const& text) : bytes_(text.begin(), text.end()) {
    bytes_.resize(text.size() + blockSize);
  }
  char* data() { return bytes_.data(); }

 private:
  std::vector<char> bytes_;
};

TEST(Bytes, EndANameWhereItEnds) {
  for (int byte = 0; byte < 256; ++byte) {
    for (std::size_t at = 0; at < 40; ++at) {
      std::string text(at, 'n');
      text += static_cast<char>(byte);
      text += std::string(7, 'a') + ">";
      Padded padded(text);
      EXPECT_EQ(endOfName(padded.data()), plain::endOfName(padded.data())) << byte << " at " << at;
    }
  }
}

TEST(Bytes, StopWhereTheyAreToldTo) {
  for (char const stop : {'<', '"', '\''}) {
    for (signed char const least : {static_cast<signed char>(1), static_cast<signed char>('!')}) {
      for (int byte = 0; byte < 256; ++byte) {
        for (std::size_t at = 0; at < 40; ++at) {
          std::string text(at, 'x');
          text += static_cast<char>(byte);
          text += std::string(7, 'y') + stop;
          Padded padded(text);
          EXPECT_EQ(findStop(padded.data(), stop, least),
                    plain::findStop(padded.data(), stop, least))
              << byte << " at " << at;
        }
      }
    }
  }
}

TEST(Bytes, AreBlankUpToTheFirstThatIsNot) {
  for (int byte = 0; byte < 256; ++byte) {
    for (std::size_t at = 0; at < 40; ++at) {
      std::string text = std::string(at, ' ') + static_cast<char>(byte) + "\n\t x";
      Padded padded(text);
      EXPECT_EQ(endOfBlanks(padded.data()), plain::endOfBlanks(padded.data()))
          << byte << " at " << at;
    }
  }
  Padded padded(" \t\n\v\f\r.");
  EXPECT_EQ(endOfBlanks(padded.data()), padded.data() + 6);
}

TEST(Bytes, AreCountedInTextsOfAnyLength) {
  for (std::size_t length = 0; length < 100; ++length) {
    for (std::size_t period = 1; period < 6; ++period) {
      std::vector<char> text(length);
      for (std::size_t i = 0; i < length; ++i) text[i] = "<>=a\xFF"[i / period % 5];
      std::string_view const view(text.data(), length);
      EXPECT_EQ(countMarks(view), plain::countMarks(view)) << length << " " << period;
    }
  }
  EXPECT_EQ(countMarks("<a b='c'></a>"), (Marks{2, 2, 1}));
}

// A counter in a block of bytes has room for 255.
TEST(Bytes, AreCountedWhereNearlyAllAreMarks) {
  for (std::size_t const length : {4079U, 4080U, 4081U, 4096U, 8160U, 8177U, 100'000U}) {
    EXPECT_EQ(countMarks(std::string(length, '<')), (Marks{length, 0, 0}));
    EXPECT_EQ(countMarks(std::string(length, '>')), (Marks{0, length, 0}));
    EXPECT_EQ(countMarks(std::string(length, '=')), (Marks{0, 0, length}));
  }
}

TEST(Bytes, AreTheSameInBlocksOnlyWhereAllAre) {
  for (std::size_t length = 0; length < 50; ++length) {
    Padded a(std::string(length, 'a') + "x"), b(std::string(length, 'a') + "y");
    EXPECT_TRUE(sameBytes(a.data(), b.data(), length)) << length;
    EXPECT_FALSE(sameBytes(a.data(), b.data(), length + 1)) << length;
    for (std::size_t at = 0; at < length; ++at) {
      b.data()[at] = 'b';
      EXPECT_FALSE(sameBytes(a.data(), b.data(), length)) << length << " at " << at;
      b.data()[at] = 'a';
    }
  }
}

// In blocks of exactly their size, so that nothing beyond them can be looked at.
TEST(Bytes, AreTheSameOnlyWhereAllAre) {
  for (std::size_t length = 0; length < 50; ++length) {
    std::vector<char> a(length, 'a'), b(length, 'a');
    std::string_view const left(a.data(), length), right(b.data(), length);
    EXPECT_TRUE(sameText(left, right)) << length;
    for (std::size_t at = 0; at < length; ++at) {
      b[at] = 'b';
      EXPECT_FALSE(sameText(left, right)) << length << " at " << at;
      b[at] = 'a';
    }
    if (length > 0) {
      EXPECT_FALSE(sameText(left.substr(1), right)) << length;
      EXPECT_FALSE(sameText(left, right.substr(1))) << length;
    }
  }
}

TEST(Bytes, NarrowUpToTheFirstCharacterBeyondAscii) {
  for (wchar_t const odd : {L'a', wchar_t{0x7F}, wchar_t{0x80}, wchar_t{0x100}, wchar_t{0x10080},
                            wchar_t{INT_MAX}, wchar_t{INT_MIN}, wchar_t{-1}}) {
    for (std::size_t length = 0; length < 70; ++length) {
      for (std::size_t at = 0; at < length; ++at) {
        std::vector<wchar_t> text(length, L'x');
        text[at] = odd;
        // Exactly as long as it may be written.
        std::vector<char> fast(length, '?'), slow(length, '?');
        std::size_t const done = narrowAscii(text.data(), length, fast.data());
        EXPECT_EQ(done, plain::narrowAscii(text.data(), length, slow.data()))
            << length << " " << at;
        slow.resize(done);
        fast.resize(done);
        EXPECT_EQ(fast, slow) << length << " " << at;
      }
    }
  }
}

TEST(Bytes, WidenUpToTheFirstByteBeyondAscii) {
  for (char const odd : {'a', '\x7F', '\x80', '\xC3', '\xFF'}) {
    for (std::size_t length = 0; length < 70; ++length) {
      for (std::size_t at = 0; at < length; ++at) {
        std::vector<char> text(length, 'x');
        text[at] = odd;
        // Exactly as long as it may be written.
        std::vector<wchar_t> fast(length, L'?'), slow(length, L'?');
        std::size_t const done = widenAscii(text.data(), length, fast.data());
        EXPECT_EQ(done, plain::widenAscii(text.data(), length, slow.data())) << length << " " << at;
        EXPECT_EQ(fast, slow) << length << " " << at;
      }
    }
  }
}

}  // namespace
}  // namespace Kovra::frame

// The short ways of converting give what the C library's own give.

#include "frame/convert.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cfenv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "support/locale.hpp"

namespace Kovra::frame {
namespace {

/// Texts that are numbers, nearly numbers, or none.
std::vector<std::string> const odd = {
    "",
    "-",
    "+",
    "0",
    "-0",
    "+5",
    " 5",
    "\t-5",
    "5 ",
    "5x",
    "0x1A",
    "0x",
    "x",
    "1e3",
    "1e400",
    "-1e400",
    "1e-400",
    ".5",
    "5.",
    "-.5",
    ".",
    "1.2.3",
    "1,5",
    "1.5,5",
    "inf",
    "nan",
    "infinity",
    "0.1",
    "0.30",
    "24.35",
    "-24.35",
    "00012",
    "--5",
    "+-5",
    "5-",
    "1.5e2",
    "0x1p3",
    "1.0000000000000001",
    "123456789012345",
    "1234567890123456",
    "12345678901234567890",
    "9223372036854775807",
    "9223372036854775808",
    "-9223372036854775808",
    "-9223372036854775809",
    "999999999999999999",
    "9999999999999999999",
    "-999999999999999999",
    "0.000000000000001",
    "99999999.9999999",
    "999999999.9999999",
    "4294967296",
    "-4294967297",
    "2147483648",
    "65536",
};

/// Digits with a sign, a point and a letter here and there.
std::vector<std::string> atRandom() {
  std::vector<std::string> texts;
  std::mt19937 random(20260101);
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (auto left = random() % 22; left > 0; --left) {
      text += "0123456789012345678901234567890123456789..--+ex "[random() % 48];
    }
    texts.push_back(text);
  }
  return texts;
}

std::vector<std::string> all() {
  std::vector<std::string> texts = odd;
  std::vector<std::string> const more = atRandom();
  texts.insert(texts.end(), more.begin(), more.end());
  return texts;
}

template <class Number>
void expectLowBits(std::string const& text) {
  Number number{};
  EXPECT_TRUE(convertNumber(text.c_str(), number));
  EXPECT_EQ(number, static_cast<Number>(std::strtol(text.c_str(), nullptr, 10))) << text;
}

TEST(Converted, WholeNumbersAreThoseOfStrtol) {
  for (std::string const& text : all()) {
    expectLowBits<int>(text);
    expectLowBits<unsigned short>(text);
    expectLowBits<unsigned int>(text);
    expectLowBits<long>(text);
    unsigned long counter = 0;
    EXPECT_TRUE(convertNumber(text.c_str(), counter));
    EXPECT_EQ(counter, static_cast<unsigned long>(std::strtol(text.c_str(), nullptr, 10)) & 0xFFFF);
  }
}

/// The same float to the bit, be it a zero with a sign or no number.
testing::AssertionResult sameFloat(float a, float b) {
  if (std::memcmp(&a, &b, sizeof a) == 0) return testing::AssertionSuccess();
  return testing::AssertionFailure() << a << " and " << b;
}

void expectRealsOfTheCLibrary() {
  for (std::string const& text : all()) {
    float real = 0;
    EXPECT_TRUE(convertNumber(text.c_str(), real));
    EXPECT_TRUE(sameFloat(real, static_cast<float>(std::strtod(text.c_str(), nullptr)))) << text;

    float bound = 77;
    double scanned = 77;
    bool const read = std::sscanf(text.c_str(), "%lf", &scanned) == 1;
    EXPECT_EQ(convertBound(text.c_str(), bound), read) << text;
    EXPECT_TRUE(sameFloat(bound, static_cast<float>(scanned))) << text;
  }
}

TEST(Converted, DecimalsAreThoseOfStrtod) {
  expectRealsOfTheCLibrary();
}

TEST(Converted, DecimalsAreRoundedAsTheProcessRounds) {
  for (int const rounding : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
    std::fesetround(rounding);
    expectRealsOfTheCLibrary();
    std::fesetround(FE_TONEAREST);
  }
}

TEST(Converted, DecimalsHaveThePointOfTheLocale) {
  test::LocaleGuard const guard(test::commaLocale, LC_NUMERIC);
  expectRealsOfTheCLibrary();
}

TEST(Converted, BoundsThatAreNoNumbersStoreNothing) {
  for (std::string const& text : all()) {
    int bound = 77;
    char* end = nullptr;
    long const number = std::strtol(text.c_str(), &end, 10);
    bool const read = end != text.c_str();
    EXPECT_EQ(convertBound(text.c_str(), bound), read) << text;
    EXPECT_EQ(bound, read ? static_cast<int>(number) : 77) << text;
  }
}

TEST(Converted, HexadecimalsAreThoseOfSscanf) {
  std::mt19937 random(7);
  std::vector<std::string> texts = {
      "0x",   "0x0",   "0xFFFFFFFF", "0x100000000", "0x123456789",
      "0X1",  "1A",    "0x1G",       "0x 1",        "0x-1",
      "0x+1", "0x0x1", " 0x1",       "0x000000001", "0x" + std::string(40, '1'),
      "0x1 ", "",      "0"};
  for (int i = 0; i < 20000; ++i) {
    std::string text = random() % 8 > 0 ? "0x" : "";
    for (auto left = random() % 12; left > 0; --left) {
      text += "0123456789abcdefABCDEFxg -"[random() % 26];
    }
    texts.push_back(text);
  }
  for (std::string const& text : texts) {
    unsigned int number = 77, scanned = 77;
    static_cast<void>(std::sscanf(text.substr(0, 31).c_str(), "0x%x", &scanned));
    EXPECT_TRUE(convertHexadecimal(text.c_str(), number)) << text;
    EXPECT_EQ(number, scanned) << text;
  }
}

TEST(Converted, NothingIsMadeOfNoText) {
  int whole = 77;
  unsigned int natural = 77;
  float real = 77;
  char flag = 77;
  bool open = true;
  std::array<char, 4> text{"xyz"};
  std::array<unsigned char, 6> address{1, 2, 3, 4, 5, 6};
  EXPECT_FALSE(convertNumber(nullptr, whole));
  EXPECT_FALSE(convertNumber(nullptr, real));
  EXPECT_FALSE(convertBound(nullptr, whole));
  EXPECT_FALSE(convertBound(nullptr, real));
  EXPECT_FALSE(convertHexadecimal(nullptr, natural));
  EXPECT_FALSE(convertFlag(nullptr, flag));
  EXPECT_FALSE(convertText(nullptr, text.data(), 4));
  EXPECT_FALSE(convertAddress(nullptr, address.data()));
  EXPECT_EQ(whole, 77);
  EXPECT_EQ(natural, 77U);
  EXPECT_EQ(real, 77);
  EXPECT_EQ(flag, 77);
  EXPECT_STREQ(text.data(), "xyz");
  EXPECT_EQ(address[5], 6);
  EXPECT_FALSE(convertFlag(nullptr, open));
  EXPECT_FALSE(open) << "this form always stores";
}

TEST(Converted, AddressesOfOtherLettersAreZero) {
  for (char const* const text : {"gg:gg:gg:gg:gg:gg", "g0:00:00:00:00:00"}) {
    std::array<unsigned char, 6> address{1, 2, 3, 4, 5, 6};
    convertAddress(text, address.data());
    EXPECT_EQ(address, (std::array<unsigned char, 6>{})) << text;
  }
}

}  // namespace
}  // namespace Kovra::frame

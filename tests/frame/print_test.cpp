// Numbers are printed as printf() prints them, in every locale and rounding mode.

#include "frame/print.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cfenv>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/locale.hpp"

namespace Kovra::frame {
namespace {

std::string viaPrintf(char const* format, auto... values) {
  NumberText text{};
  std::snprintf(text.data(), text.size(), format, values...);
  return text.data();
}

TEST(Print, GivesWholeNumbersAsPrintfDoes) {
  for (int const number : {0, 1, -1, 9, 10, -10, 4711, INT_MAX, INT_MIN}) {
    EXPECT_EQ(printWhole(number).data(), viaPrintf("%d", number));
  }
  EXPECT_STREQ(printWhole(UINT_MAX).data(), "4294967295");
  EXPECT_STREQ(printWhole(LONG_MIN).data(), "-9223372036854775808");
  EXPECT_STREQ(printWhole(ULONG_MAX).data(), "18446744073709551615");
}

TEST(Print, GivesAnAddressInSmallLetters) {
  unsigned char const address[] = {0x00, 0x0A, 0x9F, 0xF0, 0xFF, 0x5B};
  EXPECT_STREQ(printAddress(address).data(), "00:0a:9f:f0:ff:5b");
}

TEST(Print, GivesADoubleSixDecimals) {
  EXPECT_EQ(printDouble(-DBL_MAX).data(), viaPrintf("%lf", -DBL_MAX));
  EXPECT_STREQ(printDouble(1.5).data(), "1.500000");
}

void expectDecimals(float value) {
  for (int decimals = 1; decimals <= 4; ++decimals) {
    EXPECT_EQ(printDecimals(value, decimals).data(),
              viaPrintf("%.*f", decimals, static_cast<double>(value)))
        << decimals;
  }
}

/// Values at which something happens, and others of every size.
std::vector<float> floats() {
  std::vector<float> all = {0.0F,
                            1.0F,
                            0.5F,
                            2.5F,
                            999.99995F,
                            FLT_MIN,
                            FLT_MAX,
                            FLT_TRUE_MIN,
                            FLT_EPSILON,
                            1e11F,
                            9.9999994e10F,
                            1e12F,
                            1e13F,
                            1e14F,
                            1e15F,
                            1e16F,
                            std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::quiet_NaN()};
  // As near to the number above as to the one below: 3 / 32 has five decimals, the last of them 5.
  for (int numerator = 1; numerator < 4096; numerator += 2) {
    for (float const part : {8.0F, 32.0F, 64.0F}) {
      all.push_back(static_cast<float>(numerator) / part);
    }
  }
  std::mt19937 random(20261121);
  for (int i = 0; i < 20'000; ++i)
    all.push_back(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
  for (int i = 0; i < 20'000; ++i) {
    all.push_back(static_cast<float>(random()) / static_cast<float>(random() % 100'000 + 1));
  }
  return all;
}

TEST(Print, GivesDecimalsAsPrintfDoes) {
  for (float const value : floats()) {
    SCOPED_TRACE(value);
    expectDecimals(value);
    expectDecimals(-value);
  }
}

class RoundingMode {
 public:
  explicit RoundingMode(int mode) : earlier_(std::fegetround()) { std::fesetround(mode); }
  ~RoundingMode() { std::fesetround(earlier_); }
  RoundingMode(RoundingMode const&) = delete;
  RoundingMode& operator=(RoundingMode const&) = delete;

 private:
  int earlier_;
};

TEST(Print, RoundsAsTheProcessDoes) {
  for (int const mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
    RoundingMode const guard(mode);
    for (float const value : {0.03125F, 0.00004F, 1.00001F, 0.0F, 2.71828F, 1234.5678F}) {
      SCOPED_TRACE(testing::Message() << mode << ' ' << value);
      expectDecimals(value);
      expectDecimals(-value);
    }
  }
}

using PrintInCommaLocale = test::CommaLocale;
INSTANTIATE_TEST_SUITE_P(All, PrintInCommaLocale, test::commaLocales(), test::nameOfLocale);

TEST_P(PrintInCommaLocale, HasTheDecimalPointOfTheLocale) {
  EXPECT_STREQ(printDecimals(-1234.5F, 2).data(), "-1234,50");
  EXPECT_STREQ(printDecimals(FLT_MAX, 2).data(), "340282346638528859811704183484516925440,00");
  EXPECT_STREQ(printWhole(1234567).data(), "1234567");
}

}  // namespace
}  // namespace Kovra::frame

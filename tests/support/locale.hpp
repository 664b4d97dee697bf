/// @file
/// The process's locale for the time of a test.

#ifndef KOVRA_TESTS_SUPPORT_LOCALE_HPP
#define KOVRA_TESTS_SUPPORT_LOCALE_HPP

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace Kovra::test {

/// Sets one category of the locale, the character set unless told otherwise, and puts the earlier
/// one back. Locales other than "C" are those of KOVRA_TEST_LOCALES in tests/CMakeLists.txt; a test
/// that names another one fails.
class LocaleGuard {
 public:
  explicit LocaleGuard(char const* name, int category = LC_CTYPE)
      : category_(category), earlier_(std::setlocale(category, nullptr)) {
    EXPECT_NE(std::setlocale(category, name), nullptr) << "no locale " << name;
  }
  ~LocaleGuard() { std::setlocale(category_, earlier_.c_str()); }
  LocaleGuard(LocaleGuard const&) = delete;
  LocaleGuard& operator=(LocaleGuard const&) = delete;

 private:
  int category_;
  std::string earlier_;
};

inline constexpr char const* locales[] = {"C", "C.UTF-8"};

/// Locales with one byte for each letter.
inline constexpr char const* latin1Locale = "de_DE.ISO-8859-1";
inline constexpr char const* turkishLocale = "tr_TR.ISO-8859-9";
/// One that counts the bytes 0x85, 0xA0, 0xBB, 0xC3, 0xEF and 0xF4 among white space.
inline constexpr char const* spacesLocale = "de_DE.SPACES";

/// A locale whose decimal point is a comma; its thousands are parted by points.
inline constexpr char const* commaLocale = "de_DE.UTF-8";

/// Everything in a locale whose decimals have commas, as in a host that calls setlocale(LC_ALL, "")
/// there; one test for each.
class CommaLocale : public testing::TestWithParam<char const*> {
 protected:
  void SetUp() override {
    earlier_ = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(std::setlocale(LC_ALL, GetParam()), nullptr) << "no locale " << GetParam();
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
  }
  void TearDown() override { std::setlocale(LC_ALL, earlier_.c_str()); }

 private:
  std::string earlier_;
};

inline auto commaLocales() {
  return testing::Values(commaLocale, latin1Locale, turkishLocale);
}

/// The name of a test's locale, in letters that a test's name may have.
inline std::string nameOfLocale(testing::TestParamInfo<char const*> const& info) {
  std::string name = info.param;
  std::erase_if(name, [](char c) { return c == '.' || c == '-' || c == '_'; });
  return name;
}

}  // namespace Kovra::test

#endif

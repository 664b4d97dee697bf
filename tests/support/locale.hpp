/// @file
/// The process's character set for the time of a test.

#ifndef KOVRA_TESTS_SUPPORT_LOCALE_HPP
#define KOVRA_TESTS_SUPPORT_LOCALE_HPP

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace Kovra::test {

/// Sets LC_CTYPE to "C" or "C.UTF-8" and puts the earlier one back.
class LocaleGuard {
 public:
  explicit LocaleGuard(char const* name) : earlier_(std::setlocale(LC_CTYPE, nullptr)) {
    EXPECT_NE(std::setlocale(LC_CTYPE, name), nullptr) << "no locale " << name;
  }
  ~LocaleGuard() { std::setlocale(LC_CTYPE, earlier_.c_str()); }
  LocaleGuard(LocaleGuard const&) = delete;
  LocaleGuard& operator=(LocaleGuard const&) = delete;

 private:
  std::string earlier_;
};

inline constexpr char const* locales[] = {"C", "C.UTF-8"};

}  // namespace Kovra::test

#endif

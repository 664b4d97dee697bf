#include "support/locale.hpp"

#include <cstdlib>

namespace Kovra::test {
namespace {

// Before any test asks for a locale: those of this build, whatever the machine has.
[[maybe_unused]] bool const isPathSet = ::setenv("LOCPATH", KOVRA_TEST_LOCALES_DIR, 1) == 0;

TEST(TestLocales, AreThere) {
  LocaleGuard const latin1(latin1Locale);
  EXPECT_EQ(MB_CUR_MAX, 1U);
  LocaleGuard const turkish(turkishLocale);
  EXPECT_EQ(MB_CUR_MAX, 1U);
  LocaleGuard const unicode("C.UTF-8");
  EXPECT_GT(MB_CUR_MAX, 1U);
  LocaleGuard const comma(commaLocale, LC_NUMERIC);
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");
}

}  // namespace
}  // namespace Kovra::test

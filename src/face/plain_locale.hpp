/// @file
/// The face reads and writes as in the C locale, whatever the process has set.

#ifndef KOVRA_FACE_PLAIN_LOCALE_HPP
#define KOVRA_FACE_PLAIN_LOCALE_HPP

#include <locale.h>

namespace Kovra {

/// While it is there, the calling thread has the C locale: a decimal point is a point, and a letter
/// one of ASCII. No other thread notices.
class PlainLocale {
 public:
  PlainLocale() : before_(::uselocale(plain())) {}
  ~PlainLocale() { ::uselocale(before_); }
  PlainLocale(PlainLocale const&) = delete;
  PlainLocale& operator=(PlainLocale const&) = delete;

 private:
  /// That of C is there without a file and is never given back.
  static locale_t plain() {
    static locale_t const locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
  }

  locale_t before_;
};

}  // namespace Kovra

#endif

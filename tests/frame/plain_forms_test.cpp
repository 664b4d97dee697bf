// What printers send is read without the scanners of the C library, which take ten times as long:
// they are there for all other forms. Their results are the same, so that only a count of their
// calls tells whether they are asked.

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstddef>
#include <string>

#include "frame/convert.hpp"
#include "kovra.hpp"
#include "support/allocations.hpp"

#if defined(__SANITIZE_ADDRESS__) || !KOVRA_TESTS_WATCH_HEAP || !defined(__GLIBC__)
#define KOVRA_TESTS_WATCH_SCANNERS 0
#elif defined(__has_feature)
#define KOVRA_TESTS_WATCH_SCANNERS !__has_feature(address_sanitizer)
#else
#define KOVRA_TESTS_WATCH_SCANNERS 1
#endif

namespace {

thread_local std::size_t scans = 0;

}  // namespace

// Sanitizers bring their own. Nothing is looked up at the first call: the loader would save
// registers on the stack, where other tests look for secrets.
#if KOVRA_TESTS_WATCH_SCANNERS

extern "C" {

int __isoc99_vsscanf(char const*, char const*, va_list) noexcept;
long __strtol_internal(char const*, char**, int, int) noexcept;
double __strtod_internal(char const*, char**, int) noexcept;

int __isoc99_sscanf(char const* text, char const* format, ...) noexcept {
  ++scans;
  va_list fields;
  va_start(fields, format);
  int const result = __isoc99_vsscanf(text, format, fields);
  va_end(fields);
  return result;
}

long strtol(char const* text, char** end, int base) noexcept {
  ++scans;
  return __strtol_internal(text, end, base, 0);
}

double strtod(char const* text, char** end) noexcept {
  ++scans;
  return __strtod_internal(text, end, 0);
}
}

#endif

namespace Kovra {
namespace {

/// How often those scanners were asked since.
class Scans {
 public:
  std::size_t made() const { return scans - before_; }

 private:
  std::size_t before_ = scans;
};

class PlainForms : public testing::Test {
 protected:
  void SetUp() override {
    if (!KOVRA_TESTS_WATCH_SCANNERS) GTEST_SKIP() << "the sanitizer has scanners of its own";
    if (scansOf(" +5", longNumber_) != 1 || scansOf(" 0x1", hexadecimal_) != 1) {
      GTEST_SKIP() << "this C library's headers call its scanners by other names";
    }
  }

 private:
  static std::size_t scansOf(char const* text, long& number) {
    Scans const scans;
    frame::convertNumber(text, number);
    return scans.made();
  }
  static std::size_t scansOf(char const* text, unsigned int& number) {
    Scans const scans;
    frame::convertHexadecimal(text, number);
    return scans.made();
  }

  long longNumber_ = 0;
  unsigned int hexadecimal_ = 0;
};

TEST_F(PlainForms, OfNumbers) {
  for (char const* const text : {"0", "7", "42", "-5", "-0", "1234567890", "-123456789012345"}) {
    Scans const scans;
    long number = 1;
    EXPECT_TRUE(frame::convertNumber(text, number));
    int bound = 1;
    EXPECT_TRUE(frame::convertBound(text, bound));
    EXPECT_EQ(scans.made(), 0U) << text;
    EXPECT_EQ(std::to_string(number), std::string(text) == "-0" ? "0" : text);
  }
  for (char const* const text : {"0", "7", "-5", "1.5", "-2.25", "100.125", "123456789012345"}) {
    Scans const scans;
    float number = 1;
    EXPECT_TRUE(frame::convertNumber(text, number));
    EXPECT_TRUE(frame::convertBound(text, number));
    EXPECT_EQ(scans.made(), 0U) << text;
  }
}

TEST_F(PlainForms, OfHexadecimals) {
  for (char const* const text :
       {"0x0", "0x1A", "0xaf", "0xFA", "0x0A9", "0x89abcdef", "0xABCDEF01", "0x00000000"}) {
    Scans const scans;
    unsigned int number = 1;
    EXPECT_TRUE(frame::convertHexadecimal(text, number));
    EXPECT_EQ(scans.made(), 0U) << text;
    EXPECT_EQ(number, std::stoul(text, nullptr, 16));
  }
  for (char const* const text : {"00:1b:AF:90:0A:ff", "a0:0a:F0:0F:99:00"}) {
    Scans const scans;
    unsigned char address[6] = {1, 1, 1, 1, 1, 1};
    EXPECT_TRUE(frame::convertAddress(text, address));
    EXPECT_EQ(scans.made(), 0U) << text;
  }
}

// Also where the face looks at whether a text was a number.
TEST_F(PlainForms, OfTextsThatTheFaceLooksAt) {
  for (char const* const text :
       {"<get_general_status><error>105</error></get_general_status>",
        "<configuration><physical_address>00:1B:af:90:0a:FF</physical_address></configuration>"}) {
    Scans const scans;
    Decoding const decoding = decode(text);
    EXPECT_TRUE(decoding && decoding.notes().empty()) << text;
    EXPECT_EQ(scans.made(), 0U) << text;
  }
}

}  // namespace
}  // namespace Kovra

#include "frame/convert.hpp"

#include <langinfo.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string_view>

#include "frame/text.hpp"

namespace Kovra::frame {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Digits as one number. No long is too small for `most` of them; one more is seen, and that is it.
struct Digits {
  static constexpr std::size_t most = 18;

  unsigned long value = 0;
  std::size_t count = 0;

  char const* read(char const* text) {
    for (; isDigit(*text) && count <= most; ++text, ++count) {
      value = value * 10 + static_cast<unsigned long>(*text - '0');
    }
    return text;
  }
};

/// Converts as strtol() does in base 10; false when the text begins with no number. Digits alone,
/// which is what printers send, are converted faster; blanks and plus signs before them, and what
/// may be too long, are left to strtol() itself.
bool scanDecimal(char const* text, long& number) {
  bool const negative = *text == '-';
  Digits digits;
  digits.read(negative ? text + 1 : text);
  if (digits.count > 0 && digits.count <= Digits::most) {
    auto const value = static_cast<long>(digits.value);
    number = negative ? -value : value;
    return true;
  }
  char* end = nullptr;
  number = std::strtol(text, &end, 10);
  return end != text;
}

/// Powers of ten that a double holds without rounding.
constexpr double exactPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                  1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// Converts as strtod() does where that is plain: up to 15 digits are a whole number that a double
/// holds, and dividing it by such a power rounds once, as strtod() does. False for any other form,
/// and where the process has another decimal point.
bool scanPlainReal(char const* text, double& number) {
  bool const negative = *text == '-';
  Digits digits;
  char const* end = digits.read(negative ? text + 1 : text);
  std::size_t const whole = digits.count;
  if (whole == 0) return false;
  if (*end == '.') {
    if (std::strcmp(::nl_langinfo(RADIXCHAR), ".") != 0) return false;
    end = digits.read(end + 1);
  }
  std::size_t const fraction = digits.count - whole;
  if (*end != '\0' || digits.count >= std::size(exactPowers)) return false;
  // Signed: of an unsigned zero, rounding downward makes a negative one on some compilers.
  auto const value = static_cast<double>(static_cast<long>(digits.value));
  number = (negative ? -value : value) / exactPowers[fraction];
  return true;
}

double scanReal(char const* text) {
  double number = 0;
  return scanPlainReal(text, number) ? number : std::strtod(text, nullptr);
}

/// Every whole number is the low bits of a long.
template <class Number>
bool convertWhole(char const* text, Number& out) {
  if (text == nullptr) return false;
  long number = 0;
  scanDecimal(text, number);
  out = static_cast<Number>(number);
  return true;
}

/// The value of a hexadecimal digit, or -1.
int digitOf(char c) {
  if (isDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

/// Scans what sscanf would by "0x%x", in the form in which printers send it, at a tenth of the
/// cost. False, with nothing stored, for any other form.
bool scanPlainHexadecimal(char const* text, unsigned int& out) {
  constexpr std::size_t most = 2 * sizeof out;
  if (text[0] != '0' || text[1] != 'x') return false;
  unsigned int value = 0;
  std::size_t count = 0;
  for (text += 2; count <= most && digitOf(*text) >= 0; ++text, ++count) {
    value = value * 16 + static_cast<unsigned int>(digitOf(*text));
  }
  if (count == 0 || count > most || *text != '\0') return false;
  out = value;
  return true;
}

/// Scans a hardware address in the form in which printers send it, two digits in each field: sscanf
/// would store the same, but in a list of addresses it takes a tenth of the whole reading. False,
/// with nothing stored, for any other form.
bool scanPlainAddress(char const* text, unsigned char* out) {
  std::array<unsigned char, 6> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i, text += 2) {
    if (i > 0 && *text++ != ':') return false;
    int const high = digitOf(text[0]);
    int const low = high < 0 ? -1 : digitOf(text[1]);
    if (low < 0) return false;
    bytes[i] = static_cast<unsigned char>(high * 16 + low);
  }
  std::memcpy(out, bytes.data(), bytes.size());
  return true;
}

}  // namespace

bool convertNumber(char const* text, int& out) {
  return convertWhole(text, out);
}
bool convertNumber(char const* text, unsigned short& out) {
  return convertWhole(text, out);
}
bool convertNumber(char const* text, unsigned int& out) {
  return convertWhole(text, out);
}
bool convertNumber(char const* text, long& out) {
  return convertWhole(text, out);
}

bool convertNumber(char const* text, unsigned long& out) {
  unsigned short low = 0;
  if (!convertWhole(text, low)) return false;
  out = low;
  return true;
}

bool convertNumber(char const* text, float& out) {
  if (text == nullptr) return false;
  out = static_cast<float>(scanReal(text));
  return true;
}

bool convertHexadecimal(char const* text, unsigned int& out) {
  if (text == nullptr) return false;
  if (scanPlainHexadecimal(text, out)) return true;
  std::array<char, 32> digits{};
  copyBounded(text, digits.data(), static_cast<int>(digits.size()));
  static_cast<void>(std::sscanf(digits.data(), "0x%x", &out));
  return true;
}

bool convertBound(char const* text, int& out) {
  long number = 0;
  // As sscanf() by "%d", and much faster: configurations have hundreds of bounds.
  if (text == nullptr || !scanDecimal(text, number)) return false;
  out = static_cast<int>(number);
  return true;
}

bool convertBound(char const* text, float& out) {
  if (text == nullptr) return false;
  double number = 0;
  if (!scanPlainReal(text, number) && std::sscanf(text, "%lf", &number) != 1) return false;
  out = static_cast<float>(number);
  return true;
}

bool convertFlag(char const* text, char& out) {
  if (text == nullptr) return false;
  std::string_view const word = text;
  out = word == "enabled" || word == "yes" ? 1 : 0;
  return true;
}

bool convertFlag(char const* text, bool& out) {
  char flag = 0;
  bool const read = convertFlag(text, flag);
  out = flag != 0;
  return read;
}

bool convertText(char const* text, char* out, int capacity) {
  return text != nullptr && copyBounded(text, out, capacity);
}

bool convertAddress(char const* text, unsigned char* out) {
  if (text == nullptr) return false;
  if (scanPlainAddress(text, out)) return true;
  std::array<unsigned int, 6> fields{};
  // Fields that the text does not have stay 0, and a short text counts as read.
  static_cast<void>(std::sscanf(text, "%02x:%02x:%02x:%02x:%02x:%02x", &fields[0], &fields[1],
                                &fields[2], &fields[3], &fields[4], &fields[5]));
  for (std::size_t i = 0; i < fields.size(); ++i) out[i] = static_cast<unsigned char>(fields[i]);
  return true;
}

}  // namespace Kovra::frame

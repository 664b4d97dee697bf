#include "frame/print.hpp"

#include <langinfo.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace Kovra::frame {

NumberText printDecimals(float value, int decimals) {
  constexpr long powers[] = {1, 10, 100, 1000, 10000};
  constexpr double most = 1e15;  // a double holds every whole number up to here
  NumberText text;
  long const power = powers[decimals];
  // Nothing is rounded here: a float has 24 bits, the power 14 at the most.
  double const scaled = static_cast<double>(value) * static_cast<double>(power);
  if (!(std::abs(scaled) < most)) {
    std::snprintf(text.data(), text.size(), "%.*f", decimals, static_cast<double>(value));
    return text;
  }
  // Here it is, once, as printf() does: of two numbers that are as near, the even one.
  long const rounded = std::labs(std::lrint(scaled));
  char* next = text.data();
  if (std::signbit(value)) *next++ = '-';
  next = std::to_chars(next, text.end(), rounded / power).ptr;
  char const* const point = ::nl_langinfo(RADIXCHAR);
  next = static_cast<char*>(::mempcpy(next, point, std::strlen(point)));
  long fraction = rounded % power;
  for (int place = decimals; place > 0; fraction /= 10) {
    next[--place] = static_cast<char>('0' + fraction % 10);
  }
  next[decimals] = '\0';
  return text;
}

NumberText printDouble(double value) {
  NumberText text;
  std::snprintf(text.data(), text.size(), "%lf", value);
  return text;
}

NumberText printAddress(unsigned char const* address) {
  constexpr char digits[] = "0123456789abcdef";
  NumberText text;
  char* next = text.data();
  for (std::size_t i = 0; i < 6; ++i) {
    *next++ = digits[address[i] >> 4U];
    *next++ = digits[address[i] & 0xFU];
    *next++ = ':';
  }
  next[-1] = '\0';
  return text;
}

}  // namespace Kovra::frame

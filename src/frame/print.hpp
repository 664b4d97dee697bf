/// @file
/// Numbers as documents have them: what printf() prints in the process's locale, at a fraction of
/// its cost where that is plain.

#ifndef KOVRA_FRAME_PRINT_HPP
#define KOVRA_FRAME_PRINT_HPP

#include <array>
#include <charconv>
#include <concepts>

namespace Kovra::frame {

/// A printed number, with a terminator. There is room for the longest, a double with six decimals.
using NumberText = std::array<char, 352>;

/// As "%d" and its like for every other type.
template <std::integral Number>
NumberText printWhole(Number value) {
  NumberText text;  // not cleared: nothing is read behind the terminator
  *std::to_chars(text.begin(), text.end() - 1, value).ptr = '\0';
  return text;
}

/// As "%.4f" with as many decimals, one to four, in the process's rounding mode and with its
/// decimal point.
NumberText printDecimals(float value, int decimals);

/// As "%lf".
NumberText printDouble(double value);

/// Six hexadecimal bytes with colons between them.
NumberText printAddress(unsigned char const* address);

}  // namespace Kovra::frame

#endif

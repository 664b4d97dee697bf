/// @file
/// How much room a document takes at the most: what the headers tell hosts to bring.

#ifndef KOVRA_TESTS_SUPPORT_ROOM_HPP
#define KOVRA_TESTS_SUPPORT_ROOM_HPP

#include <gtest/gtest.h>

#include <cfloat>
#include <cstddef>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>
#include <type_traits>

#include "kvxhelper.h"

namespace Kovra::test {

/// Fills a record with values that take much room: nothing but quotes, of which each is printed as
/// six characters and none ends a text, and numbers of nine digits, which may have two characters
/// more. Flags and decimals are the caller's to set.
template <class Record>
void fillWide(Record& record) {
  static_assert(std::is_trivially_copyable_v<Record>);
  std::memset(static_cast<void*>(&record), '"', sizeof record);
}

/// The decimals that take the most room.
inline constexpr float wideDecimal = -FLT_MAX;
inline constexpr _MinMaxValFloat wideDecimals = {wideDecimal, wideDecimal, wideDecimal};

/// What convention 8 of kvxhelper.h calls a whole document.
inline bool isWhole(wchar_t const* out, std::size_t room) {
  wchar_t const* const end = std::wmemchr(out, L'\0', room);
  return end != nullptr && end - out > 2 && std::wcscmp(end - 2, L">\n") == 0;
}

/// Composes into an output of `room` characters and expects that it holds the whole document and
/// `spare` characters more; and that in half of what that takes it is seen to be cut.
template <class Compose>
void expectRoomFor(std::size_t room, Compose compose, std::size_t spare = 0) {
  auto const out = std::make_unique<wchar_t[]>(room);
  EXPECT_TRUE(compose(out.get(), static_cast<int>(room)));
  EXPECT_TRUE(isWhole(out.get(), room));
  std::size_t const written = ::wcsnlen(out.get(), room);
  EXPECT_LT(written + spare, room);
  std::size_t const half = written / 2;
  EXPECT_TRUE(compose(out.get(), static_cast<int>(half)));
  EXPECT_EQ(std::wmemchr(out.get(), L'\0', half), nullptr);
  EXPECT_FALSE(isWhole(out.get(), half));
}

}  // namespace Kovra::test

#endif

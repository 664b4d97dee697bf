/// @file
/// Records full of a pattern that no reply holds, so that "untouched" is really seen.

#ifndef KOVRA_TESTS_SUPPORT_RECORDS_HPP
#define KOVRA_TESTS_SUPPORT_RECORDS_HPP

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace Kovra::test {

inline constexpr unsigned char sentinel = 0xA5;

/// A record, number or array whose every byte, padding included, is the sentinel.
template <class Record>
Record filled() {
  static_assert(std::is_trivially_copyable_v<Record>);
  Record record;
  std::memset(static_cast<void*>(&record), sentinel, sizeof record);
  return record;
}

/// Compares every byte, padding included.
template <class Record>
testing::AssertionResult same(Record const& actual, Record const& expected) {
  static_assert(std::is_trivially_copyable_v<Record>);
  auto const* const left = reinterpret_cast<unsigned char const*>(&actual);
  auto const* const right = reinterpret_cast<unsigned char const*>(&expected);
  for (std::size_t i = 0; i < sizeof(Record); ++i) {
    if (left[i] != right[i]) {
      return testing::AssertionFailure() << "byte " << i << " of " << sizeof(Record) << " is "
                                         << int{left[i]} << " instead of " << int{right[i]};
    }
  }
  return testing::AssertionSuccess();
}

template <class Record>
testing::AssertionResult untouched(Record const& record) {
  return same(record, filled<Record>());
}

}  // namespace Kovra::test

#endif

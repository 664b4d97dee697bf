/// @file
/// The layout of public records is a promise to every program that was compiled before.

#ifndef KOVRA_TESTS_SUPPORT_LAYOUT_HPP
#define KOVRA_TESTS_SUPPORT_LAYOUT_HPP

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

namespace Kovra::test {

/// A record of `size` bytes that C code, memcpy and memset may handle.
template <class Record>
void expectPlain(std::size_t size) {
  EXPECT_EQ(sizeof(Record), size);
  EXPECT_TRUE(std::is_standard_layout_v<Record>);
  EXPECT_TRUE(std::is_trivially_copyable_v<Record>);
  EXPECT_TRUE(std::is_trivially_default_constructible_v<Record>);
}

}  // namespace Kovra::test

/// One line for each member: its type and its place.
#define EXPECT_MEMBER(record, member, type, offset)                           \
  do {                                                                        \
    EXPECT_EQ(offsetof(record, member), static_cast<std::size_t>(offset));    \
    EXPECT_TRUE((std::is_same_v<decltype(record::member), type>)) << #member; \
  } while (false)

#endif

/// @file
/// What the tables say, beside the file that holds it as it is told.

#ifndef KOVRA_TESTS_SUPPORT_GOLDEN_HPP
#define KOVRA_TESTS_SUPPORT_GOLDEN_HPP

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace Kovra::test {

/// Fails, and shows what was printed, where that is not a file of `tests/catalogue`.
inline void expectGolden(std::string const& printed, std::string const& name) {
  std::ifstream file(std::string(KOVRA_SAMPLES_DIR) + "/../tests/catalogue/" + name);
  std::string const golden{std::istreambuf_iterator<char>(file), {}};
  EXPECT_EQ(printed, golden) << "printed:\n" << printed;
}

}  // namespace Kovra::test

#endif

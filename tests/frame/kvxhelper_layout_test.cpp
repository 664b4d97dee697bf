#include <gtest/gtest.h>

#include "kvxhelper.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

using test::expectPlain;

TEST(BoundedLayout, OfWholeNumbers) {
  expectPlain<_MinMaxVal>(12);
  EXPECT_MEMBER(_MinMaxVal, min, int, 0);
  EXPECT_MEMBER(_MinMaxVal, max, int, 4);
  EXPECT_MEMBER(_MinMaxVal, val, int, 8);
}

TEST(BoundedLayout, OfFloats) {
  expectPlain<_MinMaxValFloat>(12);
  EXPECT_MEMBER(_MinMaxValFloat, min, float, 0);
  EXPECT_MEMBER(_MinMaxValFloat, max, float, 4);
  EXPECT_MEMBER(_MinMaxValFloat, val, float, 8);
}

}  // namespace
}  // namespace Kovra

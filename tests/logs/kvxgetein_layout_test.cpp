#include <gtest/gtest.h>

#include "kvxtrackrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(TrackLayout, OfTheTracks) {
  test::expectPlain<__GETTRACK>(768);
  EXPECT_MEMBER(__GETTRACK, track1, char[256], 0);
  EXPECT_MEMBER(__GETTRACK, track2, char[256], 256);
  EXPECT_MEMBER(__GETTRACK, track3, char[256], 512);
}

}  // namespace
}  // namespace Kovra

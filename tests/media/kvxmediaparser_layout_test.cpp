// The places of the members are a promise to every program that was compiled before.

#include <gtest/gtest.h>

#include <vector>

#include "kvxmediarecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(MediaLayout, OfTheCatalogue) {
  test::expectPlain<_KVMediaInfo>(32);
  EXPECT_MEMBER(_KVMediaInfo, cards, std::vector<_CardInfo*>*, 0);
  EXPECT_MEMBER(_KVMediaInfo, films, std::vector<_MediaRibbonInfo*>*, 8);
  EXPECT_MEMBER(_KVMediaInfo, ribbons, std::vector<_MediaRibbonInfo*>*, 16);
  EXPECT_MEMBER(_KVMediaInfo, laminates, std::vector<_MediaRibbonInfo*>*, 24);
}

}  // namespace
}  // namespace Kovra

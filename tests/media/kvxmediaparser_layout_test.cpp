// The places of the members are a promise to every program that was compiled before.

#include <gtest/gtest.h>

#include <vector>

#include "kvxmediarecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(MediaLayout, OfACard) {
  test::expectPlain<_CardInfo>(228);
  EXPECT_MEMBER(_CardInfo, type, int, 0);
  EXPECT_MEMBER(_CardInfo, halvex_part_number, char[16], 4);
  EXPECT_MEMBER(_CardInfo, description, char[64], 20);
  EXPECT_MEMBER(_CardInfo, thickness, float, 84);
  EXPECT_MEMBER(_CardInfo, coercivity, unsigned char, 88);
  EXPECT_MEMBER(_CardInfo, cardFeatures, unsigned char, 89);
  EXPECT_MEMBER(_CardInfo, transfer_temps, _TransferTempInfo, 92);
  EXPECT_MEMBER(_CardInfo, transfer_speeds, _TransferSpeedInfo, 140);
  EXPECT_MEMBER(_CardInfo, laminator_adjustments, _LaminationAdjustmentsNew, 188);
  EXPECT_MEMBER(_CardInfo, cal_table, int, 224);
}

TEST(MediaLayout, OfAFilmRibbonOrLaminate) {
  test::expectPlain<_MediaRibbonInfo>(80);
  EXPECT_MEMBER(_MediaRibbonInfo, halvex_part_number, char[16], 0);
  EXPECT_MEMBER(_MediaRibbonInfo, description, char[64], 16);
}

TEST(MediaLayout, OfTheCatalogue) {
  test::expectPlain<_KVMediaInfo>(32);
  EXPECT_MEMBER(_KVMediaInfo, cards, std::vector<_CardInfo*>*, 0);
  EXPECT_MEMBER(_KVMediaInfo, films, std::vector<_MediaRibbonInfo*>*, 8);
  EXPECT_MEMBER(_KVMediaInfo, ribbons, std::vector<_MediaRibbonInfo*>*, 16);
  EXPECT_MEMBER(_KVMediaInfo, laminates, std::vector<_MediaRibbonInfo*>*, 24);
}

}  // namespace
}  // namespace Kovra

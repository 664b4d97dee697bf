#include <gtest/gtest.h>

#include "kvxlogrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(LogLayout, OfAServiceEvent) {
  test::expectPlain<_tagLogServiceValues>(24);
  EXPECT_MEMBER(_tagLogServiceValues, number, int, 0);
  EXPECT_MEMBER(_tagLogServiceValues, code, int, 4);
  EXPECT_MEMBER(_tagLogServiceValues, year, int, 8);
  EXPECT_MEMBER(_tagLogServiceValues, month, int, 12);
  EXPECT_MEMBER(_tagLogServiceValues, day, int, 16);
  EXPECT_MEMBER(_tagLogServiceValues, card_count, int, 20);
}

TEST(LogLayout, OfTheServiceHistory) {
  test::expectPlain<_tagLogServiceXML>(16);
  EXPECT_MEMBER(_tagLogServiceXML, count, int, 0);
  EXPECT_MEMBER(_tagLogServiceXML, entries, _tagLogServiceValues*, 8);
}

TEST(LogLayout, OfACleaning) {
  test::expectPlain<_tagCleaningLogEntry>(12);
  EXPECT_MEMBER(_tagCleaningLogEntry, number, int, 0);
  EXPECT_MEMBER(_tagCleaningLogEntry, cards, int, 4);
  EXPECT_MEMBER(_tagCleaningLogEntry, type, int, 8);
}

}  // namespace
}  // namespace Kovra

#include <gtest/gtest.h>

#include "kvxstatusrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(GeneralStatusLayout, OfTheRecord) {
  test::expectPlain<KVGeneralStatus>(56);
  EXPECT_MEMBER(KVGeneralStatus, printer_state, int, 0);
  EXPECT_MEMBER(KVGeneralStatus, alarms, unsigned int, 4);
  EXPECT_MEMBER(KVGeneralStatus, error, int, 8);
  EXPECT_MEMBER(KVGeneralStatus, printer_lock, char, 12);
  EXPECT_MEMBER(KVGeneralStatus, num_jobs_receiving_or_pending, int, 16);
  EXPECT_MEMBER(KVGeneralStatus, num_jobs_inprogress, int, 20);
  EXPECT_MEMBER(KVGeneralStatus, num_jobs_done_ok, int, 24);
  EXPECT_MEMBER(KVGeneralStatus, num_jobs_done_error, int, 28);
  EXPECT_MEMBER(KVGeneralStatus, num_jobs_total, int, 32);
  EXPECT_MEMBER(KVGeneralStatus, action_id_next, int, 36);
  EXPECT_MEMBER(KVGeneralStatus, warning, int, 40);
  EXPECT_MEMBER(KVGeneralStatus, laminator_state, int, 44);
  EXPECT_MEMBER(KVGeneralStatus, param_chg_counter, unsigned long, 48);
}

}  // namespace
}  // namespace Kovra

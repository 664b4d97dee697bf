// What a host may do with any of the six writers.

#include <gtest/gtest.h>

#include <type_traits>

#include "kvxdevicecontrol.h"
#include "kvxsetcaps.h"
#include "kvxsetconfig.h"
#include "kvxsetmedia.h"
#include "kvxsetprinterinfo.h"
#include "kvxsetsecactions.h"

namespace Kovra {
namespace {

template <class Writer>
class Writers : public testing::Test {};

using AllWriters = testing::Types<KVXDeviceControl, KVXSetCaps, KVXSetConfig, KVXSetMedia,
                                  KVXSetPrinterInfo, KVXSetSecActions>;
TYPED_TEST_SUITE(Writers, AllWriters);

// A writer keeps a pointer into its own tree; that of a copy would lead into the original's.
TYPED_TEST(Writers, CannotBeCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<TypeParam>);
  EXPECT_FALSE(std::is_copy_assignable_v<TypeParam>);
  EXPECT_FALSE(std::is_move_constructible_v<TypeParam>);
  EXPECT_FALSE(std::is_move_assignable_v<TypeParam>);
}

TYPED_TEST(Writers, BeginWithoutArguments) {
  EXPECT_TRUE(std::is_default_constructible_v<TypeParam>);
  EXPECT_TRUE((std::is_base_of_v<TiXmlDocument, TypeParam>));
}

}  // namespace
}  // namespace Kovra

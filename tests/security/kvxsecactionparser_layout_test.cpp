#include <gtest/gtest.h>

#include "kvxsecrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(SecureActionLayout, OfTheWritersValues) {
  test::expectPlain<_tagSecActionXMLValues>(40);
  EXPECT_MEMBER(_tagSecActionXMLValues, action, char const*, 0);
  EXPECT_MEMBER(_tagSecActionXMLValues, model, char const*, 8);
  EXPECT_MEMBER(_tagSecActionXMLValues, serial, char const*, 16);
  EXPECT_MEMBER(_tagSecActionXMLValues, nonce, char const*, 24);
  EXPECT_MEMBER(_tagSecActionXMLValues, hmac, char const*, 32);
}

}  // namespace
}  // namespace Kovra

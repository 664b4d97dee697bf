#include <gtest/gtest.h>

#include "kvxconfigrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

template <class Enumeration>
void expectInt() {
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<Enumeration>, int>));
}

TEST(ConfigLayout, EnumerationsAreIntegers) {
  expectInt<WirelessSecurity>();
  expectInt<WirelessCrypto>();
  expectInt<USB_Speed>();
  expectInt<ErrorControl>();
  expectInt<_eFeedMode>();
}

TEST(ConfigLayout, EnumeratorsHaveTheirCodes) {
  EXPECT_EQ(wirelessSecurityNone, 0);
  EXPECT_EQ(wirelessSecurityWep40, 1);
  EXPECT_EQ(wirelessSecurityWep104, 2);
  EXPECT_EQ(wirelessSecurityWpa, 3);
  EXPECT_EQ(wirelessSecurityWpa2, 4);
  EXPECT_EQ(wirelessSecurityWpaWpa2, 5);
  EXPECT_EQ(wirelessCryptoNone, 0);
  EXPECT_EQ(wirelessCryptoRc4, 1);
  EXPECT_EQ(wirelessCryptoTkip, 2);
  EXPECT_EQ(wirelessCryptoCcmp, 3);
  EXPECT_EQ(usbSpeedHigh, 0);
  EXPECT_EQ(usbSpeedFull, 1);
  EXPECT_EQ(errorControlNone, 0);
  EXPECT_EQ(errorControlMedium, 1);
  EXPECT_EQ(errorControlHigh, 2);
  EXPECT_EQ(feedModeManual, 0);
  EXPECT_EQ(feedModeHopper, 1);
  EXPECT_EQ(feedModeAlreadyInPrinter, 2);
  EXPECT_EQ(feedModeAuto, 3);
}

}  // namespace
}  // namespace Kovra

#include <gtest/gtest.h>

#include "kvxwirelessrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(WirelessLayout, OfThePackets) {
  test::expectPlain<_tagPackets>(20);
  EXPECT_MEMBER(_tagPackets, octets, int, 0);
  EXPECT_MEMBER(_tagPackets, upkts, int, 4);
  EXPECT_MEMBER(_tagPackets, nupkts, int, 8);
  EXPECT_MEMBER(_tagPackets, discards, int, 12);
  EXPECT_MEMBER(_tagPackets, errors, int, 16);
}

TEST(WirelessLayout, OfTheLink) {
  test::expectPlain<_tagWirelessStatus>(108);
  EXPECT_MEMBER(_tagWirelessStatus, state, int, 0);
  EXPECT_MEMBER(_tagWirelessStatus, ssid, char[32], 4);
  EXPECT_MEMBER(_tagWirelessStatus, channel, int, 36);
  EXPECT_MEMBER(_tagWirelessStatus, rssi, int, 40);
  EXPECT_MEMBER(_tagWirelessStatus, snr, int, 44);
  EXPECT_MEMBER(_tagWirelessStatus, nf, int, 48);
  EXPECT_MEMBER(_tagWirelessStatus, security, unsigned int, 52);
  EXPECT_MEMBER(_tagWirelessStatus, crypto, unsigned int, 56);
  EXPECT_MEMBER(_tagWirelessStatus, rate, int, 60);
  EXPECT_MEMBER(_tagWirelessStatus, in, _tagPackets, 64);
  EXPECT_MEMBER(_tagWirelessStatus, out, _tagPackets, 84);
  EXPECT_MEMBER(_tagWirelessStatus, link_lost, int, 104);
}

TEST(WirelessLayout, OfTheRadio) {
  test::expectPlain<_tagWirelessRadioStatus>(68);
  EXPECT_MEMBER(_tagWirelessRadioStatus, mcasttxframe, int, 0);
  EXPECT_MEMBER(_tagWirelessRadioStatus, failed, int, 4);
  EXPECT_MEMBER(_tagWirelessRadioStatus, retry, int, 8);
  EXPECT_MEMBER(_tagWirelessRadioStatus, multiretry, int, 12);
  EXPECT_MEMBER(_tagWirelessRadioStatus, framedup, int, 16);
  EXPECT_MEMBER(_tagWirelessRadioStatus, rtssuccess, int, 20);
  EXPECT_MEMBER(_tagWirelessRadioStatus, rtsfailure, int, 24);
  EXPECT_MEMBER(_tagWirelessRadioStatus, ackfailure, int, 28);
  EXPECT_MEMBER(_tagWirelessRadioStatus, rxfrag, int, 32);
  EXPECT_MEMBER(_tagWirelessRadioStatus, mcastrxframe, int, 36);
  EXPECT_MEMBER(_tagWirelessRadioStatus, fcserror, int, 40);
  EXPECT_MEMBER(_tagWirelessRadioStatus, txframe, int, 44);
  EXPECT_MEMBER(_tagWirelessRadioStatus, tx_success, int, 48);
  EXPECT_MEMBER(_tagWirelessRadioStatus, tx_retry, int, 52);
  EXPECT_MEMBER(_tagWirelessRadioStatus, rx_success, int, 56);
  EXPECT_MEMBER(_tagWirelessRadioStatus, rx_duplicate, int, 60);
  EXPECT_MEMBER(_tagWirelessRadioStatus, rts_success, int, 64);
}

TEST(WirelessLayout, OfAnAccessPoint) {
  test::expectPlain<_tagAccessPoint>(72);
  EXPECT_MEMBER(_tagAccessPoint, ssid, char[34], 0);
  EXPECT_MEMBER(_tagAccessPoint, bssid, unsigned char[6], 34);
  EXPECT_MEMBER(_tagAccessPoint, selected, bool, 40);
  EXPECT_MEMBER(_tagAccessPoint, channel, int, 44);
  EXPECT_MEMBER(_tagAccessPoint, privacy, int, 48);
  EXPECT_MEMBER(_tagAccessPoint, signalStrength, int, 52);
  EXPECT_MEMBER(_tagAccessPoint, infrastructure, bool, 56);
  EXPECT_MEMBER(_tagAccessPoint, security, unsigned int, 60);
  EXPECT_MEMBER(_tagAccessPoint, encryption, unsigned int, 64);
  EXPECT_MEMBER(_tagAccessPoint, maxDataRate, int, 68);
}

TEST(WirelessLayout, OfTheAccessPoints) {
  test::expectPlain<_tagAccessPoints>(16);
  EXPECT_MEMBER(_tagAccessPoints, accessPoints, _tagAccessPoint*, 0);
  EXPECT_MEMBER(_tagAccessPoints, count, unsigned int, 8);
}

}  // namespace
}  // namespace Kovra

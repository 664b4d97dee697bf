#include <gtest/gtest.h>

#include "kvxsecrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(SecureActionLayout, OfTheHostsDiffieHellmanValues) {
  test::expectPlain<_tagHostDHKeys>(24);
  EXPECT_MEMBER(_tagHostDHKeys, modulus, long, 0);
  EXPECT_MEMBER(_tagHostDHKeys, base, long, 8);
  EXPECT_MEMBER(_tagHostDHKeys, host_interim_key, long, 16);
}

TEST(SecureActionLayout, OfTheDirective) {
  test::expectPlain<_tagSecDirecXML>(1300);
  EXPECT_MEMBER(_tagSecDirecXML, model, char[260], 0);
  EXPECT_MEMBER(_tagSecDirecXML, serial, char[260], 260);
  EXPECT_MEMBER(_tagSecDirecXML, action, char[260], 520);
  EXPECT_MEMBER(_tagSecDirecXML, nonce, char[260], 780);
  EXPECT_MEMBER(_tagSecDirecXML, hmac, char[260], 1040);
}

TEST(SecureActionLayout, OfTheRequest) {
  test::expectPlain<_tagSecReqXML>(1040);
  EXPECT_MEMBER(_tagSecReqXML, model, char[260], 0);
  EXPECT_MEMBER(_tagSecReqXML, serial, char[260], 260);
  EXPECT_MEMBER(_tagSecReqXML, action, char[260], 520);
  EXPECT_MEMBER(_tagSecReqXML, nonce, char[260], 780);
}

TEST(SecureActionLayout, OfTheKeys) {
  test::expectPlain<_tagSecKeys>(780);
  EXPECT_MEMBER(_tagSecKeys, data_encryption_key, char[260], 0);
  EXPECT_MEMBER(_tagSecKeys, host_authentication_key, char[260], 260);
  EXPECT_MEMBER(_tagSecKeys, printer_lock_key, char[260], 520);
}

TEST(SecureActionLayout, OfTheChangeOfKeys) {
  test::expectPlain<_tagSecSetKeys>(512);
  EXPECT_MEMBER(_tagSecSetKeys, current_data_encryption_key, char[64], 0);
  EXPECT_MEMBER(_tagSecSetKeys, new_data_encryption_key, char[64], 64);
  EXPECT_MEMBER(_tagSecSetKeys, current_host_authentication_key, char[64], 128);
  EXPECT_MEMBER(_tagSecSetKeys, new_host_authentication_key, char[64], 192);
  EXPECT_MEMBER(_tagSecSetKeys, current_printer_lock_key, char[64], 256);
  EXPECT_MEMBER(_tagSecSetKeys, new_printer_lock_key, char[64], 320);
  EXPECT_MEMBER(_tagSecSetKeys, current_passkey, char[64], 384);
  EXPECT_MEMBER(_tagSecSetKeys, new_passkey, char[64], 448);
}

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

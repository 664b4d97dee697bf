// The places of the members are a promise to every program that was compiled before.

#include <gtest/gtest.h>

#include <type_traits>

#include "kvxcapsrecords.h"
#include "support/layout.hpp"

namespace Kovra {
namespace {

TEST(CapabilitiesLayout, OfAPort) {
  test::expectPlain<_PortCaps>(8);
  EXPECT_MEMBER(_PortCaps, portId, int, 0);
  EXPECT_MEMBER(_PortCaps, type, int, 4);
}

TEST(CapabilitiesLayout, OfAnInterface) {
  test::expectPlain<_InterfaceCaps>(12);
  EXPECT_MEMBER(_InterfaceCaps, protocol, int, 0);
  EXPECT_MEMBER(_InterfaceCaps, transport, int, 4);
  EXPECT_MEMBER(_InterfaceCaps, port, int, 8);
}

TEST(CapabilitiesLayout, OfAFont) {
  test::expectPlain<_FontCaps>(72);
  EXPECT_MEMBER(_FontCaps, name, char[64], 0);
  EXPECT_MEMBER(_FontCaps, scalable, bool, 64);
  EXPECT_MEMBER(_FontCaps, style, int, 68);
}

TEST(CapabilitiesLayout, OfATemplateOrGraphic) {
  test::expectPlain<_TemplateCaps>(4352);
  EXPECT_MEMBER(_TemplateCaps, name, char[4096], 0);
  EXPECT_MEMBER(_TemplateCaps, location, char[256], 4096);
}

TEST(CapabilitiesLayout, OfABarcode) {
  test::expectPlain<_BarCodeCaps>(64);
  EXPECT_MEMBER(_BarCodeCaps, name, char[64], 0);
}

TEST(CapabilitiesLayout, OfTheSecurity) {
  test::expectPlain<_SecurityCaps>(8);
  EXPECT_MEMBER(_SecurityCaps, passkeyProtection, bool, 0);
  EXPECT_MEMBER(_SecurityCaps, encryptionAlgorithm, int, 4);
}

TEST(CapabilitiesLayout, OfTheCapabilities) {
  test::expectPlain<_Capabilities>(240);
  EXPECT_MEMBER(_Capabilities, hostPortCount, int, 0);
  EXPECT_MEMBER(_Capabilities, hostPorts, _PortCaps*, 8);
  EXPECT_MEMBER(_Capabilities, devicePortCount, int, 16);
  EXPECT_MEMBER(_Capabilities, devicePorts, _PortCaps*, 24);
  EXPECT_MEMBER(_Capabilities, swInterfaceCount, int, 32);
  EXPECT_MEMBER(_Capabilities, swInterfaces, _InterfaceCaps*, 40);
  EXPECT_MEMBER(_Capabilities, ocpLanguageCount, int, 48);
  EXPECT_MEMBER(_Capabilities, ocpLanguages, _OCPLanguageCaps*, 56);
  EXPECT_MEMBER(_Capabilities, imageSharpeningLevels, int, 64);
  EXPECT_MEMBER(_Capabilities, security, _SecurityCaps, 68);
  EXPECT_MEMBER(_Capabilities, ramSize, int, 76);
  EXPECT_MEMBER(_Capabilities, flashSize, long, 80);
  EXPECT_MEMBER(_Capabilities, graphicFormatCount, int, 88);
  EXPECT_MEMBER(_Capabilities, graphicFormats, int*, 96);
  EXPECT_MEMBER(_Capabilities, fontCount, int, 104);
  EXPECT_MEMBER(_Capabilities, fonts, _FontCaps*, 112);
  EXPECT_MEMBER(_Capabilities, templateCount, int, 120);
  EXPECT_MEMBER(_Capabilities, templates, _TemplateCaps*, 128);
  EXPECT_MEMBER(_Capabilities, graphicCount, int, 136);
  EXPECT_MEMBER(_Capabilities, graphics, _TemplateCaps*, 144);
  EXPECT_MEMBER(_Capabilities, printSystem, int, 152);
  EXPECT_MEMBER(_Capabilities, printType, int, 156);
  EXPECT_MEMBER(_Capabilities, atm, bool, 160);
  EXPECT_MEMBER(_Capabilities, magazineCapacity, int, 164);
  EXPECT_MEMBER(_Capabilities, logicalPageLength, int, 168);
  EXPECT_MEMBER(_Capabilities, logicalPageWidth, int, 172);
  EXPECT_MEMBER(_Capabilities, physicalPageLength, int, 176);
  EXPECT_MEMBER(_Capabilities, physicalPageWidth, int, 180);
  EXPECT_MEMBER(_Capabilities, printResolution, int, 184);
  EXPECT_MEMBER(_Capabilities, magEncoderType, int, 188);
  EXPECT_MEMBER(_Capabilities, magStripeLocation, int, 192);
  EXPECT_MEMBER(_Capabilities, internalEncoder, _InternalEncoderInfo, 196);
  EXPECT_MEMBER(_Capabilities, barcodeCount, int, 216);
  EXPECT_MEMBER(_Capabilities, barcodes, _BarCodeCaps*, 224);
  EXPECT_MEMBER(_Capabilities, laminatorPresent, bool, 232);
  EXPECT_MEMBER(_Capabilities, laminatorType, _laminatorType, 236);
}

TEST(CapabilitiesLayout, OfTheLaminatorType) {
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<_laminatorType>, int>));
  EXPECT_EQ(laminatorTypeNone, 0);
  EXPECT_EQ(laminatorTypeOneSide, 1);
  EXPECT_EQ(laminatorTypeTwoSides, 2);
}

}  // namespace
}  // namespace Kovra

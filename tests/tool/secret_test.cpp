#include "secret.hpp"

#include <gtest/gtest.h>

#include <string>

namespace Kovra::tool {

namespace {

std::string masked(std::string_view text) {
  return maskedPiece(text, {0, text.size()}, secretsIn(text));
}

TEST(SecretsIn, AreWhatAnElementHoldsThatCarriesOne) {
  EXPECT_EQ(masked("<a><key>x</key><b>y</b></a>"), "<a><key>******</key><b>y</b></a>");
  EXPECT_EQ(masked("<a><key> x </key></a>"), "<a><key> ****** </key></a>");
  EXPECT_EQ(masked("<a><key>x<key>y</key>z</key>b</a>"), "<a><key>******</key>b</a>");
  EXPECT_EQ(masked("<a><key><![CDATA[</key>]]>x</key>b</a>"), "<a><key>******</key>b</a>");
  EXPECT_EQ(masked("<a><key><!--</key>-->x</key>b</a>"), "<a><key>******</key>b</a>");
  EXPECT_EQ(masked("<a><key/>b</a>"), "<a><key/>b</a>");
  EXPECT_EQ(masked("<a><key b='>'>x</key>b</a>"), "<a><key ******</key>b</a>");
}

TEST(SecretsIn, GoOnToTheEndWhereNothingClosesThem) {
  EXPECT_EQ(masked("<a><key>x</kye><b>y</b></a>"), "<a><key>******");
  EXPECT_EQ(masked("<a><key x"), "<a><key ******");
  EXPECT_EQ(masked("<a><key b=\"x>y</key>"), "<a><key ******");
  EXPECT_EQ(masked("<a><key><!--x"), "<a><key>******");
  EXPECT_EQ(masked("<a><b password='x"), "<a><b password=******");
  EXPECT_EQ(masked("<a><key"), "<a><key");
  EXPECT_EQ(masked("<"), "<");
  EXPECT_EQ(masked(""), "");
}

TEST(SecretsIn, AreFoundByNamesInAnySpelling) {
  EXPECT_EQ(masked("<a><w:KEY>x</w:KEY></a>"), "<a><w:KEY>******</w:KEY></a>");
  EXPECT_EQ(masked("<a><wifi_password>x</wifi_password></a>"),
            "<a><wifi_password>******</wifi_password></a>");
  EXPECT_EQ(masked("<a><b c='1' secret = 'x' d=2/></a>"), "<a><b c='1' secret = ****** d=2/></a>");
  EXPECT_EQ(masked("<a><b secret=x/></a>"), "<a><b secret=******/></a>");
  // The catalogue knows this one, and that it is none.
  EXPECT_EQ(masked("<a><passkey_protection>1</passkey_protection></a>"),
            "<a><passkey_protection>1</passkey_protection></a>");
}

TEST(SecretsIn, AreAllButNamesWhereTheReplyHoldsNothingElse) {
  EXPECT_EQ(masked("<?xml version='1'?>\n<keys>\n <b c='x'>y</b>\n</keys>"),
            "<?xml version='1'?>\n<keys>\n <b ******</b>\n</keys>");
}

TEST(SecretsIn, AreMaskedInAPieceOfTheText) {
  std::string const text = "<a><key>secret</key></a>";
  auto const secrets = secretsIn(text);
  EXPECT_EQ(maskedPiece(text, {0, 3}, secrets), "<a>");
  EXPECT_EQ(maskedPiece(text, {3, 10}, secrets), "<key>******");
  EXPECT_EQ(maskedPiece(text, {10, 12}, secrets), "******");
  EXPECT_EQ(maskedPiece(text, {10, 20}, secrets), "******</key>");
}

}  // namespace

}  // namespace Kovra::tool

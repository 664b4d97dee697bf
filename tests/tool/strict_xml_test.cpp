#include "strict_xml.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace Kovra::tool {

namespace {

/// "1:5@4: message", or nothing.
std::string faultOf(std::string_view text) {
  auto const fault = strictFault(text);
  if (!fault) return {};
  return std::to_string(fault->line) + ':' + std::to_string(fault->column) + '@' +
         std::to_string(fault->offset) + ": " + fault->message;
}

TEST(StrictFault, IsNoneInXml) {
  for (char const* const good :
       {"<a/>", "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xe4</a>",
        "<!DOCTYPE a SYSTEM 'file:///etc/passwd'><a b='&lt;'>&#65;<![CDATA[&]]></a>",
        "<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST a b CDATA 'c'>]><a/>", "\xef\xbb\xbf<a/>"}) {
    EXPECT_EQ(faultOf(good), "") << good;
  }
}

TEST(StrictFault, TellsWhere) {
  EXPECT_EQ(faultOf("<a>\n \xc3\xa4 & </a>"), "2:5@9: not well-formed (invalid token)");
  EXPECT_EQ(faultOf("\xef\xbb\xbf<a b='1' b='2'/>"), "1:10@12: duplicate attribute");
  EXPECT_EQ(faultOf("\xef\xbb\xbf<a>\n& "), "2:2@8: not well-formed (invalid token)");
  EXPECT_EQ(faultOf(""), "1:1@0: no element found");
}

/// An entity is neither looked up nor expanded, and where one is declared nothing behind it is
/// looked at.
TEST(StrictFault, EndsAtAnEntity) {
  std::string const said = "an entity is declared, which Kovra does not expand";
  for (char const* const entity :
       {"<!ENTITY x 'y'>", "<!ENTITY x SYSTEM 'file:///etc/passwd'>", "<!ENTITY % x 'y'>",
        "<!ENTITY % x SYSTEM 'http://192.0.2.1/'> %x;"}) {
    auto const fault = strictFault("<!DOCTYPE a [" + std::string(entity) + "]><a>&x;&</a>");
    ASSERT_TRUE(fault) << entity;
    EXPECT_EQ(fault->message, said) << entity;
  }
}

TEST(StrictFault, ExpandsNoBombs) {
  std::string laughs = "<!DOCTYPE a [<!ENTITY x0 'ha'>";
  std::string chain = laughs;
  for (int i = 1; i < 100000; ++i) {
    std::string const before = "&x" + std::to_string(i - 1) + ';';
    std::string const begin = "<!ENTITY x" + std::to_string(i) + " '" + before;
    laughs += begin + before + before + "'>";
    chain += begin + "'>";
  }
  auto const begin = std::chrono::steady_clock::now();
  EXPECT_TRUE(strictFault(laughs + "]><a>&x99999;</a>"));
  EXPECT_TRUE(strictFault(chain + "]><a b='&x99999;'>&x99999;</a>"));
  EXPECT_TRUE(strictFault("<!DOCTYPE a [<!ELEMENT a " + std::string(1000000, '(')));
  std::string deep;
  for (int i = 0; i < 1000000; ++i) deep += "<a>";
  EXPECT_TRUE(strictFault(deep));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

TEST(StrictFault, RepeatsNothingOfTheText) {
  for (char const* const text : {"<a hush='1' hush='2'/>", "<a>&hush;</a>", "<hush><a></hush>",
                                 "<a>hush", "<?hush", "<a hush></a>"}) {
    EXPECT_NE(faultOf(text), "") << text;
    EXPECT_EQ(faultOf(text).find("hush"), std::string::npos) << text;
  }
}

/// What the tool says of it in its help is true.
TEST(StrictFault, HasAnExample) {
  EXPECT_TRUE(strictFault(strictExample));
}

}  // namespace

}  // namespace Kovra::tool

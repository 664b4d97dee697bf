// What names and values tell of somebody.

#include "identity.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace Kovra::tool {

namespace {

TEST(SaysNothing, WhatStandsWhereNothingIsSet) {
  for (char const* const nothing : {"", "******", "-", "---", "none", "DHCP", "n/a", "Off"}) {
    EXPECT_TRUE(saysNothing(nothing)) << nothing;
  }
  for (char const* const value : {"non", "nones", "a", "*****", "-x", "0", "/"}) {
    EXPECT_FALSE(saysNothing(value)) << value;
  }
}

TEST(SaysNothing, NetmasksAreOnesAndThenZeros) {
  for (char const* const mask : {"0.0.0.0", "255.0.0.0", "255.128.0.0", "255.255.255.0",
                                 "255.255.255.252", "255.255.255.255"}) {
    EXPECT_TRUE(saysNothing(mask)) << mask;
  }
  for (char const* const address :
       {"10.0.0.0", "254.0.0.0", "255.0.255.0", "255.128.128.0", "255.255.255.1", "255.255.255",
        "255.255.255.0.0", "255.255..0", "255.255.255.", "0.0.0.1"}) {
    EXPECT_FALSE(saysNothing(address)) << address;
  }
}

TEST(SaysNothing, EmptyAddressesAreAllZerosOrOnes) {
  for (char const* const empty :
       {"00:00:00:00:00:00", "00-00-00-00-00-00", "ff:ff:ff:ff:ff:ff", "FF-FF-FF-FF-FF-FF"}) {
    EXPECT_TRUE(saysNothing(empty)) << empty;
  }
  for (char const* const address :
       {"00:00:00:00:00:01", "ff:ff:ff:ff:ff:fe", "00:00:00:00:00", "0000000000000000"}) {
    EXPECT_FALSE(saysNothing(address)) << address;
  }
}

std::string groupOf(std::string_view name, std::set<Group> kept = {}) {
  std::optional<Identity> const found = Identities(std::move(kept)).byName(name);
  return found ? std::string(nameOf(found->group)) : "none";
}

TEST(Identities, AreFoundByTheWordsOfANameInAnySpelling) {
  std::string const serial(nameOf(Group::serial));
  for (char const* const name : {"serial", "Serial", "SERIAL", "serial_number", "serialNumber",
                                 "SerialNumber", "my-serial", "serial2", "x2Serial", "HDSerial"}) {
    EXPECT_EQ(groupOf(name), serial) << name;
  }
  for (char const* const name : {"", "_", "7", "serialize", "aserial", "serial_count"}) {
    EXPECT_EQ(groupOf(name), "none") << name;
  }
}

TEST(Identities, OfNamesThatNobodyMeantAreNone) {
  std::string const blanks(249, '_');
  EXPECT_EQ(groupOf(blanks + "_serial"), nameOf(Group::serial)) << "256 letters";
  EXPECT_EQ(groupOf(blanks + "__serial"), "none");
}

TEST(Identities, ThatAreKeptAreNone) {
  EXPECT_EQ(groupOf("serial", {Group::serial}), "none");
  EXPECT_EQ(groupOf("serial", {Group::network}), nameOf(Group::serial));
}

TEST(Identities, AreReplacedInTheirOwnMessageAlone) {
  Identities const identities({});
  ASSERT_FALSE(identities.listed().empty());
  for (Identities::Listed const& listed : identities.listed()) {
    EXPECT_TRUE(identities.isReplaced(listed.message, listed.path)) << listed.path;
    EXPECT_FALSE(identities.isReplaced(listed.message, listed.path + ".x"));
    EXPECT_FALSE(identities.isReplaced("no-such-message", listed.path));
  }
}

}  // namespace

}  // namespace Kovra::tool

// What the schemas say of each kind of value; that they are schemas, and that each reading fits its
// own, is judged by a validator.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "kovra.hpp"

namespace Kovra {
namespace {

Value schemaOf(char const* message) {
  return Value::fromJson(schema(message));
}

/// As JSON on one line, with all that stands at the path.
std::string said(char const* message, char const* path) {
  return std::string(schemaOf(message).at(path).toJson());
}

TEST(Schema, BeginsWithItsNames) {
  Value const schema = schemaOf("passkey-change");
  EXPECT_EQ(schema.at("$schema").asText(), "https://json-schema.org/draft/2020-12/schema");
  EXPECT_EQ(schema.at("$id").asText(), "urn:kovra:1:passkey-change");
  EXPECT_EQ(schema.at("title").asText(), "passkey-change");
  EXPECT_EQ(schema.at("description").asText(), "a change of the passkey");
  EXPECT_EQ(schema.at("type").asText(), "object");
}

TEST(Schema, IsIndentedByTwoAndEndsItsLastLine) {
  std::string const text = schema("nonce");
  EXPECT_EQ(text.find("{\n  \"$schema\": "), 0U) << text;
  EXPECT_EQ(text.substr(text.size() - 3), "\n}\n");
}

TEST(Schema, OfNoMessageIsEmpty) {
  EXPECT_EQ(schema("nothing"), "");
  EXPECT_EQ(schema(""), "");
}

TEST(Schema, AllowsNothingThatTheRecordLacks) {
  EXPECT_EQ(said("passkey-change", "additionalProperties"), "false");
  EXPECT_EQ(said("configuration", "properties.ethernet.additionalProperties"), "false");
}

TEST(Schema, RequiresWhatOnlyComposedMessagesNeed) {
  EXPECT_EQ(said("passkey-change", "required"), R"(["current_passkey","new_passkey"])");
  EXPECT_EQ(schemaOf("configuration").find("required"), nullptr) << "of a reply there may be less";
}

TEST(Schema, OfASecretBoundsNoLength) {
  EXPECT_EQ(said("passkey-change", "properties.current_passkey"), R"({"type":"string"})");
}

TEST(Schema, OfATextLeavesRoomForItsEnd) {
  EXPECT_EQ(said("job-list", "properties.jobs.items.anyOf[1].properties.uuid"),
            R"({"type":"string","maxLength":39})");
}

TEST(Schema, OfFlags) {
  EXPECT_EQ(said("sensor-status", "properties.door_open"), R"({"type":"boolean"})");
}

TEST(Schema, OfWholeNumbersBoundsThemAsTheirTypes) {
  EXPECT_EQ(said("job-list", "properties.count"),
            R"({"type":"integer","minimum":-2147483648,"maximum":2147483647})");
  EXPECT_EQ(said("access-points", "properties.count"),
            R"({"type":"integer","minimum":0,"maximum":4294967295})");
  EXPECT_EQ(said("job-list", "properties.jobs.items.anyOf[1].properties.action_id"),
            R"({"type":"integer","minimum":0,"maximum":18446744073709551615})");
  EXPECT_EQ(said("capabilities", "properties.flashSize"),
            R"({"type":"integer","minimum":-9223372036854775808,"maximum":9223372036854775807})");
}

TEST(Schema, OfRealNumbersAllowsNone) {
  EXPECT_EQ(said("sensor-status", "properties.voltage_24"), R"({"type":["number","null"]})");
}

TEST(Schema, OfAddresses) {
  EXPECT_EQ(said("configuration", "properties.physical_address"),
            R"({"type":"string","pattern":"^[0-9A-Fa-f]{1,2}(:[0-9A-Fa-f]{1,2}){5}$"})");
  EXPECT_EQ(said("configuration", "properties.ethernet.properties.gateway"),
            R"({"type":"string","pattern":"^[0-9]{1,3}([.][0-9]{1,3}){3}$"})");
}

TEST(Schema, OfAKeywordTakesItsReadingItsCodeAndItsWord) {
  EXPECT_EQ(said("capabilities", "properties.printSystem"),
            R"({"anyOf":[{"type":"object","properties":{"code":{"type":"integer"},)"
            R"("name":{"enum":["direct","retransfer",null]},"raw":{"type":"string"}},)"
            R"("required":["code"],"additionalProperties":false},)"
            R"({"type":"integer"},{"enum":["direct","retransfer"]}]})");
}

TEST(Schema, OfAListAllowsEntriesLeftEmpty) {
  EXPECT_EQ(said("job-list", "properties.jobs.type"), R"("array")");
  EXPECT_EQ(said("job-list", "properties.jobs.items.anyOf[0]"), R"({"type":"null"})");
  EXPECT_EQ(said("job-list", "properties.jobs.items.anyOf[1].type"), R"("object")");
  EXPECT_EQ(said("capabilities", "properties.graphicFormats.items.anyOf[1].anyOf[1]"),
            R"({"type":"integer"})")
      << "a list of keywords";
}

TEST(Schema, OfBitsHasAFlagForEach) {
  EXPECT_EQ(said("capabilities", "properties.imageSharpeningLevels"),
            R"({"type":"object","properties":{"off":{"type":"boolean"},)"
            R"("normal":{"type":"boolean"},"high":{"type":"boolean"},"low":{"type":"boolean"}},)"
            R"("additionalProperties":false})");
}

TEST(Schema, OfASettingHasItsBoundsAndItsValue) {
  EXPECT_EQ(said("configuration", "properties.usb_timeout.properties.read"),
            R"({"type":"object","properties":{"min":{"type":"integer"},)"
            R"("max":{"type":"integer"},"val":{"type":"integer"}},)"
            R"("additionalProperties":false})");
}

}  // namespace
}  // namespace Kovra

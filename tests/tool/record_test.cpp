// Records as JSON, as far as the library's own kinds of documents do not show it.

#include "record.hpp"

#include <gtest/gtest.h>

#include <kovra.hpp>
#include <limits>
#include <string>
#include <utility>

namespace Kovra::tool {

namespace {

Value valueIn(std::string const& json) {
  Record record = recordFrom(json, "probe");
  EXPECT_EQ(record.path, "");
  return std::move(record.value);
}

/// "LINE:COLUMN: why", of a text that is refused.
std::string refusal(std::string const& json) {
  try {
    static_cast<void>(recordFrom(json, "printer-id"));
  } catch (RecordFailure const& failure) {
    EXPECT_STREQ(failure.what(), failure.why().c_str());
    return std::to_string(failure.place().line) + ':' + std::to_string(failure.place().column) +
           ": " + failure.why();
  }
  return "taken";
}

void expectSecret(Value const& value) {
  EXPECT_TRUE(value.isSecret());
  for (Value const& item : value.items()) expectSecret(item);
  for (Member const& member : value.members()) expectSecret(member.value());
}

TEST(RecordFromJson, HasEveryKindOfValue) {
  Value const value = valueIn(
      R"({"null": null, "yes": true, "no": false, "least": -9223372036854775808,
          "most": 18446744073709551615, "real": -2.5e-1, "text": "a\u0000\u00e9",
          "list": [1, [], {}], "record": {"": "x"}})");
  EXPECT_EQ(value, Value::object({{"null", Value()},
                                  {"yes", true},
                                  {"no", false},
                                  {"least", std::numeric_limits<long>::min()},
                                  {"most", std::numeric_limits<unsigned long>::max()},
                                  {"real", -0.25},
                                  {"text", std::string("a\0\xc3\xa9", 4)},
                                  {"list", Value::list({1, Value::list(), Value::object()})},
                                  {"record", Value::object({{"", "x"}})}}));
  EXPECT_EQ(value.members().front().name(), "null");
  EXPECT_EQ(value.members().back().name(), "record");
  EXPECT_EQ(value.at("least").kind(), Value::Kind::integer);
  EXPECT_EQ(value.at("most").kind(), Value::Kind::natural);
}

TEST(RecordFromJson, MarksAllValuesAsSecrets) {
  expectSecret(valueIn(R"({"a": [null, true, -1, 1, 1.5, "", {"b": []}]})"));
}

TEST(RecordFromJson, MayBeASingleValue) {
  EXPECT_EQ(valueIn("5"), Value(5));
  EXPECT_EQ(valueIn("[\"readings\"]"), Value::list({"readings"}));
}

TEST(RecordFromJson, IsTheReadingOfItsMessage) {
  std::string const json = R"({"record": 1, "readings": [7, {}, {"document": "printer-id"},
      {"document": "configuration", "record": {"a": 1}}, {"record": {"a": 2}, "document": "probe"},
      {"document": "probe", "record": {"a": 3}}], "notes": [[{"a": 1, "a": [2]}]]})";
  Record const record = recordFrom(json, "probe");
  EXPECT_EQ(record.path, "readings[4].record");
  EXPECT_EQ(record.value, Value::object({{"a", 2}}));
  EXPECT_EQ(refusal(json),
            "0:0: readings: found configuration, an unknown message, an unknown message; "
            "expected printer-id");
  EXPECT_EQ(refusal(R"({"readings": 5})"), "0:0: readings: found none; expected printer-id");
}

TEST(RecordFromJson, KeepsNothingOfNotes) {
  Value const value = valueIn(R"({"notes": {"a": [1, "x"]}, "b": {"notes": [1]}})");
  EXPECT_TRUE(value.at("notes").isNothing());
  EXPECT_EQ(value.at("b.notes"), Value::list({1})) << "others are";
  EXPECT_EQ(refusal(R"({"notes": [1, 2)").substr(0, 21), "1:16: malformed JSON:");
  EXPECT_EQ(refusal(R"({"notes": [1], "notes": 1})"),
            "1:16: notes: found a key for the second time; expected each key once");
}

TEST(RecordFromJson, TellsPlacesInCharacters) {
  EXPECT_EQ(
      refusal("{\"\xc3\xa9\": 1,\n\t\"\xe2\x82\xac\": \"\xf0\x9f\x98\x80\", \"\xc3\xa9\": 2}"),
      "2:12: \xc3\xa9: found a key for the second time; expected each key once");
  EXPECT_EQ(refusal("[\"\xc3\xa9\", 1e999]"),
            "1:7: [1]: found a number beyond all bounds; expected one that a double can hold");
}

TEST(RecordFromJson, FindsTheBeginningOfAKeyWhateverItHolds) {
  for (std::string const key : {R"(\")", R"(\\)", R"(\\\")", R"(a\"b\"c)", R"(\\\\\\)", ""}) {
    std::string const json = "{\"" + key + "\":0,\"" + key + "\":0}";
    EXPECT_EQ(refusal(json).substr(0, refusal(json).find(": ")),
              "1:" + std::to_string(key.size() + 7))
        << json;
  }
}

}  // namespace

}  // namespace Kovra::tool

// Records as lines, and the way back.

#include "flat.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <kovra.hpp>
#include <string>

#include "record.hpp"
#include "sample.hpp"

namespace Kovra::tool {

namespace {

std::string again(std::string const& lines) {
  return flat(fromFlat(lines), Secrets::shown);
}

TEST(Flat, ComesBackAsItWas) {
  std::size_t records = 0;
  for (Message const& message : messages()) {
    if (!message.isRead()) continue;
    for (std::uint64_t seed = 0; seed < 5; ++seed) {
      Decoding const decoding = decode(sampleOf(message, seed, {}).text, message.name());
      std::string const lines = flat(decoding.readings().front().record(), Secrets::shown);
      if (lines.empty()) continue;  // there are messages that say nothing but their name
      EXPECT_TRUE(isFlat(lines)) << lines;
      EXPECT_EQ(again(lines), lines) << message.name();
      ++records;
    }
  }
  EXPECT_GT(records, 50U);
}

TEST(Flat, QuotesWhateverATextHolds) {
  using namespace std::string_literals;
  for (std::string const& text :
       {""s, "\""s, "\\"s, "# no comment"s, " = "s, "\n"s, "a\n# b"s, "\0x"s, "\xc3\xa4"s,
        "\xf0\x9f\x92\xb3"s, "\x7f\x1b[0m"s, "\\\" # \""s, "1"s, "null"s}) {
    std::string const lines = flat(Value::object({{"text", text}}), Secrets::shown);
    EXPECT_EQ(fromFlat(lines).at("text").asText(), text) << lines;
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 1) << lines;
  }
}

TEST(Flat, KeepsEveryKindOfValue) {
  Value const record = Value::object(
      {{"nothing", {}},
       {"flag", true},
       {"integer", -7},
       {"real", 0.1},
       {"list", Value::list({Value(), 1, Value::list({"a"}), Value::object()})},
       {"inner", Value::object({{"deep", Value::object({{"list", Value::list()}})}})}});
  EXPECT_EQ(fromFlat(flat(record, Secrets::shown)), record);
}

TEST(Flat, TellsKeywordsByWordAndUnknownOnesByCode) {
  Value const record = Value::object(
      {{"known", Value::keyword(2, "idle")}, {"other", Value::unknownKeyword(9, "x#")}});
  EXPECT_EQ(flat(record, Secrets::shown), "known = \"idle\"\nother = 9  # \"x#\"\n");
  EXPECT_EQ(again(flat(record, Secrets::shown)), "known = \"idle\"\nother = 9\n");
}

TEST(Flat, MasksSecrets) {
  Value key = "sesame";
  key.markSecret();
  EXPECT_EQ(flat(Value::object({{"key", key}}), Secrets::masked), "key = \"******\"\n");
  EXPECT_TRUE(fromFlat("key = \"x\"").at("key").isSecret());
}

TEST(Flat, MasksNoKeywordsAndNothing) {
  Value nothing;
  nothing.markSecret();
  Value known = Value::keyword(2, "idle");
  known.markSecret();
  Value number = 17;
  number.markSecret();
  EXPECT_EQ(flat(Value::object({{"a", nothing}, {"b", known}, {"c", number}}), Secrets::masked),
            "a = null\nb = \"idle\"\nc = \"******\"\n");
  EXPECT_EQ(flat(Value::object({{"c", number}}), Secrets::shown), "c = 17\n");
}

TEST(Flat, PassesOverBlanksAndComments) {
  EXPECT_EQ(fromFlat(" \t\r\n# a = 1\n\n\ta = 2 \r\n  # end"), Value::object({{"a", 2}}));
  EXPECT_EQ(fromFlat(""), Value::object());
  EXPECT_TRUE(isFlat("\r\n\t # nothing"));
  EXPECT_TRUE(isFlat(" a = 1"));
  EXPECT_FALSE(isFlat("a\nb = 1"));
  EXPECT_FALSE(isFlat("1 = a"));
  EXPECT_FALSE(isFlat("{\"a = 1\": 2}"));
  EXPECT_FALSE(isFlat(" \n"));
}

TEST(Flat, RefusesWhatIsNoLineOfIts) {
  for (char const* const text :
       {"a", "a=1", "a = ", "a = x", "a = 1 2", "a = \"x", "a = 1\na.b = 2", "a[1] = 1", "a[x] = 1",
        "a[ = 1", "a..b = 1", ".a = 1", "a. = 1", "a[99999999999999999999] = 1", "[0] = 1"}) {
    EXPECT_THROW(fromFlat(text), RecordFailure) << text;
  }
}

/// What a path may lead through is what JSON may hold in one another.
TEST(Flat, RefusesPathsThatGoTooDeep) {
  auto const path = [](std::size_t levels, char const* step) {
    std::string text = "a";
    for (std::size_t i = 1; i < levels; ++i) text += step;
    return text + " = 1";
  };
  for (char const* const step : {".a", "[0]"}) {
    EXPECT_NO_THROW(fromFlat(path(maxLevels, step)));
    EXPECT_THROW(fromFlat(path(maxLevels + 1, step)), RecordFailure);
    EXPECT_THROW(fromFlat(path(500000, step)), RecordFailure);
  }
  std::string growing;
  std::string inner = "a";
  for (std::size_t i = 0; i < 3 * maxLevels; ++i, inner += ".a") growing += inner + " = {}\n";
  EXPECT_THROW(fromFlat(growing), RecordFailure);
}

}  // namespace

}  // namespace Kovra::tool

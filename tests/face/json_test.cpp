// JSON: what values are printed as, byte for byte as another library prints them, what is read
// back, and where and why a text is refused.

#include "face/json.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <memory>
#include <new>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.hpp"
#include "kovra_value.hpp"
#include "support/allocations.hpp"
#include "support/locale.hpp"

namespace Kovra {
namespace {

using Json = nlohmann::ordered_json;
using Kind = Value::Kind;

constexpr auto mostInteger = std::numeric_limits<std::int64_t>::max();
constexpr auto mostNatural = std::numeric_limits<std::uint64_t>::max();

// The other library, which prints the same.

Json mirrorOf(Value const& value);

Json mirrorOfKeyword(Value const& value) {
  Json keyword = {{"code", value.code()}};
  if (value.isKnown()) {
    keyword["name"] = std::string(value.word());
  } else {
    keyword["name"] = nullptr;
    keyword["raw"] = std::string(value.word());
  }
  return keyword;
}

Json mirrorOf(Value const& value) {
  Json mirror;
  switch (value.kind()) {
    case Kind::nothing:
      return nullptr;
    case Kind::flag:
      return value.asBool();
    case Kind::integer:
      return value.asInteger();
    case Kind::natural:
      return value.asNatural();
    case Kind::real:
      return value.asReal();
    case Kind::text:
      return std::string(value.asText());
    case Kind::keyword:
      return mirrorOfKeyword(value);
    case Kind::list:
      mirror = Json::array();
      for (Value const& item : value.items()) mirror.push_back(mirrorOf(item));
      return mirror;
    case Kind::record:
      mirror = Json::object();
      for (auto const& [name, inner] : value.members()) {
        mirror[std::string(name)] = mirrorOf(inner);
      }
      return mirror;
  }
  return mirror;
}

std::string dumped(Json const& json, int indentation) {
  return json.dump(indentation, ' ', true, Json::error_handler_t::replace);
}

// Values without end, the same ones for the same seed.

class Generator {
 public:
  explicit Generator(std::uint64_t seed, bool isUtf8) : random_(seed), isUtf8_(isUtf8) {}

  std::size_t below(std::size_t bound) { return random_() % bound; }

  Value value(int levels = 4) {
    switch (below(levels > 0 ? 11 : 8)) {
      case 0:
        return {};
      case 1:
        return below(2) == 1;
      case 2:
        return std::bit_cast<std::int64_t>(bits());
      case 3:
        return bits();
      case 4:
        return real();
      case 5:
      case 6:
        return text();
      case 7:
        return keyword();
      case 8:
        return list(levels - 1);
      default:
        return record(levels - 1);
    }
  }

  /// Mostly plain, with pieces in it that are not, at any place of a word of the machine.
  std::string text() {
    std::string text;
    for (std::size_t pieces = below(5); pieces > 0; --pieces) {
      text += std::string(below(20), static_cast<char>('!' + below(90)));
      text += piece();
    }
    return text;
  }

 private:
  std::uint64_t bits() { return random_() >> below(64); }

  /// One that the other library prints as short as it can be, as it does nearly all.
  double real() {
    double const digits = static_cast<double>(bits() >> 15) * (below(2) == 1 ? 1 : -1);
    double const number = digits / std::pow(10, static_cast<double>(below(20)));
    return Value(number).toJson() == Json(number).dump() ? number : 0.5;
  }

  std::string piece() {
    static constexpr std::string_view whole[] = {"",
                                                 "\"",
                                                 "\\",
                                                 "/",
                                                 "\n",
                                                 "\b\f\r\t",
                                                 "\x01",
                                                 "\x1f",
                                                 "\x7f",
                                                 "\xc2\x80",
                                                 "\xc3\xbc",
                                                 "\xdf\xbf",
                                                 "~}| !#",
                                                 "<>&'",
                                                 "\xe0\xa0\x80",
                                                 "\xed\x9f\xbf",
                                                 "\xee\x80\x80",
                                                 "\xef\xbf\xbf",
                                                 "\xf0\x90\x80\x80",
                                                 "\xf0\x9f\x98\x80",
                                                 "\xf4\x8f\xbf\xbf"};
    static constexpr std::string_view broken[] = {
        "\x80", "\xbf\xbf", "\xc0\x80", "\xc1\xbf",         "\xc3",         "\xe0\x9f\xbf",
        "\xe2", "\xe2\x82", "\xed\xa0", "\xed\xbf\xbf",     "\xf0\x8f\xbf", "\xf0\x9f\x98",
        "\xf5", "\xff\xfe", "\xf4\x90", "\xf8\x88\x80\x80", "\xf0\x9f",     "\xe2\xe2\x82\xac"};
    if (below(8) == 0) return std::string(1, '\0');
    if (isUtf8_ || below(2) == 1) return std::string(whole[below(std::size(whole))]);
    return std::string(broken[below(std::size(broken))]);
  }

  Value keyword() {
    int const code = static_cast<int>(below(2000)) - 1000;
    return below(2) == 1 ? Value::keyword(code, text()) : Value::unknownKeyword(code, text());
  }

  Value list(int levels) {
    Value list = Value::list();
    for (std::size_t items = below(6); items > 0; --items) list.append(value(levels));
    return list;
  }

  Value record(int levels) {
    Value record = Value::object();
    for (std::size_t members = below(24); members > 0; --members) {
      std::string const name = text();
      if (record.find(name) == nullptr) record.add(name, value(levels));
    }
    return record;
  }

  std::mt19937_64 random_;
  bool isUtf8_;
};

// Printing.

TEST(JsonPrint, SingleValues) {
  EXPECT_EQ(Value().toJson(), "null");
  EXPECT_EQ(Value(true).toJson(), "true");
  EXPECT_EQ(Value(false).toJson(), "false");
  EXPECT_EQ(Value(0).toJson(), "0");
  EXPECT_EQ(Value(-17).toJson(), "-17");
  EXPECT_EQ(Value(std::numeric_limits<std::int64_t>::min()).toJson(), "-9223372036854775808");
  EXPECT_EQ(Value(mostNatural).toJson(), "18446744073709551615");
  EXPECT_EQ(Value("").toJson(), "\"\"");
  EXPECT_EQ(Value("plain").toJson(4), "\"plain\"");
  EXPECT_EQ(Value::keyword(3, "ready").toJson(), R"({"code":3,"name":"ready"})");
  EXPECT_EQ(Value::unknownKeyword(-1, "raedy").toJson(),
            R"({"code":-1,"name":null,"raw":"raedy"})");
}

TEST(JsonPrint, RealsAsShortAsTheyCanBe) {
  std::pair<double, char const*> const cases[] = {
      {24.35, "24.35"},
      {3, "3.0"},
      {0.0, "0.0"},
      {-0.0, "-0.0"},
      {-2.5, "-2.5"},
      {0.1, "0.1"},
      {1.0 / 3, "0.3333333333333333"},
      {0.0001, "0.0001"},
      {0.00012345, "0.00012345"},
      {0.00001, "1e-05"},
      {0.000099999, "9.9999e-05"},
      {1e14, "100000000000000.0"},
      {999999999999999.0, "999999999999999.0"},
      {123456789012345.6, "123456789012345.6"},
      {1e15, "1e+15"},
      {1234567890123456.0, "1.234567890123456e+15"},
      {1e30, "1e+30"},
      {-1.5e300, "-1.5e+300"},
      {5e-324, "5e-324"},
      {1.7976931348623157e308, "1.7976931348623157e+308"},
      {std::nan(""), "null"},
      {-HUGE_VAL, "null"}};
  for (auto const& [number, text] : cases) {
    EXPECT_EQ(Value(number).toJson(), text);
    EXPECT_EQ(Value(number).toJson(), Json(number).dump());
  }
}

TEST(JsonPrint, EveryByteAndEveryPairOfBytesAsTheOtherLibrary) {
  for (unsigned first = 0; first < 256; ++first) {
    std::string text(1, static_cast<char>(first));
    ASSERT_EQ(Value(text).toJson(), dumped(text, -1)) << first;
    text += ' ';
    for (unsigned second = 0; second < 256; ++second) {
      text.back() = static_cast<char>(second);
      ASSERT_EQ(Value(text).toJson(), dumped(text, -1)) << first << ' ' << second;
    }
  }
}

TEST(JsonPrint, EscapesInTheirShortForms) {
  EXPECT_EQ(Value("\"\\/\b\f\n\r\t").toJson(), R"("\"\\/\b\f\n\r\t")");
  EXPECT_EQ(Value(std::string_view("\0\x01\x1f\x7f", 4)).toJson(), R"("\u0000\u0001\u001f\u007f")");
  EXPECT_EQ(Value("\xc3\xbc \xe2\x82\xac \xf0\x9f\x98\x80").toJson(),
            R"("\u00fc \u20ac \ud83d\ude00")");
  EXPECT_EQ(Value("a\xff\xe2\x82z").toJson(), R"("a\ufffd\ufffdz")");
}

/// Eight bytes are looked at at once, so each place among them counts, and each place of the end.
TEST(JsonPrint, SpecialBytesAtEveryPlace) {
  for (char const special : {'"', '\\', '\n', '\x1f', '\x7f', '\x80', '\xff'}) {
    for (std::size_t size = 1; size < 28; ++size) {
      for (std::size_t place = 0; place < size; ++place) {
        for (char const plain : {' ', '!', '#', '[', ']', '~', 'a'}) {
          std::string text(size, plain);
          text[place] = special;
          ASSERT_EQ(Value(text).toJson(), dumped(text, -1)) << size << ' ' << place;
        }
      }
    }
  }
}

TEST(JsonPrint, Layout) {
  Value const value = Value::object({{"a", Value::list({1, Value::list(), Value::object()})},
                                     {"b", Value::keyword(1, "x")},
                                     {"c\n", Value::object({{"d", Value()}})}});
  EXPECT_EQ(value.toJson(), R"({"a":[1,[],{}],"b":{"code":1,"name":"x"},"c\n":{"d":null}})");
  EXPECT_EQ(value.toJson(2), R"({
  "a": [
    1,
    [],
    {}
  ],
  "b": {
    "code": 1,
    "name": "x"
  },
  "c\n": {
    "d": null
  }
})");
  EXPECT_EQ(Value::list({1, 2}).toJson(0), "[\n1,\n2\n]");
  EXPECT_EQ(Value::list().toJson(2), "[]");
  EXPECT_EQ(Value::object().toJson(2), "{}");
}

// The room for what is printed grows wherever it ends.
TEST(JsonPrint, WhateverWasPrintedBefore) {
  Value const record = Value::object(
      {{"a", Value::list({1, true, Value(), 2.5})}, {"b", Value::object({{"c", "d"}})}});
  for (std::size_t length = 800; length < 1100; ++length) {
    std::string const long_(length, 'x');
    Value const value = Value::list({long_, record});
    ASSERT_EQ(value.toJson(), "[\"" + long_ + R"(",{"a":[1,true,null,2.5],"b":{"c":"d"}}])");
    ASSERT_EQ(value.toJson(1),
              "[\n \"" + long_ +
                  "\",\n {\n  \"a\": [\n   1,\n   true,\n   null,\n   2.5\n  ],\n  \"b\": {\n   "
                  "\"c\": \"d\"\n  }\n }\n]");
  }
}

TEST(JsonPrint, GeneratedValuesAsTheOtherLibrary) {
  Generator generator(1, false);
  std::size_t bytes = 0;
  for (int i = 0; i < 3000; ++i) {
    Value const value = generator.value();
    Json const mirror = mirrorOf(value);
    for (int const indentation : {-1, 0, 1, 2, 17}) {
      std::string const json = value.toJson(indentation);
      ASSERT_TRUE(json == dumped(mirror, indentation)) << i;  // too long to be shown
      bytes += json.size();
    }
  }
  EXPECT_GT(bytes, 1'000'000U) << "the values are worth printing";
}

TEST(JsonPrint, AnyRealAsShortAsTheOtherLibraryAtLeast) {
  std::mt19937_64 random(2);
  std::size_t same = 0;
  constexpr std::size_t all = 100'000;
  for (std::size_t i = 0; i < all; ++i) {
    double const number = std::bit_cast<double>(random());
    std::string const text = Value(number).toJson();
    std::string const other = Json(number).dump();
    ASSERT_LE(text.size(), other.size()) << other;
    same += text == other ? 1 : 0;
    if (!std::isfinite(number)) continue;
    double back = 0;
    ASSERT_EQ(std::from_chars(text.data(), text.data() + text.size(), back).ptr,
              text.data() + text.size());
    ASSERT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(number)) << text;
  }
  EXPECT_GT(same, all / 100 * 98) << "it is the shortest for nearly all";
}

TEST(JsonPrint, DeepValues) {
  Value value = 1;
  Json mirror = 1;
  for (int i = 0; i < 100; ++i) {
    Value list;
    list.append(std::move(value));
    value = std::move(list);
    mirror = Json::array({std::move(mirror)});
  }
  EXPECT_EQ(value.toJson(1), dumped(mirror, 1));
}

// The writer by itself.

TEST(JsonWriter, WritesAnEnvelopePieceByPiece) {
  for (int const indentation : {-1, 0, 3}) {
    JsonWriter writer(indentation);
    writer.beginObject();
    writer.key("kovra");
    writer.integer(-1);
    writer.key("gr\xc3\xb6\xc3\x9f\x65");
    writer.natural(mostNatural);
    writer.key("list");
    writer.beginArray();
    writer.text("a\"b");
    writer.flag(true);
    writer.flag(false);
    writer.null();
    writer.real(0.5);
    writer.real(std::nan(""));
    writer.beginObject();
    writer.endObject();
    writer.beginArray();
    writer.endArray();
    writer.value(Value::list({1, Value::object({{"x", 2}})}), false);
    writer.endArray();
    writer.key("");
    writer.text("");
    writer.endObject();
    Json const expected = {{"kovra", -1},
                           {"gr\xc3\xb6\xc3\x9f\x65", mostNatural},
                           {"list",
                            {"a\"b",
                             true,
                             false,
                             nullptr,
                             0.5,
                             std::nan(""),
                             Json::object(),
                             Json::array(),
                             {1, {{"x", 2}}}}},
                           {"", ""}};
    EXPECT_EQ(writer.take(), dumped(expected, indentation));
  }
}

TEST(JsonWriter, IsAsNewWhenItsTextIsTaken) {
  JsonWriter writer(2);
  EXPECT_EQ(writer.take(), "");
  for (int i = 0; i < 2; ++i) {
    writer.beginArray();
    writer.text(std::string(5000, 'x'));
    writer.endArray();
    EXPECT_EQ(writer.take(), "[\n  \"" + std::string(5000, 'x') + "\"\n]");
    writer.null();
    EXPECT_EQ(writer.take(), "null");
  }
}

Value marked(Value value) {
  value.markSecret();
  return value;
}

TEST(JsonWriter, MasksSingleValuesThatAreSecret) {
  Value const value = Value::object({{"flag", marked(true)},
                                     {"integer", marked(-5)},
                                     {"natural", marked(5U)},
                                     {"real", marked(2.5)},
                                     {"text", marked("key")},
                                     {"empty", marked("")},
                                     {"keyword", marked(Value::keyword(1, "word"))},
                                     {"nothing", marked(Value())},
                                     {"list", marked(Value::list({1, marked(2)}))},
                                     {"record", marked(Value::object({{"a", marked("b")}}))},
                                     {"public", "shown"}});
  JsonWriter writer(-1);
  writer.value(value, true);
  EXPECT_EQ(writer.take(),
            R"({"flag":"******","integer":"******","natural":"******","real":"******",)"
            R"("text":"******","empty":"******","keyword":{"code":1,"name":"word"},)"
            R"("nothing":null,"list":[1,"******"],"record":{"a":"******"},"public":"shown"})");
  writer.value(value, false);
  EXPECT_EQ(writer.take(), R"({"flag":true,"integer":-5,"natural":5,"real":2.5,)"
                           R"("text":"key","empty":"","keyword":{"code":1,"name":"word"},)"
                           R"("nothing":null,"list":[1,2],"record":{"a":"b"},"public":"shown"})");
  EXPECT_NE(value.toJson().find("key"), std::string::npos) << "toJson() shows everything";
}

class JsonHeap : public test::HeapTest {};

Value manyEntries(Value const& entry) {
  Value list = Value::list();
  for (int i = 0; i < 2000; ++i) list.append(entry);
  return list;
}

TEST_F(JsonHeap, IsNotAskedForEachValueThatIsPrinted) {
  Value const value = manyEntries(Value::object(
      {{"a name of some length", "a text that stands on the heap"}, {"b", 2.5}, {"c", 7}}));
  test::Allocations const allocations;
  std::string const json = value.toJson(2);
  EXPECT_GT(json.size(), 100'000U);
  EXPECT_LE(allocations.made(), 20U);
}

// They wait in one list, which doubles, until it is known how many there are.
TEST_F(JsonHeap, IsAskedForAListsEntriesAtOnce) {
  std::string json = "[1";
  for (int i = 1; i < 1000; ++i) json += ",1";
  json += ']';
  test::Allocations const allocations;
  EXPECT_EQ(Value::fromJson(json).size(), 1000U);
  EXPECT_LE(allocations.made(), 16U);
}

TEST_F(JsonHeap, KeepsNothingOfWhatWasPrinted) {
  std::string const secret = "very-secret-key";
  Value value = manyEntries("filler");
  value.items()[0] = marked(secret);
  test::Released const released(secret);
  std::string const json = value.toJson();  // moves several times while it grows
  EXPECT_EQ(released.found(), 0U);
  EXPECT_NE(json.find(secret), std::string::npos);
  {
    JsonWriter notTaken(-1);
    notTaken.value(value, false);
  }
  EXPECT_EQ(released.found(), 0U);
  std::make_unique<std::string>(json).reset();
  EXPECT_EQ(released.found(), 1U) << "the test would have seen it";
}

// Reading.

JsonError errorOf(std::string_view text) {
  try {
    Value::fromJson(text);
  } catch (JsonError const& error) {
    return error;
  }
  ADD_FAILURE() << "not refused: " << text.substr(0, 200);
  return {"", "", 0, 0, 0};
}

TEST(JsonRead, SingleValues) {
  EXPECT_EQ(Value::fromJson("null").kind(), Kind::nothing);
  EXPECT_EQ(Value::fromJson("true"), Value(true));
  EXPECT_EQ(Value::fromJson("false"), Value(false));
  EXPECT_EQ(Value::fromJson("\"\""), Value(""));
  EXPECT_EQ(Value::fromJson("[]"), Value::list());
  EXPECT_EQ(Value::fromJson("{}"), Value::object());
  EXPECT_EQ(Value::fromJson(" \t\r\n [ 1 , \n{ \"a\" : [ ] } ]\n "),
            Value::list({1, Value::object({{"a", Value::list()}})}));
  EXPECT_EQ(Value::fromJson("\xef\xbb\xbf 5"), Value(5)) << "behind a byte order mark";
}

TEST(JsonRead, NumbersOfTheKindThatHoldsThem) {
  struct Case {
    char const* text;
    Kind kind;
    Value value;
  };
  std::string const zeros = "0." + std::string(400, '0') + "1e+5";
  Case const cases[] = {
      {"0", Kind::integer, 0},
      {"-0", Kind::integer, 0},
      {"-17", Kind::integer, -17},
      {"9223372036854775807", Kind::integer, mostInteger},
      {"-9223372036854775808", Kind::integer, std::numeric_limits<std::int64_t>::min()},
      {"9223372036854775808", Kind::natural, static_cast<std::uint64_t>(mostInteger) + 1},
      {"18446744073709551615", Kind::natural, mostNatural},
      {"18446744073709551616", Kind::real, 18446744073709551616.0},
      {"-9223372036854775809", Kind::real, -9223372036854775808.0},
      {"100000000000000000000000000000", Kind::real, 1e29},
      {"1.0", Kind::real, 1.0},
      {"-0.0", Kind::real, 0.0},
      {"1e2", Kind::real, 100.0},
      {"1E+2", Kind::real, 100.0},
      {"125e-2", Kind::real, 1.25},
      {"24.35", Kind::real, 24.35},
      {"0e99999999999999999999", Kind::real, 0.0},
      {"1.7976931348623158e308", Kind::real, std::numeric_limits<double>::max()},
      {"5e-324", Kind::real, std::numeric_limits<double>::denorm_min()},
      {"2.4703282292062328e-324", Kind::real, std::numeric_limits<double>::denorm_min()},
      {"2.4703282292062327e-324", Kind::real, 0.0},
      {"1e-400", Kind::real, 0.0},
      {"0.001e-323", Kind::real, 0.0},
      {zeros.c_str(), Kind::real, 0.0},
      {"123456789.5e-99999999999999999999", Kind::real, 0.0},
      {"1e-9223372036854775808", Kind::real, 0.0}};
  for (Case const& number : cases) {
    Value const read = Value::fromJson(number.text);
    EXPECT_EQ(read.kind(), number.kind) << number.text;
    EXPECT_EQ(read, number.value) << number.text;
  }
  EXPECT_TRUE(std::signbit(Value::fromJson("-0.0").asReal()));
  EXPECT_TRUE(std::signbit(Value::fromJson("-1e-400").asReal()));
}

TEST(JsonRead, TextsAndTheirEscapes) {
  EXPECT_EQ(Value::fromJson(R"("\"\\\/\b\f\n\r\t")"), Value("\"\\/\b\f\n\r\t"));
  EXPECT_EQ(Value::fromJson(R"("a\u0000b")"), Value(std::string_view("a\0b", 3)));
  EXPECT_EQ(Value::fromJson(R"("\u0041\u00fC\u20AC\uffff")"),
            Value("A\xc3\xbc\xe2\x82\xac\xef\xbf\xbf"));
  EXPECT_EQ(Value::fromJson(R"("\ud83d\ude00\ud800\udc00\udbff\udfff")"),
            Value("\xf0\x9f\x98\x80\xf0\x90\x80\x80\xf4\x8f\xbf\xbf"));
  EXPECT_EQ(Value::fromJson("\"\x7f\xc3\xbc\xf0\x9f\x98\x80\""),
            Value("\x7f\xc3\xbc\xf0\x9f\x98\x80"));
  EXPECT_EQ(Value::fromJson(R"(["a long text before \u00fc and behind it", "next"])"),
            Value::list({"a long text before \xc3\xbc and behind it", "next"}));
  EXPECT_EQ(Value::fromJson(R"({"k\u0065y \n":1})"), Value::object({{"key \n", 1}}));
}

TEST(JsonRead, MembersInTheirOrder) {
  Value const value = Value::fromJson(R"({"zebra":1,"":2,"ant":{"c":3}})");
  ASSERT_EQ(value.size(), 3U);
  EXPECT_EQ(value.members()[0].name(), "zebra");
  EXPECT_EQ(value.members()[1].name(), "");
  EXPECT_EQ(value.members()[2].name(), "ant");
  EXPECT_EQ(value.at("ant.c"), Value(3));
}

TEST(JsonRead, KeywordsInAnyOrder) {
  for (char const* const text : {R"({"code":3,"name":"ready"})", R"({"name":"ready","code":3})"}) {
    EXPECT_EQ(Value::fromJson(text), Value::keyword(3, "ready")) << text;
  }
  for (char const* const text :
       {R"({"code":-1,"name":null,"raw":"x"})", R"({"raw":"x","name":null,"code":-1})",
        R"({"name":null,"code":-1,"raw":"x"})", R"({"c\u006fde":-1,"raw":"x","name":null})"}) {
    EXPECT_EQ(Value::fromJson(text), Value::unknownKeyword(-1, "x")) << text;
  }
  EXPECT_EQ(Value::fromJson(R"([{"a":{"code":2147483647,"name":""},"b":1}])"),
            Value::list({Value::object({{"a", Value::keyword(2147483647, "")}, {"b", 1}})}));
}

TEST(JsonRead, ObjectsThatAreNoKeywords) {
  for (char const* const text :
       {R"({"code":3})", R"({"code":3,"name":null})", R"({"code":3.0,"name":"x"})",
        R"({"code":"3","name":"x"})", R"({"code":3,"name":"x","raw":"x"})",
        R"({"code":3,"name":null,"raw":null})", R"({"code":3,"name":null,"row":"x"})",
        R"({"code":2147483648,"name":"x"})", R"({"code":-2147483649,"name":"x"})",
        R"({"code":18446744073709551615,"name":"x"})", R"({"Code":3,"name":"x"})",
        R"({"code":3,"name":"x","more":1})", R"({"code":3,"name":5})", R"({"code":3,"raw":"x"})",
        R"({"name":"x","raw":"x"})"}) {
    Value const value = Value::fromJson(text);
    EXPECT_TRUE(value.isRecord()) << text;
    EXPECT_EQ(value.toJson(), text);
  }
}

TEST(JsonRead, WhatWasPrinted) {
  Generator generator(3, true);
  for (int i = 0; i < 3000; ++i) {
    Value const value = generator.value();
    for (int const indentation : {-1, 0, 2}) {
      std::string const json = value.toJson(indentation);
      Value const read = Value::fromJson(json);
      ASSERT_EQ(read, value) << json;
      ASSERT_EQ(read.toJson(indentation), json);
    }
  }
}

TEST(JsonRead, AnyRealThatWasPrinted) {
  std::mt19937_64 random(4);
  for (int i = 0; i < 50'000; ++i) {
    double const number = std::bit_cast<double>(random());
    if (!std::isfinite(number)) continue;
    Value const read = Value::fromJson(Value(number).toJson());
    ASSERT_TRUE(read.isReal());
    ASSERT_EQ(std::bit_cast<std::uint64_t>(read.asReal()), std::bit_cast<std::uint64_t>(number));
  }
}

// What is refused.

struct Refusal {
  std::string text;
  std::string what;
  std::size_t offset;
  int line = 1;
  int column = 1;
  std::string path = "";
};

void expectRefusals(std::vector<Refusal> const& refusals) {
  for (Refusal const& refusal : refusals) {
    JsonError const error = errorOf(refusal.text);
    EXPECT_STREQ(error.what(), refusal.what.c_str()) << refusal.text;
    EXPECT_EQ(error.offset(), refusal.offset) << refusal.text;
    EXPECT_EQ(error.line(), refusal.line) << refusal.text;
    EXPECT_EQ(error.column(), refusal.column) << refusal.text;
    EXPECT_EQ(error.path(), refusal.path) << refusal.text;
  }
}

std::string malformed(std::string const& found, std::string const& expected) {
  return "malformed JSON: found " + found + "; expected " + expected;
}

TEST(JsonRefusal, OfWhatIsNoValue) {
  std::string const end = malformed("the end of the text", "a value");
  std::string const other = malformed("what begins no value", "a value");
  expectRefusals({{"", end, 0, 1, 1},
                  {" \n\t ", end, 4, 2, 3},
                  {"\xef\xbb\xbf", end, 3, 1, 1},
                  {"[", end, 1, 1, 2},
                  {"[1,", end, 3, 1, 4},
                  {"{\"a\":", end, 5, 1, 6},
                  {"nul", other, 0},
                  {"True", other, 0},
                  {"NaN", other, 0},
                  {"+1", other, 0},
                  {".5", other, 0},
                  {"'a'", other, 0},
                  {"[1,]", other, 3, 1, 4},
                  {"[,1]", other, 1, 1, 2},
                  {"]", other, 0},
                  {"// a comment\n1", other, 0},
                  {"\xef\xbb", other, 0},
                  {" \xef\xbb\xbf"
                   "1",
                   other, 1, 1, 2},
                  {"{\"a\":}", other, 5, 1, 6},
                  {std::string("\0", 1), malformed("a NUL byte", "a value"), 0},
                  {std::string("[\0]", 3), malformed("a NUL byte", "a value"), 1, 1, 2}});
}

TEST(JsonRefusal, OfWhatStandsBehindAValue) {
  std::string const behind = malformed("something behind the value", "the end of the text");
  std::string const inList = malformed("something else behind a value", R"("," or "]")");
  std::string const inObject = malformed("something else behind a value", R"("," or "}")");
  expectRefusals({{"1 2", behind, 2, 1, 3},
                  {"{}}", behind, 2, 1, 3},
                  {"nullx", behind, 4, 1, 5},
                  {"\"a\"\"b\"", behind, 3, 1, 4},
                  {std::string("1\0", 2), malformed("a NUL byte", "the end of the text"), 1, 1, 2},
                  {"[1 2]", inList, 3, 1, 4},
                  {"[1}", inList, 2, 1, 3},
                  {"[[1]\n;", inList, 5, 2, 1},
                  {"[1", malformed("the end of the text", R"("," or "]")"), 2, 1, 3},
                  {"{\"a\":1 \"b\":2}", inObject, 7, 1, 8},
                  {"{\"a\":1]", inObject, 6, 1, 7},
                  {"{\"a\":1", malformed("the end of the text", R"("," or "}")"), 6, 1, 7}});
}

TEST(JsonRefusal, OfBrokenKeys) {
  std::string const first = R"(a key in quotes, or "}")";
  expectRefusals(
      {{"{", malformed("the end of the text", first), 1, 1, 2},
       {"{a:1}", malformed("what begins no key", first), 1, 1, 2},
       {"{1:1}", malformed("what begins no key", first), 1, 1, 2},
       {"{,}", malformed("what begins no key", first), 1, 1, 2},
       {"{\"a\":1,}", malformed("what begins no key", "a key in quotes"), 7, 1, 8},
       {"{\"a\":1,", malformed("the end of the text", "a key in quotes"), 7, 1, 8},
       {"{\"a\"}", malformed("something else behind a key", "\":\""), 4, 1, 5},
       {"{\"a\" 1}", malformed("something else behind a key", "\":\""), 5, 1, 6},
       {"{\"a\"", malformed("the end of the text", "\":\""), 4, 1, 5},
       {"{\"a", malformed("the end of the text", "the quote that ends a text"), 3, 1, 4}});
}

TEST(JsonRefusal, OfBrokenTexts) {
  std::string const end = malformed("the end of the text", "the quote that ends a text");
  std::string const control = malformed("a control character in a text", "an escape for it");
  std::string const letters = R"(\", \\, \/, \b, \f, \n, \r, \t or \u)";
  std::string const escape = malformed("an unknown escape", letters);
  std::string const digit =
      malformed("what is no hexadecimal digit", R"(four of them behind "\u")");
  std::string const half = malformed("half of a pair of surrogates", "both halves");
  std::string const nul = malformed("a NUL byte", "an escape for it");
  expectRefusals(
      {{"\"", end, 1, 1, 2},
       {"\"abc", end, 4, 1, 5},
       {"\"abc\\\"", end, 6, 1, 7},
       {"\"a\nb\"", control, 2, 1, 3},
       {"\"a\tb\"", control, 2, 1, 3},
       {"\"a\x1f\"", control, 2, 1, 3},
       {std::string("\"a\0b\"", 5), nul, 2, 1, 3},
       {"\"a\\x\"", escape, 3, 1, 4},
       {"\"\\'\"", escape, 2, 1, 3},
       {"\"\\U0041\"", escape, 2, 1, 3},
       {"\"\\", malformed("the end of the text", letters), 2, 1, 3},
       {"\"\\u12g4\"", digit, 5, 1, 6},
       {"\"\\u\"", digit, 3, 1, 4},
       {"\"\\u-001\"", digit, 3, 1, 4},
       {"\"\\u12", malformed("the end of the text", R"(four of them behind "\u")"), 5, 1, 6},
       {"\"a\\ud800\"", half, 2, 1, 3},
       {"\"a\\udc00\"", half, 2, 1, 3},
       {"\"\\ud800\\ud800\"", half, 1, 1, 2},
       {"\"\\ud800\\u0041\"", half, 1, 1, 2},
       {"\"\\ud800\\n\"", half, 1, 1, 2},
       {"\"\\udc00\\ud800\"", half, 1, 1, 2},
       {"\"\\ud83d\\ude00\\ude00\"", half, 13, 1, 14}});
}

TEST(JsonRefusal, OfBrokenUtf8) {
  for (std::string const piece :
       {"\x80", "\xbf", "\xc0\x80", "\xc1\xbf", "\xc3", "\xc3\xc3", "\xe0\x9f\xbf", "\xe2\x82",
        "\xed\xa0\x80", "\xed\xbf\xbf", "\xf0\x8f\xbf\xbf", "\xf0\x9f\x98", "\xf4\x90\x80\x80",
        "\xf5\x80\x80\x80", "\xf8\x88\x80\x80\x80", "\xfe", "\xff"}) {
    for (std::size_t before = 0; before < 20; ++before) {
      std::size_t const offset = before + 4;
      expectRefusals(
          {{"[\"" + std::string(before, 'x') + "\xc3\xbc" + piece + "\"]",
            malformed("bytes that are no UTF-8", "UTF-8"), offset, 1,
            static_cast<int>(offset)}});  // a column less, since a character has two bytes
    }
    EXPECT_EQ(errorOf("{\"" + piece + "\":1}").offset(), 2U);
    EXPECT_EQ(errorOf(piece).offset(), 0U);
  }
}

TEST(JsonRefusal, OfBrokenNumbers) {
  std::string const zeros =
      malformed("a digit behind a leading zero", "a number without leading zeros");
  std::string const fraction = malformed("a decimal point without a fraction", "a digit");
  std::string const exponent = malformed("an exponent without digits", "a digit");
  expectRefusals(
      {{"01", zeros, 1, 1, 2},
       {"-00", zeros, 2, 1, 3},
       {"-", malformed("the end of the text", "a digit"), 1, 1, 2},
       {"-a", malformed("a sign without a number", "a digit"), 1, 1, 2},
       {"--1", malformed("a sign without a number", "a digit"), 1, 1, 2},
       {"-Infinity", malformed("a sign without a number", "a digit"), 1, 1, 2},
       {"1.", malformed("the end of the text", "a digit"), 2, 1, 3},
       {"[1.]", fraction, 3, 1, 4},
       {"1.e5", fraction, 2, 1, 3},
       {"1,5", malformed("something behind the value", "the end of the text"), 1, 1, 2},
       {"1e", malformed("the end of the text", "a digit"), 2, 1, 3},
       {"1e+,", exponent, 3, 1, 4},
       {"1e1.5", malformed("something behind the value", "the end of the text"), 3, 1, 4},
       {"0x10", malformed("something behind the value", "the end of the text"), 1, 1, 2},
       {"1_000", malformed("something behind the value", "the end of the text"), 1, 1, 2}});
}

TEST(JsonRefusal, OfNumbersBeyondAllBounds) {
  std::string const what = "found a number beyond all bounds; expected one that a double can hold";
  std::string const digits(400, '9');
  expectRefusals({{"1e400", what, 0},
                  {"-1e400", what, 0},
                  {"1.7976931348623159e308", what, 0},
                  {"1e99999999999999999999", what, 0},
                  {"1e9223372036854775807", what, 0},
                  {digits, what, 0},
                  {"0.00001e400", what, 0},
                  {digits + ".5e-10", what, 0},
                  {"{\"cards\":[{\"thickness\":1},\n {\"\xc3\xbc\":2, \"thickness\":1e999}]}", what,
                   49, 2, 22, "cards[1].thickness"},
                  {"[[1,2],[3,[4,1e999]]]", what, 13, 1, 14, "[1][1][1]"}});
}

TEST(JsonRefusal, OfKeysForTheSecondTime) {
  std::string const what = "found a key for the second time; expected each key once";
  expectRefusals({{R"({"a":1,"a":2})", what, 7, 1, 8, "a"},
                  {R"({"a":1,"\u0061":2})", what, 7, 1, 8, "a"},
                  {R"({"":1,"b":2,"":2})", what, 12, 1, 13, ""},
                  {"[{},{\"x\":{\"a\":[],\n\"b\":{},\"a\"", what, 25, 2, 8, "[1].x.a"}});
  EXPECT_EQ(Value::fromJson(R"([{"a":1},{"a":{"a":2}},{"A":1,"a":1}])").size(), 3U);
}

TEST(JsonRefusal, TellsTheSecondKeyAmongAnyNumber) {
  for (int const members : {2, 15, 16, 17, 18, 40, 1000}) {
    for (int const repeated : {0, (members - 1) / 2, members - 2}) {
      std::string text = "{\"list\":[1,{";
      for (int i = 0; i + 1 < members; ++i) text += "\"key " + std::to_string(i) + "\":[],\n";
      std::string const key = "key " + std::to_string(repeated);
      std::size_t const offset = text.size();
      text += '"' + key + "\":2,\"broken";
      JsonError const error = errorOf(text);
      EXPECT_STREQ(error.what(), "found a key for the second time; expected each key once");
      EXPECT_EQ(error.offset(), offset);
      EXPECT_EQ(error.line(), members);
      EXPECT_EQ(error.column(), 1);
      EXPECT_EQ(error.path(), "list[1]." + key);
    }
  }
}

TEST(JsonRefusal, CountsCharactersAndOnlyLineFeeds) {
  expectRefusals({{"[\r\n\t\"\xf0\x9f\x98\x80\xc3\xbc\",\r x]",
                   malformed("what begins no value", "a value"), 15, 2, 9}});
}

TEST(JsonRefusal, RepeatsNothingButKeys) {
  std::string const secret = "secret";
  for (std::string const& text :
       {secret, "\"" + secret, "\"" + secret + "\n\"", "[\"" + secret + "\" \"" + secret + "\"]",
        "{\"a\":\"" + secret + "\"" + secret + "}", "\"\\" + secret + "\"", "\"\\u" + secret + "\"",
        "{" + secret + ":1}", "\"" + secret + "\xff\""}) {
    JsonError const error = errorOf(text);
    EXPECT_EQ(std::string(error.what()).find(secret), std::string::npos) << text;
    EXPECT_EQ(error.path(), "");
  }
  JsonError const error = errorOf("{\"key\":[\"secret\",12345678e999]}");
  EXPECT_EQ(std::string(error.what()).find("12345678"), std::string::npos);
  EXPECT_EQ(error.path(), "key[1]");
}

TEST(JsonRefusal, IsCopiedWithAllItSays) {
  JsonError const error = errorOf("\n[1,\"\xc3\xbc\",{\"a longer name than that\":1e999}]");
  JsonError const copy = error;
  EXPECT_STREQ(copy.what(), error.what());
  EXPECT_EQ(copy.path(), "[2].a longer name than that");
  EXPECT_EQ(copy.line(), 2);
  EXPECT_EQ(copy.column(), error.column());
  EXPECT_EQ(copy.offset(), error.offset());
}

TEST_F(JsonHeap, IsNotNeededToCopyAnError) {
  JsonError const error = errorOf("{\"a longer name than that\":1e999}");
  std::unique_ptr<JsonError> copy;
  {
    alignas(JsonError) std::byte room[sizeof(JsonError)];
    test::Allocations const allocations(1);
    JsonError* const made = new (room) JsonError(error);
    EXPECT_STREQ(made->what(), error.what());
    EXPECT_EQ(made->path(), "") << "there was no memory for it";
    EXPECT_EQ(made->offset(), error.offset());
    made->~JsonError();
  }
}

// Bounds, and texts that mean harm.

std::string nested(std::size_t levels, std::string const& open, std::string const& close) {
  std::string text;
  for (std::size_t i = 0; i < levels; ++i) text += open;
  text += "0";
  for (std::size_t i = 0; i < levels; ++i) text += close;
  return text;
}

TEST(JsonBounds, OfLevels) {
  std::string const what = "found more than 32 levels of lists and objects; expected at most 32";
  EXPECT_EQ(Value::fromJson(nested(32, "[", "]")).toJson(), nested(32, "[", "]"));
  EXPECT_EQ(Value::fromJson(nested(32, "{\"a\":", "}")).toJson(), nested(32, "{\"a\":", "}"));
  std::string lists, objects;
  for (int i = 0; i < 32; ++i) lists += "[0]";
  for (int i = 0; i < 32; ++i) objects += i == 0 ? "a" : ".a";
  expectRefusals({{nested(33, "[", "]"), what, 32, 1, 33, lists},
                  {nested(33, "{\"a\":", "}"), what, 32 * 5, 1, 161, objects},
                  {std::string(200'000, '['), what, 32, 1, 33, lists}});
  std::string const wide = "[" + nested(31, "[", "]") + "," + nested(31, "[", "]") + "]";
  EXPECT_EQ(Value::fromJson(wide).size(), 2U) << "levels that were left do not count";
}

std::string listOf(std::size_t entries, std::string_view entry) {
  std::string text = "[";
  for (std::size_t i = 0; i < entries; ++i) (text += i == 0 ? "" : ",") += entry;
  return text + "]";
}

TEST(JsonBounds, OfValuesInAll) {
  std::string const what = "found more than 1000000 values in all; expected at most 1000000";
  EXPECT_EQ(Value::fromJson(listOf(999'999, "0")).size(), 999'999U);
  EXPECT_EQ(Value::fromJson(listOf(333'333, "[[]]").insert(1, " ")).size(), 333'333U);
  expectRefusals(
      {{listOf(1'000'000, "0"), what, 2 * 999'999 + 1, 1, 2 * 999'999 + 2, "[999999]"},
       {listOf(500'000, "{\"a\":0}"), what, 8 * 499'999 + 6, 1, 8 * 499'999 + 7, "[499999].a"},
       {"{\"a\":" + listOf(1'000'000, "0") + "}", what, 5 + 2 * 999'998 + 1, 1, 5 + 2 * 999'998 + 2,
        "a[999998]"}});
}

TEST(JsonBounds, ManyKeysThatBeginAlike) {
  std::string text = "{";
  constexpr int keys = 200'000;  // to compare each with each would take minutes
  std::string const prefix(100, 'k');
  for (int i = 0; i < keys; ++i) {
    text += (i == 0 ? "\"" : ",\"") + prefix + std::to_string(keys + i) + "\":0";
  }
  EXPECT_EQ(Value::fromJson(text + "}").size(), static_cast<std::size_t>(keys));
  std::string const repeated = prefix + std::to_string(keys + keys / 2);
  EXPECT_EQ(errorOf(text + ",\"" + repeated + "\":0}").path(), repeated);
}

TEST(JsonBounds, NumbersOfAMillionDigits) {
  std::string const digits(1'000'000, '7');
  EXPECT_STREQ(errorOf(digits).what(),
               "found a number beyond all bounds; expected one that a double can hold");
  EXPECT_EQ(Value::fromJson("0." + digits).asReal(), 7.0 / 9);
  EXPECT_EQ(Value::fromJson(digits + "e-999999").asReal(), 70.0 / 9);
  EXPECT_EQ(Value::fromJson("0." + std::string(1'000'000, '0') + "7e1000001").asReal(), 7.0);
  EXPECT_EQ(Value::fromJson("0." + std::string(1'000'000, '0') + "7").asReal(), 0.0);
  EXPECT_EQ(errorOf("1e" + digits).offset(), 0U);
  EXPECT_EQ(Value::fromJson("1e-" + digits).asReal(), 0.0);
  EXPECT_EQ(Value::fromJson("0." + digits + "e0" + std::string(100, '0')).asReal(), 7.0 / 9);
}

char const* const sample =
    "{\"a\":[1,-2.5e3,true,false,null],\n \"\\u00fc\\n\xc3\xbc\":{\"code\":1,\"name\":\"x\"},"
    "\"text\":\"plain \\ud83d\\ude00 \xf0\x9f\x98\x80\",\"o\":{}, \"l\":[[]]}";

TEST(JsonHostile, TextsThatEndAnywhere) {
  std::string const whole = sample;
  ASSERT_NO_THROW(Value::fromJson(whole));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    auto const exact = std::make_unique<char[]>(length);  // so that a sanitizer sees the end
    whole.copy(exact.get(), length);
    JsonError const error = errorOf({exact.get(), length});
    EXPECT_LE(error.offset(), length);
    EXPECT_GE(error.offset() + 8, length) << "no mistake before the end";
    EXPECT_GE(error.line(), 1);
    EXPECT_GE(error.column(), 1);
  }
}

/// What both read or refuse; the other one takes a key twice, and ends at a NUL byte.
void expectAsTheOtherLibrary(std::string const& text, int& read, int& refused) {
  if (text.find('\0') != text.npos) return;
  nlohmann::json const other = nlohmann::json::parse(text, nullptr, false);
  try {
    Value const value = Value::fromJson(text);
    ASSERT_FALSE(other.is_discarded()) << "should have been refused: " << text;
    ASSERT_EQ(nlohmann::json(mirrorOf(value)), other) << text;
    ++read;
  } catch (JsonError const& error) {
    ASSERT_LE(error.offset(), text.size());
    if (std::string_view(error.what()).find("second time") != std::string_view::npos) return;
    ASSERT_TRUE(other.is_discarded()) << "should have been read: " << text << '\n' << error.what();
    ++refused;
  }
}

TEST(JsonHostile, TextsWithAnyOtherByteAnywhere) {
  std::string const whole = sample;
  int read = 0, refused = 0;
  for (std::size_t place = 0; place < whole.size(); ++place) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string text = whole;
      text[place] = static_cast<char>(byte);
      expectAsTheOtherLibrary(text, read, refused);
    }
  }
  EXPECT_GT(read, 1000);
  EXPECT_GT(refused, 1000);
}

TEST(JsonHostile, TextsPutTogetherFromPieces) {
  static constexpr std::string_view pieces[] = {
      "{",       "}",     "[",      "]",       ",",    ":",    "\"",   "\"a\"",        "\"b\"",
      "1",       "-",     "0",      ".5",      "e3",   "true", "null", "false",        " ",
      "\n",      "\\",    "\\u",    "\\ud800", "00e9", "\xc3", "\xbc", "\xed\xa0\x80", "\x7f",
      "\"\\n\"", "1e400", "1e-400", "-0.0",    "\t"};
  std::mt19937_64 random(5);
  int read = 0, refused = 0;
  for (int i = 0; i < 200'000; ++i) {
    std::string text;
    for (std::size_t length = 1 + random() % 9; length > 0; --length) {
      text += pieces[random() % std::size(pieces)];
    }
    expectAsTheOtherLibrary(text, read, refused);
  }
  EXPECT_GT(read, 1000);
  EXPECT_GT(refused, 1000);
}

TEST_F(JsonHeap, WhereItIsExhaustedNothingIsLost) {
  for (std::size_t failing = 1;; ++failing) {
    test::Allocations const allocations(failing);
    try {
      Value::fromJson(sample).toJson();
      EXPECT_GT(failing, 10U);
      EXPECT_EQ(allocations.alive(), 0U);
      return;
    } catch (std::bad_alloc const&) {
      ASSERT_EQ(allocations.alive(), 0U) << failing;
    }
  }
}

// The process's locale.

class JsonLocale : public test::CommaLocale {};

TEST_P(JsonLocale, DoesNotCount) {
  Value const value = Value::list({2.5, 1e-7, 1234567.5, -1.5e300, 1234567, "\xc3\xbc i I"});
  std::string const json = R"([2.5,1e-07,1234567.5,-1.5e+300,1234567,"\u00fc i I"])";
  EXPECT_EQ(value.toJson(), json);
  EXPECT_EQ(Value::fromJson(json), value);
  EXPECT_EQ(Value::fromJson("2.5").asReal(), 2.5);
  EXPECT_EQ(errorOf("[2,5e]").offset(), 5U);
  EXPECT_EQ(errorOf("[1e400]").path(), "[0]");
}

INSTANTIATE_TEST_SUITE_P(All, JsonLocale, test::commaLocales(), test::nameOfLocale);

}  // namespace
}  // namespace Kovra

// Values by themselves: what they are made of, what they answer, how they are changed and compared,
// and what is left of a secret.

#include "frame/value.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "kovra.hpp"
#include "kovra_value.hpp"
#include "support/allocations.hpp"

namespace Kovra {
namespace {

using Kind = Value::Kind;

constexpr auto leastInteger = std::numeric_limits<std::int64_t>::min();
constexpr auto mostInteger = std::numeric_limits<std::int64_t>::max();
constexpr auto mostNatural = std::numeric_limits<std::uint64_t>::max();

/// The sentence of the ValueError that a call throws; empty where it throws none.
template <class Call>
std::string refusalOf(Call const& call) {
  try {
    call();
  } catch (ValueError const& error) {
    return error.what();
  }
  return {};
}

/// One of each kind.
std::vector<Value> oneOfEach() {
  return {Value(),
          true,
          -3,
          3U,
          2.5,
          "text",
          Value::keyword(1, "word"),
          Value::list({1, 2}),
          Value::object({{"a", 1}})};
}

// What a value is made of.

enum Signed { minusOne = -1, plusOne = 1 };
enum Unsigned : std::uint8_t { twoHundred = 200 };
enum class Scoped { one };
struct Unrelated {};
__extension__ using Wide = __int128;
struct ConvertsToText {
  operator std::string_view() const { return "converted"; }
};

template <class From>
constexpr bool makesValue = std::is_constructible_v<Value, From>;

static_assert(sizeof(Value) == 40 && sizeof(Member) == 56);
static_assert(std::is_nothrow_move_constructible_v<Value>);
static_assert(std::is_nothrow_move_assignable_v<Value>);
static_assert(std::is_nothrow_copy_constructible_v<ValueError>);
static_assert(makesValue<int> && makesValue<char const*> && makesValue<char*>);
static_assert(makesValue<Signed> && makesValue<Unsigned>);
static_assert(!makesValue<void*> && !makesValue<void const*>);
static_assert(!makesValue<int*> && !makesValue<int const*> && !makesValue<bool*>);
static_assert(!makesValue<wchar_t const*> && !makesValue<wchar_t const (&)[3]>);
static_assert(!makesValue<char8_t const*> && !makesValue<unsigned char const*>);
static_assert(!makesValue<Value*> && !makesValue<std::string*>);
static_assert(!makesValue<std::nullptr_t>);
static_assert(!makesValue<Wide>, "it would be cut");
static_assert(!makesValue<void (*)()>);
static_assert(!makesValue<Scoped> && !makesValue<Unrelated> && !makesValue<std::vector<int>>);
static_assert(!makesValue<std::wstring> && !makesValue<int Unrelated::*>);

TEST(Value, IsBornNothing) {
  Value const value;
  EXPECT_EQ(value.kind(), Kind::nothing);
  EXPECT_TRUE(value.isNothing());
  EXPECT_TRUE(value.empty());
  EXPECT_FALSE(value.isSecret());
  EXPECT_FALSE(value.isHexadecimal());
}

TEST(Value, IsWhatALiteralIs) {
  EXPECT_TRUE(Value(true).isFlag());
  EXPECT_TRUE(Value(true).asBool());
  EXPECT_FALSE(Value(false).asBool());
  EXPECT_EQ(Value(3).kind(), Kind::integer);
  EXPECT_EQ(Value(3).asInteger(), 3);
  EXPECT_EQ(Value(3U).kind(), Kind::natural);
  EXPECT_EQ(Value(3U).asNatural(), 3U);
  EXPECT_EQ(Value(0).kind(), Kind::integer) << "no null pointer";
  EXPECT_EQ(Value(2.5F).kind(), Kind::real);
  EXPECT_EQ(Value(2.5F).asReal(), 2.5);
  EXPECT_EQ(Value(2.5).asReal(), 2.5);
  EXPECT_EQ(Value(2.5L).asReal(), 2.5);
  EXPECT_EQ(Value("yes").kind(), Kind::text) << "no flag";
  EXPECT_EQ(Value("yes").asText(), "yes");
}

template <class Number>
void expectNumber() {
  constexpr Kind kind = std::is_signed_v<Number> ? Kind::integer : Kind::natural;
  for (Number const number : {std::numeric_limits<Number>::min(), Number{0}, Number{1},
                              std::numeric_limits<Number>::max()}) {
    Value const value = number;
    ASSERT_EQ(value.kind(), kind);
    EXPECT_TRUE(value.isWhole());
    if constexpr (std::is_signed_v<Number>) {
      EXPECT_EQ(value.asInteger(), static_cast<std::int64_t>(number));
    } else {
      EXPECT_EQ(value.asNatural(), static_cast<std::uint64_t>(number));
    }
  }
}

TEST(Value, IsOfAnyIntegerType) {
  expectNumber<char>();
  expectNumber<signed char>();
  expectNumber<unsigned char>();
  expectNumber<short>();
  expectNumber<unsigned short>();
  expectNumber<int>();
  expectNumber<unsigned>();
  expectNumber<long>();
  expectNumber<unsigned long>();
  expectNumber<long long>();
  expectNumber<unsigned long long>();
  expectNumber<wchar_t>();
  expectNumber<char16_t>();
  expectNumber<char32_t>();
}

TEST(Value, IsOfAnEnumerationThatConverts) {
  EXPECT_EQ(Value(minusOne).kind(), Kind::integer);
  EXPECT_EQ(Value(minusOne).asInteger(), -1);
  EXPECT_EQ(Value(plusOne).asInteger(), 1);
  EXPECT_EQ(Value(twoHundred).kind(), Kind::natural);
  EXPECT_EQ(Value(twoHundred).asNatural(), 200U);
}

TEST(Value, IsOfWhateverIsAText) {
  std::string const longText(100, 'x');
  std::string withNul("a\0b", 3);
  char array[] = {'a', 'r', 'r', '\0', 'z'};
  char* const pointer = array;
  char const* const null = nullptr;
  std::pair<Value, std::string> const cases[] = {{longText, longText},
                                                 {std::string_view(longText).substr(98), "xx"},
                                                 {withNul, withNul},
                                                 {std::move(withNul), std::string("a\0b", 3)},
                                                 {array, "arr"},
                                                 {pointer, "arr"},
                                                 {null, ""},
                                                 {"", ""},
                                                 {std::string_view(), ""},
                                                 {ConvertsToText(), "converted"},
                                                 {"fifteen letters", "fifteen letters"}};
  for (auto const& [value, text] : cases) {
    ASSERT_TRUE(value.isText()) << text;
    EXPECT_EQ(value.asText(), text);
  }
}

TEST(Value, OwnsItsText) {
  std::string text = "a text that stands on the heap";
  Value const value = text;
  text.assign(text.size(), '-');
  EXPECT_EQ(value.asText(), "a text that stands on the heap");
}

TEST(Value, IsAKeywordKnownOrNot) {
  Value const known = Value::keyword(-2, "ready");
  EXPECT_TRUE(known.isKeyword());
  EXPECT_EQ(known.code(), -2);
  EXPECT_EQ(known.word(), "ready");
  EXPECT_TRUE(known.isKnown());
  Value const unknown = Value::unknownKeyword(0, "raedy");
  EXPECT_TRUE(unknown.isKeyword());
  EXPECT_EQ(unknown.code(), 0);
  EXPECT_EQ(unknown.word(), "raedy");
  EXPECT_FALSE(unknown.isKnown());
}

TEST(Value, IsAListOrARecordOfOthers) {
  Value const value = Value::object(
      {{"name", "front"},
       {"sizes", Value::list({1, 2.5, "three", Value::list(), Value::object({{"deep", true}})})},
       {"", Value::object()}});
  EXPECT_TRUE(value.isRecord());
  EXPECT_EQ(value.size(), 3U);
  EXPECT_EQ(value.at("sizes").size(), 5U);
  EXPECT_EQ(value.at("sizes[2]").asText(), "three");
  EXPECT_TRUE(value.at("sizes[3]").isList());
  EXPECT_TRUE(value.at("sizes[4].deep").asBool());
  ASSERT_NE(value.find(""), nullptr);
  EXPECT_TRUE(value.find("")->isRecord());
  EXPECT_TRUE(Value::list().isList());
  EXPECT_TRUE(Value::object().isRecord());
  EXPECT_TRUE(Value::list().empty() && Value::object().empty());
}

TEST(Value, HasNoTwoMembersOfOneName) {
  EXPECT_EQ(refusalOf([] {
              Value::object({{"a", 1}, {"b", 2}, {"a", 3}});
            }),
            "two members called \"a\"");
  EXPECT_EQ(refusalOf([] { Value::object({{"a", 1}, {"A", 2}}); }), "");
}

// What it answers.

/// Which of the kinds an access takes, as many bits as there are kinds.
template <class Access>
std::string kindsThatTake(Access const& access) {
  std::string taken;
  for (Value const& value : oneOfEach()) {
    std::string const refusal = refusalOf([&] { access(value); });
    taken += refusal.empty() ? '1' : '0';
    EXPECT_TRUE(refusal.empty() || refusal.starts_with("the value is ")) << refusal;
  }
  return taken;
}

TEST(Value, RefusesWhatItIsNot) {
  //                                                                   nothing, flag, integer, ...
  EXPECT_EQ(kindsThatTake([](Value const& v) { (void)v.asBool(); }), "010000000");
  EXPECT_EQ(kindsThatTake([](Value const& v) { (void)v.asReal(); }), "001110000");
  EXPECT_EQ(kindsThatTake([](Value const& v) { (void)v.asText(); }), "000001000");
  EXPECT_EQ(kindsThatTake([](Value const& v) { (void)v.code(); }), "000000100");
  EXPECT_EQ(kindsThatTake([](Value const& v) { (void)v.word(); }), "000000100");
  EXPECT_EQ(kindsThatTake([](Value const& v) { (void)v.isKnown(); }), "000000100");
  EXPECT_EQ(kindsThatTake([](Value const& v) { Value(v).append(1); }), "100000010");
  EXPECT_EQ(kindsThatTake([](Value const& v) { Value(v).add("b", 1); }), "100000001");
}

// Hosts keep an exception beyond the handler that caught it.
TEST(ValueError, IsCopiedWithItsSentence) {
  std::optional<ValueError> kept;
  try {
    (void)Value(5).asText();
  } catch (ValueError const& error) {
    kept.emplace(error);
  }
  ASSERT_TRUE(kept.has_value());
  EXPECT_STREQ(kept->what(), "the value is a whole number, not a text");
}

TEST(Value, SaysWhatItIsAndWhatItIsNot) {
  char const* const names[] = {
      "nothing", "a flag",    "a whole number", "a whole number", "a number with a fraction",
      "a text",  "a keyword", "a list",         "a record"};
  std::vector<Value> const values = oneOfEach();
  ASSERT_EQ(values.size(), std::size(names));
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values[i].isText() || values[i].isFlag()) continue;
    std::string const is = std::string("the value is ") + names[i] + ", not ";
    EXPECT_EQ(refusalOf([&] { (void)values[i].asText(); }), is + "a text");
    EXPECT_EQ(refusalOf([&] { (void)values[i].asBool(); }), is + "a flag");
  }
  EXPECT_EQ(refusalOf([] { (void)Value("5").asInteger(); }),
            "the value is a text, not a whole number");
  EXPECT_EQ(refusalOf([] { (void)Value(true).asNatural(); }),
            "the value is a flag, not a whole number");
  EXPECT_EQ(refusalOf([] { (void)Value("5").asReal(); }), "the value is a text, not a number");
  EXPECT_EQ(refusalOf([] { (void)Value(5).code(); }), "the value is a whole number, not a keyword");
}

TEST(Value, HasOneKindOnly) {
  auto const bits = [](Value const& value) {
    return std::array{value.isNothing(), value.isFlag(),    value.isWhole(), value.isReal(),
                      value.isText(),    value.isKeyword(), value.isList(),  value.isRecord()};
  };
  std::size_t const expected[] = {0, 1, 2, 2, 3, 4, 5, 6, 7};
  std::vector<Value> const values = oneOfEach();
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(static_cast<std::size_t>(values[i].kind()), i);
    std::array<bool, 8> only{};
    only[expected[i]] = true;
    EXPECT_EQ(bits(values[i]), only) << i;
  }
}

TEST(Value, IsAnyWholeNumberThatFits) {
  EXPECT_EQ(Value(7U).asInteger(), 7);
  EXPECT_EQ(Value(7).asNatural(), 7U);
  EXPECT_EQ(Value(leastInteger).asInteger(), leastInteger);
  EXPECT_EQ(Value(static_cast<std::uint64_t>(mostInteger)).asInteger(), mostInteger);
  EXPECT_EQ(Value(mostNatural).asNatural(), mostNatural);
  EXPECT_EQ(refusalOf([] { (void)Value(static_cast<std::uint64_t>(mostInteger) + 1).asInteger(); }),
            "the number is too large");
  EXPECT_EQ(refusalOf([] { (void)Value(-1).asNatural(); }), "the number is negative");
  EXPECT_EQ(refusalOf([] { (void)Value(2.0).asInteger(); }),
            "the value is a number with a fraction, not a whole number");
  EXPECT_EQ(Value(-7).asReal(), -7.0);
  EXPECT_EQ(Value(mostNatural).asReal(), 18446744073709551616.0);
}

TEST(Value, AnswersOtherwiseInsteadOfThrowing) {
  static_assert(noexcept(Value().asBool(true))&& noexcept(Value().asInteger(1))&& noexcept(
      Value().asNatural(1))&& noexcept(Value().asReal(1))&& noexcept(Value().asText("")));
  EXPECT_TRUE(Value(1).asBool(true));
  EXPECT_FALSE(Value(1).asBool(false));
  EXPECT_TRUE(Value(true).asBool(false));
  EXPECT_EQ(Value("1").asInteger(-5), -5);
  EXPECT_EQ(Value(0U).asInteger(-5), 0);
  EXPECT_EQ(Value(0).asNatural(5), 0U);
  EXPECT_EQ(Value(-1).asNatural(5), 5U);
  EXPECT_EQ(Value(mostNatural).asInteger(-5), -5);
  EXPECT_EQ(Value(8U).asInteger(-5), 8);
  EXPECT_EQ(Value(-8).asInteger(-5), -8);
  EXPECT_EQ(Value(-8).asNatural(5), 5U);
  EXPECT_EQ(Value(8).asNatural(5), 8U);
  EXPECT_EQ(Value(mostNatural).asNatural(5), mostNatural);
  EXPECT_EQ(Value(2.5).asNatural(5), 5U);
  EXPECT_EQ(Value(2.5).asReal(1.5), 2.5);
  EXPECT_EQ(Value(2).asReal(1.5), 2.0);
  EXPECT_EQ(Value("2").asReal(1.5), 1.5);
  EXPECT_EQ(Value("text").asText("other"), "text");
  EXPECT_EQ(Value::keyword(1, "word").asText("other"), "other");
}

// What it holds.

TEST(Value, HoldsEntriesInTheirOrder) {
  Value list = Value::list({1, "two", 3.5});
  EXPECT_EQ(list.size(), 3U);
  EXPECT_FALSE(list.empty());
  Range<Value const> const items = std::as_const(list).items();
  EXPECT_EQ(items.size(), 3U);
  EXPECT_EQ(items.front(), Value(1));
  EXPECT_EQ(items[1], Value("two"));
  EXPECT_EQ(items.back(), Value(3.5));
  EXPECT_EQ(std::distance(items.begin(), items.end()), 3);
  for (Value& item : list.items()) item = "changed";
  EXPECT_EQ(list, Value::list({"changed", "changed", "changed"}));
  EXPECT_TRUE(list.members().empty());
}

TEST(Value, HoldsMembersInTheirOrder) {
  Value record = Value::object({{"zebra", 1}, {"ant", 2}});
  std::string seen;
  for (auto const& [name, value] : std::as_const(record).members()) {
    static_assert(std::is_same_v<decltype(name), std::string_view const>);
    static_assert(std::is_same_v<decltype(value), Value const&>);
    seen += std::string(name) + '=' + std::to_string(value.asInteger()) + ' ';
  }
  EXPECT_EQ(seen, "zebra=1 ant=2 ");
  for (Member& member : record.members()) member.value() = member.name();
  EXPECT_EQ(record, Value::object({{"zebra", "zebra"}, {"ant", "ant"}}));
  EXPECT_TRUE(record.items().empty());
}

TEST(Value, HoldsNothingUnlessItIsAListOrARecord) {
  for (Value& value : oneOfEach()) {
    if (value.isList() || value.isRecord()) continue;
    EXPECT_EQ(value.size(), 0U);
    EXPECT_TRUE(value.empty());
    EXPECT_TRUE(value.items().empty() && std::as_const(value).items().empty());
    EXPECT_TRUE(value.members().empty() && std::as_const(value).members().empty());
    EXPECT_EQ(value.find("a"), nullptr);
    EXPECT_FALSE(value.erase("a"));
  }
}

TEST(Value, FindsMembersByTheirNames) {
  Value record = Value::object({{"a", 1}, {"ab", 2}, {"A", 3}, {std::string_view("a\0b", 3), 4}});
  EXPECT_EQ(*record.find("a"), Value(1));
  EXPECT_EQ(*record.find("ab"), Value(2));
  EXPECT_EQ(*std::as_const(record).find("A"), Value(3));
  EXPECT_EQ(*record.find(std::string_view("a\0b", 3)), Value(4));
  EXPECT_EQ(record.find("b"), nullptr);
  EXPECT_EQ(record.find(""), nullptr);
  EXPECT_EQ(Value::list({1}).find("a"), nullptr);
  *record.find("ab") = "changed";
  EXPECT_EQ(record.at("ab").asText(), "changed");
}

// Paths.

char const* const brokenPaths[] = {".",
                                   "a..b",
                                   "[",
                                   "[x]",
                                   "a[0",
                                   "a.",
                                   ".a",
                                   "a.[0]",
                                   "a[0]b",
                                   "[-1]",
                                   "[+1]",
                                   "[ 0]",
                                   "[0 ]",
                                   "a[]",
                                   "[0]]",
                                   "a[0x1]",
                                   "[0].",
                                   "[1e0]",
                                   "a[99999999999999999999]"};

Value twoCards() {
  return Value::object(
      {{"cards", Value::list({Value::object({{"thickness", 30}}),
                              Value::object({{"thickness", 10}, {"sides", Value::list({1, 2})}})})},
       {"empty", Value()}});
}

TEST(ValuePath, LeadsToWhatIsThere) {
  Value value = twoCards();
  EXPECT_EQ(value.at("cards[1].thickness"), Value(10));
  EXPECT_EQ(std::as_const(value).at("cards[1].sides[0]"), Value(1));
  EXPECT_EQ(&value.at(""), &value);
  EXPECT_EQ(&std::as_const(value).at(""), &value);
  EXPECT_EQ(value.findAt("cards[0]"), &value.at("cards").items()[0]);
  EXPECT_EQ(value.at("cards").at("[1]").at("sides").at("[1]"), Value(2));
  EXPECT_EQ(Value::list({Value::list({7})}).at("[0][0]"), Value(7));
  value.at("cards[0].thickness") = 40;
  EXPECT_EQ(value.at("cards[0].thickness"), Value(40));
}

TEST(ValuePath, LeadsNowhere) {
  Value value = twoCards();
  std::vector<std::string> paths(std::begin(brokenPaths), std::end(brokenPaths));
  for (char const* const path : {"card", "cards[2]", "cards.thickness", "[0]", "empty.a",
                                 "empty[0]", "cards[0].thickness.a", "cards[0].thickness[0]"}) {
    paths.emplace_back(path);
  }
  for (std::string const& path : paths) {
    EXPECT_EQ(value.findAt(path), nullptr) << path;
    std::string const refusal = '"' + path + "\": there is no such value";
    EXPECT_EQ(refusalOf([&] { (void)value.at(path); }), refusal);
    EXPECT_EQ(refusalOf([&] { (void)std::as_const(value).at(path); }), refusal);
  }
  EXPECT_EQ(value, twoCards());
}

TEST(ValuePath, IsMadeWhereItIsNotThere) {
  Value value;
  Value& set = value.set("wireless.networks[0].ssid", "Office");
  EXPECT_EQ(&set, &value.at("wireless.networks[0].ssid"));
  value.set("wireless.networks[0].channel", 6);
  value.set("wireless.networks[1]", "second");
  value.set("on", true);
  EXPECT_EQ(
      value,
      Value::object(
          {{"wireless",
            Value::object(
                {{"networks",
                  Value::list({Value::object({{"ssid", "Office"}, {"channel", 6}}), "second"})}})},
           {"on", true}}));
}

TEST(ValuePath, TakesAnotherValueWhereItIsThere) {
  Value value = twoCards();
  EXPECT_EQ(value.set("cards[0]", "no card any more"), Value("no card any more"));
  EXPECT_EQ(value.set("cards[1].sides[1]", Value()), Value());
  EXPECT_EQ(value.size(), 2U);
  EXPECT_EQ(value.at("cards").size(), 2U);
  EXPECT_EQ(value.set("", 5), Value(5));
  EXPECT_EQ(value, Value(5));
}

TEST(ValuePath, MakesAListOrARecordOfNothing) {
  Value list;
  list.set("[0]", 1);
  list.set("[1]", 2);
  EXPECT_EQ(list, Value::list({1, 2}));
  Value value = twoCards();
  value.set("empty.deep", 1);
  EXPECT_EQ(value.at("empty"), Value::object({{"deep", 1}}));
}

TEST(ValuePath, IsRefusedAndNothingIsChanged) {
  Value value = twoCards();
  for (char const* const path : brokenPaths) {
    EXPECT_EQ(refusalOf([&] { value.set(path, 1); }),
              '"' + std::string(path) + "\": this is no path");
  }
  for (std::string const path :
       {"cards[3]", "cards[0].thickness.a", "cards[0].thickness[0]", "cards.a", "[0]", "new[1]",
        "new.deep[0][1]", "empty.a[2]", "cards[2].a[1]"}) {
    EXPECT_EQ(refusalOf([&] { value.set(path, 1); }),
              '"' + path + "\": the path leads through something else than a record or a list");
    EXPECT_EQ(value, twoCards()) << path;
    EXPECT_EQ(value.size(), 2U) << path;
  }
}

TEST(ValuePath, IsMadeInPlace) {
  Value value = Value::object({{"list", Value::list({"a text that stands on the heap"})}});
  char const* const text = value.at("list[0]").asText().data();
  value.set("list[1].made.on[0].the", "way");
  value.set("other", 1);
  EXPECT_EQ(value.at("list[0]").asText().data(), text) << "it was copied";
  EXPECT_EQ(value.at("list[1].made.on[0].the"), Value("way"));
}

TEST(ValuePath, OfNothingThatIsASecretMakesOne) {
  Value value = Value::object({{"keys", {}}});
  value.at("keys").markSecret();
  value.set("keys[0]", 1);
  EXPECT_TRUE(value.at("keys").isSecret());
}

TEST(ValuePath, TakesAPartOfTheValue) {
  Value value = Value::object({{"a", Value::object({{"b", "a text that stands on the heap"}})}});
  value.set("copy[0]", value.at("a.b"));
  EXPECT_EQ(value.at("copy[0]"), value.at("a.b"));
  value.set("a", std::move(value.at("a.b")));
  EXPECT_EQ(value.at("a"), Value("a text that stands on the heap"));
}

// Changes.

TEST(Value, TakesMembers) {
  Value value;
  std::string name = "first";
  Value& added = value.add(name, 1);
  name = "xxxxx";
  EXPECT_EQ(&added, value.find("first"));
  for (int i = 0; i < 100; ++i) value.add("member " + std::to_string(i), i);
  EXPECT_EQ(value.size(), 101U);
  EXPECT_EQ(value.at("first"), Value(1));
  EXPECT_EQ(value.at("member 99"), Value(99));
  EXPECT_EQ(refusalOf([&] { value.add("member 50", "other"); }),
            "two members called \"member 50\"");
  EXPECT_EQ(value.at("member 50"), Value(50));
  EXPECT_EQ(refusalOf([] { Value(1).add("a", 1); }), "the value is a whole number, not a record");
}

TEST(Value, TakesAMemberNamedAsOneOfItsTexts) {
  Value value = Value::object({{"name", "a text that stands on the heap"}});
  value.add(value.at("name").asText(), 1);
  EXPECT_EQ(value.at("a text that stands on the heap"), Value(1));
}

TEST(Value, TakesEntries) {
  Value value;
  EXPECT_EQ(value.append("first"), Value("first"));
  for (int i = 0; i < 100; ++i) value.append(value.items()[0]);
  EXPECT_EQ(value.size(), 101U);
  EXPECT_EQ(value.items().back(), Value("first"));
  EXPECT_EQ(refusalOf([] { Value::object().append(1); }), "the value is a record, not a list");
}

TEST(Value, GivesMembersUp) {
  Value value = Value::object({{"a", 1}, {"b", Value::list({1})}, {"c", "three"}});
  EXPECT_FALSE(value.erase("d"));
  EXPECT_TRUE(value.erase("b"));
  EXPECT_FALSE(value.erase("b"));
  EXPECT_EQ(value, Value::object({{"a", 1}, {"c", "three"}}));
  EXPECT_TRUE(value.erase(value.members()[0].name())) << "its own name";
  EXPECT_TRUE(value.erase("c"));
  EXPECT_TRUE(value.isRecord() && value.empty());
}

// Comparison.

TEST(Value, IsEqualToItsLikeOnly) {
  std::vector<Value> const values = oneOfEach();
  std::vector<Value> const others = oneOfEach();
  for (std::size_t i = 0; i < values.size(); ++i) {
    for (std::size_t j = 0; j < others.size(); ++j) {
      EXPECT_EQ(values[i] == others[j], i == j) << i << ' ' << j;
      EXPECT_EQ(values[i] != others[j], i != j) << i << ' ' << j;
    }
  }
}

TEST(Value, ComparesWholeNumbersAsNumbers) {
  EXPECT_EQ(Value(5), Value(5U));
  EXPECT_EQ(Value(5U), Value(5));
  EXPECT_EQ(Value(mostInteger), Value(static_cast<std::uint64_t>(mostInteger)));
  EXPECT_EQ(Value(mostNatural), Value(mostNatural));
  EXPECT_NE(Value(mostNatural), Value(-1)) << "the same bits";
  EXPECT_NE(Value(-1), Value(mostNatural));
  EXPECT_NE(Value(static_cast<std::uint64_t>(mostInteger) + 1), Value(leastInteger));
  EXPECT_EQ(Value(-1), Value(-1));
  EXPECT_NE(Value(-1), Value(-2));
  EXPECT_NE(Value(-1), Value(1));
  EXPECT_NE(Value(5), Value(5.0));
}

TEST(Value, ComparesWhatItHolds) {
  EXPECT_EQ(Value::object({{"a", 1}, {"b", 2}}), Value::object({{"b", 2}, {"a", 1U}}));
  EXPECT_NE(Value::object({{"a", 1}, {"b", 2}}), Value::object({{"b", 1}, {"a", 2}}));
  EXPECT_NE(Value::object({{"a", 1}}), Value::object({{"a", 1}, {"b", 2}}));
  EXPECT_NE(Value::object({{"a", 1}, {"b", 2}}), Value::object({{"a", 1}, {"c", 2}}));
  EXPECT_NE(Value::object({{"a", Value()}}), Value::object({{"b", Value()}}));
  EXPECT_NE(Value::list({1, 2}), Value::list({2, 1}));
  EXPECT_NE(Value::list({1}), Value::list({1, 1}));
  EXPECT_NE(Value::list(), Value::object());
  EXPECT_NE(Value("a"), Value(std::string_view("a\0", 2)));
  EXPECT_NE(Value(true), Value(false));
  EXPECT_NE(Value(2.5), Value(2.25));
  EXPECT_EQ(Value(0.0), Value(-0.0));
}

TEST(Value, ComparesKeywordsByCodeWordAndKnowledge) {
  EXPECT_EQ(Value::keyword(1, "a"), Value::keyword(1, "a"));
  EXPECT_NE(Value::keyword(1, "a"), Value::keyword(2, "a"));
  EXPECT_NE(Value::keyword(1, "a"), Value::keyword(1, "b"));
  EXPECT_NE(Value::keyword(1, "a"), Value::unknownKeyword(1, "a"));
  EXPECT_NE(Value::keyword(1, "a"), Value("a"));
}

TEST(Value, IsNotEqualToItselfWithoutAValue) {
  Value const nan = std::nan("");
  EXPECT_NE(nan, nan);
  EXPECT_NE(Value::list({nan}), Value::list({nan}));
}

TEST(Value, ComparesNoMarks) {
  Value secret = "text";
  secret.markSecret();
  EXPECT_EQ(secret, Value("text"));
  EXPECT_EQ(frame::ValueAccess::natural(16, true), Value(16));
}

TEST(Value, ComparesLargeRecordsQuickly) {
  Value a, b;
  frame::ValueAccess::become(a, Kind::record);
  frame::ValueAccess::become(b, Kind::record);
  constexpr int members = 200'000;  // searching each would take minutes
  for (int i = 0; i < members; ++i) {
    frame::ValueAccess::add(a, "same length " + std::to_string(1'000'000 + i)) = i;
    frame::ValueAccess::add(b, "same length " + std::to_string(1'000'000 + i)) = i;
  }
  EXPECT_EQ(a, b);
}

// Copies.

TEST(Value, IsCopiedWhole) {
  for (Value const& value : oneOfEach()) {
    Value const copy = value;
    EXPECT_EQ(copy, value);
    Value assigned = "before";
    assigned = value;
    EXPECT_EQ(assigned, value);
  }
  Value const value = twoCards();
  Value copy = value;
  copy.set("cards[0].thickness", 99);
  EXPECT_EQ(value, twoCards()) << "nothing is shared";
}

TEST(Value, IsMovedWhole) {
  for (Value& value : oneOfEach()) {
    Value const expected = value;
    Kind const kind = value.kind();
    Value taken = std::move(value);
    EXPECT_EQ(taken, expected);
    EXPECT_EQ(value.kind(), kind);  // what is left is still a value
    value = std::move(taken);
    EXPECT_EQ(value, expected);
  }
  Value text = "a text that stands on the heap";
  char const* const heap = text.asText().data();
  Value const taken = std::move(text);
  EXPECT_EQ(taken.asText().data(), heap);
}

TEST(Value, TakesItselfAndPartsOfItself) {
  Value value = twoCards();
  Value& same = value;
  value = same;
  EXPECT_EQ(value, twoCards());
  value = std::move(same);
  EXPECT_EQ(value, twoCards());
  value = value.at("cards[1]");
  EXPECT_EQ(value, twoCards().at("cards[1]"));
  value = std::move(value.at("sides"));
  EXPECT_EQ(value, Value::list({1, 2}));
  value = value.items()[1];
  EXPECT_EQ(value, Value(2));
}

TEST(Value, KeepsItsMarksInCopies) {
  Value secret = "text";
  secret.markSecret();
  Value const copy = secret;
  EXPECT_TRUE(copy.isSecret());
  Value const number = frame::ValueAccess::natural(255, true);
  EXPECT_TRUE(number.isHexadecimal());
  EXPECT_TRUE(Value(number).isHexadecimal());
  Value assigned = 5;
  assigned = copy;
  EXPECT_TRUE(assigned.isSecret());
  assigned = 5;
  EXPECT_FALSE(assigned.isSecret());
  secret.markSecret(false);
  EXPECT_FALSE(secret.isSecret());
}

// Only a member's value changes, whatever is done with it as a whole.
static_assert(std::is_copy_constructible_v<Member> && std::is_nothrow_move_constructible_v<Member>);
static_assert(!std::is_copy_assignable_v<Member> && !std::is_move_assignable_v<Member>);
static_assert(!std::is_swappable_v<Member>);
static_assert(!std::is_assignable_v<decltype(std::declval<Member&>().name()[0]), char>);

TEST(Member, IsCopiedAndMovedWithItsName) {
  auto member = std::make_unique<Member>("a name that stands on the heap", Value::list({1, "two"}));
  Member const copy = *member;
  Member const moved = std::move(*member);
  EXPECT_EQ(member->name(), "a name that stands on the heap") << "as before";
  EXPECT_EQ(member->value(), Value::list({}));
  member.reset();
  for (Member const& same : {copy, moved}) {
    EXPECT_EQ(same.name(), "a name that stands on the heap");
    EXPECT_EQ(same.value(), Value::list({1, "two"}));
  }
  EXPECT_EQ(Member("", 3).name(), "");
  EXPECT_EQ(Member().name(), "");
}

TEST(Member, KeepsItsNameInARecordThatIsTakenApart) {
  Value record = Value::object({{"first", "a text that stands on the heap"}, {"second", 2}});
  Member const taken = std::move(record.members()[0]);
  EXPECT_EQ(taken.value(), Value("a text that stands on the heap"));
  EXPECT_EQ(record, Value::object({{"first", ""}, {"second", 2}}));
  for (Member& member : record.members()) member.value() = taken.value();
  EXPECT_EQ(record.at("second"), taken.value());
}

TEST(Member, OfATableSharesItsName) {
  static constexpr std::string_view name = "of a table";
  Value record = Value::object();
  frame::ValueAccess::ofTable(record, name) = 1;
  Value const copy = record;
  EXPECT_EQ(copy.members()[0].name().data(), name.data());
  EXPECT_EQ(copy, Value::object({{"of a table", 1}}));
}

// Depths.

/// Lists and some records, so many in one another, with a text in the innermost.
Value nested(int depth) {
  Value top;
  Value* at = &top;
  for (int i = 0; i < depth; ++i) {
    bool const isRecord = i % 2 == 1 && i < 1000;  // which take more memory
    at = isRecord ? &at->add("in", {}) : &at->append({});
  }
  *at = "a text that stands on the heap";
  return top;
}

constexpr char tooDeep[] = "the values stand too deep in one another";

TEST(DeepValue, IsCopiedComparedAndPrintedUpToABound) {
  Value const deepest = nested(100);
  Value const copy = deepest;
  EXPECT_TRUE(copy == deepest);
  EXPECT_FALSE(copy.toJson().empty());
  Value const deeper = nested(101);
  Value const same = nested(101);
  EXPECT_EQ(refusalOf([&] { Value const other = deeper; }), tooDeep);
  EXPECT_EQ(refusalOf([&] { (void)(deeper == same); }), tooDeep);
  EXPECT_EQ(refusalOf([&] { (void)deeper.toJson(); }), tooDeep);
}

TEST(DeepValue, IsRefusedAndDestroyedAtAnyDepth) {
  Value value = nested(200'000);  // more than a stack has room for
  Value other = Value::list({1, nested(50), 2});
  EXPECT_EQ(refusalOf([&] { other = value; }), tooDeep);
  EXPECT_EQ(refusalOf([&] { (void)Member("name", value); }), tooDeep);
  Value const& same = value;
  EXPECT_EQ(refusalOf([&] { (void)(value == same); }), tooDeep);
  EXPECT_EQ(refusalOf([&] { (void)value.toJson(2); }), tooDeep);
  EXPECT_EQ(other, Value::list({1, nested(50), 2})) << "nothing was changed";
  other.append(std::move(value));
  EXPECT_EQ(other.size(), 4U);
}

TEST(DeepValue, IsDestroyedWithAllThatStandsBesideIt) {
  Value broad;
  for (int i = 0; i < 50; ++i) {
    broad.add(std::to_string(i), Value::list({"a text that stands on the heap", nested(i), 5}));
  }
  for (int i = 0; i < 50; i += 2) broad.erase(std::to_string(i));
  EXPECT_EQ(broad.size(), 25U);
  broad = {};
  EXPECT_TRUE(broad.isNothing());
}

// Memory.

class ValueHeap : public test::HeapTest {};

/// Lets each allocation of a change fail in turn, until one goes through; what was there stays.
template <class Change>
void expectUnchangedWithoutMemory(Change const& change) {
  for (std::size_t failing = 1;; ++failing) {
    Value value = twoCards();
    Value const before = value;
    bool isDone = false;
    {
      test::Allocations const allocations(failing);
      try {
        change(value);
        isDone = true;
      } catch (std::bad_alloc const&) {
      }
    }
    if (isDone) {
      EXPECT_GT(failing, 1U) << "nothing was tested";
      return;
    }
    EXPECT_EQ(value, before) << failing;
  }
}

TEST_F(ValueHeap, GivesBackAllThatItHeld) {
  test::Allocations const allocations;
  {
    Value value = nested(1000);
    Value const other = Value::object({{"first", nested(20)}, {"second", Value::list({{}, {}})}});
    Value copy = other;
    copy.erase("first");
    value.at("[0]") = copy;
  }
  EXPECT_GT(allocations.made(), 0U);
  EXPECT_EQ(allocations.alive(), 0U);
}

// Room for all members of an ordinary record is asked for with the first.
TEST_F(ValueHeap, IsAskedForTheMembersOfARecordAtOnce) {
  auto const asked = [](std::string const& members) {
    std::string const reply = "<get_general_status>" + members + "</get_general_status>";
    EXPECT_TRUE(decode(reply)) << "what is made once is there";
    test::Allocations const allocations;
    Decoding const decoding = decode(reply);
    EXPECT_TRUE(decoding && decoding.notes().empty());
    return allocations.made();
  };
  EXPECT_EQ(asked("<error>1</error><num_jobs_total>2</num_jobs_total><warning>3</warning>"
                  "<num_jobs_done_ok>4</num_jobs_done_ok><action_id_next>5</action_id_next>"
                  "<num_jobs_done_error>6</num_jobs_done_error>"),
            asked("<error>1</error>"));
}

TEST_F(ValueHeap, WithoutMemoryNothingIsChanged) {
  expectUnchangedWithoutMemory([](Value& v) { v.set("empty.a[0].b", "a longer text than that"); });

  expectUnchangedWithoutMemory([](Value& v) { v.set("a[0].b.c[0]", 1); });
  expectUnchangedWithoutMemory([](Value& v) { v.add("a longer name than that", 1); });
  expectUnchangedWithoutMemory([](Value& v) { v.at("cards").append("a longer text than that"); });
  expectUnchangedWithoutMemory([](Value& v) { v = Value(v).at("cards"); });
}

// Secrets. A block that is given back is searched; the texts are unlike anything else in memory.

std::string const shortSecret = "short-secret!";
std::string const longSecret = "a very secret text that stands on the heap";

class ValueSecrets : public test::HeapTest, public testing::WithParamInterface<std::string> {
 protected:
  void SetUp() override { test::HeapTest::SetUp(); }

  /// How many blocks held the secret when they were given back by `call`, which gets a value that
  /// holds it and stands on the heap itself.
  std::size_t released(std::function<void(std::unique_ptr<Value>)> const& call) const {
    test::Released const released(GetParam());
    auto value = std::make_unique<Value>(GetParam());
    value->markSecret(isMarked_);
    call(std::move(value));
    return released.found();
  }

  bool isMarked_ = true;
};

TEST_P(ValueSecrets, AreSeenByThisTestWhereNobodyWipesThem) {
  isMarked_ = false;
  EXPECT_EQ(released([](auto) {}), 1U);
  EXPECT_EQ(released([](auto value) { *value = 5; }), 1U);
  isMarked_ = true;
  EXPECT_EQ(released([](auto value) { value->markSecret(false); }), 1U);
}

TEST_P(ValueSecrets, AreWipedWhenTheyAreDestroyedOrOverwritten) {
  EXPECT_EQ(released([](auto) {}), 0U);
  EXPECT_EQ(released([](auto value) { *value = 5; }), 0U);
  EXPECT_EQ(released([](auto value) { *value = "x"; }), 0U);
  EXPECT_EQ(released([](auto value) { *value = std::string(200, 'x'); }), 0U);
  EXPECT_EQ(released([](auto value) {
              Value const other = Value::list({1});
              *value = other;
            }),
            0U);
  EXPECT_EQ(released([](auto value) { frame::ValueAccess::become(*value, Kind::record); }), 0U);
}

TEST_P(ValueSecrets, AreWipedBehindAShorterText) {
  EXPECT_EQ(released([](auto value) { frame::ValueAccess::text(*value).erase(0, 1); }), 0U);
  EXPECT_EQ(released([](auto value) { frame::ValueAccess::text(*value).clear(); }), 0U);
}

TEST_P(ValueSecrets, AreWipedWhereTheyAreMovedFrom) {
  EXPECT_EQ(released([](auto value) {
              auto const taken = std::make_unique<Value>(std::move(*value));
              value.reset();
              EXPECT_TRUE(taken->isSecret());
            }),
            0U);
  EXPECT_EQ(released([](auto value) {
              auto const taken = std::make_unique<Value>("other");
              *taken = std::move(*value);
              value.reset();
              EXPECT_EQ(taken->size(), 0U);
            }),
            0U);
  EXPECT_EQ(released([](auto value) { *value = Value(*value); }), 0U);
}

TEST_P(ValueSecrets, AreWipedInListsAndRecords) {
  EXPECT_EQ(released([](auto value) {
              Value list;
              for (int i = 0; i < 20; ++i) list.append(*value);  // which move as it grows
              Value const copy = list;
              list.items()[3] = 5;
            }),
            0U);
  EXPECT_EQ(released([](auto value) {
              Value record = Value::object({{"first", *value}, {"second", *value}});
              for (int i = 0; i < 20; ++i) record.add(std::to_string(i), *value);
              record.erase("first");
              record.erase("19");
              record.set("made[0].on.the.way", *value);
              record.set("second", "another");
              record = record.at("made");
            }),
            0U);
}

std::string nameOfSecret(testing::TestParamInfo<std::string> const& secret) {
  return secret.param == shortSecret ? "Short" : "Long";
}

INSTANTIATE_TEST_SUITE_P(Lengths, ValueSecrets, testing::Values(shortSecret, longSecret),
                         nameOfSecret);

TEST_F(ValueHeap, WipesSecretsOfAnyKind) {
  std::string const bytes = "8 bytes!";
  std::uint64_t natural;
  double real;
  std::memcpy(&natural, bytes.data(), sizeof natural);
  std::memcpy(&real, bytes.data(), sizeof real);
  for (bool const isMarked : {false, true}) {
    for (Value const& value : {Value(natural), Value(static_cast<std::int64_t>(natural)),
                               Value(real), Value::keyword(1, bytes)}) {
      test::Released const released(bytes);
      auto copy = std::make_unique<Value>(value);
      copy->markSecret(isMarked);
      copy.reset();
      EXPECT_EQ(released.found(), isMarked ? 0U : 1U) << static_cast<int>(value.kind());
    }
  }
}

}  // namespace
}  // namespace Kovra

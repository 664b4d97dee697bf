// What became of a record, and the operations that make it so.

#include "changes.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#include "patch.hpp"

namespace Kovra::tool {

namespace {

using Json = nlohmann::json;

/// Values of every kind, the same for the same seed. Names repeat, so that two records have members
/// in common; some hold what a pointer escapes.
class Maker {
 public:
  explicit Maker(std::uint32_t seed) : random_(seed) {}

  Value record(int depth) {
    Value record = Value::object();
    for (char const* const name : {"a", "b", "c/d", "e~f", "~1", "jobs", "h"}) {
      if (below(3) != 0) record.add(name, value(depth));
    }
    return record;
  }

 private:
  std::uint32_t below(std::uint32_t bound) { return static_cast<std::uint32_t>(random_()) % bound; }

  Value value(int depth) {
    switch (below(depth > 0 ? 8 : 6)) {
      case 0:
        return {};
      case 1:
        return below(2) == 1;
      case 2:
        return static_cast<long>(below(3)) - 1;
      case 3:
        return static_cast<double>(below(5)) / 2;
      case 4:
        return std::string(below(3), 'x');
      case 5:
        return Value::keyword(static_cast<int>(below(2)), "idle");
      case 6:
        return record(depth - 1);
      default:
        break;
    }
    Value list = Value::list();
    for (std::uint32_t i = below(4); i > 0; --i) list.append(value(depth - 1));
    return list;
  }

  std::mt19937 random_;
};

Json jsonOf(Value const& value) {
  return Json::parse(value.toJson());
}

Json patched(Value const& before, Value const& after) {
  return jsonOf(before).patch(Json::parse(patchOf(changes(before, after), Secrets::shown).text));
}

TEST(Patch, MakesTheSecondRecordOfTheFirst) {
  for (std::uint32_t seed = 0; seed < 3000; ++seed) {
    Value const before = Maker(seed).record(3);
    Value const after = Maker(seed + 1).record(3);
    ASSERT_EQ(patched(before, after), jsonOf(after)) << before.toJson();
  }
}

TEST(Patch, HoldsNothingWhereNothingChanges) {
  for (std::uint32_t seed = 0; seed < 300; ++seed) {
    Value const record = Maker(seed).record(3);
    ASSERT_TRUE(changes(record, record).empty()) << record.toJson();
    EXPECT_EQ(patchOf({}, Secrets::shown).text, "[]\n");
  }
}

TEST(Patch, LeavesAnUntouchedMemberOut) {
  Value const before =
      Value::object({{"same", 1}, {"number", 2}, {"list", Value::list({1, 2, 3})}});
  Value const after = Value::object({{"same", 1}, {"number", 3}, {"list", Value::list({1})}});
  EXPECT_EQ(Json::parse(patchOf(changes(before, after), Secrets::shown).text),
            Json::parse(R"([{"op":"replace","path":"/number","value":3},
                            {"op":"remove","path":"/list/2"},{"op":"remove","path":"/list/1"}])"));
}

TEST(Patch, LeavesSecretsOutAndNamesThem) {
  Value key = "open sesame";
  key.markSecret();
  Value number = 4711;
  number.markSecret();
  Value const before = Value::object({{"a", 1}, {"key", "x"}, {"gone", key}});
  Value const inner =
      Value::object({{"ssid", "x"}, {"key", key}, {"deep", Value::object({{"n", number}})}});
  Value const after = Value::object({{"a", 2},
                                     {"key", key},
                                     {"inner", inner},
                                     {"keys", Value::list({key, key})},
                                     {"list", Value::list({1, inner})}});
  Patch const patch = patchOf(changes(before, after), Secrets::masked);
  EXPECT_EQ(patch.leftOut, (std::vector<std::string>{"key", "inner.key", "inner.deep.n", "keys",
                                                     "list[1].key", "list[1].deep.n"}));
  for (char const* const secret : {"sesame", "4711", "***"}) {
    EXPECT_EQ(patch.text.find(secret), patch.text.npos) << secret;
  }
  EXPECT_EQ(Json::parse(patch.text), Json::parse(R"([
      {"op":"replace","path":"/a","value":2},
      {"op":"add","path":"/inner","value":{"ssid":"x","deep":{}}},
      {"op":"add","path":"/list","value":[1,{"ssid":"x","deep":{}}]},
      {"op":"remove","path":"/gone"}])"));
  EXPECT_TRUE(patchOf(changes(before, after), Secrets::shown).leftOut.empty());
  EXPECT_EQ(jsonOf(before).patch(Json::parse(patchOf(changes(before, after), Secrets::shown).text)),
            jsonOf(after));
}

TEST(Patch, PassesOverWhatWasNotCompared) {
  Value masked = "******";
  masked.markSecret();
  Value key = "open sesame";
  key.markSecret();
  std::vector<Change> const all =
      changes(Value::object({{"k", masked}}), Value::object({{"k", key}}));
  ASSERT_EQ(all.size(), 1U);
  EXPECT_EQ(all[0].kind, Change::Kind::masked);
  EXPECT_EQ(patchOf(all, Secrets::shown).text, "[]\n");
}

/// "value ~" for one change of that kind at the record's only member.
std::string kindsOf(Value const& before, Value const& after) {
  Value const a = Value::object({{"a", before}});
  Value const b = Value::object({{"a", after}});
  std::string all;
  for (Change const& change : changes(a, b)) {
    EXPECT_EQ(change.path.front(), 'a');
    char const* const names[] = {"added ", "removed ", "value ", "type ", "masked "};
    all += names[static_cast<int>(change.kind)];
  }
  return all;
}

// JSON writes them as null, so that a record that was read again has nothing there.
TEST(Changes, AreNoneAmongNumbersThatJsonHasNotAndNothing) {
  double const nan = std::numeric_limits<double>::quiet_NaN();
  double const infinity = std::numeric_limits<double>::infinity();
  for (Value const& a : {Value(), Value(nan), Value(infinity), Value(-infinity)}) {
    for (Value const& b : {Value(), Value(nan), Value(infinity), Value(-infinity)}) {
      EXPECT_EQ(kindsOf(a, b), "");
    }
  }
  EXPECT_EQ(kindsOf(nan, 1.5), "value ");
  EXPECT_EQ(kindsOf(1.5, infinity), "value ");
  EXPECT_EQ(kindsOf(nan, 1), "type ");
  EXPECT_EQ(kindsOf({}, "x"), "type ");
}

TEST(Changes, OfMasksAreUnknownWhereTheyHideASecret) {
  Value secret("open");
  secret.markSecret();
  Value masked("******");
  masked.markSecret();
  EXPECT_EQ(kindsOf(secret, "******"), "masked ");
  EXPECT_EQ(kindsOf("******", secret), "masked ");
  EXPECT_EQ(kindsOf(masked, masked), "masked ");
  EXPECT_EQ(kindsOf(secret, "other"), "value ");
  EXPECT_EQ(kindsOf(secret, 5), "type ");
  EXPECT_EQ(kindsOf("******", "open"), "value ") << "no secret";
}

TEST(Changes, OfASettingAreOne) {
  auto const setting = [](int value) {
    return Value::object({{"min", 0}, {"max", 9}, {"val", value}});
  };
  EXPECT_EQ(kindsOf(setting(5), setting(6)), "value ");
  EXPECT_EQ(kindsOf(setting(5), setting(5)), "");
  EXPECT_EQ(kindsOf(setting(5), 5), "type ");
}

TEST(ShownValue, IsOneLineWhateverItHolds) {
  EXPECT_EQ(shownValue(Value::object({{"a", 1}, {"b", Value::list({2, "x"})}, {"c", {}}}),
                       Secrets::masked),
            "{a: 1, b: [2, \"x\"], c: (nothing)}");
  EXPECT_EQ(shownValue(Value::list({Value::object({{"a", true}}), 5}), Secrets::masked),
            "[{a: yes}, 5]");
}

TEST(TypeOf, HasANameForEveryKind) {
  Value const values[] = {
      {}, true, -1, 1U, 0.5, "x", Value::keyword(1, "idle"), Value::list(), Value::object()};
  std::string names;
  for (Value const& value : values) names += std::string(typeOf(value)) + ", ";
  EXPECT_EQ(
      names,
      "nothing, a flag, a whole number, a whole number, a measure, a text, a keyword, a list, "
      "a record, ");
}

TEST(Changes, TellPathsThatLeadToTheValues) {
  for (std::uint32_t seed = 0; seed < 300; ++seed) {
    Value const before = Maker(seed).record(3);
    Value const after = Maker(seed + 1).record(3);
    for (Change const& change : changes(before, after)) {
      EXPECT_TRUE(change.before == nullptr || before.findAt(change.path) == change.before);
      EXPECT_TRUE(change.after == nullptr || after.findAt(change.path) == change.after);
    }
  }
}

}  // namespace

}  // namespace Kovra::tool

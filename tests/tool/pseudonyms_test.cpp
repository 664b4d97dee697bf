// Made-up values in place of true ones.

#include "pseudonyms.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Kovra::tool {

namespace {

Identity identityOf(std::string_view stem) {
  for (IdentityRow const& row : identityRows()) {
    if (stem == row.stem) return {row.group, &row};
  }
  ADD_FAILURE() << stem;
  return {};
}

using Values = std::vector<std::string>;

/// Pseudonyms of values that all are of one kind.
Pseudonyms madeUpFor(Values const& values, std::string_view stem) {
  Pseudonyms pseudonyms;
  for (std::string const& value : values) pseudonyms.add(value, identityOf(stem));
  pseudonyms.makeUp();
  return pseudonyms;
}

Values inPlaceOf(Values const& values, std::string_view stem) {
  Pseudonyms const pseudonyms = madeUpFor(values, stem);
  Values all;
  for (std::string const& value : values) all.push_back(pseudonyms.find(value)->madeUp);
  return all;
}

TEST(Pseudonyms, AreOneForEachValue) {
  EXPECT_EQ(inPlaceOf({"a", "b", "a", "c"}, "phrase"),
            (Values{"phrase-1", "phrase-2", "phrase-1", "phrase-3"}));
  EXPECT_EQ(madeUpFor({"a"}, "phrase").find("b"), nullptr);
}

TEST(Pseudonyms, AreNoValuesThatSomebodyHas) {
  Values const values = {"key-1",
                         "key-2",
                         "192.0.2.1",
                         "198.51.100.9",
                         "203.0.113.0",
                         "10.0.0.1",
                         "02:00:00:00:00:01",
                         "02-00-00-00-00-02",
                         "aa:bb:cc:dd:ee:ff",
                         "00000000-0000-4000-8000-000000000001",
                         "12345678-9abc-4def-8000-000000000001",
                         "2001:db8::1",
                         "fe80::1",
                         "host-1",
                         "address-1",
                         "1",
                         "2",
                         "11",
                         "A1",
                         ""};
  for (char const* const stem : {"key", "serial", "address", "host", "uuid", "job"}) {
    Values const madeUp = inPlaceOf(values, stem);
    EXPECT_EQ(std::set<std::string>(madeUp.begin(), madeUp.end()).size(), values.size()) << stem;
    for (std::string const& text : madeUp) {
      EXPECT_EQ(std::count(values.begin(), values.end(), text), 0) << stem << ' ' << text;
    }
  }
}

TEST(Pseudonyms, AreNoValuesInAnyCase) {
  Values values;
  for (int i = 1; i < 40; ++i) {
    char text[37];
    std::snprintf(text, sizeof text, "00000000-0000-4000-8000-0000000000%02X", i);
    values.push_back(text);
  }
  values.push_back("ABCDEF00-0000-4000-8000-000000000000");
  for (std::string const& text : inPlaceOf(values, "uuid")) {
    EXPECT_EQ(std::count(values.begin(), values.end(), text), 0) << text;
  }
}

TEST(Pseudonyms, AreOfTheSameKind) {
  EXPECT_EQ(inPlaceOf({"10.1.2.3", "10.1.2.4", "10.1.2.255", "10.1.3.3"}, "address"),
            (Values{"192.0.2.1", "192.0.2.2", "192.0.2.255", "198.51.100.1"}));
  EXPECT_EQ(inPlaceOf({"AA:BB:CC:DD:EE:FF", "aa-bb-cc-dd-ee-fe"}, "address"),
            (Values{"02:00:00:00:00:01", "02-00-00-00-00-02"}));
  EXPECT_EQ(inPlaceOf({"12345678-9abc-4def-8000-000000000001"}, "job"),
            (Values{"00000000-0000-4000-8000-000000000001"}));
  EXPECT_EQ(inPlaceOf({"fe80::1"}, "host"), (Values{"2001:db8::1"}));
  // A key is one, whatever it looks like.
  EXPECT_EQ(inPlaceOf({"10.1.2.3", "fe80::1"}, "key"), (Values{"key-1", "key-2"}));
}

TEST(Pseudonyms, OfWhatIsAlmostAnAddressAreTexts) {
  Values const values = {"AA:BB-CC:DD:EE:FF",
                         "AA:BB:CC:DD:EE:FG",
                         "AA:BB:CC:DD:EE:F",
                         "AA.BB.CC.DD.EE.FF",
                         "12345678-9abc-4def-8000-00000000000g",
                         "12345678-9abc-4def-8000:000000000001",
                         "10.1.2.256",
                         "10.1.2",
                         "fe80:1:2",
                         "fe80::g",
                         "fe80:0000:0000:0000:0000:0000:0000:0000:1::"};
  Values const madeUp = inPlaceOf(values, "host");
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(madeUp[i], "host-" + std::to_string(i + 1)) << values[i];
  }
  EXPECT_EQ(inPlaceOf({"1:2:3:4:5:6:7:8"}, "host"), (Values{"2001:db8::1"}));
}

TEST(Pseudonyms, OfManyLongAddressesHaveGroupsOfFourDigits) {
  Values values;
  for (int i = 0; i < 0x10001; ++i) {
    char text[16];
    std::snprintf(text, sizeof text, "fe80::%x:%x", i >> 8, i & 0xff);
    values.push_back(text);
  }
  Values const madeUp = inPlaceOf(values, "host");
  EXPECT_EQ(madeUp[0xfffe], "2001:db8::ffff");
  EXPECT_EQ(madeUp[0xffff], "2001:db8::1:0000");
  EXPECT_EQ(madeUp[0x10000], "2001:db8::1:0001");
}

/// Letters for letters, digits for digits, and all else as it is.
TEST(Pseudonyms, OfPatternsKeepTheirForm) {
  Values const values = {"XK-2041/b", "0x1A2f", "0042", "7", "Q", "--", "a b", "zz99"};
  Values const madeUp = inPlaceOf(values, "serial");
  auto const formOf = [](std::string text) {
    for (char& letter : text) {
      auto const byte = static_cast<unsigned char>(letter);
      letter = std::isdigit(byte) != 0   ? '0'
               : std::isupper(byte) != 0 ? 'A'
               : std::islower(byte) != 0 ? 'a'
                                         : letter;
    }
    return text;
  };
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values[i] == "--") continue;  // there is only one of that form
    EXPECT_EQ(formOf(madeUp[i]), formOf(values[i])) << madeUp[i];
  }
  EXPECT_EQ(madeUp[5], "serial-1");
}

TEST(Pseudonyms, OfPatternsThatAreUsedUpAreTexts) {
  Values digits;
  for (char digit = '0'; digit <= '9'; ++digit) digits.emplace_back(1, digit);
  Values const madeUp = inPlaceOf(digits, "serial");
  EXPECT_EQ(std::set<std::string>(madeUp.begin(), madeUp.end()).size(), digits.size());
  for (std::string const& text : madeUp) EXPECT_EQ(text.rfind("serial-", 0), 0U) << text;
}

TEST(Pseudonyms, OfMarkupAreTexts) {
  EXPECT_EQ(inPlaceOf({"<&>'\"", "a\nb"}, "serial"), (Values{"serial-1", "serial-2"}));
}

TEST(Pseudonyms, OfAddressesLastForManyNetworks) {
  Values values;
  for (int i = 0; i < 2000; ++i) {
    values.push_back("10." + std::to_string(i / 256) + '.' + std::to_string(i % 256) + ".1");
  }
  Values const madeUp = inPlaceOf(values, "address");
  EXPECT_EQ(std::set<std::string>(madeUp.begin(), madeUp.end()).size(), values.size());
}

TEST(Pseudonyms, HideValuesOfFourCharactersAndMore) {
  Pseudonyms const pseudonyms =
      madeUpFor({"abc", "abcd", "abcdef", "\xc3\xa4\xc3\xb6\xc3\xbc", "deaf:beef"}, "phrase");
  EXPECT_EQ(pseudonyms.hidden("abc"), "abc");
  EXPECT_EQ(pseudonyms.hidden("xabcdx"), "xphrase-2x");
  EXPECT_EQ(pseudonyms.hidden("abcdef abcde"), "phrase-3 phrase-2e");
  EXPECT_EQ(pseudonyms.hidden("\xc3\xa4\xc3\xb6\xc3\xbc"), "\xc3\xa4\xc3\xb6\xc3\xbc");
  EXPECT_EQ(pseudonyms.hidden(""), "");
}

TEST(Pseudonyms, HideAddressesInEitherCase) {
  Pseudonyms const pseudonyms = madeUpFor({"AA:BB:CC:DD:EE:FF"}, "address");
  EXPECT_EQ(pseudonyms.hidden("aa:bb:cc:dd:ee:ff AA:BB:CC:DD:EE:FF"),
            "02:00:00:00:00:01 02:00:00:00:00:01");
}

// Many values in a text.

using Spans = std::vector<std::pair<std::size_t, std::size_t>>;

Spans found(Values const& values, std::string_view text) {
  ValueFinder finder;
  for (std::size_t i = 0; i < values.size(); ++i) {
    finder.add(values[i], static_cast<std::uint32_t>(i));
  }
  finder.finish();
  Spans spans;
  for (ValueFinder::Found const& one : finder.in(text)) {
    spans.emplace_back(one.span.begin, one.span.end);
  }
  return spans;
}

TEST(ValueFinder, FindsTheLongest) {
  EXPECT_EQ(found({"she", "he", "hers"}, "ushers"), (Spans{{1, 4}, {4, 6}}));
  EXPECT_EQ(found({"ab", "abcd"}, "abcabcd"), (Spans{{0, 2}, {3, 7}}));
  EXPECT_EQ(found({"aa"}, "aaaaa"), (Spans{{0, 2}, {2, 4}, {4, 5}}));
  EXPECT_EQ(found({}, "text"), Spans());
}

/// Every byte of every value is in something that was found, and nothing else is.
TEST(ValueFinder, CoversEveryValueAndNothingElse) {
  Values const values = {"ab", "ba", "aab", "bbb", "abba"};
  for (unsigned bits = 0; bits < 1U << 12U; ++bits) {
    std::string text;
    for (unsigned i = 0; i < 12; ++i) text += (bits >> i & 1U) != 0 ? 'a' : 'b';
    std::string expected(text.size(), '.');
    for (std::string const& value : values) {
      for (std::size_t at = 0; (at = text.find(value, at)) != text.npos; ++at) {
        expected.replace(at, value.size(), value.size(), '#');
      }
    }
    std::string covered(text.size(), '.');
    std::size_t end = 0;
    for (auto const& [from, to] : found(values, text)) {
      ASSERT_LE(end, from) << text;
      ASSERT_LT(from, to) << text;
      covered.replace(from, to - from, to - from, '#');
      end = to;
    }
    ASSERT_EQ(covered, expected) << text;
  }
}

}  // namespace

}  // namespace Kovra::tool

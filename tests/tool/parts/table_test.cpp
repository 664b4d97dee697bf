#include "table.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "values.hpp"

namespace Kovra::tool {

namespace {

std::string tableOf(std::vector<Member> members, Secrets secrets = Secrets::masked) {
  return table(readingOf(std::move(members)), "get_probe", secrets, "");
}

TEST(Table, AlignsValuesBehindTheLongestName) {
  EXPECT_EQ(tableOf({{"a", integer(-1)}, {"much_longer", natural(2)}}),
            "probe <get_probe>\n"
            "  a            -1\n"
            "  much_longer  2\n");
}

TEST(Table, NamesTheSourceWhenThereAreSeveral) {
  EXPECT_EQ(table(readingOf({}), "get_probe", Secrets::masked, "a.xml"),
            "a.xml: probe <get_probe>\n");
}

TEST(Table, ShowsEveryKindOfValueForPeople) {
  EXPECT_EQ(tableOf({{"nothing", Value()},
                     {"on", flag(true)},
                     {"off", flag(false)},
                     {"bits", bits(26)},
                     {"no_bits", bits(0)},
                     {"real", real(24.35)},
                     {"broken", real(std::numeric_limits<double>::quiet_NaN())},
                     {"text", text("two words")},
                     {"empty", text("")},
                     {"known", keyword(3, "printing_heating", true)},
                     {"unknown", keyword(38, "sleeping", false)}}),
            "probe <get_probe>\n"
            "  nothing  (nothing)\n"
            "  on       yes\n"
            "  off      no\n"
            "  bits     0x1a\n"
            "  no_bits  0x0\n"
            "  real     24.35\n"
            "  broken   nan\n"
            "  text     two words\n"
            "  empty    \"\"\n"
            "  known    printing_heating (3)\n"
            "  unknown  \"sleeping\" (38, unknown)\n");
}

TEST(Table, IndentsRecordsAndNumbersLists) {
  EXPECT_EQ(tableOf({{"count", integer(2)},
                     {"jobs", list({record({{"id", integer(7)}}), record({}), text("odd")})},
                     {"ribbon", record({{"panels", list({text("yellow")})}})},
                     {"none", list({})}}),
            "probe <get_probe>\n"
            "  count     2\n"
            "  jobs\n"
            "    1\n"
            "      id    7\n"
            "    2       (empty)\n"
            "    3       odd\n"
            "  ribbon\n"
            "    panels\n"
            "      1     yellow\n"
            "  none      (none)\n");
}

TEST(Table, MasksSecrets) {
  std::vector<Member> const members{
      {"key", secret(text("a key"))},
      {"keys", list({secret(text("first"))})},
      {"security", secret(keyword(1, "wpa", true))},
  };
  EXPECT_EQ(tableOf(members),
            "probe <get_probe>\n"
            "  key       ******\n"
            "  keys\n"
            "    1       ******\n"
            "  security  wpa (1)\n");
  EXPECT_EQ(tableOf(members, Secrets::shown),
            "probe <get_probe>\n"
            "  key       a key\n"
            "  keys\n"
            "    1       first\n"
            "  security  wpa (1)\n");
}

TEST(Table, NeverDrivesTheTerminal) {
  std::string const hostile =
      "\x1b[2J\n\xc2\x9b"
      "31m\xff";
  std::string const harmless = "\\x1b[2J\\n\\u009b31m\\xff";
  EXPECT_EQ(table(readingOf({{"text", text(hostile)}, {"word", keyword(0, hostile, false)}}),
                  hostile, Secrets::masked, hostile),
            harmless + ": probe <" + harmless + ">\n  text  " + harmless + "\n  word  \"" +
                harmless + "\" (0, unknown)\n");
}

TEST(Table, SaysThatTheLibraryReportsFalse) {
  Reading reading = readingOf({{"a", integer(1)}});
  reading.result = false;
  EXPECT_EQ(table(reading, "get_probe", Secrets::masked, ""),
            "probe <get_probe>\n"
            "  a  1\n"
            "  (the library reports false for this reply)\n");
}

TEST(Columns, AlignAllButTheLast) {
  EXPECT_EQ(columns({{"a", "long", "x"}, {"long", "b", "y"}, {"c"}}),
            "a     long  x\n"
            "long  b     y\n"
            "c\n");
}

}  // namespace

}  // namespace Kovra::tool

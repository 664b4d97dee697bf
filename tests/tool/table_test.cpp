#include "table.hpp"

#include <gtest/gtest.h>

#include <kovra.hpp>
#include <limits>
#include <string>

namespace Kovra::tool {

namespace {

/// A value that people read as bits: only readings make them.
Value bits(std::string const& number) {
  return decode("<get_general_status><alarms>" + number + "</alarms></get_general_status>")
      .readings()
      .at(0)
      .record()
      .at("alarms");
}

Value secret(Value value) {
  value.markSecret();
  return value;
}

TEST(Rows, AlignValuesBehindTheLongestName) {
  EXPECT_EQ(rows(Value::object({{"a", -1}, {"much_longer", 2U}}), Secrets::masked),
            "  a            -1\n"
            "  much_longer  2\n");
}

TEST(Rows, ShowEveryKindOfValueForPeople) {
  EXPECT_EQ(rows(Value::object({{"nothing", Value()},
                                {"on", true},
                                {"off", false},
                                {"bits", bits("0x1A")},
                                {"no_bits", bits("0x0")},
                                {"least", std::numeric_limits<long>::min()},
                                {"most", std::numeric_limits<unsigned long>::max()},
                                {"real", 24.35},
                                {"broken", std::numeric_limits<double>::quiet_NaN()},
                                {"text", "two words"},
                                {"empty", ""},
                                {"known", Value::keyword(3, "printing_heating")},
                                {"unknown", Value::unknownKeyword(38, "sleeping")}}),
                 Secrets::masked),
            "  nothing  (nothing)\n"
            "  on       yes\n"
            "  off      no\n"
            "  bits     0x1a\n"
            "  no_bits  0x0\n"
            "  least    -9223372036854775808\n"
            "  most     18446744073709551615\n"
            "  real     24.35\n"
            "  broken   nan\n"
            "  text     two words\n"
            "  empty    \"\"\n"
            "  known    printing_heating (3)\n"
            "  unknown  \"sleeping\" (38, unknown)\n");
}

TEST(Rows, IndentRecordsAndNumberLists) {
  EXPECT_EQ(rows(Value::object(
                     {{"count", 2},
                      {"jobs", Value::list({Value::object({{"id", 7}}), Value::object(), "odd"})},
                      {"ribbon", Value::object({{"panels", Value::list({"yellow"})}})},
                      {"none", Value::list()}}),
                 Secrets::masked),
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

TEST(Rows, ShowSettingsWithTheirBoundsInOneLine) {
  Value const record =
      Value::object({{"contrast", Value::object({{"min", 0}, {"max", 63}, {"val", 40}})},
                     {"speed", Value::object({{"val", 2.5}, {"min", 0.5}, {"max", 4}})},
                     {"alone", Value::object({{"val", 175}})},
                     {"half", Value::object({{"max", 9}, {"val", 3}})},
                     {"text", Value::object({{"val", "a b"}, {"min", 1}, {"max", secret(2)}})},
                     {"no_setting", Value::object({{"min", 1}, {"max", 2}})},
                     {"more", Value::object({{"val", 1}, {"unit", 2}})},
                     {"list", Value::list({Value::object({{"min", 1}, {"max", 3}, {"val", 2}})})}});
  EXPECT_EQ(rows(record, Secrets::masked),
            "  contrast    40 [0..63]\n"
            "  speed       2.5 [0.5..4]\n"
            "  alone       175\n"
            "  half        3 [?..9]\n"
            "  text        \"a b\" [1..******]\n"
            "  no_setting\n"
            "    min       1\n"
            "    max       2\n"
            "  more\n"
            "    val       1\n"
            "    unit      2\n"
            "  list\n"
            "    1         2 [1..3]\n");
}

/// The rows with what the record itself is a sign of.
std::string judged(Value const& record) {
  return rows(record, Secrets::masked, signsOf(factsOf("some-message", record)));
}

TEST(Rows, BeginWithWhatNeedsSomebodyTheMostUrgentFirst) {
  EXPECT_EQ(judged(Value::object({{"count", 2},
                                  {"warning", 3},
                                  {"feeder_state", Value::unknownKeyword(9, "sideways")},
                                  {"printer_state", Value::keyword(7, "offline")},
                                  {"alarms", bits("0x12")}})),
            "! printer_state  offline (7)\n"
            "! alarms         bits 1, 4 (0x12)\n"
            "* warning        3\n"
            "? feeder_state   \"sideways\" (9, unknown)\n"
            "  count          2\n");
}

TEST(Rows, MarkWhatStandsInARecordFirstAndInItsPlace) {
  EXPECT_EQ(
      judged(Value::object({{"count", 2},
                            {"ribbon", Value::object({{"initial_size", 500}, {"remaining", 0}})},
                            {"film", Value::object({{"initial_size", 1000}, {"remaining", 99}})}})),
      "! ribbon.remaining  0 of 500: empty\n"
      "* film.remaining    99 of 1000: low\n"
      "  count             2\n"
      "  ribbon\n"
      "    initial_size    500\n"
      "!   remaining       0\n"
      "  film\n"
      "    initial_size    1000\n"
      "*   remaining       99\n");
}

TEST(Rows, TellEqualSignsOfAListOnce) {
  Value const jammed = Value::object({{"job_state", Value::keyword(5, "jam")}});
  Value const done = Value::object({{"job_state", Value::keyword(7, "done")}});
  EXPECT_EQ(judged(Value::object({{"jobs", Value::list({jammed, done, jammed})}})),
            "* jobs.job_state  jam (5), 2 times\n"
            "  jobs\n"
            "    1\n"
            "*     job_state   jam (5)\n"
            "    2\n"
            "      job_state   done (7)\n"
            "    3\n"
            "*     job_state   jam (5)\n");
}

TEST(Rows, MaskSecretsWhateverTheirTypeAndLength) {
  Value const record = Value::object({{"key", secret("a key")},
                                      {"none", secret("")},
                                      {"pin", secret(1234)},
                                      {"measure", secret(1.5)},
                                      {"is_set", secret(true)},
                                      {"keys", Value::list({secret("first"), "public"})}});
  EXPECT_EQ(rows(record, Secrets::masked),
            "  key      ******\n"
            "  none     ******\n"
            "  pin      ******\n"
            "  measure  ******\n"
            "  is_set   ******\n"
            "  keys\n"
            "    1      ******\n"
            "    2      public\n");
  EXPECT_EQ(rows(record, Secrets::shown),
            "  key      a key\n"
            "  none     \"\"\n"
            "  pin      1234\n"
            "  measure  1.5\n"
            "  is_set   yes\n"
            "  keys\n"
            "    1      first\n"
            "    2      public\n");
}

TEST(Rows, MaskNeitherKeywordsNorWholeListsAndRecords) {
  EXPECT_EQ(rows(Value::object({{"security", secret(Value::keyword(1, "wpa"))},
                                {"list", secret(Value::list({1}))},
                                {"record", secret(Value::object({{"a", 2}}))},
                                {"nothing", secret(Value())}}),
                 Secrets::masked),
            "  security  wpa (1)\n"
            "  list\n"
            "    1       1\n"
            "  record\n"
            "    a       2\n"
            "  nothing   (nothing)\n");
}

std::string const hostile =
    "\x1b[2J\n\xc2\x9b"
    "31m\xff";
std::string const harmless = "\\x1b[2J\\n\\u009b31m\\xff";

TEST(Rows, NeverDriveTheTerminal) {
  EXPECT_EQ(rows(Value::object({{"text", hostile}, {"word", Value::unknownKeyword(0, hostile)}}),
                 Secrets::masked),
            "  text  " + harmless + "\n  word  \"" + harmless + "\" (0, unknown)\n");
}

/// The table of a reply's only reading.
std::string tableOf(std::string const& reply, std::string const& root, std::string const& source) {
  return table(decode(reply).readings().at(0), root, Secrets::masked, source);
}

TEST(Table, HasAHeadingWithTheMessageAndTheRoot) {
  std::string const reply = "<get_general_status><error>1</error></get_general_status>";
  EXPECT_EQ(tableOf(reply, "get_general_status", ""),
            "general-status <get_general_status>\n"
            "! error  1\n");
  EXPECT_EQ(tableOf(reply, "get_general_status", "a.xml"),
            "a.xml: general-status <get_general_status>\n"
            "! error  1\n");
  EXPECT_EQ(tableOf(reply, hostile, hostile),
            harmless + ": general-status <" + harmless + ">\n! error  1\n");
}

TEST(Table, SaysThatTheLibraryReportsFalse) {
  EXPECT_EQ(
      tableOf("<get_general_status><error>0</error><error/></get_general_status>", "root", ""),
      "general-status <root>\n"
      "  error  0\n"
      "  (the library reports false for this reply)\n");
}

TEST(Table, DoesNotSayItWhereItIsFalseForEveryReply) {
  EXPECT_EQ(tableOf("<configuration><standby_timeout>15</standby_timeout></configuration>",
                    "configuration", ""),
            "configuration <configuration>\n"
            "  standby_timeout  15\n");
}

TEST(Table, SaysOfAnEmptyRecordOnlyThatItIsEmpty) {
  EXPECT_EQ(tableOf("<get_general_status><fan>1</fan></get_general_status>", "root", ""),
            "general-status <root>\n"
            "  (nothing that Kovra knows)\n");
}

TEST(Columns, AlignAllButTheLast) {
  EXPECT_EQ(columns({{"a", "long", "x"}, {"long", "b", "y"}, {"c"}}),
            "a     long  x\n"
            "long  b     y\n"
            "c\n");
}

}  // namespace

}  // namespace Kovra::tool

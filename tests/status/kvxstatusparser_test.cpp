#include "kvxstatusparser.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <thread>
#include <vector>

#include "support/general_status.hpp"
#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/status_reply.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"
#include "support/words.hpp"

namespace Kovra {
namespace {

using test::element;
using test::expectWords;
using test::filled;
using test::generalStatusReply;
using test::LocaleGuard;
using test::Rule;
using test::same;
using test::Tree;
using test::wide;

test::StatusReply<KVGeneralStatus> const status{"get_general_status", &KVXStatusParser::ParseStatus,
                                                &KVXStatusParser::parseStatus};

test::Outcome<KVGeneralStatus> parsed(std::wstring const& text) {
  return status.parsed(text, static_cast<int>(text.size()));
}

// ---- Members ---------------------------------------------------------------------------------

constexpr test::MemberCase<KVGeneralStatus> memberCases[] = {
    {"", "printer_state", "card_ready", [](auto& record) { record.printer_state = 35; }},
    {"", "alarms", "0x1A", [](auto& record) { record.alarms = 26; }},
    {"", "error", "42", [](auto& record) { record.error = 42; }},
    {"", "printer_lock", "locked", [](auto& record) { record.printer_lock = 1; }},
    {"", "num_jobs_receiving_or_pending", "1",
     [](auto& record) { record.num_jobs_receiving_or_pending = 1; }},
    {"", "num_jobs_inprogress", "2", [](auto& record) { record.num_jobs_inprogress = 2; }},
    {"", "num_jobs_done_ok", "3", [](auto& record) { record.num_jobs_done_ok = 3; }},
    {"", "num_jobs_done_error", "4", [](auto& record) { record.num_jobs_done_error = 4; }},
    {"", "num_jobs_total", "5", [](auto& record) { record.num_jobs_total = 5; }},
    {"", "action_id_next", "6", [](auto& record) { record.action_id_next = 6; }},
    {"", "warning", "7", [](auto& record) { record.warning = 7; }},
    {"", "laminator_state", "door_open", [](auto& record) { record.laminator_state = 11; }},
    {"", "param_chg_counter", "8", [](auto& record) { record.param_chg_counter = 8; }},
};

TEST(GeneralStatus, ReadsEachElementIntoItsMemberAndLeavesItWhenItIsEmpty) {
  status.expectMembers(memberCases);
}

TEST(GeneralStatus, ReadsEveryMemberOfAWholeReplyAndNothingOfARefusedOne) {
  status.expectWideEntry(generalStatusReply, test::setGeneralStatus);
}

TEST(GeneralStatus, ReadsNumbersInTheWayOfTheHelper) {
  for (auto const& member : memberCases) {
    if (std::string(member.text).find_first_not_of("0123456789") != std::string::npos) continue;
    std::string const name = member.name;
    status.expectRead(element(name, "  +" + std::string(member.text) + "abc"), member.set);
    auto const none = status.parsedChildren(element(name, "none"));
    EXPECT_TRUE(none.result) << name;
    EXPECT_TRUE(same(none.record, status.parsedChildren(element(name, "0")).record)) << name;
  }
  status.expectRead("<error>-42</error>", [](auto& record) { record.error = -42; });
}

TEST(GeneralStatus, ParameterChangeCounterWrapsAt65536) {
  struct {
    char const* text;
    unsigned long counter;
  } const cases[] = {{"0", 0},     {"65535", 65535}, {"65536", 0},
                     {"65537", 1}, {"70000", 4464},  {"-1", 65535}};
  for (auto const& [text, counter] : cases) {
    status.expectRead(
        element("param_chg_counter", text),
        [value = counter](KVGeneralStatus& record) { record.param_chg_counter = value; });
  }
}

TEST(GeneralStatus, AlarmsAreHexadecimalBehind0x) {
  struct {
    std::string text;
    unsigned int alarms;
  } const cases[] = {{"0x1A", 26},
                     {"0x1a", 26},
                     {"0x0", 0},
                     {"0xFFFFFFFF", UINT_MAX},
                     {"0x1Az", 26},
                     {"0x" + std::string(27, '0') + "1A", 26},  // 31 characters
                     {"0x" + std::string(28, '0') + "1A", 1}};  // the 32nd is not read
  for (auto const& [text, alarms] : cases) {
    status.expectRead(element("alarms", text),
                      [value = alarms](KVGeneralStatus& record) { record.alarms = value; });
  }
}

TEST(GeneralStatus, AlarmsWithout0xAreReadAndStoreNothing) {
  for (char const* const text : {"0", "26", "1A", "0X1A", "0x", "0xg", "none"}) {
    status.expectRead(element("alarms", text), [](KVGeneralStatus&) {});
  }
}

TEST(GeneralStatus, PrinterLockIsSetByItsExactWordOnly) {
  status.expectRead(element("printer_lock", "locked"),
                    [](auto& record) { record.printer_lock = 1; });
  for (std::string const& text :
       {std::string("unlocked"), std::string("Locked"), std::string("LOCKED"), std::string("lock"),
        std::string("locked."), std::string("1"), std::string("yes"),
        "locked" + std::string(100, 'x')}) {
    status.expectRead(element("printer_lock", text), [](auto& record) { record.printer_lock = 0; });
  }
}

TEST(GeneralStatus, PrinterStates) {
  expectWords({Rule::exact,
               38,
               {{"initializing", 1},
                {"idle", 2},
                {"xfer_rollers_heating", 3},
                {"printing_heating", 3},
                {"standby", 4},
                {"printing", 5},
                {"alarm_handling", 6},
                {"offline", 7},
                {"canceling", 8},
                {"temp_out_of_range", 9},
                {"mag_ops", 10},
                {"contact_ops", 11},
                {"contactless_ops", 12},
                {"config_data", 13},
                {"job_data", 14},
                {"diagnostic_mode", 15},
                {"xfer_rollers_cooling", 16},
                {"printing_cooling", 16},
                {"laminating_cooling", 16},
                {"insert_card", 17},
                {"laminating", 18},
                {"laminating_heating", 19},
                {"card_ready", 35},
                {"cleaning", 26}}},
              [](char* word) {
                int const code = KVXStatusParser().printerStateToInt(word);
                if (word != nullptr && *word != '\0') {
                  status.expectRead(
                      "<printer_state><![CDATA[" + std::string(word) + "]]></printer_state>",
                      [&](auto& record) { record.printer_state = code; });
                }
                return code;
              });
}

TEST(GeneralStatus, LaminatorStates) {
  expectWords({Rule::exact,
               0,
               {{"uninitialized", 1},
                {"initializing", 2},
                {"ready", 3},
                {"standby", 4},
                {"laminating", 5},
                {"not_ready", 6},
                {"not_used", 7},
                {"init_error", 8},
                {"comm_error", 9},
                {"fault_error", 10},
                {"door_open", 11}}},
              [](char* word) {
                int const code = KVXStatusParser().lamStateToInt(word);
                if (word != nullptr && *word != '\0') {
                  status.expectRead(
                      "<laminator_state><![CDATA[" + std::string(word) + "]]></laminator_state>",
                      [&](auto& record) { record.laminator_state = code; });
                }
                return code;
              });
}

TEST(GeneralStatus, StatesTakeWordsInEveryForm) {
  KVXStatusParser parser;
  char array[] = "idle";
  char const* const readOnly = "ready";
  EXPECT_EQ(parser.printerStateToInt(array), 2);
  EXPECT_EQ(parser.printerStateToInt("printing_cooling"), 16);
  EXPECT_EQ(parser.printerStateToInt("Idle"), 38);
  EXPECT_EQ(parser.printerStateToInt(nullptr), 38);
  EXPECT_EQ(parser.lamStateToInt(readOnly), 3);
  EXPECT_EQ(parser.lamStateToInt("Ready"), 0);
  EXPECT_EQ(parser.lamStateToInt(nullptr), 0);
}

// ---- The walk over a reply -------------------------------------------------------------------

TEST(GeneralStatus, ResultIsThatOfTheLastKnownElement) {
  struct {
    char const* children;
    bool result;
  } const cases[] = {{"<error>1</error><warning/>", false},
                     {"<error>1</error><warning></warning>", false},
                     {"<warning/><error>1</error>", true},
                     {"<error>1</error><warning/><unknown>2</unknown>", false},
                     {"<warning/><error>1</error><unknown/>", true},
                     {"<error>1</error><error/>", false}};
  for (auto const& [children, result] : cases) {
    status.expect(result, children, [](auto& record) { record.error = 1; });
  }
}

TEST(GeneralStatus, TakesTheLaterOfTwoElements) {
  status.expectRead("<error>1</error><warning>2</warning><error>3</error>", [](auto& record) {
    record.error = 3;
    record.warning = 2;
  });
  // Of two alarms, the second of which is none, the first stays.
  status.expectRead("<alarms>0x1</alarms><alarms>2</alarms>",
                    [](auto& record) { record.alarms = 1; });
}

TEST(GeneralStatus, SkipsWhatItDoesNotKnow) {
  status.expectRead(
      "text<!-- <error>1</error> --><new_in_2030><error>2</error></new_in_2030>"
      "<error>3</error><![CDATA[<error>4</error>]]><?x?>",
      [](auto& record) { record.error = 3; });
}

TEST(GeneralStatus, FailsUntouchedWithoutAnyKnownElement) {
  for (char const* const children : {"", " ", "text", "<!-- a -->", "<unknown>1</unknown>"}) {
    status.expectSkipped(children);
  }
}

TEST(GeneralStatus, ReadsTheFirstChildOfAnElementWhateverItIs) {
  status.expectRead("<error><!-- 12 -->34</error>", [](auto& record) { record.error = 12; });
  status.expectRead("<printer_state><idle/></printer_state>",
                    [](auto& record) { record.printer_state = 2; });
}

TEST(GeneralStatus, ElementReaderNeedsAnElementWithChildren) {
  test::expectNeedsChildren(filled<KVGeneralStatus>(), [](TiXmlElement* root, auto& record) {
    return KVXStatusParser().parseStatus(root, record);
  });
}

TEST(GeneralStatus, ElementReaderDoesNotAskForTheNameOfItsElement) {
  auto record = filled<KVGeneralStatus>();
  EXPECT_TRUE(KVXStatusParser().parseStatus(Tree("<any><error>1</error></any>").root(), record));
  EXPECT_EQ(record.error, 1);
}

// ---- The wide entry --------------------------------------------------------------------------

TEST(GeneralStatus, MayLackWhatStandsBehindItsRoot) {
  std::wstring const text = wide(generalStatusReply);
  auto const size = static_cast<int>(text.size());
  EXPECT_TRUE(status.parsed(text, size - 1).result);   // the line break
  EXPECT_FALSE(status.parsed(text, size - 2).result);  // the '>'
}

TEST(GeneralStatus, IsReadUpToItsTerminatorWhenItsLengthGoesBeyond) {
  std::wstring const text = wide(generalStatusReply) + L'\0';
  for (int const length : {static_cast<int>(text.size()), 100000, INT_MAX}) {
    EXPECT_TRUE(status.parsed(text, length).result) << length;
  }
}

TEST(GeneralStatus, IsRefusedUntouchedWhenMalformedAlsoWhereATreeWasLeft) {
  for (char const* const xml :
       {"<get_general_status><error>1</error>", "<get_general_status><error>1</error></other>",
        "<get_general_status><error>1</error><warning>",
        "<get_general_status><error>1</error><a b c/></get_general_status>",
        "<get_general_status><error>1</error></get_general_status><open>", "no document", " "}) {
    status.expectRefused(parsed(wide(xml)), xml);
  }
}

TEST(GeneralStatus, IsReadWithWhatTinyXmlTolerates) {
  for (char const* const xml :
       {"<get_general_status><error>1</error></get_general_status>text behind",
        "<get_general_status><error>1</error></get_general_status>"
        "<get_general_status><error>2</error></get_general_status>",
        "<other/><get_general_status><error>1</error></get_general_status>",
        "<get_general_status><error>1 & 2</error></get_general_status>",
        "<get_general_status a=1><error>1</error></get_general_status >"}) {
    auto const [result, record] = parsed(wide(xml));
    EXPECT_TRUE(result) << xml;
    EXPECT_EQ(record.error, 1) << xml;
  }
}

TEST(GeneralStatus, EndsAtACharacterThatTheLocaleLacks) {
  std::wstring const within =
      L"<get_general_status><error>1</error><owner>Zo\u00EB</owner></get_general_status> ";
  std::wstring const behind = L"<get_general_status><error>1</error></get_general_status>\u00EB";
  std::wstring const marked = L"\uFEFF<get_general_status><error>1</error></get_general_status>  ";
  {
    LocaleGuard const guard("C");
    status.expectRefused(parsed(within), "within, C");
    status.expectRefused(parsed(marked), "byte order mark, C");
    EXPECT_TRUE(parsed(behind).result);
  }
  LocaleGuard const guard("C.UTF-8");
  EXPECT_TRUE(parsed(within).result);
  EXPECT_TRUE(parsed(marked).result);
  EXPECT_TRUE(parsed(behind).result);
  EXPECT_EQ(parsed(within).record.error, 1);
  EXPECT_EQ(parsed(marked).record.error, 1);
}

TEST(GeneralStatus, OneParserReadsAnyNumberOfReplies) {
  KVXStatusParser parser;
  auto record = filled<KVGeneralStatus>();
  std::wstring const good = L"<get_general_status><error>1</error></get_general_status>";
  std::wstring const bad = L"<get_general_status><error>2</error>";
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(parser.ParseStatus(*bad.c_str(), static_cast<int>(bad.size()), record));
    EXPECT_TRUE(parser.ParseStatus(*good.c_str(), static_cast<int>(good.size()), record));
    EXPECT_EQ(record.error, 1);
  }
}

TEST(KVXStatusParser, HasEveryOperationOfGeneralStatusWithItsSignature) {
  using P = KVXStatusParser;
  [[maybe_unused]] bool (P::*const entry)(wchar_t const&, int, KVGeneralStatus&) = &P::ParseStatus;
  [[maybe_unused]] bool (P::*const reader)(TiXmlElement*, KVGeneralStatus&) = &P::parseStatus;
  int (P::*const conversions[])(char*) = {&P::printerStateToInt, &P::lamStateToInt};
  char standby[] = "standby";
  for (auto const conversion : conversions) EXPECT_EQ((P().*conversion)(standby), 4);
}

// ---- Threads ---------------------------------------------------------------------------------

TEST(ThreadsGeneralStatus, ReadDifferentRepliesAtOnce) {
  constexpr int threadCount = 8;
  constexpr int rounds = 200;
  std::vector<int> wrong(threadCount);
  std::vector<std::thread> threads;
  for (int number = 0; number < threadCount; ++number) {
    threads.emplace_back([number, &mistakes = wrong[static_cast<std::size_t>(number)]] {
      for (int round = 0; round < rounds; ++round) {
        int const error = number * rounds + round;
        std::wstring const text =
            wide("<get_general_status><error>" + std::to_string(error) + "</error><printer_state>" +
                 (number % 2 == 0 ? "idle" : "printing") + "</printer_state></get_general_status>");
        auto const [result, record] = parsed(text);
        bool const good =
            result && record.error == error && record.printer_state == (number % 2 == 0 ? 2 : 5);
        bool const cut = parsed(text.substr(0, text.size() - 1)).result;
        mistakes += good && !cut ? 0 : 1;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<int>(threadCount, 0));
}

TEST(ThreadsGeneralStatus, ShareOneParserAndOneReply) {
  constexpr int threadCount = 4;
  KVXStatusParser parser;
  std::wstring const text = wide(generalStatusReply);
  std::vector<KVGeneralStatus> records(threadCount, filled<KVGeneralStatus>());
  std::vector<std::thread> threads;
  for (KVGeneralStatus& record : records) {
    threads.emplace_back([&] {
      for (int round = 0; round < 100; ++round) {
        parser.ParseStatus(*text.c_str(), static_cast<int>(text.size()), record);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  auto expected = filled<KVGeneralStatus>();
  test::setGeneralStatus(expected);
  for (KVGeneralStatus const& record : records) EXPECT_TRUE(same(record, expected));
}

}  // namespace
}  // namespace Kovra

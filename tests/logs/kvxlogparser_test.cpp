#include "kvxlogparser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "support/records.hpp"
#include "support/status_reply.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::element;
using test::expectNeedsChildren;
using test::filled;
using test::MemberCase;
using test::same;
using test::StatusReply;
using test::Tree;
using test::untouched;
using test::wide;

/// The entries take a length that has no sign.
unsigned long lengthOf(int len) {
  return static_cast<unsigned long>(std::max(len, 0));
}

// ---- One service event -----------------------------------------------------------------------

/// Reads one event: as the only one of a history, and by the reader of its element.
struct ServiceParser : KVXLogParser {
  bool listed(wchar_t const& text, int len, _tagLogServiceValues& out) {
    std::wstring const history = L"<get_log_service_history>" + std::wstring(&text, lengthOf(len)) +
                                 L"</get_log_service_history>";
    _tagLogServiceXML record{1, &out};
    return ParseLogServiceXML(*history.c_str(), history.size(), record);
  }
};

StatusReply<_tagLogServiceValues, ServiceParser> const service{"service", &ServiceParser::listed,
                                                               &ServiceParser::getServiceValues};

constexpr MemberCase<_tagLogServiceValues> serviceMembers[] = {
    {"", "number", "17", [](auto& record) { record.number = 17; }},
    {"", "code", "2304", [](auto& record) { record.code = 2304; }},
    {"", "year", "2025", [](auto& record) { record.year = 2025; }},
    {"", "month", "11", [](auto& record) { record.month = 11; }},
    {"", "card_count", "70000", [](auto& record) { record.card_count = 70000; }},
};

TEST(ServiceEvent, ReadsEachElementIntoItsMember) {
  service.expectMembers(serviceMembers);
}

TEST(ServiceEvent, NeverReadsADay) {
  service.expectSkipped(element("day", "24"));
  std::string children;
  for (auto const& member : serviceMembers) children += element(member.name, member.text);
  service.expectRead(children + element("day", "24"), [](auto& record) {
    for (auto const& member : serviceMembers) member.set(record);
  });
}

TEST(ServiceEvent, TakesNumbersAsTheyAreSent) {
  service.expectRead(element("code", "-1"), [](auto& record) { record.code = -1; });
  service.expectRead(element("code", "2147483648"), [](auto& record) { record.code = INT_MIN; });
  service.expectRead(element("code", " 12abc"), [](auto& record) { record.code = 12; });
  service.expectRead(element("code", "0x1A"), [](auto& record) { record.code = 0; });
}

TEST(ServiceEvent, ResultIsThatOfTheLastKnownElement) {
  auto const one = [](auto& record) { record.code = 1; };
  service.expect(false, "<code>1</code><card_count/><unknown>1</unknown>", one);
  service.expect(true, "<card_count/><code>7</code><code>1</code><unknown/>", one);
  service.expectSkipped("<unknown>1</unknown>");
  expectNeedsChildren(service.start, [](TiXmlElement* element, _tagLogServiceValues& record) {
    return KVXLogParser().getServiceValues(element, record);
  });
}

// ---- The service history ---------------------------------------------------------------------

/// A host's array with the room that it tells.
struct History {
  int count;
  _tagLogServiceValues entries[5];
};

struct HistoryParser : KVXLogParser {
  bool entry(wchar_t const& text, int len, History& out) {
    return into(out, [&](auto& record) { return ParseLogServiceXML(text, lengthOf(len), record); });
  }
  bool reader(TiXmlElement* root, History& out) {
    return into(out, [&](auto& record) { return parseServiceHistoryValues(root, record); });
  }

 private:
  template <class Read>
  static bool into(History& out, Read read) {
    _tagLogServiceXML record{out.count, out.entries};
    bool const result = read(record);
    EXPECT_EQ(record.count, out.count) << "the room is not changed";
    EXPECT_EQ(record.entries, out.entries);
    return result;
  }
};

/// A history read into an array with room for `count` entries.
StatusReply<History, HistoryParser> historyWithRoom(int count) {
  StatusReply<History, HistoryParser> history{"get_log_service_history", &HistoryParser::entry,
                                              &HistoryParser::reader};
  history.start.count = count;
  return history;
}

/// The same without an array: only the count is asked for.
struct CountParser : KVXLogParser {
  bool entry(wchar_t const& text, int len, int& count) {
    return into(count,
                [&](auto& record) { return ParseLogServiceXML(text, lengthOf(len), record); });
  }
  bool reader(TiXmlElement* root, int& count) {
    return into(count, [&](auto& record) { return parseServiceHistoryValues(root, record); });
  }

 private:
  template <class Read>
  static bool into(int& count, Read read) {
    _tagLogServiceXML record{count, nullptr};
    bool const result = read(record);
    EXPECT_EQ(record.entries, nullptr);
    count = record.count;
    return result;
  }
};

StatusReply<int, CountParser> const sizeQuery{"get_log_service_history", &CountParser::entry,
                                              &CountParser::reader};

/// Events whose numbers begin with `first`.
std::string services(int first, int count) {
  std::string events;
  for (int i = first; i < first + count; ++i) {
    events += element("service", element("number", std::to_string(i)));
  }
  return events;
}

void setNumbers(History& history, int first, int count) {
  for (int i = 0; i < count; ++i) history.entries[i].number = first + i;
}

TEST(ServiceHistory, ReadsAWholeReplyAndRefusesWhatIsNone) {
  std::string children;
  for (auto const& member : serviceMembers) children += element(member.name, member.text) + "\n";
  historyWithRoom(5).expectWideEntry(
      "<?xml version='1.0'?>\n" +
          element("get_log_service_history", element("service", children) + services(3, 2)),
      [](History& history) {
        for (auto const& member : serviceMembers) member.set(history.entries[0]);
        history.entries[1].number = 3;
        history.entries[2].number = 4;
      });
}

TEST(ServiceHistory, CountsTheChildrenOfAWholeReplyAndRefusesWhatIsNone) {
  sizeQuery.expectWideEntry(element("get_log_service_history", services(1, 5)),
                            [](int& count) { count = 5; });
}

TEST(ServiceHistory, TellsTheCountOfAllChildrenWithoutAnArray) {
  sizeQuery.expectRead(services(1, 5), [](int& count) { count = 5; });
  sizeQuery.expectRead(services(1, 2) + "<firmware>1</firmware>" + services(3, 3),
                       [](int& count) { count = 6; });
  sizeQuery.expectRead("<Service/><other><service/></other>", [](int& count) { count = 2; });
  sizeQuery.expectRead("", [](int& count) { count = 0; });
  sizeQuery.expectRead("text<!-- <service/> -->", [](int& count) { count = 0; });
}

TEST(ServiceHistory, FillsAsManyEntriesAsThereIsRoomFor) {
  for (int const room : {1, 3, 4, 5}) {
    historyWithRoom(room).expectRead(services(10, 5),
                                     [&](auto& history) { setNumbers(history, 10, room); });
  }
  historyWithRoom(5).expectRead(services(10, 2), [](auto& history) { setNumbers(history, 10, 2); });
}

TEST(ServiceHistory, FillsNothingWithoutRoom) {
  for (int const room : {0, -1, INT_MIN}) historyWithRoom(room).expectSkipped(services(1, 5));
}

TEST(ServiceHistory, SkipsChildrenOfOtherNames) {
  historyWithRoom(3).expectRead("<firmware>1</firmware>" + services(1, 2) +
                                    "<Service><number>9</number></Service>" + services(3, 2),
                                [](auto& history) { setNumbers(history, 1, 3); });
}

TEST(ServiceHistory, KeepsWhatAnEntryDoesNotName) {
  historyWithRoom(2).expectRead(
      "<service><number>1</number><code>2</code></service>"
      "<service><card_count>3</card_count></service>",
      [](auto& history) {
        history.entries[0].number = 1;
        history.entries[0].code = 2;
        history.entries[1].card_count = 3;
      });
}

TEST(ServiceHistory, ResultIsThatOfTheLastEntryRead) {
  auto const first = [](auto& history) { setNumbers(history, 1, 1); };
  historyWithRoom(2).expect(false, services(1, 1) + "<service/><other>1</other>", first);
  historyWithRoom(2).expect(false, services(1, 1) + element("service", "<code/>"), first);
  // A surplus entry has no say.
  historyWithRoom(1).expect(true, services(1, 1) + "<service/>", first);
  historyWithRoom(1).expect(false, "<service/>" + services(1, 1), [](auto&) {});
  historyWithRoom(2).expect(true, "<service/>" + services(7, 1),
                            [](auto& history) { history.entries[1].number = 7; });
  historyWithRoom(2).expectSkipped("<other>1</other>");
  historyWithRoom(2).expectSkipped("");
}

TEST(ServiceHistory, ReaderFailsUntouchedForANullElement) {
  auto values = filled<_tagLogServiceValues>();
  for (_tagLogServiceValues* const array : {&values, static_cast<_tagLogServiceValues*>(nullptr)}) {
    _tagLogServiceXML record{1, array};
    EXPECT_FALSE(KVXLogParser().parseServiceHistoryValues(nullptr, record));
    EXPECT_EQ(record.entries, array);
    EXPECT_EQ(record.count, 1);
  }
  EXPECT_TRUE(untouched(values));
}

TEST(ServiceHistory, AHostAsksMakesRoomAndReadsAgain) {
  std::wstring const text = wide(element("get_log_service_history", services(1, 1000)));
  _tagLogServiceXML record{0, nullptr};
  ASSERT_TRUE(KVXLogParser().ParseLogServiceXML(*text.c_str(), text.size(), record));
  ASSERT_EQ(record.count, 1000);
  std::vector<_tagLogServiceValues> entries(1000, filled<_tagLogServiceValues>());
  record.entries = entries.data();
  ASSERT_TRUE(KVXLogParser().ParseLogServiceXML(*text.c_str(), text.size(), record));
  for (int i = 0; i < 1000; ++i) {
    auto expected = filled<_tagLogServiceValues>();
    expected.number = i + 1;
    EXPECT_TRUE(same(entries[static_cast<std::size_t>(i)], expected)) << i;
  }
}

TEST(ServiceHistory, TakesALengthBeyondItsTerminator) {
  std::wstring const text = wide(element("get_log_service_history", services(1, 1)));
  for (unsigned long const length : {text.size() + 1, ULONG_MAX}) {
    _tagLogServiceXML record{0, nullptr};
    EXPECT_TRUE(KVXLogParser().ParseLogServiceXML(*text.c_str(), length, record)) << length;
    EXPECT_EQ(record.count, 1);
  }
}

// ---- One cleaning ----------------------------------------------------------------------------

/// The array that hosts pass.
struct Cleanings {
  _tagCleaningLogEntry entries[32];
};

/// Reads one cleaning: as the only one of a history, and by the reader of its element.
struct CleaningParser : KVXLogParser {
  bool listed(wchar_t const& text, int len, _tagCleaningLogEntry& out) {
    std::wstring const history = L"<get_log_cleaning_history>" +
                                 std::wstring(&text, lengthOf(len)) +
                                 L"</get_log_cleaning_history>";
    auto cleanings = filled<Cleanings>();
    bool const result = ParseCleaningLog(*history.c_str(), history.size(), cleanings.entries);
    out = cleanings.entries[0];
    cleanings.entries[0] = filled<_tagCleaningLogEntry>();
    EXPECT_TRUE(untouched(cleanings)) << "but for the first entry";
    return result;
  }
};

StatusReply<_tagCleaningLogEntry, CleaningParser> const cleaning{
    "cleaning", &CleaningParser::listed, &CleaningParser::getCleaningLogEntry};

constexpr MemberCase<_tagCleaningLogEntry> cleaningMembers[] = {
    {"", "number", "4", [](auto& record) { record.number = 4; }},
    {"", "cards", "70000", [](auto& record) { record.cards = 70000; }},
    {"", "type", "-2", [](auto& record) { record.type = -2; }},
};

TEST(Cleaning, ReadsEachElementIntoItsMember) {
  cleaning.expectMembers(cleaningMembers);
}

TEST(Cleaning, ResultIsThatOfTheLastKnownElement) {
  auto const one = [](auto& record) { record.cards = 1; };
  cleaning.expect(false, "<cards>1</cards><type/><unknown>1</unknown>", one);
  cleaning.expect(true, "<type/><cards>7</cards><cards>1</cards><unknown/>", one);
  cleaning.expectSkipped("<unknown>1</unknown>");
  expectNeedsChildren(cleaning.start, [](TiXmlElement* element, _tagCleaningLogEntry& record) {
    return KVXLogParser().getCleaningLogEntry(element, record);
  });
}

// ---- The cleaning history --------------------------------------------------------------------

struct CleaningsParser : KVXLogParser {
  bool entry(wchar_t const& text, int len, Cleanings& out) {
    return ParseCleaningLog(text, lengthOf(len), out.entries);
  }
  bool reader(TiXmlElement* root, Cleanings& out) {
    return getCleaningLogValues(root, out.entries);
  }
};

StatusReply<Cleanings, CleaningsParser> const cleanings{
    "get_log_cleaning_history", &CleaningsParser::entry, &CleaningsParser::reader};

TEST(CleaningHistory, TakesALengthBeyondItsTerminator) {
  std::wstring const text =
      L"<get_log_cleaning_history><cleaning><type>3</type></cleaning>"
      L"</get_log_cleaning_history>";
  for (unsigned long const length : {text.size() + 1, ULONG_MAX}) {
    auto record = filled<Cleanings>();
    EXPECT_TRUE(KVXLogParser().ParseCleaningLog(*text.c_str(), length, record.entries)) << length;
    EXPECT_EQ(record.entries[0].type, 3);
  }
}

std::string cleaningsOf(int first, int count) {
  std::string all;
  for (int i = first; i < first + count; ++i) {
    all += element("cleaning", element("number", std::to_string(i)));
  }
  return all;
}

void setNumbers(Cleanings& history, int first, int count) {
  for (int i = 0; i < count; ++i) history.entries[i].number = first + i;
}

TEST(CleaningHistory, ReadsAWholeReplyAndRefusesWhatIsNone) {
  std::string children;
  for (auto const& member : cleaningMembers) children += element(member.name, member.text) + "\n";
  cleanings.expectWideEntry(
      element("get_log_cleaning_history", element("cleaning", children) + cleaningsOf(2, 2)),
      [](Cleanings& history) {
        for (auto const& member : cleaningMembers) member.set(history.entries[0]);
        history.entries[1].number = 2;
        history.entries[2].number = 3;
      });
}

TEST(CleaningHistory, FillsAtMost32Entries) {
  for (int const sent : {1, 31, 32, 33, 40}) {
    cleanings.expectRead(cleaningsOf(1, sent),
                         [&](auto& history) { setNumbers(history, 1, std::min(sent, 32)); });
  }
}

TEST(CleaningHistory, SkipsChildrenOfOtherNames) {
  cleanings.expectRead("<other>1</other>" + cleaningsOf(1, 20) +
                           "<Cleaning><number>9</number></Cleaning>" + cleaningsOf(21, 20),
                       [](auto& history) { setNumbers(history, 1, 32); });
}

TEST(CleaningHistory, ResultIsThatOfTheLastEntryRead) {
  auto const first = [](auto& history) { setNumbers(history, 1, 1); };
  cleanings.expect(false, cleaningsOf(1, 1) + "<cleaning/><other>1</other>", first);
  cleanings.expect(true, cleaningsOf(1, 1) + "<other/>", first);
  cleanings.expect(true, "<cleaning/>" + cleaningsOf(7, 1),
                   [](auto& history) { history.entries[1].number = 7; });
  // A surplus entry has no say.
  auto const all = [](auto& history) { setNumbers(history, 1, 32); };
  cleanings.expect(true, cleaningsOf(1, 32) + "<cleaning/>", all);
  cleanings.expect(false, cleaningsOf(1, 31) + "<cleaning/>" + cleaningsOf(1, 1),
                   [](auto& history) { setNumbers(history, 1, 31); });
  cleanings.expectSkipped("<other>1</other>");
  cleanings.expectSkipped("");
}

TEST(CleaningHistory, ReaderNeedsChildren) {
  expectNeedsChildren(cleanings.start, [](TiXmlElement* root, Cleanings& record) {
    return KVXLogParser().getCleaningLogValues(root, record.entries);
  });
}

// ---- The interface ---------------------------------------------------------------------------

TEST(KVXLogParser, HasEveryOperationWithItsSignature) {
  using P = KVXLogParser;
  using Root = TiXmlElement*;
  using Text = wchar_t const&;
  [[maybe_unused]] bool (P::*const a)(Text, unsigned long, _tagLogServiceXML&) =
      &P::ParseLogServiceXML;
  [[maybe_unused]] bool (P::*const b)(Root, _tagLogServiceXML&) = &P::parseServiceHistoryValues;
  [[maybe_unused]] bool (P::*const c)(Root, _tagLogServiceValues&) = &P::getServiceValues;
  [[maybe_unused]] bool (P::*const d)(Root, _tagCleaningLogEntry(&)[32]) = &P::getCleaningLogValues;
  [[maybe_unused]] bool (P::*const e)(Root, _tagCleaningLogEntry&) = &P::getCleaningLogEntry;
  bool (P::*const entry)(Text, unsigned long, _tagCleaningLogEntry(&)[32]) = &P::ParseCleaningLog;
  auto history = filled<Cleanings>();
  EXPECT_FALSE((P().*entry)(L'\0', 0, history.entries));
  EXPECT_TRUE(untouched(history));
}

}  // namespace
}  // namespace Kovra

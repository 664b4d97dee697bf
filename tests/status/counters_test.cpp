// Card counters, up-times, cleaning and memory.

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <climits>
#include <string>

#include "kvxstatusparser.h"
#include "support/records.hpp"
#include "support/status_reply.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"
#include "support/words.hpp"

namespace Kovra {
namespace {

using test::element;
using test::expectNeedsChildren;
using test::expectWords;
using test::MemberCase;
using test::Rule;
using test::StatusReply;
using test::Tree;
using test::wide;

// ---- What 16, 32 bits of a number are --------------------------------------------------------

struct NumberCase {
  char const* text;
  unsigned long value;
};

constexpr NumberCase low16Bits[] = {
    {"0", 0},          {"65535", 65535}, {"65536", 0},   {"70000", 4464},   {"-1", 65535},
    {"131071", 65535}, {"  12abc", 12},  {"unknown", 0}, {"4294967297", 1}, {"0x1A", 0},
};

constexpr NumberCase low32Bits[] = {
    {"0", 0},          {"65536", 65536}, {"4294967295", UINT_MAX}, {"4294967296", 0},
    {"4294967303", 7}, {"-1", UINT_MAX}, {" 512 KiB", 512},        {"much", 0},
};

// ---- Card counters ---------------------------------------------------------------------------

StatusReply<KVCardCount> const cardCount{"get_count", &KVXStatusParser::ParseCardCount,
                                         &KVXStatusParser::parseCardCount};

constexpr MemberCase<KVCardCount> cardCountMembers[] = {
    {"", "total_cards_done", "21873", [](auto& record) { record.total_cards_done = 21873; }},
    {"", "laminator_cards_laminated", "1204",
     [](auto& record) { record.laminator_cards_laminated = 1204; }},
    {"", "laminator_cards_processed", "1260",
     [](auto& record) { record.laminator_cards_processed = 1260; }},
};

TEST(CardCount, ReadsEachElementIntoItsMember) {
  cardCount.expectMembers(cardCountMembers);
}

TEST(CardCount, ReadsAWholeReplyAndRefusesWhatIsNone) {
  cardCount.expectWideEntry(
      "<?xml version='1.0'?>\n<get_count><total_cards_done>21873</total_cards_done>"
      "<laminator_cards_laminated>1204</laminator_cards_laminated>"
      "<laminator_cards_processed>1260</laminator_cards_processed>"
      "<total_cards_until_next_cleaning>127</total_cards_until_next_cleaning></get_count>\n",
      [](auto& record) {
        for (auto const& member : cardCountMembers) member.set(record);
      });
}

TEST(CardCount, KeepsTheLow16BitsOfEveryCounter) {
  for (auto const& [text, value] : low16Bits) {
    cardCount.expectRead(element("total_cards_done", text),
                         [v = value](auto& record) { record.total_cards_done = v; });
    cardCount.expectRead(element("laminator_cards_laminated", text),
                         [v = value](auto& record) { record.laminator_cards_laminated = v; });
    cardCount.expectRead(element("laminator_cards_processed", text),
                         [v = value](auto& record) { record.laminator_cards_processed = v; });
  }
}

TEST(CardCount, ResultIsThatOfTheLastKnownElement) {
  auto const one = [](auto& record) { record.total_cards_done = 1; };
  std::string const done = element("total_cards_done", "1");
  cardCount.expect(false, done + "<laminator_cards_processed/>", one);
  cardCount.expect(false, done + "<laminator_cards_processed/><unknown>2</unknown>", one);
  cardCount.expect(true, "<laminator_cards_processed/>" + done + "<unknown/>", one);
  cardCount.expect(true, element("total_cards_done", "7") + done, one);
  cardCount.expect(false, done + "<total_cards_done/>", one);
}

TEST(CardCount, FailsUntouchedWithoutAKnownElement) {
  for (char const* const children : {"", "12", "<unknown>1</unknown>", "<!-- a -->",
                                     "<a><total_cards_done>1</total_cards_done></a>"}) {
    cardCount.expectSkipped(children);
  }
  expectNeedsChildren(cardCount.start, [](TiXmlElement* root, KVCardCount& record) {
    return KVXStatusParser().parseCardCount(root, record);
  });
}

// ---- Cards until the next cleaning -----------------------------------------------------------

StatusReply<int> const cardsUntilCleaning{"get_count", &KVXStatusParser::ParseCleanLogCount,
                                          &KVXStatusParser::parseCleanLog};

constexpr MemberCase<int> cardsUntilCleaningMembers[] = {
    {"", "total_cards_until_next_cleaning", "127", [](int& cards) { cards = 127; }},
};

TEST(CardsUntilCleaning, ReadsItsElement) {
  cardsUntilCleaning.expectMembers(cardsUntilCleaningMembers);
}

TEST(CardsUntilCleaning, ReadsAWholeReplyAndRefusesWhatIsNone) {
  cardsUntilCleaning.expectWideEntry(
      "<get_count><total_cards_done>21873</total_cards_done>"
      "<total_cards_until_next_cleaning>127</total_cards_until_next_cleaning></get_count>",
      [](int& cards) { cards = 127; });
}

TEST(CardsUntilCleaning, KeepsA32BitNumber) {
  struct {
    char const* text;
    int value;
  } const cases[] = {{"0", 0},
                     {"-3", -3},
                     {"70000", 70000},
                     {"2147483647", INT_MAX},
                     {"2147483648", INT_MIN},
                     {"soon", 0},
                     {"12 cards", 12}};
  for (auto const& [text, value] : cases) {
    cardsUntilCleaning.expectRead(element("total_cards_until_next_cleaning", text),
                                  [v = value](int& cards) { cards = v; });
  }
}

TEST(CardsUntilCleaning, ResultIsThatOfItsLastElement) {
  std::string const cards = element("total_cards_until_next_cleaning", "5");
  cardsUntilCleaning.expect(false, cards + "<total_cards_until_next_cleaning/>",
                            [](int& value) { value = 5; });
  cardsUntilCleaning.expect(true, "<total_cards_until_next_cleaning/>" + cards + "<unknown/>",
                            [](int& value) { value = 5; });
  cardsUntilCleaning.expect(true, cards + element("total_cards_until_next_cleaning", "6"),
                            [](int& value) { value = 6; });
  expectNeedsChildren(cardsUntilCleaning.start, [](TiXmlElement* root, int& value) {
    return KVXStatusParser().parseCleanLog(root, value);
  });
}

/// A number that nobody may look at: the process ends where its page is touched.
class ForbiddenNumber {
 public:
  ForbiddenNumber() : page_(::mmap(nullptr, 1, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
    EXPECT_NE(page_, MAP_FAILED);
  }
  ~ForbiddenNumber() { ::munmap(page_, 1); }
  ForbiddenNumber(ForbiddenNumber const&) = delete;
  ForbiddenNumber& operator=(ForbiddenNumber const&) = delete;

  int& get() { return *static_cast<int*>(page_); }

 private:
  void* page_;
};

// A host need not give its variable a value before it knows one.
TEST(CardsUntilCleaning, TouchesNothingWhenNothingIsRead) {
  ForbiddenNumber cards;
  KVXStatusParser parser;
  for (std::string const& reply :
       {element("get_count", element("total_cards_done", "21873")),
        element("get_count", "<total_cards_until_next_cleaning/>"), std::string("<get_count/>"),
        element("get_other", element("total_cards_until_next_cleaning", "127")),
        std::string("<get_count>"), std::string()}) {
    std::wstring const text = wide(reply);
    EXPECT_FALSE(
        parser.ParseCleanLogCount(*text.c_str(), static_cast<int>(text.size()), cards.get()));
  }
  EXPECT_FALSE(parser.parseCleanLog(nullptr, cards.get()));
  EXPECT_FALSE(parser.parseCleanLog(Tree("<get_count><other/></get_count>").root(), cards.get()));
}

TEST(CardsUntilCleaning, SharesItsReplyWithTheCardCounters) {
  std::string const cards = element("total_cards_until_next_cleaning", "127");
  std::string const done = element("total_cards_done", "21873");
  cardCount.expectSkipped(cards);
  cardsUntilCleaning.expectRead(cards, [](int& value) { value = 127; });
  cardCount.expectRead(done, [](auto& record) { record.total_cards_done = 21873; });
  cardsUntilCleaning.expectSkipped(done);
  // What the other reader knows decides neither result.
  cardCount.expectRead(done + "<total_cards_until_next_cleaning/>",
                       [](auto& record) { record.total_cards_done = 21873; });
  cardsUntilCleaning.expectRead(cards + "<total_cards_done/>", [](int& value) { value = 127; });
}

// ---- Up-times --------------------------------------------------------------------------------

StatusReply<KVUpTimes> const upTimes{"get_laminator_up_times", &KVXStatusParser::ParseUpTime,
                                     &KVXStatusParser::parseUpTime};

constexpr MemberCase<KVUpTimes> upTimeMembers[] = {
    {"", "laminator_total_up_time", "5120",
     [](auto& record) { record.laminator_total_up_time = 5120; }},
    {"", "laminator_top_bulb_on_time", "880",
     [](auto& record) { record.laminator_top_bulb_on_time = 880; }},
    {"", "laminator_bottom_bulb_on_time", "879",
     [](auto& record) { record.laminator_bottom_bulb_on_time = 879; }},
};

TEST(UpTimes, ReadsEachElementIntoItsMember) {
  upTimes.expectMembers(upTimeMembers);
}

TEST(UpTimes, ReadsAWholeReplyAndRefusesWhatIsNone) {
  upTimes.expectWideEntry(
      "<get_laminator_up_times><laminator_total_up_time>5120</laminator_total_up_time>"
      "<laminator_top_bulb_on_time>880</laminator_top_bulb_on_time>"
      "<laminator_bottom_bulb_on_time>879</laminator_bottom_bulb_on_time>"
      "</get_laminator_up_times>",
      [](auto& record) {
        for (auto const& member : upTimeMembers) member.set(record);
      });
}

TEST(UpTimes, KeepsTheLow16BitsOfEveryTime) {
  for (auto const& [text, value] : low16Bits) {
    upTimes.expectRead(element("laminator_total_up_time", text),
                       [v = value](auto& record) { record.laminator_total_up_time = v; });
    upTimes.expectRead(element("laminator_top_bulb_on_time", text),
                       [v = value](auto& record) { record.laminator_top_bulb_on_time = v; });
    upTimes.expectRead(element("laminator_bottom_bulb_on_time", text),
                       [v = value](auto& record) { record.laminator_bottom_bulb_on_time = v; });
  }
}

TEST(UpTimes, ResultIsThatOfTheLastKnownElement) {
  auto const one = [](auto& record) { record.laminator_total_up_time = 1; };
  std::string const total = element("laminator_total_up_time", "1");
  upTimes.expect(false, total + "<laminator_top_bulb_on_time/><unknown>1</unknown>", one);
  upTimes.expect(true, "<laminator_top_bulb_on_time/>" + total, one);
  upTimes.expectSkipped("<unknown>1</unknown>");
  expectNeedsChildren(upTimes.start, [](TiXmlElement* root, KVUpTimes& record) {
    return KVXStatusParser().parseUpTime(root, record);
  });
}

// ---- Cleaning --------------------------------------------------------------------------------

/// The cleaning status has no reader of elements: both ways in are the entry.
struct CleaningParser : KVXStatusParser {
  bool entry(wchar_t const& text, int len, KVCleaningStatus& out) {
    return ParseCleaningStatus(text, len, out);
  }
  bool printedAgain(TiXmlElement* root, KVCleaningStatus& out) {
    std::wstring const text = test::wide(test::printed(*root));
    return ParseCleaningStatus(*text.c_str(), static_cast<int>(text.size()), out);
  }
};

StatusReply<KVCleaningStatus, CleaningParser> const cleaningStatus{
    "get_cleaning_status", &CleaningParser::entry, &CleaningParser::printedAgain};

constexpr MemberCase<KVCleaningStatus> cleaningStatusMembers[] = {
    {"", "cleaning_status", "remove_ribbon_and_cards",
     [](auto& record) { record.cleaning_status = 4; }},
};

TEST(CleaningStatus, ReadsItsElement) {
  cleaningStatus.expectMembers(cleaningStatusMembers);
}

TEST(CleaningStatus, ReadsAWholeReplyAndRefusesWhatIsNone) {
  cleaningStatus.expectWideEntry(
      "<get_cleaning_status><cleaning_status>cleaning</cleaning_status></get_cleaning_status>",
      [](auto& record) { record.cleaning_status = 0; });
}

TEST(CleaningStatus, States) {
  expectWords({Rule::exact,
               10,
               {{"cleaning", 0},
                {"start_cleaning", 1},
                {"remove_ribbon", 2},
                {"remove_cards", 3},
                {"remove_ribbon_and_cards", 4},
                {"insert_cleaning_card", 5},
                {"reload_ribbon", 6},
                {"reload_ribbon_and_cards", 7},
                {"cleaning_aborted", 8},
                {"cleaning_not_in_progress", 9}}},
              [](char* word) {
                int const code = KVXStatusParser().cleaningStateToInt(word);
                if (word != nullptr && *word != '\0') {
                  cleaningStatus.expectRead(
                      "<cleaning_status><![CDATA[" + std::string(word) + "]]></cleaning_status>",
                      [&](auto& record) { record.cleaning_status = code; });
                }
                return code;
              });
}

TEST(CleaningStatus, StatesTakeWordsThatCanOnlyBeRead) {
  KVXStatusParser parser;
  char const* const word = "reload_ribbon";
  EXPECT_EQ(parser.cleaningStateToInt(word), 6);
  EXPECT_EQ(parser.cleaningStateToInt("Cleaning"), 10);
  EXPECT_EQ(parser.cleaningStateToInt(nullptr), 10);
}

TEST(CleaningStatus, AnUnknownWordIsReadAsTheUnknownState) {
  for (std::string const& word :
       {std::string("Cleaning"), std::string("done"), "cleaning" + std::string(100, 'x')}) {
    cleaningStatus.expectRead(element("cleaning_status", word),
                              [](auto& record) { record.cleaning_status = 10; });
  }
}

TEST(CleaningStatus, ResultIsThatOfItsLastElement) {
  std::string const aborted = element("cleaning_status", "cleaning_aborted");
  auto const eight = [](auto& record) { record.cleaning_status = 8; };
  cleaningStatus.expect(false, aborted + "<cleaning_status/>", eight);
  cleaningStatus.expect(true, "<cleaning_status/>" + aborted + "<unknown/>", eight);
  cleaningStatus.expect(true, element("cleaning_status", "cleaning") + aborted, eight);
  cleaningStatus.expectSkipped("<unknown>cleaning</unknown>");
  cleaningStatus.expectSkipped("");
}

// ---- Memory ----------------------------------------------------------------------------------

StatusReply<__MEMORY> const freeRam{"get_free_ram", &KVXStatusParser::GetPrinterFreeSpace,
                                    &KVXStatusParser::getFreeSpace};
StatusReply<__MEMORY> const freeFlash{"get_free_flash", &KVXStatusParser::GetFlashFreeSpace,
                                      &KVXStatusParser::getFreeSpace};

constexpr MemberCase<__MEMORY> memoryMembers[] = {
    {"", "bytes_free", "24117248", [](auto& record) { record.bytes_free = 24117248; }},
};

TEST(Memory, ReadsItsElement) {
  freeRam.expectMembers(memoryMembers);
  freeFlash.expectMembers(memoryMembers);
}

TEST(Memory, ReadsWholeRepliesAndRefusesWhatIsNone) {
  auto const bytes = [](auto& record) { record.bytes_free = 24117248; };
  freeRam.expectWideEntry("<get_free_ram><bytes_free>24117248</bytes_free></get_free_ram>", bytes);
  freeFlash.expectWideEntry("<get_free_flash><bytes_free>24117248</bytes_free></get_free_flash>",
                            bytes);
}

TEST(Memory, TellsRamFromFlashByTheRoot) {
  std::string const bytes = element("bytes_free", "1");
  freeRam.expectRefused(freeRam.parsed(element("get_free_flash", bytes)), "flash");
  freeFlash.expectRefused(freeFlash.parsed(element("get_free_ram", bytes)), "RAM");
}

TEST(Memory, KeepsTheLow32Bits) {
  for (auto const& [text, value] : low32Bits) {
    freeRam.expectRead(element("bytes_free", text), [v = value](auto& record) {
      record.bytes_free = static_cast<unsigned int>(v);
    });
  }
}

TEST(Memory, ResultIsThatOfItsLastElement) {
  auto const seven = [](auto& record) { record.bytes_free = 7; };
  freeRam.expect(false, element("bytes_free", "7") + "<bytes_free/>", seven);
  freeRam.expect(true, "<bytes_free/>" + element("bytes_free", "7") + "<unknown/>", seven);
  freeRam.expectSkipped("<unknown>7</unknown>");
  expectNeedsChildren(freeRam.start, [](TiXmlElement* root, __MEMORY& record) {
    return KVXStatusParser().getFreeSpace(root, record);
  });
}

// ---- The interface ---------------------------------------------------------------------------

TEST(KVXStatusParser, HasEveryOperationOfTheCountersWithItsSignature) {
  using P = KVXStatusParser;
  using Root = TiXmlElement*;
  [[maybe_unused]] bool (P::*const a)(wchar_t const&, int, KVCardCount&) = &P::ParseCardCount;
  [[maybe_unused]] bool (P::*const b)(Root, KVCardCount&) = &P::parseCardCount;
  [[maybe_unused]] bool (P::*const c)(wchar_t const&, int, KVUpTimes&) = &P::ParseUpTime;
  [[maybe_unused]] bool (P::*const d)(Root, KVUpTimes&) = &P::parseUpTime;
  [[maybe_unused]] bool (P::*const e)(wchar_t const&, int, KVCleaningStatus&) =
      &P::ParseCleaningStatus;
  [[maybe_unused]] bool (P::*const f)(wchar_t const&, int, __MEMORY&) = &P::GetPrinterFreeSpace;
  [[maybe_unused]] bool (P::*const g)(wchar_t const&, int, __MEMORY&) = &P::GetFlashFreeSpace;
  [[maybe_unused]] bool (P::*const h)(Root, __MEMORY&) = &P::getFreeSpace;
  [[maybe_unused]] bool (P::*const i)(wchar_t const&, int, int&) = &P::ParseCleanLogCount;
  [[maybe_unused]] bool (P::*const j)(Root, int&) = &P::parseCleanLog;
  int (P::*const conversion)(char*) = &P::cleaningStateToInt;
  char word[] = "remove_cards";
  EXPECT_EQ((P().*conversion)(word), 3);
}

}  // namespace
}  // namespace Kovra

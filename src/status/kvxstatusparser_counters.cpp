#include <optional>
#include <string_view>

#include "frame/typed/reply.hpp"
#include "frame/vocabulary.hpp"
#include "kvxstatusparser.h"
#include "status/status_replies.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

// Card counters and up-times. Their members are `unsigned long`, whose numbers keep 16 bits.

constexpr Table cardCount = {
    number<&KVCardCount::total_cards_done>("total_cards_done"),
    number<&KVCardCount::laminator_cards_laminated>("laminator_cards_laminated"),
    number<&KVCardCount::laminator_cards_processed>("laminator_cards_processed"),
};

constexpr Table upTimes = {
    number<&KVUpTimes::laminator_total_up_time>("laminator_total_up_time"),
    number<&KVUpTimes::laminator_top_bulb_on_time>("laminator_top_bulb_on_time"),
    number<&KVUpTimes::laminator_bottom_bulb_on_time>("laminator_bottom_bulb_on_time"),
};

// Cleaning.

/// Hosts get this one number without a record around it, in a variable of theirs that may have no
/// value yet.
struct CardsUntilCleaning {
  std::optional<int> total_cards_until_next_cleaning;
};

/// A number of which it matters whether it was read at all.
struct SoughtNumberKind : NeverWritten, NeverAssigned {
  static bool read(Element element, std::optional<int>& out) {
    int number = 0;
    if (!NumberKind::read(element, number)) return false;
    out = number;
    return true;
  }
  static void report(Observer& observer, std::string_view name, Element element,
                     std::optional<int> const& value) {
    NumberKind::report(observer, name, element, value.value());
  }
};

constexpr Table cardsUntilCleaning = {
    row<&CardsUntilCleaning::total_cards_until_next_cleaning, SoughtNumberKind>(
        "total_cards_until_next_cleaning"),
};

constexpr Word cleaningStateWords[] = {
    {"cleaning", 0},
    {"start_cleaning", 1},
    {"remove_ribbon", 2},
    {"remove_cards", 3},
    {"remove_ribbon_and_cards", 4},
    {"insert_cleaning_card", 5},
    {"reload_ribbon", 6},
    {"reload_ribbon_and_cards", 7},
    {"cleaning_aborted", 8},
    {"cleaning_not_in_progress", 9},
};
constexpr Vocabulary cleaningStates{cleaningStateWords, Match::exact, 10};
static_assert(everyWordIsReachable(cleaningStates));

constexpr Table cleaningStatus = {
    keyword<&KVCleaningStatus::cleaning_status, cleaningStates>("cleaning_status"),
};

// Free memory: RAM and flash differ in the root only.

constexpr Table freeSpace = {
    number<&__MEMORY::bytes_free>("bytes_free"),
};

/// One root for two replies: a count reply may hold the card counters, the cards until the next
/// cleaning, or both.
constexpr char const* countRoots[] = {"get_count"};
constexpr char const* upTimeRoots[] = {"get_laminator_up_times"};
constexpr char const* cleaningStatusRoots[] = {"get_cleaning_status"};
constexpr char const* freeRamRoots[] = {"get_free_ram"};
constexpr char const* freeFlashRoots[] = {"get_free_flash"};

using CardCountReading = TableReading<cardCount>;
using UpTimesReading = TableReading<upTimes>;
using CardsUntilCleaningReading = TableReading<cardsUntilCleaning>;
using CleaningStatusReading = TableReading<cleaningStatus>;
using FreeSpaceReading = TableReading<freeSpace>;

constexpr ReplyReader replies[] = {
    reader<KVCardCount, CardCountReading>("card-count", "cards printed and laminated", countRoots),
    reader<CardsUntilCleaning, CardsUntilCleaningReading>(
        "cards-until-cleaning", "cards left before the next cleaning", countRoots),
    reader<KVUpTimes, UpTimesReading>("up-times", "up-time and bulb times of the laminator",
                                      upTimeRoots),
    reader<KVCleaningStatus, CleaningStatusReading>("cleaning-status", "progress of a cleaning",
                                                    cleaningStatusRoots),
    reader<__MEMORY, FreeSpaceReading>("free-ram", "free RAM", freeRamRoots),
    reader<__MEMORY, FreeSpaceReading>("free-flash", "free flash memory", freeFlashRoots),
};

/// Reads the number of cards with `read`, which takes a record, and hands it to the host's variable
/// when there was one.
template <class Read>
bool readCards(int& out, Read read) {
  CardsUntilCleaning record;
  bool const result = read(record);
  if (record.total_cards_until_next_cleaning) out = *record.total_cards_until_next_cleaning;
  return result;
}

}  // namespace

std::span<frame::ReplyReader const> counterReplies() {
  return replies;
}

bool KVXStatusParser::ParseCardCount(wchar_t const& text, int len, KVCardCount& out) {
  return readReply<CardCountReading>(text, len, countRoots, out);
}

bool KVXStatusParser::parseCardCount(TiXmlElement* root, KVCardCount& out) {
  return walk(root, cardCount, out);
}

bool KVXStatusParser::ParseCleanLogCount(wchar_t const& text, int len, int& out) {
  return readCards(out, [&](CardsUntilCleaning& record) {
    return readReply<CardsUntilCleaningReading>(text, len, countRoots, record);
  });
}

bool KVXStatusParser::parseCleanLog(TiXmlElement* root, int& out) {
  return readCards(
      out, [&](CardsUntilCleaning& record) { return walk(root, cardsUntilCleaning, record); });
}

bool KVXStatusParser::ParseUpTime(wchar_t const& text, int len, KVUpTimes& out) {
  return readReply<UpTimesReading>(text, len, upTimeRoots, out);
}

bool KVXStatusParser::parseUpTime(TiXmlElement* root, KVUpTimes& out) {
  return walk(root, upTimes, out);
}

bool KVXStatusParser::ParseCleaningStatus(wchar_t const& text, int len, KVCleaningStatus& out) {
  return readReply<CleaningStatusReading>(text, len, cleaningStatusRoots, out);
}

int KVXStatusParser::cleaningStateToInt(char* keyword) {
  return cleaningStates.codeOf(keyword);
}

bool KVXStatusParser::GetPrinterFreeSpace(wchar_t const& text, int len, __MEMORY& out) {
  return readReply<FreeSpaceReading>(text, len, freeRamRoots, out);
}

bool KVXStatusParser::GetFlashFreeSpace(wchar_t const& text, int len, __MEMORY& out) {
  return readReply<FreeSpaceReading>(text, len, freeFlashRoots, out);
}

bool KVXStatusParser::getFreeSpace(TiXmlElement* root, __MEMORY& out) {
  return walk(root, freeSpace, out);
}

}  // namespace Kovra

// The media catalogue: reading against a bare TinyXML parse and readers by hand, writing against
// the same tree built by hand with TinyXML alone, and how the time of both grows: `card_us`, the
// time for one card, stays the same from 10 cards to 10,000.

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "kvxmediaparser.h"
#include "kvxsetmedia.h"
#include "readers/sides.hpp"
#include "support/bench_support.hpp"
#include "support/by_hand.hpp"

namespace {

using namespace kovra_bench;
using namespace Kovra;

struct Destroy {
  void operator()(_KVMediaInfo* media) const { DestroyKVMedia(media); }
};
using Media = std::unique_ptr<_KVMediaInfo, Destroy>;

Media built() {
  Media media(GetKVMedia());
  BuildKVMedia(media.get());
  return media;
}

void read(std::string const& text, _KVMediaInfo& media) {
  KVXMediaParser().GetMedia(text.front(), static_cast<int>(text.size()), media);
}

/// The first card of the sample, that many times.
std::string catalogueOf(int cards) {
  std::string const full = sample("media/full.xml");
  std::size_t const from = full.find("<card>");
  std::string const end = "</card>\n";
  std::string const card = full.substr(from, full.find(end) + end.size() - from);
  std::string text = "<media><cards>\n";
  for (int i = 0; i < cards; ++i) text += card;
  return text + "</cards></media>\n";
}

void writeCard(TiXmlElement* cards, _CardInfo const& card) {
  char const* const coercivities[] = {"none", "low", "high"};
  TiXmlElement* const one = below(cards, "card");
  TiXmlElement* const information = below(one, "information");
  number(information, "type", card.type);
  text(information, "halvex_part_number", card.halvex_part_number);
  text(information, "description", card.description);
  char digits[64];
  std::snprintf(digits, sizeof digits, "%.4f", static_cast<double>(card.thickness));
  text(information, "thickness", digits);
  text(information, "coercivity", coercivities[card.coercivity]);
  yesOrNo(information, "mag_stripe", (card.cardFeatures & 1) != 0);
  yesOrNo(information, "contact_encode", (card.cardFeatures & 2) != 0);
  yesOrNo(information, "non_contact_encode", (card.cardFeatures & 4) != 0);
  TiXmlElement* const temps = below(one, "transfer_temps");
  setting(temps, "top_single", card.transfer_temps.top_single);
  setting(temps, "bot_single", card.transfer_temps.bot_single);
  setting(temps, "top_double", card.transfer_temps.top_double);
  setting(temps, "bot_double", card.transfer_temps.bot_double);
  TiXmlElement* const speeds = below(one, "transfer_speeds");
  setting(speeds, "input_single", card.transfer_speeds.input_single);
  setting(speeds, "output_single", card.transfer_speeds.output_single);
  setting(speeds, "input_double", card.transfer_speeds.input_double);
  setting(speeds, "output_double", card.transfer_speeds.output_double);
  TiXmlElement* const adjustments = below(one, "laminator_adjustments");
  setting(adjustments, "top_temp_adjust", card.laminator_adjustments.top_temp_adjust);
  setting(adjustments, "bot_temp_adjust", card.laminator_adjustments.bot_temp_adjust);
  setting(adjustments, "speed_adjust", card.laminator_adjustments.speed_adjust);
  number(one, "cal_table", card.cal_table);
}

void writeCards(_KVMediaInfo const& media, wchar_t* out, std::size_t length) {
  TiXmlDocument document;
  TiXmlElement* const cards = below(begin(document, "media"), "cards");
  for (_CardInfo const* const card : *media.cards) writeCard(cards, *card);
  print(document, out, length);
}

void readAgainst(benchmark::State& state, std::string const& text, Sides const& others) {
  compare(
      state,
      [&] {
        Media const media = built();
        read(text, *media);
        benchmark::DoNotOptimize(media->cards->size());
      },
      others);
}

void readAgainstBareParse(benchmark::State& state, std::string const& text) {
  readAgainst(state, text, {bareParse(text)});
}

bool sameCards(_KVMediaInfo const& left, _KVMediaInfo const& right) {
  return std::equal(
      left.cards->begin(), left.cards->end(), right.cards->begin(), right.cards->end(),
      [](_CardInfo const* a, _CardInfo const* b) { return std::memcmp(a, b, sizeof *a) == 0; });
}

void readAgainstOtherReaders(benchmark::State& state, std::string const& text) {
  Media const expected = built();
  read(text, *expected);
  auto const readByHand = [&](Reader const& reader) {
    Media const media = built();
    return reader.cards(text, *media);
  };
  auto const same = [&](Reader const& reader) {
    Media const media = built();
    return reader.cards(text, *media) && sameCards(*media, *expected);
  };
  readAgainst(state, text, againstOtherReaders(text, readByHand, same));
}

void writeAgainstByHand(benchmark::State& state, std::string const& text) {
  Media const media = built();
  read(text, *media);
  std::vector<wchar_t> ours(2 * text.size() + 1000);
  std::vector<wchar_t> theirs(ours.size());
  auto const write = [&] {
    KVXSetMedia writer;
    benchmark::DoNotOptimize(
        writer.SetMedia(*media, ours.data(), static_cast<int>(ours.size()), 1, false));
  };
  auto const writeByHand = [&] { writeCards(*media, theirs.data(), theirs.size()); };
  write();
  writeByHand();
  require(ours == theirs, "the cards written by hand are other ones");
  compare(state, write, {byHand(writeByHand)});
}

void perCard(benchmark::State& state, int cards) {
  state.counters["card_us"] = state.counters["kovra_us"] / cards;
}

int const reading = registered("media_read", [](benchmark::State& state) {
  readAgainstBareParse(state, sample("media/full.xml"));
});

int const manyCards = registered("media_cards_200", [](benchmark::State& state) {
  readAgainstOtherReaders(state, catalogueOf(200));
});

int const writing = registered("media_write", [](benchmark::State& state) {
  writeAgainstByHand(state, sample("media/full.xml"));
});

int const growth = [] {
  for (int const cards : {10, 100, 1000, 10000}) {
    std::string const count = std::to_string(cards);
    registered("media_read_" + count, [cards](benchmark::State& state) {
      readAgainstBareParse(state, catalogueOf(cards));
      perCard(state, cards);
    });
    registered("media_write_" + count, [cards](benchmark::State& state) {
      writeAgainstByHand(state, catalogueOf(cards));
      perCard(state, cards);
    });
  }
  return 0;
}();

}  // namespace

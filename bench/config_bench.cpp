// The configuration: reading against a bare TinyXML parse and readers by hand, writing against the
// same tree built by hand with TinyXML alone, and what the debugging copy costs.

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "config/config_tables.hpp"
#include "face/catalogue.hpp"
#include "face/compose.hpp"
#include "frame/output.hpp"
#include "kvxconfigparser.h"
#include "kvxsetconfig.h"
#include "readers/sides.hpp"
#include "support/bench_support.hpp"
#include "support/by_hand.hpp"

namespace {

using namespace kovra_bench;
using namespace Kovra;

/// The reader tells of ribbons on standard error; here they shall go nowhere.
class SilentStandardError {
 public:
  SilentStandardError() : earlier_(::dup(STDERR_FILENO)) {
    int const nowhere = ::open("/dev/null", O_WRONLY);
    ::dup2(nowhere, STDERR_FILENO);
    ::close(nowhere);
  }
  ~SilentStandardError() {
    ::dup2(earlier_, STDERR_FILENO);
    ::close(earlier_);
  }
  SilentStandardError(SilentStandardError const&) = delete;
  SilentStandardError& operator=(SilentStandardError const&) = delete;

 private:
  int earlier_;
};

std::unique_ptr<_KVConfiguration> fullConfiguration() {
  SilentStandardError const silent;
  auto config = std::make_unique<_KVConfiguration>();
  KVXConfigParser().GetConfiguration(sample("config/full.xml").c_str(), 0, *config);
  config->ribbon.ribbonNameCode = 256;
  config->film.ribbonNameCode = 271;
  return config;
}

// The tree by hand, as a host without Kovra would build it.

void power(TiXmlElement* e, _PowerAdjustments const& p) {
  setting(e, "yellow", p.yellow);
  setting(e, "magenta", p.magenta);
  setting(e, "cyan", p.cyan);
  setting(e, "k-resin_front", p.k_resin_front);
  setting(e, "k-resin_back", p.k_resin_back);
  setting(e, "k-dye", p.k_dye);
  setting(e, "overlay", p.overlay);
  setting(e, "uv_front", p.uv_front);
  setting(e, "uv_back", p.uv_back);
  setting(e, "helper", p.helper);
  setting(e, "x-resin", p.x_resin);
  setting(e, "inhibit", p.inhibit);
}

void motor(TiXmlElement* e, _RibbonMotorParams const& m) {
  setting(e, "S0", m.S0);
  setting(e, "K0", m.K0);
  setting(e, "Kb", m.Kb);
  setting(e, "Ka", m.Ka);
  setting(e, "M0", m.M0);
  setting(e, "Mb", m.Mb);
  setting(e, "Ma", m.Ma);
}

void mechanics(TiXmlElement* e, _MechanicalAdjustments const& m) {
  setting(e, "film_print_x_offset", m.film_print_x_offset);
  setting(e, "film_print_y_offset", m.film_print_y_offset);
  setting(e, "film_transfer_start_offset", m.film_transfer_start_offset);
  setting(e, "card_center_x_offset", m.card_center_x_offset);
  setting(e, "card_mag_x_offset", m.card_mag_x_offset);
  setting(e, "card_smart_card_x_offset", m.card_smart_card_x_offset);
  setting(e, "card_smart_card_lf_x_offset", m.card_smart_card_lf_x_offset);
  setting(e, "card_smart_card_hf_x_offset", m.card_smart_card_hf_x_offset);
  setting(e, "card_smart_card_uhf_x_offset", m.card_smart_card_uhf_x_offset);
  setting(e, "card_center_y_offset", m.card_center_y_offset);
  setting(e, "card_transfer_start_y_offset", m.card_transfer_start_y_offset);
  setting(e, "card_transfer_end_y_offset", m.card_transfer_end_y_offset);
  setting(e, "card_transfer_roll_y_offset", m.card_transfer_roll_y_offset);
  setting(e, "film_end_roll_transfer_offset", m.film_end_roll_transfer_offset);
  setting(e, "film_extra_transfer_takeup_move", m.film_extra_transfer_takeup_move);
}

void speeds(TiXmlElement* e, _TransferSpeedInfo const& s) {
  setting(e, "input_single", s.input_single);
  setting(e, "output_single", s.output_single);
  setting(e, "input_double", s.input_double);
  setting(e, "output_double", s.output_double);
}

void card(TiXmlElement* e, _CustomCardInfo const& c) {
  TiXmlElement* const information = below(e, "information");
  number(information, "type", c.type);
  text(information, "halvex_part_number", c.halvex_part_number);
  text(information, "description", c.description);
  char digits[64];
  std::snprintf(digits, sizeof digits, "%.4f", static_cast<double>(c.thickness));
  text(information, "thickness", digits);
  text(information, "coercivity", COERCIVITYTYPES[c.coercivity]);
  text(information, "mag_stripe", (c.cardFeatures & 1) != 0 ? "yes" : "no");
  text(information, "contact_encode", (c.cardFeatures & 2) != 0 ? "yes" : "no");
  text(information, "non_contact_encode", (c.cardFeatures & 4) != 0 ? "yes" : "no");
  TiXmlElement* const temps = below(e, "transfer_temps");
  setting(temps, "top_single", c.transfer_temps.top_single);
  setting(temps, "bot_single", c.transfer_temps.bot_single);
  setting(temps, "top_double", c.transfer_temps.top_double);
  setting(temps, "bot_double", c.transfer_temps.bot_double);
  speeds(below(e, "transfer_speeds"), c.transfer_speeds);
  number(e, "cal_table", c.cal_table);
  TiXmlElement* const laminator = below(e, "laminator_adjustments");
  setting(laminator, "top_temp_adjust", c.laminator_adjustments.top_temp_adjust);
  setting(laminator, "bot_temp_adjust", c.laminator_adjustments.bot_temp_adjust);
  setting(laminator, "speed_adjust", c.laminator_adjustments.speed_adjust);
}

/// The sections that both sides write: those with most of the elements.
constexpr long compared = sectionImagingParameters | sectionRibbonMotorParameters |
                          sectionMechAdjustments | sectionCards | sectionUsageCounters |
                          sectionOcpLanguage | sectionLcdContrast;

void buildByHand(TiXmlElement* root, _KVConfiguration const& c) {
  TiXmlElement* const language = below(root, "ocp_language");
  number(language, "type", c.ocp_language.type);
  text(language, "name", c.ocp_language.name);
  TiXmlElement* const counters = below(root, "usage_counters");
  number(counters, "num_cards_printed", c.num_cards_printed);
  number(counters, "num_lines_printed", c.num_lines_printed);
  TiXmlElement* const imaging = below(root, "imaging_parameters");
  setting(imaging, "printhead_resistance", c.imaging_parameters.printhead_resistance);
  power(below(imaging, "user_power_adjustments"), c.imaging_parameters.user_power_adjustments);
  motor(below(below(root, "ribbon_motor_parameters"), "takeup_motor"), c.takeup_motor);
  mechanics(below(root, "mech_adjustments"), c.mech_adjustments);
  TiXmlElement* const timeout = below(root, "usb_timeout");
  setting(timeout, "read", c.usb_timeout.read);
  setting(timeout, "write", c.usb_timeout.write);
  TiXmlElement* const cards = below(root, "cards");
  card(below(cards, "card"), c.cards[0]);
  card(below(cards, "card"), c.cards[1]);
  setting(root, "lcd_contrast", c.lcd_contrast);
}

constexpr int room = 30000;

void writeByHand(_KVConfiguration const& config, wchar_t* out) {
  TiXmlDocument document;
  buildByHand(begin(document, "configuration"), config);
  print(document, out, room);
}

void writeWithKovra(_KVConfiguration const& config, wchar_t* out) {
  KVXSetConfig writer;
  TiXmlElement* const root = frame::beginDocument(writer, config::configurationRoots[0]);
  writer.addConfiguration(root, config, compared, 0);
  frame::printWide(writer, out, room);
}

/// A comparison of different documents would say nothing.
void requireTheSameDocument(_KVConfiguration const& config) {
  std::wstring ours(room, L'\0');
  std::wstring theirs(room, L'\0');
  writeWithKovra(config, ours.data());
  writeByHand(config, theirs.data());
  require(ours == theirs, "the configuration written by hand is another one");
}

/// The library's entry is given the narrow text, and so are the others. What they leave is no
/// configuration: it is compared with what the walk over TinyXML leaves.
int const reading = registered("configuration", [](benchmark::State& state) {
  SilentStandardError const silent;
  std::string const narrow = sample("config/full.xml");
  auto const config = std::make_unique<_KVConfiguration>();
  KVXConfigParser parser;
  auto const settings = std::make_unique<Settings>();
  auto const expected = std::make_unique<Settings>();
  require(readerOverTinyxml.configuration(narrow, *expected) && expected->count > 100,
          "no settings to compare with");
  auto const read = [&](Reader const& reader) { return reader.configuration(narrow, *settings); };
  auto const same = [&](Reader const& reader) {
    *settings = {};
    return read(reader) && std::memcmp(settings.get(), expected.get(), sizeof *settings) == 0;
  };
  compare(
      state, [&] { parser.GetConfiguration(narrow.c_str(), 0, *config); },
      againstOtherReaders(narrow, read, same));
});

int const writing = registered("configuration_writing", [](benchmark::State& state) {
  auto const config = fullConfiguration();
  requireTheSameDocument(*config);
  std::wstring out(room, L'\0');
  compare(state, [&] { writeWithKovra(*config, out.data()); },
          {byHand([&] { writeByHand(*config, out.data()); })});
});

/// The face's composing, from a record that is filled: a text in UTF-8 instead of wide characters.
int const composing = registered("configuration_composing", [](benchmark::State& state) {
  auto const config = fullConfiguration();
  frame::MessageRow const& message = *findRequest("configuration");
  long const chosen[] = {compared, 0, 0};
  std::string text;
  frame::Problems problems;
  auto const compose = [&] {
    composeRecord(message, config.get(), chosen, 0, nullptr, text, problems);
  };
  compose();
  std::wstring out(room, L'\0');
  writeByHand(*config, out.data());
  require(widened(text) == out.c_str(), "the configuration composed is another one");
  compare(state,
          [&] {
            std::string().swap(text);
            compose();
          },
          {byHand([&] { writeByHand(*config, out.data()); })});
});

int const debugCopy = registered("configuration_debug_copy", [](benchmark::State& state) {
  auto const config = fullConfiguration();
  std::wstring out(room, L'\0');
  compare(state,
          [&] { KVXSetConfig().SetConfiguration(*config, out.data(), room, compared, 0, false); },
          {{"composing_alone", [&] { writeWithKovra(*config, out.data()); }}});
});

}  // namespace

// What a host's own reader does with the text of an element, whichever parser found it: compare
// names, convert, store. Numbers go through strtol and strtod, because their tolerance is the one
// that hosts know; a name is compared by its length first, which makes a chain of comparisons
// cheap.

#ifndef KOVRA_BENCH_LEAVES_HPP
#define KOVRA_BENCH_LEAVES_HPP

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <memory>
#include <span>
#include <string_view>

#include "readers/readers.hpp"

namespace kovra_bench {

using Kovra::_CardInfo;
using Kovra::_tagAccessPoint;
using Kovra::_tagAccessPoints;
using Kovra::KVGeneralStatus;

/// Text that a parser may take and change.
class Narrow {
 public:
  /// Converts in the process's locale. As in the library's entry, the characters that are the same
  /// in every locale need no conversion; only from the first other on the C library is asked.
  explicit Narrow(std::wstring_view text) : Narrow(text.size() * MB_CUR_MAX, 0) {
    constexpr std::size_t block = 16;
    while (size_ + block <= text.size()) {
      wchar_t seen = 0;
      for (std::size_t i = 0; i < block; ++i) seen |= text[size_ + i];
      if (seen < 0 || seen > 0x7F) break;
      for (std::size_t i = 0; i < block; ++i) {
        text_[size_ + i] = static_cast<char>(text[size_ + i]);
      }
      size_ += block;
    }
    std::mbstate_t state{};
    wchar_t const* rest = text.data() + size_;
    std::size_t const more = ::wcsnrtombs(text_.get() + size_, &rest, text.size() - size_,
                                          text.size() * MB_CUR_MAX - size_, &state);
    if (more != static_cast<std::size_t>(-1)) size_ += more;
  }

  /// Copies.
  explicit Narrow(std::string_view text) : Narrow(text.size(), text.size()) {
    std::memcpy(text_.get(), text.data(), text.size());
  }

  /// The text, with a byte behind it that may be written.
  char* data() const { return text_.get(); }
  std::size_t size() const { return size_; }

 private:
  Narrow(std::size_t room, std::size_t size)
      : text_(std::make_unique_for_overwrite<char[]>(room + 1)), size_(size) {}

  std::unique_ptr<char[]> text_;
  std::size_t size_;
};

// Values.

template <class Integer>
void store(Integer& out, char const* text) {
  out = static_cast<Integer>(std::strtol(text, nullptr, 10));
}

inline void store(float& out, char const* text) {
  out = static_cast<float>(std::strtod(text, nullptr));
}

/// What does not fit is cut.
template <std::size_t N>
void store(char (&out)[N], char const* text) {
  std::size_t const length = ::strnlen(text, N - 1);
  std::memcpy(out, text, length);
  out[length] = '\0';
}

/// A hardware address.
inline void store(unsigned char (&out)[6], char const* text) {
  char const* const end = text + std::strlen(text);
  for (unsigned char& byte : out) {
    auto const [next, error] = std::from_chars(text, end, byte, 16);
    if (error != std::errc() || next == end) return;
    text = next + 1;
  }
}

struct Code {
  std::string_view word;
  int code;
};

inline int codeOf(std::span<Code const> codes, std::string_view text, int unknown) {
  for (Code const& code : codes) {
    if (code.word == text) return code.code;
  }
  return unknown;
}

inline constexpr Code printerStates[] = {
    {"initializing", 1},
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
    {"cleaning", 26},
};
inline constexpr Code laminatorStates[] = {
    {"uninitialized", 1}, {"initializing", 2}, {"ready", 3},      {"standby", 4},
    {"laminating", 5},    {"not_ready", 6},    {"not_used", 7},   {"init_error", 8},
    {"comm_error", 9},    {"fault_error", 10}, {"door_open", 11},
};
inline constexpr Code securities[] = {
    {"open", 0},     {"none", 0},     {"WEP", 1},      {"wep", 1},      {"WEP40", 1}, {"wep40", 1},
    {"WEP104", 2},   {"wep104", 2},   {"WPA", 3},      {"wpa", 3},      {"WPA2", 4},  {"wpa2", 4},
    {"WPA_WPA2", 5}, {"WPA2_WPA", 5}, {"wpa_wpa2", 5}, {"wpa2_wpa", 5},
};
inline constexpr Code ciphers[] = {
    {"none", 0},      {"RC4", 1},       {"rc4", 1},       {"TKIP", 2},
    {"tkip", 2},      {"CCMP", 3},      {"ccmp", 3},      {"TKIP_CCMP", 4},
    {"CCMP_TKIP", 4}, {"tkip_ccmp", 4}, {"ccmp_tkip", 4},
};
inline constexpr Code coercivities[] = {{"none", 0}, {"low", 1}, {"high", 2}};

// Elements. Each function is offered the name and the text of one; an empty one stores nothing.

inline void take(KVGeneralStatus& out, std::string_view name, char const* text) {
  if (*text == '\0') return;
  if (name == "printer_state") {
    out.printer_state = codeOf(printerStates, text, 38);
  } else if (name == "alarms") {
    out.alarms = static_cast<unsigned int>(std::strtoul(text, nullptr, 16));
  } else if (name == "error") {
    store(out.error, text);
  } else if (name == "printer_lock") {
    out.printer_lock = std::string_view(text) == "locked";
  } else if (name == "num_jobs_receiving_or_pending") {
    store(out.num_jobs_receiving_or_pending, text);
  } else if (name == "num_jobs_inprogress") {
    store(out.num_jobs_inprogress, text);
  } else if (name == "num_jobs_done_ok") {
    store(out.num_jobs_done_ok, text);
  } else if (name == "num_jobs_done_error") {
    store(out.num_jobs_done_error, text);
  } else if (name == "num_jobs_total") {
    store(out.num_jobs_total, text);
  } else if (name == "action_id_next") {
    store(out.action_id_next, text);
  } else if (name == "warning") {
    store(out.warning, text);
  } else if (name == "laminator_state") {
    out.laminator_state = codeOf(laminatorStates, text, 0);
  } else if (name == "param_chg_counter") {
    out.param_chg_counter = std::strtoul(text, nullptr, 10) & 0xFFFFU;
  }
}

inline void take(_tagAccessPoint& out, std::string_view name, char const* text) {
  if (*text == '\0') return;
  if (name == "SSID") {
    store(out.ssid, text);
  } else if (name == "BSSID") {
    store(out.bssid, text);
  } else if (name == "Selected") {
    out.selected = std::string_view(text) == "true";
  } else if (name == "Channel") {
    store(out.channel, text);
  } else if (name == "Privacy") {
    store(out.privacy, text);
  } else if (name == "SignalStrength") {
    store(out.signalStrength, text);
  } else if (name == "Infrastructure") {
    out.infrastructure = std::string_view(text) == "true";
  } else if (name == "Security") {
    out.security |= static_cast<unsigned int>(codeOf(securities, text, 0));
  } else if (name == "Encryption") {
    out.encryption |= static_cast<unsigned int>(codeOf(ciphers, text, 0));
  } else if (name == "MaxDataRate") {
    store(out.maxDataRate, text);
  }
}

/// The parts of a card.
enum class Part { none, information, temps, speeds, adjustments };

inline Part partOf(std::string_view name) {
  if (name == "information") return Part::information;
  if (name == "transfer_temps") return Part::temps;
  if (name == "transfer_speeds") return Part::speeds;
  if (name == "laminator_adjustments") return Part::adjustments;
  return Part::none;
}

inline void takeFeature(_CardInfo& out, unsigned int bit, std::string_view text) {
  bool const set = text == "yes" || text == "enabled";
  out.cardFeatures =
      static_cast<unsigned char>(set ? out.cardFeatures | bit : out.cardFeatures & ~bit);
}

inline void takeInformation(_CardInfo& out, std::string_view name, char const* text) {
  if (name == "type") {
    store(out.type, text);
  } else if (name == "halvex_part_number") {
    store(out.halvex_part_number, text);
  } else if (name == "description") {
    store(out.description, text);
  } else if (name == "thickness") {
    store(out.thickness, text);
  } else if (name == "coercivity") {
    out.coercivity = static_cast<unsigned char>(codeOf(coercivities, text, 0));
  } else if (name == "mag_stripe") {
    takeFeature(out, 1, text);
  } else if (name == "contact_encode") {
    takeFeature(out, 2, text);
  } else if (name == "non_contact_encode") {
    takeFeature(out, 4, text);
  }
}

inline void take(Kovra::_TransferTempInfo& out, std::string_view name, char const* text) {
  if (name == "top_single") {
    store(out.top_single.val, text);
  } else if (name == "bot_single") {
    store(out.bot_single.val, text);
  } else if (name == "top_double") {
    store(out.top_double.val, text);
  } else if (name == "bot_double") {
    store(out.bot_double.val, text);
  }
}

inline void take(Kovra::_TransferSpeedInfo& out, std::string_view name, char const* text) {
  if (name == "input_single") {
    store(out.input_single.val, text);
  } else if (name == "output_single") {
    store(out.output_single.val, text);
  } else if (name == "input_double") {
    store(out.input_double.val, text);
  } else if (name == "output_double") {
    store(out.output_double.val, text);
  }
}

inline void take(Kovra::_LaminationAdjustmentsNew& out, std::string_view name, char const* text) {
  if (name == "top_temp_adjust") {
    store(out.top_temp_adjust.val, text);
  } else if (name == "bot_temp_adjust") {
    store(out.bot_temp_adjust.val, text);
  } else if (name == "speed_adjust") {
    store(out.speed_adjust.val, text);
  }
}

/// An element of a card, or of one of its parts.
inline void take(_CardInfo& out, Part part, std::string_view name, char const* text) {
  if (*text == '\0') return;
  switch (part) {
    case Part::none:
      if (name == "cal_table") store(out.cal_table, text);
      return;
    case Part::information:
      return takeInformation(out, name, text);
    case Part::temps:
      return take(out.transfer_temps, name, text);
    case Part::speeds:
      return take(out.transfer_speeds, name, text);
    case Part::adjustments:
      return take(out.laminator_adjustments, name, text);
  }
}

/// Appends an empty card, owned until the list has a place for it.
inline _CardInfo& appendCard(Kovra::_KVMediaInfo& media) {
  auto card = std::make_unique<_CardInfo>();
  media.cards->push_back(card.get());
  return *card.release();
}

/// A whole number, or one with a fraction; false when the text is anything else.
inline bool storeNumber(double& out, char const* text) {
  char* end = nullptr;
  long const whole = std::strtol(text, &end, 10);
  if (*end == '\0') {
    out = static_cast<double>(whole);
    return end != text;
  }
  if (*end != '.') return false;
  out = std::strtod(text, &end);
  return *end == '\0';
}

/// An element that holds a value; an attribute that it lacks is empty.
inline void take(Settings& out, char const* text, char const* min, char const* max) {
  if (out.count == std::size(out.entries)) return;
  Setting& entry = out.entries[out.count++];
  if (!storeNumber(entry.value, text)) store(entry.text, text);
  if (*min != '\0') storeNumber(entry.min, min);
  if (*max != '\0') storeNumber(entry.max, max);
}

}  // namespace kovra_bench

#endif

/// @file
/// The words of the status replies.

#ifndef KOVRA_STATUS_STATUS_WORDS_HPP
#define KOVRA_STATUS_STATUS_WORDS_HPP

#include "frame/vocabulary.hpp"

namespace Kovra::status {

using frame::everyWordIsReachable;
using frame::Match;
using frame::Vocabulary;
using frame::Word;

/// The codes are the state numbering that hosts share with other sources: the gaps are meant, and
/// so are words that share a code.
inline constexpr Word printerStateWords[] = {
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
inline constexpr Vocabulary printerStates{printerStateWords, Match::exact, 38};
static_assert(everyWordIsReachable(printerStates));

inline constexpr Word laminatorStateWords[] = {
    {"uninitialized", 1}, {"initializing", 2}, {"ready", 3},      {"standby", 4},
    {"laminating", 5},    {"not_ready", 6},    {"not_used", 7},   {"init_error", 8},
    {"comm_error", 9},    {"fault_error", 10}, {"door_open", 11},
};
inline constexpr Vocabulary laminatorStates{laminatorStateWords, Match::exact, 0};
static_assert(everyWordIsReachable(laminatorStates));

/// One numbering for the states of a job, answers, the panel being printed, the steps and errors of
/// the encoders, the card's position and the steps of lamination. "mag_read" is "reading" again.
inline constexpr Word jobStateWords[] = {
    {"initializing", 0},
    {"receiving", 1},
    {"receive_ok", 2},
    {"receive_error", 3},
    {"receive_offline", 4},
    {"parsed", 5},
    {"in_progress", 6},
    {"done_ok", 7},
    {"done_error", 8},
    {"cancelled_by_user", 9},
    {"cancelled_by_error", 10},
    {"cleaning_up", 18},
    {"yes", 11},
    {"no", 12},
    {"yellow", 13},
    {"magenta", 14},
    {"cyan", 15},
    {"black", 16},
    {"clear", 17},
    {"encoding", 19},
    {"verifying", 20},
    {"reading", 21},
    {"at_station", 26},
    {"smart_encode_error", 27},
    {"contact_error", 28},
    {"contactless_error", 29},
    {"read_error", 22},
    {"read_ein_error", 23},
    {"write_error", 24},
    {"retrace_error", 25},
    {"not_in_printer", 30},
    {"feeding", 31},
    {"in_process", 32},
    {"ejecting_eject", 33},
    {"ejecting_reject", 34},
    {"ejecting_feeder", 35},
    {"held", 36},
    {"laminating", 41},
    {"transferring", 38},
    {"transfer_wait", 37},
    {"waiting_printer", 42},
    {"printing", 43},
    {"laminate", 39},
    {"laminate_insert", 40},
    {"mag_read", 21},
};
inline constexpr Vocabulary jobStates{jobStateWords, Match::exact, -1};
static_assert(everyWordIsReachable(jobStates));

inline constexpr Word cleaningStateWords[] = {
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
inline constexpr Vocabulary cleaningStates{cleaningStateWords, Match::exact, 10};
static_assert(everyWordIsReachable(cleaningStates));

/// An unknown word is taken for "off".
inline constexpr Word wirelessStateWords[] = {
    {"off", 0},         {"disconnected", 1}, {"inactive", 2},  {"scanning", 3},
    {"associating", 4}, {"associated", 5},   {"handshake", 6}, {"connected", 7},
};
inline constexpr Vocabulary wirelessStates{wirelessStateWords, Match::exact, 0};
static_assert(everyWordIsReachable(wirelessStates));

// Security and cipher. Words in mixed case are unknown. The words of code 0 set nothing.

inline constexpr Word securityWords[] = {
    {"open", 0},     {"none", 0},     {"WEP", 1},      {"wep", 1},      {"WEP40", 1}, {"wep40", 1},
    {"WEP104", 2},   {"wep104", 2},   {"WPA", 3},      {"wpa", 3},      {"WPA2", 4},  {"wpa2", 4},
    {"WPA_WPA2", 5}, {"WPA2_WPA", 5}, {"wpa_wpa2", 5}, {"wpa2_wpa", 5},
};
inline constexpr Vocabulary securities{securityWords, Match::exact, 0};
static_assert(everyWordIsReachable(securities));

/// The mixed cipher is 4 in the wireless replies, though the configuration knows it as 3: meant.
inline constexpr Word cipherWords[] = {
    {"none", 0},      {"RC4", 1},       {"rc4", 1},       {"TKIP", 2},
    {"tkip", 2},      {"CCMP", 3},      {"ccmp", 3},      {"TKIP_CCMP", 4},
    {"CCMP_TKIP", 4}, {"tkip_ccmp", 4}, {"ccmp_tkip", 4},
};
inline constexpr Vocabulary ciphers{cipherWords, Match::exact, 0};
static_assert(everyWordIsReachable(ciphers));

}  // namespace Kovra::status

#endif

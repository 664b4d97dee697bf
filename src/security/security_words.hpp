/// @file
/// The words of the secure-action exchange.

#ifndef KOVRA_SECURITY_SECURITY_WORDS_HPP
#define KOVRA_SECURITY_SECURITY_WORDS_HPP

#include "frame/vocabulary.hpp"

namespace Kovra::security {

using frame::everyWordIsReachable;
using frame::Match;
using frame::Vocabulary;
using frame::Word;

/// Tried in this order wherever they stand in a text, so that "unlock_printer" comes before the
/// "lock_printer" in it. Actions are carried as texts; none has a code.
inline constexpr Word actionWords[] = {
    {"cancel_printer_passkey", 0},
    {"set_single_sided", 0},
    {"set_double_sided", 0},
    {"reset_physical_address", 0},
    {"reset_oem", 0},
    {"reset_printer_serial_number", 0},
    {"reset_laminator_serial_number", 0},
    {"clear_error_log", 0},
    {"clear_card_cleaning_log", 0},
    {"clear_service_log", 0},
    {"reset_card_count", 0},
    {"reset_impression_count", 0},
    {"reset_system_defaults", 0},
    {"reset_cards_laminated", 0},
    {"unlock_printer", 0},
    {"lock_printer", 0},
};
inline constexpr Vocabulary actionNames{actionWords, Match::substring, 0};
static_assert(everyWordIsReachable(actionNames));

}  // namespace Kovra::security

#endif

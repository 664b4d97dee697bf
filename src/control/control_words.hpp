/// @file
/// The words of device commands.

#ifndef KOVRA_CONTROL_CONTROL_WORDS_HPP
#define KOVRA_CONTROL_CONTROL_WORDS_HPP

#include "frame/vocabulary.hpp"

namespace Kovra::control {

using frame::everyWordIsReachable;
using frame::Match;
using frame::Vocabulary;
using frame::Word;

inline constexpr Word motorWords[] = {
    {"card_feed", 0}, {"card_x", 1},  {"ribbon", 2},
    {"head_lift", 3}, {"options", 4}, {"flipper", 5},
};
inline constexpr Vocabulary motors{motorWords, Match::exact, -1};
static_assert(everyWordIsReachable(motors));

inline constexpr Word motorModeWords[] = {{"off", 0}, {"on", 1}, {"warm_up", 2}};
inline constexpr Vocabulary motorModes{motorModeWords, Match::exact, -1};
static_assert(everyWordIsReachable(motorModes));

inline constexpr Word calibrationWords[] = {
    {"low", 1}, {"high", 2}, {"calc", 3}, {"mot_cur_off", 4}, {"mot_cur_on", 5}, {"save_cal", 6},
};
inline constexpr Vocabulary calibrations{calibrationWords, Match::exact, -1};
static_assert(everyWordIsReachable(calibrations));

inline constexpr Word rfidModeWords[] = {{"off", 0}, {"on", 1}, {"modulate", 2}};
inline constexpr Vocabulary rfidModes{rfidModeWords, Match::exact, -1};
static_assert(everyWordIsReachable(rfidModes));

inline constexpr Word switchStateWords[] = {{"off", 0}, {"on", 1}};
inline constexpr Vocabulary switchStates{switchStateWords, Match::exact, -1};
static_assert(everyWordIsReachable(switchStates));

inline constexpr Word directionWords[] = {{"forward", 0}, {"reverse", 1}};
inline constexpr Vocabulary directions{directionWords, Match::exact, -1};
static_assert(everyWordIsReachable(directions));

inline constexpr Word spoolWords[] = {{"both", 0}, {"top", 1}, {"bottom", 2}};
inline constexpr Vocabulary spools{spoolWords, Match::exact, -1};
static_assert(everyWordIsReachable(spools));

/// What a laminator's text says of its spools, with their codes; the text that is written is then
/// the first.
inline constexpr Word scalWords[] = {{"scal", 0}, {"scal 1", 1}, {"scal 2", 2}};
inline constexpr Vocabulary scals{scalWords, Match::exact, -1};
static_assert(everyWordIsReachable(scals));

}  // namespace Kovra::control

#endif

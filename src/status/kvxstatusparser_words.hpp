/// @file
/// The vocabularies that several status replies share.

#ifndef KOVRA_STATUS_KVXSTATUSPARSER_WORDS_HPP
#define KOVRA_STATUS_KVXSTATUSPARSER_WORDS_HPP

#include "frame/vocabulary.hpp"

namespace Kovra {

inline constexpr frame::Word laminatorStateWords[] = {
    {"uninitialized", 1}, {"initializing", 2}, {"ready", 3},      {"standby", 4},
    {"laminating", 5},    {"not_ready", 6},    {"not_used", 7},   {"init_error", 8},
    {"comm_error", 9},    {"fault_error", 10}, {"door_open", 11},
};
inline constexpr frame::Vocabulary laminatorStates{laminatorStateWords, frame::Match::exact, 0};
static_assert(frame::everyWordIsReachable(laminatorStates));

}  // namespace Kovra

#endif

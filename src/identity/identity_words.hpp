/// @file
/// The words of those who set an identity.

#ifndef KOVRA_IDENTITY_IDENTITY_WORDS_HPP
#define KOVRA_IDENTITY_IDENTITY_WORDS_HPP

#include "frame/vocabulary.hpp"
#include "kvxsetprinterinfo.h"

namespace Kovra::identity {

/// What people call the fields that may be set.
inline constexpr frame::Word fieldWords[] = {{"model", fieldPrinterModel},
                                             {"printhead", fieldPrintheadSerial}};
inline constexpr frame::Vocabulary fieldNames{fieldWords, frame::Match::exact, 0};
static_assert(frame::everyWordIsReachable(fieldNames));

}  // namespace Kovra::identity

#endif

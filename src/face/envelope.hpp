/// @file
/// What stands around everything that the library says in JSON.

#ifndef KOVRA_FACE_ENVELOPE_HPP
#define KOVRA_FACE_ENVELOPE_HPP

#include <cstddef>

#include "face/findings.hpp"
#include "face/json.hpp"

namespace Kovra {

/// Keys are only ever added. What would break a program that reads the present ones takes the next
/// number.
inline constexpr std::size_t contractVersion = 1;

/// Begins an object with the version of the contract, and whether what was asked for was done.
void beginEnvelope(JsonWriter& json, bool isGood);

/// Adds an object that tells all of a refusal or a note.
void addFinding(JsonWriter& json, detail::FindingData const& finding);

}  // namespace Kovra

#endif

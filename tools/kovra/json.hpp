/// @file
/// The JSON form of a decoded reply: a contract with programs, which docs/json.md says in full.

#ifndef KOVRA_TOOL_JSON_HPP
#define KOVRA_TOOL_JSON_HPP

#include <kovra.hpp>
#include <string>
#include <string_view>

#include "secret.hpp"

namespace Kovra::tool {

/// One object, indented, without the reply's file: what it holds does not depend on how it came.
std::string json(Decoding const& decoding, Secrets secrets);

/// The same object on one line, with `source` in front.
std::string jsonLine(Decoding const& decoding, Secrets secrets, std::string_view source);

}  // namespace Kovra::tool

#endif

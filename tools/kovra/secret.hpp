/// @file
/// Keys, pass phrases and track data are not shown unasked, neither to people nor to programs.

#ifndef KOVRA_TOOL_SECRET_HPP
#define KOVRA_TOOL_SECRET_HPP

#include <kovra.hpp>

namespace Kovra::tool {

enum class Secrets { masked, shown };

/// What stands in place of a secret, whatever its length.
inline constexpr char mask[] = "******";

/// Is this a single value to be masked? Lists and records are not: their entries are, each by
/// itself. A keyword is no secret, since its words are public.
inline bool isMasked(Value const& value, Secrets secrets) {
  if (secrets == Secrets::shown || !value.secret) return false;
  switch (value.kind) {
    case Value::Kind::flag:
    case Value::Kind::integer:
    case Value::Kind::natural:
    case Value::Kind::real:
    case Value::Kind::text:
      return true;
    case Value::Kind::nothing:
    case Value::Kind::keyword:
    case Value::Kind::list:
    case Value::Kind::record:
      return false;
  }
  return true;
}

}  // namespace Kovra::tool

#endif

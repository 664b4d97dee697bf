// The decoded value of the public face. It lives down here because the observer builds it.

#include <algorithm>

#include "kovra.hpp"

namespace Kovra {

Value::Value() = default;
Value::Value(Value const&) = default;
Value::Value(Value&&) noexcept = default;
Value& Value::operator=(Value const&) = default;
Value& Value::operator=(Value&&) noexcept = default;
Value::~Value() = default;

Value const* Value::find(std::string const& name) const {
  auto const found = std::find_if(members.begin(), members.end(),
                                  [&](Member const& member) { return member.name == name; });
  return found != members.end() ? &found->value : nullptr;
}

}  // namespace Kovra

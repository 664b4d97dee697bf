// The decoded value of the public face. It lives down here because the observer builds it.

#include <algorithm>
#include <memory>
#include <utility>

#include "frame/wipe.hpp"
#include "kovra.hpp"

namespace Kovra {

Value::Value() = default;
Value::Value(Value const&) = default;
Value::Value(Value&&) noexcept = default;

Value& Value::operator=(Value const& other) {
  if (this != &other) *this = Value(other);
  return *this;
}

/// What was there goes as if it were destroyed, so that no secret is left.
Value& Value::operator=(Value&& other) noexcept {
  if (this == &other) return *this;
  std::destroy_at(this);
  return *std::construct_at(this, std::move(other));
}

/// A secret is wiped, also what is left of a short one in a text that was moved from.
Value::~Value() {
  if (!secret) return;
  text.resize(text.capacity());
  frame::wipe(text.data(), text.size());
}

Value const* Value::find(std::string const& name) const {
  auto const found = std::find_if(members.begin(), members.end(),
                                  [&](Member const& member) { return member.name == name; });
  return found != members.end() ? &found->value : nullptr;
}

}  // namespace Kovra

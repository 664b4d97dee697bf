/// @file
/// What a pointer to member tells while compiling: its record, its type and its name.

#ifndef KOVRA_FRAME_MEMBER_HPP
#define KOVRA_FRAME_MEMBER_HPP

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace Kovra::frame {

namespace detail {

/// The name of the member in the compiler's own rendering of this function's signature ("... M =
/// &Kovra::KVGeneralStatus::alarms]"), of which nothing else gets into the library.
template <auto M>
consteval std::string_view nameInSignature() {
  std::string_view const signature = __PRETTY_FUNCTION__;
  std::size_t const value = signature.find("M = &") + std::string_view("M = &").size();
  std::size_t const end = signature.find_first_of(";]", value);
  std::size_t const colon = signature.rfind("::", end);
  return signature.substr(colon + 2, end - colon - 2);
}

template <auto M>
[[gnu::visibility("hidden")]] inline constexpr auto lettersOfName = [] {
  std::array<char, nameInSignature<M>().size()> name{};
  std::copy_n(nameInSignature<M>().begin(), name.size(), name.begin());
  return name;
}();

}  // namespace detail

template <auto M>
struct Member;

template <class RecordType, class ValueType, ValueType RecordType::*M>
struct Member<M> {
  using Record = RecordType;
  using Type = ValueType;

  /// The member's name as its record spells it, so that no table repeats it.
  static constexpr std::string_view name() {
    return {detail::lettersOfName<M>.data(), detail::lettersOfName<M>.size()};
  }
};

/// The same for those who see Kovra::Member as well.
template <auto M>
[[gnu::visibility("hidden")]] inline constexpr std::string_view memberName = Member<M>::name();

namespace detail {
struct NamingProof {
  int first_member;
  char second[4];
};
static_assert(Member<&NamingProof::first_member>::name() == "first_member");
static_assert(Member<&NamingProof::second>::name() == "second");
}  // namespace detail

}  // namespace Kovra::frame

#endif

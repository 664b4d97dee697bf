/// @file
/// What the headers of the classic classes stand on: the export marker, TinyXML, and the rule that
/// lets a string literal stand where an operation takes a `char*` that it only reads.

#ifndef KOVRA_BASE_H
#define KOVRA_BASE_H

#include <tinyxml.h>

#ifndef TIXML_USE_STL
#error "Kovra needs TinyXML built with its std::string support: compile with -DTIXML_USE_STL."
#endif

#include <cstddef>
#include <type_traits>

#include "kovra_export.h"

namespace Kovra {
namespace detail {

/// True for a text that can only be read: a string literal or a `char const*`.
template <class Text>
struct IsReadOnlyText
    : std::integral_constant<bool, std::is_convertible<Text const&, char const*>::value &&
                                       !std::is_convertible<Text const&, char*>::value> {};

/// Selects the overloads that take a text by `Text const&`.
template <class Text>
using ReadOnlyText = typename std::enable_if<IsReadOnlyText<Text>::value, int>::type;

/// True for NULL and for nullptr. A template sees NULL as a number; only the value itself is taken
/// for it, never a variable of the same type, whose `Text` is a reference.
template <class Text>
struct IsNull
    : std::integral_constant<
          bool, std::is_same<Text, decltype(NULL)>::value ||
                    std::is_same<typename std::decay<Text>::type, std::nullptr_t>::value> {};

/// True for a text and for null.
template <class Text>
struct IsTextOrNull : std::integral_constant<bool, std::is_convertible<Text, char const*>::value ||
                                                       IsNull<Text>::value> {};

/// The same for operations that take several texts: each is one or null, and some can only be read.
template <class... Texts>
struct AreTextsSomeReadOnly;

template <class Text>
struct AreTextsSomeReadOnly<Text> {
  static constexpr bool texts = IsTextOrNull<Text>::value;
  static constexpr bool some = IsReadOnlyText<Text>::value;
};

template <class Text, class... Others>
struct AreTextsSomeReadOnly<Text, Others...> {
  static constexpr bool texts =
      AreTextsSomeReadOnly<Text>::texts && AreTextsSomeReadOnly<Others...>::texts;
  static constexpr bool some =
      AreTextsSomeReadOnly<Text>::some || AreTextsSomeReadOnly<Others...>::some;
};

/// Selects the overloads that take several texts, each by forwarding reference, in any mix.
template <class... Texts>
using SomeReadOnlyText = typename std::enable_if<
    AreTextsSomeReadOnly<Texts...>::texts && AreTextsSomeReadOnly<Texts...>::some, int>::type;

/// Selects the overloads that take a wide text by `Text const&`.
template <class Text>
using ReadOnlyWideText =
    typename std::enable_if<std::is_convertible<Text const&, wchar_t const*>::value &&
                                !std::is_convertible<Text const&, wchar_t*>::value,
                            int>::type;

/// Hands a text to an operation that is declared with `char*` for hosts that link against it, and
/// that never writes through it.
inline char* borrowed(char const* text) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): what this is for
  return const_cast<char*>(text);
}
inline char* borrowed(decltype(NULL)) {
  return nullptr;
}
inline wchar_t* borrowedWide(wchar_t const* text) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): what this is for
  return const_cast<wchar_t*>(text);
}

}  // namespace detail
}  // namespace Kovra

#endif

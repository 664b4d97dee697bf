/// @file
/// Rows whose values are secrets: carried like any other text, and never shown in a diagnostic.

#ifndef KOVRA_FRAME_TYPED_SECRET_HPP
#define KOVRA_FRAME_TYPED_SECRET_HPP

#include <tinyxml.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "frame/typed/field.hpp"
#include "frame/typed/reply.hpp"
#include "frame/wipe.hpp"

namespace Kovra::frame::typed {

/// What may be told of a value that should have become a secret.
inline std::string describedSecret(Value const& value) {
  return value.kind == Value::Kind::text
             ? "a text of " + std::to_string(value.text.size()) + " bytes"
             : "a value of another kind";
}

/// A text that is read and written like any other, and never shown.
struct SecretTextKind {
  template <std::size_t N>
  static bool read(Element element, char (&out)[N]) {
    return TextKind::read(element, out);
  }

  template <std::size_t N>
  static void report(Observer& observer, std::string_view name, Element element,
                     char const (&value)[N]) {
    observer.secrecy(true);
    TextKind::report(observer, name, element, value);
    observer.secrecy(false);
  }

  template <std::size_t N>
  static bool write(TiXmlElement& parent, char const* element, char const (&value)[N]) {
    return KVXHelper::AddTagString(&parent, element, TerminatedText<N>(value).get());
  }

  template <std::size_t N>
  static Assigned assign(char (&out)[N], Value const& value, Problem& problem) {
    Assigned const result = TextKind::assign(out, value, problem);
    if (result == Assigned::failed) problem.found = describedSecret(value);
    return result;
  }
};

template <auto M>
constexpr auto secretText(std::string_view element) {
  return row<M, SecretTextKind>(element);
}

/// The catalogue's line of a reply whose record is wiped once it is shown.
template <class Record, class Reading>
constexpr ReplyReader secretReader(std::string_view name, std::string_view title, Roots roots) {
  return {name, title, roots,
          [](Element root, Observer& observer) {
            auto const record = std::make_unique<Record>();
            WipedAtEnd<Record> const wiped(*record);
            return Reading::read(root, *record, observer);
          },
          &Reading::outline};
}

}  // namespace Kovra::frame::typed

#endif

/// @file
/// The rows of tables, made from pointers to members: of one value, of a nested record, of a group
/// of members, or with a reading of their own.

#ifndef KOVRA_FRAME_ROWS_HPP
#define KOVRA_FRAME_ROWS_HPP

#include <tinyxml.h>

#include <concepts>
#include <string_view>
#include <type_traits>

#include "frame/kinds.hpp"
#include "frame/member.hpp"
#include "frame/observer.hpp"
#include "frame/walk.hpp"

namespace Kovra::frame {

namespace detail {

template <class Kind>
concept HasWords = requires(Outline& outline) {
  Kind::outline(outline);
};

template <class Kind, class Type>
concept TellsOfMissing = requires(Observer& observer, Element element, Type const& value) {
  Kind::missing(observer, "", element, value);
};

template <class Kind, class Type>
concept Writes = requires(TiXmlElement& parent, Type const& value) {
  { Kind::write(parent, "", value) } -> std::same_as<bool>;
};

template <class Kind, class Type>
concept Assigns = requires(Type& target, Value const& value, Problem& problem) {
  { Kind::assign(target, value, problem) } -> std::same_as<Assigned>;
};

template <auto M, class Kind>
constexpr auto writeOfKind() -> bool (*)(TiXmlElement&, char const*,
                                         typename Member<M>::Record const&, Circumstances, bool) {
  if constexpr (Writes<Kind, typename Member<M>::Type>) {
    return [](TiXmlElement& parent, char const* element, typename Member<M>::Record const& record,
              Circumstances, bool) { return Kind::write(parent, element, record.*M); };
  } else {
    return nullptr;
  }
}

template <auto M, class Kind>
constexpr auto assignOfKind()
    -> Assigned (*)(typename Member<M>::Record&, std::string_view, Value const&, Problem&) {
  if constexpr (Assigns<Kind, typename Member<M>::Type>) {
    return [](typename Member<M>::Record& record, std::string_view member, Value const& value,
              Problem& problem) {
      if (member != Member<M>::name()) return Assigned::notMine;
      return Kind::assign(record.*M, value, problem);
    };
  } else {
    return nullptr;
  }
}

template <auto M>
void keyOf(Keys& keys) {
  keys.push_back(Member<M>::name());
}

template <auto M, class Kind>
constexpr auto keysOfKind() -> void (*)(Keys&) {
  return Assigns<Kind, typename Member<M>::Type> ? &keyOf<M> : nullptr;
}

template <class Reading>
constexpr auto keysOfReading() -> void (*)(Keys&) {
  if constexpr (requires(Keys & keys) { Reading::keys(keys); }) {
    return [](Keys& keys) { Reading::keys(keys); };
  } else {
    return nullptr;
  }
}

template <class Kind>
constexpr auto outlineOfKind() -> void (*)(Outline&) {
  if constexpr (HasWords<Kind>) {
    return &Kind::outline;
  } else {
    return nullptr;
  }
}

}  // namespace detail

/// A row of any one-value kind.
template <auto M, class Kind>
constexpr auto row(std::string_view element) {
  using Record = typename Member<M>::Record;
  return Field<Record>{
      element,
      [](Element child, Record& record, Watch const& watch) {
        bool const read = Kind::read(child, record.*M);
        remark(watch, [&](Observer& observer) {
          if (read) {
            Kind::report(observer, Member<M>::name(), child, record.*M);
          } else if constexpr (detail::TellsOfMissing<Kind, typename Member<M>::Type>) {
            Kind::missing(observer, Member<M>::name(), child, record.*M);
          } else {
            observer.emptyElement(child);
          }
        });
        return read;
      },
      detail::outlineOfKind<Kind>(),
      detail::writeOfKind<M, Kind>(),
      detail::assignOfKind<M, Kind>(),
      0,
      detail::keysOfKind<M, Kind>()};
}

template <auto M>
constexpr auto number(std::string_view element) {
  return row<M, NumberKind>(element);
}

template <auto M>
constexpr auto hexadecimal(std::string_view element) {
  return row<M, HexadecimalKind>(element);
}

template <auto M>
constexpr auto text(std::string_view element) {
  return row<M, TextKind>(element);
}

template <auto M>
constexpr auto address(std::string_view element) {
  return row<M, AddressKind>(element);
}

template <auto M, Vocabulary const& Words>
constexpr auto keyword(std::string_view element) {
  return row<M, KeywordKind<Words>>(element);
}

template <auto M, Vocabulary const& Words>
constexpr auto anyKeyword(std::string_view element) {
  return row<M, AnyKeywordKind<Words>>(element);
}

template <auto M, Vocabulary const& Words>
constexpr auto knownKeyword(std::string_view element) {
  return row<M, KnownKeywordKind<Words>>(element);
}

template <auto M>
constexpr auto enabled(std::string_view element) {
  return row<M, SwitchKind<"enabled", "disabled">>(element);
}

template <auto M>
constexpr auto yesOrNo(std::string_view element) {
  return row<M, SwitchKind<"yes", "no">>(element);
}

template <auto M, Fixed Word>
constexpr auto flagIf(std::string_view element) {
  return row<M, WordFlagKind<Word, true>>(element);
}

template <auto M, Fixed Word>
constexpr auto flagUnless(std::string_view element) {
  return row<M, WordFlagKind<Word, false>>(element);
}

/// A whole number in an attribute of the element, whose text is not looked at.
template <Fixed Attribute>
struct AttributeKind {
  static bool read(Element element, int& out) {
    return convertBound(element.attribute(Attribute.text), out);
  }

  static void report(Observer& observer, std::string_view name, Element, int value) {
    observer.member(name, shown(value));
  }

  static void missing(Observer& observer, std::string_view, Element element, int) {
    observer.noAttribute(element, Attribute);
  }

  static void outline(Outline& outline) { outline.emplace(std::string_view(Attribute)); }
};

template <auto M, Fixed Attribute>
constexpr auto attribute(std::string_view element) {
  return row<M, AttributeKind<Attribute>>(element);
}

// Rows that read an element's children. Each is a struct with
//   read     `read(element, record, watch)`, a template over the watch
//   write    `write(parent, element, record, circumstances, result)`: the new running result
//   assign   `assign(record, member, value, problem)`
//   keys     `keys(keys)`: the members that assign takes
//   outline  the words below the element
// of which all but the first may be left out.

namespace detail {

template <class Record, class Reading>
concept WritesRecord = requires(TiXmlElement& parent, Record const& record) {
  { Reading::write(parent, "", record, Circumstances{}, true) } -> std::same_as<bool>;
};

template <class Record, class Reading>
concept AssignsRecord = requires(Record& record, Value const& value, Problem& problem) {
  { Reading::assign(record, "", value, problem) } -> std::same_as<Assigned>;
};

template <class Record, class Reading>
constexpr auto writeOfReading()
    -> bool (*)(TiXmlElement&, char const*, Record const&, Circumstances, bool) {
  if constexpr (WritesRecord<Record, Reading>) {
    return [](TiXmlElement& parent, char const* element, Record const& record,
              Circumstances circumstances, bool result) {
      return Reading::write(parent, element, record, circumstances, result);
    };
  } else {
    return nullptr;
  }
}

template <class Record, class Reading>
constexpr auto assignOfReading()
    -> Assigned (*)(Record&, std::string_view, Value const&, Problem&) {
  if constexpr (AssignsRecord<Record, Reading>) {
    return [](Record& record, std::string_view member, Value const& value, Problem& problem) {
      return Reading::assign(record, member, value, problem);
    };
  } else {
    return nullptr;
  }
}

}  // namespace detail

/// A row whose reading is a small function of its own, with a comment that says why it is odd.
template <class Record, class Reading>
constexpr Field<Record> reading(std::string_view element) {
  return {element,
          [](Element child, Record& record, Watch const& watch) {
            return Reading::read(child, record, watch);
          },
          detail::outlineOfKind<Reading>(),
          detail::writeOfReading<Record, Reading>(),
          detail::assignOfReading<Record, Reading>(),
          0,
          detail::keysOfReading<Reading>()};
}

/// Adds the element `name` and writes the table below it. The result is that of the last row
/// written; false when the element could not be made or no row wrote anything.
template <class Record, std::size_t N>
bool writeBelow(TiXmlElement& parent, char const* name, Field<Record> const (&table)[N],
                Record const& record, Circumstances circumstances) {
  TiXmlElement* const element = KVXHelper::AddTag(&parent, name);
  return element != nullptr && writeAll(*element, table, record, circumstances, false);
}

/// Tells of an element below which a table finds nothing to read.
void remarkIfEmpty(Element element, Watch const& watch) {
  remark(watch, [&](Observer& observer) {
    if (!element.firstChild()) observer.emptyElement(element);
  });
}

/// A nested record with a table of its own.
template <auto M, auto const& Table>
struct NestedReading {
  template <class Record>
  static bool read(Element element, Record& record, Watch const& watch) {
    remarkIfEmpty(element, watch);
    return watch.within(memberName<M>, [&] { return walk(element, Table, record.*M, watch); });
  }
  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const& record,
                    Circumstances circumstances, bool) {
    return writeBelow(parent, element, Table, record.*M, circumstances);
  }
  template <class Record>
  static Assigned assign(Record& record, std::string_view member, Value const& value,
                         Problem& problem) {
    if (member != Member<M>::name()) return Assigned::notMine;
    return assignAll(Table, record.*M, value, problem);
  }
  static void keys(Keys& keys) { detail::keyOf<M>(keys); }
  static void outline(Outline& outline) { outlineOf(Table, outline); }
};

template <auto M, auto const& Table>
constexpr auto nested(std::string_view element) {
  return reading<typename Member<M>::Record, NestedReading<M, Table>>(element);
}

/// How an element is read whose children fill members of the record itself: also a whole reply.
template <auto const& Table>
struct TableReading {
  template <class Record>
  static bool read(Element element, Record& record, Watch const& watch) {
    remarkIfEmpty(element, watch);
    return walk(element, Table, record, watch);
  }
  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const& record,
                    Circumstances circumstances, bool) {
    return writeBelow(parent, element, Table, record, circumstances);
  }
  template <class Record>
  static Assigned assign(Record& record, std::string_view member, Value const& value,
                         Problem& problem) {
    return assignMember(Table, record, member, value, problem);
  }
  static void keys(Keys& keys) { keysOf(Table, keys); }
  static void outline(Outline& outline) { outlineOf(Table, outline); }
};

template <class Record, auto const& Table>
constexpr auto group(std::string_view element) {
  return reading<Record, TableReading<Table>>(element);
}

}  // namespace Kovra::frame

#endif

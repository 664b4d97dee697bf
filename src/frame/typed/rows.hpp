/// @file
/// The rows of tables, made from pointers to members: of one value, of a nested record, of a group
/// of members, or with a reading of their own.

#ifndef KOVRA_FRAME_TYPED_ROWS_HPP
#define KOVRA_FRAME_TYPED_ROWS_HPP

#include <tinyxml.h>

#include <concepts>
#include <string_view>
#include <type_traits>

#include "frame/member.hpp"
#include "frame/observer.hpp"
#include "frame/typed/kinds.hpp"
#include "frame/typed/walk.hpp"

namespace Kovra::frame::typed {

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
concept Reads = requires(Element element, Type& value) {
  { Kind::read(element, value) } -> std::same_as<bool>;
};

template <class Kind, class Type>
concept Writes = requires(TiXmlElement& parent, Type const& value) {
  { Kind::write(parent, "", value) } -> std::same_as<bool>;
};

template <class Kind, class Type>
concept Assigns = requires(Type& target, Value const& value, Problem& problem) {
  { Kind::assign(target, value, problem) } -> std::same_as<Assigned>;
};

// What a kind of one value, a struct with static functions, can do with values of one type.

template <class Kind, class Type>
bool readValue(Row const& row, Element element, void* place, Watch const& watch) {
  Type& value = *static_cast<Type*>(place);
  bool const read = Kind::read(element, value);
  remark(watch, [&](Observer& observer) {
    if (read) {
      Kind::report(observer, row.member, element, value);
    } else if constexpr (TellsOfMissing<Kind, Type>) {
      Kind::missing(observer, row.member, element, value);
    } else {
      observer.emptyElement(element);
    }
  });
  return read;
}

template <class Kind, class Type>
constexpr auto writeOfKind() -> decltype(typed::Kind::write) {
  if constexpr (Writes<Kind, Type>) {
    return [](TiXmlElement& parent, char const* element, void const* place, Circumstances, bool) {
      return Kind::write(parent, element, *static_cast<Type const*>(place));
    };
  } else {
    return nullptr;
  }
}

template <class Kind, class Type>
constexpr auto assignOfKind() -> decltype(typed::Kind::assign) {
  if constexpr (Assigns<Kind, Type>) {
    return [](Row const& row, void* place, std::string_view member, Value const& value,
              Problem& problem) {
      if (member != row.member) return Assigned::notMine;
      return Kind::assign(*static_cast<Type*>(place), value, problem);
    };
  } else {
    return nullptr;
  }
}

/// The member's own name is the only one.
inline void keyOfRow(Row const& row, Keys& keys) {
  keys.push_back(row.member);
}

template <class Kind>
constexpr auto outlineOfKind() -> decltype(typed::Kind::outline) {
  if constexpr (HasWords<Kind>) {
    return &Kind::outline;
  } else {
    return nullptr;
  }
}

template <class Struct, class Type>
inline constexpr Kind kindOfValue{
    &readValue<Struct, Type>, writeOfKind<Struct, Type>(), assignOfKind<Struct, Type>(),
    Assigns<Struct, Type> ? &keyOfRow : nullptr, outlineOfKind<Struct>()};

/// A member's place in its record.
template <auto M>
void* memberIn(void* record) {
  return &(static_cast<typename Member<M>::Record*>(record)->*M);
}

/// Of rows that work on the record itself.
inline void* itself(void* record) {
  return record;
}

/// Adds the member's name, for readings that are no kind of one value.
template <auto M>
void keyOf(Keys& keys) {
  keys.push_back(Member<M>::name());
}

}  // namespace detail

/// A row of any one-value kind.
template <auto M, class Kind>
constexpr auto row(std::string_view element) {
  using Type = typename Member<M>::Type;
  static_assert(detail::Reads<Kind, Type>, "this kind reads no members of this type");
  static_assert(detail::Writes<Kind, Type> || std::is_base_of_v<NeverWritten, Kind>,
                "this kind writes no members of this type and does not say so");
  static_assert(detail::Assigns<Kind, Type> || std::is_base_of_v<NeverAssigned, Kind>,
                "this kind assigns to no members of this type and does not say so");
  return Field<typename Member<M>::Record>(
      Row{element, Member<M>::name(), &detail::memberIn<M>, &detail::kindOfValue<Kind, Type>});
}

template <auto M>
constexpr auto number(std::string_view element) {
  constexpr bool isCounter = std::is_same_v<typename Member<M>::Type, unsigned long>;
  return row<M, std::conditional_t<isCounter, CounterKind, NumberKind>>(element);
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
struct AttributeKind : NeverWritten, NeverAssigned {
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
// of which keys and outline may be left out. One that does not write or assign is NeverWritten or
// NeverAssigned, as a kind is.

namespace detail {

template <class Record, class Reading>
concept ReadsRecord = requires(Element element, Record& record, Watch const& watch) {
  { Reading::read(element, record, watch) } -> std::same_as<bool>;
};

template <class Record, class Reading>
concept WritesRecord = requires(TiXmlElement& parent, Record const& record) {
  { Reading::write(parent, "", record, Circumstances{}, true) } -> std::same_as<bool>;
};

template <class Record, class Reading>
concept AssignsRecord = requires(Record& record, Value const& value, Problem& problem) {
  { Reading::assign(record, "", value, problem) } -> std::same_as<Assigned>;
};

template <class Record, class Reading>
constexpr auto readOfReading() -> decltype(Kind::read) {
  if constexpr (ReadsRecord<Record, Reading>) {
    return [](Row const&, Element element, void* place, Watch const& watch) {
      return Reading::read(element, *static_cast<Record*>(place), watch);
    };
  } else {
    return nullptr;
  }
}

template <class Record, class Reading>
constexpr auto writeOfReading() -> decltype(Kind::write) {
  if constexpr (WritesRecord<Record, Reading>) {
    return [](TiXmlElement& parent, char const* element, void const* place,
              Circumstances circumstances, bool result) {
      return Reading::write(parent, element, *static_cast<Record const*>(place), circumstances,
                            result);
    };
  } else {
    return nullptr;
  }
}

template <class Record, class Reading>
constexpr auto assignOfReading() -> decltype(Kind::assign) {
  if constexpr (AssignsRecord<Record, Reading>) {
    return
        [](Row const&, void* place, std::string_view member, Value const& value, Problem& problem) {
          return Reading::assign(*static_cast<Record*>(place), member, value, problem);
        };
  } else {
    return nullptr;
  }
}

template <class Reading>
constexpr auto keysOfReading() -> decltype(Kind::keys) {
  if constexpr (requires(Keys & keys) { Reading::keys(keys); }) {
    return [](Row const&, Keys& keys) { Reading::keys(keys); };
  } else {
    return nullptr;
  }
}

template <class Record, class Reading>
inline constexpr Kind kindOfReading{
    readOfReading<Record, Reading>(), writeOfReading<Record, Reading>(),
    assignOfReading<Record, Reading>(), keysOfReading<Reading>(), outlineOfKind<Reading>()};

}  // namespace detail

/// A row whose reading is a small function of its own, with a comment that says why it is odd.
template <class Record, class Reading>
constexpr auto reading(std::string_view element) {
  static_assert(detail::WritesRecord<Record, Reading> || std::is_base_of_v<NeverWritten, Reading>,
                "this reading writes nothing of this record and does not say so");
  static_assert(detail::AssignsRecord<Record, Reading> || std::is_base_of_v<NeverAssigned, Reading>,
                "this reading assigns nothing to this record and does not say so");
  Kind const& kind = detail::kindOfReading<Record, Reading>;
  Row row{element, {}, &detail::itself, &kind};
  row.isRead = kind.read != nullptr;
  return Field<Record>(row);
}

/// Tells of an element below which a table finds nothing to read.
inline void remarkIfEmpty(Element element, Watch const& watch) {
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

}  // namespace Kovra::frame::typed

#endif

/// @file
/// The rows of tables, made from pointers to members: of one value, of a nested record, of a group
/// of members, or with a reading of their own. Here it is checked that a kind fits its member.

#ifndef KOVRA_FRAME_ROWS_HPP
#define KOVRA_FRAME_ROWS_HPP

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <string_view>
#include <type_traits>

#include "frame/kinds.hpp"
#include "frame/member.hpp"
#include "frame/observer.hpp"
#include "frame/row.hpp"
#include "frame/walk.hpp"

namespace Kovra::frame {

namespace detail {

/// A member's place in its record.
template <auto M>
void* memberIn(void* record) {
  return &(static_cast<typename Member<M>::Record*>(record)->*M);
}

/// Of rows that work on the record itself.
inline void* itself(void* record) {
  return record;
}

/// A row of the member `M`. The kind is one for members of its type.
template <auto M>
constexpr auto memberRow(std::string_view element, Kind const& kind, void const* with = nullptr) {
  return Field<typename Member<M>::Record>(
      Row{.element = element,
          .member = Member<M>::name(),
          .place = &memberIn<M>,
          .kind = &kind,
          .with = with,
          // A pointer counts as one. NOLINTNEXTLINE(bugprone-sizeof-expression)
          .size = static_cast<std::uint32_t>(sizeof(typename Member<M>::Type))});
}

// Kinds that are structs, as kinds.hpp tells.

template <class Struct, class Type>
concept TellsOfMissing = requires(Observer& observer, Element element, Type const& value) {
  Struct::missing(observer, "", element, value);
};

template <class Struct, class Type>
concept Reads = requires(Element element, Type& value) {
  { Struct::read(element, value) } -> std::same_as<bool>;
};

template <class Struct, class Type>
concept Writes = requires(Sink& sink, Type const& value) {
  { Struct::write(sink, "", value) } -> std::same_as<bool>;
};

template <class Struct, class Type>
concept Assigns = requires(Type& target, Value const& value, Problems& problems) {
  { Struct::assign(target, value, problems) } -> std::same_as<Assigned>;
};

template <class Struct, class Type>
bool readValue(Row const& row, Element element, void* place, Watch const& watch) {
  Type& value = *static_cast<Type*>(place);
  bool const read = Struct::read(element, value);
  remark(watch, [&](Observer& observer) {
    if (read) {
      Struct::report(observer, row.member, element, value);
    } else if constexpr (TellsOfMissing<Struct, Type>) {
      Struct::missing(observer, row.member, element, value);
    } else {
      observer.emptyElement(element);
    }
  });
  return read;
}

template <class Struct, class Type>
constexpr auto writeOfStruct() -> decltype(Kind::write) {
  if constexpr (Writes<Struct, Type>) {
    return [](Row const& row, Sink& sink, void const* place, Circumstances, bool) {
      return Struct::write(sink, row.element.data(), *static_cast<Type const*>(place));
    };
  } else {
    return nullptr;
  }
}

template <class Struct, class Type>
constexpr auto assignOfStruct() -> decltype(Kind::assign) {
  if constexpr (Assigns<Struct, Type>) {
    return [](Row const& row, void* place, std::string_view member, Value const& value,
              Problems& problems) {
      if (member != row.member) return Assigned::notMine;
      return Struct::assign(*static_cast<Type*>(place), value, problems);
    };
  } else {
    return nullptr;
  }
}

template <class Struct>
constexpr auto wordsOfStruct() -> decltype(Kind::words) {
  if constexpr (requires { Struct::words; }) {
    return [](Row const&) -> Vocabulary const& { return Struct::words; };
  } else {
    return nullptr;
  }
}

template <class Struct>
constexpr auto outlineOfStruct() -> decltype(Kind::outline) {
  if constexpr (requires { Struct::words; }) {
    return [](Row const&, Outline& outline) { outlineWords(Struct::words, outline); };
  } else if constexpr (requires(Outline & outline) { Struct::outline(outline); }) {
    return [](Row const&, Outline& outline) { Struct::outline(outline); };
  } else {
    return nullptr;
  }
}

template <class Struct, class Type>
constexpr Shape shapeOf() {
  if constexpr (requires { Struct::shape; }) return Struct::shape;
  if constexpr (std::is_same_v<Type, bool>) return Shape::flag;
  if constexpr (std::is_floating_point_v<Type>) return Shape::real;
  if constexpr (std::is_unsigned_v<Type>) return Shape::natural;
  if constexpr (std::is_integral_v<Type>) return Shape::integer;
  return Shape::odd;
}

template <class Struct, class Type>
inline constexpr Kind kindOfStruct{shapeOf<Struct, Type>(),
                                   &readValue<Struct, Type>,
                                   writeOfStruct<Struct, Type>(),
                                   assignOfStruct<Struct, Type>(),
                                   nullptr,
                                   outlineOfStruct<Struct>(),
                                   wordsOfStruct<Struct>()};

}  // namespace detail

/// A row of a kind that is a struct.
template <auto M, class Kind>
constexpr auto row(std::string_view element) {
  using Type = typename Member<M>::Type;
  static_assert(detail::Reads<Kind, Type>, "this kind reads no members of this type");
  static_assert(detail::Writes<Kind, Type> || std::is_base_of_v<NeverWritten, Kind>,
                "this kind writes no members of this type and does not say so");
  static_assert(detail::Assigns<Kind, Type> || std::is_base_of_v<NeverAssigned, Kind>,
                "this kind assigns to no members of this type and does not say so");
  return detail::memberRow<M>(element, detail::kindOfStruct<Kind, Type>);
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
constexpr auto address(std::string_view element) {
  return row<M, AddressKind>(element);
}

// Kinds that are objects: here they meet the types of their members.

namespace detail {

template <class Type>
inline constexpr bool isText = false;
template <std::size_t N>
inline constexpr bool isText<char[N]> = true;

/// An enumeration is stored as what it is made of.
template <class Type>
struct Stored {
  using type = Type;
};
template <class Type>
requires std::is_enum_v<Type>
struct Stored<Type> : std::underlying_type<Type> {
};

/// Of two kinds that which is for members of the type: `First` of one, `Second` of the other.
template <class First, class Second, class Type>
constexpr Kind const& oneOf(Kind const& first, Kind const& second) {
  static_assert(std::is_same_v<Type, First> || std::is_same_v<Type, Second>,
                "this kind reads no members of this type");
  return std::is_same_v<Type, First> ? first : second;
}

}  // namespace detail

template <auto M>
constexpr auto text(std::string_view element) {
  static_assert(detail::isText<typename Member<M>::Type>,
                "this kind reads no members of this type");
  return detail::memberRow<M>(element, textKind);
}

template <auto M>
constexpr auto secretText(std::string_view element) {
  static_assert(detail::isText<typename Member<M>::Type>,
                "this kind reads no members of this type");
  return detail::memberRow<M>(element, secretKind);
}

/// A word of the tables.
template <std::size_t N>
struct Fixed {
  char text[N];
  constexpr Fixed(char const (&literal)[N]) { std::copy_n(literal, N, text); }
  constexpr operator std::string_view() const { return {text, N - 1}; }
};

namespace detail {
template <Fixed Word>
inline constexpr Fixed wordOf = Word;
template <Fixed Word, Fixed Opposite, bool Sets>
inline constexpr FlagWord flagWord{{{wordOf<Word>, Sets}, {wordOf<Opposite>, !Sets}}};
template <Fixed Set, Fixed Cleared>
inline constexpr SwitchWords switchWordsOf{{{wordOf<Set>, 1}, {wordOf<Cleared>, 0}}};

template <Vocabulary const& Words>
inline constexpr Keywords plain{.read = &Words, .written = &Words};
template <Vocabulary const& Words>
inline constexpr Keywords any{.read = &Words, .written = &Words, .always = true};
template <Vocabulary const& Words>
inline constexpr Keywords known{.read = &Words, .written = &Words, .knownOnly = true};
}  // namespace detail

template <auto M, Fixed Attribute>
constexpr auto attribute(std::string_view element) {
  static_assert(std::is_same_v<typename Member<M>::Type, int>,
                "this kind reads no members of this type");
  return readOnly(detail::memberRow<M>(element, attributeKind, detail::wordOf<Attribute>.text));
}

template <auto M>
constexpr auto bounded(std::string_view element) {
  return detail::memberRow<M>(element,
                              detail::oneOf<_MinMaxVal, _MinMaxValFloat, typename Member<M>::Type>(
                                  wholeSettingKind, realSettingKind));
}

/// A bounded setting of which only the value is read, and all three parts are written.
template <auto M>
constexpr auto boundedValue(std::string_view element) {
  return detail::memberRow<M>(
      element, detail::oneOf<_MinMaxVal, _MinMaxValFloat, typename Member<M>::Type>(wholeValueKind,
                                                                                    realValueKind));
}

/// A keyword that is read and written as `Words` say.
template <auto M, Keywords const& Words>
constexpr auto keywordBy(std::string_view element) {
  using Code = typename detail::Stored<typename Member<M>::Type>::type;
  return detail::memberRow<M>(
      element, detail::oneOf<int, unsigned char, Code>(keywordKind, byteKeywordKind), &Words);
}

template <auto M, Vocabulary const& Words>
constexpr auto keyword(std::string_view element) {
  return keywordBy<M, detail::plain<Words>>(element);
}

template <auto M, Vocabulary const& Words>
constexpr auto anyKeyword(std::string_view element) {
  return keywordBy<M, detail::any<Words>>(element);
}

template <auto M, Vocabulary const& Words>
constexpr auto knownKeyword(std::string_view element) {
  return keywordBy<M, detail::known<Words>>(element);
}

namespace detail {

template <auto M, Fixed Set, Fixed Cleared>
constexpr auto switchRow(std::string_view element) {
  return memberRow<M>(element,
                      oneOf<bool, char, typename Member<M>::Type>(boolSwitchKind, charSwitchKind),
                      &switchWordsOf<Set, Cleared>);
}

template <auto M, Fixed Word, Fixed Opposite, bool Sets>
constexpr auto wordFlag(std::string_view element) {
  return memberRow<M>(element,
                      oneOf<bool, char, typename Member<M>::Type>(boolWordKind, charWordKind),
                      &flagWord<Word, Opposite, Sets>);
}

}  // namespace detail

template <auto M>
constexpr auto enabled(std::string_view element) {
  return detail::switchRow<M, "enabled", "disabled">(element);
}

template <auto M>
constexpr auto yesOrNo(std::string_view element) {
  return detail::switchRow<M, "yes", "no">(element);
}

/// An answer of which an element without text clears the flag.
template <auto M>
constexpr auto clearedYesOrNo(std::string_view element) {
  static_assert(std::is_same_v<typename Member<M>::Type, bool>,
                "this kind reads no members of this type");
  return detail::memberRow<M>(element, clearedSwitchKind, &detail::switchWordsOf<"yes", "no">);
}

template <auto M, Fixed Word, Fixed Opposite>
constexpr auto flagIf(std::string_view element) {
  return readOnly(detail::wordFlag<M, Word, Opposite, true>(element));
}

template <auto M, Fixed Word, Fixed Opposite>
constexpr auto flagUnless(std::string_view element) {
  return readOnly(detail::wordFlag<M, Word, Opposite, false>(element));
}

template <auto M, Vocabulary const& Bits>
constexpr auto bitFlag(std::string_view element) {
  return detail::memberRow<M>(
      element, detail::oneOf<unsigned char, int, typename Member<M>::Type>(byteBitKind, intBitKind),
      &Bits);
}

// Rows of elements with children.

namespace detail {
template <class Record, std::size_t N>
Record recordOf(Table<Record, N> const&);

template <auto const& Table>
inline constexpr Rows rowsOf = Table;
}  // namespace detail

/// A nested record with a table of its own.
template <auto M, auto const& Table>
constexpr auto nested(std::string_view element) {
  static_assert(std::is_same_v<decltype(detail::recordOf(Table)), typename Member<M>::Type>,
                "this table is not one of the member's record");
  return detail::memberRow<M>(element, nestedKind, &detail::rowsOf<Table>);
}

/// An element whose children fill members of the record itself.
template <class Record, auto const& Table>
constexpr auto group(std::string_view element) {
  static_assert(std::is_same_v<decltype(detail::recordOf(Table)), Record>,
                "this table is not one of the record");
  return Field<Record>(Row{.element = element,
                           .member = {},
                           .place = &detail::itself,
                           .kind = &groupKind,
                           .with = &detail::rowsOf<Table>,
                           .size = static_cast<std::uint32_t>(sizeof(Record))});
}

/// Members for those who show or assign a record, of which no element is read or written here: a
/// table of the record itself, or of a record in it.
template <class Record, auto const& Table>
constexpr auto members() {
  return readOnly(neverRead(group<Record, Table>({})));
}
template <auto M, auto const& Table>
constexpr auto membersOf() {
  static_assert(std::is_same_v<decltype(detail::recordOf(Table)), typename Member<M>::Type>,
                "this table is not one of the member's record");
  Row row = detail::memberRow<M>({}, groupKind, &detail::rowsOf<Table>).row();
  row.member = {};
  return readOnly(neverRead(Field<typename Member<M>::Record>(row)));
}

/// A member that no element names, though a reading fills it: for those who show the record.
template <auto M>
constexpr auto aside() {
  Row row = number<M>("").row();
  row.isRead = row.isWritten = row.isAssigned = false;
  return Field<typename Member<M>::Record>(row);
}

/// Writes a row as an element of that name.
template <class Record>
bool writeAs(Field<Record> const& field, char const* element, Sink& sink, Record const& record,
             Circumstances circumstances, bool result) {
  Row row = field.row();
  row.element = element;
  return writeRow(row, sink, &record, circumstances, result);
}

// A row with a reading of its own is a struct with
//   members  a table of the members that it fills, for those who only look at rows
//   read     `read(element, record, watch)`
//   write    `write(sink, element, record, circumstances, result)`: the new running result
//   assign   `assign(record, member, value, problems)`
//   keys     `keys(keys)`: the members that assign takes
//   outline  the words below the element
// of which members, keys and outline may be left out. One that does not write or assign is
// NeverWritten or NeverAssigned, as a kind is.

namespace detail {

template <class Record, class Reading>
concept ReadsRecord = requires(Element element, Record& record, Watch const& watch) {
  { Reading::read(element, record, watch) } -> std::same_as<bool>;
};

template <class Record, class Reading>
concept WritesRecord = requires(Sink& sink, Record const& record) {
  { Reading::write(sink, "", record, Circumstances{}, true) } -> std::same_as<bool>;
};

template <class Record, class Reading>
concept AssignsRecord = requires(Record& record, Value const& value, Problems& problems) {
  { Reading::assign(record, "", value, problems) } -> std::same_as<Assigned>;
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
    return [](Row const& row, Sink& sink, void const* place, Circumstances circumstances,
              bool result) {
      return Reading::write(sink, row.element.data(), *static_cast<Record const*>(place),
                            circumstances, result);
    };
  } else {
    return nullptr;
  }
}

template <class Record, class Reading>
constexpr auto assignOfReading() -> decltype(Kind::assign) {
  if constexpr (AssignsRecord<Record, Reading>) {
    return [](Row const&, void* place, std::string_view member, Value const& value,
              Problems& problems) {
      return Reading::assign(*static_cast<Record*>(place), member, value, problems);
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
inline constexpr Kind kindOfReading{Shape::odd,
                                    readOfReading<Record, Reading>(),
                                    writeOfReading<Record, Reading>(),
                                    assignOfReading<Record, Reading>(),
                                    keysOfReading<Reading>(),
                                    outlineOfStruct<Reading>()};

}  // namespace detail

/// A row whose reading is a small struct of its own, with a comment that says why it is odd.
template <class Record, class Reading>
constexpr auto reading(std::string_view element) {
  static_assert(detail::ReadsRecord<Record, Reading> || std::is_base_of_v<NeverRead, Reading>,
                "this reading reads nothing into this record and does not say so");
  static_assert(detail::WritesRecord<Record, Reading> || std::is_base_of_v<NeverWritten, Reading>,
                "this reading writes nothing of this record and does not say so");
  static_assert(detail::AssignsRecord<Record, Reading> || std::is_base_of_v<NeverAssigned, Reading>,
                "this reading assigns nothing to this record and does not say so");
  Row row{.element = element,
          .member = {},
          .place = &detail::itself,
          .kind = &detail::kindOfReading<Record, Reading>,
          .size = static_cast<std::uint32_t>(sizeof(Record))};
  row.isRead = detail::ReadsRecord<Record, Reading>;
  if constexpr (requires { Reading::members; }) row.with = &detail::rowsOf<Reading::members>;
  return Field<Record>(row);
}

}  // namespace Kovra::frame

#endif

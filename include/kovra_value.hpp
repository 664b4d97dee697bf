/// @file
/// Values: what a decoded reply says, and what a document is composed of.
///
/// A value is nothing, a flag, a number, a text, a keyword, a list, or a record with named members.
/// It owns what it holds; copying copies all of it. All texts are UTF-8.
///
/// Values stand in one another as deep as whoever makes them likes. Those that stand more than 100
/// deep, as no message has them, are neither copied nor compared nor printed: that throws a
/// ValueError.

#ifndef KOVRA_VALUE_HPP
#define KOVRA_VALUE_HPP

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "kovra_export.h"

namespace Kovra {

class Member;
class Value;

namespace detail {

struct ValueAccess;

/// What a list or a record holds.
template <class Item>
struct Held {
  std::vector<Item> all;
  Value* above = nullptr;  ///< while it is destroyed: what holds the list or the record
};

/// Any integer type that fits, and an enumeration that converts to one; no flag.
template <class Number>
inline constexpr bool isWhole = (std::is_integral_v<Number> && !std::is_same_v<Number, bool> &&
                                 sizeof(Number) <= sizeof(long long)) ||
                                (std::is_enum_v<Number> &&
                                 std::is_convertible_v<Number, long long>);

/// A text, or what converts to one: no null pointer, and no pointer to anything else.
template <class Text>
inline constexpr bool isText = std::is_convertible_v<Text const&, std::string_view> &&
                               !std::is_same_v<std::decay_t<Text>, std::nullptr_t> &&
                               !std::is_base_of_v<Value, std::decay_t<Text>>;

}  // namespace detail

/// Some things of one type that stand one behind the other in what they belong to, and are there
/// as long as that is neither changed nor destroyed.
template <class Item>
class Range {
 public:
  using value_type = std::remove_const_t<Item>;
  using iterator = Item*;

  constexpr Range() noexcept = default;
  constexpr Range(Item* first, std::size_t size) noexcept : first_(first), size_(size) {}

  constexpr Item* begin() const noexcept { return first_; }
  /// Inline in hosts, so the size of an item is part of the interface.
  constexpr Item* end() const noexcept { return first_ + size_; }
  constexpr std::size_t size() const noexcept { return size_; }
  constexpr bool empty() const noexcept { return size_ == 0; }
  constexpr Item& operator[](std::size_t index) const { return first_[index]; }
  constexpr Item& front() const { return first_[0]; }
  constexpr Item& back() const { return first_[size_ - 1]; }

 private:
  Item* first_ = nullptr;
  std::size_t size_ = 0;
};

/// A value was asked for what it is not, or for a member that it does not have.
class KOVRA_EXPORT ValueError : public std::logic_error {
 public:
  explicit ValueError(std::string const& what);
  ValueError(ValueError const&) noexcept;
  ~ValueError() override;
};

/// A text is no JSON, or holds more than a record may.
class KOVRA_EXPORT JsonError : public std::runtime_error {
 public:
  /// `what()` is one sentence without the place; it repeats nothing of the text but keys.
  JsonError(std::string const& what, std::string path, int line, int column, std::size_t offset);
  JsonError(JsonError const&) noexcept;
  ~JsonError() override;

  int line() const noexcept { return line_; }              ///< from 1
  int column() const noexcept { return column_; }          ///< from 1, in characters
  std::size_t offset() const noexcept { return offset_; }  ///< in bytes, from 0
  /// Of the value that is wrong, as at() takes it; empty for a text that cannot be read.
  std::string const& path() const noexcept { return path_; }

 private:
  int line_;
  int column_;
  std::size_t offset_;
  std::string path_;
};

class KOVRA_EXPORT Value {
 public:
  enum class Kind : std::uint8_t {
    nothing,  ///< no value: an entry of a list that the reply left empty
    flag,
    integer,  ///< a whole number
    natural,  ///< a whole number without a sign
    real,     ///< a number with a fraction
    text,     ///< UTF-8
    keyword,  ///< the code that the library stores, and the word that was sent
    list,
    record,
  };

  /// Nothing.
  Value() noexcept;
  Value(Value const& other);
  Value(Value&& other) noexcept;
  Value& operator=(Value const& other);
  Value& operator=(Value&& other) noexcept;
  /// Wipes a secret.
  ~Value();

  // Implicit, so that what is meant can be written down: `{"ssid", "Office"}`, `{"channel", 6}`.

  template <class Flag, std::enable_if_t<std::is_same_v<Flag, bool>, int> = 0>
  Value(Flag flag) : Value(Kind::flag, flag ? 1U : 0U) {}
  /// Of any integer type: an integer where the type has a sign, else a natural.
  template <class Number, std::enable_if_t<detail::isWhole<Number>, char> = 0>
  Value(Number number)
      : Value(isSigned<Number>() ? Kind::integer : Kind::natural,
              static_cast<std::uint64_t>(number)) {}
  template <class Number, std::enable_if_t<std::is_floating_point_v<Number>, long> = 0>
  Value(Number number) : Value(static_cast<double>(number), Real()) {}
  /// Of what converts to a std::string_view; a null `char const*` is an empty text.
  template <class Text, std::enable_if_t<detail::isText<Text>, short> = 0>
  Value(Text const& text) : Value(viewOf(text), Text_()) {}
  /// A pointer is no flag.
  template <class Any, std::enable_if_t<!std::is_convertible_v<Any const*, char const*>, int> = 0>
  Value(Any const*) = delete;
  Value(std::nullptr_t) = delete;

  /// A keyword that Kovra knows; composing counts the code.
  static Value keyword(int code, std::string_view word);
  /// A word that it does not know, with the code that stands for such.
  static Value unknownKeyword(int code, std::string_view word);
  /// Throws a ValueError for two members of one name.
  static Value object(std::initializer_list<std::pair<std::string_view, Value>> members = {});
  static Value list(std::initializer_list<Value> items = {});

  Kind kind() const noexcept { return kind_; }
  bool isNothing() const noexcept { return kind_ == Kind::nothing; }
  bool isFlag() const noexcept { return kind_ == Kind::flag; }
  /// An integer or a natural.
  bool isWhole() const noexcept { return kind_ == Kind::integer || kind_ == Kind::natural; }
  bool isReal() const noexcept { return kind_ == Kind::real; }
  bool isText() const noexcept { return kind_ == Kind::text; }
  bool isKeyword() const noexcept { return kind_ == Kind::keyword; }
  bool isList() const noexcept { return kind_ == Kind::list; }
  bool isRecord() const noexcept { return kind_ == Kind::record; }

  // What it is. Each throws a ValueError where it is something else, or does not fit.

  bool asBool() const;
  std::int64_t asInteger() const;   ///< of any whole number that fits
  std::uint64_t asNatural() const;  ///< of any whole number that is not negative
  double asReal() const;            ///< of any number
  std::string_view asText() const;  ///< as long as the value is there, unchanged
  int code() const;                 ///< of a keyword
  std::string_view word() const;    ///< of a keyword, as it was sent
  bool isKnown() const;             ///< of a keyword: has the vocabulary its word?

  // Without an exception: what to take where it is something else, or does not fit.

  bool asBool(bool otherwise) const noexcept;
  std::int64_t asInteger(std::int64_t otherwise) const noexcept;
  std::uint64_t asNatural(std::uint64_t otherwise) const noexcept;
  double asReal(double otherwise) const noexcept;
  std::string_view asText(std::string_view otherwise) const noexcept;

  // What it holds.

  /// How many entries or members there are; 0 of anything else.
  std::size_t size() const noexcept;
  bool empty() const noexcept { return size() == 0; }
  /// The entries of a list; none of anything else.
  Range<Value const> items() const noexcept;
  Range<Value> items() noexcept;
  /// The members of a record, in the order in which they came; none of anything else.
  Range<Member const> members() const noexcept;
  Range<Member> members() noexcept;
  /// The member of that name; null where there is none.
  Value const* find(std::string_view name) const noexcept;
  Value* find(std::string_view name) noexcept;
  /// The value at a path: names with points between them, and the numbers of entries, from 0, in
  /// brackets: "cards[1].thickness". The value itself at an empty one. Throws a ValueError where
  /// there is none.
  Value const& at(std::string_view path) const;
  Value& at(std::string_view path);
  /// The same; null where there is none.
  Value const* findAt(std::string_view path) const noexcept;

  /// Puts a value at a path. Records on the way that are not there are made, and so is an entry
  /// right behind the last one of a list; nothing becomes a record, or a list where a number comes
  /// next. Throws a ValueError for a path that leads through anything else, and then nothing is
  /// changed. The value that now stands there.
  Value& set(std::string_view path, Value value);
  /// Adds a member to a record; nothing becomes one. Throws a ValueError on anything else, and
  /// where there is one of that name.
  Value& add(std::string_view name, Value value);
  /// Adds an entry to a list; nothing becomes one. Throws a ValueError on anything else.
  Value& append(Value value);
  /// Takes a member out; false where there was none.
  bool erase(std::string_view name) noexcept;

  /// A key, a pass phrase or a track: not to be shown unasked. Its text is wiped when the value is
  /// destroyed or takes another.
  bool isSecret() const noexcept { return (marks_ & secret) != 0; }
  void markSecret(bool on = true) noexcept;
  /// A natural that people read as bits.
  bool isHexadecimal() const noexcept { return (marks_ & hexadecimal) != 0; }

  /// The same kind of value with the same content. Whole numbers are compared as numbers, be they
  /// integers or naturals, and the order of members does not count.
  friend KOVRA_EXPORT bool operator==(Value const& a, Value const& b);
  friend bool operator!=(Value const& a, Value const& b) { return !(a == b); }

  /// JSON in ASCII, on one line, or on several with so many blanks for each level. Whatever the
  /// value holds is shown, secrets as well. A keyword is an object with its `code` and its `name`,
  /// which is null beside a `raw` for one that is not known; a number without a value is null.
  std::string toJson(int indentation = -1) const;

  /// Reads what toJson() prints, and JSON that people write. Strict: one value with nothing behind
  /// it but white space, each key once, UTF-8, in front of which a byte order mark is skipped. An
  /// object that is a keyword's becomes one. A number without fraction and exponent is an integer,
  /// or a natural or else a real where it is too large for that. Lists and objects may stand 32
  /// deep in one another, with at most 1,000,000 values in all; each takes 40 bytes, and a member
  /// 16 more beside its name. Throws a JsonError.
  static Value fromJson(std::string_view json);

 private:
  friend struct detail::ValueAccess;

  struct Real {};
  struct Text_ {};

  enum Mark : std::uint8_t { secret = 1, hexadecimal = 2, known = 4 };

  union Content {
    Content() noexcept {}
    ~Content() {}

    bool flag;
    std::int64_t integer;
    std::uint64_t natural;
    double real;
    std::string text;  ///< of a keyword its word
    detail::Held<Value> items;
    detail::Held<Member> members;
  };

  template <class Number>
  static constexpr bool isSigned() {
    if constexpr (std::is_enum_v<Number>) return std::is_signed_v<std::underlying_type_t<Number>>;
    return std::is_signed_v<Number>;
  }
  static std::string_view viewOf(std::string_view text) { return text; }
  static std::string_view viewOf(char const* text) {
    return text != nullptr ? std::string_view(text) : std::string_view();
  }

  Value(Kind kind, std::uint64_t bits) noexcept;
  Value(double number, Real) noexcept;
  Value(std::string_view text, Text_);

  void destroy() noexcept;

  Kind kind_ = Kind::nothing;
  std::uint8_t marks_ = 0;
  std::uint16_t reserved_ = 0;
  std::int32_t code_ = 0;
  Content content_;
};

/// A named value of a record. Its name stays as it is: nothing is assigned to a member but another
/// value, and one that is moved from keeps its name.
class KOVRA_EXPORT Member {
 public:
  /// Nothing, without a name.
  Member() noexcept = default;
  Member(std::string_view name, Value value);
  Member(Member const& other);
  Member(Member&& other) noexcept;
  Member& operator=(Member const&) = delete;
  Member& operator=(Member&&) = delete;
  ~Member();

  /// That of the record's member in the library's headers.
  std::string_view name() const noexcept { return {name_, length_}; }
  Value const& value() const noexcept { return value_; }
  Value& value() noexcept { return value_; }

  // For `auto const& [name, value]`.

  template <std::size_t N>
  decltype(auto) get() const noexcept {
    if constexpr (N == 0) {
      return name();
    } else {
      return value();
    }
  }

 private:
  friend struct detail::ValueAccess;

  char const* name_ = nullptr;
  std::uint32_t length_ = 0;
  bool shared_ = false;  ///< with members that were copied from it, or moved
  Value value_;
};

static_assert(sizeof(Value) == 40 && sizeof(Member) == 56,
              "hosts step over them, so their sizes are part of the interface");

}  // namespace Kovra

/// @cond
template <>
struct std::tuple_size<Kovra::Member> : std::integral_constant<std::size_t, 2> {};
template <>
struct std::tuple_element<0, Kovra::Member> {
  using type = std::string_view;
};
template <>
struct std::tuple_element<1, Kovra::Member> {
  using type = Kovra::Value const&;
};
/// @endcond

#endif

// The values of the public face. They live down here because the observer builds them.

#include "frame/value.hpp"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>

#include "frame/wipe.hpp"

namespace Kovra {

using detail::ValueAccess;
using Kind = Value::Kind;

namespace {

char const* nameOf(Kind kind) {
  switch (kind) {
    case Kind::nothing:
      return "nothing";
    case Kind::flag:
      return "a flag";
    case Kind::integer:
    case Kind::natural:
      return "a whole number";
    case Kind::real:
      return "a number with a fraction";
    case Kind::text:
      return "a text";
    case Kind::keyword:
      return "a keyword";
    case Kind::list:
      return "a list";
    case Kind::record:
      return "a record";
  }
  return "";
}

[[noreturn]] void refuse(std::string const& what) {
  throw ValueError(what);
}

[[noreturn]] void refuseKind(Value const& value, char const* expected) {
  refuse(std::string("the value is ") + nameOf(value.kind()) + ", not " + expected);
}

template <class Kept>
void destroyContent(Kept& kept) {
  std::destroy_at(&kept);
}

}  // namespace

ValueError::ValueError(std::string const& what) : std::logic_error(what) {}
ValueError::ValueError(ValueError const&) noexcept = default;
ValueError::~ValueError() = default;

// Life.

Value::Value() noexcept {
  content_.natural = 0;
}

Value::Value(Kind kind, std::uint64_t bits) noexcept : kind_(kind) {
  if (kind == Kind::flag) {
    content_.flag = bits != 0;
  } else if (kind == Kind::integer) {
    content_.integer = static_cast<std::int64_t>(bits);
  } else {
    content_.natural = bits;
  }
}

Value::Value(double number, Real) noexcept : kind_(Kind::real) {
  content_.real = number;
}

Value::Value(std::string_view text, Text_) : kind_(Kind::text) {
  std::construct_at(&content_.text, text);
}

template <class Other>
void ValueAccess::fill(Value& value, Other&& other) {
  switch (value.kind_) {
    case Kind::nothing:
    case Kind::flag:
    case Kind::integer:
    case Kind::natural:
    case Kind::real:
      std::memcpy(static_cast<void*>(&value.content_), &other.content_,
                  sizeof value.content_.natural);
      break;
    case Kind::text:
    case Kind::keyword:
      std::construct_at(&value.content_.text, std::forward<Other>(other).content_.text);
      break;
    case Kind::list:
      std::construct_at(&value.content_.items, std::forward<Other>(other).content_.items);
      break;
    case Kind::record:
      std::construct_at(&value.content_.members, std::forward<Other>(other).content_.members);
      break;
  }
}

Value::Value(Value const& other)
    : kind_(other.kind_), marks_(other.marks_), reserved_(other.reserved_), code_(other.code_) {
  ValueAccess::fill(*this, other);
}

/// What is moved from keeps its kind, empty, and is as secret as before: short texts are copied, so
/// what is left of one is wiped in the end.
Value::Value(Value&& other) noexcept
    : kind_(other.kind_), marks_(other.marks_), reserved_(other.reserved_), code_(other.code_) {
  ValueAccess::fill(*this, std::move(other));
}

Value& Value::operator=(Value const& other) {
  if (this != &other) *this = Value(other);
  return *this;
}

/// What was there goes as if it were destroyed, so that no secret is left. The other may be a part
/// of it.
Value& Value::operator=(Value&& other) noexcept {
  if (this == &other) return *this;
  Value taken(std::move(other));
  destroy();
  return *std::construct_at(this, std::move(taken));
}

Value::~Value() {
  destroy();
}

void Value::destroy() noexcept {
  switch (kind_) {
    case Kind::nothing:
    case Kind::flag:
    case Kind::integer:
    case Kind::natural:
    case Kind::real:
      if (isSecret()) frame::wipe(&content_.natural, sizeof content_.natural);
      break;
    case Kind::text:
    case Kind::keyword:
      if (isSecret()) {
        content_.text.resize(content_.text.capacity());
        frame::wipe(content_.text.data(), content_.text.size());
      }
      destroyContent(content_.text);
      break;
    case Kind::list:
      destroyContent(content_.items);
      break;
    case Kind::record:
      destroyContent(content_.members);
      break;
  }
}

Value Value::keyword(int code, std::string_view word) {
  return ValueAccess::keyword(code, word, true);
}

Value Value::unknownKeyword(int code, std::string_view word) {
  return ValueAccess::keyword(code, word, false);
}

Value Value::object(std::initializer_list<std::pair<std::string_view, Value>> members) {
  Value record;
  ValueAccess::become(record, Kind::record);
  for (auto const& [name, value] : members) record.add(name, value);
  return record;
}

Value Value::list(std::initializer_list<Value> items) {
  Value list;
  ValueAccess::become(list, Kind::list);
  list.content_.items.assign(items.begin(), items.end());
  return list;
}

// What it is.

bool Value::asBool() const {
  if (kind_ != Kind::flag) refuseKind(*this, "a flag");
  return content_.flag;
}

std::int64_t Value::asInteger() const {
  if (!isWhole()) refuseKind(*this, "a whole number");
  constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (kind_ == Kind::natural && content_.natural > most) refuse("the number is too large");
  return content_.integer;
}

std::uint64_t Value::asNatural() const {
  if (!isWhole()) refuseKind(*this, "a whole number");
  if (kind_ == Kind::integer && content_.integer < 0) refuse("the number is negative");
  return content_.natural;
}

double Value::asReal() const {
  if (kind_ == Kind::integer) return static_cast<double>(content_.integer);
  if (kind_ == Kind::natural) return static_cast<double>(content_.natural);
  if (kind_ != Kind::real) refuseKind(*this, "a number");
  return content_.real;
}

std::string_view Value::asText() const {
  if (kind_ != Kind::text) refuseKind(*this, "a text");
  return content_.text;
}

int Value::code() const {
  if (kind_ != Kind::keyword) refuseKind(*this, "a keyword");
  return code_;
}

std::string_view Value::word() const {
  if (kind_ != Kind::keyword) refuseKind(*this, "a keyword");
  return content_.text;
}

bool Value::isKnown() const {
  if (kind_ != Kind::keyword) refuseKind(*this, "a keyword");
  return (marks_ & known) != 0;
}

bool Value::asBool(bool otherwise) const noexcept {
  return kind_ == Kind::flag ? content_.flag : otherwise;
}

std::int64_t Value::asInteger(std::int64_t otherwise) const noexcept {
  bool const fits = kind_ == Kind::integer || (kind_ == Kind::natural && content_.integer >= 0);
  return fits ? content_.integer : otherwise;
}

std::uint64_t Value::asNatural(std::uint64_t otherwise) const noexcept {
  bool const fits = kind_ == Kind::natural || (kind_ == Kind::integer && content_.integer >= 0);
  return fits ? content_.natural : otherwise;
}

double Value::asReal(double otherwise) const noexcept {
  return kind_ == Kind::real || isWhole() ? asReal() : otherwise;
}

std::string_view Value::asText(std::string_view otherwise) const noexcept {
  return kind_ == Kind::text ? std::string_view(content_.text) : otherwise;
}

// What it holds.

std::size_t Value::size() const noexcept {
  if (kind_ == Kind::list) return content_.items.size();
  return kind_ == Kind::record ? content_.members.size() : 0;
}

Range<Value const> Value::items() const noexcept {
  if (kind_ != Kind::list) return {};
  return {content_.items.data(), content_.items.size()};
}

Range<Value> Value::items() noexcept {
  if (kind_ != Kind::list) return {};
  return {content_.items.data(), content_.items.size()};
}

Range<Member const> Value::members() const noexcept {
  if (kind_ != Kind::record) return {};
  return {content_.members.data(), content_.members.size()};
}

Range<Member> Value::members() noexcept {
  if (kind_ != Kind::record) return {};
  return {content_.members.data(), content_.members.size()};
}

namespace {

/// Names of one table are mostly told apart by their lengths, and the same one by its place.
bool isSameName(std::string_view a, std::string_view b) {
  return a.size() == b.size() &&
         (a.data() == b.data() || a.empty() || std::memcmp(a.data(), b.data(), a.size()) == 0);
}

}  // namespace

Value const* Value::find(std::string_view name) const noexcept {
  if (kind_ != Kind::record) return nullptr;
  for (Member const& member : content_.members) {
    if (isSameName(member.name(), name)) return &member.value();
  }
  return nullptr;
}

Value* Value::find(std::string_view name) noexcept {
  return const_cast<Value*>(std::as_const(*this).find(name));
}

namespace {

/// A step of a path: a name, or the number of an entry.
struct Step {
  std::string_view name;
  std::size_t index = 0;
  bool isIndex = false;
};

/// Takes the next step off a path; false for one that is no path.
bool nextStep(std::string_view& path, bool isFirst, Step& step) {
  step = {};
  if (path.front() == '[') {
    char const* const end = path.data() + path.size();
    auto const [stop, problem] = std::from_chars(path.data() + 1, end, step.index);
    if (problem != std::errc{} || stop == end || *stop != ']') return false;
    step.isIndex = true;
    path.remove_prefix(static_cast<std::size_t>(stop + 1 - path.data()));
    return true;
  }
  if (!isFirst) {
    if (path.front() != '.') return false;
    path.remove_prefix(1);
  }
  step.name = path.substr(0, path.find_first_of(".["));
  path.remove_prefix(step.name.size());
  return !step.name.empty();
}

/// Follows a path as far as `follow` goes; null where it leads nowhere.
template <class Any, class Follow>
Any* walkPath(Any* value, std::string_view path, Follow follow) {
  for (bool isFirst = true; value != nullptr && !path.empty(); isFirst = false) {
    Step step;
    value = nextStep(path, isFirst, step) ? follow(*value, step) : nullptr;
  }
  return value;
}

template <class Any>
Any* stepInto(Any& value, Step const& step) {
  if (!step.isIndex) return value.find(step.name);
  auto const items = value.items();
  return step.index < items.size() ? &items[step.index] : nullptr;
}

[[noreturn]] void refusePath(std::string_view path, char const* why) {
  refuse('"' + std::string(path) + "\": " + why);
}

}  // namespace

Value const* Value::findAt(std::string_view path) const noexcept {
  return walkPath(this, path, stepInto<Value const>);
}

Value const& Value::at(std::string_view path) const {
  Value const* const found = findAt(path);
  if (found == nullptr) refusePath(path, "there is no such value");
  return *found;
}

Value& Value::at(std::string_view path) {
  Value* const found = walkPath(this, path, stepInto<Value>);
  if (found == nullptr) refusePath(path, "there is no such value");
  return *found;
}

namespace {

/// A path that leads somewhere before anything is changed.
bool isPath(std::string_view path) {
  Step step;
  for (bool isFirst = true; !path.empty(); isFirst = false) {
    if (!nextStep(path, isFirst, step)) return false;
  }
  return true;
}

Value* makeStep(Value& value, Step const& step) {
  if (value.isNothing()) ValueAccess::become(value, step.isIndex ? Kind::list : Kind::record);
  if (Value* const there = stepInto(value, step)) return there;
  if (step.isIndex) {
    bool const isNext = value.isList() && step.index == value.size();
    return isNext ? &value.append({}) : nullptr;
  }
  return value.isRecord() ? &ValueAccess::add(value, step.name) : nullptr;
}

}  // namespace

/// Nothing of it is changed where the path does not fit: it is tried on a copy of what it leads
/// through only where something has to be made.
Value& Value::set(std::string_view path, Value value) {
  if (!isPath(path)) refusePath(path, "this is no path");
  Value* place = walkPath(this, path, stepInto<Value>);
  if (place == nullptr) {
    Value changed = *this;
    if (walkPath(&changed, path, makeStep) == nullptr) {
      refusePath(path, "the path leads through something else than a record or a list");
    }
    *this = std::move(changed);
    place = walkPath(this, path, stepInto<Value>);
  }
  return *place = std::move(value);
}

Value& Value::add(std::string_view name, Value value) {
  if (isNothing()) ValueAccess::become(*this, Kind::record);
  if (!isRecord()) refuseKind(*this, "a record");
  if (find(name) != nullptr) refuse("two members called \"" + std::string(name) + '"');
  return ValueAccess::add(*this, name) = std::move(value);
}

Value& Value::append(Value value) {
  if (isNothing()) ValueAccess::become(*this, Kind::list);
  if (!isList()) refuseKind(*this, "a list");
  return content_.items.emplace_back(std::move(value));
}

bool Value::erase(std::string_view name) noexcept {
  if (kind_ != Kind::record) return false;
  return std::erase_if(content_.members,
                       [&](Member const& member) { return member.name() == name; }) != 0;
}

void Value::markSecret(bool on) noexcept {
  marks_ = static_cast<std::uint8_t>(on ? marks_ | secret : marks_ & ~secret);
}

namespace {

bool isSameNumber(Value const& a, Value const& b) {
  bool const isNegative = a.asInteger(1) < 0;
  if (isNegative != (b.asInteger(1) < 0)) return false;
  return isNegative ? a.asInteger() == b.asInteger() : a.asNatural() == b.asNatural();
}

/// Of as many members. Most records have theirs in the same order, so that none has to be searched.
bool haveSameMembers(Value const& a, Value const& b) {
  Member const* beside = b.members().begin();
  return std::all_of(a.members().begin(), a.members().end(), [&](Member const& member) {
    Member const& there = *beside++;
    Value const* const other =
        there.name() == member.name() ? &there.value() : b.find(member.name());
    return other != nullptr && member.value() == *other;
  });
}

}  // namespace

bool operator==(Value const& a, Value const& b) noexcept {
  if (a.isWhole() && b.isWhole()) return isSameNumber(a, b);
  if (a.kind_ != b.kind_ || a.size() != b.size()) return false;
  switch (a.kind_) {
    case Kind::flag:
      return a.content_.flag == b.content_.flag;
    case Kind::real:
      return a.content_.real == b.content_.real;
    case Kind::text:
      return a.content_.text == b.content_.text;
    case Kind::keyword:
      return a.code_ == b.code_ && a.isKnown() == b.isKnown() && a.content_.text == b.content_.text;
    case Kind::list:
      return a.content_.items == b.content_.items;
    case Kind::record:
      return haveSameMembers(a, b);
    case Kind::nothing:
    case Kind::integer:
    case Kind::natural:
      break;
  }
  return true;
}

// Members.

Member::Member(std::string_view name, Value value) : Member() {
  if (name.size() > std::numeric_limits<std::uint32_t>::max()) refuse("the name is too long");
  if (!name.empty()) {
    auto* const copy = new char[name.size()];
    std::memcpy(copy, name.data(), name.size());
    name_ = copy;
    owned_ = true;
  }
  length_ = static_cast<std::uint32_t>(name.size());
  value_ = std::move(value);
}

Member::Member(Member const& other) : Member() {
  if (other.owned_) {
    *this = Member(other.name(), other.value_);
    return;
  }
  value_ = other.value_;
  name_ = other.name_;
  length_ = other.length_;
}

Member::Member(Member&& other) noexcept
    : name_(std::exchange(other.name_, nullptr)),
      length_(std::exchange(other.length_, 0)),
      owned_(std::exchange(other.owned_, false)),
      value_(std::move(other.value_)) {}

Member& Member::operator=(Member const& other) {
  if (this != &other) *this = Member(other);
  return *this;
}

Member& Member::operator=(Member&& other) noexcept {
  if (this == &other) return *this;
  std::swap(name_, other.name_);
  std::swap(length_, other.length_);
  std::swap(owned_, other.owned_);
  value_ = std::move(other.value_);
  return *this;
}

Member::~Member() {
  if (owned_) delete[] name_;
}

// For those who build values.

namespace detail {

void ValueAccess::become(Value& value, Value::Kind kind) {
  bool const isSecret = value.isSecret();
  if (value.kind_ != Kind::nothing) value = {};
  value.kind_ = kind;
  value.markSecret(isSecret);
  if (kind == Kind::text || kind == Kind::keyword) std::construct_at(&value.content_.text);
  if (kind == Kind::list) std::construct_at(&value.content_.items);
  if (kind == Kind::record) std::construct_at(&value.content_.members);
}

Value ValueAccess::keyword(int code, std::string_view word, bool isKnown) {
  Value value(word);
  value.kind_ = Kind::keyword;
  value.code_ = code;
  if (isKnown) value.marks_ |= Value::known;
  return value;
}

Value ValueAccess::natural(std::uint64_t number, bool isHexadecimal) {
  Value value(number);
  if (isHexadecimal) value.marks_ |= Value::hexadecimal;
  return value;
}

Value& ValueAccess::ofTable(Value& record, std::string_view name) {
  if (Value* const known = record.find(name)) return *known;
  Member& member = added(record);
  member.name_ = name.data();
  member.length_ = static_cast<std::uint32_t>(name.size());
  return member.value_;
}

void ValueAccess::setSingle(Value& value, Value::Kind kind, std::uint64_t bits) {
  if (value.kind_ != Kind::nothing) become(value, Kind::nothing);
  value.kind_ = kind;
  value.content_.natural = 0;
  if (kind == Kind::flag) {
    value.content_.flag = bits != 0;
  } else {
    value.content_.natural = bits;
  }
}

void ValueAccess::setText(Value& value, std::string_view text) {
  become(value, Kind::text);
  value.content_.text = text;
}

Value& ValueAccess::add(Value& record, std::string_view name) {
  Member named(name, {});
  Member& member = added(record);
  member = std::move(named);
  return member.value_;
}

/// Records have a dozen members rather than one.
Member& ValueAccess::added(Value& record) {
  std::vector<Member>& members = record.content_.members;
  if (members.size() == members.capacity()) [[unlikely]] {
    members.reserve(std::max<std::size_t>(16, 2 * members.size()));
  }
  return members.emplace_back();
}

}  // namespace detail

}  // namespace Kovra

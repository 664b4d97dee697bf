// The values of the public face. They live down here because the observer builds them.

#include "frame/value.hpp"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
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

Value::Value(Value const& other) : Value() {
  ValueAccess::copy(*this, other, 0);
}

/// What is moved from keeps its kind, empty, and is as secret as before: short texts are copied, so
/// what is left of one is wiped in the end.
Value::Value(Value&& other) noexcept
    : kind_(other.kind_), marks_(other.marks_), reserved_(other.reserved_), code_(other.code_) {
  switch (kind_) {
    case Kind::nothing:
    case Kind::flag:
    case Kind::integer:
    case Kind::natural:
    case Kind::real:
      std::memcpy(static_cast<void*>(&content_), static_cast<void const*>(&other.content_),
                  sizeof content_.natural);
      break;
    case Kind::text:
    case Kind::keyword:
      std::construct_at(&content_.text, std::move(other.content_.text));
      break;
    case Kind::list:
      std::construct_at(&content_.items, std::move(other.content_.items));
      break;
    case Kind::record:
      std::construct_at(&content_.members, std::move(other.content_.members));
      break;
  }
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
    case Kind::record:
      ValueAccess::release(*this);
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
  list.content_.items.all.assign(items.begin(), items.end());
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
  if (kind_ != Kind::real && !isWhole()) refuseKind(*this, "a number");
  return asReal(0.0);
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
  if (kind_ == Kind::integer) return static_cast<double>(content_.integer);
  if (kind_ == Kind::natural) return static_cast<double>(content_.natural);
  return kind_ == Kind::real ? content_.real : otherwise;
}

std::string_view Value::asText(std::string_view otherwise) const noexcept {
  return kind_ == Kind::text ? std::string_view(content_.text) : otherwise;
}

// What it holds.

std::size_t Value::size() const noexcept {
  if (kind_ == Kind::list) return content_.items.all.size();
  return kind_ == Kind::record ? content_.members.all.size() : 0;
}

Range<Value const> Value::items() const noexcept {
  if (kind_ != Kind::list) return {};
  return {content_.items.all.data(), content_.items.all.size()};
}

Range<Value> Value::items() noexcept {
  if (kind_ != Kind::list) return {};
  return {content_.items.all.data(), content_.items.all.size()};
}

Range<Member const> Value::members() const noexcept {
  if (kind_ != Kind::record) return {};
  return {content_.members.all.data(), content_.members.all.size()};
}

Range<Member> Value::members() noexcept {
  if (kind_ != Kind::record) return {};
  return {content_.members.all.data(), content_.members.all.size()};
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
  for (Member const& member : content_.members.all) {
    if (isSameName(member.name(), name)) return &member.value();
  }
  return nullptr;
}

Value* Value::find(std::string_view name) noexcept {
  // The value is ours to change. NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
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

/// Follows a path, or the rest of one, as far as `follow` goes; null where it leads nowhere.
template <class Any, class Follow>
Any* walkPath(Any* value, std::string_view path, Follow follow, bool isFirst = true) {
  for (; value != nullptr && !path.empty(); isFirst = false) {
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
  if (step.isIndex) {
    bool const isNext = value.isList() && step.index == value.size();
    return isNext ? &value.append({}) : nullptr;
  }
  return value.isRecord() ? &ValueAccess::add(value, step.name) : nullptr;
}

/// Where a path leads to nothing: how far it goes, the step from there on, and what is behind that.
struct PathEnd {
  PathEnd(Value& value, std::string_view path) : last(&value), rest(path) {
    for (bool isFirst = true;; isFirst = false) {
      nextStep(rest, isFirst, step);
      Value* const next = stepInto(*last, step);
      if (next == nullptr) return;
      last = next;
    }
  }

  Value* last;
  Step step;
  std::string_view rest;
};

/// Puts a value where a step leads to that leads to nothing yet; false, with nothing changed, where
/// it does not fit.
bool putBehind(Value& value, Step const& step, Value added) {
  if (value.isNothing()) {
    Value made;
    made.markSecret(value.isSecret());
    Value* const place = makeStep(made, step);
    if (place == nullptr) return false;
    *place = std::move(added);
    value = std::move(made);
    return true;
  }
  Value* const place = makeStep(value, step);
  if (place != nullptr) *place = std::move(added);
  return place != nullptr;
}

}  // namespace

/// What is not there is made apart and put into what is there in the end, so that nothing is
/// changed by a path that does not fit, or where memory ends.
Value& Value::set(std::string_view path, Value value) {
  if (!isPath(path)) refusePath(path, "this is no path");
  Value* place = walkPath(this, path, stepInto<Value>);
  if (place != nullptr) return *place = std::move(value);
  PathEnd const end(*this, path);
  Value branch;
  place = walkPath(&branch, end.rest, makeStep, false);
  if (place != nullptr) *place = std::move(value);
  if (place == nullptr || !putBehind(*end.last, end.step, std::move(branch))) {
    refusePath(path, "the path leads through something else than a record or a list");
  }
  return *walkPath(this, path, stepInto<Value>);
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
  return content_.items.all.emplace_back(std::move(value));
}

/// Those behind it move up, names and all: no member takes another's name.
bool Value::erase(std::string_view name) noexcept {
  Value const* const found = find(name);
  if (found == nullptr) return false;
  std::vector<Member>& all = content_.members.all;
  std::size_t at = 0;
  while (&all[at].value() != found) ++at;
  for (; at + 1 < all.size(); ++at) {
    std::destroy_at(&all[at]);
    std::construct_at(&all[at], std::move(all[at + 1]));
  }
  all.pop_back();
  return true;
}

void Value::markSecret(bool on) noexcept {
  marks_ = static_cast<std::uint8_t>(on ? marks_ | secret : marks_ & ~secret);
}

void ValueAccess::markAll(Value& value, bool isSecret) noexcept {
  value.markSecret(isSecret);
  for (Value& item : value.items()) markAll(item, isSecret);
  for (Member& member : value.members()) markAll(member.value(), isSecret);
}

namespace {

bool isSameNumber(Value const& a, Value const& b) {
  bool const isNegative = a.asInteger(1) < 0;
  if (isNegative != (b.asInteger(1) < 0)) return false;
  return isNegative ? a.asInteger() == b.asInteger() : a.asNatural() == b.asNatural();
}

}  // namespace

/// Of as many members. Most records have theirs in the same order, so that none has to be searched.
bool ValueAccess::haveSameMembers(Value const& a, Value const& b, std::size_t depth) {
  Member const* beside = b.members().begin();
  return std::all_of(a.members().begin(), a.members().end(), [&](Member const& member) {
    Member const& there = *beside++;
    Value const* const other =
        there.name() == member.name() ? &there.value() : b.find(member.name());
    return other != nullptr && isSame(member.value(), *other, depth);
  });
}

bool ValueAccess::isSame(Value const& a, Value const& b, std::size_t depth) {
  checkDepth(depth);
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
      return std::equal(
          items(a).begin(), items(a).end(), items(b).begin(),
          [&](Value const& one, Value const& other) { return isSame(one, other, depth + 1); });
    case Kind::record:
      return haveSameMembers(a, b, depth + 1);
    case Kind::nothing:
    case Kind::integer:
    case Kind::natural:
      break;
  }
  return true;
}

bool operator==(Value const& a, Value const& b) {
  return ValueAccess::isSame(a, b, 0);
}

// Depths.

void ValueAccess::checkDepth(std::size_t depth) {
  constexpr std::size_t most = 100;
  if (depth > most) refuse("the values stand too deep in one another");
}

void ValueAccess::copy(Value& value, Value const& other, std::size_t depth) {
  checkDepth(depth);
  switch (other.kind_) {
    case Kind::nothing:
    case Kind::flag:
    case Kind::integer:
    case Kind::natural:
    case Kind::real:
      std::memcpy(static_cast<void*>(&value.content_), static_cast<void const*>(&other.content_),
                  sizeof other.content_.natural);
      break;
    case Kind::text:
    case Kind::keyword:
      std::construct_at(&value.content_.text, other.content_.text);
      break;
    case Kind::list:
      become(value, Kind::list);
      items(value).reserve(other.size());
      for (Value const& item : items(other)) copy(items(value).emplace_back(), item, depth + 1);
      break;
    case Kind::record:
      become(value, Kind::record);
      members(value).reserve(other.size());
      for (Member const& member : members(other)) {
        Member& added = members(value).emplace_back();
        name(added, member);
        copy(added.value_, member.value_, depth + 1);
      }
      break;
  }
  value.kind_ = other.kind_;
  value.marks_ = other.marks_;
  value.code_ = other.code_;
}

Value* ValueAccess::lastIn(Value& value) noexcept {
  if (value.size() == 0) return nullptr;
  return value.isList() ? &items(value).back() : &members(value).back().value_;
}

void ValueAccess::dropLast(Value& value) noexcept {
  if (value.isList()) {
    items(value).pop_back();
  } else {
    members(value).pop_back();
  }
}

Value*& ValueAccess::above(Value& value) noexcept {
  return value.isList() ? value.content_.items.above : value.content_.members.above;
}

/// From the last one back, down into each list and record and up again, so that no depth needs
/// more stack than another, nor any memory.
void ValueAccess::release(Value& top) noexcept {
  Value* at = &top;
  above(*at) = nullptr;
  while (at != nullptr) {
    if (Value* const last = lastIn(*at); last == nullptr) {
      Value* const holder = above(*at);
      if (at->isList()) {
        destroyContent(at->content_.items);
      } else {
        destroyContent(at->content_.members);
      }
      at->kind_ = Kind::nothing;
      at = holder;
      if (at != nullptr) dropLast(*at);
    } else if (last->isList() || last->isRecord()) {
      above(*last) = at;
      at = last;
    } else {
      dropLast(*at);
    }
  }
}

// Members.

namespace {

/// A name that belongs to no table stands behind the number of its members.
using Users = std::atomic<std::size_t>;

char* makeName(std::string_view name) {
  auto* const block = new char[sizeof(Users) + name.size()];
  new (block) Users(1);
  std::memcpy(block + sizeof(Users), name.data(), name.size());
  return block + sizeof(Users);
}

char* blockOf(char const* name) {
  // The name stands in a block of ours. NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
  return const_cast<char*>(name) - sizeof(Users);
}

Users& usersOf(char const* name) {
  return *std::launder(reinterpret_cast<Users*>(blockOf(name)));
}

}  // namespace

Member::Member(std::string_view name, Value value) : Member() {
  if (name.size() > std::numeric_limits<std::uint32_t>::max()) refuse("the name is too long");
  if (!name.empty()) {
    name_ = makeName(name);
    shared_ = true;
  }
  length_ = static_cast<std::uint32_t>(name.size());
  value_ = std::move(value);
}

Member::Member(Member const& other) : value_(other.value_) {
  ValueAccess::name(*this, other);
}

Member::Member(Member&& other) noexcept : value_(std::move(other.value_)) {
  ValueAccess::name(*this, other);
}

Member::~Member() {
  if (shared_ && usersOf(name_).fetch_sub(1, std::memory_order_acq_rel) == 1) {
    delete[] blockOf(name_);
  }
}

void ValueAccess::name(Member& member, Member const& other) noexcept {
  if (other.shared_) usersOf(other.name_).fetch_add(1, std::memory_order_relaxed);
  member.name_ = other.name_;
  member.length_ = other.length_;
  member.shared_ = other.shared_;
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
  Member const named(name, {});
  Member& member = added(record);
  ValueAccess::name(member, named);
  return member.value_;
}

/// Records have a dozen members rather than one.
Member& ValueAccess::added(Value& record) {
  std::vector<Member>& all = members(record);
  if (all.size() == all.capacity()) [[unlikely]] {
    all.reserve(std::max<std::size_t>(16, 2 * all.size()));
  }
  return all.emplace_back();
}

}  // namespace detail

}  // namespace Kovra

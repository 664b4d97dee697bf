#include "record.hpp"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <vector>

#include "flat.hpp"
#include "paths.hpp"

namespace Kovra::tool {

namespace {

using Json = nlohmann::json;

/// The notes of a decoded reply are no part of its record, and there may be a thousand of them.
constexpr std::string_view notesKey = "notes";

Place placeOf(std::string_view text, std::size_t offset) {
  std::string_view const before = text.substr(0, offset);
  std::size_t const lineStart = before.rfind('\n') + 1;  // npos + 1 is 0
  Place place;
  place.line = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
  place.column = 1 + static_cast<int>(std::count_if(
                         before.begin() + static_cast<std::ptrdiff_t>(lineStart), before.end(),
                         [](char byte) { return (byte & '\xC0') != '\x80'; }));
  return place;
}

/// "[json.exception.parse_error.101] parse error at line 1, column 2: why; last read: 'text'"
/// without what comes first, and without the text, which may be part of a secret.
std::string reasonOf(std::string_view message) {
  std::size_t const column = message.find("column ");
  std::size_t const colon = message.find(": ", column == message.npos ? 0 : column);
  message.remove_prefix(colon == message.npos ? 0 : colon + 2);
  return std::string(message.substr(0, message.find("; last read: ")));
}

/// A way through the text that leaves a mark how far it was gone: of the keys that it reads the
/// JSON library tells no place.
class Steps {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = char const*;
  using reference = char const&;

  Steps(char const* at, char const** mark) : at_(at), mark_(mark) {}

  char const& operator*() const { return *at_; }
  Steps& operator++() {
    *mark_ = ++at_;
    return *this;
  }
  Steps operator++(int) {
    Steps const before = *this;
    ++*this;
    return before;
  }
  bool operator==(Steps const& other) const { return at_ == other.at_; }
  bool operator!=(Steps const& other) const { return at_ != other.at_; }

 private:
  char const* at_;
  char const** mark_;
};

/// Makes a value of what the JSON library reads, piece by piece, and throws at the first piece that
/// is too much.
class Builder final : public nlohmann::json_sax<Json> {
 public:
  explicit Builder(std::string_view text) : text_(text), reached_(text.data()) {}

  Steps begin() { return {text_.data(), &reached_}; }
  Steps end() { return {text_.data() + text_.size(), &reached_}; }
  Value result() { return std::move(root_); }

  bool null() override { return add({}); }
  bool boolean(bool flag) override { return add(flag); }
  bool number_integer(number_integer_t number) override { return add(number); }
  bool number_unsigned(number_unsigned_t number) override { return add(number); }
  bool number_float(number_float_t number, string_t const&) override { return add(number); }
  bool string(string_t& text) override { return add(text); }
  /// JSON has none; only other formats of the library do.
  bool binary(binary_t&) override { return false; }

  bool start_object(std::size_t) override { return open(Value::object()); }
  bool start_array(std::size_t) override { return open(Value::list()); }
  bool end_object() override { return close(); }
  bool end_array() override { return close(); }

  bool key(string_t& name) override {
    if (skipped_ > 0) return true;
    Value& record = *open_.back();
    countEntry(record.size());
    if (name.size() > maxName) {
      fail(path(open_.size() - 1), keyOffset(),
           "a name of " + std::to_string(name.size()) + " bytes",
           "at most " + std::to_string(maxName));
    }
    if (record.find(name) != nullptr) {
      fail(memberPath(path(open_.size() - 1), name), keyOffset(), "a key for the second time",
           "each key once");
    }
    record.add(name, {});
    return true;
  }

  bool parse_error(std::size_t position, std::string const& token,
                   Json::exception const& error) override {
    constexpr int numberOverflow = 406;
    if (error.id == numberOverflow) {
      add({});
      fail(path(open_.size()), position - token.size(), "a number beyond all bounds",
           "one that a double can hold");
    }
    throw RecordFailure(placeOf(text_, std::max<std::size_t>(position, 1) - 1),
                        "malformed JSON: " + reasonOf(error.what()));
  }

 private:
  /// Puts the value into its place, unless it is one of those that nobody needs.
  bool add(Value value) {
    if (skipped_ == 0) place(std::move(value));
    return true;
  }

  Value& place(Value value) {
    if (++values_ > maxValues) tooMany(0, maxValues, " values in all");
    value.markSecret();
    return next() = std::move(value);
  }

  /// Where the next value belongs.
  Value& next() {
    if (open_.empty()) return root_;
    Value& container = *open_.back();
    if (container.isRecord()) return container.members().back().value();
    countEntry(container.size());
    return container.append({});
  }

  bool open(Value container) {
    if (open_.size() + skipped_ == maxLevels) {
      tooMany(open_.size(), maxLevels, " levels of lists and objects");
    }
    if (skipped_ > 0 || atNotes()) {
      ++skipped_;
    } else {
      open_.push_back(&place(std::move(container)));
    }
    return true;
  }

  bool close() {
    if (skipped_ > 0) {
      --skipped_;
    } else {
      open_.pop_back();
    }
    return true;
  }

  bool atNotes() const {
    return open_.size() == 1 && open_.back()->isRecord() &&
           open_.back()->members().back().name() == notesKey;
  }

  void countEntry(std::size_t before) const {
    if (before == maxEntries) tooMany(open_.size() - 1, maxEntries, " entries");
  }

  [[noreturn]] void tooMany(std::size_t levels, std::size_t bound, std::string const& what) const {
    fail(path(levels), offset(), "more than " + std::to_string(bound) + what,
         "at most " + std::to_string(bound));
  }

  [[noreturn]] void fail(std::string const& path, std::size_t offset, std::string const& found,
                         std::string const& expected) const {
    throw RecordFailure(placeOf(text_, offset), sentence(path, found, expected));
  }

  /// That of the value or key added last to the innermost of so many containers that are open.
  std::string path(std::size_t levels) const {
    std::string path;
    for (std::size_t i = 0; i < levels; ++i) {
      Value const& container = *open_[i];
      if (container.empty()) continue;
      path = container.isRecord() ? memberPath(path, container.members().back().name())
                                  : entryPath(path, container.size() - 1);
    }
    return path;
  }

  /// Of the byte read last.
  std::size_t offset() const {
    auto const read = static_cast<std::size_t>(reached_ - text_.data());
    return std::max<std::size_t>(read, 1) - 1;
  }

  /// Of the opening quote of the key that was just read: the last one before the closing quote that
  /// no odd number of backslashes escapes.
  std::size_t keyOffset() const {
    std::size_t quote = text_.rfind('"', offset() - 1);
    while ((quote - text_.find_last_not_of('\\', quote - 1)) % 2 == 0) {
      quote = text_.rfind('"', quote - 1);
    }
    return quote;
  }

  std::string_view text_;
  char const* reached_;
  Value root_;
  std::vector<Value*> open_;  // none of them moves while the ones in it are open
  std::size_t skipped_ = 0;   // how many levels of what is not kept are open
  std::size_t values_ = 0;
};

Value valueOf(std::string_view text) try {
  // The JSON library takes it for the end, whatever stands behind.
  if (std::size_t const nul = text.find('\0'); nul != text.npos) {
    throw RecordFailure(placeOf(text, nul), "malformed JSON: a NUL byte");
  }
  Builder builder(text);
  Json::sax_parse(builder.begin(), builder.end(), &builder);
  return builder.result();
} catch (Json::exception const&) {
  throw RecordFailure({}, "cannot be read as JSON");
}

/// A message's name is told only when it is one: any other text is the input's.
std::string knownName(std::string_view name) {
  std::vector<Message> const known = messages();
  bool const isKnown = std::any_of(known.begin(), known.end(), [&](Message const& message) {
    return message.isRead() && message.name() == name;
  });
  return isKnown ? std::string(name) : "an unknown message";
}

/// Takes the record of the message's reading out of what `decode` printed.
Record recordIn(Value& readings, std::string_view message) {
  std::string found;
  for (std::size_t i = 0; i < readings.items().size(); ++i) {
    Value& reading = readings.items()[i];
    Value* const record = reading.find("record");
    Value const* const name = reading.find("document");
    if (record == nullptr || name == nullptr) continue;
    if (name->asText("") == message) {
      return {std::move(*record), "readings[" + std::to_string(i) + "].record"};
    }
    found += (found.empty() ? "" : ", ") + knownName(name->asText(""));
  }
  throw RecordFailure({},
                      sentence("readings", found.empty() ? "none" : found, std::string(message)));
}

}  // namespace

std::string sentence(std::string const& path, std::string const& found,
                     std::string const& expected) {
  return (path.empty() ? "" : path + ": ") + "found " + found + "; expected " + expected;
}

Record recordFrom(std::string_view text, std::string_view message) {
  if (isFlat(text)) return {fromFlat(text), ""};
  Value whole = valueOf(text);
  Value* const readings = whole.find("readings");
  if (readings != nullptr) return recordIn(*readings, message);
  return {std::move(whole), ""};
}

}  // namespace Kovra::tool

#include "report_facts.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <utility>

#include "table.hpp"

namespace Kovra::tool {

namespace {

// ---- What names and words mean
//
// No message is named here, and no member: what counts are the words that its name is made of
// ("num_jobs_done_error": num, jobs, done, error). A phrase of several stands with underscores.

/// How much a phrase tells.
struct Phrase {
  char const* words;
  Need need;
};

/// In the name of a number, a flag or a text: something is wrong where it is neither zero nor no.
constexpr Phrase troubles[] = {
    {"alarm", Need::now},  {"alarms", Need::now},  {"error", Need::now},
    {"fault", Need::now},  {"jam", Need::now},     {"jammed", Need::now},
    {"out_of", Need::now}, {"missing", Need::now}, {"warning", Need::soon},
};

/// The same, but only beside other words: "door_open" is a state, "open" or "low" alone is a word
/// among those that may be chosen.
constexpr Phrase troublesOfSomething[] = {
    {"open", Need::now},
    {"empty", Need::now},
    {"low", Need::soon},
};

/// In the word that a state has: a person has to do something.
constexpr Phrase troubledStates[] = {
    {"alarm", Need::now},   {"error", Need::now},  {"fault", Need::now},    {"jam", Need::now},
    {"jammed", Need::now},  {"stuck", Need::now},  {"offline", Need::now},  {"open", Need::now},
    {"out", Need::now},     {"empty", Need::now},  {"missing", Need::now},  {"failed", Need::now},
    {"aborted", Need::now}, {"insert", Need::now}, {"remove", Need::now},   {"reload", Need::now},
    {"replace", Need::now}, {"low", Need::soon},   {"warning", Need::soon},
};

/// In the name of a member that has such a word.
constexpr char const* stateNames[] = {"state", "status"};

/// In a name: it counts what was, and says nothing of what is.
constexpr char const* counterNames[] = {"num", "count", "counter", "total"};

/// What a text says, in whatever letters, where nothing is wrong.
constexpr char const* denials[] = {"", "0", "no", "none", "off", "false"};

/// The name of a number that tells how much is left, and those of the whole beside it.
constexpr char const* remainders[] = {"remaining"};
constexpr char const* wholes[] = {"initial_size", "capacity", "total"};
/// The name of a number that tells it of a hundred.
constexpr char const* percentages[] = {"percent", "percentage", "level"};
/// The name of a number that counts down; the word at its end says what to.
constexpr char const* countdowns[] = {"until"};
/// Among the settings of what it counts down to: how long before that people want to know.
constexpr char const* forewarnings[] = {"warning"};
/// In the name of a record that says less than the one around it.
constexpr char const* fillers[] = {"installed"};

/// Whole names of the members that say which printer it is.
constexpr char const* serialNames[] = {"printer_serial", "serial_number", "serial"};
constexpr char const* modelNames[] = {"printer_model", "model"};

/// So much of the whole is little, and so much of a countdown whose whole is not told.
constexpr double lowShare = 0.1;
constexpr double lowCountdown = 100;

// ---- Names as words

bool isLower(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

bool isUpper(char c) {
  return c >= 'A' && c <= 'Z';
}

std::string lower(std::string_view text) {
  std::string all(text);
  for (char& c : all) {
    if (isUpper(c)) c = static_cast<char>(c + 32);
  }
  return all;
}

/// The words of a name, in lower case: "film_remaining", "topLaminate".
std::vector<std::string> wordsOf(std::string_view name) {
  std::vector<std::string> words(1);
  for (std::size_t i = 0; i < name.size(); ++i) {
    bool const isGap = name[i] == '_' || name[i] == '-' || name[i] == ' ';
    bool const begins = i > 0 && isUpper(name[i]) && isLower(name[i - 1]);
    if ((isGap || begins) && !words.back().empty()) words.emplace_back();
    if (!isGap) words.back() += lower(name.substr(i, 1));
  }
  if (words.back().empty()) words.pop_back();
  return words;
}

bool has(std::vector<std::string> const& words, std::string_view phrase) {
  std::vector<std::string> const wanted = wordsOf(phrase);
  return std::search(words.begin(), words.end(), wanted.begin(), wanted.end()) != words.end();
}

template <class Phrases>
bool hasOne(std::vector<std::string> const& words, Phrases const& phrases) {
  return std::any_of(std::begin(phrases), std::end(phrases),
                     [&](char const* phrase) { return has(words, phrase); });
}

template <class Names>
bool isOne(std::string_view name, Names const& names) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

template <class Phrases>
Need needOf(std::vector<std::string> const& words, Phrases const& phrases) {
  Need most = Need::none;
  for (Phrase const& phrase : phrases) {
    if (has(words, phrase.words)) most = std::min(most, phrase.need);
  }
  return most;
}

/// As a sentence begins: "Film remaining".
std::string spoken(std::vector<std::string> const& words) {
  std::string all;
  for (std::string const& word : words) all += (all.empty() ? "" : " ") + word;
  if (!all.empty() && all[0] >= 'a' && all[0] <= 'z') all[0] = static_cast<char>(all[0] - 32);
  return all;
}

/// A printer's word for people: "alarm handling".
std::string spokenWord(std::string_view word) {
  std::string all(word);
  std::replace(all.begin(), all.end(), '_', ' ');
  return all.empty() ? "(empty)" : all;
}

// ---- Values

bool isNumber(Value const& value) {
  return (value.isWhole() || value.isReal()) && !value.isSecret();
}

/// Neither zero nor no.
bool isOn(Value const& value) {
  if (value.isFlag()) return value.asBool();
  if (value.isText()) return !isOne(lower(value.asText()), denials);
  return value.asReal(0.0) != 0.0;
}

/// Bits by their numbers, from 0 on; anything else as tables show it.
std::string said(Value const& value) {
  std::string shown = cell(value, Secrets::masked);
  std::uint64_t const bits = value.isHexadecimal() ? value.asNatural() : 0;
  if (bits == 0) return shown;
  std::string numbers;
  std::size_t count = 0;
  for (unsigned bit = 0; bit < 64; ++bit) {
    if (((bits >> bit) & 1U) == 0) continue;
    numbers += (count++ == 0 ? "" : ", ") + std::to_string(bit);
  }
  return (count == 1 ? "bit " : "bits ") + numbers + " (" + shown + ')';
}

// ---- A record

class Judge {
 public:
  explicit Judge(std::string_view message) : message_(message) {}

  /// `owner` are the words of what the record belongs to; of the whole record there are none.
  void record(Value const& record, std::vector<std::string> const& owner);
  void identity(Value const& record);

  Facts facts;

 private:
  void member(std::string_view name, Value const& value, std::vector<std::string> const& owner);
  void within(std::string const& step, std::string_view name, Value const& value,
              std::vector<std::string> const& owner);
  void list(std::string_view name, Value const& list, std::vector<std::string> const& owner);
  void single(std::string_view name, Value const& value, std::vector<std::string> const& owner);
  void state(Value const& value, std::string const& what);
  void sign(Need need, std::string const& what, std::string const& said);
  void level(Value const& record, Member const& member, std::vector<std::string> const& owner);
  void interval(Value const& record, std::vector<std::string> const& owner);
  std::string label(std::vector<std::string> const& words,
                    std::vector<std::string> const& owner) const;

  std::string_view message_;
  std::size_t lists_ = 0;  ///< around what is looked at
  std::string path_;       ///< to what is looked at
};

/// What a member is called. A name that every message could have is told by the message's.
std::string Judge::label(std::vector<std::string> const& words,
                         std::vector<std::string> const& owner) const {
  if (owner.empty() && words.size() == 1 && isOne(words.front(), stateNames)) {
    return spoken(wordsOf(message_));
  }
  std::vector<std::string> all = owner;
  all.insert(all.end(), words.begin(), words.end());
  return spoken(all);
}

void Judge::record(Value const& record, std::vector<std::string> const& owner) {
  interval(record, owner);
  for (Member const& each : record.members()) {
    std::string step = path_.empty() ? "" : ".";
    step += each.name();
    within(step, each.name(), each.value(), owner);
    if (isNumber(each.value())) level(record, each, owner);
  }
}

void Judge::within(std::string const& step, std::string_view name, Value const& value,
                   std::vector<std::string> const& owner) {
  std::size_t const length = path_.size();
  path_ += step;
  member(name, value, owner);
  path_.resize(length);
}

void Judge::member(std::string_view name, Value const& value,
                   std::vector<std::string> const& owner) {
  if (value.isSecret()) return;
  if (value.isRecord()) {
    std::vector<std::string> const words = wordsOf(name);
    record(value, hasOne(words, fillers) && !owner.empty() ? owner : words);
  } else if (value.isList()) {
    list(name, value, owner);
  } else if (!value.isNothing()) {
    single(name, value, owner);
  }
}

void Judge::list(std::string_view name, Value const& list, std::vector<std::string> const& owner) {
  ++lists_;
  std::size_t index = 0;
  for (Value const& item : list.items()) {
    within('[' + std::to_string(index++) + ']', name, item, owner);
  }
  --lists_;
}

void Judge::single(std::string_view name, Value const& value,
                   std::vector<std::string> const& owner) {
  std::vector<std::string> const words = wordsOf(name);
  if (hasOne(words, stateNames) && (value.isKeyword() || value.isText())) {
    state(value, label(words, owner));
  }
  if (value.isKeyword() || hasOne(words, counterNames)) return;
  Need const alone = needOf(words, troubles);
  Need const beside = words.size() > 1 ? needOf(words, troublesOfSomething) : Need::none;
  Need const need = std::min(alone, beside);
  if (need == Need::none) return;
  facts.isJudged = true;
  if (isOn(value)) sign(need, label(words, owner), said(value));
}

void Judge::state(Value const& value, std::string const& what) {
  std::string_view const word = value.isKeyword() ? value.word() : value.asText();
  std::string const spoken = spokenWord(word);
  Need need = needOf(wordsOf(word), troubledStates);
  if (value.isKeyword() && lists_ == 0) {
    facts.states.push_back({what, spoken});
    facts.isJudged = true;
    if (need == Need::none && !value.isKnown()) need = Need::unknown;
  }
  if (need == Need::unknown) {
    sign(need, what, "unknown word \"" + std::string(word) + '"');
  } else if (need != Need::none) {
    sign(need, what, spoken);
  }
}

/// What a list tells is history, or one of several; the printer itself goes on. Equal signs of its
/// entries are one.
void Judge::sign(Need need, std::string const& what, std::string const& said) {
  if (lists_ > 0) need = std::max(need, Need::soon);
  auto const same = std::find_if(facts.signs.begin(), facts.signs.end(), [&](Sign const& sign) {
    return sign.what == what && sign.said == said;
  });
  if (same != facts.signs.end()) {
    ++same->count;
    same->paths.push_back(path_);
  } else {
    facts.signs.push_back({need, what, said, 1, {path_}});
  }
}

void Judge::level(Value const& record, Member const& member,
                  std::vector<std::string> const& owner) {
  std::vector<std::string> const words = wordsOf(member.name());
  Level level;
  level.path = path_ + (path_.empty() ? "" : ".") + std::string(member.name());
  level.left = member.value().asReal(0.0);
  level.said = cell(member.value(), Secrets::masked);
  level.what = owner.empty() ? spoken(words) : spoken(owner);
  if (hasOne(words, countdowns)) {
    level.what = label(words, owner);
    level.until = words.back();
  } else if (hasOne(words, percentages)) {
    if (level.left < 0 || level.left > 100) return;
    level.whole = 100;
    level.said += " %";
  } else if (hasOne(words, remainders)) {
    auto const members = record.members();
    auto const whole = std::find_if(members.begin(), members.end(), [](Member const& other) {
      return hasOne(wordsOf(other.name()), wholes) && isNumber(other.value());
    });
    if (whole != members.end()) {
      level.whole = whole->value().asReal(0.0);
      level.said += " of " + cell(whole->value(), Secrets::masked);
    }
  } else {
    return;
  }
  level.low = std::max(level.whole, 0.0) * lowShare;
  facts.levels.push_back(std::move(level));
}

/// The record has the settings of what it is named for: how often that is due is the one that is
/// named for it, too.
void Judge::interval(Value const& record, std::vector<std::string> const& owner) {
  if (owner.empty()) return;
  Interval found;
  found.of = owner.back();
  for (Member const& member : record.members()) {
    Value const* const value = member.value().find("val");
    std::vector<std::string> const words = wordsOf(member.name());
    if (value == nullptr || !isNumber(*value) || words.empty()) continue;
    if (hasOne(words, forewarnings)) found.low = value->asReal(0.0);
    if (words.back() == found.of) found.whole = value->asReal(0.0);
  }
  if (found.whole > 0) facts.intervals.push_back(std::move(found));
}

/// The first member of one of these names that says anything.
template <class Names>
std::string firstOf(Value const& record, Names const& names) {
  for (char const* const name : names) {
    Value const* const value = record.find(name);
    if (value == nullptr || value->isSecret() || !(value->isText() || value->isWhole())) continue;
    if (isOn(*value)) return value->isText() ? std::string(value->asText()) : said(*value);
  }
  return {};
}

void Judge::identity(Value const& record) {
  facts.serial = firstOf(record, serialNames);
  facts.model = firstOf(record, modelNames);
}

}  // namespace

double Level::share() const {
  return hasBar() ? std::max(left, 0.0) / end() : 1;
}

Facts factsOf(std::string_view message, Value const& record) {
  Judge judge(message);
  judge.record(record, {});
  judge.identity(record);
  return std::move(judge.facts);
}

void complete(Level& level, std::vector<Interval> const& intervals) {
  if (level.until.empty()) return;
  level.low = lowCountdown;
  for (Interval const& interval : intervals) {
    if (interval.of != level.until) continue;
    level.whole = interval.whole;
    level.low = interval.low > 0 ? interval.low : interval.whole * lowShare;
  }
  if (level.whole > 0) {
    std::array<char, 32> whole{};
    std::snprintf(whole.data(), whole.size(), "%.0f", level.whole);
    level.said += " of " + std::string(whole.data());
  }
}

Sign signOf(Level const& level) {
  Sign sign{Need::none, level.what, level.said, 1, {level.path}};
  bool const isCountdown = !level.until.empty();
  bool const isAboveWhole = level.whole > 0 && level.left > level.whole;
  // Nothing is loaded where the whole is nothing, and what is beyond the whole is no level.
  if (!isCountdown && (level.whole == 0 || isAboveWhole || level.left < 0)) return sign;
  if (level.left <= 0) {
    sign.need = Need::now;
    sign.said += isCountdown ? (level.left < 0 ? ": overdue" : ": due") : ": empty";
  } else if (level.left <= level.low) {
    sign.need = Need::soon;
    sign.said += isCountdown ? ": due soon" : ": low";
  }
  return sign;
}

std::vector<Sign> signsOf(Facts facts) {
  std::vector<Sign> signs = std::move(facts.signs);
  for (Level& level : facts.levels) {
    complete(level, facts.intervals);
    Sign sign = signOf(level);
    if (sign.need != Need::none) signs.push_back(std::move(sign));
  }
  std::stable_sort(signs.begin(), signs.end(),
                   [](Sign const& a, Sign const& b) { return a.need < b.need; });
  return signs;
}

}  // namespace Kovra::tool

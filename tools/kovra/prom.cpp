#include "prom.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

#include "paths.hpp"
#include "words.hpp"

namespace Kovra::tool {

namespace {

// Names.

/// In letters that a metric's name may have, with low dashes between words.
std::string nameOf(std::string_view text) {
  std::string name;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char const letter = text[i];
    bool const isWord = isUpper(letter) && i > 0 && !isUpper(text[i - 1]) && name.back() != '_';
    if (isWord) name += '_';
    bool const isPlain = isUpper(letter) || isLower(letter) || isDigit(letter);
    name += !isPlain ? '_' : isUpper(letter) ? static_cast<char>(letter - 'A' + 'a') : letter;
  }
  return name;
}

/// Words that in a metric's name would be a unit or a kind of metric, which the printer does not
/// mean.
std::string withoutUnits(std::string_view name) {
  constexpr std::pair<std::string_view, std::string_view> others[] = {
      {"kb", "kbsetting"}, {"mb", "mbsetting"}, {"counter", "counted"}};
  std::string all;
  while (!name.empty()) {
    std::string_view const word = name.substr(0, name.find('_'));
    auto const other = std::find_if(std::begin(others), std::end(others),
                                    [&](auto const& pair) { return pair.first == word; });
    all += other != std::end(others) ? other->second : word;
    name.remove_prefix(word.size());
    if (name.empty()) break;
    all += '_';
    name.remove_prefix(1);
  }
  return all;
}

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// Some endings promise kinds of metrics that a printer's numbers are not.
std::string metricOf(std::string_view path) {
  std::string name = "kovra_" + withoutUnits(nameOf(path));
  for (std::string_view const ending : {"_total", "_count", "_sum", "_bucket", "_info"}) {
    if (endsWith(name, ending)) return name + "_value";
  }
  return name;
}

// Texts.

std::string escaped(std::string_view text) {
  std::string out;
  for (char const letter : text) {
    if (letter == '\\' || letter == '"') out += '\\';
    if (letter == '\n') {
      out += "\\n";
    } else {
      out += letter;
    }
  }
  return out;
}

std::string label(std::string_view name, std::string_view value) {
  return std::string(name) + "=\"" + escaped(value) + '"';
}

std::string joinedLabels(std::string_view a, std::string_view b) {
  return std::string(a) + (a.empty() || b.empty() ? "" : ",") + std::string(b);
}

std::string digits(double number) {
  if (std::isnan(number)) return "NaN";
  if (std::isinf(number)) return number > 0 ? "+Inf" : "-Inf";
  char text[64];
  auto const result = std::to_chars(text, text + sizeof text, number);
  return {text, result.ptr};
}

// Values.

/// Goes through a record with what there is to know of its members.
class Walk {
 public:
  explicit Walk(std::string message) : message_(std::move(message)) {}

  void record(Value const& record, std::vector<MemberDescription> const& known,
              std::string const& path, std::string const& labels);
  std::vector<MetricSample> take() { return std::move(samples_); }

 private:
  void value(Value const& value, MemberDescription const& known, std::string const& path,
             std::string const& labels, std::string& texts);
  void states(Value const& value, MemberDescription const& known, std::string const& path,
              std::string const& labels);
  void flags(Value const& value, std::string const& path, std::string const& labels);
  void list(Value const& value, MemberDescription const& known, std::string const& path,
            std::string const& labels);
  void add(std::string const& path, std::string const& labels, std::string value) {
    samples_.push_back(
        {metricOf(memberPath(message_, path)), path + " of " + message_, labels, std::move(value)});
  }

  std::string message_;
  std::vector<MetricSample> samples_;
};

void Walk::record(Value const& record, std::vector<MemberDescription> const& known,
                  std::string const& path, std::string const& labels) {
  std::string texts;
  for (Member const& member : record.members()) {
    auto const found = std::find_if(
        known.begin(), known.end(),
        [&](MemberDescription const& description) { return description.name() == member.name(); });
    value(member.value(), found != known.end() ? *found : MemberDescription(),
          memberPath(path, member.name()), labels, texts);
  }
  if (texts.empty()) return;
  samples_.push_back({"kovra_" + withoutUnits(nameOf(memberPath(message_, path))) + "_info",
                      "texts of " + memberPath(message_, path), joinedLabels(labels, texts), "1"});
}

void Walk::value(Value const& value, MemberDescription const& known, std::string const& path,
                 std::string const& labels, std::string& texts) {
  switch (value.kind()) {
    case Value::Kind::nothing:
      return;
    case Value::Kind::flag:
      return add(path, labels, value.asBool() ? "1" : "0");
    case Value::Kind::integer:
      return add(path, labels, std::to_string(value.asInteger()));
    case Value::Kind::natural:
      return add(path, labels, std::to_string(value.asNatural()));
    case Value::Kind::real:
      return add(path, labels, digits(value.asReal()));
    case Value::Kind::text:
      if (value.isSecret()) return;
      texts = joinedLabels(texts, label(nameOf(path.substr(path.rfind('.') + 1)), value.asText()));
      return;
    case Value::Kind::keyword:
      return states(value, known, path, labels);
    case Value::Kind::list:
      return list(value, known, path, labels);
    case Value::Kind::record:
      if (!known.words().empty()) return flags(value, path, labels);
      return record(value, known.members(), path, labels);
  }
}

/// Words of equal code are one state; one that nobody knows is a state, too.
void Walk::states(Value const& value, MemberDescription const& known, std::string const& path,
                  std::string const& labels) {
  std::vector<std::string> words;
  for (Keyword const& word : known.words()) words.push_back(word.word());
  std::string const own(value.word());
  if (std::find(words.begin(), words.end(), own) == words.end()) words.push_back(own);
  for (std::string const& word : words) {
    add(path, joinedLabels(labels, label("state", word)), word == own ? "1" : "0");
  }
}

void Walk::flags(Value const& value, std::string const& path, std::string const& labels) {
  for (Member const& flag : value.members()) {
    bool const isSet = flag.value().isFlag() && flag.value().asBool();
    add(path, joinedLabels(labels, label("flag", flag.name())), isSet ? "1" : "0");
  }
}

void Walk::list(Value const& value, MemberDescription const& known, std::string const& path,
                std::string const& labels) {
  for (std::size_t i = 0; i < value.size(); ++i) {
    std::string const inner = joinedLabels(labels, label("index", std::to_string(i)));
    Value const& item = value.items()[i];
    if (item.isKeyword()) {
      states(item, known, path, inner);
    } else if (item.isRecord()) {
      record(item, known.members(), path, inner);
    }
  }
}

/// Of a message that a reading has.
std::vector<MemberDescription> membersOf(std::string const& name) {
  std::vector<Message> const all = messages();
  return std::find_if(all.begin(), all.end(),
                      [&](Message const& message) { return message.name() == name; })
      ->members();
}

}  // namespace

std::vector<MetricSample> samplesOf(Decoding const& decoding) {
  std::vector<MetricSample> all;
  for (Reading const& reading : decoding.readings()) {
    Walk walk(reading.message());
    walk.record(reading.record(), membersOf(reading.message()), {}, {});
    for (MetricSample& sample : walk.take()) all.push_back(std::move(sample));
  }
  return all;
}

/// A source that comes again is another one: no series may stand twice.
void Metrics::add(std::string_view name, std::vector<MetricSample> const& samples, bool isDecoded,
                  std::size_t notes) {
  std::size_t const times = ++sources_[std::string(name)];
  std::string const source = std::string(name) + (times > 1 ? '~' + std::to_string(times) : "");
  addSample(source, {"kovra_reply_decoded", "Was the reply decoded?", {}, isDecoded ? "1" : "0"});
  addSample(source, {"kovra_reply_notes",
                     "What the reply said and Kovra did not take as it was",
                     {},
                     std::to_string(notes)});
  for (MetricSample const& sample : samples) addSample(source, sample);
}

void Metrics::addSample(std::string_view source, MetricSample const& sample) {
  auto found = metrics_.find(sample.metric);
  if (found == metrics_.end()) {
    found = metrics_.emplace(sample.metric, Metric{sample.help, {}}).first;
    order_.push_back(sample.metric);
  }
  std::string const labels =
      joinedLabels(source.empty() ? std::string() : label("source", source), sample.labels);
  found->second.lines += sample.metric;
  if (!labels.empty()) found->second.lines += '{' + labels + '}';
  found->second.lines += ' ' + sample.value + '\n';
}

std::string Metrics::text() const {
  std::string text;
  for (std::string const& name : order_) {
    Metric const& metric = metrics_.find(name)->second;
    text.append("# HELP ").append(name).append(" ").append(escaped(metric.help));
    text.append("\n# TYPE ").append(name).append(" gauge\n").append(metric.lines);
  }
  return text;
}

}  // namespace Kovra::tool

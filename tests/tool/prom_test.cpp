// Replies as metrics: whatever they say, the lines are ones that Prometheus takes.

#include "prom.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <kovra.hpp>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "sample.hpp"

namespace Kovra::tool {

namespace {

/// A line taken apart: `name{label="value",...} number`.
struct Series {
  std::string name;
  std::map<std::string, std::string> labels;
  std::string value;
  std::string wrong;  ///< empty for a good one
};

bool isName(std::string const& name, bool mayHaveColon) {
  if (name.empty() || std::isdigit(static_cast<unsigned char>(name.front())) != 0) return false;
  for (char const letter : name) {
    bool const isPlain = std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_';
    if (!isPlain && !(mayHaveColon && letter == ':')) return false;
  }
  return true;
}

/// The text behind the quote at `at`, which goes behind the closing one.
std::string quoted(std::string const& line, std::size_t& at) {
  std::string text;
  for (++at; at < line.size() && line[at] != '"'; ++at) {
    bool const isEscaped = line[at] == '\\';
    if (isEscaped) ++at;
    text += isEscaped && line[at] == 'n' ? '\n' : line[at];
  }
  ++at;
  return text;
}

Series seriesOf(std::string const& line) {
  Series series;
  std::size_t at = std::min(line.find_first_of("{ "), line.size());
  series.name = line.substr(0, at);
  if (!isName(series.name, true)) series.wrong = "name";
  while (at < line.size() && (line[at] == '{' || line[at] == ',')) {
    std::size_t const equals = line.find('=', at);
    if (equals == line.npos || line[equals + 1] != '"') break;
    std::string const label = line.substr(at + 1, equals - at - 1);
    if (!isName(label, false)) series.wrong = "label " + label;
    at = equals + 1;
    if (!series.labels.emplace(label, quoted(line, at)).second) series.wrong = label + " twice";
  }
  if (at < line.size() && line[at] == '}') ++at;
  if (at >= line.size() || line[at] != ' ') series.wrong = "no value";
  series.value = line.substr(std::min(at + 1, line.size()));
  if (series.value.empty() || series.value.find(' ') != series.value.npos) series.wrong = "value";
  return series;
}

/// What is wrong with a whole page.
std::string faultOf(std::string const& page) {
  std::set<std::string> headings;
  std::set<std::string> lines;
  std::string metric;
  std::istringstream stream(page);
  for (std::string line; std::getline(stream, line);) {
    if (line.rfind("# HELP ", 0) == 0) {
      metric = line.substr(7, line.find(' ', 7) - 7);
      if (!headings.insert(metric).second) return "two headings: " + line;
    } else if (line.rfind("# TYPE ", 0) == 0) {
      if (line != "# TYPE " + metric + " gauge") return "type: " + line;
    } else {
      Series const series = seriesOf(line);
      if (!series.wrong.empty()) return series.wrong + ": " + line;
      if (series.name != metric) return "not below its heading: " + line;
      if (!lines.insert(line.substr(0, line.rfind(' '))).second) return "twice: " + line;
    }
  }
  return headings.empty() ? "nothing" : "";
}

std::string pageOf(std::string_view source, std::vector<MetricSample> const& samples) {
  Metrics metrics;
  metrics.add(source, samples, true, 0);
  return metrics.text();
}

TEST(Metrics, OfEveryReplyAreGood) {
  Metrics all;
  for (Message const& message : messages()) {
    if (!message.isRead()) continue;
    for (std::uint64_t seed = 0; seed < 5; ++seed) {
      Decoding const decoding = decode(sampleOf(message, seed, {}).text);
      ASSERT_TRUE(static_cast<bool>(decoding)) << message.name();
      EXPECT_EQ(faultOf(pageOf("", samplesOf(decoding))), "") << message.name();
      EXPECT_EQ(faultOf(pageOf("reply.xml", samplesOf(decoding))), "") << message.name();
      all.add("reply.xml", samplesOf(decoding), true, decoding.notes().size());
    }
  }
  EXPECT_EQ(faultOf(all.text()), "");
}

TEST(Metrics, EscapeWhateverALabelHolds) {
  for (std::string const source :
       {"a\"b", "a\\b", "a\nb", "\\n", "\\", "}", "a=\"b\",c=\"", " # "}) {
    std::string const page = pageOf(source, {{"kovra_x", "help\\\n", "", "1"}});
    EXPECT_EQ(faultOf(page), "") << page;
    std::size_t const line = page.find("\nkovra_x{") + 1;
    Series const series = seriesOf(page.substr(line, page.find('\n', line) - line));
    EXPECT_EQ(series.labels.at("source"), source);
  }
}

/// The number of a metric; empty where there is none.
std::string numberIn(std::string const& page, std::string const& name) {
  std::size_t const begin = page.find('\n' + name + ' ');
  if (begin == page.npos) return {};
  std::size_t const number = begin + name.size() + 2;
  return page.substr(number, page.find('\n', number) - number);
}

TEST(Metrics, OfNumbersThatAreNoneAreWrittenAsPrometheusDoes) {
  auto const told = [](std::string const& number) {
    std::string const page =
        pageOf("", samplesOf(decode("<get_sensor_status><sensor_values><voltage_24>" + number +
                                    "</voltage_24></sensor_values></get_sensor_status>")));
    EXPECT_EQ(faultOf(page), "") << page;
    return numberIn(page, "kovra_sensor_status_voltage_24");
  };
  EXPECT_EQ(told("24.5"), "24.5");
  EXPECT_EQ(told("1e99"), "+Inf");
  EXPECT_EQ(told("-1e99"), "-Inf");
  EXPECT_EQ(told("nan"), "NaN");
}

TEST(Metrics, OfOneSourceTwiceAreTwo) {
  Metrics metrics;
  for (int i = 0; i < 3; ++i) metrics.add("a", {{"kovra_x", "help", "", "1"}}, true, 0);
  EXPECT_EQ(faultOf(metrics.text()), "");
  EXPECT_NE(metrics.text().find("kovra_x{source=\"a~3\"} 1\n"), std::string::npos);
}

TEST(Metrics, TellOfReplies) {
  Metrics metrics;
  metrics.add("", {}, false, 3);
  EXPECT_EQ(metrics.text(),
            "# HELP kovra_reply_decoded Was the reply decoded?\n"
            "# TYPE kovra_reply_decoded gauge\nkovra_reply_decoded 0\n"
            "# HELP kovra_reply_notes What the reply said and Kovra did not take as it was\n"
            "# TYPE kovra_reply_notes gauge\nkovra_reply_notes 3\n");
  EXPECT_EQ(Metrics().text(), "");
}

}  // namespace

}  // namespace Kovra::tool

#include "report_fleet.hpp"

#include <algorithm>
#include <iterator>
#include <kovra.hpp>
#include <map>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "input.hpp"

namespace Kovra::tool {

namespace {

/// Names of messages and roots are compared without regard to how their words are joined.
std::string plain(std::string_view name) {
  std::string all(name);
  for (char& c : all) {
    if (c == '_' || c == '.' || c == ' ') c = '-';
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return all;
}

/// The text in front of `ending` and of what joins it; the whole text where it ends otherwise.
std::string_view before(std::string_view text, std::string_view ending) {
  std::string const end = '-' + plain(ending);
  std::string const all = plain(text);
  bool const hasIt = all.size() > end.size() && all.ends_with(end);
  return hasIt ? text.substr(0, text.size() - end.size()) : text;
}

std::string_view folderOf(std::string_view path) {
  std::size_t const slash = path.rfind('/');
  return slash == path.npos ? "." : path.substr(0, std::max<std::size_t>(slash, 1));
}

std::string groupByName(std::string_view path, std::string_view message, std::string_view root) {
  std::size_t const slash = path.rfind('/');
  std::size_t const begin = slash == path.npos ? 0 : slash + 1;
  std::string_view stem = path.substr(begin);
  std::size_t const point = stem.rfind('.');
  if (point != stem.npos && point > 0) stem = stem.substr(0, point);
  if (plain(stem) == plain(message) || plain(stem) == plain(root)) {
    return std::string(folderOf(path));
  }
  stem = before(before(stem, message), root);
  return std::string(path.substr(0, begin)).append(stem);
}

/// Where the catalogue has each message.
std::unordered_map<std::string, std::size_t> const& places() {
  static std::unordered_map<std::string, std::size_t> const all = [] {
    std::unordered_map<std::string, std::size_t> places;
    for (Message const& message : messages()) places.emplace(message.name(), places.size());
    return places;
  }();
  return all;
}

std::size_t placeOf(Told const& told) {
  auto const place = places().find(told.message);
  return place != places().end() ? place->second : places().size();
}

std::string const* serialOf(Report const& report) {
  for (Told const& told : report.told) {
    if (!told.facts.serial.empty()) return &told.facts.serial;
  }
  return nullptr;
}

void add(Printer& printer, Report report) {
  if (printer.name.empty()) printer.name = std::move(report.group);
  for (Told& told : report.told) {
    Facts const& facts = told.facts;
    if (!facts.serial.empty()) printer.serial = facts.serial;
    if (!facts.model.empty()) printer.model = facts.model;
    std::erase_if(printer.told, [&](Told const& old) { return old.message == told.message; });
    printer.told.push_back(std::move(told));
  }
}

/// Of levels of one name the last one counts.
std::vector<Level> levelsOf(std::vector<Told> const& all) {
  std::vector<Level> levels;
  for (Told const& told : all) {
    for (Level const& level : told.facts.levels) {
      auto const same = std::find_if(levels.begin(), levels.end(),
                                     [&](Level const& old) { return old.what == level.what; });
      (same != levels.end() ? *same : levels.emplace_back()) = level;
    }
  }
  return levels;
}

/// Several messages tell the same: once is enough.
void addSign(std::vector<Sign>& signs, Sign const& sign) {
  bool const isThere = std::any_of(signs.begin(), signs.end(), [&](Sign const& old) {
    return old.what == sign.what && old.said == sign.said;
  });
  if (!isThere) signs.push_back(sign);
}

/// What all that was told comes to.
void conclude(Printer& printer) {
  printer.levels = levelsOf(printer.told);
  std::stable_sort(printer.told.begin(), printer.told.end(),
                   [](Told const& a, Told const& b) { return placeOf(a) < placeOf(b); });
  std::vector<Interval> intervals;
  bool isJudged = false;
  for (Told const& told : printer.told) {
    Facts const& facts = told.facts;
    isJudged = isJudged || facts.isJudged;
    std::copy(facts.intervals.begin(), facts.intervals.end(), std::back_inserter(intervals));
    std::copy(facts.states.begin(), facts.states.end(), std::back_inserter(printer.states));
    for (Sign const& sign : facts.signs) addSign(printer.signs, sign);
  }
  for (Level& level : printer.levels) {
    complete(level, intervals);
    isJudged = isJudged || level.hasBar() || !level.until.empty();
    Sign sign = signOf(level);
    if (sign.need != Need::none) printer.signs.push_back(std::move(sign));
  }
  std::stable_sort(printer.signs.begin(), printer.signs.end(),
                   [](Sign const& a, Sign const& b) { return a.need < b.need; });
  Need const otherwise = isJudged ? Need::none : Need::unknown;
  printer.need = printer.signs.empty() ? otherwise : printer.signs.front().need;
}

/// Bars of countdowns whose whole is not told are as long as the most that any printer tells of the
/// same, so that they can be compared; and not shorter than this, so that a little looks like one.
constexpr double leastScale = 1000;

void scaleCountdowns(std::vector<Printer>& printers) {
  std::unordered_map<std::string, double> scales;
  for (Printer const& printer : printers) {
    for (Level const& level : printer.levels) {
      if (level.until.empty()) continue;
      double& scale = scales.emplace(level.what, leastScale).first->second;
      scale = std::max({scale, level.left, level.whole});
    }
  }
  for (Printer& printer : printers) {
    for (Level& level : printer.levels) {
      if (!level.until.empty()) level.scale = scales.at(level.what);
    }
  }
}

/// Among equally urgent ones that which has the least left of something comes first.
bool isBefore(Printer const& a, Printer const& b) {
  auto const rank = [](Printer const& printer) {
    return std::tuple<Need, double, std::string const&>(printer.need, printer.leastShare(),
                                                        printer.name);
  };
  return rank(a) < rank(b);
}

}  // namespace

double Printer::leastShare() const {
  double least = 1;
  for (Level const& level : levels) least = std::min(least, level.share());
  return least;
}

std::string groupOf(ReplyInput const& input, Grouping grouping, std::string_view message,
                    std::string_view root) {
  if (input.source == standardInput || grouping == Grouping::input) {
    return grouping == Grouping::name ? nameOf(input) : inputName(input.source);
  }
  if (grouping == Grouping::folder) return std::string(folderOf(input.source));
  return input.number != 0 ? nameOf(input) : groupByName(input.source, message, root);
}

std::vector<Printer> printersOf(std::vector<Report> reports) {
  std::unordered_map<std::string, std::string> serials;  // of groups
  for (Report const& report : reports) {
    if (std::string const* const serial = serialOf(report)) serials.emplace(report.group, *serial);
  }
  std::map<std::pair<bool, std::string>, std::size_t> places;  // by serial number, or by group
  std::vector<Printer> printers;
  for (Report& report : reports) {
    std::string const* const own = serialOf(report);
    auto const others = serials.find(report.group);
    bool const hasSerial = own != nullptr || others != serials.end();
    std::string const& key = own != nullptr ? *own : hasSerial ? others->second : report.group;
    auto const [place, isNew] = places.emplace(std::make_pair(hasSerial, key), printers.size());
    if (isNew) printers.emplace_back();
    add(printers[place->second], std::move(report));
  }
  for (Printer& printer : printers) conclude(printer);
  scaleCountdowns(printers);
  std::stable_sort(printers.begin(), printers.end(), isBefore);
  return printers;
}

}  // namespace Kovra::tool

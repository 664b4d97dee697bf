/// @file
/// What of a reply matters to people who look after printers.

#ifndef KOVRA_TOOL_REPORT_FACTS_HPP
#define KOVRA_TOOL_REPORT_FACTS_HPP

#include <cstddef>
#include <cstdint>
#include <kovra.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace Kovra::tool {

/// Does somebody have to go there? The most urgent one comes first.
enum class Need : std::uint8_t {
  now,
  soon,
  unknown,  ///< nothing that was told says so, or in words that nobody knows
  none,
};

/// Something that needs a person.
struct Sign {
  Need need = Need::none;
  std::string what;  ///< "Head open"
  std::string said;  ///< "yes"
  std::size_t count = 1;
  std::vector<std::string> paths = {};  ///< as Value::at() takes them: of the members that say it
};

/// What something is doing: "Printer state", "printing heating".
struct State {
  std::string what;
  std::string said;
};

/// How much is left of something, or until something.
struct Level {
  std::string what;   ///< "Ribbon"
  std::string said;   ///< "437 of 500"
  double left = 0;    ///< below 0: overdue
  double whole = -1;  ///< below 0: not told
  double low = 0;     ///< so much is little
  std::string until;  ///< what has its whole in an Interval: "cleaning"; empty for what has its own
  double scale = 0;   ///< the length of a bar for it where the whole is not told; 0: none
  std::string path;   ///< as Value::at() takes it: of the member that says it

  double end() const { return whole > 0 ? whole : scale; }
  /// Can it be drawn?
  bool hasBar() const { return end() > 0 && left <= end(); }
  /// How much of the bar is full, from 0 to 1; 1 without one.
  double share() const;
};

/// How often something is due, and how long before that people want to know.
struct Interval {
  std::string of;
  double whole = 0;
  double low = 0;
};

/// Of one reading.
struct Facts {
  std::string serial;  ///< the printer's
  std::string model;
  std::vector<State> states;
  std::vector<Sign> signs;
  std::vector<Level> levels;
  std::vector<Interval> intervals;
  /// Was something told that could have been a sign?
  bool isJudged = false;
};

/// Keys and other secrets are not looked at. All texts may be the reply's own: they are to be
/// escaped.
Facts factsOf(std::string_view message, Value const& record);

/// Gives the level its whole, where another reply told it, and says how it is to be understood.
void complete(Level& level, std::vector<Interval> const& intervals);

/// What a level is a sign of; with Need::none where there is enough.
Sign signOf(Level const& level);

/// All signs of a reading for itself, those of its levels among them; the most urgent one first.
std::vector<Sign> signsOf(Facts facts);

}  // namespace Kovra::tool

#endif

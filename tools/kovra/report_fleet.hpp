/// @file
/// Which replies are of one printer, and what they say of it together.

#ifndef KOVRA_TOOL_REPORT_FLEET_HPP
#define KOVRA_TOOL_REPORT_FLEET_HPP

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "replies.hpp"
#include "report_facts.hpp"

namespace Kovra::tool {

/// How it is found out of which printer a reply is that says no serial number.
enum class Grouping {
  name,    ///< by its file's name
  folder,  ///< by the folder of its file
  input,   ///< all replies of one input are of one
};

/// What one reader made of a reply.
struct Told {
  std::string message;
  std::string source;  ///< the reply's name
  std::string html;    ///< its members, for the page
  Facts facts;
};

/// A reply, and the name of the printer that it is said to be of.
struct Report {
  std::string group;
  std::vector<Told> told;
};

struct Printer {
  std::string name;  ///< that of the first group of replies of it
  std::string serial;
  std::string model;
  Need need = Need::unknown;
  std::vector<Sign> signs;  ///< the most urgent ones first
  std::vector<State> states;
  std::vector<Level> levels;
  /// In the order of the catalogue. Of several of one message the last one counts.
  std::vector<Told> told;

  /// The least that is left of anything, from 0 to 1; 1 where nothing is known of that.
  double leastShare() const;
};

/// The name of the printer that a reply is of. By name it is the file's without its ending and
/// without the reply's message or root behind it: "hx-17" for "hx-17.general-status.xml" and for
/// "hx-17/general-status.xml". Of several replies in one input each is of a printer of its own
/// then.
std::string groupOf(ReplyInput const& input, Grouping grouping, std::string_view message,
                    std::string_view root);

/// The printers, most urgent ones first. Replies of one group are of one printer, and so are those
/// that say the same serial number, with all that is in their groups.
std::vector<Printer> printersOf(std::vector<Report> reports);

}  // namespace Kovra::tool

#endif

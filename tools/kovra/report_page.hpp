/// @file
/// The page that shows what a fleet's replies say.

#ifndef KOVRA_TOOL_REPORT_PAGE_HPP
#define KOVRA_TOOL_REPORT_PAGE_HPP

#include <cstddef>
#include <ctime>
#include <kovra.hpp>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "report_fleet.hpp"

namespace Kovra::tool {

/// A reply that says nothing, and why.
struct Refused {
  std::string where;  ///< "reply.xml:4:5"
  std::string why;
};

/// A note, once for all replies that have it.
struct Noted {
  Severity severity = Severity::information;
  std::string message;
  std::string where;      ///< the first one
  std::size_t count = 0;  ///< of all
};

/// What the page shows.
struct Fleet {
  std::vector<Printer> printers;
  std::vector<Refused> refused;
  std::vector<Noted> notes;
  std::size_t otherNotes = 0;  ///< that are not listed
  std::time_t made = 0;
};

/// The members of a record, as the page has them. Secrets are masked.
std::string membersOf(Value const& record);

/// The whole page. It needs nothing else, and forbids the browser to ask for anything.
std::string page(Fleet const& fleet);

}  // namespace Kovra::tool

#endif

#include "report_page.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <unordered_map>

#include "html.hpp"
#include "paths.hpp"
#include "report_assets.hpp"
#include "table.hpp"

namespace Kovra::tool {

namespace {

/// How a need is called in the page's style sheet and script, and by people.
struct NeedName {
  char const* name;
  char const* title;
};

NeedName nameOf(Need need) {
  switch (need) {
    case Need::now:
      return {"now", "Now"};
    case Need::soon:
      return {"soon", "Soon"};
    case Need::unknown:
      return {"unknown", "Not known"};
    case Need::none:
      break;
  }
  return {"none", "Nothing to do"};
}

constexpr std::array needs = {Need::now, Need::soon, Need::unknown, Need::none};

/// As HTML writes numbers: with a point, whatever the locale.
std::string number(double value) {
  std::array<char, 64> text{};
  auto const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return {text.data(), end};
}

std::string counted(std::size_t count, std::string_view one, std::string_view several) {
  return std::to_string(count).append(" ").append(count == 1 ? one : several);
}

std::string badge(Need need) {
  NeedName const name = nameOf(need);
  return std::string("<span class=\"need ") + name.name + "\">" + name.title + "</span>";
}

// ---- A printer

std::string nameCell(Printer const& printer, std::size_t folder) {
  std::string out = "<th scope=\"row\" role=\"rowheader\">" + isolated(printer.name.substr(folder));
  if (!printer.model.empty()) out += "<p>" + isolated(printer.model) + "</p>";
  if (!printer.serial.empty()) out += "<p>Serial number " + isolated(printer.serial) + "</p>";
  return out + "</th>";
}

std::string needCell(Printer const& printer) {
  std::string out = "<td role=\"cell\" data-label=\"Needs a person\">" + badge(printer.need);
  if (printer.signs.empty()) return out + "</td>";
  out += "<ul>";
  for (Sign const& sign : printer.signs) {
    out += std::string("<li class=\"") + nameOf(sign.need).name + "\">" + isolated(sign.what) +
           ": " + isolated(sign.said);
    if (sign.count > 1) out += " (" + std::to_string(sign.count) + " times)";
    out += "</li>";
  }
  return out + "</ul></td>";
}

std::string stateCell(Printer const& printer) {
  std::string out = "<td role=\"cell\" data-label=\"State\">";
  if (printer.states.empty()) return out + "<span class=\"faint\">not told</span></td>";
  out += "<dl>";
  for (State const& state : printer.states) {
    out += "<div><dt>" + isolated(state.what) + "</dt><dd>" + isolated(state.said) + "</dd></div>";
  }
  return out + "</dl></td>";
}

/// The text above it says the same in numbers.
std::string bar(Level const& level) {
  if (!level.hasBar()) return "";
  return "<dd class=\"bar\"><meter min=\"0\" max=\"" + number(level.end()) + "\" low=\"" +
         number(level.low) + "\" high=\"" + number(level.low) + "\" optimum=\"" +
         number(level.end()) + "\" value=\"" + number(std::max(level.left, 0.0)) +
         "\" aria-label=\"" + escaped(level.what) + "\"></meter></dd>";
}

std::string levelCell(Printer const& printer) {
  std::string out = "<td role=\"cell\" data-label=\"Supplies\">";
  if (printer.levels.empty()) return out + "<span class=\"faint\">not told</span></td>";
  out += "<dl>";
  for (Level const& level : printer.levels) {
    out += "<div><dt>" + isolated(level.what) + "</dt><dd>" + isolated(level.said) + "</dd>" +
           bar(level) + "</div>";
  }
  return out + "</dl></td>";
}

/// What the catalogue says that the message tells.
std::string titleOf(std::string const& message) {
  static std::unordered_map<std::string, std::string> const titles = [] {
    std::unordered_map<std::string, std::string> all;
    for (Message const& known : messages()) all.emplace(known.name(), known.title());
    return all;
  }();
  auto const title = titles.find(message);
  return title != titles.end() ? title->second : "";
}

std::string detailsOf(Printer const& printer) {
  std::string out = "<details><summary>All that it said (" +
                    counted(printer.told.size(), "message", "messages") +
                    ")</summary><div class=\"told\">";
  for (Told const& told : printer.told) {
    out += "<section><h3>" + escaped(told.message) + "</h3><p>" + escaped(titleOf(told.message)) +
           "; from " + isolated(told.source) + "</p>" + told.html + "</section>";
  }
  return out + "</div></details>";
}

/// The script sorts by what stands in the attributes.
std::string bodyOf(Printer const& printer, std::size_t folder) {
  return "<tbody role=\"rowgroup\" data-need=\"" +
         std::to_string(static_cast<unsigned>(printer.need)) + "\" data-share=\"" +
         number(printer.leastShare()) + "\">\n<tr role=\"row\">" + nameCell(printer, folder) +
         needCell(printer) + stateCell(printer) + levelCell(printer) +
         "</tr>\n<tr role=\"row\" class=\"more\"><td role=\"cell\" colspan=\"4\">" +
         detailsOf(printer) + "</td></tr>\n</tbody>\n";
}

// ---- The page around them

std::size_t countOf(Fleet const& fleet, Need need) {
  auto const count = std::count_if(fleet.printers.begin(), fleet.printers.end(),
                                   [need](Printer const& printer) { return printer.need == need; });
  return static_cast<std::size_t>(count);
}

/// Scripts, styles, pictures, links to elsewhere: nothing but what stands in this page.
std::string policy() {
  return std::string("default-src 'none'; style-src '") + styleHash + "'; script-src '" +
         scriptHash + "'; base-uri 'none'; form-action 'none'";
}

std::string head(std::string const& title) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"" +
         policy() +
         "\">\n<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         "<meta name=\"color-scheme\" content=\"light dark\">\n"
         "<meta name=\"referrer\" content=\"no-referrer\">\n<title>" +
         title + "</title>\n<style>" + style + "</style>\n</head>\n";
}

std::string titleOf(Fleet const& fleet) {
  std::size_t const urgent = countOf(fleet, Need::now) + countOf(fleet, Need::soon);
  return counted(fleet.printers.size(), "printer", "printers") + ", " +
         (urgent == 0 ? "none" : std::to_string(urgent)) + (urgent > 1 ? " need" : " needs") +
         " a person";
}

std::string timeOf(Fleet const& fleet) {
  std::tm parts{};
  if (::gmtime_r(&fleet.made, &parts) == nullptr) return "";
  std::array<char, 64> machine{};
  std::array<char, 64> people{};
  std::strftime(machine.data(), machine.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
  std::strftime(people.data(), people.size(), "%Y-%m-%d %H:%M UTC", &parts);
  return std::string("<time datetime=\"") + machine.data() + "\">" + people.data() + "</time>";
}

std::size_t noteCount(Fleet const& fleet) {
  std::size_t count = fleet.otherNotes;
  for (Noted const& note : fleet.notes) count += note.count;
  return count;
}

std::string tally(Fleet const& fleet) {
  std::string out = "<ul class=\"tally\">";
  for (Need const need : needs) {
    if (std::size_t const count = countOf(fleet, need)) {
      out += "<li><b>" + std::to_string(count) + "</b> " + badge(need) + "</li>";
    }
  }
  if (!fleet.refused.empty()) {
    out += "<li><b>" + std::to_string(fleet.refused.size()) +
           "</b> <a href=\"#refused\">refused</a></li>";
  }
  if (std::size_t const notes = noteCount(fleet)) {
    out += "<li><b>" + std::to_string(notes) + "</b> <a href=\"#notes\">" +
           (notes == 1 ? "note" : "notes") + "</a></li>";
  }
  return out + "</ul>\n";
}

/// Without the script there is nothing to be filtered with, so it is the script that shows this.
constexpr char controls[] =
    "<div class=\"controls\" role=\"search\" hidden>\n"
    "<label>Find <input type=\"search\" id=\"find\" autocomplete=\"off\"></label>\n"
    "<label><input type=\"checkbox\" id=\"needing\"> Needs a person</label>\n"
    "<span id=\"shown\" role=\"status\"></span>\n</div>\n";

constexpr char columnHeads[] =
    "<thead role=\"rowgroup\"><tr role=\"row\">"
    "<th scope=\"col\" role=\"columnheader\" data-by=\"name\">Printer</th>"
    "<th scope=\"col\" role=\"columnheader\" data-by=\"need\" aria-sort=\"ascending\">"
    "Needs a person</th>"
    "<th scope=\"col\" role=\"columnheader\" data-by=\"state\">State</th>"
    "<th scope=\"col\" role=\"columnheader\" data-by=\"share\">Supplies</th>"
    "</tr></thead>\n";

/// The length of the folder that all names begin with: nobody has to read that.
std::size_t commonFolder(std::vector<Printer> const& printers) {
  std::string_view common = printers.front().name;
  for (Printer const& printer : printers) {
    auto const ends =
        std::mismatch(common.begin(), common.end(), printer.name.begin(), printer.name.end());
    common = common.substr(0, static_cast<std::size_t>(ends.first - common.begin()));
  }
  return common.rfind('/') + 1;  // npos + 1 is 0
}

/// The style sheet makes cards of rows on narrow screens; the roles say what they still are.
std::string tableOf(Fleet const& fleet) {
  if (fleet.printers.empty()) return "<p>No reply told anything of a printer.</p>\n";
  std::string out =
      "<table role=\"table\">\n<caption>Printers, what needs a person first</caption>\n";
  out += columnHeads;
  std::size_t const folder = commonFolder(fleet.printers);
  for (Printer const& printer : fleet.printers) out += bodyOf(printer, folder);
  return out + "</table>\n";
}

std::string refusals(Fleet const& fleet) {
  if (fleet.refused.empty()) return "";
  std::string out = "<section id=\"refused\">\n<h2>Refused</h2>\n<ul>\n";
  for (Refused const& refused : fleet.refused) {
    out += "<li>" + isolated(refused.where) + ": " + isolated(refused.why) + "</li>\n";
  }
  return out + "</ul>\n</section>\n";
}

std::string notesOf(Fleet const& fleet) {
  if (fleet.notes.empty()) return "";
  std::string out =
      "<section id=\"notes\">\n<h2>Notes</h2>\n<p>What replies said and Kovra could not use as it "
      "stands.</p>\n<ul>\n";
  for (Noted const& note : fleet.notes) {
    bool const isWarning = note.severity == Severity::warning;
    out += std::string("<li>") + (isWarning ? "Warning: " : "Note: ") + isolated(note.message) +
           "; " + isolated(note.where);
    if (note.count > 1) out += " and " + counted(note.count - 1, "other place", "other places");
    out += "</li>\n";
  }
  out += "</ul>\n";
  if (fleet.otherNotes > 0) {
    out += "<p>" + counted(fleet.otherNotes, "more note is", "more notes are") +
           " not listed; kovra decode tells them.</p>\n";
  }
  return out + "</section>\n";
}

// ---- Members

class Members {
 public:
  void add(std::string const& path, Value const& value);
  std::string html;

 private:
  void row(std::string const& path, std::string const& text) {
    html += "<div><dt>" + escaped(path) + "</dt><dd>" + isolated(text) + "</dd></div>";
  }
};

void Members::add(std::string const& path, Value const& value) {
  if (value.empty() || !(value.isList() || value.isRecord())) {
    return row(path, cell(value, Secrets::masked));
  }
  for (std::size_t i = 0; i < value.items().size(); ++i) {
    add(entryPath(path, i), value.items()[i]);
  }
  for (Member const& member : value.members()) {
    add(memberPath(path, member.name()), member.value());
  }
}

}  // namespace

std::string membersOf(Value const& record) {
  if (record.empty()) return "<p class=\"faint\">Nothing that Kovra knows.</p>";
  Members members;
  members.add("", record);
  return "<dl>" + members.html + "</dl>";
}

std::string page(Fleet const& fleet) {
  std::string const title = titleOf(fleet);
  std::string out = head(title);
  out += "<body>\n<header>\n<h1>" + title + "</h1>\n" + tally(fleet) + controls +
         "</header>\n<main>\n" + tableOf(fleet) + refusals(fleet) + notesOf(fleet) +
         "</main>\n<footer><p>Made " + timeOf(fleet) + " by Kovra " + escaped(version()) +
         " of the replies that it was given. Where a printer does not tell how often something is "
         "due, "
         "its bar ends at the largest number that any of these printers tells of it.</p>"
         "</footer>\n<script>";
  out += script;
  return out + "</script>\n</body>\n</html>\n";
}

}  // namespace Kovra::tool

// Any lines as the arguments of a command line: it is taken, or somebody is told why not. The same
// lines as changes to records, and as records.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <kovra.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "command_line.hpp"
#include "compose.hpp"
#include "edit.hpp"
#include "flat.hpp"
#include "record.hpp"
#include "support/guarded.hpp"

namespace {

using namespace Kovra;
using kovra_fuzz::require;

/// Those at the beginning: command lines are short, and more of them would only take time.
std::vector<std::string_view> linesOf(std::string_view text) {
  constexpr std::size_t most = 12;
  std::vector<std::string_view> lines;
  for (std::size_t end = text.find('\n'); end != text.npos && lines.size() < most;
       end = text.find('\n')) {
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  lines.push_back(text);
  return lines;
}

/// No file is opened.
void removeOutput(CLI::App& app) {
  if (CLI::Option* const output = app.get_option_no_throw("--output")) app.remove_option(output);
  for (CLI::App* const inner : app.get_subcommands(nullptr)) removeOutput(*inner);
}

void parse(std::vector<std::string_view> const& arguments) {
  std::vector<std::string> words = tool::wordsOf(arguments);
  tool::ExitStatus status = tool::ExitStatus::good;
  CLI::App app;
  app.require_subcommand(1);
  tool::addVerbs(app, words.empty() ? "" : words.front(), status);
  removeOutput(app);
  app.parse_complete_callback([] { throw CLI::Success(); });  // before any verb does anything
  std::reverse(words.begin(), words.end());
  try {
    app.parse(std::move(words));
  } catch (CLI::Error const& error) {
    if (error.get_name() == "Success") return;
    std::ostringstream text;
    if (app.exit(error, text, text) == 0) return require(!text.str().empty());
    require(!tool::complaintOf(app, error).empty() && !tool::commandName(app).empty());
  }
  require(status == tool::ExitStatus::good);
}

/// A change that is taken can be made.
void edit(Message const& message, std::string const& assignment) try {
  Value record = Value::object();
  tool::Edit const edit = tool::editOf(message, assignment);
  tool::apply({edit}, record);
  require(record.at(edit.path) == edit.value);
} catch (tool::EditFailure const& failure) {
  require(*failure.what() != '\0');
}

/// A record that is taken is the same when it is told in lines.
void readRecord(std::string_view text) try {
  tool::Record const record = tool::recordFrom(text, "configuration");
  if (!record.value.isRecord()) return;
  std::string const lines = tool::flat(record.value, Secrets::shown);
  if (!tool::isFlat(text)) return;
  require(tool::flat(tool::fromFlat(lines), Secrets::shown) == lines);
} catch (tool::RecordFailure const& failure) {
  require(!failure.why().empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static bool const isInFull = (tool::composeInFull(), true);
  std::string_view const text(reinterpret_cast<char const*>(data), size);
  std::vector<std::string_view> const lines = linesOf(text);
  if (isInFull) parse(lines);
  for (std::string_view const line : lines) {
    for (Message const& message : messages()) {
      if (message.isWritten()) edit(message, std::string(line));
    }
  }
  readRecord(text);
  return 0;
}

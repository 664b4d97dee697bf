#include "options.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "suggest.hpp"

namespace Kovra::tool {

namespace {

/// As the parser describes a set of words.
std::string setOf(Words const& words) {
  std::string set = "{";
  for (std::string const& word : words) set += (set.size() > 1 ? "," : "") + word;
  return set + '}';
}

}  // namespace

Option const& Option::shows(std::string const& value) const {
  option_->option_text(value);
  return *this;
}

Option const& Option::isRequired() const {
  option_->required();
  return *this;
}

Option const& Option::isOneOf(Words const& words) const {
  auto const complaint = [words](std::string const& given) -> std::string {
    if (std::find(words.begin(), words.end(), given) != words.end()) return {};
    std::string const meant = suggestion(given, words);
    return given + " not in " + setOf(words) + (meant.empty() ? meant : '.' + meant);
  };
  return passes({complaint, words});
}

Option const& Option::isWithin(std::uint64_t least, std::uint64_t most) const {
  option_->check(CLI::Range(least, most));
  return *this;
}

Option const& Option::isFolder() const {
  option_->check(CLI::ExistingDirectory);
  return *this;
}

Option const& Option::passes(Check const& check) const {
  option_->check(CLI::Validator(
      [complaint = check.complaint](std::string const& value) { return complaint(value); },
      check.values.empty() ? std::string() : setOf(check.values)));
  return *this;
}

Option const& Option::takesOne() const {
  option_->take_all()->allow_extra_args(false);
  return *this;
}

Option const& Option::takesJust(int number) const {
  option_->expected(number);
  return *this;
}

Option const& Option::isSplitAt(char separator) const {
  option_->delimiter(separator);
  return *this;
}

Option const& Option::excludes(Option other) const {
  option_->excludes(other.option_);
  return *this;
}

Option const& Option::needs(Option other) const {
  option_->needs(other.option_);
  return *this;
}

Option addOption(CLI::App& command, std::string const& names, std::string& value,
                 std::string const& help) {
  return Option(command.add_option(names, value, help));
}

Option addOption(CLI::App& command, std::string const& names, Words& values,
                 std::string const& help) {
  return Option(command.add_option(names, values, help));
}

Option addOption(CLI::App& command, std::string const& names, unsigned& value,
                 std::string const& help) {
  return Option(command.add_option(names, value, help));
}

Option addOption(CLI::App& command, std::string const& names, std::uint64_t& value,
                 std::string const& help) {
  return Option(command.add_option(names, value, help));
}

Option addOption(CLI::App& command, std::string const& names,
                 std::function<void(std::string const&)> const& take, std::string const& help) {
  return Option(command.add_option_function<std::string>(names, take, help));
}

Option addFlag(CLI::App& command, std::string const& names, bool& isSet, std::string const& help) {
  return Option(command.add_flag(names, isSet, help));
}

Option addFlag(CLI::App& command, std::string const& names, std::function<void()> const& act,
               std::string const& help) {
  return Option(command.add_flag_callback(names, act, help));
}

Option optionOf(CLI::App& command, std::string const& name) {
  return Option(command.get_option(name));
}

void addFooter(CLI::App& command, std::string const& text) {
  command.footer(text);
}

void addWork(CLI::App& command, std::function<void()> const& work) {
  command.callback(work);
}

void refuseCommandLine(std::string const& why) {
  throw CLI::ValidationError(why);
}

}  // namespace Kovra::tool

#include "compose.hpp"

#include <cstddef>
#include <utility>

#include "input.hpp"
#include "output.hpp"
#include "record.hpp"
#include "secret.hpp"

namespace Kovra::tool {

namespace {

/// Far more than any record needs.
constexpr std::size_t maxSize = std::size_t{64} << 20U;

/// "record.json: readings[0].record.wireless.channel: found "six"; expected ..."
std::string sentence(Problem problem, std::string const& where) {
  if (!where.empty()) problem.path = where + (problem.path.empty() ? "" : ".") + problem.path;
  return problem.description();
}

/// The document, or a RecordFailure.
std::string document(Record const& record, Composer const& compose) {
  Composition composition = compose(record.value);
  if (!composition.composed) {
    throw RecordFailure({}, sentence(std::move(composition.problem), record.path));
  }
  return std::move(composition.text);
}

std::string prefix(std::string const& file, Place place) {
  std::string out = inputName(file) + ':';
  if (place.line != 0) {
    out += std::to_string(place.line) + ':' + std::to_string(place.column) + ':';
  }
  return out + ' ';
}

ExitStatus composeFrom(std::string const& file, std::string const& name,
                       Composer const& compose) try {
  InputReader reader(maxSize);
  print(document(recordFrom(reader.read(file), name), compose));
  return ExitStatus::good;
} catch (RecordFailure const& failure) {
  complain(prefix(file, failure.place()) + failure.what());
  return ExitStatus::refused;
} catch (InputFailure const& failure) {
  complain(prefix(file, {}) + failure.what());
  return failure.status();
}

}  // namespace

Composing::Composing(CLI::App& compose, std::string const& name, std::string const& description,
                     std::string document)
    : command_(compose.add_subcommand(name, description)),
      document_(std::move(document)),
      file_(std::make_shared<std::string>(standardInput)) {
  command_
      ->add_option("RECORD", *file_,
                   "The record as JSON: what 'kovra decode --format json' prints, or its\n"
                   "\"record\" alone (default: '-', standard input)")
      ->option_text(" ");
}

void Composing::run(ExitStatus& status, Composer compose) {
  command_->callback([&status, file = file_, document = document_, compose = std::move(compose)] {
    status = composeFrom(*file, document, compose);
  });
}

bool holdsNoMask(Value const& value, std::string const& path, Problem& problem) {
  if (value.kind == Value::Kind::text && value.text == mask) {
    problem.path = path;
    problem.found = "a masked secret";
    problem.expected = "the secret itself, as 'kovra decode --show-secrets' shows it";
    return false;
  }
  for (std::size_t i = 0; i < value.items.size(); ++i) {
    if (!holdsNoMask(value.items[i], path + '[' + std::to_string(i) + ']', problem)) return false;
  }
  for (Member const& member : value.members) {
    std::string const inner = path.empty() ? member.name : path + '.' + member.name;
    if (!holdsNoMask(member.value, inner, problem)) return false;
  }
  return true;
}

std::string listed(std::vector<std::string> const& names) {
  std::string list;
  constexpr std::size_t width = 56;
  std::size_t column = 0;
  for (std::string const& name : names) {
    bool const fits = column + name.size() + sizeof ", " <= width;
    if (!list.empty()) list += fits ? ", " : ",\n";
    column = (fits ? column : 0) + name.size() + sizeof ", " - 1;
    list += name;
  }
  return list;
}

void addCompose(CLI::App& app, ExitStatus& status) {
  CLI::App* const compose =
      app.add_subcommand("compose", "Make documents that the printer accepts from records");
  compose->require_subcommand(1);
  compose->footer(
      R"(A member that the record leaves out is zero. A keyword is its code, its word, or
the object that 'kovra decode' shows. Where the record does not fit nothing is
written; one line says what was found where, and what would be right.

Exit status:
  0  the document was written to standard output
  1  the record was refused
  2  the command line is wrong
  3  the file could not be read, or standard output not be written)");
  addComposeConfiguration(*compose, status);
  addComposeCapabilities(*compose, status);
  addComposeMedia(*compose, status);
  addComposePrinterId(*compose, status);
  addComposeSecure(*compose, status);
  addComposeDeviceControl(*compose);
}

}  // namespace Kovra::tool

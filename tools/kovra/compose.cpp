#include "compose.hpp"

#include <cstddef>
#include <new>
#include <utility>

#include "output.hpp"
#include "record.hpp"
#include "secret.hpp"

namespace Kovra::tool {

namespace {

/// "readings[0].record.wireless.channel: found a text of 3 bytes; expected ..."
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

ExitStatus refuse(ExitStatus status, std::string const& file, Place place, std::string const& why) {
  complain(messagePrefix(file, place, "error") + why);
  return status;
}

/// The text itself is given back at once.
Record read(Input const& input, std::string const& name) {
  InputReader reader(input.maxSize);
  return recordFrom(reader.read(input.file), name);
}

/// Whatever fails here is told with the name of the file: it is the one that somebody has to mend.
ExitStatus composeFrom(Input const& input, std::string const& name, Composer const& compose) try {
  print(document(read(input, name), compose));
  return ExitStatus::good;
} catch (RecordFailure const& failure) {
  return refuse(ExitStatus::refused, input.file, failure.place(), failure.why());
} catch (InputFailure const& failure) {
  return refuse(failure.status(), input.file, {}, failure.what());
} catch (std::bad_alloc const&) {
  return refuse(ExitStatus::refused, input.file, {}, "not enough memory");
}

}  // namespace

Composing::Composing(CLI::App& compose, std::string const& name, std::string const& description,
                     std::string document)
    : command_(compose.add_subcommand(name, description)),
      document_(std::move(document)),
      input_(std::make_shared<Input>()) {
  command_
      ->add_option("RECORD", input_->file,
                   "The record as JSON: what 'kovra decode --format json'\n"
                   "prints, or its \"record\" alone (default: '-', standard\n"
                   "input)")
      ->option_text(" ");
  addMaxSize(*command_, input_->maxSize, "Refuse a larger record");
}

void Composing::run(ExitStatus& status, Composer compose) {
  command_->callback([&status, input = input_, document = document_, compose = std::move(compose)] {
    status = composeFrom(*input, document, compose);
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
  constexpr std::size_t width = 56;
  std::string list;
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
written; one line says what was found where, and what would be right, and repeats
no value, which might be a secret.

A record may hold lists and objects of at most 256 entries, in one another at
most 32 levels deep, names of at most 256 bytes, and at most 16384 values in all.

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

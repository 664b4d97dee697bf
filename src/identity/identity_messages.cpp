#include "identity/identity_messages.hpp"

#include "identity/identity_tables.hpp"

namespace Kovra {

namespace {

using namespace identity;

constexpr ChoiceRow choices[] = {
    {"fields", ChoiceRow::Form::words, "What is set", &fieldNames, true, "NAME,..."},
};

/// An identity without any field is composed as well, so nothing at all is a success.
bool write(Sink& sink, void const* record, Chosen chosen, Circumstances) {
  return writeRows(sink, printerInfo, record, static_cast<Circumstances>(chosen[0]), true);
}

constexpr Composing composing = {
    .command = "printer-id",
    .title = "Model and printhead of the printer",
    .help = R"(Example:
  kovra compose printer-id record.json --fields model,printhead)",
    .root = identityRoots[0],
    .recordOf = "printer-id",
    .choices = choices,
    .isOfSections = true,
    .write = write,
};

constexpr MessageRow lines[] = {
    alsoWritten(reply("printer-id", "vendor, model, serial numbers, addresses, firmware versions",
                      identityRoots, printerInfo),
                composing),
};

}  // namespace

std::span<frame::MessageRow const> identityMessages() {
  return lines;
}

}  // namespace Kovra

// Shows a printer's general status, read from standard input, with what was lost of the reply.
//   show_status <reply.xml

#include <iostream>
#include <iterator>
#include <kovra.hpp>
#include <string>

int main() {
  std::string const text{std::istreambuf_iterator<char>(std::cin), {}};
  auto const status = Kovra::read<Kovra::KVGeneralStatus>(text);
  if (!status) {
    Kovra::Refusal const why = status.refusal();
    std::cerr << why.line() << ':' << why.column() << ": " << why.message() << '\n';
    return 1;
  }

  // What the reply did not say is zero in the record, so a host asks before it shows a number.
  if (status.has("alarms"))
    std::cout << "alarms: 0x" << std::hex << status->alarms << std::dec << '\n';
  if (status.has("error")) std::cout << "error: " << status->error << '\n';
  if (status.has("num_jobs_total")) std::cout << "jobs: " << status->num_jobs_total << '\n';

  // The record has codes; words come with the values of the same reply.
  Kovra::Decoding const decoding = Kovra::decode(text, status.message());
  for (Kovra::Reading const& reading : decoding.readings()) {
    if (Kovra::Value const* const state = reading.record().find("printer_state")) {
      std::cout << "state: " << state->word() << '\n';
    }
  }

  for (Kovra::Note const& note : status.notes()) {
    std::cerr << note.line() << ':' << note.column() << ": " << Kovra::nameOf(note.severity())
              << ": " << note.message() << " [" << note.id() << "]\n";
  }
}

// Reads a general-status reply from standard input and prints the printer's state.

#include <kvxstatusparser.h>

#include <clocale>
#include <iostream>
#include <iterator>
#include <string>

int main() {
  std::setlocale(LC_ALL, "");
  std::wstring const reply{std::istreambuf_iterator<wchar_t>(std::wcin), {}};
  Kovra::KVGeneralStatus status = {};
  Kovra::KVXStatusParser parser;
  if (!parser.ParseStatus(reply[0], static_cast<int>(reply.size()), status)) return 1;
  std::cout << "printer state: " << status.printer_state << '\n';
}

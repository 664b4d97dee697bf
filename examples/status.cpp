// Reads a general-status reply from standard input and prints the printer's state.

#include <kvxstatusparser.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <string>

int main() {
  std::setlocale(LC_CTYPE, "");  // not LC_ALL, which may make the points in numbers commas
  std::wstring const reply{std::istreambuf_iterator<wchar_t>(std::wcin), {}};
  Kovra::KVGeneralStatus status = {};
  Kovra::KVXStatusParser parser;
  int const mostBytes = static_cast<int>(reply.size() * MB_CUR_MAX);  // a letter may be several
  if (!parser.ParseStatus(reply[0], mostBytes, status)) return 1;
  std::cout << "printer state: " << status.printer_state << '\n';
}

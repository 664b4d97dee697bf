// Prints the request that tells a printer the serial number of its new printhead.
//   set_printhead SERIAL >request.xml

#include <kvxsetprinterinfo.h>

#include <clocale>
#include <cstring>
#include <iostream>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: set_printhead SERIAL\n";
    return 2;
  }
  std::setlocale(LC_CTYPE, "");
  Kovra::KVPrinterInfo info = {};
  if (std::strlen(argv[1]) >= sizeof info.printhead_serial) return 1;
  std::strcpy(info.printhead_serial, argv[1]);

  wchar_t request[4096];  // enough for any identity, as the writer's header says
  Kovra::KVXSetPrinterInfo writer;
  if (!writer.SetPrinterInfo(info, request, 4096, Kovra::fieldPrintheadSerial)) return 1;
  std::wcout << request;
}

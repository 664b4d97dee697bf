// Expected: this reading reads nothing into this record and does not say so
#include "frame/field.hpp"

using namespace Kovra::frame;

struct Record {
  int number;
};

struct OddReading : NeverWritten, NeverAssigned {
#ifdef MISTAKE
  static bool read(Element, Record&) {
    return true;
  }
#else
  static bool read(Element, Record&, Watch const&) {
    return true;
  }
#endif
};

constexpr auto odd = reading<Record, OddReading>("element");

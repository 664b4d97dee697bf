// Expected: this reading assigns nothing to this record and does not say so
#include "frame/field.hpp"

using namespace Kovra::frame;

struct Record {
  int number;
};

struct OddReading : NeverWritten {
  static bool read(Element, Record&, Watch const&) { return true; }
#ifdef MISTAKE
  static Assigned assign(Record&, Kovra::Value const&, Problems&) {
    return Assigned::done;
  }
#else
  static Assigned assign(Record&, std::string_view, Kovra::Value const&, Problems&) {
    return Assigned::done;
  }
#endif
};

constexpr auto odd = reading<Record, OddReading>("element");

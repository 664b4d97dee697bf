// Expected: this kind writes no members of this type and does not say so
#include "frame/field.hpp"

using namespace Kovra::frame;

struct Record {
  int number;
};

/// A number whose writing has another signature than rows look for.
struct OddKind : NumberKind {
#ifdef MISTAKE
  static void write(Sink& sink, char const* element, int value) {
    NumberKind::write(sink, element, -value);
  }
#else
  static bool write(Sink& sink, char const* element, int value) {
    return NumberKind::write(sink, element, -value);
  }
#endif
};

constexpr auto odd = row<&Record::number, OddKind>("element");

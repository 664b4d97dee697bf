// Expected: this kind writes no members of this type and does not say so
#include "frame/field.hpp"

using namespace Kovra::frame;

struct Record {
  int number;
};

/// A number whose writing has another signature than rows look for.
struct OddKind : NumberKind {
#ifdef MISTAKE
  static void write(TiXmlElement& parent, char const* element, int value) {
    NumberKind::write(parent, element, -value);
  }
#else
  static bool write(TiXmlElement& parent, char const* element, int value) {
    return NumberKind::write(parent, element, -value);
  }
#endif
};

constexpr auto odd = row<&Record::number, OddKind>("element");

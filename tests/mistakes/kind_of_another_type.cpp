// Expected: this kind reads no members of this type
#include "frame/field.hpp"

using namespace Kovra::frame;

struct Record {
  int number;
  char text[8];
};

#ifdef MISTAKE
constexpr auto row = text<&Record::number>("element");
#else
constexpr auto row = text<&Record::text>("element");
#endif

// Expected: twoRowsReadOneElement
#include "frame/field.hpp"

using namespace Kovra::frame;

struct Record {
  int number;
  char text[8];
};

#ifdef MISTAKE
constexpr char second[] = "first";
#else
constexpr char second[] = "second";
#endif

constexpr Table table = {number<&Record::number>("first"), text<&Record::text>(second)};

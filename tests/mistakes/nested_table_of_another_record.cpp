// Expected: this table is not one of the member's record
#include "frame/field.hpp"

using namespace Kovra::frame;

struct Inner {
  int number;
};
struct Other {
  int number;
};
struct Record {
  Inner inner;
  Other other;
};

constexpr Table table = {number<&Inner::number>("number")};

#ifdef MISTAKE
constexpr auto row = nested<&Record::other, table>("inner");
#else
constexpr auto row = nested<&Record::inner, table>("inner");
#endif

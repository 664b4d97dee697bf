// Expected: a table has rows of one record only
#include "frame/field.hpp"

using namespace Kovra::frame;

struct One {
  int number;
};
struct Other {
  int number;
};

#ifdef MISTAKE
using Second = Other;
#else
using Second = One;
#endif

constexpr Table table = {number<&One::number>("first"), number<&Second::number>("second")};

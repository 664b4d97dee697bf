// Expected: this row is not the member's
#include "frame/message.hpp"

using namespace Kovra::frame;

struct Record {
  int first;
  int second;
};

constexpr auto first = number<&Record::first>("first");

bool read(TiXmlElement const* element, int& out) {
#ifdef MISTAKE
  return readHostMember<&Record::second, first>(element, out);
#else
  return readHostMember<&Record::first, first>(element, out);
#endif
}

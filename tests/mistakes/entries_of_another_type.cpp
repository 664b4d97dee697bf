// Expected: no matching function for call
#include "frame/field.hpp"

using namespace Kovra::frame;

struct Entry {
  int number;
};
struct Other {
  int number;
};
struct Record {
  Entry entries[2];
  Other others[2];
};

constexpr Table table = {number<&Entry::number>("number")};
constexpr auto list = entries<table>("entry");

bool read(Element element, Record& record, Watch const& watch) {
#ifdef MISTAKE
  return readEntriesOf<&Record::others>(element, list, std::span<Other>(record.others), watch);
#else
  return readEntriesOf<&Record::entries>(element, list, std::span<Entry>(record.entries), watch);
#endif
}

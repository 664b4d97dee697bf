// Expected: this kind reads no members of this type
#include "frame/field.hpp"

using namespace Kovra::frame;

struct Record {
  int code;
  long wide;
};

constexpr Word words[] = {{"first", 1}};
constexpr Vocabulary vocabulary{words, Match::exact, 0};

#ifdef MISTAKE
constexpr auto row = keyword<&Record::wide, vocabulary>("element");
#else
constexpr auto row = keyword<&Record::code, vocabulary>("element");
#endif

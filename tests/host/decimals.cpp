// Linked into a host's program: when that is done, it tells whether numbers still have the
// printer's point, in what is read and in what is sent.

#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "kvxhelper.h"

namespace {

struct AtTheEnd {
  ~AtTheEnd() {
    TiXmlElement element("e");
    float read = 0;
    KVXHelper::AddTagFloat(&element, "thickness", 0.5F);
    TiXmlElement* const sent = element.FirstChildElement();
    if (std::strcmp(sent->GetText(), "0.5000") != 0) fail("sent", sent->GetText());
    TiXmlElement reply("thickness");
    reply.LinkEndChild(new TiXmlText("0.5"));
    KVXHelper::GetNumber(&reply, read, false);
    if (read < 0.4F) fail("read", "0.5");
  }

  static void fail(char const* what, char const* number) {
    std::fprintf(stderr, "a number that was %s is not 0.5: %s\n", what, number);
    ::_exit(3);
  }
} const atTheEnd;

}  // namespace

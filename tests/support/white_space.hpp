/// @file
/// TinyXML's process-wide setting for white space, for the time of a test.

#ifndef KOVRA_TESTS_SUPPORT_WHITE_SPACE_HPP
#define KOVRA_TESTS_SUPPORT_WHITE_SPACE_HPP

#include <tinyxml.h>

namespace Kovra::test {

/// Lets TinyXML keep white space, which it else condenses.
class KeptWhiteSpace {
 public:
  KeptWhiteSpace() { TiXmlBase::SetCondenseWhiteSpace(false); }
  ~KeptWhiteSpace() { TiXmlBase::SetCondenseWhiteSpace(true); }
  KeptWhiteSpace(KeptWhiteSpace const&) = delete;
  KeptWhiteSpace& operator=(KeptWhiteSpace const&) = delete;
};

}  // namespace Kovra::test

#endif

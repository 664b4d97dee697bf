/// @file
/// The standard streams belong to the host. Every test of this program fails when standard output
/// or standard error gained a byte in its time (streams.cpp sees to it); what a test means to cause
/// there it takes in itself.

#ifndef KOVRA_TESTS_SUPPORT_STREAMS_HPP
#define KOVRA_TESTS_SUPPORT_STREAMS_HPP

#include <gtest/gtest.h>
#include <unistd.h>

#include <sstream>
#include <string>

namespace Kovra::test {

/// Catches what goes to one of the process's descriptors, whoever writes it and however, until it
/// is released. May be nested.
class CaughtStream {
 public:
  explicit CaughtStream(int descriptor);
  ~CaughtStream();
  CaughtStream(CaughtStream const&) = delete;
  CaughtStream& operator=(CaughtStream const&) = delete;

  /// Puts the stream back and gives what was caught.
  std::string release();

  /// Puts the stream back and writes to it what was caught. May be called from a signal handler.
  void pass() noexcept;

 private:
  /// False when it has been put back already.
  bool putBack() noexcept;

  int descriptor_;
  int original_;
  int caught_;
};

/// Takes in the lines about ribbons that the configuration reader writes to standard error, and
/// expects no other text there.
class RibbonLines {
 public:
  ~RibbonLines() {
    std::istringstream lines(error_.release());
    for (std::string first, second; std::getline(lines, first);) {
      std::getline(lines, second);
      EXPECT_EQ(first.rfind("DEBUG:RIBBON NAME ", 0), 0U) << first;
      EXPECT_EQ(second, "DEBUG:RIBBON NAME2 ");
    }
  }

 private:
  CaughtStream error_{STDERR_FILENO};
};

}  // namespace Kovra::test

#endif

#include "support/streams.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

namespace Kovra::test {
namespace {

TEST(CaughtStream, SeesEveryWayOfWriting) {
  CaughtStream output(STDOUT_FILENO);
  std::puts("of stdio");
  std::cout << "of iostream" << std::endl;
  EXPECT_EQ(::write(STDOUT_FILENO, "of the system\n", 14), 14);
  EXPECT_EQ(output.release(), "of stdio\nof iostream\nof the system\n");
  CaughtStream error(STDERR_FILENO);
  std::fputs("of stdio\n", stderr);
  std::cerr << "of iostream\n";
  EXPECT_EQ(error.release(), "of stdio\nof iostream\n");
}

TEST(CaughtStream, KeepsWhatIsLongAndPutsTheStreamBack) {
  CaughtStream outer(STDOUT_FILENO);
  std::string const text(100000, 'x');
  {
    CaughtStream inner(STDOUT_FILENO);
    std::fputs(text.c_str(), stdout);
    EXPECT_EQ(inner.release(), text);
    std::fputs("passed, ", stdout);
    EXPECT_EQ(inner.release(), "") << "once";
  }
  {
    CaughtStream inner(STDOUT_FILENO);
    std::fputs("passed on, ", stdout);
    std::fflush(stdout);
    inner.pass();
  }
  {
    CaughtStream dropping(STDOUT_FILENO);
    std::fputs("dropped", stdout);
  }
  EXPECT_EQ(outer.release(), "passed, passed on, ");
}

constexpr char order[] = "KOVRA_TESTS_WRITE_TO";

/// Runs this very test in a process of its own that is told to write something, and tells whether
/// it failed there.
bool failsWritingTo(char const* stream) {
  std::string const program = std::filesystem::read_symlink("/proc/self/exe");
  std::string const command = std::string("env -u GTEST_TOTAL_SHARDS -u GTEST_SHARD_INDEX ") +
                              order + "=" + stream + " '" + program +
                              "' --gtest_filter=StreamWatch.FailsATestThatWrites >/dev/null 2>&1";
  int const status = std::system(command.c_str());
  EXPECT_TRUE(WIFEXITED(status)) << stream;
  return WEXITSTATUS(status) == 1;
}

TEST(StreamWatch, FailsATestThatWrites) {
  if (char const* const stream = std::getenv(order)) {
    if (std::string(stream) == "output") std::puts("x");
    if (std::string(stream) == "error") std::fputs("x", stderr);
    return;
  }
  EXPECT_TRUE(failsWritingTo("output"));
  EXPECT_TRUE(failsWritingTo("error"));
  EXPECT_FALSE(failsWritingTo("nothing"));
}

}  // namespace
}  // namespace Kovra::test

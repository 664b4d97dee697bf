#include "support/streams.hpp"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <memory>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define KOVRA_TESTS_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define KOVRA_TESTS_SANITIZED 1
#endif
#endif
#ifdef KOVRA_TESTS_SANITIZED
#include <sanitizer/common_interface_defs.h>
#endif

namespace Kovra::test {

namespace {

/// What the C and C++ libraries still hold goes where it belongs.
void flushAll() {
  std::cout.flush();
  std::cerr.flush();
  std::fflush(nullptr);
}

}  // namespace

CaughtStream::CaughtStream(int descriptor)
    : descriptor_(descriptor),
      original_(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0)),
      caught_(::memfd_create("caught", MFD_CLOEXEC)) {
  EXPECT_GE(original_, 0);
  EXPECT_GE(caught_, 0);
  flushAll();
  EXPECT_EQ(::dup2(caught_, descriptor_), descriptor_);
}

CaughtStream::~CaughtStream() {
  release();
  ::close(caught_);
}

bool CaughtStream::putBack() noexcept {
  if (original_ < 0) return false;
  ::dup2(original_, descriptor_);
  ::close(original_);
  original_ = -1;
  return true;
}

std::string CaughtStream::release() {
  flushAll();
  if (!putBack()) return {};
  std::string text;
  std::array<char, 4096> block;
  for (;;) {
    ssize_t const size =
        ::pread(caught_, block.data(), block.size(), static_cast<off_t>(text.size()));
    if (size <= 0) return text;
    text.append(block.data(), static_cast<std::size_t>(size));
  }
}

void CaughtStream::pass() noexcept {
  if (!putBack()) return;
  std::array<char, 4096> block;
  off_t done = 0;
  for (;;) {
    ssize_t const size = ::pread(caught_, block.data(), block.size(), done);
    if (size <= 0) return;
    done += size;
    if (::write(descriptor_, block.data(), static_cast<std::size_t>(size)) != size) return;
  }
}

namespace {

/// Both streams for the time of a test.
struct Streams {
  CaughtStream output{STDOUT_FILENO};
  CaughtStream error{STDERR_FILENO};
};

/// What the test said before it crashed is needed to see why.
Streams* watched = nullptr;

extern "C" void tellBeforeTheEnd(int signal) {
  if (watched != nullptr) {
    watched->output.pass();
    watched->error.pass();
  }
  std::raise(signal);  // without this handler, which is good for once
}

void handleCrash(int signal) {
  struct sigaction earlier {};
  if (::sigaction(signal, nullptr, &earlier) != 0 || earlier.sa_handler != SIG_DFL) return;
  struct sigaction telling {};
  telling.sa_handler = tellBeforeTheEnd;
  telling.sa_flags = static_cast<int>(SA_RESETHAND);
  ::sigaction(signal, &telling, nullptr);
}

/// Fails each test in whose time a stream gained bytes. In that time googletest itself writes about
/// nothing but a failure or a skip, and those tests are beyond judging; whatever came is passed on.
class StreamWatch : public testing::EmptyTestEventListener {
  void OnTestProgramStart(testing::UnitTest const&) override {
#ifdef KOVRA_TESTS_SANITIZED
    // A report is no output of the test's, and the process may not survive it.
    static int const reports = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
    if (reports >= 0) __sanitizer_set_report_fd(reinterpret_cast<void*>(intptr_t{reports}));
#endif
    for (int const signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL}) handleCrash(signal);
  }

  void OnTestStart(testing::TestInfo const&) override {
    streams_ = std::make_unique<Streams>();
    watched = streams_.get();
  }

  void OnTestEnd(testing::TestInfo const& info) override {
    watched = nullptr;
    std::string const output = streams_->output.release();
    std::string const error = streams_->error.release();
    streams_.reset();
    std::cout << output << std::flush;
    std::cerr << error << std::flush;
    if (!info.result()->Passed()) return;
    std::string const name = std::string(info.test_suite_name()) + "." + info.name();
    EXPECT_EQ(output, "") << name << ": standard output belongs to the host";
    EXPECT_EQ(error, "") << name << ": standard error belongs to the host";
  }

  std::unique_ptr<Streams> streams_;
};

/// The program's main function is googletest's own.
[[maybe_unused]] bool const isWatched = [] {
  testing::UnitTest::GetInstance()->listeners().Append(new StreamWatch);
  return true;
}();

}  // namespace

}  // namespace Kovra::test

#include "output.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <string>
#include <system_error>

#include "command.hpp"
#include "printable.hpp"

namespace Kovra::tool {

namespace {

constexpr std::size_t enough = 1 << 16;

std::string& pending() {
  static std::string data;
  return data;
}

[[noreturn]] void fail(int reason) {
  pending().clear();
  throw OutputFailure("standard output: " + std::generic_category().message(reason));
}

}  // namespace

void print(std::string_view data) {
  pending() += data;
  if (pending().size() >= enough) flushOutput();
}

void flushOutput() {
  std::string_view data = pending();
  while (!data.empty()) {
    ssize_t const written = ::write(STDOUT_FILENO, data.data(), data.size());
    if (written >= 0) {
      data.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      fail(errno);
    }
  }
  pending().clear();
}

void closeOutput() {
  flushOutput();
  // Whoever gave us no standard output wanted none, and we had nothing for it.
  if (::close(STDOUT_FILENO) != 0 && errno != EBADF) fail(errno);
}

void complain(std::string_view line) {
  flushOutput();
  std::string const safe = printable(line) + '\n';
  std::fwrite(safe.data(), 1, safe.size(), stderr);
}

}  // namespace Kovra::tool

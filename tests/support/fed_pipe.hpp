/// @file
/// Bytes that arrive piece by piece.

#ifndef KOVRA_TESTS_SUPPORT_FED_PIPE_HPP
#define KOVRA_TESTS_SUPPORT_FED_PIPE_HPP

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace Kovra::test {

/// A pipe into which a text goes piece by piece, the next one whenever its reader would wait. So
/// reader and writer are one thread, and what the reader gets at once is known.
class FedPipe {
 public:
  /// A piece has as many bytes as `sizeOfNext` says, but one at least and no more than a pipe
  /// takes.
  FedPipe(std::string_view text, std::function<std::size_t()> sizeOfNext)
      : rest_(text), sizeOfNext_(std::move(sizeOfNext)) {
    if (::pipe(ends_.data()) != 0) std::abort();
  }
  ~FedPipe() {
    if (isOpen_) ::close(ends_[1]);
    ::close(ends_[0]);
  }
  FedPipe(FedPipe const&) = delete;
  FedPipe& operator=(FedPipe const&) = delete;

  std::string path() const { return "/proc/self/fd/" + std::to_string(ends_[0]); }

  /// What whoever reads is to call before it waits.
  void feed() {
    if (!isOpen_) return;
    if (rest_.empty()) {
      ::close(ends_[1]);
      isOpen_ = false;
      return;
    }
    constexpr std::size_t most = 1 << 15;
    std::size_t const size =
        std::clamp<std::size_t>(sizeOfNext_(), 1, std::min(most, rest_.size()));
    if (::write(ends_[1], rest_.data(), size) != static_cast<ssize_t>(size)) std::abort();
    rest_.remove_prefix(size);
  }

 private:
  std::array<int, 2> ends_{};
  std::string_view rest_;
  std::function<std::size_t()> sizeOfNext_;
  bool isOpen_ = true;
};

}  // namespace Kovra::test

#endif

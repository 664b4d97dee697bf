#include "input.hpp"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <system_error>
#include <utility>

#include "command.hpp"

namespace Kovra::tool {

namespace {

/// Most replies fit into one read.
constexpr std::size_t chunk = 1 << 16;

/// No file has a longer name.
constexpr std::size_t longestName = 1 << 16;

[[noreturn]] void fail(int reason) {
  throw InputFailure(ExitStatus::failed, std::generic_category().message(reason));
}

int openForReading(std::string const& path) {
  if (path.find('\0') != path.npos) {
    throw InputFailure(ExitStatus::failed, "a NUL byte in the name of a file");
  }
  int const descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
  if (descriptor < 0) fail(errno);
  return descriptor;
}

}  // namespace

std::string inputName(std::string_view path) {
  return std::string(path == standardInput ? "<stdin>" : path);
}

std::string messagePrefix(std::string_view path, Place place, std::string_view severity) {
  std::string out = inputName(path) + ':';
  if (place.line != 0) {
    out += std::to_string(place.line) + ':' + std::to_string(place.column) + ':';
  }
  return out.append(" ").append(severity).append(": ");
}

InputFile::InputFile(std::string const& path)
    : descriptor_(path == standardInput ? STDIN_FILENO : openForReading(path)),
      owned_(path != standardInput) {}

InputFile::~InputFile() {
  if (owned_) ::close(descriptor_);
}

std::size_t InputFile::read(char* out, std::size_t length) {
  for (;;) {
    ssize_t const got = ::read(descriptor_, out, length);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR) fail(errno);
  }
}

bool InputFile::isReady() const {
  pollfd one{descriptor_, POLLIN, 0};
  return ::poll(&one, 1, 0) > 0;  // where a signal came, nobody knows
}

InputReader::InputReader(std::size_t limit)
    : limit_(std::min(limit, std::numeric_limits<std::size_t>::max() / 2)),
      buffer_(std::min(chunk, limit_ + 1)) {}

std::string_view InputReader::read(std::string const& path) {
  InputFile file(path);
  std::size_t length = 0;
  while (std::size_t const got = file.read(buffer_.data() + length, buffer_.size() - length)) {
    length += got;
    if (length > limit_) {
      throw tooLarge(limit_);
    }
    if (length == buffer_.size()) buffer_.resize(std::min(2 * length, limit_ + 1));
  }
  return {buffer_.data(), length};
}

InputFailure InputReader::tooLarge(std::size_t limit) {
  return {ExitStatus::refused, "larger than " + std::to_string(limit) + " bytes; see --max-size"};
}

NameList::NameList(std::string const& path, char separator, std::function<void()> beforeWaiting)
    : file_(path),
      separator_(separator),
      beforeWaiting_(std::move(beforeWaiting)),
      buffer_(chunk) {}

bool NameList::next(std::string& name) {
  do {
    name.clear();
    if (!piece(name)) return false;
  } while (name.empty());
  return true;
}

bool NameList::piece(std::string& name) {
  while (!rest_.empty() || fill()) {
    std::size_t const end = rest_.find(separator_);
    name += rest_.substr(0, end);
    if (name.size() > longestName) {
      throw InputFailure(ExitStatus::failed, "a name of more than " + std::to_string(longestName) +
                                                 " bytes in the list of files");
    }
    if (end != rest_.npos) {
      rest_.remove_prefix(end + 1);
      return true;
    }
    rest_ = {};
  }
  return !name.empty();
}

bool NameList::fill() {
  if (!file_.isReady()) beforeWaiting_();
  rest_ = {buffer_.data(), file_.read(buffer_.data(), buffer_.size())};
  return !rest_.empty();
}

}  // namespace Kovra::tool

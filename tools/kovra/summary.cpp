#include "summary.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <system_error>

#include "output.hpp"
#include "terminal.hpp"

namespace Kovra::tool {

namespace {

/// Below that nobody waits.
constexpr std::chrono::seconds patience{1};
constexpr std::chrono::milliseconds pace{200};

std::string counted(std::size_t number, std::string_view what) {
  return std::to_string(number).append(" ").append(what);
}

}  // namespace

/// On one terminal with the data it would be in the way.
Summary::Summary() : hasProgress_(isTerminal(STDERR_FILENO) && !isTerminal(STDOUT_FILENO)) {}

std::string Summary::line() const {
  double const seconds = std::chrono::duration<double>(Clock::now() - begin_).count();
  char time[32];
  std::snprintf(time, sizeof time, "%.1f", seconds);
  return "kovra: " + counted(read_, "read, ") + counted(decoded_, "decoded, ") +
         counted(read_ - decoded_, "refused, ") + counted(notes_, "notes, ") + time + " seconds";
}

void Summary::count(bool isDecoded, std::size_t notes) {
  ++read_;
  decoded_ += isDecoded;
  notes_ += notes;
  if (hasProgress_ && read_ % 64 == 0) showProgress();
}

void Summary::showProgress() {
  Clock::time_point const now = Clock::now();
  if (now - begin_ < patience || now - shown_ < pace) return;
  shown_ = now;
  isProgressThere_ = true;
  std::string const text = "\r\033[K" + line();
  std::fwrite(text.data(), 1, text.size(), stderr);
}

void Summary::makeRoom() {
  if (isProgressThere_) std::fputs("\r\033[K", stderr);
  isProgressThere_ = false;
}

void Summary::end() {
  makeRoom();
  if (isShown_) complain(line());
}

namespace {

/// The last part of a path, in letters that are harmless in any file system.
std::string baseName(std::string_view source) {
  std::string name(source.substr(source.rfind('/') + 1));
  if (source == standardInput) name = "stdin";
  for (char& letter : name) {
    bool const isHarmless = (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
                            (letter >= 'a' && letter <= 'z') || letter == '-' || letter == '_' ||
                            letter == '.';
    if (!isHarmless) letter = '_';
  }
  if (name.size() > 4 && name.substr(name.size() - 4) == ".xml") name.resize(name.size() - 4);
  return name.substr(0, 200);
}

/// Replies may hold keys: nobody else may read what is kept.
int createNew(std::string const& path) {
  return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
}

}  // namespace

void keepFailure(std::string const& folder, ReplyInput const& input, std::string_view text) {
  std::string const stem = folder + '/' + baseName(input.source) +
                           (input.number != 0 ? '-' + std::to_string(input.number) : std::string());
  std::string path = stem + ".xml";
  int descriptor = createNew(path);
  for (int copy = 2; descriptor < 0 && errno == EEXIST; ++copy) {
    path = stem + '.' + std::to_string(copy) + ".xml";
    descriptor = createNew(path);
  }
  bool isGood = descriptor >= 0;
  while (isGood && !text.empty()) {
    ssize_t const written = ::write(descriptor, text.data(), text.size());
    isGood = written >= 0 || errno == EINTR;
    if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
  }
  isGood = descriptor >= 0 && ::close(descriptor) == 0 && isGood;
  if (!isGood) throw OutputFailure(path + ": " + std::generic_category().message(errno));
}

}  // namespace Kovra::tool

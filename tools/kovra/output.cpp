#include "output.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>

#include "command.hpp"
#include "complaints.hpp"
#include "options.hpp"
#include "printable.hpp"

namespace Kovra::tool {

namespace {

constexpr std::size_t enough = 1 << 16;

/// Does a write to a pipe without a reader end other programs of this process's parent?
bool diesOfBrokenPipes = false;

[[noreturn]] void fail(std::string const& name, int reason) {
  throw OutputFailure(name + ": " + std::generic_category().message(reason));
}

[[noreturn]] void endAsBrokenPipe() {  // GCOVR_EXCL_LINE: dies with its counts
  std::signal(SIGPIPE, SIG_DFL);       // GCOVR_EXCL_LINE: dies with its counts
  std::raise(SIGPIPE);                 // GCOVR_EXCL_LINE: dies with its counts
  // Where the signal is blocked.
  std::_Exit(128 + SIGPIPE);  // GCOVR_EXCL_LINE: dies with its counts
}

// What has no name yet is removed when a signal ends the tool.

/// Of the file that is being written; empty for none. A signal handler reads it.
std::array<char, PATH_MAX> unfinished{};

void removeUnfinished(int signal) {                        // GCOVR_EXCL_LINE: dies with its counts
  if (unfinished[0] != '\0') ::unlink(unfinished.data());  // GCOVR_EXCL_LINE: dies with its counts
  std::signal(signal, SIG_DFL);                            // GCOVR_EXCL_LINE: dies with its counts
  std::raise(signal);                                      // GCOVR_EXCL_LINE: dies with its counts
}

void rememberUnfinished(std::string const& path) {
  if (path.size() >= unfinished.size()) fail(path, ENAMETOOLONG);
  std::copy_n(path.c_str(), path.size() + 1, unfinished.begin());
  for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
    if (std::signal(signal, removeUnfinished) == SIG_IGN) std::signal(signal, SIG_IGN);
  }
}

bool isStandardOutput(struct stat const& file) {
  struct stat mine {};
  return ::fstat(STDOUT_FILENO, &mine) == 0 && mine.st_dev == file.st_dev &&
         mine.st_ino == file.st_ino;
}

/// The file that a path means, so that a link stays one.
std::string resolved(std::string const& path) {
  std::array<char, PATH_MAX> real{};
  return ::realpath(path.c_str(), real.data()) != nullptr ? real.data() : path;
}

bool isPipe(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
}

/// Where the data goes.
class Output {
 public:
  /// A private file is for the user alone, whatever it was before.
  void openFile(std::string const& path, bool isPrivate = false);
  void print(std::string_view data) {
    pending_ += data;
    if (pending_.size() >= enough) flush();
  }
  bool isFile() const { return isFile_; }
  void flush();
  void close();
  void drop();
  void keepReplaced() {
    if (!temporary_.empty()) drop();
  }

 private:
  void openBeside(std::string const& path, mode_t mode);
  std::string_view portion(std::string_view data);
  [[noreturn]] void failed(int reason);

  int descriptor_ = STDOUT_FILENO;
  bool isFile_ = false;
  bool isLookedAt_ = false;
  bool isPipe_ = false;
  std::string name_ = "standard output";  ///< for messages
  std::string path_;                      ///< that it is to have in the end
  std::string temporary_;                 ///< that it has until then; empty where it has no other
  std::string pending_;
};

Output& output() {
  static Output only;
  return only;
}

/// What a new file of this process may have.
mode_t usualMode() {
  mode_t const mask = ::umask(0);
  ::umask(mask);
  return 0666U & ~mask;
}

void Output::openFile(std::string const& path, bool isPrivate) {
  name_ = path;
  path_ = resolved(path);
  struct stat old {};
  bool const isThere = ::stat(path_.c_str(), &old) == 0;
  // What others have written there stays.
  if (isThere && isStandardOutput(old)) return;
  isFile_ = true;
  if (!isThere || S_ISREG(old.st_mode)) {
    mode_t const usual = isThere ? old.st_mode & 07777U : usualMode();
    return openBeside(path_, isPrivate ? 0600U : usual);
  }
  descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  if (descriptor_ < 0) fail(name_, errno);
}

void Output::openBeside(std::string const& path, mode_t mode) {
  std::string temporary = path + ".XXXXXX";
  descriptor_ = ::mkostemp(temporary.data(), O_CLOEXEC);
  if (descriptor_ < 0) fail(name_, errno);
  rememberUnfinished(temporary);
  temporary_ = temporary;
  if (::fchmod(descriptor_, mode) != 0) failed(errno);
}

/// As much as goes out at once: of lines into a pipe only whole ones that nobody else's can divide.
std::string_view Output::portion(std::string_view data) {
  if (!isLookedAt_) {
    isLookedAt_ = true;
    isPipe_ = isPipe(descriptor_);
  }
  if (!isPipe_ || data.size() <= PIPE_BUF) return data;
  std::size_t end = data.rfind('\n', PIPE_BUF - 1);
  if (end == data.npos) end = data.find('\n');
  return end == data.npos ? data : data.substr(0, end + 1);
}

void Output::flush() {
  std::string_view rest = pending_;
  while (!rest.empty()) {
    std::string_view const now = portion(rest);
    ssize_t const written = ::write(descriptor_, now.data(), now.size());
    if (written >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      failed(errno);
    }
  }
  pending_.clear();
}

void Output::close() {
  flush();
  bool const failedToSync = !temporary_.empty() && ::fsync(descriptor_) != 0;
  if (failedToSync && errno != EINVAL && errno != EROFS) failed(errno);
  // Whoever gave us no standard output wanted none, and we had nothing for it.
  int const descriptor = descriptor_;
  descriptor_ = -1;
  if (descriptor >= 0 && ::close(descriptor) != 0 && errno != EBADF) failed(errno);
  if (temporary_.empty()) return;
  if (::rename(temporary_.c_str(), path_.c_str()) != 0) failed(errno);
  unfinished[0] = '\0';
  temporary_.clear();
}

void Output::drop() {
  pending_.clear();
  if (temporary_.empty()) return;
  ::unlink(temporary_.c_str());
  unfinished[0] = '\0';
  temporary_.clear();
}

void Output::failed(int reason) {
  drop();
  if (reason == EPIPE && diesOfBrokenPipes) endAsBrokenPipe();
  fail(name_, reason);
}

}  // namespace

void addOutput(CLI::App& command, std::string const& description) {
  addOption(
      command, "-o,--output", [](std::string const& path) { output().openFile(path); },
      description.empty() ? "Write into this file, which appears when it is whole\n"
                            "(default: standard output)"
                          : description)
      .shows("FILE");
}

void print(std::string_view data) {
  output().print(data);
}

bool isOutputFile() {
  return output().isFile();
}

void flushOutput() {
  output().flush();
}

void closeOutput() {
  output().close();
}

void dropOutput() {
  output().drop();
}

void keepReplaced() {
  output().keepReplaced();
}

void complain(std::string_view line) {
  tell(shownComplaint(printable(line), 4) + '\n');
}

void tell(std::string_view lines) {
  flushOutput();
  while (!lines.empty()) {
    ssize_t const written = ::write(STDERR_FILENO, lines.data(), lines.size());
    if (written < 0 && errno != EINTR) return;  // there is nobody left to tell
    if (written > 0) lines.remove_prefix(static_cast<std::size_t>(written));
  }
}

void writeWhole(std::string const& path, std::string_view data) {
  Output file;
  file.openFile(path);
  file.print(data);
  file.close();
}

void writePrivate(std::string const& path, std::string_view data) {
  Output file;
  file.openFile(path, true);
  file.print(data);
  file.close();
}

void expectBrokenPipes() {
  diesOfBrokenPipes = std::signal(SIGPIPE, SIG_IGN) != SIG_IGN;
}

}  // namespace Kovra::tool

// Files that appear whole or not at all.

#include "output.hpp"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <iterator>
#include <string>

#include "command.hpp"
#include "support/folder.hpp"

namespace Kovra::tool {

namespace {

/// While it lives no file gets longer than that, and whoever tries is told.
class SmallFiles {
 public:
  explicit SmallFiles(rlim_t size) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    rlimit now = before_;
    now.rlim_cur = size;
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &now), 0);
  }
  ~SmallFiles() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  SmallFiles(SmallFiles const&) = delete;
  SmallFiles& operator=(SmallFiles const&) = delete;

 private:
  void (*handler_)(int);
  rlimit before_{};
};

std::ptrdiff_t filesIn(std::string const& folder) {
  namespace fs = std::filesystem;
  return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

/// Of several pieces as they are written.
std::string const large(300000, 'x');

TEST(WriteWhole, WritesANewFileOrAnOldOneAnew) {
  test::TemporaryFolder const folder;
  std::string const path = folder.file("file");
  writeWhole(path, large);
  EXPECT_EQ(test::contentsOf(path), large);
  writeWhole(path, "short");
  EXPECT_EQ(test::contentsOf(path), "short");
  writeWhole(path, "");
  EXPECT_EQ(test::contentsOf(path), "");
  EXPECT_EQ(filesIn(folder.path()), 1);
}

TEST(WriteWhole, LeavesWhatWasThereWhereItFails) {
  test::TemporaryFolder const folder;
  std::string const old = folder.file("old");
  writeWhole(old, "as it was");
  {
    SmallFiles const small(1000);
    EXPECT_THROW(writeWhole(old, large), OutputFailure);
    EXPECT_THROW(writeWhole(folder.file("new"), large), OutputFailure);
    EXPECT_THROW(writePrivate(old, large), OutputFailure);
  }
  EXPECT_EQ(test::contentsOf(old), "as it was");
  EXPECT_EQ(filesIn(folder.path()), 1);
}

TEST(WriteWhole, TellsTheFileThatCannotBeWritten) {
  test::TemporaryFolder const folder;
  std::string const path = folder.file("none") + "/file";
  try {
    writeWhole(path, "text");
    FAIL();
  } catch (OutputFailure const& failure) {
    EXPECT_EQ(std::string(failure.what()).rfind(path + ": ", 0), 0U) << failure.what();
  }
  EXPECT_THROW(writeWhole(folder.path(), "text"), OutputFailure);
  EXPECT_THROW(writeWhole("/dev/full", large), OutputFailure);
  EXPECT_EQ(filesIn(folder.path()), 0);
}

TEST(WriteWhole, KeepsModesAndLinks) {
  test::TemporaryFolder const folder;
  std::string const path = folder.file("file");
  test::writeFile(path, "old");
  ::chmod(path.c_str(), 0640);
  std::filesystem::create_symlink("file", folder.file("link"));
  writeWhole(folder.file("link"), "new");
  EXPECT_EQ(test::contentsOf(path), "new");
  EXPECT_EQ(test::modeOf(path), 0640U);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link")));
}

TEST(WriteWhole, TakesTheUsualModeForANewFile) {
  test::TemporaryFolder const folder;
  mode_t const mask = ::umask(027);
  writeWhole(folder.file("file"), "text");
  writePrivate(folder.file("private"), "text");
  ::umask(mask);
  EXPECT_EQ(test::modeOf(folder.file("file")), 0640U);
  EXPECT_EQ(test::modeOf(folder.file("private")), 0600U);
}

TEST(WritePrivate, TakesAPublicFileFromOthers) {
  test::TemporaryFolder const folder;
  std::string const path = folder.file("file");
  test::writeFile(path, "old");
  ::chmod(path.c_str(), 0644);
  writePrivate(path, "new");
  EXPECT_EQ(test::modeOf(path), 0600U);
  EXPECT_EQ(test::contentsOf(path), "new");
}

}  // namespace

}  // namespace Kovra::tool

/// @file
/// A temporary folder and the files in it.

#ifndef KOVRA_TESTS_SUPPORT_FOLDER_HPP
#define KOVRA_TESTS_SUPPORT_FOLDER_HPP

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace Kovra::test {

/// An empty folder of the calling user, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "kovra-test-XXXXXX").string();
    EXPECT_NE(::mkdtemp(name.data()), nullptr);
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(TemporaryFolder const&) = delete;
  TemporaryFolder& operator=(TemporaryFolder const&) = delete;

  std::string path() const { return path_.string(); }
  std::string file(char const* name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

inline void writeFile(std::string const& path, std::string const& contents) {
  std::ofstream(path, std::ios::binary) << contents;
}

inline std::string contentsOf(std::string const& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The permission bits of the file itself, not of what it links to; 0 when there is none.
inline unsigned modeOf(std::string const& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

inline bool exists(std::string const& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

/// A text that no file of anybody else holds.
inline std::string uniqueText() {
  static int made = 0;
  return "kovra-" + std::to_string(::getpid()) + "-" + std::to_string(++made);
}

/// The files directly below /tmp that hold `text`, one behind the other. Whatever else goes on in
/// that folder, a text of uniqueText() is only where this process wrote it.
inline std::string temporaryFilesWith(std::string const& text) {
  constexpr std::uintmax_t largest = 1U << 20U;
  std::string found;
  std::error_code error;
  for (auto const& entry : std::filesystem::directory_iterator("/tmp", error)) {
    if (!std::filesystem::is_regular_file(entry.symlink_status(error))) continue;
    if (entry.file_size(error) > largest || error) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    std::string const contents{std::istreambuf_iterator<char>(file), {}};
    if (contents.find(text) != contents.npos) found += entry.path().string() + " ";
  }
  return found;
}

}  // namespace Kovra::test

#endif

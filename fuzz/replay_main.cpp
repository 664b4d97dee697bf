// Runs a fuzz target over the files it is given, folders with everything below them. It stands in
// for libFuzzer where that is not linked.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesBelow(fs::path const& path) {
  if (!fs::is_directory(path)) return {path};
  std::vector<fs::path> files;
  for (auto const& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

void replay(fs::path const& file) {
  // The exact size on the heap, as libFuzzer hands it over: a sanitizer sees one byte too far.
  std::vector<char> bytes(static_cast<std::size_t>(fs::file_size(file)));
  std::ifstream stream(file, std::ios::binary);
  if (!stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
    std::fprintf(stderr, "%s: cannot be read\n", file.c_str());
    std::exit(1);
  }
  LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  if (LLVMFuzzerInitialize != nullptr) LLVMFuzzerInitialize(&argc, &argv);
  std::size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    for (auto const& file : filesBelow(argv[i])) {
      replay(file);
      ++count;
    }
  }
  std::printf("%zu inputs replayed\n", count);
  return count > 0 ? 0 : 1;
}

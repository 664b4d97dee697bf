#include "max_size.hpp"

#include "options.hpp"

namespace Kovra::tool {

namespace {

/// Empty for a size that can be a limit, else the complaint. CLI11 would take "010" for octal.
std::string checkSize(std::string const& size) {
  bool const good = size.find_first_not_of("0123456789") == size.npos && size.size() <= 18 &&
                    !size.empty() && size.front() != '0';
  return good ? "" : '"' + size + "\" is no number of bytes above 0";
}

}  // namespace

void addMaxSize(CLI::App& command, std::size_t& size, std::string const& description) {
  static_assert(defaultMaxSize == 8388608);
  addOption(command, "--max-size", size, description + " (default: 8388608, 8 MiB)")
      .shows("BYTES")
      .passes({checkSize, {}});
}

}  // namespace Kovra::tool

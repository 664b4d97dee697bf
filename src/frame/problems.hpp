/// @file
/// What is wrong with a record that a document is to be made of: all of it at once.

#ifndef KOVRA_FRAME_PROBLEMS_HPP
#define KOVRA_FRAME_PROBLEMS_HPP

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Kovra::frame {

/// One problem.
struct Trouble {
  std::string path;  ///< of the value within the record
  std::string found;
  std::string expected;
};

/// Puts a name, or an index in brackets, before a path.
inline void prefix(std::string& path, std::string_view step) {
  bool const deeper = !path.empty() && path.front() != '[';
  path.insert(0, std::string(step) + (deeper ? "." : ""));
}

/// Problems as they are found.
class Problems {
 public:
  /// So many are kept: a record may be nothing but problems.
  static constexpr std::size_t most = 100;

  void add(std::string path, std::string found, std::string expected) {
    if (all_.size() < most)
      all_.push_back({std::move(path), std::move(found), std::move(expected)});
    isAny_ = true;
  }
  bool empty() const { return !isAny_; }
  std::span<Trouble> all() { return all_; }
  std::span<Trouble const> all() const { return all_; }

  /// Where the problems begin that are found from here on.
  std::size_t mark() const { return all_.size(); }
  /// Those since the mark are problems of a part of what is looked at.
  void prefix(std::size_t mark, std::string_view step) {
    for (Trouble& trouble : all().subspan(mark)) frame::prefix(trouble.path, step);
  }

 private:
  std::vector<Trouble> all_;
  bool isAny_ = false;
};

}  // namespace Kovra::frame

#endif

/// @file
/// The comments of the public headers, with what they are about.

#ifndef KOVRA_TESTS_SUPPORT_HEADER_COMMENTS_HPP
#define KOVRA_TESTS_SUPPORT_HEADER_COMMENTS_HPP

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace Kovra::test {

/// The lines of one comment joined by blanks, and the declaration that it belongs to.
struct HeaderComment {
  std::string place;        ///< "kvxhelper.h:193"
  std::string owner;        ///< the record, class or enumeration around it, or empty
  std::string declaration;  ///< "int alarms;", "enum _eFeedMode : int {"
  std::string text;
};

namespace detail {

inline std::string trimmed(std::string_view text) {
  std::size_t const begin = text.find_first_not_of(' ');
  if (begin == text.npos) return {};
  return std::string(text.substr(begin, text.find_last_not_of(' ') - begin + 1));
}

/// The name that "struct NAME {", "class KOVRA_EXPORT NAME : ... {" and "enum NAME : int {" define.
inline std::string definedBy(std::string_view line) {
  for (std::string_view const what : {"struct ", "class KOVRA_EXPORT ", "enum "}) {
    if (!line.starts_with(what) || line.find('{') == line.npos) continue;
    line.remove_prefix(what.size());
    return std::string(line.substr(0, line.find_first_of(" :{")));
  }
  return {};
}

class HeaderReader {
 public:
  explicit HeaderReader(std::filesystem::path const& header) : name_(header.filename()) {
    std::ifstream in(header);
    for (std::string line; std::getline(in, line);) lines_.push_back(line);
  }

  void read(std::vector<HeaderComment>& comments) {
    while (at_ < lines_.size()) {
      std::string const line = lines_[at_];
      if (std::string const name = definedBy(line); !name.empty()) owner_ = name;
      if (line.starts_with('}')) owner_.clear();
      std::size_t const slashes = line.find("///");
      if (slashes == line.npos) {
        ++at_;
      } else if (line.substr(slashes).starts_with("///<")) {
        comments.push_back(behind(trimmed(line.substr(0, slashes))));
      } else {
        comments.push_back(above());
      }
    }
  }

 private:
  static void add(std::string const& line, std::string& text) {
    text += (text.empty() ? "" : " ") + line;
  }

  HeaderComment begun() const { return {name_ + ':' + std::to_string(at_ + 1), owner_, {}, {}}; }

  /// A comment behind its declaration, whose type may stand in the line before.
  HeaderComment behind(std::string declaration) {
    HeaderComment comment = begun();
    if (declaration.find(' ') == declaration.npos) {
      declaration = trimmed(lines_[at_ - 1]) + ' ' + declaration;
    }
    comment.declaration = declaration;
    do {
      add(trimmed(lines_[at_].substr(lines_[at_].find("///<") + 4)), comment.text);
      ++at_;
    } while (at_ < lines_.size() && trimmed(lines_[at_]).starts_with("///<"));
    return comment;
  }

  HeaderComment above() {
    HeaderComment comment = begun();
    while (at_ < lines_.size() && trimmed(lines_[at_]).starts_with("///")) {
      add(trimmed(trimmed(lines_[at_++]).substr(3)), comment.text);
    }
    for (std::size_t next = at_; next < lines_.size(); ++next) {
      add(trimmed(lines_[next]), comment.declaration);
      if (lines_[next].find_first_of(";{") != std::string::npos || lines_[next].empty()) break;
    }
    return comment;
  }

  std::string name_;
  std::vector<std::string> lines_;
  std::size_t at_ = 0;
  std::string owner_;
};

}  // namespace detail

/// All comments of the public C++11 headers in `folder`, header by header.
inline std::vector<HeaderComment> headerComments(std::string const& folder) {
  std::vector<std::filesystem::path> headers;
  for (auto const& entry : std::filesystem::directory_iterator(folder)) {
    // Those of the classic classes: the face's have words of other things.
    bool const isClassic = entry.path().stem().string().starts_with("kvx");
    if (isClassic && entry.path().extension() == ".h") headers.push_back(entry.path());
  }
  std::sort(headers.begin(), headers.end());
  std::vector<HeaderComment> comments;
  for (auto const& header : headers) detail::HeaderReader(header).read(comments);
  return comments;
}

}  // namespace Kovra::test

#endif

#include "html.hpp"

#include "printable.hpp"

namespace Kovra::tool {

std::string escaped(std::string_view text) {
  std::string out;
  for (char const character : printable(text)) {
    switch (character) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&#39;";
        break;
      default:
        out += character;
    }
  }
  return out;
}

std::string isolated(std::string_view text) {
  return "<bdi>" + escaped(text) + "</bdi>";
}

}  // namespace Kovra::tool

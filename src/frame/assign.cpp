#include "frame/assign.hpp"

#include <algorithm>

namespace Kovra::frame {

std::string described(Value const& value) {
  switch (value.kind) {
    case Value::Kind::nothing:
      return "nothing";
    case Value::Kind::flag:
      return value.flag ? "true" : "false";
    case Value::Kind::integer:
      return std::to_string(value.integer);
    case Value::Kind::natural:
      return std::to_string(value.natural);
    case Value::Kind::real:
      return std::to_string(value.real);
    case Value::Kind::text:
      // A long text, which may be a secret, is told by its length.
      return value.text.size() > 32 || value.secret
                 ? "a text of " + std::to_string(value.text.size()) + " bytes"
                 : '"' + value.text + '"';
    case Value::Kind::keyword:
      return '"' + value.text + '"';
    case Value::Kind::list:
      return "a list";
    case Value::Kind::record:
      return "an object";
  }
  return {};
}

std::string listed(Vocabulary const& words) {
  std::string list;
  for (Word const& word : words.words) {
    if (!list.empty()) list += ", ";
    list += word.text;
  }
  return list;
}

Assigned codeFrom(int& code, Value const& value, Vocabulary const& words, Problem& problem) {
  switch (value.kind) {
    case Value::Kind::integer:
    case Value::Kind::natural:
      return assignInteger(code, value, problem);
    case Value::Kind::text:
      if (Word const* const word = words.find(value.text.c_str())) {
        code = word->code;
        return Assigned::done;
      }
      return fail(problem, described(value), "one of: " + listed(words));
    case Value::Kind::keyword: {
      Value sent;
      sent.kind = Value::Kind::integer;
      sent.integer = value.integer;
      return assignInteger(code, sent, problem);
    }
    case Value::Kind::record:
      if (Value const* const inner = value.find("code")) {
        return assignInteger(code, *inner, problem);
      }
      [[fallthrough]];
    default:
      return fail(problem, described(value), "a keyword: its code, or one of: " + listed(words));
  }
}

}  // namespace Kovra::frame

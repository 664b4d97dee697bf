#include "record.hpp"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>

namespace Kovra::tool {

namespace {

using Json = nlohmann::ordered_json;

/// No record is nested as deeply; converting more would only eat the stack.
constexpr int deepest = 32;

Place placeOf(std::string_view text, std::size_t offset) {
  std::string_view const before = text.substr(0, offset);
  Place place;
  place.line = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
  std::size_t const lineStart = before.rfind('\n') + 1;  // npos + 1 is 0
  place.column = 1 + static_cast<int>(offset - lineStart);
  return place;
}

/// "[json.exception.parse_error.101] parse error at line 1, column 2: why; last read: 'text'"
/// without what comes first, and without the text, which may be part of a secret.
std::string reasonOf(std::string const& message) {
  std::size_t const column = message.find("column ");
  std::size_t const colon = message.find(": ", column == message.npos ? 0 : column);
  std::size_t const begin = colon == message.npos ? 0 : colon + 2;
  return message.substr(begin, message.find("; last read: ", begin) - begin);
}

Json parsed(std::string_view text) try {
  return Json::parse(text);
} catch (Json::parse_error const& error) {
  std::size_t const offset = error.byte > 0 ? error.byte - 1 : 0;
  throw RecordFailure(placeOf(text, std::min(offset, text.size())),
                      "malformed JSON: " + reasonOf(error.what()));
}

Value valueOf(Json const& json, int depth);

void addMembers(Value& record, Json const& object, int depth) {
  for (auto const& [name, inner] : object.items()) {
    Member& member = record.members.emplace_back();
    member.name = name;
    member.value = valueOf(inner, depth);
  }
}

Value valueOf(Json const& json, int depth) {
  if (depth > deepest) throw RecordFailure({}, "nested too deeply for a record");
  Value value;
  switch (json.type()) {
    case Json::value_t::boolean:
      value.kind = Value::Kind::flag;
      value.flag = json.get<bool>();
      break;
    case Json::value_t::number_integer:
      value.kind = Value::Kind::integer;
      value.integer = json.get<long>();
      break;
    case Json::value_t::number_unsigned:
      value.kind = Value::Kind::natural;
      value.natural = json.get<unsigned long>();
      break;
    case Json::value_t::number_float:
      value.kind = Value::Kind::real;
      value.real = json.get<double>();
      break;
    case Json::value_t::string:
      value.kind = Value::Kind::text;
      value.text = json.get<std::string>();
      break;
    case Json::value_t::array:
      value.kind = Value::Kind::list;
      for (Json const& item : json) value.items.push_back(valueOf(item, depth + 1));
      break;
    case Json::value_t::object:
      value.kind = Value::Kind::record;
      addMembers(value, json, depth + 1);
      break;
    case Json::value_t::null:
    case Json::value_t::binary:
    case Json::value_t::discarded:
      break;
  }
  return value;
}

/// The index of the document's reading in what `decode` printed.
std::size_t readingOf(Json const& envelope, std::string_view document) {
  std::string found;
  Json const& readings = envelope.at("readings");
  for (std::size_t i = 0; readings.is_array() && i < readings.size(); ++i) {
    Json const& reading = readings[i];
    if (!reading.is_object() || !reading.contains("record")) continue;
    std::string const name = reading.value("document", Json()).is_string()
                                 ? reading["document"].get<std::string>()
                                 : std::string();
    if (name == document) return i;
    found += (found.empty() ? "" : ", ") + name;
  }
  throw RecordFailure({}, "readings: found " + (found.empty() ? "none" : found) + "; expected " +
                              std::string(document));
}

}  // namespace

Record recordFrom(std::string_view text, std::string_view document) {
  Json const json = parsed(text);
  if (!json.is_object() || !json.contains("readings")) return {valueOf(json, 0), ""};
  std::size_t const index = readingOf(json, document);
  return {valueOf(json["readings"][index]["record"], 0),
          "readings[" + std::to_string(index) + "].record"};
}

}  // namespace Kovra::tool

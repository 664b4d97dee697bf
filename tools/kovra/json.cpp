#include "json.hpp"

#include <nlohmann/json.hpp>

namespace Kovra::tool {

namespace {

/// Members keep the order in which they are added.
using Json = nlohmann::ordered_json;

/// Keys are only ever added. What would break a program that reads the present ones takes the next
/// number.
constexpr int contractVersion = 1;

Json toJson(Value const& value, Secrets secrets);

Json keyword(Value const& value) {
  Json word = {{"code", value.integer}};
  if (value.known) {
    word["name"] = value.text;
  } else {
    word["name"] = nullptr;
    word["raw"] = value.text;
  }
  return word;
}

Json list(std::vector<Value> const& items, Secrets secrets) {
  Json entries = Json::array();
  for (Value const& item : items) entries.push_back(toJson(item, secrets));
  return entries;
}

Json record(std::vector<Member> const& members, Secrets secrets) {
  Json object = Json::object();
  for (Member const& member : members) object[member.name] = toJson(member.value, secrets);
  return object;
}

Json toJson(Value const& value, Secrets secrets) {
  if (isMasked(value, secrets)) return mask;
  switch (value.kind) {
    case Value::Kind::nothing:
      return nullptr;
    case Value::Kind::flag:
      return value.flag;
    case Value::Kind::integer:
      return value.integer;
    case Value::Kind::natural:
      return value.natural;
    case Value::Kind::real:
      return value.real;  // printed as null when it is no number
    case Value::Kind::text:
      return value.text;
    case Value::Kind::keyword:
      return keyword(value);
    case Value::Kind::list:
      return list(value.items, secrets);
    case Value::Kind::record:
      return record(value.members, secrets);
  }
  return nullptr;
}

Json readings(std::vector<Reading> const& all, Secrets secrets) {
  Json array = Json::array();
  for (Reading const& reading : all) {
    array.push_back({{"document", reading.document},
                     {"result", reading.result},
                     {"record", toJson(reading.record, secrets)}});
  }
  return array;
}

char const* nameOf(Note::Kind kind) {
  switch (kind) {
    case Note::Kind::unknownElement:
      return "unknown_element";
    case Note::Kind::unknownWord:
      return "unknown_word";
    case Note::Kind::notANumber:
      return "not_a_number";
    case Note::Kind::changedNumber:
      return "changed_number";
    case Note::Kind::cutText:
      return "cut_text";
    case Note::Kind::emptyElement:
      return "empty_element";
    case Note::Kind::noAttribute:
      return "no_attribute";
    case Note::Kind::surplusEntry:
      return "surplus_entry";
    case Note::Kind::unlisted:
      return "unlisted";
  }
  return "";
}

Json toJson(Note const& note) {
  Json object = {{"kind", nameOf(note.kind)},
                 {"line", note.place.line},
                 {"column", note.place.column},
                 {"element", note.element}};
  if (!note.found.empty()) object["found"] = note.found;
  if (!note.kept.empty()) object["kept"] = note.kept;
  if (!note.expected.empty()) object["expected"] = note.expected;
  return object;
}

Json notes(std::vector<Note> const& all) {
  Json array = Json::array();
  for (Note const& note : all) array.push_back(toJson(note));
  return array;
}

void addReply(Json& object, Decoding const& decoding, Secrets secrets) {
  object["kovra"] = contractVersion;
  object["root"] = decoding.root;
  object["readings"] = readings(decoding.readings, secrets);
  object["notes"] = notes(decoding.notes);
}

/// Bytes that are no UTF-8 become U+FFFD. Nothing beyond ASCII is written as it is, so that neither
/// a locale can garble the text nor a control character in it reach a terminal.
std::string dumped(Json const& object, int indentation) {
  return object.dump(indentation, ' ', true, Json::error_handler_t::replace) + '\n';
}

}  // namespace

std::string json(Decoding const& decoding, Secrets secrets) {
  Json object;
  addReply(object, decoding, secrets);
  return dumped(object, 2);
}

std::string jsonLine(Decoding const& decoding, Secrets secrets, std::string_view source) {
  Json object = {{"source", source}};
  addReply(object, decoding, secrets);
  return dumped(object, -1);
}

}  // namespace Kovra::tool

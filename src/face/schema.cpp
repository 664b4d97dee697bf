// The JSON Schema of a message's record, from its rows.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "face/catalogue.hpp"
#include "face/json.hpp"
#include "frame/lists.hpp"
#include "kovra.hpp"

namespace Kovra {

namespace {

using namespace frame;

constexpr char addressPattern[] = "^[0-9A-Fa-f]{1,2}(:[0-9A-Fa-f]{1,2}){5}$";
constexpr char ipv4Pattern[] = "^[0-9]{1,3}([.][0-9]{1,3}){3}$";

Outline wordsOf(Vocabulary const& vocabulary) {
  Outline words;
  outlineWords(vocabulary, words);
  return words;
}

/// Prints the parts of a schema.
class SchemaWriter {
 public:
  explicit SchemaWriter(JsonWriter& json) : json_(json) {}

  void pair(std::string_view key, std::string_view text) {
    json_.key(key);
    json_.text(text);
  }

  /// "type", "properties" and what follows, into the object that is open.
  void recordOf(Rows rows) {
    pair("type", "object");
    json_.key("properties");
    json_.beginObject();
    properties(rows);
    json_.endObject();
    json_.key("additionalProperties");
    json_.flag(false);
  }

  template <class Names>
  void requireAll(Names const& names) {
    json_.key("required");
    json_.beginArray();
    for (std::string_view const name : names) json_.text(name);
    json_.endArray();
  }

 private:
  void properties(Rows rows);
  void value(Row const& row, Outline const& words);
  void bits(Vocabulary const& flags);
  void list(Entries const& entries);
  void keyword(Outline const& words);
  void keywordObject(Outline const& words);
  void setting(bool isWhole);
  void number(bool isWhole);
  void whole(Row const& row);
  void text(Row const& row);
  void words(Outline const& words, bool withNull);

  JsonWriter& json_;
};

/// The rows that fill members of the record itself, without those that only write.
void flatten(Rows rows, std::vector<Row const*>& flat) {
  for (Row const& row : rows) {
    bool const isInside = row.kind->shape == Shape::group || row.kind->shape == Shape::odd;
    bool const isOnlyWritten = row.isWritten && !row.isRead && !row.isAssigned;
    if (isInside) {
      flatten(rowsBelow(row), flat);
    } else if (!row.member.empty() && !isOnlyWritten) {
      flat.push_back(&row);
    }
  }
}

/// Where several rows have one member, the first tells of it; of a keyword all tell words.
void SchemaWriter::properties(Rows rows) {
  std::vector<Row const*> flat;
  flatten(rows, flat);
  for (std::size_t i = 0; i < flat.size(); ++i) {
    auto const isSame = [&](Row const* other) { return other->member == flat[i]->member; };
    if (std::any_of(flat.begin(), flat.begin() + static_cast<std::ptrdiff_t>(i), isSame)) continue;
    Outline words;
    for (Row const* const row : flat) {
      if (isSame(row) && row->kind->outline != nullptr) row->kind->outline(*row, words);
    }
    json_.key(flat[i]->member);
    json_.beginObject();
    value(*flat[i], words);
    json_.endObject();
  }
}

void SchemaWriter::value(Row const& row, Outline const& words) {
  switch (row.kind->shape) {
    case Shape::flag:
      return pair("type", "boolean");
    case Shape::integer:
    case Shape::natural:
    case Shape::hexadecimal:
      return whole(row);
    case Shape::real:
      return number(false);
    case Shape::text:
    case Shape::secret:
    case Shape::word:
      return text(row);
    case Shape::keyword:
      return keyword(words);
    case Shape::bits:
      return bits(*static_cast<Vocabulary const*>(row.with));
    case Shape::address:
      pair("type", "string");
      return pair("pattern", addressPattern);
    case Shape::ipv4:
      pair("type", "string");
      return pair("pattern", ipv4Pattern);
    case Shape::setting:
      return setting(row.kind == &wholeSettingKind || row.kind == &wholeValueKind);
    case Shape::record:
      return recordOf(rowsBelow(row));
    case Shape::list:
      return list(*static_cast<Entries const*>(row.with));
    case Shape::odd:
    case Shape::group:
      break;
  }
}

void SchemaWriter::number(bool isWhole) {
  json_.key("type");
  if (isWhole) return json_.text("integer");
  json_.beginArray();  // of a number without a value nothing is told
  json_.text("number");
  json_.text("null");
  json_.endArray();
}

/// The bounds are those of the member's type.
void SchemaWriter::whole(Row const& row) {
  number(true);
  bool const isSigned = row.kind->shape == Shape::integer;
  unsigned const bits = 8 * row.size - (isSigned ? 1 : 0);
  std::uint64_t const most =
      bits >= 64 ? std::numeric_limits<std::uint64_t>::max() : (std::uint64_t{1} << bits) - 1;
  json_.key("minimum");
  json_.integer(isSigned ? -static_cast<std::int64_t>(most) - 1 : 0);
  json_.key("maximum");
  json_.natural(most);
}

/// In UTF-8 a text has no more characters than bytes, of which the last is its end. What stands in
/// place of a secret may be longer.
void SchemaWriter::text(Row const& row) {
  pair("type", "string");
  if (row.kind->shape == Shape::secret) return;
  json_.key("maxLength");
  json_.natural(row.size - 1);
}

void SchemaWriter::setting(bool isWhole) {
  pair("type", "object");
  json_.key("properties");
  json_.beginObject();
  for (char const* const part : {"min", "max", "val"}) {
    json_.key(part);
    json_.beginObject();
    number(isWhole);
    json_.endObject();
  }
  json_.endObject();
  json_.key("additionalProperties");
  json_.flag(false);
}

void SchemaWriter::bits(Vocabulary const& flags) {
  pair("type", "object");
  json_.key("properties");
  json_.beginObject();
  for (Word const& flag : flags.words) {
    json_.key(flag.text);
    json_.beginObject();
    pair("type", "boolean");
    json_.endObject();
  }
  json_.endObject();
  json_.key("additionalProperties");
  json_.flag(false);
}

void SchemaWriter::list(Entries const& entries) {
  pair("type", "array");
  json_.key("items");
  json_.beginObject();
  json_.key("anyOf");
  json_.beginArray();
  json_.beginObject();  // an entry that the reply left empty
  pair("type", "null");
  json_.endObject();
  json_.beginObject();
  if (entries.codes != nullptr) {
    keyword(wordsOf(*entries.codes->read));
  } else {
    recordOf(entries.rows);
  }
  json_.endObject();
  json_.endArray();
  json_.endObject();
}

/// The object that a reading shows; or, for those who compose, its code alone, or its word.
void SchemaWriter::keyword(Outline const& vocabulary) {
  json_.key("anyOf");
  json_.beginArray();
  json_.beginObject();
  keywordObject(vocabulary);
  json_.endObject();
  json_.beginObject();
  pair("type", "integer");
  json_.endObject();
  json_.beginObject();
  words(vocabulary, false);
  json_.endObject();
  json_.endArray();
}

void SchemaWriter::keywordObject(Outline const& vocabulary) {
  pair("type", "object");
  json_.key("properties");
  json_.beginObject();
  json_.key("code");
  json_.beginObject();
  pair("type", "integer");
  json_.endObject();
  json_.key("name");
  json_.beginObject();
  words(vocabulary, true);
  json_.endObject();
  json_.key("raw");
  json_.beginObject();
  pair("type", "string");
  json_.endObject();
  json_.endObject();
  constexpr std::string_view needed[] = {"code"};
  requireAll(needed);
  json_.key("additionalProperties");
  json_.flag(false);
}

void SchemaWriter::words(Outline const& vocabulary, bool withNull) {
  json_.key("enum");
  json_.beginArray();
  for (std::string const& word : vocabulary) json_.text(word);
  if (withNull) json_.null();
  json_.endArray();
}

frame::MessageRow const* messageNamed(std::string_view name) {
  auto const found = std::find_if(catalogue().begin(), catalogue().end(),
                                  [&](MessageRow const& message) { return message.name == name; });
  return found != catalogue().end() ? &found->get() : nullptr;
}

}  // namespace

std::string schema(std::string_view name) {
  MessageRow const* const message = messageNamed(name);
  if (message == nullptr) return {};
  JsonWriter json(2);
  SchemaWriter writer(json);
  json.beginObject();
  writer.pair("$schema", "https://json-schema.org/draft/2020-12/schema");
  writer.pair("$id", "urn:kovra:1:" + std::string(name));
  writer.pair("title", std::string(name));
  writer.pair("description", message->title);
  writer.recordOf(message->rows);
  // Of a reply there may be anything or nothing.
  bool const isOnlyWritten = message->read == nullptr && message->composing != nullptr;
  if (isOnlyWritten && !message->composing->required.empty()) {
    writer.requireAll(message->composing->required);
  }
  json.endObject();
  return json.take() + '\n';
}

}  // namespace Kovra

// The JSON form of a decoded reply: a contract with programs, which docs/json.md says in full.

#include "face/envelope.hpp"

#include <string_view>

#include "face/json.hpp"
#include "face/results.hpp"

namespace Kovra {

namespace {

using detail::FindingData;

void add(JsonWriter& json, std::string_view key, std::string_view text) {
  json.key(key);
  json.text(text);
}

void add(JsonWriter& json, std::string_view key, std::size_t number) {
  json.key(key);
  json.natural(number);
}

void addIfAny(JsonWriter& json, std::string_view key, std::string_view text) {
  if (!text.empty()) add(json, key, text);
}

void addPlace(JsonWriter& json, FindingData const& finding) {
  add(json, "line", static_cast<std::size_t>(finding.begin.line));
  add(json, "column", static_cast<std::size_t>(finding.begin.column));
  add(json, "offset", finding.begin.offset);
  add(json, "end_line", static_cast<std::size_t>(finding.end.line));
  add(json, "end_column", static_cast<std::size_t>(finding.end.column));
  add(json, "end_offset", finding.end.offset);
}

}  // namespace

void addFinding(JsonWriter& json, FindingData const& finding) {
  json.beginObject();
  add(json, "id", finding.kind->id);
  add(json, "kind", finding.kind->name);
  add(json, "severity", nameOf(finding.kind->severity));
  addPlace(json, finding);
  addIfAny(json, "path", finding.path);
  addIfAny(json, "element", finding.element);
  addIfAny(json, "found", finding.found);
  addIfAny(json, "kept", finding.kept);
  if (!finding.expected.empty()) {
    json.key("expected");
    json.beginArray();
    for (std::string const& expected : finding.expected) json.text(expected);
    json.endArray();
  }
  if (finding.count != 1) add(json, "count", finding.count);
  add(json, "message", finding.sentence());
  json.endObject();
}

namespace {

void addReading(JsonWriter& json, Reading const& reading, bool isMasked) {
  json.beginObject();
  add(json, "document", reading.message());
  json.key("result");
  json.flag(reading.result());
  json.key("record");
  json.value(reading.record(), isMasked);
  json.endObject();
}

}  // namespace

void beginEnvelope(JsonWriter& json, bool isGood) {
  json.beginObject();
  json.key("kovra");
  json.natural(contractVersion);
  json.key("ok");
  json.flag(isGood);
}

std::string Decoding::toJson(int indentation, Secrets secrets) const {
  JsonWriter json(indentation);
  bool const isDecoded = static_cast<bool>(*this);
  beginEnvelope(json, isDecoded);
  addIfAny(json, "root", root());
  if (isDecoded) {
    json.key("readings");
    json.beginArray();
    for (Reading const& reading : readings()) {
      addReading(json, reading, secrets == Secrets::masked);
    }
    json.endArray();
    json.key("notes");
    json.beginArray();
    for (FindingData const& note : data_->notes) addFinding(json, note);
    json.endArray();
  } else if (data_ != nullptr) {
    json.key("error");
    addFinding(json, *data_->refusal);
  }
  json.endObject();
  return json.take();
}

}  // namespace Kovra

// The interface for C. Each function is the one of the face, with its result as JSON in memory that
// C can give back.

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "face/catalogue.hpp"
#include "face/envelope.hpp"
#include "face/json.hpp"
#include "face/refusal.hpp"
#include "face/results.hpp"
#include "frame/value.hpp"
#include "frame/wipe.hpp"
#include "kovra.h"
#include "kovra.hpp"

namespace Kovra {

namespace {

using detail::FaceAccess;

std::string_view viewOf(char const* text) {
  return text != nullptr ? std::string_view(text) : std::string_view();
}

// Results.

/// What a function has to say. There may be secrets in it.
class Answer {
 public:
  Answer(KovraStatus status, std::string json) : status_(status), json_(std::move(json)) {}
  ~Answer() { frame::wipe(json_.data(), json_.size()); }
  Answer(Answer const&) = delete;
  Answer& operator=(Answer const&) = delete;

  KovraStatus status() const { return status_; }
  /// For C to own; null where there is no memory.
  char* copy() const {
    auto* const copy = static_cast<char*>(std::malloc(json_.size() + 1));
    if (copy != nullptr) std::memcpy(copy, json_.c_str(), json_.size() + 1);
    return copy;
  }

 private:
  KovraStatus status_;
  std::string json_;
};

/// Puts the answer where the caller wants it. All that `work` does fails for nothing but memory.
template <class Work>
int answer(char** out, Work work) noexcept {
  if (out == nullptr) return KOVRA_REFUSED;
  *out = nullptr;
  try {
    Answer const answer = work();
    *out = answer.copy();
    return *out != nullptr ? answer.status() : KOVRA_NO_MEMORY;
  } catch (...) {
    return KOVRA_NO_MEMORY;
  }
}

/// The pieces of a result.
class ResultWriter : public JsonWriter {
 public:
  ResultWriter() : JsonWriter(-1) {}

  void pair(std::string_view name, std::string_view contents) {
    key(name);
    text(contents);
  }
  void pairOfFlag(std::string_view name, bool is) {
    key(name);
    flag(is);
  }
  void pairOfNumber(std::string_view name, std::int64_t number) {
    key(name);
    integer(number);
  }
  void pairOfTexts(std::string_view name, std::vector<std::string> const& texts) {
    key(name);
    beginArray();
    for (std::string const& each : texts) text(each);
    endArray();
  }
};

// Composing.

// The keys of what was decoded that lead to a record.
constexpr std::string_view readingsKey = "readings";
constexpr std::string_view documentKey = "document";
constexpr std::string_view recordKey = "record";

/// The name of the message that a reading was made as; empty for what is no reading.
std::string_view documentOf(Value const& reading) {
  Value const* const name = reading.find(documentKey);
  return name != nullptr && reading.find(recordKey) != nullptr ? name->asText("") : "";
}

Answer documentAnswer(std::string_view document) {
  ResultWriter json;
  beginEnvelope(json, true);
  json.pair("document", document);
  json.endObject();
  return {KOVRA_DONE, json.take()};
}

/// What a host gave. All of it is wiped in the end, since there may be secrets anywhere in it.
struct Given {
  Given() = default;
  ~Given() { frame::ValueAccess::markAll(value, true); }
  Given(Given const&) = delete;
  Given& operator=(Given const&) = delete;

  Value value;
};

/// Gathers problems as a result.
class Refusing {
 public:
  Refusing() {
    beginEnvelope(json_, false);
    json_.key("problems");
    json_.beginArray();
  }

  void add(Problem const& problem) {
    json_.beginObject();
    json_.pair("path", problem.path());
    json_.pair("found", problem.found());
    json_.pair("expected", problem.expected());
    json_.pair("message", problem.message());
    json_.endObject();
  }

  /// Reads JSON; false, with a problem, where it is none.
  bool read(std::string_view text, std::string_view input, Given& given) try {
    given.value = Value::fromJson(text);
    return true;
  } catch (JsonError const& error) {
    add(error, input);
    return false;
  }

  Answer answer() {
    json_.endArray();
    json_.endObject();
    return {KOVRA_REFUSED, json_.take()};
  }

 private:
  void add(JsonError const& error, std::string_view input) {
    std::string const where = error.path().empty() ? "" : error.path() + ": ";
    json_.beginObject();
    json_.pair("path", error.path());
    json_.pair("message", where + error.what());
    json_.pair("in", input);
    json_.pairOfNumber("line", error.line());
    json_.pairOfNumber("column", error.column());
    json_.pairOfNumber("offset", static_cast<std::int64_t>(error.offset()));
    json_.endObject();
  }

  ResultWriter json_;
};

/// The record that a document is made of: that of the reading of `reply` in all of what was
/// decoded, or the value itself where it is no such thing. Null where there is no such reading.
Value* recordIn(Value& value, std::string_view reply) {
  Value* const readings = value.find(readingsKey);
  if (readings == nullptr) return &value;
  for (Value& reading : readings->items()) {
    if (documentOf(reading) == reply) return reading.find(recordKey);
  }
  return nullptr;
}

/// A name is told only when it is one of a message: any other text is the host's.
Problem noReadingOf(std::string_view reply, Value const& value) {
  std::string found;
  for (Value const& reading : value.find(readingsKey)->items()) {
    std::string_view const name = documentOf(reading);
    if (name.empty()) continue;
    found += found.empty() ? "" : ", ";
    found += findReply(name) != nullptr ? name : "an unknown message";
  }
  auto const problem = std::make_shared<detail::ProblemData>();
  problem->path = readingsKey;
  problem->found = found.empty() ? "none" : found;
  problem->expected = reply;
  return FaceAccess::make<Problem>(detail::Shared<detail::ProblemData>(problem));
}

/// Composes of what a host gave, which may hold more than the record.
Composition composeOf(std::string_view name, Value& given, Value const& choices,
                      Refusing& refusing) {
  frame::MessageRow const* const row = findRequest(name);
  if (row == nullptr) return compose(name, given, choices);
  std::string_view const recordOf = row->composing->recordOf;
  std::string_view const reply = !recordOf.empty() ? recordOf : row->name;
  Value* const record = recordIn(given, reply);
  if (record == nullptr) {
    refusing.add(noReadingOf(reply, given));
    return {};
  }
  // No problem shows what is marked.
  for (std::string const& path : FaceAccess::make<Message>(row).secrets()) {
    if (record->findAt(path) != nullptr) record->at(path).markSecret();
  }
  return compose(name, *record, choices);
}

Answer composeAnswer(std::string_view message, std::string_view record, std::string_view choices) {
  Refusing refusing;
  Given given;
  Given chosen;
  bool const isRecordRead = refusing.read(record, "record", given);
  bool const isRead = choices.empty() || refusing.read(choices, "choices", chosen);
  if (isRecordRead && isRead) {
    Composition const composition = composeOf(message, given.value, chosen.value, refusing);
    if (composition) return documentAnswer(composition.text());
    for (Problem const& problem : composition.problems()) refusing.add(problem);
  }
  return refusing.answer();
}

// What there is.

void addMember(ResultWriter& json, MemberDescription const& member) {
  json.beginObject();
  json.pair("name", member.name());
  json.pair("kind", nameOf(member.kind()));
  if (std::string const title = member.title(); !title.empty()) json.pair("title", title);
  json.endObject();
}

void addChoice(ResultWriter& json, Choice const& choice) {
  json.beginObject();
  json.pair("name", choice.name());
  json.pair("form", nameOf(choice.form()));
  json.pair("title", choice.title());
  std::vector<std::string> const words = choice.words();
  if (!words.empty()) json.pairOfTexts("words", words);
  json.pairOfFlag("required", choice.isRequired());
  if (choice.least() != 0 || choice.most() != 0) {
    json.pairOfNumber("least", choice.least());
    json.pairOfNumber("most", choice.most());
  }
  json.endObject();
}

void addMessage(ResultWriter& json, Message const& message) {
  json.beginObject();
  json.pair("name", message.name());
  json.pair("title", message.title());
  json.pairOfTexts("roots", message.roots());
  json.pairOfFlag("read", message.isRead());
  json.pairOfFlag("written", message.isWritten());
  json.key("members");
  json.beginArray();
  for (MemberDescription const& member : message.members()) addMember(json, member);
  json.endArray();
  json.pairOfTexts("required", message.required());
  json.key("choices");
  json.beginArray();
  for (Choice const& choice : message.choices()) addChoice(json, choice);
  json.endArray();
  json.endObject();
}

Answer messagesAnswer() {
  ResultWriter json;
  beginEnvelope(json, true);
  json.key("messages");
  json.beginArray();
  for (Message const& message : messages()) addMessage(json, message);
  json.endArray();
  json.endObject();
  return {KOVRA_DONE, json.take()};
}

/// JSON without the line feeds and the blanks behind them; no text in it can hold a line feed.
std::string onOneLine(std::string_view json) {
  std::string line;
  line.reserve(json.size());
  while (!json.empty()) {
    std::size_t const end = std::min(json.find('\n'), json.size());
    line += json.substr(0, end);
    json.remove_prefix(std::min(json.find_first_not_of("\n ", end), json.size()));
  }
  return line;
}

Answer schemaAnswer(std::string_view message) {
  std::string const found = schema(message);
  if (!found.empty()) return {KOVRA_DONE, onOneLine(found)};
  ResultWriter json;
  beginEnvelope(json, false);
  json.key("error");
  addFinding(json, refuseMessage(message, catalogue()));
  json.endObject();
  return {KOVRA_REFUSED, json.take()};
}

// Replies.

Answer decodeAnswer(std::string_view text, std::string_view as) {
  Decoding const decoding = decode(text, as);
  return {decoding ? KOVRA_DONE : KOVRA_REFUSED, decoding.toJson(-1, Secrets::shown)};
}

}  // namespace

}  // namespace Kovra

int kovra_decode(char const* text, size_t length, char const* as, char** json) {
  using namespace Kovra;
  return answer(json, [&] {
    return decodeAnswer({text, text != nullptr ? length : 0}, viewOf(as));
  });
}

int kovra_compose(char const* message, char const* record, char const* choices, char** document) {
  using namespace Kovra;
  return answer(document,
                [&] { return composeAnswer(viewOf(message), viewOf(record), viewOf(choices)); });
}

int kovra_messages(char** json) {
  return Kovra::answer(json, [] { return Kovra::messagesAnswer(); });
}

int kovra_schema(char const* message, char** json) {
  using namespace Kovra;
  return answer(json, [&] { return schemaAnswer(viewOf(message)); });
}

char const* kovra_version() {
  return KOVRA_VERSION;
}

void kovra_free(char* result) {
  // A host may have put zero bytes into it, behind which there is more.
  if (result != nullptr) Kovra::frame::wipe(result, ::malloc_usable_size(result));
  std::free(result);
}

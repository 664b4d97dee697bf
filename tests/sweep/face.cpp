// The face for C++ and that for C: decoding, composing, values, and what they tell of themselves.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "face/catalogue.hpp"
#include "kovra.h"
#include "kovra.hpp"
#include "support/folder.hpp"
#include "support/generated.hpp"
#include "sweep/operation.hpp"

namespace Kovra::sweep {
namespace {

constexpr char aText[] = "a text that needs a place of its own on the heap";
constexpr char aName[] = "a_member_of_a_name_that_is_too_long_for_a_short_string";

// ---- What is seen of results -----------------------------------------------------------------

std::string shown(std::string const& text) {
  return text;
}
std::string shown(Value const& value) {
  return value.toJson();
}
std::string shown(Decoding const& decoding) {
  return decoding.toJson(-1, Secrets::shown);
}
std::string shown(Composition const& composition) {
  std::string all = composition.text();
  for (Problem const& problem : composition.problems()) all += '\n' + problem.message();
  return all;
}
std::string shown(Finding const& finding) {
  return finding.id() + ' ' + finding.message();
}
template <class Described>
auto shown(Described const& described) -> decltype(described.name()) {
  return described.name();
}
std::string shown(Keyword const& keyword) {
  return keyword.word();
}
std::string shown(Reading const& reading) {
  return reading.message() + ' ' + reading.record().toJson();
}
std::string shown(Problem const& problem) {
  return problem.message();
}
template <class Item>
std::string shown(std::vector<Item> const& items) {
  std::string all;
  for (Item const& item : items) all += shown(item) + '\n';
  return all;
}

/// What an operation gives back, once it has.
template <class Result>
struct Given {
  std::optional<Result> result;
};

/// An operation that makes something new.
template <class Make>
Operation making(std::string name, Make make) {
  using Result = std::decay_t<decltype(make())>;
  return operation<Given<Result>>(
      std::move(name),
      [make](Given<Result>& given) {
        given.result.emplace(make());
        return 1;
      },
      [](Given<Result>& given) {
        return Contents{given.result ? "made:\n" + shown(*given.result) : "nothing", ""};
      });
}

/// An operation that tells a number, a flag or a code.
template <class Tell>
Operation counting(std::string name, Tell tell) {
  return telling(std::move(name), [tell] { return static_cast<long>(tell()); });
}

// ---- Replies ---------------------------------------------------------------------------------

/// A sample, and whether its record shows anything.
struct Sample {
  std::string text;
  bool isFilled = false;

  bool isBetterThan(Sample const& other) const {
    if (isFilled != other.isFilled) return isFilled;
    return text.size() < other.text.size();
  }
};

/// Of each message that is read the shortest sample, if possible one that fills something, by the
/// message's name.
std::map<std::string, Sample> const& samples() {
  static auto const all = [] {
    std::map<std::string, Sample> best;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(KOVRA_SAMPLES_DIR)) {
      if (entry.path().extension() != ".xml") continue;
      std::string const text = test::contentsOf(entry.path().string());
      Decoding const decoding = decode(text);
      for (Reading const& reading : decoding.readings()) {
        Sample const sample = {text, !reading.record().empty()};
        auto const [known, isNew] = best.emplace(reading.message(), sample);
        if (!isNew && sample.isBetterThan(known->second)) known->second = sample;
      }
    }
    return best;
  }();
  return all;
}

/// A reply of which there is much to tell: unknown elements, wrong numbers, secrets.
std::string const& noteworthy() {
  static std::string const text =
      "<configuration><unknown_element_of_a_long_name>and a text for it</"
      "unknown_element_of_a_long_name><wireless><key>seven red umbrellas</key>"
      "<security>no such word of wireless security</security></wireless>"
      "<lcd_contrast min=\"1\" max=\"9\">not a number at all</lcd_contrast></configuration>";
  return text;
}

constexpr char malformed[] = "<configuration><wireless></a_tag_that_closes_nothing>";

void addDecoding(std::vector<Operation>& all) {
  for (Message const& message : messages()) {
    EXPECT_EQ(samples().count(message.name()), message.isRead() ? 1U : 0U) << message.name();
  }
  for (auto const& [message, sample] : samples()) {
    all.push_back(
        making("Kovra::decode", [reply = sample.text, as = message] { return decode(reply, as); }));
  }
  all.push_back(making("Kovra::decode", [] { return decode(noteworthy()); }));
  all.push_back(making("Kovra::decode", [] { return decode(malformed); }));
  all.push_back(making("Kovra::decode", [] {
    return decode("some text in front " + noteworthy(), "", ReadOptions().skipTextBefore());
  }));
  static Decoding const decoding = decode(noteworthy());
  static Decoding const refused = decode(malformed);
  all.push_back(making("Kovra::Decoding::readings", [] { return decoding.readings(); }));
  all.push_back(making("Kovra::Decoding::notes", [] { return decoding.notes(); }));
  all.push_back(making("Kovra::Decoding::refusal", [] { return refused.refusal(); }));
  all.push_back(making("Kovra::Decoding::root", [] { return decoding.root(); }));
  all.push_back(making("Kovra::Decoding::toJson", [] { return decoding.toJson(2); }));
  all.push_back(counting("Kovra::Decoding::operator bool", [] { return bool(decoding); }));
  static Reading const reading = decoding.readings().front();
  all.push_back(making("Kovra::Reading::message", [] { return reading.message(); }));
  all.push_back(making("Kovra::Reading::record", [] { return reading.record(); }));
  all.push_back(counting("Kovra::Reading::result", [] { return reading.result(); }));
}

void addFindings(std::vector<Operation>& all) {
  static Finding const& note = *[] { return new Note(decode(noteworthy()).notes().back()); }();
  static Refusal const refusal = decode(malformed).refusal();
  using F = Finding;
  auto const text = [&](char const* name, std::string (F::*get)() const) {
    all.push_back(making(std::string("Kovra::Finding::") + name, [get] { return (note.*get)(); }));
  };
  auto const number = [&](char const* name, auto get) {
    all.push_back(
        counting(std::string("Kovra::Finding::") + name, [get] { return (note.*get)(); }));
  };
  text("id", &F::id);
  text("path", &F::path);
  text("element", &F::element);
  text("found", &F::found);
  text("kept", &F::kept);
  text("message", &F::message);
  number("severity", &F::severity);
  number("line", &F::line);
  number("column", &F::column);
  number("offset", &F::offset);
  number("endLine", &F::endLine);
  number("endColumn", &F::endColumn);
  number("endOffset", &F::endOffset);
  number("count", &F::count);
  all.push_back(making("Kovra::Finding::expected", [] { return note.expected(); }));
  all.push_back(counting("Kovra::Refusal::operator bool", [] { return bool(refusal); }));
  all.push_back(making("Kovra::nameOf", [] { return std::string(nameOf(Severity::error)); }));
}

void addKindsOfFindings(std::vector<Operation>& all) {
  all.push_back(making("Kovra::findingKinds", [] { return findingKinds(); }));
  static FindingKind const kind = findingKinds().front();
  auto const text = [&](char const* name, std::string (FindingKind::*get)() const) {
    all.push_back(
        making(std::string("Kovra::FindingKind::") + name, [get] { return (kind.*get)(); }));
  };
  text("id", &FindingKind::id);
  text("name", &FindingKind::name);
  text("title", &FindingKind::title);
  text("explanation", &FindingKind::explanation);
  text("example", &FindingKind::example);
  text("exampleAs", &FindingKind::exampleAs);
  all.push_back(counting("Kovra::FindingKind::severity", [] { return kind.severity(); }));
  all.push_back(counting("Kovra::FindingKind::exampleOptions",
                         [] { return kind.exampleOptions().skipsTextBefore(); }));
}

/// The record that a reader of the classic kind fills, given by the face.
void addReplies(std::vector<Operation>& all) {
  using detail::AnyReply;
  static std::string const text = noteworthy();
  static AnyReply const reply(text, detail::recordName<_KVConfiguration>, ReadOptions());
  static AnyReply const refused(malformed, detail::recordName<_KVConfiguration>, ReadOptions());
  struct Read {
    std::optional<AnyReply> reply;
  };
  all.push_back(operation<Read>(
      "Kovra::detail::AnyReply::AnyReply",
      [](Read& read) {
        read.reply.emplace(text, detail::recordName<_KVConfiguration>, ReadOptions());
        return 1;
      },
      [](Read& read) {
        if (!read.reply) return Contents{"nothing", ""};
        std::string const record(static_cast<char const*>(read.reply->record()),
                                 sizeof(_KVConfiguration));
        return Contents{record + shown(read.reply->notes()), ""};
      }));
  auto const name = [](char const* of) { return std::string("Kovra::detail::AnyReply::") + of; };
  all.push_back(counting(name("isThere"), [] { return reply.isThere(); }));
  all.push_back(counting(name("record"), [] { return reply.record() != nullptr; }));
  all.push_back(counting(name("has"), [] { return reply.has("wireless.security"); }));
  all.push_back(counting(name("result"), [] { return reply.result(); }));
  all.push_back(making(name("message"), [] { return reply.message(); }));
  all.push_back(making(name("notes"), [] { return reply.notes(); }));
  all.push_back(making(name("refusal"), [] { return refused.refusal(); }));
}

// ---- Documents -------------------------------------------------------------------------------

/// Choices of a message of which each is made.
Value choicesOf(Message const& message) {
  Value choices = Value::object();
  for (Choice const& choice : message.choices()) {
    if (choice.form() == Choice::Form::words) {
      Value& list = choices.add(choice.name(), Value::list());
      for (std::string const& word : choice.words()) list.append(word);
    } else if (choice.form() == Choice::Form::word && choice.isRequired()) {
      choices.add(choice.name(), choice.words().front());
    }
  }
  if (choices.find("zero_missing") == nullptr) choices.add("zero_missing", true);
  return choices;
}

/// A record that a document is made of. Commands and changes do not take all that their rows do.
Value recordFor(Message const& message) {
  static std::map<std::string_view, Value> const chosen = {
      {"security-key-change", Value::object({{"current_passkey", aText},
                                             {"current_data_encryption_key", aText},
                                             {"new_data_encryption_key", aText}})},
      {"passkey-change", Value::object({{"current_passkey", aText}, {"new_passkey", aText}})},
      {"device-control-motor", Value::object({{"state", "warm_up"}, {"rpm", 12}, {"period", 5}})},
      {"device-control-calibrate", Value::object({{"type", "low"}, {"torque", 1.5}, {"rpm", 60}})},
      {"device-control-laminator", Value::object({{"text", aText}})},
  };
  auto const known = chosen.find(message.name());
  if (known != chosen.end()) return known->second;
  return test::Generator(3).record(findRequest(message.name())->rows);
}

void addComposing(std::vector<Operation>& all) {
  for (Message const& message : messages()) {
    if (!message.isWritten()) continue;
    auto const given =
        std::make_shared<std::pair<Value, Value>>(recordFor(message), choicesOf(message));
    EXPECT_TRUE(static_cast<bool>(compose(message.name(), given->first, given->second)))
        << message.name()
        << " is not composed: " << shown(compose(message.name(), given->first, given->second));
    all.push_back(making("Kovra::compose", [given, name = message.name()] {
      return compose(name, given->first, given->second);
    }));
  }
  static Value const wrong = Value::fromJson(
      R"({"wireless":{"key":5,"channel":"six"},"cards":[{"a member of no card at all":1}]})");
  all.push_back(making("Kovra::compose", [] { return compose("configuration", wrong); }));
  static Composition const refused = compose("configuration", wrong);
  static Problem const problem = refused.problems().front();
  static KVPrinterInfo const printer = {};
  all.push_back(making("Kovra::detail::composeRecord", [] { return compose(printer); }));
  all.push_back(making("Kovra::Composition::text", [] { return refused.text(); }));
  all.push_back(making("Kovra::Composition::problems", [] { return refused.problems(); }));
  all.push_back(counting("Kovra::Composition::operator bool", [] { return bool(refused); }));
  all.push_back(making("Kovra::Problem::path", [] { return problem.path(); }));
  all.push_back(making("Kovra::Problem::found", [] { return problem.found(); }));
  all.push_back(making("Kovra::Problem::expected", [] { return problem.expected(); }));
  all.push_back(making("Kovra::Problem::message", [] { return problem.message(); }));
}

// ---- What there is ---------------------------------------------------------------------------

Message messageOf(std::string_view name) {
  std::vector<Message> const all = messages();
  return *std::find_if(all.begin(), all.end(),
                       [&](Message const& message) { return message.name() == name; });
}

void addMessages(std::vector<Operation>& all) {
  static Message const message = messageOf("configuration");
  all.push_back(making("Kovra::messages", [] { return messages(); }));
  auto const add = [&](char const* name, auto get) {
    all.push_back(
        making(std::string("Kovra::Message::") + name, [get] { return (message.*get)(); }));
  };
  using M = Message;
  add("name", &M::name);
  add("title", &M::title);
  add("roots", &M::roots);
  add("root", &M::root);
  add("members", &M::members);
  add("required", &M::required);
  add("choices", &M::choices);
  add("command", &M::command);
  add("groupPurpose", &M::groupPurpose);
  add("groupHelp", &M::groupHelp);
  add("purpose", &M::purpose);
  add("help", &M::help);
  add("recordOf", &M::recordOf);
  add("secrets", &M::secrets);
  all.push_back(counting("Kovra::Message::isRead", [] { return message.isRead(); }));
  all.push_back(counting("Kovra::Message::hasResult", [] { return message.hasResult(); }));
  all.push_back(counting("Kovra::Message::isWritten", [] { return message.isWritten(); }));
}

void addChoices(std::vector<Operation>& all) {
  static Choice const choice = messageOf("configuration").choices().front();
  using C = Choice;
  auto const add = [&](char const* name, auto get) {
    all.push_back(making(std::string("Kovra::Choice::") + name, [get] { return (choice.*get)(); }));
  };
  add("name", &C::name);
  add("title", &C::title);
  add("words", &C::words);
  add("example", &C::example);
  all.push_back(counting("Kovra::Choice::form", [] { return choice.form(); }));
  all.push_back(counting("Kovra::Choice::isRequired", [] { return choice.isRequired(); }));
  all.push_back(counting("Kovra::Choice::least", [] { return choice.least(); }));
  all.push_back(counting("Kovra::Choice::most", [] { return choice.most(); }));
}

/// The member or element of which there is most to tell.
MemberDescription wireless() {
  for (MemberDescription const& member : messageOf("configuration").members()) {
    if (member.name() == "wireless") return member;
  }
  return messageOf("configuration").members().front();
}

MemberDescription keywordMember() {
  for (MemberDescription const& member : wireless().members()) {
    if (!member.words().empty()) return member;
  }
  return wireless();
}

void addMembers(std::vector<Operation>& all) {
  static MemberDescription const group = wireless();
  static MemberDescription const words = keywordMember();
  static Keyword const keyword = words.words().front();
  auto const name = [](char const* of) { return std::string("Kovra::MemberDescription::") + of; };
  all.push_back(making(name("name"), [] { return group.name(); }));
  all.push_back(making(name("title"), [] { return group.title(); }));
  all.push_back(making(name("elements"), [] { return group.elements(); }));
  all.push_back(making(name("members"), [] { return group.members(); }));
  all.push_back(making(name("words"), [] { return words.words(); }));
  all.push_back(making(name("vocabulary"), [] { return words.vocabulary(); }));
  all.push_back(counting(name("kind"), [] { return group.kind(); }));
  all.push_back(counting(name("form"), [] { return group.form(); }));
  all.push_back(counting(name("isSecret"), [] { return group.isSecret(); }));
  all.push_back(counting(name("mostBytes"), [] { return group.mostBytes(); }));
  all.push_back(counting("Kovra::Keyword::code", [] { return keyword.code(); }));
  all.push_back(making("Kovra::Keyword::word", [] { return keyword.word(); }));
  all.push_back(making("Kovra::nameOf", [] { return std::string(nameOf(group.kind())); }));
  all.push_back(making("Kovra::nameOf", [] { return std::string(nameOf(group.form())); }));
  all.push_back(making("Kovra::nameOf", [] { return std::string(nameOf(Choice::Form::number)); }));
}

void addElements(std::vector<Operation>& all) {
  static ElementDescription const root = messageOf("configuration").root();
  auto const name = [](char const* of) { return std::string("Kovra::ElementDescription::") + of; };
  all.push_back(making(name("name"), [] { return root.name(); }));
  all.push_back(making(name("members"), [] { return root.members(); }));
  all.push_back(making(name("words"), [] { return root.words(); }));
  all.push_back(making(name("attributes"), [] { return root.attributes(); }));
  all.push_back(making(name("elements"), [] { return root.elements(); }));
  all.push_back(counting(name("mostTimes"), [] { return root.mostTimes(); }));
}

void addTellings(std::vector<Operation>& all) {
  all.push_back(making("Kovra::schema", [] { return schema("nonce"); }));
  all.push_back(making("Kovra::schema", [] { return schema("no message of this name"); }));
  all.push_back(making("Kovra::vocabulary", [] { return vocabulary(); }));
  all.push_back(making("Kovra::version", [] { return version(); }));
}

// ---- Values ----------------------------------------------------------------------------------

/// A record with a value of each kind.
Value everyKind() {
  return Value::object({{"flag", true},
                        {"whole", -5},
                        {"real", 2.5},
                        {"text", aText},
                        {"word", Value::keyword(3, aText)},
                        {"list", Value::list({1, "two", aText})},
                        {"record", Value::object({{aName, aText}})}});
}

/// A value of the host's that operations change.
struct HostValue {
  Value value = everyKind();
};

Operation changing(char const* name, std::function<void(Value&)> change) {
  return operation<HostValue>(
      std::string("Kovra::Value::") + name,
      [change = std::move(change)](HostValue& host) {
        change(host.value);
        return 1;
      },
      [](HostValue& host) {
        return Contents{host.value.toJson(), ""};
      });
}

void addChanges(std::vector<Operation>& all) {
  Operation const changes[] = {
      changing("set", [](Value& value) { value.set("record.another.below", aText); }),
      changing("add", [](Value& value) { value.add(aName, aText); }),
      changing("append", [](Value& value) { value.at("list").append(aText); }),
      changing("erase", [](Value& value) { value.erase("record"); }),
      changing("markSecret", [](Value& value) { value.markSecret(); }),
      changing("operator=",
               [](Value& value) {
                 static Value const other = Value::list({aText, everyKind()});
                 value = other;
               }),
      changing("operator=",
               [](Value& value) {
                 value = Value::list({aText, everyKind()});
               }),
      changing("destroy", [](Value& value) { value = Value(); }),
  };
  all.insert(all.end(), std::begin(changes), std::end(changes));
}

void addMakings(std::vector<Operation>& all) {
  static Value const value = everyKind();
  static std::string const json = value.toJson();
  auto const make = [&](char const* name, auto makes) {
    all.push_back(making(std::string("Kovra::Value::") + name, makes));
  };
  make("Value", [] { return Value(aText); });
  make("Value", [] { return value; });
  make("keyword", [] { return Value::keyword(3, aText); });
  make("unknownKeyword", [] { return Value::unknownKeyword(3, aText); });
  make("object", [] { return Value::object({{aName, aText}, {"b", Value::list()}}); });
  make("list", [] { return Value::list({aText, 1, Value::object()}); });
  make("toJson", [] { return value.toJson(2); });
  make("fromJson", [] { return Value::fromJson(json); });
  all.push_back(making("Kovra::Member::Member", [] {
    Member const member(aName, aText);
    Member const copy(member);
    return std::string(copy.name()) + copy.value().toJson();
  }));
}

/// Errors carry texts of their own.
template <class Error, class Fail>
Operation failing(std::string name, Fail fail) {
  return making(std::move(name), [fail] {
    try {
      fail();
    } catch (Error const& error) {
      Error const copy(error);
      return std::string(copy.what());
    }
    return std::string();
  });
}

void addErrors(std::vector<Operation>& all) {
  static Value const value = everyKind();
  all.push_back(failing<JsonError>("Kovra::JsonError::JsonError", [] {
    static_cast<void>(
        Value::fromJson(R"({"a member of a long name":{"and another one":[1,2,3,]}})"));
  }));
  all.push_back(failing<ValueError>("Kovra::ValueError::ValueError", [] {
    static_cast<void>(value.at("record.a member that is not there"));
  }));
}

void addGetters(std::vector<Operation>& all) {
  static Value value = everyKind();
  static Value const& fixed = value;
  auto const get = [&](char const* name, std::function<long()> tell) {
    all.push_back(telling(std::string("Kovra::Value::") + name, std::move(tell)));
  };
  get("asBool", [] { return fixed.at("flag").asBool() ? 1 : 0; });
  get("asBool", [] { return fixed.at("text").asBool(true) ? 1 : 0; });
  get("asInteger", [] { return fixed.at("whole").asInteger(); });
  get("asInteger", [] { return fixed.at("text").asInteger(4); });
  get("asNatural", [] { return static_cast<long>(fixed.at("list[0]").asNatural()); });
  get("asNatural", [] { return static_cast<long>(fixed.at("text").asNatural(4)); });
  get("asReal", [] { return static_cast<long>(fixed.at("real").asReal()); });
  get("asReal", [] { return static_cast<long>(fixed.at("text").asReal(4)); });
  get("asText", [] { return static_cast<long>(fixed.at("text").asText().size()); });
  get("asText", [] { return static_cast<long>(fixed.at("flag").asText("four").size()); });
  get("code", [] { return fixed.at("word").code(); });
  get("word", [] { return static_cast<long>(fixed.at("word").word().size()); });
  get("isKnown", [] { return fixed.at("word").isKnown() ? 1 : 0; });
  get("size", [] { return static_cast<long>(fixed.size()); });
  get("items", [] { return static_cast<long>(fixed.at("list").items().size()); });
  get("items", [] { return static_cast<long>(value.at("list").items().size()); });
  get("members", [] { return static_cast<long>(fixed.members().size()); });
  get("members", [] { return static_cast<long>(value.members().size()); });
  get("find", [] { return fixed.find("text") != nullptr ? 1 : 0; });
  get("find", [] { return value.find("text") != nullptr ? 1 : 0; });
  get("at", [] { return fixed.at("record").isRecord() ? 1 : 0; });
  get("at", [] { return value.at("record").isRecord() ? 1 : 0; });
  get("findAt", [] { return fixed.findAt("record.nothing") != nullptr ? 1 : 0; });
  all.push_back(telling("Kovra::operator==", [] { return fixed == everyKind() ? 1 : 0; }));
}

// ---- C ---------------------------------------------------------------------------------------

/// A result for C, which its host gives back.
struct ResultForC {
  char* json = nullptr;

  ResultForC() = default;
  ~ResultForC() { kovra_free(json); }
  ResultForC(ResultForC const&) = delete;
  ResultForC& operator=(ResultForC const&) = delete;
};

Operation forC(char const* name, std::function<int(char**)> call) {
  return operation<ResultForC>(
      name, [call = std::move(call)](ResultForC& result) { return call(&result.json); },
      [](ResultForC& result) {
        return Contents{result.json != nullptr ? result.json : "nothing", ""};
      });
}

void addFunctionsForC(std::vector<Operation>& all) {
  static std::string const reply = noteworthy();
  constexpr char choices[] = R"({"sections":["wireless"]})";
  Operation const functions[] = {
      forC("kovra_decode",
           [](char** json) { return kovra_decode(reply.data(), reply.size(), nullptr, json); }),
      forC("kovra_decode",
           [](char** json) {
             return kovra_decode(malformed, std::strlen(malformed), nullptr, json);
           }),
      forC("kovra_compose",
           [choices](char** json) {
             return kovra_compose("configuration", R"({"wireless":{"key":"a key of some length"}})",
                                  choices, json);
           }),
      forC("kovra_compose",
           [choices](char** json) {
             return kovra_compose("configuration", R"({"wireless":{"key":5}})", choices, json);
           }),
      forC("kovra_messages", kovra_messages),
      forC("kovra_schema", [](char** json) { return kovra_schema("nonce", json); }),
      forC("kovra_free",
           [](char** json) {
             int const status = kovra_schema("nonce", json);
             kovra_free(*json);
             *json = nullptr;
             return status;
           }),
      telling("kovra_version", [] { return static_cast<long>(std::strlen(kovra_version())); }),
  };
  all.insert(all.end(), std::begin(functions), std::end(functions));
}

}  // namespace

std::vector<Operation> faceOperations() {
  std::vector<Operation> all;
  addDecoding(all);
  addFindings(all);
  addKindsOfFindings(all);
  addReplies(all);
  addComposing(all);
  addMessages(all);
  addChoices(all);
  addMembers(all);
  addElements(all);
  addTellings(all);
  addChanges(all);
  addMakings(all);
  addErrors(all);
  addGetters(all);
  addFunctionsForC(all);
  return all;
}

}  // namespace Kovra::sweep

// The interface for C: the same as the face says, in memory of C, and never an exception.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "kovra.h"
#include "kovra.hpp"
#include "support/allocations.hpp"
#include "support/folder.hpp"

namespace Kovra {
namespace {

/// What no function may leave where its result belongs.
char untouched[] = "untouched";

struct Result {
  int status;
  std::string json;

  Value value() const { return Value::fromJson(json); }
};

/// One line of ASCII.
bool isPrintable(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char byte) { return byte >= ' ' && byte <= '~'; });
}

/// Calls a function, checks what holds for every result, and gives it back.
Result resultOf(std::function<int(char**)> const& call) {
  char* json = untouched;
  int const status = call(&json);
  EXPECT_NE(json, untouched);
  if (json == untouched || json == nullptr) {
    ADD_FAILURE() << "no result with status " << status;
    return {status, {}};
  }
  Result const result = {status, json};
  kovra_free(json);
  EXPECT_TRUE(isPrintable(result.json)) << result.json;
  EXPECT_TRUE(result.value().isRecord()) << result.json;
  return result;
}

Result decoded(std::string const& text, char const* as = nullptr) {
  return resultOf([&](char** json) { return kovra_decode(text.data(), text.size(), as, json); });
}

Result composed(char const* message, char const* record, char const* choices = nullptr) {
  return resultOf([&](char** json) { return kovra_compose(message, record, choices, json); });
}

Result composed(char const* message, std::string const& record, char const* choices = nullptr) {
  return composed(message, record.c_str(), choices);
}

Result listed() {
  return resultOf([](char** json) { return kovra_messages(json); });
}

Result schemaOf(char const* message) {
  return resultOf([&](char** json) { return kovra_schema(message, json); });
}

std::vector<std::string> samples() {
  std::vector<std::string> all;
  for (auto const& entry : std::filesystem::recursive_directory_iterator(KOVRA_SAMPLES_DIR)) {
    if (entry.path().extension() == ".xml") all.push_back(entry.path());
  }
  return all;
}

std::string sample(char const* name) {
  return test::contentsOf(std::string(KOVRA_SAMPLES_DIR "/") + name);
}

/// "kovra" and "ok", which stand in front of everything.
void expectEnvelope(Result const& result) {
  std::string const front =
      result.status == KOVRA_DONE ? R"({"kovra":1,"ok":true,)" : R"({"kovra":1,"ok":false,)";
  EXPECT_EQ(result.json.substr(0, front.size()), front);
}

/// "path: found; expected" of each problem, or "in line:column:offset path: message" of each that
/// was found in a text.
std::vector<std::string> problemsOf(Result const& result) {
  EXPECT_EQ(result.status, KOVRA_REFUSED) << result.json;
  expectEnvelope(result);
  Value const value = result.value();
  std::vector<std::string> all;
  for (Value const& problem : value.at("problems").items()) {
    std::string const path(problem.at("path").asText());
    std::string const message(problem.at("message").asText());
    if (Value const* const in = problem.find("in")) {
      EXPECT_EQ(problem.size(), 6U) << result.json;
      all.push_back(std::string(in->asText()) + " " +
                    std::to_string(problem.at("line").asInteger()) + ":" +
                    std::to_string(problem.at("column").asInteger()) + ":" +
                    std::to_string(problem.at("offset").asInteger()) + " " + path + ": " + message);
    } else {
      EXPECT_EQ(problem.size(), 4U) << result.json;
      std::string const what = "found " + std::string(problem.at("found").asText()) +
                               "; expected " + std::string(problem.at("expected").asText());
      EXPECT_EQ(message, path.empty() ? what : path + ": " + what);
      all.push_back(message);
    }
  }
  return all;
}

std::string documentOf(Result const& result) {
  EXPECT_EQ(result.status, KOVRA_DONE) << result.json;
  expectEnvelope(result);
  Value const value = result.value();
  EXPECT_EQ(value.size(), 3U) << result.json;
  return result.status == KOVRA_DONE ? std::string(value.at("document").asText()) : "";
}

using Texts = std::vector<std::string>;

constexpr char wirelessOnly[] = R"({"sections": ["wireless"], "zero_missing": true})";

// Decoding.

TEST(DecodeForC, GivesWhatTheFaceDecodesOfEverySample) {
  std::size_t refused = 0;
  std::vector<std::string> const all = samples();
  for (std::string const& file : all) {
    std::string const text = test::contentsOf(file);
    Decoding const expected = decode(text);
    Result const result = decoded(text);
    EXPECT_EQ(result.status, expected ? KOVRA_DONE : KOVRA_REFUSED) << file;
    EXPECT_EQ(result.json, expected.toJson(-1, Secrets::shown)) << file;
    expectEnvelope(result);
    if (!expected) ++refused;
  }
  EXPECT_GT(refused, 50U);
  EXPECT_GT(all.size() - refused, 50U);
}

TEST(DecodeForC, ShowsSecrets) {
  std::string const json = decoded(sample("config/full.xml")).json;
  EXPECT_NE(json.find(R"("key":"seven red umbrellas")"), json.npos);
  EXPECT_EQ(json.find("******"), json.npos);
}

TEST(DecodeForC, TellsWhatTheHeaderSays) {
  Result const done = decoded("<get_count><total_cards_done>5</total_cards_done></get_count>");
  EXPECT_EQ(done.status, KOVRA_DONE);
  EXPECT_EQ(done.json,
            R"({"kovra":1,"ok":true,"root":"get_count","readings":[{"document":"card-count",)"
            R"("result":true,"record":{"total_cards_done":5}}],"notes":[]})");
  Result const refused = decoded("<get_count>");
  EXPECT_EQ(refused.status, KOVRA_REFUSED);
  std::string const front =
      R"({"kovra":1,"ok":false,"error":{"id":"K005","kind":"ends_early","severity":"error",)"
      R"("line":1,"column":12,)";
  EXPECT_EQ(refused.json.substr(0, front.size()), front);
  EXPECT_EQ(refused.value().at("error.message").asText(),
            decode("<get_count>").refusal().message());
}

TEST(DecodeForC, ReadsAsTheMessageThatItIsAskedFor) {
  std::string const text = "<get_count><total_cards_done>5</total_cards_done></get_count>";
  EXPECT_EQ(decoded(text, nullptr).json, decode(text).toJson());
  EXPECT_EQ(decoded(text, "").json, decode(text).toJson());
  Result const other = decoded(text, "cards-until-cleaning");
  EXPECT_EQ(other.json, decode(text, "cards-until-cleaning").toJson());
  EXPECT_EQ(other.value().at("readings[0].document").asText(), "cards-until-cleaning");
  for (char const* const as : {"nothing", "passkey-change"}) {
    Result const unknown = decoded(text, as);
    EXPECT_EQ(unknown.status, KOVRA_REFUSED) << as;
    EXPECT_EQ(unknown.value().at("error.id").asText(), "K015") << as;
  }
}

TEST(DecodeForC, TakesAsManyBytesAsItIsTold) {
  constexpr char text[] = "<get_count/>rest";
  auto const first = [&](std::size_t length) {
    return resultOf([&](char** json) { return kovra_decode(text, length, nullptr, json); }).status;
  };
  EXPECT_EQ(first(12), KOVRA_DONE);
  EXPECT_EQ(first(11), KOVRA_REFUSED);
  EXPECT_EQ(first(0), KOVRA_REFUSED);
  EXPECT_EQ(decoded(std::string("<get_count/>\0", 13)).value().at("error.id").asText(), "K012");
}

TEST(DecodeForC, TakesANullTextForAnEmptyOne) {
  std::string const empty = decoded("").json;
  EXPECT_NE(empty.find("K001"), empty.npos);
  for (std::size_t const length : {std::size_t{0}, std::size_t{1}, ~std::size_t{0}}) {
    Result const result =
        resultOf([&](char** json) { return kovra_decode(nullptr, length, nullptr, json); });
    EXPECT_EQ(result.status, KOVRA_REFUSED);
    EXPECT_EQ(result.json, empty) << length;
  }
}

// Composing.

/// The record of the first reading as JSON.
std::string recordOf(Result const& decoding) {
  return decoding.value().at("readings[0].record").toJson();
}

TEST(ComposeForC, GivesTheDocumentOfTheFace) {
  Result const reply = decoded(sample("config/full.xml"));
  std::string const record = recordOf(reply);
  Composition const expected =
      compose("configuration", Value::fromJson(record), Value::fromJson(wirelessOnly));
  ASSERT_TRUE(expected);
  EXPECT_NE(expected.text().find("<key>seven red umbrellas</key>"), std::string::npos);
  EXPECT_EQ(documentOf(composed("configuration", record, wirelessOnly)), expected.text());
  EXPECT_EQ(documentOf(composed("configuration", reply.json, wirelessOnly)), expected.text())
      << "a whole reply";
}

TEST(ComposeForC, CountsTheReadingWhoseRecordTheDocumentIsMadeOf) {
  constexpr char replies[] =
      R"({"readings":[{"document":"media","record":{"wireless":{"channel":1}}},)"
      R"({"document":"configuration","record":{"wireless":{"channel":2}}},)"
      R"({"document":"configuration","record":{"wireless":{"channel":3}}}]})";
  std::string const document = documentOf(composed("configuration", replies, wirelessOnly));
  EXPECT_NE(document.find("<channel>2</channel>"), document.npos) << document;
  constexpr char change[] = R"({"readings":[{"document":"security-key-change","record":)"
                            R"({"current_passkey":"old","new_passkey":"new"}}]})";
  EXPECT_EQ(
      documentOf(composed("passkey-change", change)),
      documentOf(composed("passkey-change", R"({"current_passkey":"old","new_passkey":"new"})")))
      << "another message's record";
}

TEST(ComposeForC, RefusesAReplyWithoutThatReading) {
  auto const problem = [](char const* readings) {
    return problemsOf(composed("configuration", std::string(R"({"readings":)") + readings + "}"));
  };
  auto const expected = [](char const* found) {
    return Texts{std::string("readings: found ") + found + "; expected configuration"};
  };
  EXPECT_EQ(problem("[]"), expected("none"));
  EXPECT_EQ(problem("5"), expected("none"));
  EXPECT_EQ(problem("[5,{},{\"document\":\"media\"},{\"record\":{}}]"), expected("none"));
  EXPECT_EQ(problem(R"([{"document":5,"record":{}}])"), expected("none"));
  EXPECT_EQ(problem(R"([{"document":"configuration"}])"), expected("none"));
  EXPECT_EQ(problem(R"([{"document":"media","record":{}},{"document":"k3y","record":{}}])"),
            expected("media, an unknown message"));
}

TEST(ComposeForC, KnowsMessagesByTheWordsOfACommandLine) {
  constexpr char record[] = R"({"motor":"ribbon","state":"off"})";
  EXPECT_EQ(documentOf(composed("device-control motor", record)),
            documentOf(composed("device-control-motor", record)));
}

TEST(ComposeForC, TellsEveryProblemAsTheFaceDoes) {
  constexpr char record[] =
      R"({"wireless":{"channel":"six","ssid":7},"feeder_mode":"tripel","x":1})";
  Composition const expected =
      compose("configuration", Value::fromJson(record), Value::fromJson(wirelessOnly));
  Texts messages;
  for (Problem const& problem : expected.problems()) messages.push_back(problem.message());
  EXPECT_EQ(messages.size(), 4U);
  EXPECT_EQ(problemsOf(composed("configuration", record, wirelessOnly)), messages);
}

TEST(ComposeForC, KeepsSecretsOutOfProblems) {
  auto const foundIn = [](char const* message, char const* record, char const* choices) {
    return composed(message, record, choices).value().at("problems[0]");
  };
  Value const key = foundIn("configuration", R"({"wireless":{"key":"s3\u0001"}})", wirelessOnly);
  EXPECT_EQ(key.at("path").asText(), "wireless.key");
  EXPECT_EQ(key.at("found").asText(), "a text of 3 bytes");
  // A text that is secret only as a part of its message.
  constexpr char action[] = R"({"action":"s3cret","model":"m","serial":"5","nonce":"n"})";
  Value const alone = foundIn("secure-action-request", action, nullptr);
  EXPECT_EQ(alone.at("path").asText(), "action");
  EXPECT_EQ(alone.at("found").asText(), "a text of 6 bytes");
  std::string const reply =
      std::string(R"({"readings":[{"document":"secure-action-request","record":)") + action + "}]}";
  EXPECT_EQ(foundIn("secure-action-request", reply.c_str(), nullptr), alone);
}

TEST(ComposeForC, TellsWhereATextIsNoJson) {
  EXPECT_EQ(problemsOf(composed("configuration", "{\n \"cards\": [1,]}", wirelessOnly)),
            Texts{"record 2:14:15 : malformed JSON: found what begins no value; expected a value"});
  EXPECT_EQ(problemsOf(composed("configuration", "{}", "{\"sections\":1,\n\"sections\":2}")),
            Texts{"choices 2:1:15 sections: sections: found a key for the second time; expected "
                  "each key once"});
  EXPECT_EQ(problemsOf(composed("configuration", "[", "{")).size(), 2U) << "both at once";
  EXPECT_EQ(problemsOf(composed("nothing", "[", "")).size(), 1U);
}

TEST(ComposeForC, TakesNullForAnEmptyText) {
  char const* const null = nullptr;
  EXPECT_EQ(problemsOf(composed(null, "{}")), problemsOf(composed("", "{}")));
  EXPECT_EQ(problemsOf(composed("configuration", null)), problemsOf(composed("configuration", "")));
  EXPECT_EQ(problemsOf(composed("configuration", "{}", null)),
            problemsOf(composed("configuration", "{}", "")));
  EXPECT_EQ(problemsOf(composed("configuration", "{}", "")),
            problemsOf(composed("configuration", "{}", "{}")));
  EXPECT_EQ(problemsOf(composed(null, null, null)), problemsOf(composed("", "", "")));
}

TEST(ComposeForC, RefusesUnknownMessages) {
  for (char const* const name : {"nothing", "", "general-status"}) {
    EXPECT_EQ(problemsOf(composed(name, R"({"readings":[]})")),
              Texts{std::string("found \"") + name +
                    "\"; expected the name of a document that is composed"});
  }
}

// What there is.

TEST(MessagesForC, AreThoseOfTheFace) {
  Result const result = listed();
  EXPECT_EQ(result.status, KOVRA_DONE);
  expectEnvelope(result);
  Value const value = result.value();
  auto const listedMessages = value.at("messages").items();
  std::vector<Message> const expected = messages();
  ASSERT_EQ(listedMessages.size(), expected.size());
  auto const listOf = [](std::vector<std::string> const& texts) {
    Value list = Value::list();
    for (std::string const& text : texts) list.append(text);
    return list;
  };
  for (std::size_t i = 0; i < expected.size(); ++i) {
    Value const& message = listedMessages[i];
    std::string const name = expected[i].name();
    EXPECT_EQ(message.size(), 8U) << name;
    EXPECT_EQ(message.at("name").asText(), name);
    EXPECT_EQ(message.at("title").asText(), expected[i].title()) << name;
    EXPECT_EQ(message.at("roots"), listOf(expected[i].roots())) << name;
    EXPECT_EQ(message.at("read").asBool(), expected[i].isRead()) << name;
    EXPECT_EQ(message.at("written").asBool(), expected[i].isWritten()) << name;
    EXPECT_EQ(message.at("required"), listOf(expected[i].required())) << name;
    EXPECT_EQ(message.at("members").size(), expected[i].members().size()) << name;
    EXPECT_EQ(message.at("choices").size(), expected[i].choices().size()) << name;
  }
}

/// The entry of a list with that name, as JSON.
std::string named(Value const& list, std::string_view name) {
  for (Value const& entry : list.items()) {
    if (entry.at("name").asText() == name) return entry.toJson();
  }
  return {};
}

TEST(MessagesForC, TellMembersAndChoices) {
  Value const all = listed().value();
  Value const configuration = Value::fromJson(named(all.at("messages"), "configuration"));
  Value const& members = configuration.at("members");
  EXPECT_EQ(named(members, "physical_address"), R"({"name":"physical_address","kind":"text"})");
  EXPECT_EQ(named(members, "wireless"), R"({"name":"wireless","kind":"record"})");
  EXPECT_EQ(named(members, "feeder_mode"), R"({"name":"feeder_mode","kind":"keyword"})");
  EXPECT_EQ(named(members, "lcd_contrast"), R"({"name":"lcd_contrast","kind":"record"})");
  Value const& choices = configuration.at("choices");
  EXPECT_EQ(choices.at("[0].name").asText(), "sections");
  EXPECT_EQ(choices.at("[0].form").asText(), "words");
  EXPECT_EQ(choices.at("[0].words[2]").asText(), "wireless");
  EXPECT_TRUE(choices.at("[0].required").asBool());
  EXPECT_EQ(choices.at("[0]").find("least"), nullptr);
  Value const card = Value::fromJson(named(choices, "card"));
  EXPECT_EQ(card.at("form").asText(), "number");
  EXPECT_EQ(card.at("least").asInteger(), 1);
  EXPECT_EQ(card.at("most").asInteger(), 2);
  EXPECT_EQ(card.find("words"), nullptr);
  EXPECT_FALSE(card.at("required").asBool());
  EXPECT_EQ(Value::fromJson(named(choices, "filmless")).at("form").asText(), "flag");
  Value const capabilities = Value::fromJson(named(all.at("messages"), "capabilities"));
  EXPECT_EQ(capabilities.at("choices[0].form").asText(), "word");
}

TEST(MessagesForC, KnowTheKindsAndTitlesOfMembers) {
  Value const all = listed().value();
  std::vector<std::string> kinds;
  std::size_t titles = 0;
  for (Value const& message : all.at("messages").items()) {
    for (Value const& member : message.at("members").items()) {
      kinds.emplace_back(member.at("kind").asText());
      Value const* const title = member.find("title");
      if (title != nullptr) ++titles;
      EXPECT_TRUE(title == nullptr || !title->asText().empty());
    }
  }
  EXPECT_GT(titles, 0U);
  std::sort(kinds.begin(), kinds.end());
  kinds.erase(std::unique(kinds.begin(), kinds.end()), kinds.end());
  EXPECT_EQ(kinds,
            (Texts{"flag", "integer", "keyword", "list", "natural", "real", "record", "text"}));
}

TEST(SchemaForC, IsThatOfTheFaceOnOneLine) {
  for (Message const& message : messages()) {
    Result const result = schemaOf(message.name().c_str());
    EXPECT_EQ(result.status, KOVRA_DONE) << message.name();
    EXPECT_EQ(result.value(), Value::fromJson(schema(message.name()))) << message.name();
    EXPECT_EQ(result.value().at("title").asText(), message.name());
  }
}

TEST(SchemaForC, OfNoMessageIsRefused) {
  for (char const* const name : {"nothing", "", static_cast<char const*>(nullptr)}) {
    Result const result = schemaOf(name);
    EXPECT_EQ(result.status, KOVRA_REFUSED);
    expectEnvelope(result);
    Value const error = result.value().at("error");
    EXPECT_EQ(error.at("id").asText(), "K015");
    EXPECT_EQ(error.at("found").asText(), '"' + std::string(name != nullptr ? name : "") + '"');
    std::string const message(error.at("message").asText());
    EXPECT_NE(message.find("passkey-change"), message.npos) << "all messages have a schema";
  }
}

TEST(VersionForC, IsThatOfTheFace) {
  EXPECT_EQ(kovra_version(), version());
  EXPECT_EQ(kovra_version(), kovra_version()) << "nothing to be given back";
}

// Whatever may go wrong.

TEST(ResultsForC, NeedAPlace) {
  EXPECT_EQ(kovra_decode("<get_count/>", 12, nullptr, nullptr), KOVRA_REFUSED);
  EXPECT_EQ(kovra_compose("nonce", "{}", nullptr, nullptr), KOVRA_REFUSED);
  EXPECT_EQ(kovra_messages(nullptr), KOVRA_REFUSED);
  EXPECT_EQ(kovra_schema("nonce", nullptr), KOVRA_REFUSED);
}

TEST(ResultsForC, OfNothingCanBeGivenBack) {
  kovra_free(nullptr);
}

/// Too long for a std::string without a block of its own.
constexpr char secret[] = "seven red umbrellas";

/// All that a host may ask, with the right answers.
struct Call {
  char const* title;
  int status;
  std::function<int(char**)> call;
};

std::vector<Call> calls() {
  static std::string const reply =
      "<configuration><wireless><key>seven red umbrellas</key></wireless></configuration>";
  static constexpr char record[] = R"({"wireless":{"key":"seven red umbrellas","channel":6}})";
  static constexpr char wrong[] = R"({"wireless":{"key":5,"channel":"six"},"cards":[{"a":1}]})";
  static constexpr char replies[] = R"({"readings":[{"document":"media","record":{}}]})";
  auto const decoding = [](char const* text, char const* as) {
    return [=](char** json) { return kovra_decode(text, std::strlen(text), as, json); };
  };
  auto const composing = [](char const* text, char const* choices) {
    return [=](char** json) { return kovra_compose("configuration", text, choices, json); };
  };
  return {
      {"decode", KOVRA_DONE, decoding(reply.c_str(), nullptr)},
      {"refuse", KOVRA_REFUSED, decoding("<configuration><wireless></a>", nullptr)},
      {"refuse a name", KOVRA_REFUSED, decoding("", "nothing of that name, which is long")},
      {"compose", KOVRA_DONE, composing(record, wirelessOnly)},
      {"refuse a record", KOVRA_REFUSED, composing(wrong, wirelessOnly)},
      {"refuse a text", KOVRA_REFUSED,
       composing(R"({"a record":{"of many letters":[1,2,3,]}})",
                 R"({"choices of many letters":1,})")},
      {"refuse a reply", KOVRA_REFUSED, composing(replies, wirelessOnly)},
      {"list", KOVRA_DONE, [](char** json) { return kovra_messages(json); }},
      {"tell a schema", KOVRA_DONE, [](char** json) { return kovra_schema("nonce", json); }},
      {"refuse a schema", KOVRA_REFUSED, [](char** json) { return kovra_schema("nothing", json); }},
  };
}

using HeapForC = test::HeapTest;

/// Fails one allocation after the other, until none fails any more. The number of those that did.
std::size_t failEach(Call const& call, std::string const& expected) {
  for (std::size_t failing = 1;; ++failing) {
    char* json = untouched;
    int status = -1;
    std::size_t made = 0;
    std::size_t alive = 0;
    {
      test::Allocations const allocations(failing);
      status = call.call(&json);
      made = allocations.made();
      alive = allocations.alive();
    }
    EXPECT_EQ(alive, 0U) << call.title << ' ' << failing;
    if (status != KOVRA_NO_MEMORY || testing::Test::HasFailure()) {
      EXPECT_EQ(status, call.status) << call.title << ' ' << failing;
      EXPECT_LT(made, failing) << call.title << ": an allocation failed without a word";
      EXPECT_STREQ(json, expected.c_str()) << call.title;
      kovra_free(json != untouched ? json : nullptr);
      return failing - 1;
    }
    EXPECT_EQ(json, nullptr) << call.title << ' ' << failing;
  }
}

TEST_F(HeapForC, MayBeExhaustedAtAnyTime) {
  for (Call const& call : calls()) {
    Result const expected = resultOf(call.call);  // what is made once is there from now on
    EXPECT_EQ(expected.status, call.status) << call.title << ": " << expected.json;
    EXPECT_GT(failEach(call, expected.json), 3U) << call.title;
  }
}

/// How many blocks with the secret in them a call gave back to operator delete.
std::size_t releasedBy(std::function<int(char**)> const& call) {
  char* json = untouched;
  std::size_t found = 0;
  {
    test::Released const released(secret);
    call(&json);
    found = released.found();
  }
  kovra_free(json);
  return found;
}

TEST_F(HeapForC, KeepsNoSecretOfResults) {
  for (Call const& call : calls()) {
    EXPECT_EQ(releasedBy(call.call), 0U) << call.title;
  }
}

/// A text with something wrong in it.
std::string mutated(std::string text, std::mt19937& random) {
  auto const below = [&](std::size_t bound) { return random() % bound; };
  for (std::size_t changes = 1 + below(3); changes > 0 && !text.empty(); --changes) {
    std::size_t const at = below(text.size());
    switch (below(4)) {
      case 0:
        text[at] = static_cast<char>(random());
        break;
      case 1:
        text.erase(at, 1 + below(20));
        break;
      case 2:
        text.insert(at, text.substr(below(text.size()), below(20)));
        break;
      default:
        text.insert(at, 1, "<>/\"'&#;=\\{}[]:,"[below(16)]);
    }
  }
  return text;
}

std::string noise(std::mt19937& random) {
  std::string text(random() % 64, '\0');
  for (char& byte : text) byte = static_cast<char>(random());
  return text;
}

void expectStatus(Result const& result) {
  EXPECT_TRUE(result.status == KOVRA_DONE || result.status == KOVRA_REFUSED) << result.status;
  expectEnvelope(result);
}

TEST(ResultsForC, AreThereWhateverBytesComeIn) {
  std::mt19937 random(1);  // the same texts in each run
  std::vector<std::string> const files = samples();
  std::size_t done = 0;
  for (int i = 0; i < 4000 && !HasFailure(); ++i) {
    std::string const reply = test::contentsOf(files[random() % files.size()]);
    Result const result = decoded(mutated(reply, random));
    expectStatus(result);
    if (result.status == KOVRA_DONE) ++done;
    expectStatus(decoded(noise(random), noise(random).c_str()));
    expectStatus(schemaOf(noise(random).c_str()));
  }
  EXPECT_GT(done, 100U) << "some mistakes do not matter";
}

TEST(ResultsForC, AreThereWhateverJsonComesIn) {
  std::mt19937 random(2);
  std::string const reply = decoded(sample("config/full.xml")).json;
  std::size_t done = 0;
  for (int i = 0; i < 2000 && !HasFailure(); ++i) {
    Result const result = composed("configuration", mutated(reply, random).c_str(), wirelessOnly);
    expectStatus(result);
    if (result.status == KOVRA_DONE) ++done;
    expectStatus(composed("configuration", "{}", mutated(wirelessOnly, random).c_str()));
    expectStatus(composed(noise(random).c_str(), noise(random).c_str(), noise(random).c_str()));
  }
  EXPECT_GT(done, 10U) << "some mistakes do not matter";
}

TEST(ThreadsForC, DoNotMeet) {
  std::vector<Call> const all = calls();
  std::vector<std::string> expected;
  for (Call const& call : all) expected.push_back(resultOf(call.call).json);
  std::vector<std::thread> threads;
  for (std::size_t thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&, thread] {
      for (std::size_t i = 0; i < 200; ++i) {
        std::size_t const which = (i + thread) % all.size();
        EXPECT_EQ(resultOf(all[which].call).json, expected[which]);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace Kovra

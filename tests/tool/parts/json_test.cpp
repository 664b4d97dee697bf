#include "json.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "values.hpp"

namespace Kovra::tool {

namespace {

Decoding decoded(std::vector<Member> members, std::vector<Note> notes = {}) {
  Decoding decoding;
  decoding.status = Decoding::Status::decoded;
  decoding.root = "get_probe";
  decoding.readings.push_back(readingOf(std::move(members)));
  decoding.notes = std::move(notes);
  return decoding;
}

/// What one line of JSON says between `begin` and `end`.
std::string between(std::string const& line, std::string const& begin, std::string const& end) {
  std::size_t const from = line.find(begin);
  std::size_t const to = line.rfind(end);
  if (from == line.npos || to == line.npos) return "not in " + line;
  return line.substr(from + begin.size(), to - from - begin.size());
}

std::string recordOf(std::vector<Member> members, Secrets secrets = Secrets::masked) {
  return between(jsonLine(decoded(std::move(members)), secrets, "-"),
                 "\"record\":", "}],\"notes\":[]}\n");
}

std::string noteOf(Note const& note) {
  return between(jsonLine(decoded({}, {note}), Secrets::masked, "-"), "\"notes\":[", "]}\n");
}

Note noteOfKind(Note::Kind kind) {
  Note note;
  note.kind = kind;
  note.place.line = 4;
  note.place.column = 5;
  note.element = "e";
  return note;
}

TEST(Json, IsOneIndentedObjectWithItsVersionInFront) {
  EXPECT_EQ(json(decoded({{"a", integer(1)}}), Secrets::masked), R"({
  "kovra": 1,
  "root": "get_probe",
  "readings": [
    {
      "document": "probe",
      "result": true,
      "record": {
        "a": 1
      }
    }
  ],
  "notes": []
}
)");
}

TEST(Json, LineNamesTheSourceFirst) {
  EXPECT_EQ(jsonLine(decoded({}), Secrets::masked, "a b.xml"),
            R"({"source":"a b.xml","kovra":1,"root":"get_probe",)"
            R"("readings":[{"document":"probe","result":true,"record":{}}],"notes":[]})"
            "\n");
}

TEST(Json, TypesEveryKindOfValue) {
  EXPECT_EQ(recordOf({{"nothing", Value()},
                      {"yes", flag(true)},
                      {"no", flag(false)},
                      {"integer", integer(std::numeric_limits<long>::min())},
                      {"natural", natural(std::numeric_limits<unsigned long>::max())},
                      {"bits", bits(26)},
                      {"real", real(24.35)},
                      {"whole", real(3)},
                      {"text", text("12")}}),
            R"({"nothing":null,"yes":true,"no":false,"integer":-9223372036854775808,)"
            R"("natural":18446744073709551615,"bits":26,"real":24.35,"whole":3.0,"text":"12"})");
}

TEST(Json, HasNullForARealThatIsNoNumber) {
  EXPECT_EQ(recordOf({{"a", real(std::numeric_limits<double>::quiet_NaN())},
                      {"b", real(-std::numeric_limits<double>::infinity())}}),
            R"({"a":null,"b":null})");
}

TEST(Json, GivesTheRawWordOfAnUnknownKeyword) {
  EXPECT_EQ(recordOf({{"a", keyword(3, "printing_heating", true)},
                      {"b", keyword(38, "sleeping", false)},
                      {"c", keyword(-1, "", false)}}),
            R"({"a":{"code":3,"name":"printing_heating"},)"
            R"("b":{"code":38,"name":null,"raw":"sleeping"},)"
            R"("c":{"code":-1,"name":null,"raw":""}})");
}

TEST(Json, ListsAreListsWithOneEntryAndWithNone) {
  EXPECT_EQ(recordOf({{"none", list({})},
                      {"one", list({integer(1)})},
                      {"records", list({record({{"a", integer(1)}}), record({}), Value()})}}),
            R"({"none":[],"one":[1],"records":[{"a":1},{},null]})");
}

TEST(Json, KeepsTheOrderOfMembers) {
  EXPECT_EQ(recordOf({{"z", integer(1)}, {"a", integer(2)}, {"m", record({{"y", integer(3)}})}}),
            R"({"z":1,"a":2,"m":{"y":3}})");
}

TEST(Json, MasksSecretsWhateverTheirTypeAndLength) {
  std::vector<Member> const members{
      {"key", secret(text("a key"))},
      {"none", secret(text(""))},
      {"pin", secret(integer(1234))},
      {"keys", list({secret(text("first")), text("public")})},
      {"wireless", record({{"pass_phrase", secret(text("open sesame"))}})}};
  EXPECT_EQ(recordOf(members),
            R"({"key":"******","none":"******","pin":"******","keys":["******","public"],)"
            R"("wireless":{"pass_phrase":"******"}})");
  EXPECT_EQ(recordOf(members, Secrets::shown),
            R"({"key":"a key","none":"","pin":1234,"keys":["first","public"],)"
            R"("wireless":{"pass_phrase":"open sesame"}})");
}

TEST(Json, MasksNeitherKeywordsNorWholeListsAndRecords) {
  EXPECT_EQ(recordOf({{"a", secret(keyword(1, "wpa", true))},
                      {"b", secret(list({integer(1)}))},
                      {"c", secret(record({{"d", integer(2)}}))},
                      {"e", secret(Value())}}),
            R"({"a":{"code":1,"name":"wpa"},"b":[1],"c":{"d":2},"e":null})");
}

TEST(Json, ReplacesBytesThatAreNoUtf8InValuesAndKeys) {
  EXPECT_EQ(recordOf({{"gr\xf6\xdf"
                       "e",
                       text("k\xfchl")}}),
            R"({"gr\ufffd\ufffde":"k\ufffdhl"})");
  EXPECT_EQ(between(jsonLine(decoded({}), Secrets::masked, "\xff.xml"), "{", ",\"kovra\""),
            R"("source":"\ufffd.xml")");
}

TEST(Json, WritesNothingBeyondPrintableAscii) {
  std::string everything;
  for (int byte = 1; byte < 256; ++byte) everything += static_cast<char>(byte);
  everything += "\xc2\x9b\xe2\x80\xae\xf0\x9f\x96\xa8";
  for (char const byte : recordOf({{everything, text(everything)}})) {
    ASSERT_GE(byte, ' ');
    ASSERT_LE(byte, '~');
  }
  EXPECT_EQ(recordOf({{"a", text("M\xc3\xbcnchen \xf0\x9f\x96\xa8 \"\\\n")}}),
            R"({"a":"M\u00fcnchen \ud83d\udda8 \"\\\n"})");
}

TEST(Json, NamesEveryKindOfNote) {
  struct {
    Note::Kind kind;
    char const* name;
  } const kinds[] = {
      {Note::Kind::unknownElement, "unknown_element"},
      {Note::Kind::unknownWord, "unknown_word"},
      {Note::Kind::notANumber, "not_a_number"},
      {Note::Kind::changedNumber, "changed_number"},
      {Note::Kind::cutText, "cut_text"},
      {Note::Kind::emptyElement, "empty_element"},
      {Note::Kind::noAttribute, "no_attribute"},
      {Note::Kind::surplusEntry, "surplus_entry"},
      {Note::Kind::unlisted, "unlisted"},
  };
  for (auto const& kind : kinds) {
    EXPECT_EQ(noteOf(noteOfKind(kind.kind)),
              std::string(R"({"kind":")") + kind.name + R"(","line":4,"column":5,"element":"e"})");
  }
}

TEST(Json, NotesHaveOnlyTheKeysThatApply) {
  Note note = noteOfKind(Note::Kind::unknownWord);
  note.found = "tripel";
  note.expected = {"single", "dual"};
  EXPECT_EQ(noteOf(note), R"({"kind":"unknown_word","line":4,"column":5,"element":"e",)"
                          R"("found":"tripel","expected":["single","dual"]})");
  note = noteOfKind(Note::Kind::changedNumber);
  note.found = "65537";
  note.kept = "1";
  EXPECT_EQ(noteOf(note), R"({"kind":"changed_number","line":4,"column":5,"element":"e",)"
                          R"("found":"65537","kept":"1"})");
}

}  // namespace

}  // namespace Kovra::tool

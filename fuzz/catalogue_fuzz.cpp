// Any bytes as every reply of the catalogue: no reading strays from its record, whatever that held,
// and one that is watched leaves the same record as one that nobody watches. What the face shows is
// composed again where there is a document for it. The same bytes as the seed and the texts of a
// record: every document is the same as a text and as a tree.

#include <tinyxml.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "face/catalogue.hpp"
#include "face/compose.hpp"
#include "frame/output.hpp"
#include "support/composed.hpp"
#include "support/generated.hpp"
#include "support/guarded.hpp"
#include "support/printed.hpp"

using namespace Kovra;

namespace {

using namespace frame;
using kovra_fuzz::require;

/// A record that only rows fill may hold anything before; others are made.
bool mayHoldAnything(MessageRow const& message) {
  return message.record->isPlain && (message.read == &readByRows || message.read == &readAsText);
}

void readOver(unsigned char pattern, MessageRow const& message, Element root) {
  constexpr std::size_t guard = 64;
  std::size_t const size = message.record->size;
  std::vector<unsigned char> memory(guard + size + guard, pattern);
  message.read(message, root, memory.data() + guard, Watch());
  auto const intact = [&](unsigned char byte) { return byte == pattern; };
  require(std::all_of(memory.begin(), memory.begin() + guard, intact));
  require(std::all_of(memory.end() - guard, memory.end(), intact));
}

/// Are all members the same that rows fill? Those of odd types have bytes that mean nothing.
bool isSame(Rows rows, void* a, void* b) {
  return std::all_of(rows.begin(), rows.end(), [&](Row const& row) {
    Rows const below = rowsBelow(row);
    if (!below.empty()) return isSame(below, row.place(a), row.place(b));
    return row.kind->shape == Shape::odd || std::memcmp(row.place(a), row.place(b), row.size) == 0;
  });
}

void read(MessageRow const& message, Element root) {
  if (mayHoldAnything(message)) {
    for (unsigned char const pattern : kovra_fuzz::patterns) readOver(pattern, message, root);
  }
  AnyRecord const plain(*message.record);
  AnyRecord const watched(*message.record);
  Value shown;
  Observer observer(shown);
  bool const result = message.read(message, root, plain.memory(), Watch());
  require(message.read(message, root, watched.memory(), observer) == result);
  require(!message.record->isPlain || isSame(message.rows, plain.get(), watched.get()));
}

void readEverything(std::uint8_t const* data, std::size_t size) {
  std::unique_ptr<char[]> const exact(new char[size]);
  std::copy_n(data, size, exact.get());
  if (std::find(exact.get(), exact.get() + size, '\0') != exact.get() + size) return;
  frame::Reply const reply(exact.get(), size);
  for (MessageRow const& message : replies()) {
    if (Element const root = reply.root(message.roots)) read(message, root);
  }
}

/// A directive does not carry the action that it shows, and a request its values.
bool isComposedAsShown(std::string const& name) {
  return name == "capabilities" || name == "media" || name == "printer-id" ||
         name == "configuration";
}

/// Everything that may be chosen: all sections, all cards.
Value everything(MessageRow const& message) {
  Value choices = test::record({});
  for (ChoiceRow const& choice : message.composing->choices) {
    if (choice.form != ChoiceRow::Form::words) continue;
    Value list;
    list.kind = Value::Kind::list;
    for (Word const& word : choice.words->words) list.items.push_back(shown(word.text));
    choices.members.push_back({std::string(choice.name), list});
  }
  return choices;
}

void composeAgain(std::uint8_t const* data, std::size_t size) {
  for (MessageRow const& message : replies()) {
    std::string const name(message.name);
    if (message.composing == nullptr || !isComposedAsShown(name)) continue;
    kovra_fuzz::composeAgain(data, size, name.c_str(), [&](Value const& record) {
      return compose(name, record, everything(message));
    });
  }
}

/// Puts pieces of the input into the texts of a value.
class Texts {
 public:
  explicit Texts(std::string const& input) : input_(input) {}

  void putInto(Value& value) {
    if (value.kind == Value::Kind::text) put(value.text);
    for (Value& item : value.items) putInto(item);
    for (Kovra::Member& member : value.members) putInto(member.value);
  }

 private:
  void put(std::string& text) {
    std::string const piece = input_.substr(std::min(at_, input_.size()), text.size());
    at_ += piece.size();
    if (piece.size() == text.size()) text = piece;
  }

  std::string const& input_;
  std::size_t at_ = 0;
};

void composeBothWays(MessageRow const& message, std::string const& input, std::uint32_t seed) {
  Value value = test::Generator(seed).record(message.rows);
  AnyRecord const record(*message.record);
  Composing const& composing = *message.composing;
  auto const fill = [&] {
    Problem problem;
    return composing.assign != nullptr ? composing.assign(record.memory(), value, problem)
                                       : assignRows(message.rows, record.get(), value, problem);
  };
  require(fill() != Assigned::failed);
  Texts(input).putInto(value);
  fill();  // as far as it goes
  std::vector<std::vector<long>> const choices = test::choicesOf(message);
  std::vector<long> const& chosen = choices[seed % choices.size()];
  std::string text;
  Problem problem;
  bool const isWritten = composeRecord(message, record.get(), chosen, seed, text, problem);
  TiXmlDocument document;
  TreeSink sink(*beginDocument(document, composing.root));
  require(composing.write(sink, record.get(), chosen, seed) == isWritten);
  require(!isWritten || text == test::printedByTinyxml(document));
}

/// A text and an attribute of any bytes but zero.
void printBothWays(std::string const& bytes) {
  TiXmlDocument document;
  TreeSink tree(*beginDocument(document, "root"));
  TextSink text;
  text.declare();
  text.open("root");
  for (Sink* const sink : {static_cast<Sink*>(&tree), static_cast<Sink*>(&text)}) {
    sink->open("element");
    sink->attribute("name", bytes.c_str());
    sink->text(bytes.c_str());
    sink->close("element");
  }
  text.close("root");
  require(text.printed() == test::printedByTinyxml(document));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  readEverything(data, size);
  composeAgain(data, size);
  std::string const input(reinterpret_cast<char const*>(data), size);
  std::uint32_t seed = 0;
  input.copy(reinterpret_cast<char*>(&seed), sizeof seed);
  for (MessageRow const& message : catalogue()) {
    if (message.composing != nullptr) composeBothWays(message, input, seed);
  }
  printBothWays(input.substr(0, input.find('\0')));
  return 0;
}

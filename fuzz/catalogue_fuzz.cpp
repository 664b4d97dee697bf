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
#include <string_view>
#include <vector>

#include "face/catalogue.hpp"
#include "face/compose.hpp"
#include "frame/lists.hpp"
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

/// Is the text the same, or without what is left of a last character that was cut? Whoever watches
/// is not to have that.
bool isSameText(Row const& row, void const* plain, void const* watched) {
  auto const textOf = [&](void const* place) {
    auto const* const text = static_cast<char const*>(place);
    return std::string_view(text, ::strnlen(text, row.size));
  };
  return textOf(watched) == textOf(plain) || textOf(watched) == wholeCharacters(textOf(plain));
}

bool isSame(Rows rows, void* a, void* b);

/// The entries of a list that is an array in its record.
bool areSameEntries(Row const& row, void* a, void* b) {
  auto const& entries = *static_cast<Entries const*>(row.with);
  for (std::size_t i = 0; i < row.size / entries.size; ++i) {
    if (!isSame(entries.rows, entryAt(entries, a, i), entryAt(entries, b, i))) return false;
  }
  return true;
}

/// Are all members the same that rows fill? Those of odd types have bytes that mean nothing.
bool isSame(Rows rows, void* a, void* b) {
  return std::all_of(rows.begin(), rows.end(), [&](Row const& row) {
    Rows const below = rowsBelow(row);
    if (!below.empty()) return isSame(below, row.place(a), row.place(b));
    if (row.kind == &listKind) return areSameEntries(row, row.place(a), row.place(b));
    bool const isText = row.kind->shape == Shape::text || row.kind->shape == Shape::secret;
    if (isText) return isSameText(row, row.place(a), row.place(b));
    return row.kind->shape == Shape::odd || std::memcmp(row.place(a), row.place(b), row.size) == 0;
  });
}

/// Whatever is shown left its trail. Long lists would take long.
void requireTrail(Trail const& trail, Value const& shown, std::string const& path) {
  require(path.empty() || trail.has(path));
  for (auto const& [name, member] : shown.members()) {
    requireTrail(trail, member, (path.empty() ? path : path + '.') + std::string(name));
  }
  if (shown.size() > 16) return;
  for (std::size_t i = 0; i < shown.items().size(); ++i) {
    Value const& item = shown.items()[i];
    if (!item.isNothing()) requireTrail(trail, item, path + '[' + std::to_string(i) + ']');
  }
}

void read(MessageRow const& message, Tree const& tree, Element root) {
  if (mayHoldAnything(message)) {
    for (unsigned char const pattern : kovra_fuzz::patterns) readOver(pattern, message, root);
  }
  AnyRecord const plain(*message.record);
  AnyRecord const watched(*message.record);
  AnyRecord const trailed(*message.record);
  Value shown;
  Trail trail;
  Observer observer(tree, shown);
  Observer follower(tree, trail);
  bool const result = message.read(message, root, plain.memory(), Watch());
  require(message.read(message, root, watched.memory(), observer) == result);
  require(message.read(message, root, trailed.memory(), follower) == result);
  // The bytes beside a number that may be missing mean nothing.
  bool const isCompared = message.record->isPlain && message.name != "cards-until-cleaning";
  require(!isCompared || isSame(message.rows, plain.get(), watched.get()));
  require(!isCompared || isSame(message.rows, plain.get(), trailed.get()));
  requireTrail(trail, shown, "");
  require(observer.remarks().size() == follower.remarks().size());
}

void readEverything(std::uint8_t const* data, std::size_t size) {
  std::unique_ptr<char[]> const exact(new char[size]);
  std::copy_n(data, size, exact.get());
  if (std::find(exact.get(), exact.get() + size, '\0') != exact.get() + size) return;
  frame::Reply const reply(exact.get(), size);
  for (MessageRow const& message : replies()) {
    if (Element const root = reply.root(message.roots)) read(message, reply.tree(), root);
  }
}

/// A directive does not carry the action that it shows, and a request its values.
bool isComposedAsShown(std::string const& name) {
  return name == "capabilities" || name == "media" || name == "printer-id" ||
         name == "configuration";
}

/// Everything that may be chosen: all sections, all cards, and zeros for what was not said.
Value everything(MessageRow const& message) {
  Value choices = Value::object({{"zero_missing", true}});
  for (ChoiceRow const& choice : message.composing->choices) {
    if (choice.form != ChoiceRow::Form::words) continue;
    Value& list = choices.add(choice.name, Value::list());
    for (Word const& word : choice.words->words) list.append(word.text);
  }
  return choices;
}

void composeAgain(std::uint8_t const* data, std::size_t size) {
  for (MessageRow const& message : replies()) {
    std::string const name(message.name);
    if (message.composing == nullptr || !isComposedAsShown(name)) continue;
    kovra_fuzz::composeAgain(data, size, name, [&](Value const& record) {
      return compose(name, record, everything(message));
    });
  }
}

/// Puts pieces of the input into the texts of a value.
class Texts {
 public:
  explicit Texts(std::string const& input) : input_(input) {}

  void putInto(Value& value) {
    if (value.isText()) value = pieceFor(value.asText());
    for (Value& item : value.items()) putInto(item);
    for (Kovra::Member& member : value.members()) putInto(member.value());
  }

 private:
  std::string pieceFor(std::string_view text) {
    std::string const piece = input_.substr(std::min(at_, input_.size()), text.size());
    at_ += piece.size();
    return piece.size() == text.size() ? piece : std::string(text);
  }

  std::string const& input_;
  std::size_t at_ = 0;
};

void composeBothWays(MessageRow const& message, std::string const& input, std::uint32_t seed) {
  Value value = test::Generator(seed).record(message.rows);
  AnyRecord const record(*message.record);
  Composing const& composing = *message.composing;
  auto const fill = [&] {
    Problems problems;
    Assigned const result = composing.assign != nullptr
                                ? composing.assign(record.memory(), value, problems)
                                : assignRows(message.rows, record.get(), value, problems);
    require((result == Assigned::failed) == !problems.empty());
    return result;
  };
  require(fill() != Assigned::failed);
  Texts(input).putInto(value);
  fill();  // as far as it goes
  std::vector<std::vector<long>> const choices = test::choicesOf(message);
  std::vector<long> const& chosen = choices[seed % choices.size()];
  std::string text;
  Problems problems;
  bool const isWritten =
      composeRecord(message, record.get(), chosen, seed, nullptr, text, problems);
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

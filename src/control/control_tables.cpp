#include "control/control_tables.hpp"

#include <array>
#include <cstdio>
#include <cstring>

#include "frame/print.hpp"

namespace Kovra::control {

namespace {

template <class Type>
Type const& at(void const* place) {
  return *static_cast<Type const*>(place);
}

Vocabulary const& wordsOf(Row const& row) {
  return *static_cast<Vocabulary const*>(row.with);
}

char const* wordAt(Row const& row, void const* place) {
  return wordsOf(row).wordOr(at<int>(place), nullptr);
}

bool attribute(Row const& row, Sink& sink, char const* value) {
  if (value != nullptr) sink.attribute(row.element.data(), value);
  return true;
}

bool content(Sink& sink, char const* text) {
  if (text != nullptr) sink.text(text);
  return true;
}

bool writeWord(Row const& row, Sink& sink, void const* place, Circumstances, bool) {
  return attribute(row, sink, wordAt(row, place));
}

bool writeNumber(Row const& row, Sink& sink, void const* place, Circumstances, bool) {
  return attribute(row, sink, printWhole(at<int>(place)).data());
}

bool writeDecimal(Row const& row, Sink& sink, void const* place, Circumstances, bool) {
  return attribute(row, sink, printDecimals(at<float>(place), 1).data());
}

bool writeText(Row const& row, Sink& sink, void const* place, Circumstances, bool) {
  return attribute(row, sink, at<char const*>(place));
}

bool writeConstant(Row const& row, Sink& sink, void const*, Circumstances, bool) {
  return attribute(row, sink, static_cast<char const*>(row.with));
}

bool writeWordContent(Row const& row, Sink& sink, void const* place, Circumstances, bool) {
  return content(sink, wordAt(row, place));
}

bool writeTextContent(Row const&, Sink& sink, void const* place, Circumstances, bool) {
  return content(sink, at<char const*>(place));
}

}  // namespace

constinit Kind const wordAttributeKind = {
    .shape = Shape::keyword, .write = writeWord, .words = wordsOf};
constinit Kind const numberAttributeKind = {.shape = Shape::integer, .write = writeNumber};
constinit Kind const decimalAttributeKind = {.shape = Shape::real, .write = writeDecimal};
constinit Kind const textAttributeKind = {.shape = Shape::text, .write = writeText};
constinit Kind const constantAttributeKind = {.shape = Shape::text, .write = writeConstant};
constinit Kind const wordContentKind = {
    .shape = Shape::keyword, .write = writeWordContent, .words = wordsOf};
constinit Kind const textContentKind = {.shape = Shape::text, .write = writeTextContent};

Rows rowsOfDevice(std::string_view name) {
  if (name == "fan" || name == "sensor" || name == "clutch") return switched;
  if (name == "advance") return advance;
  if (name == "laminator") return laminator;
  if (name == "radio") return radio;
  return otherDevice;
}

void nameSpool(Command& command) {
  command.spool = scals.codeOf(command.text);
  if (command.spool >= 0) command.text = scalWords[0].text.data();
}

Circumstances circumstancesOf(Command const& command) {
  constexpr int cardMotor = 1;
  constexpr int ribbonMotor = 2;
  constexpr int headMotor = 3;
  constexpr int lowTorque = 1;
  constexpr int highTorque = 2;
  auto const where = [](bool holds, Circumstances circumstances) {
    return holds ? circumstances : Circumstances{};
  };
  return where(command.state == stateRunning, running) |
         where(command.state == stateWarmingUp, warmingUp) |
         where(command.motor == cardMotor || command.motor == headMotor, withDistance) |
         where(command.motor != ribbonMotor, withSpeed) |
         where(command.type == lowTorque || command.type == highTorque, withTorque) |
         where(command.spool >= 0, withSpool) |
         where(command.text != nullptr && std::strcmp(command.text, "scan") == 0, scanning);
}

}  // namespace Kovra::control

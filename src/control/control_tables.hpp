/// @file
/// Device commands as tables: the attributes and the text of the element that names the device.

#ifndef KOVRA_CONTROL_CONTROL_TABLES_HPP
#define KOVRA_CONTROL_CONTROL_TABLES_HPP

#include <string_view>
#include <type_traits>

#include "control/control_words.hpp"
#include "frame/field.hpp"

namespace Kovra::control {

using namespace frame;

/// What can be said in a command, to any device. Texts are the host's own, and null where there is
/// none.
struct Command {
  int motor = -1;
  int state = 0;
  int direction = 0;
  int speed = 0;
  float rpm = 0;
  int period = 0;
  int type = 0;
  float torque = 0;
  int spool = -1;
  int mode = -1;
  int antenna = 0;
  char const* cam = nullptr;
  char const* panel = nullptr;
  char const* text = nullptr;
};

/// What decides over attributes.
enum : Circumstances {
  running = 1,
  warmingUp = 2,
  withDistance = 4,  ///< the motors of the card and the head are told one, which is always none
  withSpeed = 8,     ///< all but the ribbon's motor
  withTorque = 16,
  withSpool = 32,
  scanning = 64,
};

// Kinds of attributes and texts, which are only written. What has no word, or is null, is left out.

extern Kind const wordAttributeKind;
extern Kind const numberAttributeKind;
extern Kind const decimalAttributeKind;  ///< with one decimal
extern Kind const textAttributeKind;
extern Kind const constantAttributeKind;
extern Kind const wordContentKind;
extern Kind const textContentKind;

namespace detail {

/// A part that only members of one type can be.
template <auto M, class Type>
constexpr Field<Command> part(std::string_view name, Kind const& kind, void const* with = nullptr) {
  static_assert(std::is_same_v<typename frame::Member<M>::Type, Type>,
                "this kind writes no members of this type");
  Row row = frame::detail::memberRow<M>(name, kind, with).row();
  row.member = name;  // what those call it who compose
  return writeOnly(Field<Command>(row));
}

/// A content is not needed.
constexpr Field<Command> content(Field<Command> const& part) {
  Row row = part.row();
  row.isNeeded = false;
  return Field<Command>(row);
}

}  // namespace detail

template <auto M, Vocabulary const& Words>
constexpr auto word(std::string_view name) {
  return detail::part<M, int>(name, wordAttributeKind, &Words);
}
template <auto M>
constexpr auto figure(std::string_view name) {
  return detail::part<M, int>(name, numberAttributeKind);
}
template <auto M>
constexpr auto decimal(std::string_view name) {
  return detail::part<M, float>(name, decimalAttributeKind);
}
template <auto M>
constexpr auto given(std::string_view name) {
  return detail::part<M, char const*>(name, textAttributeKind);
}
template <auto M, Vocabulary const& Words>
constexpr auto wordContent(std::string_view name) {
  return detail::content(detail::part<M, int>(name, wordContentKind, &Words));
}

constexpr Field<Command> constant(std::string_view name, char const* value) {
  return writeOnly(Field<Command>(Row{.element = name,
                                      .member = {},
                                      .place = &frame::detail::itself,
                                      .kind = &constantAttributeKind,
                                      .with = value}));
}

inline constexpr auto textContent =
    detail::content(detail::part<&Command::text, char const*>("text", textContentKind));

inline constexpr Table namedMotor = {
    word<&Command::state, switchStates>("state"),
    when(running, word<&Command::direction, directions>("direction")),
    when(running | withDistance, constant("distance", "0")),
    when(running | withSpeed, figure<&Command::speed>("speed")),
    wordContent<&Command::motor, motors>("motor"),
};

inline constexpr Table anyMotor = {
    word<&Command::state, motorModes>("state"),
    when(warmingUp, decimal<&Command::rpm>("rpm")),
    when(warmingUp, figure<&Command::period>("period")),
    when(running, word<&Command::direction, directions>("direction")),
    when(running, figure<&Command::speed>("speed")),
    // A code without a word is none, and so no name.
    wordContent<&Command::motor, motors>("motor"),
};

inline constexpr Table cam = {
    given<&Command::cam>("state"),
    textContent,
};

inline constexpr Table calibrate = {
    word<&Command::type, calibrations>("type"),
    when(withTorque, decimal<&Command::torque>("torque")),
    when(withTorque, decimal<&Command::rpm>("rpm")),
};

inline constexpr Table switched = {
    word<&Command::state, switchStates>("state"),
    textContent,
};

inline constexpr Table advance = {
    given<&Command::panel>("panel"),
    textContent,
};

inline constexpr Table laminator = {
    when(withSpool, word<&Command::spool, spools>("spool")),
    textContent,
};

inline constexpr Table radio = {
    when(scanning, constant("iterations", "1")),
    textContent,
};

inline constexpr Table rfid = {
    figure<&Command::antenna>("antenna"),
    wordContent<&Command::mode, rfidModes>("mode"),
};

/// Devices of other names.
inline constexpr Table otherDevice = {textContent};
inline constexpr Table otherReader = {
    wordContent<&Command::mode, rfidModes>("mode"),
};

// Codes of the vocabularies that decide on more than their word.
inline constexpr int stateRunning = 1;
inline constexpr int stateWarmingUp = 2;

/// The rows of a device that is told a text by its name.
Rows rowsOfDevice(std::string_view name);

/// What is not "on" is off, and what is not forward is reverse: of switches, and of motors by name.
constexpr int onOrOff(int state) {
  return state == stateRunning ? stateRunning : 0;
}
constexpr int forwardOrReverse(int direction) {
  return direction != 0 ? 1 : 0;
}

/// Puts the spool that a laminator's text says, or none, into the command.
void nameSpool(Command& command);

Circumstances circumstancesOf(Command const& command);

inline constexpr char const* controlRoots[] = {"device_control"};

}  // namespace Kovra::control

#endif

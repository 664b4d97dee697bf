/// @file
/// Device commands as tables: the attributes and the text of the element that names the device.

#ifndef KOVRA_CONTROL_CONTROL_TABLES_HPP
#define KOVRA_CONTROL_CONTROL_TABLES_HPP

#include <string_view>

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

template <auto M>
constexpr Field<Command> part(std::string_view name, Kind const& kind, void const* with = nullptr) {
  Row row = frame::detail::memberRow<M>(name, kind, with).row();
  row.member = name;  // what those call it who compose
  return writeOnly(Field<Command>(row));
}

constexpr Field<Command> constant(std::string_view name, char const* value) {
  return writeOnly(Field<Command>(Row{.element = name,
                                      .member = {},
                                      .place = &frame::detail::itself,
                                      .kind = &constantAttributeKind,
                                      .with = value}));
}

/// A content is not needed.
template <auto M>
constexpr Field<Command> content(std::string_view name, Kind const& kind,
                                 void const* with = nullptr) {
  Row row = part<M>(name, kind, with).row();
  row.isNeeded = false;
  return Field<Command>(row);
}

inline constexpr auto textContent = content<&Command::text>("text", textContentKind);

inline constexpr Table namedMotor = {
    part<&Command::state>("state", wordAttributeKind, &switchStates),
    when(running, part<&Command::direction>("direction", wordAttributeKind, &directions)),
    when(running | withDistance, constant("distance", "0")),
    when(running | withSpeed, part<&Command::speed>("speed", numberAttributeKind)),
    content<&Command::motor>("motor", wordContentKind, &motors),
};

inline constexpr Table anyMotor = {
    part<&Command::state>("state", wordAttributeKind, &motorModes),
    when(warmingUp, part<&Command::rpm>("rpm", decimalAttributeKind)),
    when(warmingUp, part<&Command::period>("period", numberAttributeKind)),
    when(running, part<&Command::direction>("direction", wordAttributeKind, &directions)),
    when(running, part<&Command::speed>("speed", numberAttributeKind)),
    // A code without a word is none, and so no name.
    content<&Command::motor>("motor", wordContentKind, &motors),
};

inline constexpr Table cam = {
    part<&Command::cam>("state", textAttributeKind),
    textContent,
};

inline constexpr Table calibrate = {
    part<&Command::type>("type", wordAttributeKind, &calibrations),
    when(withTorque, part<&Command::torque>("torque", decimalAttributeKind)),
    when(withTorque, part<&Command::rpm>("rpm", decimalAttributeKind)),
};

inline constexpr Table switched = {
    part<&Command::state>("state", wordAttributeKind, &switchStates),
    textContent,
};

inline constexpr Table advance = {
    part<&Command::panel>("panel", textAttributeKind),
    textContent,
};

inline constexpr Table laminator = {
    when(withSpool, part<&Command::spool>("spool", wordAttributeKind, &spools)),
    textContent,
};

inline constexpr Table radio = {
    when(scanning, constant("iterations", "1")),
    textContent,
};

inline constexpr Table rfid = {
    part<&Command::antenna>("antenna", numberAttributeKind),
    content<&Command::mode>("mode", wordContentKind, &rfidModes),
};

/// Devices of other names.
inline constexpr Table otherDevice = {textContent};
inline constexpr Table otherReader = {
    content<&Command::mode>("mode", wordContentKind, &rfidModes),
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

#include <string>
#include <string_view>

#include "control/kvxdevicecontrol_documents.hpp"
#include "face/compose_choice.hpp"
#include "frame/assign.hpp"
#include "frame/output.hpp"
#include "frame/typed/field.hpp"
#include "kovra.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

// Words that the classic operations have no codes for.

constexpr Word switchWords[] = {{"off", 0}, {"on", 1}};
constexpr Vocabulary switches{switchWords, Match::exact, -1};
static_assert(everyWordIsReachable(switches));

constexpr Word directionWords[] = {{"forward", 0}, {"reverse", 1}};
constexpr Vocabulary directions{directionWords, Match::exact, -1};
static_assert(everyWordIsReachable(directions));

/// The codes are places in `spools`.
constexpr Word spoolWords[] = {{"both", 0}, {"top", 1}, {"bottom", 2}};
constexpr Vocabulary spoolNames{spoolWords, Match::exact, -1};
static_assert(everyWordIsReachable(spoolNames));

/// What can be said in a command, to any device.
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
  char cam[256] = {};
  char panel[256] = {};
  char text[256] = {};
};

/// The cam's state is a text of the host's.
struct CamState : NeverWritten {
  template <class Record>
  static bool read(Element, Record&, Watch const&) {
    return false;
  }
  static Assigned assign(Command& command, std::string_view member, Value const& value,
                         Problem& problem) {
    if (member != "state") return Assigned::notMine;
    return assignText(command.cam, value, problem);
  }
  static void keys(Keys& keys) { keys.push_back("state"); }
};

constexpr Table motorMembers = {
    keyword<&Command::motor, motors>("motor"),
    keyword<&Command::state, motorModes>("state"),
    keyword<&Command::direction, directions>("direction"),
    number<&Command::speed>("speed"),
    number<&Command::rpm>("rpm"),
    number<&Command::period>("period"),
};
constexpr Table camMembers = {
    reading<Command, CamState>("state"),
    text<&Command::text>("text"),
};
constexpr Table calibrateMembers = {
    keyword<&Command::type, calibrations>("type"),
    number<&Command::torque>("torque"),
    number<&Command::rpm>("rpm"),
};
constexpr Table switchMembers = {
    keyword<&Command::state, switches>("state"),
    text<&Command::text>("text"),
};
constexpr Table advanceMembers = {
    text<&Command::panel>("panel"),
    text<&Command::text>("text"),
};
constexpr Table laminatorMembers = {
    keyword<&Command::spool, spoolNames>("spool"),
    text<&Command::text>("text"),
};
constexpr Table textMembers = {text<&Command::text>("text")};
constexpr Table rfidMembers = {
    keyword<&Command::mode, rfidModes>("mode"),
    number<&Command::antenna>("antenna"),
};

/// A device: what may be said to it, and how that becomes a document.
struct Device {
  std::string_view name;
  Assigned (*assign)(Command&, Value const&, Problem&);
  TiXmlElement* (*build)(TiXmlDocument&, char const* name, Command const&);
};

template <auto const& Table>
Assigned assign(Command& command, Value const& value, Problem& problem) {
  return assignAll(Table, command, value, problem);
}

TiXmlElement* buildAnyMotor(TiXmlDocument& document, char const*, Command const& command) {
  if (command.motor < 0) {
    return buildMotor(document, command.state, command.period, command.rpm, command.speed,
                      command.direction == 0);
  }
  return buildNamedMotor(document, command.state, command.direction, command.speed, command.motor);
}

/// A text that was not said is none, not an empty one.
char const* textOf(Command const& command) {
  return *command.text != '\0' ? command.text : nullptr;
}

TiXmlElement* buildByName(TiXmlDocument& document, char const* name, Command const& command) {
  bool const scal = command.spool >= 0 && command.spool < static_cast<int>(std::size(spools));
  return buildOther(document, name, scal ? spools[command.spool].text : textOf(command),
                    command.panel, command.state == 1);
}

constexpr Device devices[] = {
    {"motor", assign<motorMembers>, buildAnyMotor},
    {"cam", assign<camMembers>,
     [](TiXmlDocument& document, char const*, Command const& command) {
       return buildCam(document, textOf(command), command.cam);
     }},
    {"calibrate", assign<calibrateMembers>,
     [](TiXmlDocument& document, char const*, Command const& command) {
       return buildCalibrate(document, command.type, command.torque, command.rpm);
     }},
    {"fan", assign<switchMembers>, buildByName},
    {"sensor", assign<switchMembers>, buildByName},
    {"clutch", assign<switchMembers>, buildByName},
    {"advance", assign<advanceMembers>, buildByName},
    {"laminator", assign<laminatorMembers>, buildByName},
    {"radio", assign<textMembers>, buildByName},
    {"rfid", assign<rfidMembers>,
     [](TiXmlDocument& document, char const* name, Command const& command) {
       return buildRfid(document, name, command.mode, command.antenna);
     }},
};

/// What no attribute shows: the content of the element.
bool isContent(std::string_view member) {
  return member == "text" || member == "motor" || member == "mode";
}

/// Attributes that the document says by itself.
bool isConstant(std::string_view attribute) {
  return attribute == "distance" || attribute == "iterations";
}

/// Does the document say what the command says, no less and no more? What it does not take is a
/// mistake of whoever wrote it, and so is what was left out.
bool saysTheSame(TiXmlElement const& element, Value const& command, Problem& problem) {
  for (Kovra::Member const& member : command.members) {
    if (!isContent(member.name) && element.Attribute(member.name) == nullptr) {
      return refuse(problem, member.name, described(member.value),
                    "none: this command does not take it");
    }
  }
  for (TiXmlAttribute const* attribute = element.FirstAttribute(); attribute != nullptr;
       attribute = attribute->Next()) {
    if (!isConstant(attribute->Name()) && command.find(attribute->Name()) == nullptr) {
      return refuse(problem, attribute->Name(), "nothing", "a value: this command needs it");
    }
  }
  return true;
}

/// What only some devices need.
bool isComplete(Device const& device, Command const& command, Value const& value,
                Problem& problem) {
  bool const warmUp = command.state == motorModes.find("warm_up")->code;
  if (device.name == "motor" && command.motor >= 0 && warmUp) {
    return refuse(problem, "state", "\"warm_up\"", "off or on: no motor is warmed up by its name");
  }
  if (command.spool >= 0 && value.find("text") != nullptr) {
    return refuse(problem, "text", "a text beside a spool", "one of the two");
  }
  char const* const needed = device.name == "motor"       ? "state"
                             : device.name == "calibrate" ? "type"
                             : device.name == "rfid"      ? "mode"
                                                          : nullptr;
  if (needed != nullptr && value.find(needed) == nullptr) {
    return refuse(problem, needed, "nothing", "a value: this command needs it");
  }
  return true;
}

Device const* findDevice(std::string_view name) {
  for (Device const& device : devices) {
    if (device.name == name) return &device;
  }
  return nullptr;
}

}  // namespace

std::vector<std::string> controlledDevices() {
  std::vector<std::string> names;
  for (Device const& device : devices) names.emplace_back(device.name);
  return names;
}

Composition composeDeviceControl(std::string const& name, Value const& value) {
  Composition composition;
  Problem& problem = composition.problem;
  Device const* const device = findDevice(name);
  Command command;
  if (device == nullptr) {
    refuse(problem, "", "device \"" + name + '"', "a device that takes commands");
    return composition;
  }
  if (device->assign(command, value, problem) == Assigned::failed ||
      !isComplete(*device, command, value, problem)) {
    return composition;
  }
  TiXmlDocument document;
  TiXmlElement const* const root = device->build(document, name.c_str(), command);
  composition.composed = saysTheSame(*root->FirstChildElement(), value, problem);
  if (composition.composed) composition.text = printNarrow(document);
  return composition;
}

}  // namespace Kovra

#include "kvxdevicecontrol.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "control/kvxdevicecontrol_documents.hpp"
#include "frame/output.hpp"

namespace Kovra {

namespace {

using namespace frame;

constexpr char debugCopy[] = "/tmp/composedXML";

/// A document that was begun: its root, and the one child that names the device.
struct Command {
  TiXmlElement* root;
  TiXmlElement* device;
};

Command begin(TiXmlDocument& document, char const* device) {
  document.Clear();
  TiXmlElement* const root = beginDocument(document, "device_control");
  return {root, KVXHelper::AddTag(root, device)};
}

/// A null text is none.
void setText(TiXmlElement* element, char const* text) {
  if (text != nullptr) element->LinkEndChild(new TiXmlText(text));
}

/// A code without a word selects nothing.
char const* wordOrNull(Vocabulary const& words, int code) {
  std::string_view const word = words.wordOf(code);
  return word.empty() ? nullptr : word.data();
}

void setDecimal(TiXmlElement* element, char const* attribute, float value) {
  std::array<char, 64> text{};  // room for the largest float
  std::snprintf(text.data(), text.size(), "%.1f", static_cast<double>(value));
  KVXHelper::AddTagAttrib(element, attribute, text.data());
}

char const* onOff(bool on) {
  return on ? "on" : "off";
}
char const* direction(bool forward) {
  return forward ? "forward" : "reverse";
}

// Codes of the vocabularies that decide on more than their word.
constexpr int running = 1;
constexpr int warmingUp = 2;
constexpr int lowTorque = 1;
constexpr int highTorque = 2;
constexpr int ribbonMotor = 2;

/// The card's and the head's motors are told a distance, which is always none.
bool takesDistance(int motor) {
  return motor == 1 || motor == 3;
}

void setMotion(TiXmlElement* motorElement, bool forward, int speed, int motor) {
  KVXHelper::AddTagAttrib(motorElement, "direction", direction(forward));
  if (takesDistance(motor)) KVXHelper::AddTagAttrib(motorElement, "distance", "0");
  if (motor != ribbonMotor) KVXHelper::AddTagAttrib(motorElement, "speed", speed);
}

/// The attribute that goes with an element's name; the result is the text that goes with both.
char const* setByName(TiXmlElement* element, std::string_view name, char const* text,
                      char const* panel, bool on) {
  std::string_view const given = text != nullptr ? text : "";
  if (name == "fan" || name == "sensor" || name == "clutch") {
    KVXHelper::AddTagAttrib(element, "state", onOff(on));
  } else if (name == "advance") {
    KVXHelper::AddTagAttrib(element, "panel", panel);
  } else if (name == "laminator") {
    for (Spool const& spool : spools) {
      if (given != spool.text) continue;
      KVXHelper::AddTagAttrib(element, "spool", spool.spool);
      return scalText;  // which spool is the attribute's to say now
    }
  } else if (name == "radio" && given == "scan") {
    KVXHelper::AddTagAttrib(element, "iterations", 1);
  }
  return text;
}

}  // namespace

TiXmlElement* buildNamedMotor(TiXmlDocument& document, int state, int reverse, int speed,
                              int motor) {
  auto const [root, element] = begin(document, "motor");
  bool const on = state == running;
  KVXHelper::AddTagAttrib(element, "state", onOff(on));
  if (on) setMotion(element, reverse == 0, speed, motor);
  setText(element, wordOrNull(motors, motor));
  return root;
}

TiXmlElement* buildMotor(TiXmlDocument& document, int mode, int period, float rpm, int speed,
                         bool forward) {
  auto const [root, element] = begin(document, "motor");
  KVXHelper::AddTagAttrib(element, "state", wordOrNull(motorModes, mode));
  if (mode == warmingUp) {
    setDecimal(element, "rpm", rpm);
    KVXHelper::AddTagAttrib(element, "period", period);
  } else if (mode == running) {
    KVXHelper::AddTagAttrib(element, "direction", direction(forward));
    KVXHelper::AddTagAttrib(element, "speed", speed);
  }
  return root;
}

TiXmlElement* buildCam(TiXmlDocument& document, char const* text, char const* state) {
  auto const [root, element] = begin(document, "cam");
  KVXHelper::AddTagAttrib(element, "state", state);
  setText(element, text);
  return root;
}

TiXmlElement* buildCalibrate(TiXmlDocument& document, int type, float torque, float rpm) {
  auto const [root, element] = begin(document, "calibrate");
  KVXHelper::AddTagAttrib(element, "type", wordOrNull(calibrations, type));
  if (type == lowTorque || type == highTorque) {
    setDecimal(element, "torque", torque);
    setDecimal(element, "rpm", rpm);
  }
  return root;
}

TiXmlElement* buildOther(TiXmlDocument& document, char const* name, char const* text,
                         char const* panel, bool on) {
  auto const [root, element] = begin(document, name);
  setText(element, setByName(element, name, text, panel, on));
  return root;
}

TiXmlElement* buildRfid(TiXmlDocument& document, char const* name, int mode, int antenna) {
  auto const [root, element] = begin(document, name);
  if (std::string_view(name) == "rfid") KVXHelper::AddTagAttrib(element, "antenna", antenna);
  setText(element, wordOrNull(rfidModes, mode));
  return root;
}

}  // namespace Kovra

KVXDeviceControl::KVXDeviceControl() : root_(nullptr) {}
KVXDeviceControl::~KVXDeviceControl() = default;

bool KVXDeviceControl::RunMotorCommand(int state, int reverse, int speed, int motor, char* out,
                                       int outLen) {
  root_ = Kovra::buildNamedMotor(*this, state, reverse, speed, motor);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::RunMotorCommand(char*, int mode, int period, float rpm, int speed,
                                       bool forward, char* out, int outLen) {
  root_ = Kovra::buildMotor(*this, mode, period, rpm, speed, forward);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::RunCamCommand(char* text, char* state, char* out, int outLen) {
  root_ = Kovra::buildCam(*this, text, state);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::RunCalibrateCommand(char*, int kind, float torque, float rpm, char* out,
                                           int outLen) {
  root_ = Kovra::buildCalibrate(*this, kind, torque, rpm);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::RunOtherCommands(char* name, char* text, char* panel, bool on, char* out,
                                        int outLen) {
  if (name == nullptr) return false;
  root_ = Kovra::buildOther(*this, name, text, panel, on);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::RunRFIDCommands(char* name, int mode, int antenna, char* out, int outLen) {
  if (name == nullptr) return false;
  root_ = Kovra::buildRfid(*this, name, mode, antenna);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::saveJob(char* out, int outLen) {
  if (out == nullptr) return false;
  Kovra::frame::saveDebugCopy(*this, Kovra::debugCopy);
  return Kovra::frame::printNarrow(*this, out, outLen);
}

bool KVXDeviceControl::saveJob(char* path) {
  return Kovra::frame::saveTo(*this, path);
}

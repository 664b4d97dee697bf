#include "kvxdevicecontrol.h"

#include <string_view>

#include "control/control_tables.hpp"
#include "frame/output.hpp"

namespace {

using namespace Kovra::control;

constexpr char debugCopy[] = "/tmp/composedXML";

/// Builds the document in an empty one: a root with one child, which names the device.
TiXmlElement* build(TiXmlDocument& document, char const* device, Rows rows,
                    Command const& command) {
  document.Clear();
  TiXmlElement* const root = beginDocument(document, controlRoots[0]);
  TreeSink sink(*root);
  writeRowsBelow(sink, device, rows, &command, circumstancesOf(command));
  return root;
}

}  // namespace

KVXDeviceControl::KVXDeviceControl() : root_(nullptr) {}
KVXDeviceControl::~KVXDeviceControl() = default;

bool KVXDeviceControl::RunMotorCommand(int state, int reverse, int speed, int motor, char* out,
                                       int outLen) {
  Command command;
  command.motor = motor;
  command.state = onOrOff(state);
  command.direction = forwardOrReverse(reverse);
  command.speed = speed;
  root_ = build(*this, "motor", namedMotor, command);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::RunMotorCommand(char*, int mode, int period, float rpm, int speed,
                                       bool forward, char* out, int outLen) {
  Command command;
  command.state = mode;
  command.direction = forward ? 0 : 1;
  command.speed = speed;
  command.rpm = rpm;
  command.period = period;
  root_ = build(*this, "motor", anyMotor, command);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::RunCamCommand(char* text, char* state, char* out, int outLen) {
  Command command;
  command.cam = state;
  command.text = text;
  root_ = build(*this, "cam", cam, command);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::RunCalibrateCommand(char*, int kind, float torque, float rpm, char* out,
                                           int outLen) {
  Command command;
  command.type = kind;
  command.torque = torque;
  command.rpm = rpm;
  root_ = build(*this, "calibrate", calibrate, command);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::RunOtherCommands(char* name, char* text, char* panel, bool on, char* out,
                                        int outLen) {
  if (name == nullptr) return false;
  Command command;
  command.state = on ? stateRunning : 0;
  command.panel = panel;
  command.text = text;
  Rows const rows = rowsOfDevice(name);
  if (rows.data() == Rows(laminator).data()) nameSpool(command);
  root_ = build(*this, name, rows, command);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::RunRFIDCommands(char* name, int mode, int antenna, char* out, int outLen) {
  if (name == nullptr) return false;
  Command command;
  command.mode = mode;
  command.antenna = antenna;
  bool const isRfid = std::string_view(name) == "rfid";
  root_ = build(*this, name, isRfid ? Rows(rfid) : Rows(otherReader), command);
  return saveJob(out, outLen);
}

bool KVXDeviceControl::saveJob(char* out, int outLen) {
  if (out == nullptr) return false;
  saveDebugCopy(*this, debugCopy);
  return printNarrow(*this, out, outLen);
}

bool KVXDeviceControl::saveJob(char* path) {
  return saveTo(*this, path);
}

#include "control/control_messages.hpp"

#include <algorithm>
#include <iterator>
#include <string>

#include "control/control_tables.hpp"

namespace Kovra {

namespace {

using namespace control;

/// A command as people say it, of words in place of codes.
struct Said {
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

/// The members that are said; none is read or written here.
template <auto M>
constexpr Field<Said> said(Field<Said> const& field, std::string_view name = memberName<M>) {
  Row row = field.row();
  row.member = name;
  return readOnly(neverRead(Field<Said>(row)));
}
template <auto M, Vocabulary const& Words>
constexpr auto saidWord() {
  return said<M>(keyword<M, Words>(""));
}
template <auto M>
constexpr auto saidNumber() {
  return said<M>(number<M>(""));
}
constexpr auto saidText = said<&Said::text>(text<&Said::text>(""));

constexpr Table motorMembers = {
    saidWord<&Said::motor, motors>(),
    saidWord<&Said::state, motorModes>(),
    saidWord<&Said::direction, directions>(),
    saidNumber<&Said::speed>(),
    saidNumber<&Said::rpm>(),
    saidNumber<&Said::period>(),
};
constexpr Table camMembers = {
    // The cam's state is a text of the host's.
    said<&Said::cam>(text<&Said::cam>(""), "state"),
    saidText,
};
constexpr Table calibrateMembers = {
    saidWord<&Said::type, calibrations>(),
    saidNumber<&Said::torque>(),
    saidNumber<&Said::rpm>(),
};
constexpr Table switchMembers = {saidWord<&Said::state, switchStates>(), saidText};
constexpr Table advanceMembers = {said<&Said::panel>(text<&Said::panel>("")), saidText};
constexpr Table laminatorMembers = {saidWord<&Said::spool, spools>(), saidText};
constexpr Table radioMembers = {saidText};
constexpr Table rfidMembers = {saidWord<&Said::mode, rfidModes>(), saidNumber<&Said::antenna>()};

/// A text that was not said is none, not an empty one.
Command commandOf(Said const& said) {
  return {.motor = said.motor,
          .state = said.state,
          .direction = forwardOrReverse(said.direction),
          .speed = said.speed,
          .rpm = said.rpm,
          .period = said.period,
          .type = said.type,
          .torque = said.torque,
          .spool = said.spool,
          .mode = said.mode,
          .antenna = said.antenna,
          .cam = said.cam,
          .panel = said.panel,
          .text = *said.text != '\0' ? said.text : nullptr};
}

bool refuse(Problems& problems, char const* path, char const* found, char const* expected) {
  problems.add(path, found, expected);
  return false;
}

/// A motor by its name and one without are two commands.
Rows motorRows(Said const& said) {
  return said.motor >= 0 ? Rows(namedMotor) : Rows(anyMotor);
}

bool checkMotor(Said const& said, Value const&, Problems& problems) {
  if (said.motor < 0 || said.state != stateWarmingUp) return true;
  return refuse(problems, "state", "\"warm_up\"", "off or on: no motor is warmed up by its name");
}

bool checkLaminator(Said const& said, Value const& value, Problems& problems) {
  if (said.spool < 0 || value.find("text") == nullptr) return true;
  return refuse(problems, "text", "a text beside a spool", "one of the two");
}

bool checkNothing(Said const&, Value const&, Problems&) {
  return true;
}

template <auto const& Table>
Rows rowsAlone(Said const&) {
  return Table;
}

/// A device: its rows, and what its members have to agree on.
template <Fixed Device, Rows (*RowsOf)(Said const&),
          bool (*Check)(Said const&, Value const&, Problems&) = checkNothing>
struct Writer {
  static bool check(void const* record, Value const& value, Problems& problems) {
    return Check(*static_cast<Said const*>(record), value, problems);
  }

  static Rows written(void const* record) { return RowsOf(*static_cast<Said const*>(record)); }

  static bool write(Sink& sink, void const* record, Chosen, Circumstances) {
    auto const& said = *static_cast<Said const*>(record);
    Command const command = completed(said);
    writeRowsBelow(sink, Device.text, RowsOf(said), &command, circumstancesOf(command));
    return true;
  }

 private:
  static Command completed(Said const& said) {
    Command command = commandOf(said);
    Rows const rows = RowsOf(said);
    bool const isSwitch = rows.data() == Rows(switched).data();
    if (isSwitch || said.motor >= 0) command.state = onOrOff(said.state);
    if (std::string_view(Device) != "laminator") return command;
    if (said.spool >= 0) command.text = scals.wordOr(said.spool, nullptr);
    nameSpool(command);
    return command;
  }
};

using Motor = Writer<"motor", motorRows, checkMotor>;
using Cam = Writer<"cam", rowsAlone<cam>>;
using Calibrate = Writer<"calibrate", rowsAlone<calibrate>>;
using Fan = Writer<"fan", rowsAlone<switched>>;
using Sensor = Writer<"sensor", rowsAlone<switched>>;
using Clutch = Writer<"clutch", rowsAlone<switched>>;
using Advance = Writer<"advance", rowsAlone<advance>>;
using Laminator = Writer<"laminator", rowsAlone<laminator>, checkLaminator>;
using Radio = Writer<"radio", rowsAlone<radio>>;
using Rfid = Writer<"rfid", rowsAlone<rfid>>;

// What there is to say of the members.

constexpr MemberTitle onOff = {"state", "on or off"};
constexpr MemberTitle contentTitle = {"text", "The element's text"};

constexpr MemberTitle motorTitles[] = {
    {"motor", "card_feed, card_x, ribbon, head_lift, options or flipper"},
    {"state", "on, off or, without a motor's name, warm_up"},
    {"direction", "forward or reverse, for state on"},
    {"speed", "For state on; the ribbon has none"},
    {"rpm", "For state warm_up"},
    {"period", "For state warm_up"},
};
constexpr MemberTitle camTitles[] = {{"state", "Its state"}, contentTitle};
constexpr MemberTitle calibrateTitles[] = {
    {"type", "low, high, calc, mot_cur_off, mot_cur_on or save_cal"},
    {"torque", "For low and high"},
    {"rpm", "For low and high"},
};
constexpr MemberTitle switchTitles[] = {onOff, contentTitle};
constexpr MemberTitle advanceTitles[] = {{"panel", "The panel"}, contentTitle};
constexpr MemberTitle laminatorTitles[] = {{"spool", "both, top or bottom: the command is scal"},
                                           contentTitle};
constexpr MemberTitle radioTitles[] = {{"text", "scan, or another command"}};
constexpr MemberTitle rfidTitles[] = {{"mode", "off, on or modulate"}, {"antenna", "Its number"}};

constexpr std::string_view needsState[] = {"state"};
constexpr std::string_view needsType[] = {"type"};
constexpr std::string_view needsMode[] = {"mode"};

constexpr CommandGroup group = {
    .title = "A command for a device",
    .help = R"(Examples:
  kovra compose device-control motor --motor card_x --state on \
      --direction forward --speed 50
  kovra compose device-control laminator --spool top)",
};

template <class Device>
constexpr Composing command(std::string_view command, std::string_view title,
                            std::span<MemberTitle const> titles,
                            std::span<std::string_view const> required = {}) {
  return {.command = command,
          .title = title,
          .help = {},
          .root = controlRoots[0],
          .recordOf = {},
          .required = required,
          .group = &group,
          .commandMembers = titles,
          .check = Device::check,
          .written = Device::written,
          .write = Device::write};
}

constexpr Composing motorCommand =
    command<Motor>("device-control motor", "Run, stop or warm up a motor", motorTitles, needsState);
constexpr Composing camCommand = command<Cam>("device-control cam", "Set the cam", camTitles);
constexpr Composing calibrateCommand =
    command<Calibrate>("device-control calibrate", "Calibrate", calibrateTitles, needsType);
constexpr Composing fanCommand = command<Fan>("device-control fan", "Switch a fan", switchTitles);
constexpr Composing sensorCommand =
    command<Sensor>("device-control sensor", "Switch a sensor", switchTitles);
constexpr Composing clutchCommand =
    command<Clutch>("device-control clutch", "Switch the clutch", switchTitles);
constexpr Composing advanceCommand =
    command<Advance>("device-control advance", "Advance to a panel", advanceTitles);
constexpr Composing laminatorCommand =
    command<Laminator>("device-control laminator", "Send the laminator a command", laminatorTitles);
constexpr Composing radioCommand =
    command<Radio>("device-control radio", "Send the radio a command", radioTitles);
constexpr Composing rfidCommand =
    command<Rfid>("device-control rfid", "Drive an RFID antenna", rfidTitles, needsMode);

template <std::size_t N>
constexpr MessageRow request(std::string_view name, std::string_view title,
                             Table<Said, N> const& members, Composing const& composing) {
  return {.name = name,
          .title = title,
          .roots = {},
          .record = &recordType<Said>,
          .rows = members,
          .read = nullptr,
          .composing = &composing};
}

constexpr MessageRow lines[] = {
    request("device-control-motor", "a command for a motor", motorMembers, motorCommand),
    request("device-control-cam", "a command for the cam", camMembers, camCommand),
    request("device-control-calibrate", "a command to calibrate", calibrateMembers,
            calibrateCommand),
    request("device-control-fan", "a command for a fan", switchMembers, fanCommand),
    request("device-control-sensor", "a command for a sensor", switchMembers, sensorCommand),
    request("device-control-clutch", "a command for the clutch", switchMembers, clutchCommand),
    request("device-control-advance", "a command to advance", advanceMembers, advanceCommand),
    request("device-control-laminator", "a command for the laminator", laminatorMembers,
            laminatorCommand),
    request("device-control-radio", "a command for the radio", radioMembers, radioCommand),
    request("device-control-rfid", "a command for an RFID antenna", rfidMembers, rfidCommand),
};

/// A title of what is no member would be lost.
constexpr bool hasTitlesOfItsMembers(MessageRow const& line) {
  std::span<MemberTitle const> titles = line.composing->commandMembers;
  for (Row const& row : line.rows) {
    if (!titles.empty() && titles.front().member == row.member) titles = titles.subspan(1);
  }
  return titles.empty();
}
static_assert(std::all_of(std::begin(lines), std::end(lines), hasTitlesOfItsMembers),
              "titles stand in the order of the members, each of which is there");

}  // namespace

std::span<frame::MessageRow const> controlMessages() {
  return lines;
}

}  // namespace Kovra

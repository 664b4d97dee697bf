// `kovra compose device-control DEVICE`: a command of words and numbers, with options named after
// the attributes.

#include <vector>

#include "compose.hpp"
#include "output.hpp"

namespace Kovra::tool {

namespace {

enum class Type { text, integer, real };

struct Option {
  char const* name;
  Type type;
  char const* description;
};

struct Device {
  char const* name;
  char const* description;
  std::vector<Option> options;
};

std::vector<Device> devices() {
  Option const onOff = {"state", Type::text, "on or off"};
  Option const content = {"text", Type::text, "The element's text"};
  return {
      {"motor",
       "Run, stop or warm up a motor",
       {{"motor", Type::text, "card_feed, card_x, ribbon, head_lift, options or flipper"},
        {"state", Type::text, "on, off or, without a motor's name, warm_up"},
        {"direction", Type::text, "forward or reverse, for state on"},
        {"speed", Type::integer, "For state on; the ribbon has none"},
        {"rpm", Type::real, "For state warm_up"},
        {"period", Type::integer, "For state warm_up"}}},
      {"cam", "Set the cam", {{"state", Type::text, "Its state"}, content}},
      {"calibrate",
       "Calibrate",
       {{"type", Type::text, "low, high, calc, mot_cur_off, mot_cur_on or save_cal"},
        {"torque", Type::real, "For low and high"},
        {"rpm", Type::real, "For low and high"}}},
      {"fan", "Switch a fan", {onOff, content}},
      {"sensor", "Switch a sensor", {onOff, content}},
      {"clutch", "Switch the clutch", {onOff, content}},
      {"advance", "Advance to a panel", {{"panel", Type::text, "The panel"}, content}},
      {"laminator",
       "Send the laminator a command",
       {{"spool", Type::text, "both, top or bottom: the command is scal"}, content}},
      {"radio", "Send the radio a command", {{"text", Type::text, "scan, or another command"}}},
      {"rfid",
       "Drive an RFID antenna",
       {{"mode", Type::text, "off, on or modulate"}, {"antenna", Type::integer, "Its number"}}},
  };
}

/// Adds what the option was given to the command.
void addOption(CLI::App& app, Option const& option, std::shared_ptr<Value> const& command) {
  auto const add = [command, name = std::string(option.name)](Value value) {
    Member& member = command->members.emplace_back();
    member.name = name;
    member.value = std::move(value);
  };
  std::string const flag = "--" + std::string(option.name);
  Value value;
  switch (option.type) {
    case Type::text:
      value.kind = Value::Kind::text;
      app.add_option_function<std::string>(
             flag,
             [add, value](std::string const& given) mutable {
               value.text = given;
               add(value);
             },
             option.description)
          ->option_text("WORD");
      return;
    case Type::integer:
      value.kind = Value::Kind::integer;
      app.add_option_function<long>(
             flag,
             [add, value](long given) mutable {
               value.integer = given;
               add(value);
             },
             option.description)
          ->option_text("NUMBER");
      return;
    case Type::real:
      value.kind = Value::Kind::real;
      app.add_option_function<double>(
             flag,
             [add, value](double given) mutable {
               value.real = given;
               add(value);
             },
             option.description)
          ->option_text("NUMBER");
      return;
  }
}

/// What does not fit is a mistake on the command line.
void composeCommand(std::string const& device, Value const& command) {
  Composition composition = composeDeviceControl(device, command);
  if (!composition.composed) {
    throw CLI::ValidationError("--" + composition.problem.description());
  }
  print(composition.text);
}

}  // namespace

void addComposeDeviceControl(CLI::App& compose) {
  CLI::App* const control = compose.add_subcommand("device-control", "A command for a device");
  control->require_subcommand(1);
  control->footer(R"(Examples:
  kovra compose device-control motor --motor card_x --state on \
      --direction forward --speed 50
  kovra compose device-control laminator --spool top)");
  for (Device const& device : devices()) {
    CLI::App* const app = control->add_subcommand(device.name, device.description);
    auto const command = std::make_shared<Value>();
    command->kind = Value::Kind::record;
    for (Option const& option : device.options) addOption(*app, option, command);
    app->callback([command, name = std::string(device.name)] { composeCommand(name, *command); });
  }
}

}  // namespace Kovra::tool

// Sensor status.

#include "frame/typed/reply.hpp"
#include "kvxstatusparser.h"
#include "status/status_replies.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

/// Flags are deliberately negative: any word but the one that clears it, also a misspelling, is an
/// open door or a blocked sensor.
constexpr Table sensorStates = {
    text<&_SENSOR::ribbon_takeup_encoder>("ribbon_takeup_encoder"),
    flagUnless<&_SENSOR::door_open, "no">("door_open"),
    flagUnless<&_SENSOR::flipoptions_door_open, "no">("flipoptions_door_open"),
    flagUnless<&_SENSOR::flipper_card_blocked, "no">("flipper_card_blocked"),
    flagUnless<&_SENSOR::flipper_rotation_blocked, "no">("flipper_rotation_blocked"),
    flagUnless<&_SENSOR::cardout_sensor_set, "no">("cardout_sensor_set"),
    flagUnless<&_SENSOR::option_mag_blocked, "no">("option_mag_blocked"),
    flagUnless<&_SENSOR::option_cam_blocked, "no">("option_cam_blocked"),
    flagUnless<&_SENSOR::card_exit_blocked, "no">("card_exit_blocked"),
    flagUnless<&_SENSOR::card_edge_blocked, "no">("card_edge_blocked"),
    text<&_SENSOR::tricolor_state>("tricolor_state"),
    flagUnless<&_SENSOR::head_cam_blocked, "no">("head_cam_blocked"),
    number<&_SENSOR::tricolor_error>("tricolor_error"),
    flagUnless<&_SENSOR::printhead_fan, "off">("printhead_fan"),
};

constexpr Table sensorValues = {
    number<&_SENSOR::voltage_24>("voltage_24"),
    number<&_SENSOR::voltage_raw>("voltage_raw"),
    number<&_SENSOR::mag_track_1>("mag_track_1"),
    number<&_SENSOR::mag_track_2>("mag_track_2"),
    number<&_SENSOR::mag_track_3>("mag_track_3"),
    number<&_SENSOR::print_head_temp>("print_head_temp"),
    number<&_SENSOR::mag_head_type>("mag_head_type"),
    number<&_SENSOR::ribbon_bemf>("ribbon_bemf"),
    number<&_SENSOR::tricolor_any>("tricolor_any"),
    number<&_SENSOR::tricolor_red>("tricolor_red"),
    number<&_SENSOR::tricolor_green>("tricolor_green"),
    number<&_SENSOR::tricolor_blue>("tricolor_blue"),
    number<&_SENSOR::platen_temp128>("platen_temp128"),
    number<&_SENSOR::RLEC>("RLEC"),
    number<&_SENSOR::RSEC>("RSEC"),
    number<&_SENSOR::RLDC>("RLDC"),
    number<&_SENSOR::RSDC>("RSDC"),
    number<&_SENSOR::RGSU>("RGSU"),
    number<&_SENSOR::RGSD>("RGSD"),
};

constexpr Table sensorStatus = {
    group<_SENSOR, sensorStates>("sensor_states"),
    group<_SENSOR, sensorValues>("sensor_values"),
};

constexpr char const* sensorStatusRoots[] = {"get_sensor_status"};
using SensorStatusReading = TableReading<sensorStatus>;

constexpr ReplyReader replies[] = {
    reader<_SENSOR, SensorStatusReading>("sensor-status", "doors, blockages, fan and raw readings",
                                         sensorStatusRoots),
};

}  // namespace

std::span<frame::ReplyReader const> sensorStatusReplies() {
  return replies;
}

bool KVXStatusParser::ParseSensorStatus(wchar_t const& text, int len, _SENSOR& out) {
  return readReply<SensorStatusReading>(text, len, sensorStatusRoots, out);
}

bool KVXStatusParser::parseSensorStatus(TiXmlElement* root, _SENSOR& out) {
  return walk(root, sensorStatus, out);
}

bool KVXStatusParser::parseSensorState(TiXmlElement* states, _SENSOR& out) {
  return walk(states, sensorStates, out);
}

bool KVXStatusParser::parseSensorValue(TiXmlElement* values, _SENSOR& out) {
  return walk(values, sensorValues, out);
}

}  // namespace Kovra

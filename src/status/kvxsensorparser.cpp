#include "kvxsensorparser.h"

#include "frame/typed/reply.hpp"
#include "status/status_replies.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

// Sensor states: words, kept as they are.

constexpr Table sensorState = {
    text<&_KVPrinterSensorInfo::ribbon_takeup_encoder>("ribbon_takeup_encoder"),
    text<&_KVPrinterSensorInfo::ribbon_payout_encoder>("ribbon_payout_encoder"),
    text<&_KVPrinterSensorInfo::door_open>("door_open"),
    text<&_KVPrinterSensorInfo::feeder_door_open>("feeder_door_open"),
    text<&_KVPrinterSensorInfo::flipper_sensor_blocked>("flipper_sensor_blocked"),
    text<&_KVPrinterSensorInfo::card_in_flipper>("card_in_flipper"),
    text<&_KVPrinterSensorInfo::out_of_cards>("out_of_cards"),
    text<&_KVPrinterSensorInfo::option_cam_state>("option_cam_state"),
    text<&_KVPrinterSensorInfo::option_card_motion>("option_card_motion"),
    text<&_KVPrinterSensorInfo::option_mag_blocked>("option_mag_blocked"),
    text<&_KVPrinterSensorInfo::internal_encoder_present>("internal_encoder_present"),
    text<&_KVPrinterSensorInfo::external_encoder_present>("external_encoder_present"),
    text<&_KVPrinterSensorInfo::uhf_encoder_present>("uhf_encoder_present"),
    text<&_KVPrinterSensorInfo::pusher_plate_blocked>("pusher_plate_blocked"),
    text<&_KVPrinterSensorInfo::feeder_mode>("feeder_mode"),
    text<&_KVPrinterSensorInfo::option_cam_blocked>("option_cam_blocked"),
    text<&_KVPrinterSensorInfo::card_edge_blocked>("card_edge_blocked"),
    text<&_KVPrinterSensorInfo::tricolor_state>("tricolor_state"),
    text<&_KVPrinterSensorInfo::head_cam_blocked>("head_cam_blocked"),
    text<&_KVPrinterSensorInfo::printhead_fan>("printhead_fan"),
};

constexpr Table sensorStates = {
    group<_KVPrinterSensorInfo, sensorState>("sensor_states"),
};

// Sensor information: readings, area by area.

template <auto M>
constexpr auto sensor(std::string_view element) {
  return attribute<M, "reading">(element);
}

constexpr Table inputOutput = {
    sensor<&KVSensorInfo::atm_card_present>("atm_card_present"),
    sensor<&KVSensorInfo::input_feeder>("input_feeder"),
    sensor<&KVSensorInfo::output_hopper>("output_hopper"),
};

constexpr Table cardPath = {
    sensor<&KVSensorInfo::synchro_card>("synchro_card"),
    sensor<&KVSensorInfo::synchro_mag>("synchro_mag"),
    sensor<&KVSensorInfo::synchro_contact>("synchro_contact"),
    sensor<&KVSensorInfo::synchro_contactless>("synchro_contactless"),
    sensor<&KVSensorInfo::flipper_card_present>("flipper_card_present"),
};

constexpr Table doors = {
    sensor<&KVSensorInfo::head_open>("head_open"),
    sensor<&KVSensorInfo::input_media_open>("input_media_open"),
    sensor<&KVSensorInfo::output_media_open>("output_media_open"),
};

constexpr Table positioning = {
    sensor<&KVSensorInfo::head_down>("head_down"),
    sensor<&KVSensorInfo::flipper_ready_in>("flipper_ready_in"),
    sensor<&KVSensorInfo::flipper_ready_out>("flipper_ready_out"),
};

constexpr Table ribbonColor = {
    sensor<&KVSensorInfo::led_1>("led_1"),
    sensor<&KVSensorInfo::led_2>("led_2"),
    sensor<&KVSensorInfo::led_3>("led_3"),
};

constexpr Table ribbon = {
    sensor<&KVSensorInfo::encoder>("encoder"),
    attribute<&KVSensorInfo::ribbon_sync_detection, "adc_value">("ribbon_sync_detection"),
    group<KVSensorInfo, ribbonColor>("color"),
};

constexpr Table intermediateMedia = {
    sensor<&KVSensorInfo::film_sensor>("film_sensor"),
    attribute<&KVSensorInfo::supply_motor_pulses, "count">("supply_motor_pulses"),
    attribute<&KVSensorInfo::takeup_encoder_pulses, "count">("takeup_encoder_pulses"),
};

constexpr Table webMedia = {
    group<KVSensorInfo, ribbon>("ribbon"),
    group<KVSensorInfo, intermediateMedia>("intm"),
};

constexpr Table sensorInfo = {
    group<KVSensorInfo, inputOutput>("input_output"),
    group<KVSensorInfo, cardPath>("card_path"),
    group<KVSensorInfo, doors>("doors"),
    group<KVSensorInfo, positioning>("positioning"),
    group<KVSensorInfo, webMedia>("web_media"),
};

constexpr char const* sensorRoots[] = {"get_sensor_status"};

using SensorStatesReading = TableReading<sensorStates>;
using SensorInfoReading = TableReading<sensorInfo>;

constexpr ReplyReader replies[] = {
    reader<_KVPrinterSensorInfo, SensorStatesReading>(
        "sensor-states", "states of the switches and detectors", sensorRoots),
    reader<KVSensorInfo, SensorInfoReading>("sensor-information",
                                            "readings of the sensors, area by area", sensorRoots),
};

}  // namespace

std::span<frame::ReplyReader const> sensorReplies() {
  return replies;
}

KVXSensorParser::KVXSensorParser() = default;
KVXSensorParser::~KVXSensorParser() = default;

bool KVXSensorParser::ParseSensorStates(char const* text, int, _KVPrinterSensorInfo& out) {
  return readNarrowReply<SensorStatesReading>(text, sensorRoots, out);
}

bool KVXSensorParser::getSensorStates(TiXmlElement* root, _KVPrinterSensorInfo& out) {
  return walk(root, sensorStates, out);
}

bool KVXSensorParser::getSensorState(TiXmlElement* states, _KVPrinterSensorInfo& out) {
  return walk(states, sensorState, out);
}

bool KVXSensorParser::ParseSensorInfo(wchar_t const& text, int length, KVSensorInfo& out) {
  return readReply<SensorInfoReading>(text, length, sensorRoots, out);
}

bool KVXSensorParser::parseSensorInfo(TiXmlElement* root, KVSensorInfo& out) {
  return walk(root, sensorInfo, out);
}

bool KVXSensorParser::getInputOutputSensorInfo(TiXmlElement* area, KVSensorInfo& out) {
  return walk(area, inputOutput, out);
}

bool KVXSensorParser::getCardPathSensorInfo(TiXmlElement* area, KVSensorInfo& out) {
  return walk(area, cardPath, out);
}

bool KVXSensorParser::getDoorSensorInfo(TiXmlElement* area, KVSensorInfo& out) {
  return walk(area, doors, out);
}

bool KVXSensorParser::getPositioningSensorInfo(TiXmlElement* area, KVSensorInfo& out) {
  return walk(area, positioning, out);
}

bool KVXSensorParser::getWebMediaSensorInfo(TiXmlElement* area, KVSensorInfo& out) {
  return walk(area, webMedia, out);
}

bool KVXSensorParser::getRibbonSensorInfo(TiXmlElement* element, KVSensorInfo& out) {
  return walk(element, ribbon, out);
}

bool KVXSensorParser::getRibbonColorSensorInfo(TiXmlElement* color, KVSensorInfo& out) {
  return walk(color, ribbonColor, out);
}

bool KVXSensorParser::getInTMSensorInfo(TiXmlElement* intm, KVSensorInfo& out) {
  return walk(intm, intermediateMedia, out);
}

}  // namespace Kovra

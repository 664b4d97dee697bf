#include "kvxsensorparser.h"

#include "frame/message.hpp"
#include "status/status_tables.hpp"

namespace Kovra {

using namespace status;

KVXSensorParser::KVXSensorParser() = default;
KVXSensorParser::~KVXSensorParser() = default;

bool KVXSensorParser::ParseSensorStates(char const* text, int, _KVPrinterSensorInfo& out) {
  return readNarrowReply(text, sensorStatusRoots, detectors, out);
}

bool KVXSensorParser::getSensorStates(TiXmlElement* root, _KVPrinterSensorInfo& out) {
  return walk(root, detectors, out);
}

bool KVXSensorParser::getSensorState(TiXmlElement* states, _KVPrinterSensorInfo& out) {
  return walk(states, detectorStates, out);
}

bool KVXSensorParser::ParseSensorInfo(wchar_t const& text, int length, KVSensorInfo& out) {
  return readReply(text, length, sensorStatusRoots, sensorInformation, out);
}

bool KVXSensorParser::parseSensorInfo(TiXmlElement* root, KVSensorInfo& out) {
  return walk(root, sensorInformation, out);
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
  return walk(element, ribbonSensors, out);
}

bool KVXSensorParser::getRibbonColorSensorInfo(TiXmlElement* color, KVSensorInfo& out) {
  return walk(color, ribbonColor, out);
}

bool KVXSensorParser::getInTMSensorInfo(TiXmlElement* intm, KVSensorInfo& out) {
  return walk(intm, intermediateMedia, out);
}

}  // namespace Kovra

/// @file
/// The reader of sensor replies.

#ifndef KVXSENSORPARSER_H
#define KVXSENSORPARSER_H

#include "kovra_base.h"
#include "kvxsensorrecords.h"

namespace Kovra {

/// Reads the two sensor replies, both with the root "get_sensor_status", into records. It holds no
/// state: any number of threads may read different records at once.
///
/// The entries (Parse...) return false, with the record untouched, for a text that is not
/// well-formed or that could harm the parser (elements nested deeper than 128, more than 256
/// attributes on one element), and for another root.
///
/// The element readers take an element of the host's own tree. They visit its children in order,
/// read those that they know, by exact name, and skip the others; a repeated element is read again.
/// Their result is that of the last known child; false when there was none, or for a null element.
class KOVRA_EXPORT KVXSensorParser {
 public:
  KVXSensorParser();
  ~KVXSensorParser();

  /// Reads the sensor states. The text is narrow and terminated; its length is not used and may be
  /// anything. The result is that of getSensorStates; false for a null text.
  bool ParseSensorStates(char const* text, int length, _KVPrinterSensorInfo& out);

  /// Reads every child "sensor_states" with getSensorState.
  bool getSensorStates(TiXmlElement* root, _KVPrinterSensorInfo& out);

  /// Reads the state words. False when the last one has no text, though others were read.
  bool getSensorState(TiXmlElement* states, _KVPrinterSensorInfo& out);

  /// Reads the sensor readings. The text is wide: a reference to its first character and its length
  /// in characters, which is also the most bytes that its narrow form may have in the process's
  /// character set (LC_CTYPE); a longer text is cut, a cut one is refused, and a length below 1
  /// gives false. A host whose text is terminated passes `reply.size() * MB_CUR_MAX`, and calls
  /// setlocale(LC_CTYPE, ""), not LC_ALL, which may make the points in numbers commas. The result
  /// is that of parseSensorInfo.
  bool ParseSensorInfo(wchar_t const& text, int length, KVSensorInfo& out);

  /// Reads the areas "input_output", "card_path", "doors", "positioning" and "web_media".
  bool parseSensorInfo(TiXmlElement* root, KVSensorInfo& out);

  /// @name One area each
  /// A reading is an attribute of the sensor's element, whose text is not looked at. A sensor whose
  /// attribute is missing or no number leaves its member, and gives false when it is the last.
  /// @{
  bool getInputOutputSensorInfo(TiXmlElement* area, KVSensorInfo& out);
  bool getCardPathSensorInfo(TiXmlElement* area, KVSensorInfo& out);
  bool getDoorSensorInfo(TiXmlElement* area, KVSensorInfo& out);
  bool getPositioningSensorInfo(TiXmlElement* area, KVSensorInfo& out);
  bool getWebMediaSensorInfo(TiXmlElement* area, KVSensorInfo& out);  ///< "ribbon" and "intm"
  bool getRibbonSensorInfo(TiXmlElement* ribbon, KVSensorInfo& out);  ///< sensors and "color"
  bool getRibbonColorSensorInfo(TiXmlElement* color, KVSensorInfo& out);
  bool getInTMSensorInfo(TiXmlElement* intm, KVSensorInfo& out);
  /// @}
};

}  // namespace Kovra

#endif

/// @file
/// The trees of the device commands and their words. Each operation builds its document in an empty
/// one and returns the root.

#ifndef KOVRA_CONTROL_KVXDEVICECONTROL_DOCUMENTS_HPP
#define KOVRA_CONTROL_KVXDEVICECONTROL_DOCUMENTS_HPP

#include <tinyxml.h>

#include "frame/vocabulary.hpp"

namespace Kovra {

inline constexpr frame::Word motorWords[] = {
    {"card_feed", 0}, {"card_x", 1},  {"ribbon", 2},
    {"head_lift", 3}, {"options", 4}, {"flipper", 5},
};
inline constexpr frame::Vocabulary motors{motorWords, frame::Match::exact, -1};
static_assert(frame::everyWordIsReachable(motors));

inline constexpr frame::Word motorModeWords[] = {{"off", 0}, {"on", 1}, {"warm_up", 2}};
inline constexpr frame::Vocabulary motorModes{motorModeWords, frame::Match::exact, -1};
static_assert(frame::everyWordIsReachable(motorModes));

inline constexpr frame::Word calibrationWords[] = {
    {"low", 1}, {"high", 2}, {"calc", 3}, {"mot_cur_off", 4}, {"mot_cur_on", 5}, {"save_cal", 6},
};
inline constexpr frame::Vocabulary calibrations{calibrationWords, frame::Match::exact, -1};
static_assert(frame::everyWordIsReachable(calibrations));

inline constexpr frame::Word rfidModeWords[] = {{"off", 0}, {"on", 1}, {"modulate", 2}};
inline constexpr frame::Vocabulary rfidModes{rfidModeWords, frame::Match::exact, -1};
static_assert(frame::everyWordIsReachable(rfidModes));

/// What a laminator's text says of its spools; the text that is written is then `scalText`.
struct Spool {
  char const* text;
  char const* spool;
};
inline constexpr char scalText[] = "scal";
inline constexpr Spool spools[] = {{scalText, "both"}, {"scal 1", "top"}, {"scal 2", "bottom"}};

/// Texts may be null, apart from `name`.
TiXmlElement* buildNamedMotor(TiXmlDocument& document, int state, int reverse, int speed,
                              int motor);
TiXmlElement* buildMotor(TiXmlDocument& document, int mode, int period, float rpm, int speed,
                         bool forward);
TiXmlElement* buildCam(TiXmlDocument& document, char const* text, char const* state);
TiXmlElement* buildCalibrate(TiXmlDocument& document, int type, float torque, float rpm);
TiXmlElement* buildOther(TiXmlDocument& document, char const* name, char const* text,
                         char const* panel, bool on);
TiXmlElement* buildRfid(TiXmlDocument& document, char const* name, int mode, int antenna);

}  // namespace Kovra

#endif

/// @file
/// The writer of commands for the printer's mechanics.

#ifndef KVXDEVICECONTROL_H
#define KVXDEVICECONTROL_H

#include "kovra_base.h"
#include "kvxhelper.h"

/// Composes low-level commands: a root "device_control" with one child that names the device. The
/// writer is itself the document: every operation begins with an empty one, so that one writer can
/// compose any number in turn; the last one stays in it. Different writers may be used in several
/// threads at once.
///
/// Every operation hands its document to saveJob(char*, int), has that one's result, and writes it
/// as narrow text. Numbers are not checked: a code without a word leaves out the attribute or text
/// that it would select. A null text leaves out the attribute or the content that it would fill.
///
/// Decimals are written with the point of LC_NUMERIC, which is a comma under some locales while the
/// printer takes "." alone: a host calls setlocale(LC_CTYPE, ""), not LC_ALL.
///
/// Wherever an operation takes a `char*` that it only reads (all but the output) a string literal,
/// a `char const*`, NULL or nullptr may be passed as well, in any mix.
class KOVRA_EXPORT KVXDeviceControl : public TiXmlDocument {
 public:
  KVXDeviceControl();
  ~KVXDeviceControl() override;
  KVXDeviceControl(KVXDeviceControl const&) = delete;
  KVXDeviceControl& operator=(KVXDeviceControl const&) = delete;

  /// A "motor" by its name. State 1 gives "state" "on", "direction" ("reverse" unless @p reverse is
  /// 0), for motors 1 and 3 "distance" "0", and for all but motor 2 "speed"; any other state gives
  /// "state" "off". Motors: 0 "card_feed", 1 "card_x", 2 "ribbon", 3 "head_lift", 4 "options",
  /// 5 "flipper", as the element's text; others have none.
  bool RunMotorCommand(int state, int reverse, int speed, int motor, char* out, int outLen);

  /// A "motor" without a name. Mode 2 gives "state" "warm_up", "rpm" with one decimal and "period";
  /// 1 gives "state" "on", "direction" ("forward" or "reverse": deliberately the flag's sense is
  /// the opposite of the other form's) and "speed"; 0 gives "state" "off"; others nothing. The
  /// first argument is ignored.
  bool RunMotorCommand(char* ignored, int mode, int period, float rpm, int speed, bool forward,
                       char* out, int outLen);

  /// A "cam" with the attribute "state" and a text.
  bool RunCamCommand(char* text, char* state, char* out, int outLen);

  /// A "calibrate" with its "type": 1 "low", 2 "high", both with "torque" and "rpm" with one
  /// decimal; 3 "calc", 4 "mot_cur_off", 5 "mot_cur_on", 6 "save_cal"; others have none. The first
  /// argument is ignored.
  bool RunCalibrateCommand(char* ignored, int kind, float torque, float rpm, char* out, int outLen);

  /// An element @p name with the text @p text. "fan", "sensor" and "clutch" get "state" ("on" or
  /// "off"); "advance" gets "panel"; "laminator" with the text "scal", "scal 1" or "scal 2" gets
  /// "spool" ("both", "top", "bottom") and the text "scal"; "radio" with the text "scan" gets
  /// "iterations" 1. Case counts. False for a null @p name.
  bool RunOtherCommands(char* name, char* text, char* panel, bool on, char* out, int outLen);

  /// An element @p name with the text of @p mode: 0 "off", 1 "on", 2 "modulate", others none. Only
  /// an element "rfid" gets the attribute "antenna". False for a null @p name.
  bool RunRFIDCommands(char* name, int mode, int antenna, char* out, int outLen);

  /// Prints the document into @p out, of which @p outLen characters may be written, the terminator
  /// among them. A document that does not fit is not copied in part: @p out becomes the empty text
  /// (when @p outLen is at least 1), and the result is false. False, with nothing done, when @p out
  /// is null; else a debugging copy is left at "/tmp/composedXML" first (when it is skipped,
  /// convention 6 of kvxhelper.h says).
  bool saveJob(char* out, int outLen);

  /// Saves the document to a file that the host names; false for a null path or when saving fails.
  bool saveJob(char* path);

  /// @name The same operations on texts that can only be read
  /// @{
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  bool RunMotorCommand(Text const& ignored, int mode, int period, float rpm, int speed,
                       bool forward, char* out, int outLen) {
    return RunMotorCommand(Kovra::detail::borrowed(ignored), mode, period, rpm, speed, forward, out,
                           outLen);
  }
  template <class Text, class State, Kovra::detail::SomeReadOnlyText<Text, State> = 0>
  bool RunCamCommand(Text&& text, State&& state, char* out, int outLen) {
    return RunCamCommand(Kovra::detail::borrowed(text), Kovra::detail::borrowed(state), out,
                         outLen);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  bool RunCalibrateCommand(Text const& ignored, int kind, float torque, float rpm, char* out,
                           int outLen) {
    return RunCalibrateCommand(Kovra::detail::borrowed(ignored), kind, torque, rpm, out, outLen);
  }
  template <class Name, class Text, class Panel,
            Kovra::detail::SomeReadOnlyText<Name, Text, Panel> = 0>
  bool RunOtherCommands(Name&& name, Text&& text, Panel&& panel, bool on, char* out, int outLen) {
    return RunOtherCommands(Kovra::detail::borrowed(name), Kovra::detail::borrowed(text),
                            Kovra::detail::borrowed(panel), on, out, outLen);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  bool RunRFIDCommands(Text const& name, int mode, int antenna, char* out, int outLen) {
    return RunRFIDCommands(Kovra::detail::borrowed(name), mode, antenna, out, outLen);
  }
  template <class Text, Kovra::detail::ReadOnlyText<Text> = 0>
  bool saveJob(Text const& path) {
    return saveJob(Kovra::detail::borrowed(path));
  }
  /// @}

 private:
  TiXmlElement* root_;  ///< of the last document; null before the first
};

#endif

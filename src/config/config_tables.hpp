/// @file
/// The configuration as tables: what KVXConfigParser reads and KVXSetConfig writes, row by row in
/// the order of writing, for which reading does not care. Where the two differ the rows stand side
/// by side and say so; it is always meant.

#ifndef KOVRA_CONFIG_CONFIG_TABLES_HPP
#define KOVRA_CONFIG_CONFIG_TABLES_HPP

#include <array>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <utility>

#include "config/config_words.hpp"
#include "frame/field.hpp"
#include "frame/text.hpp"
#include "kvxconfigrecords.h"
#include "shared/shared_tables.hpp"

namespace Kovra::config {

using namespace frame;

// Circumstances: the sections that a host asks for, and beside their bits those of the other
// choices.

inline constexpr Circumstances withFilm = Circumstances{1} << 32U;
inline constexpr Circumstances withoutFilm = Circumstances{1} << 33U;
inline constexpr Circumstances firstCard = Circumstances{1} << 34U;
inline constexpr Circumstances secondCard = Circumstances{1} << 35U;
inline constexpr Circumstances topLaminate = Circumstances{1} << 36U;
inline constexpr Circumstances bottomLaminate = Circumstances{1} << 37U;

// The interfaces.

/// An IPv4 address as inet_addr() gives it. A child without text stores 0 and counts as not read,
/// no child at all leaves the address.
struct Ipv4Kind {
  static constexpr Shape shape = Shape::ipv4;

  static bool read(Element element, unsigned long& out);
  static void report(Observer& observer, std::string_view name, Element element,
                     unsigned long value);
  /// Of the address its low 32 bits are written.
  static bool write(Sink& sink, char const* element, unsigned long value);
  static Assigned assign(unsigned long& out, Value const& value, Problems& problems);
};

template <auto M>
constexpr auto ipv4(std::string_view element) {
  return row<M, Ipv4Kind>(element);
}

inline constexpr Table ethernet = {
    ipv4<&_NetworkParams::ip_address>("ip_address"),
    ipv4<&_NetworkParams::gateway>("gateway"),
    ipv4<&_NetworkParams::subnet_mask>("subnet_mask"),
    enabled<&_NetworkParams::dhcp>("dhcp"),
    enabled<&_NetworkParams::snmp>("snmp"),
};

inline constexpr Table wireless = {
    ipv4<&_WirelessParams::ip_address>("ip_address"),
    ipv4<&_WirelessParams::gateway>("gateway"),
    ipv4<&_WirelessParams::subnet_mask>("subnet_mask"),
    enabled<&_WirelessParams::dhcp>("dhcp"),
    enabled<&_WirelessParams::snmp>("snmp"),
    enabled<&_WirelessParams::radio>("radio"),
    knownKeyword<&_WirelessParams::security, securities>("security"),
    // Whether the cipher could be read is not what hosts are told of the wireless parameters.
    uncounted(knownKeyword<&_WirelessParams::crypto, ciphers>("crypto")),
    text<&_WirelessParams::ssid>("ssid"),
    address<&_WirelessParams::bssid>("bssid"),
    number<&_WirelessParams::channel>("channel"),
    secretText<&_WirelessParams::key>("key"),
    readOnly(text<&_WirelessParams::country>("country")),
};

inline constexpr Table usbTimeout = {
    bounded<&_USBTimeout::read>("read"),
    bounded<&_USBTimeout::write>("write"),
};

// The printer at large.

inline constexpr Keywords errorControlKeyword{
    .read = &errorControls, .written = &errorControls, .otherwise = "med", .always = true};
inline constexpr auto errorControl =
    keywordBy<&_KVConfiguration::error_control, errorControlKeyword>("error_control");

inline constexpr Keywords usbSpeedKeyword{
    .read = &usbSpeeds, .written = &usbSpeeds, .otherwise = "high", .knownOnly = true};
inline constexpr auto usbSpeed =
    keywordBy<&_KVConfiguration::usb_speed, usbSpeedKeyword>("usb_speed");

/// An element without text leaves the mode, though an unknown word stores one.
inline constexpr Keywords feedModeKeyword{
    .read = &feedModes, .written = &feedModes, .otherwise = "hopper"};
inline constexpr auto feedMode =
    keywordBy<&_KVConfiguration::feeder_mode, feedModeKeyword>("feeder_mode");

inline constexpr Table usageCounters = {
    number<&_KVConfiguration::num_cards_printed>("num_cards_printed"),
    number<&_KVConfiguration::num_lines_printed>("num_lines_printed"),
};

// Printing.

inline constexpr Table powerAdjustments = {
    bounded<&_PowerAdjustments::yellow>("yellow"),
    bounded<&_PowerAdjustments::magenta>("magenta"),
    bounded<&_PowerAdjustments::cyan>("cyan"),
    bounded<&_PowerAdjustments::k_resin_front>("k-resin_front"),
    bounded<&_PowerAdjustments::k_resin_back>("k-resin_back"),
    bounded<&_PowerAdjustments::k_dye>("k-dye"),
    bounded<&_PowerAdjustments::overlay>("overlay"),
    bounded<&_PowerAdjustments::uv_front>("uv_front"),
    bounded<&_PowerAdjustments::uv_back>("uv_back"),
    bounded<&_PowerAdjustments::helper>("helper"),
    bounded<&_PowerAdjustments::x_resin>("x-resin"),
    when(withFilm, bounded<&_PowerAdjustments::inhibit>("inhibit")),
};

inline constexpr Table imagingParameters = {
    bounded<&_ImagingParams::printhead_resistance>("printhead_resistance"),
    readOnly(
        nested<&_ImagingParams::mfg_power_adjustments, powerAdjustments>("mfg_power_adjustments")),
    nested<&_ImagingParams::user_power_adjustments, powerAdjustments>("user_power_adjustments"),
};

inline constexpr Table tricolorSettings = {
    number<&_RGBINT::red>("red"),
    number<&_RGBINT::green>("green"),
    number<&_RGBINT::blue>("blue"),
};

inline constexpr Table takeupMotor = {
    bounded<&_RibbonMotorParams::S0>("S0"), bounded<&_RibbonMotorParams::K0>("K0"),
    bounded<&_RibbonMotorParams::Kb>("Kb"), bounded<&_RibbonMotorParams::Ka>("Ka"),
    bounded<&_RibbonMotorParams::M0>("M0"), bounded<&_RibbonMotorParams::Mb>("Mb"),
    bounded<&_RibbonMotorParams::Ma>("Ma"), readOnly(bounded<&_RibbonMotorParams::VtoI>("VtoI")),
};

inline constexpr Table ribbonMotorParameters = {
    group<_RibbonMotorParams, takeupMotor>("takeup_motor"),
};

// Mechanics.

/// Without film neither film nor transfer can be adjusted, but the flipper can.
inline constexpr Table mechAdjustments = {
    when(withFilm, bounded<&_MechanicalAdjustments::film_print_x_offset>("film_print_x_offset")),
    when(withFilm, bounded<&_MechanicalAdjustments::film_print_y_offset>("film_print_y_offset")),
    when(withFilm, bounded<&_MechanicalAdjustments::film_transfer_start_offset>(
                       "film_transfer_start_offset")),
    bounded<&_MechanicalAdjustments::card_center_x_offset>("card_center_x_offset"),
    bounded<&_MechanicalAdjustments::card_mag_x_offset>("card_mag_x_offset"),
    bounded<&_MechanicalAdjustments::card_smart_card_x_offset>("card_smart_card_x_offset"),
    bounded<&_MechanicalAdjustments::card_smart_card_lf_x_offset>("card_smart_card_lf_x_offset"),
    bounded<&_MechanicalAdjustments::card_smart_card_hf_x_offset>("card_smart_card_hf_x_offset"),
    bounded<&_MechanicalAdjustments::card_smart_card_uhf_x_offset>("card_smart_card_uhf_x_offset"),
    bounded<&_MechanicalAdjustments::card_center_y_offset>("card_center_y_offset"),
    when(withoutFilm,
         bounded<&_MechanicalAdjustments::flipper_sensor_offset>("flipper_sensor_offset")),
    when(withFilm, bounded<&_MechanicalAdjustments::card_transfer_start_y_offset>(
                       "card_transfer_start_y_offset")),
    when(withFilm, bounded<&_MechanicalAdjustments::card_transfer_end_y_offset>(
                       "card_transfer_end_y_offset")),
    when(withFilm, bounded<&_MechanicalAdjustments::card_transfer_roll_y_offset>(
                       "card_transfer_roll_y_offset")),
    when(withFilm, bounded<&_MechanicalAdjustments::film_end_roll_transfer_offset>(
                       "film_end_roll_transfer_offset")),
    when(withFilm, bounded<&_MechanicalAdjustments::film_extra_transfer_takeup_move>(
                       "film_extra_transfer_takeup_move")),
};

// Ribbon and film.

/// The description of a ribbon or film on its way from the element into the record.
class RibbonName {
 public:
  using Text = std::remove_reference_t<decltype(szRibbonName)>;

  /// Fetches as much of the element's text as szRibbonName holds.
  bool read(Element element) {
    bool const read = convertText(element.text(), text_, static_cast<int>(sizeof text_));
    isCut_ = read && std::strlen(element.text()) >= sizeof text_;
    if (std::strstr(text_, "MONO") != nullptr) dropFirstFive();
    return read;
  }

  Text const& get() const { return text_; }
  bool isCut() const { return isCut_; }
  bool isShortened() const { return isShortened_; }

 private:
  /// What stands there counts as "MONO " wherever the word was found: hosts know the names so.
  void dropFirstFive() {
    isShortened_ = true;
    constexpr std::size_t dropped = sizeof "MONO " - 1;
    std::memmove(text_, text_ + dropped, sizeof text_ - dropped);
    std::memset(text_ + sizeof text_ - dropped, 0, dropped);
  }

  Text text_ = {};
  bool isCut_ = false;
  bool isShortened_ = false;
};

/// Tells people of the name on standard error, and hosts in szRibbonName.
void announce(RibbonName const& name, char const* description);

/// Only classic readings announce the name: the face reads without traces.
struct RibbonDescriptionReading : NeverWritten {
  static constexpr Table members = {text<&_RibbonInfo::description>("")};

  static bool read(Element element, _RibbonInfo& record, Watch const& watch) {
    RibbonName name;
    bool const read = name.read(element);
    std::memset(record.description, 0, sizeof record.description);
    if (!watch) announce(name, record.description);
    static_assert(sizeof(RibbonName::Text) <= sizeof record.description);
    std::memcpy(record.description, name.get(), sizeof(RibbonName::Text));
    remark(watch, [&](Observer& observer) {
      if (!read) return observer.emptyElement(element);
      observer.member(key(), textIn(record.description));
      if (name.isCut()) observer.cutText(element, textIn(record.description));
      if (name.isShortened()) observer.alteredText(element, textIn(record.description));
    });
    return read;
  }

  static Assigned assign(_RibbonInfo& record, std::string_view member, Value const& value,
                         Problems& problems) {
    if (member != key()) return Assigned::notMine;
    return assignText(record.description, value, problems);
  }

  static void keys(Keys& keys) { keys.push_back(key()); }

 private:
  static constexpr std::string_view key() { return memberName<&_RibbonInfo::description>; }
};

inline constexpr Table ribbonInfo = {
    number<&_RibbonInfo::type>("type"),
    // Reads the text, writes the name of the code.
    reading<_RibbonInfo, RibbonDescriptionReading>("description"),
    orBy(memberName<&_RibbonInfo::description>,
         neverRead(keyword<&_RibbonInfo::ribbonNameCode, ribbonNames>("description"))),
    text<&_RibbonInfo::oem_country>("oem_country"),
    number<&_RibbonInfo::initial_size>("initial_size"),
    number<&_RibbonInfo::panels_remaining>("panels_remaining"),
};

inline constexpr Table mediaInfo = {
    nested<&_KVConfiguration::ribbon, ribbonInfo>("ribbon"),
    when(withFilm, nested<&_KVConfiguration::film, ribbonInfo>("film")),
};

// Lamination.

inline constexpr Table laminateCommon = {
    bounded<&_laminate_common::patch_length_adj>("patch_length_adj"),
    bounded<&_laminate_common::coarse_x_offset>("coarse_x_offset"),
    bounded<&_laminate_common::speed_adjust>("speed_adjust"),
    bounded<&_laminate_common::passthru_speed_adj>("passthru_speed_adj"),
};

inline constexpr Table laminateInstalled = {
    number<&_LaminateInstalled::type>("type"),
    text<&_LaminateInstalled::description>("description"),
    number<&_LaminateInstalled::thickness>("thickness"),
    // Both read words and write numbers.
    readOnly(
        knownKeyword<&_LaminateInstalled::registration, laminatorRegistrations>("registration")),
    writeOnly(number<&_LaminateInstalled::registration>("registration")),
    readOnly(knownKeyword<&_LaminateInstalled::width, laminatorWidths>("width")),
    writeOnly(number<&_LaminateInstalled::width>("width")),
    text<&_LaminateInstalled::oem_country>("oem_country"),
    number<&_LaminateInstalled::initial_size>("initial_size"),
    number<&_LaminateInstalled::panels_remaining>("panels_remaining"),
};

/// Reads the elements of either laminate into both, writes each its own.
inline constexpr Table laminateControl = {
    when(topLaminate,
         sharing(bounded<&_laminateControl::x_adj_fine_offset>("top_x_adj_fine_offset"))),
    when(topLaminate, sharing(bounded<&_laminateControl::temp_adjust>("top_temp_adjust"))),
    when(bottomLaminate,
         sharing(bounded<&_laminateControl::x_adj_fine_offset>("bot_x_adj_fine_offset"))),
    when(bottomLaminate, sharing(bounded<&_laminateControl::temp_adjust>("bot_temp_adjust"))),
};

inline constexpr Table laminate = {
    nested<&_Laminate::laminate_installed, laminateInstalled>("laminate_installed"),
    nested<&_Laminate::laminate_control, laminateControl>("laminate_control"),
};

/// A part of the lamination whose presence marks a laminate as installed.
template <auto M, auto const& Rows, auto Installed, Circumstances Side = 0>
struct MarkingReading {
  /// No text says whether it is installed.
  static constexpr Table members = {nested<M, Rows>(""), neverRead(yesOrNo<Installed>(""))};

  static bool read(Element element, _LaminationIfo& record, Watch const& watch) {
    record.*Installed = true;
    remark(watch, [](Observer& o) { o.member(memberName<Installed>, true); });
    return part.read(element, record, watch);
  }

  /// What belongs to a side is written if the top laminate is installed, also the bottom laminate.
  static bool write(Sink& sink, char const* element, _LaminationIfo const& record,
                    Circumstances circumstances, bool result) {
    if (Side != 0 && !record.topLaminateInstalled) return result;
    return writeAs(part, element, sink, record, circumstances | Side, result);
  }

  static Assigned assign(_LaminationIfo& record, std::string_view member, Value const& value,
                         Problems& problems) {
    if (member == memberName<Installed>) return assignFlag(record.*Installed, value, problems);
    return part.assign(record, member, value, problems);
  }

  static void keys(Keys& keys) { keys.insert(keys.end(), {memberName<M>, memberName<Installed>}); }
  static void outline(Outline& outline) { outlineOf(Rows, outline); }

 private:
  static constexpr Field<_LaminationIfo> part = nested<M, Rows>("");
};

/// "laminate_common" marks the top laminate, for want of a flag of its own.
inline constexpr Table lamination = {
    reading<_LaminationIfo, MarkingReading<&_LaminationIfo::laminate_common, laminateCommon,
                                           &_LaminationIfo::topLaminateInstalled>>(
        "laminate_common"),
    reading<_LaminationIfo, MarkingReading<&_LaminationIfo::top_laminate, laminate,
                                           &_LaminationIfo::topLaminateInstalled, topLaminate>>(
        "top_laminate"),
    reading<_LaminationIfo,
            MarkingReading<&_LaminationIfo::bottom_laminate, laminate,
                           &_LaminationIfo::bottomLaminateInstalled, bottomLaminate>>(
        "bottom_laminate"),
};

/// Written only when a laminate is marked as installed.
struct LaminationReading {
  static constexpr Table members = {nested<&_KVConfiguration::lamination, lamination>("")};

  static bool read(Element element, _KVConfiguration& record, Watch const& watch) {
    return whole.read(element, record, watch);
  }

  static bool write(Sink& sink, char const* element, _KVConfiguration const& record,
                    Circumstances circumstances, bool result) {
    _LaminationIfo const& laminates = record.lamination;
    lookAtMarks(sink, laminates);
    if (!laminates.topLaminateInstalled && !laminates.bottomLaminateInstalled) return result;
    return writeAs(whole, element, sink, record, circumstances, result);
  }

  static Assigned assign(_KVConfiguration& record, std::string_view member, Value const& value,
                         Problems& problems) {
    return whole.assign(record, member, value, problems);
  }

  static void keys(Keys& keys) { whole.keys(keys); }
  /// The row that reads it has said all.
  static void outline(Outline&) {}

 private:
  static constexpr Field<_KVConfiguration> whole =
      nested<&_KVConfiguration::lamination, lamination>("");
  static constexpr Field<_LaminationIfo> topMark =
      yesOrNo<&_LaminationIfo::topLaminateInstalled>("");
  static constexpr Field<_LaminationIfo> bottomMark =
      yesOrNo<&_LaminationIfo::bottomLaminateInstalled>("");

  /// Marks are no elements, but without them there are none: whoever watches wants to know of one
  /// that the record lacks. That of the bottom laminate counts where the top one is not there.
  static void lookAtMarks(Sink& sink, _LaminationIfo const& laminates) {
    auto const look = [] { return true; };
    writeWatched(sink, whole.row(), [&] {
      bool const isMarked = writeWatched(sink, topMark.row(), look);
      return laminates.topLaminateInstalled ? isMarked : writeWatched(sink, bottomMark.row(), look);
    });
  }
};

// Cleaning. Two elements fill one record.

inline constexpr Table cleaning = {
    text<&_CleaningParams::cleaning_deadline_is_soft>("cleaning_deadline_is_soft"),
};
inline constexpr Table cleaningThresholds = {
    bounded<&_CleaningParams::alcohol_card_cleaning>("alcohol_card_cleaning"),
    bounded<&_CleaningParams::pre_warning>("pre_warning"),
};

inline constexpr Table cleaningSiblings = {
    group<_CleaningParams, cleaning>("cleaning"),
    group<_CleaningParams, cleaningThresholds>("cleaning_thresholds"),
};

/// Each element is read and written with a table of its own; a value for the record may name the
/// members of both, and these rows, which are for values alone, take it.
inline constexpr auto cleaningValue =
    readOnly(neverRead(nested<&_KVConfiguration::cleaning, cleaningSiblings>("")));

// Cards and their transfer.

inline constexpr auto const& transferSpeeds = shared::transferSpeeds<shared::WithBounds>;
inline constexpr auto const& laminatorAdjustments =
    shared::laminatorAdjustments<shared::WithBounds>;

inline constexpr Table card = {
    group<_CustomCardInfo, shared::cardInformation<_CustomCardInfo>>("information"),
    when(withFilm,
         nested<&_CustomCardInfo::transfer_temps, shared::transferTemps<shared::WithBounds>>(
             "transfer_temps")),
    when(withFilm, nested<&_CustomCardInfo::transfer_speeds, transferSpeeds>("transfer_speeds")),
    number<&_CustomCardInfo::cal_table>("cal_table"),
    nested<&_CustomCardInfo::laminator_adjustments, laminatorAdjustments>("laminator_adjustments"),
};

/// What two cards say may bring both to one place.
inline constexpr auto cardEntries = atMost(1, entries<card>("card"));

/// Each card is read from zeros and then takes its place by its description: "Custom 1" the first
/// one, every other the second, also a third.
struct CardsReading {
  static constexpr Table members = {listOfRoot<&_KVConfiguration::cards, cardEntries>()};

  static bool read(Element element, _KVConfiguration& record, Watch const& watch) {
    remark(watch, [](Observer& observer) { observer.list(key()); });
    return walkEntries(element, cardEntries.item,
                       [&](Element child, bool) { return readCard(child, record.cards, watch); });
  }

  /// The circumstances say which cards. Neither is a failure, which leaves an empty element.
  static bool write(Sink& sink, char const* element, _KVConfiguration const& record,
                    Circumstances circumstances, bool) {
    return writeWatched(sink, Rows(members).front(), [&] {
      sink.open(element);
      bool result = false;
      if ((circumstances & firstCard) != 0) {
        result = writeEntry(sink, cardEntries, &record.cards[0], 0, circumstances);
      }
      if ((circumstances & secondCard) != 0) {
        result = writeEntry(sink, cardEntries, &record.cards[1], 1, circumstances);
      }
      sink.close(element);
      return result;
    });
  }

  static Assigned assign(_KVConfiguration& record, std::string_view member, Value const& value,
                         Problems& problems) {
    if (member != key()) return Assigned::notMine;
    return assignEntries(cardEntries, record.cards, std::size(record.cards), value, problems);
  }

  static void keys(Keys& keys) { keys.push_back(key()); }
  static void outline(Outline& outline) { outlineEntries(cardEntries, outline); }

 private:
  using Cards = decltype(_KVConfiguration::cards);

  static constexpr std::string_view key() { return memberName<&_KVConfiguration::cards>; }

  static std::size_t placeOf(_CustomCardInfo const& read) {
    return textIn(read.description) == "Custom 1" ? 0 : 1;
  }

  /// An observer wants to know the place before the members.
  static bool readCard(Element element, Cards& cards, Watch const& watch) {
    _CustomCardInfo scratch{};
    bool const result = walk(element, card, scratch, Watch());
    std::size_t const place = placeOf(scratch);
    cards[place] = scratch;
    remark(watch, [&](Observer& observer) {
      if (observer.clearEntry(key(), place)) observer.repeatedElement(element, element, {});
      cards[place] = {};
      observer.entry(key(), place, [&] { return walk(element, card, cards[place], watch); });
    });
    return result;
  }
};

inline constexpr Table transferTemps = {
    bounded<&_ImageTransferTempInfo::top_single>("top_single"),
    bounded<&_ImageTransferTempInfo::bot_single>("bot_single"),
    bounded<&_ImageTransferTempInfo::top_double>("top_double"),
    bounded<&_ImageTransferTempInfo::bot_double>("bot_double"),
    bounded<&_ImageTransferTempInfo::top_single_offset>("top_single_offset"),
    bounded<&_ImageTransferTempInfo::bot_single_offset>("bot_single_offset"),
    bounded<&_ImageTransferTempInfo::top_double_offset>("top_double_offset"),
    bounded<&_ImageTransferTempInfo::bot_double_offset>("bot_double_offset"),
    bounded<&_ImageTransferTempInfo::top_temp_cal>("top_temp_cal"),
    bounded<&_ImageTransferTempInfo::bot_temp_cal>("bot_temp_cal"),
    bounded<&_ImageTransferTempInfo::top_temp_tilt>("top_temp_tilt"),
    bounded<&_ImageTransferTempInfo::bot_temp_tilt>("bot_temp_tilt"),
};

inline constexpr Table transferSettings = {
    anyKeyword<&_ImageTransferInfo::transfer_type, transferTypes>("transfer_type"),
    nested<&_ImageTransferInfo::transfer_temps, transferTemps>("transfer_temps"),
    nested<&_ImageTransferInfo::transfer_speeds, transferSpeeds>("transfer_speeds"),
};

// The encoder.

/// The first encoder goes into its member, a later one into the member for the second. A first one
/// that is unknown or without text, and so 0, leaves the place to the next.
struct ContactlessReading : NeverWritten {
  static constexpr Table members = {
      anyKeyword<&_InternalEncoderInfo::contactless_encoder, contactlessEncoders>(""),
      readOnly(
          anyKeyword<&_InternalEncoderInfo::secondContactlessEncoder, contactlessEncoders>("")),
  };

  static bool read(Element element, _InternalEncoderInfo& record, Watch const& watch) {
    bool const isFirst = record.contactless_encoder == 0;
    remark(watch, [&](Observer& observer) {
      bool const isThird = !isFirst && record.secondContactlessEncoder != 0;
      if (isThird) observer.repeatedElement(element, element, {});
    });
    return (isFirst ? first : second).read(element, record, watch);
  }

  static Assigned assign(_InternalEncoderInfo& record, std::string_view member, Value const& value,
                         Problems& problems) {
    Assigned const result = first.assign(record, member, value, problems);
    return result == Assigned::notMine ? second.assign(record, member, value, problems) : result;
  }

  static void keys(Keys& keys) {
    first.keys(keys);
    second.keys(keys);
  }
  static void outline(Outline& outline) { first.outline(outline); }

 private:
  using Info = _InternalEncoderInfo;
  static constexpr Field<Info> first =
      anyKeyword<&Info::contactless_encoder, contactlessEncoders>("contactless_encoder");
  static constexpr Field<Info> second =
      anyKeyword<&Info::secondContactlessEncoder, contactlessEncoders>("contactless_encoder");
};

inline constexpr Table internalEncoder = {
    // Reads the channel, writes the channel that has the code of the contactless encoder.
    shared::encoderChannel,
    writeOnly(keyword<&_InternalEncoderInfo::contactless_encoder, commsChannels>("comms_channel")),
    shared::encodesByContact,
    // Reads two encoders of five kinds, writes the first and only if it is of one kind.
    adding(reading<_InternalEncoderInfo, ContactlessReading>("contactless_encoder")),
    writeOnly(keyword<&_InternalEncoderInfo::contactless_encoder, writtenContactlessEncoders>(
        "contactless_encoder")),
};

// The whole.

inline constexpr Table configuration = {
    when(sectionPhysicalAddress, address<&_KVConfiguration::physical_address>("physical_address")),
    when(sectionEthernet, nested<&_KVConfiguration::ethernet, ethernet>("ethernet")),
    // Reads "wireless", writes a second "ethernet".
    readOnly(nested<&_KVConfiguration::wireless, wireless>("wireless")),
    writeOnly(when(sectionWireless, nested<&_KVConfiguration::wireless, wireless>("ethernet"))),
    when(sectionOcpLanguage,
         nested<&_KVConfiguration::ocp_language, shared::language>("ocp_language")),
    when(sectionErrorControl, errorControl),
    when(sectionErrorControl, usbSpeed),
    when(sectionUsageCounters, group<_KVConfiguration, usageCounters>("usage_counters")),
    when(sectionStandbyTimeout, number<&_KVConfiguration::standby_timeout>("standby_timeout")),
    when(sectionImagingParameters,
         nested<&_KVConfiguration::imaging_parameters, imagingParameters>("imaging_parameters")),
    readOnly(nested<&_KVConfiguration::tricolor_settings, tricolorSettings>("tricolor_settings")),
    when(sectionRibbonMotorParameters,
         nested<&_KVConfiguration::takeup_motor, ribbonMotorParameters>("ribbon_motor_parameters")),
    when(sectionRibbonSensorOffset,
         bounded<&_KVConfiguration::ribbon_sensor_offset>("ribbon_sensor_offset")),
    readOnly(number<&_KVConfiguration::bemf_potentiometer>("bemf_potentiometer")),
    when(sectionMechAdjustments,
         nested<&_KVConfiguration::mech_adjustments, mechAdjustments>("mech_adjustments")),
    when(sectionMechAdjustments, nested<&_KVConfiguration::usb_timeout, usbTimeout>("usb_timeout")),
    when(sectionMediaInfo, group<_KVConfiguration, mediaInfo>("media_info")),
    when(sectionLamination, reading<_KVConfiguration, LaminationReading>("lamination")),
    cleaningValue,
    when(sectionCleaning, nested<&_KVConfiguration::cleaning, cleaning>("cleaning")),
    when(sectionCleaning,
         nested<&_KVConfiguration::cleaning, cleaningThresholds>("cleaning_thresholds")),
    when(sectionFeederMode, feedMode),
    when(sectionCards, adding(reading<_KVConfiguration, CardsReading>("cards"))),
    when(sectionTransferSettings | withFilm,
         nested<&_KVConfiguration::transfer_settings, transferSettings>("transfer_settings")),
    when(sectionLcdContrast, bounded<&_KVConfiguration::lcd_contrast>("lcd_contrast")),
    when(sectionInternalEncoder,
         nested<&_KVConfiguration::internal_encoder, internalEncoder>("internal_encoder")),
};

/// The second root is that of a request: one that was saved can be read back.
inline constexpr char const* configurationRoots[] = {"configuration", "set_configuration"};

/// The record starts from zeros as soon as there is a root. What became of the children does not
/// show in the result.
struct ConfigurationReading {
  static bool read(Element root, _KVConfiguration& record, Watch const& watch) {
    static_assert(std::is_trivially_copyable_v<_KVConfiguration>);
    std::memset(static_cast<void*>(&record), 0, sizeof record);
    walk(root, configuration, record, watch);
    return true;
  }
};

/// The entry answers false, whatever it read.
struct EntryReading {
  static bool read(Element root, _KVConfiguration& record, Watch const& watch) {
    ConfigurationReading::read(root, record, watch);
    return false;
  }
};

// Which sections are written.

inline constexpr Circumstances everySection = [] {
  Circumstances all = 0;
  for (Word const& word : sectionNames.words) all |= static_cast<Circumstances>(word.code);
  return all;
}();

constexpr Circumstances filmSwitch(bool isFilmless) {
  return isFilmless ? withoutFilm : withFilm;
}

/// Any choice of a card leaves out all sections but that of the cards.
constexpr Circumstances chosenSections(long sectionBits, long onlyCard, bool isFilmless) {
  Circumstances const wanted = static_cast<Circumstances>(sectionBits) & everySection;
  Circumstances const film = filmSwitch(isFilmless);
  switch (onlyCard) {
    case 0:
      return wanted | firstCard | secondCard | film;
    case 1:
      return (wanted & sectionCards) | firstCard | film;
    case 2:
      return (wanted & sectionCards) | secondCard | film;
    default:
      return (wanted & sectionCards) | film;
  }
}

}  // namespace Kovra::config

#endif

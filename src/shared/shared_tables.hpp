/// @file
/// The tables that two families share: the configuration and the capabilities those of the
/// printer's language and encoder, the configuration and the media catalogue those of a card.

#ifndef KOVRA_SHARED_SHARED_TABLES_HPP
#define KOVRA_SHARED_SHARED_TABLES_HPP

#include <string_view>

#include "frame/field.hpp"
#include "frame/kvxhelper_words.hpp"
#include "kvxcapsrecords.h"
#include "kvxconfigrecords.h"
#include "kvxmediarecords.h"

namespace Kovra::shared {

using namespace frame;

inline constexpr Table language = {
    number<&_OCPLanguageCaps::type>("type"),
    text<&_OCPLanguageCaps::name>("name"),
};

// The encoder. Families write another channel than they read, and encoders of their own.

inline constexpr auto encoderChannel =
    readOnly(anyKeyword<&_InternalEncoderInfo::comms_channel, commsChannels>("comms_channel"));
/// An element without text clears the flag, unlike those of the interfaces.
inline constexpr auto encodesByContact =
    clearedYesOrNo<&_InternalEncoderInfo::contact_encoding>("contact_encoding");

// Cards. The configuration reads settings with their bounds, the media catalogue their values
// alone; both write all of them.

struct WithBounds {
  template <auto M>
  static constexpr auto row(std::string_view element) {
    return bounded<M>(element);
  }
};
struct ValueAlone {
  template <auto M>
  static constexpr auto row(std::string_view element) {
    return boundedValue<M>(element);
  }
};

/// A code outside the table is written as "none".
inline constexpr Keywords coercivityKeyword{.read = &coercivities,
                                            .written = &coercivities,
                                            .otherwise = coercivities.wordOf(0).data(),
                                            .always = true};

template <class Card>
inline constexpr Table cardInformation = {
    number<&Card::type>("type"),
    text<&Card::halvex_part_number>("halvex_part_number"),
    text<&Card::description>("description"),
    number<&Card::thickness>("thickness"),
    keywordBy<&Card::coercivity, coercivityKeyword>("coercivity"),
    bitFlag<&Card::cardFeatures, cardFeatureBits>("mag_stripe"),
    bitFlag<&Card::cardFeatures, cardFeatureBits>("contact_encode"),
    bitFlag<&Card::cardFeatures, cardFeatureBits>("non_contact_encode"),
};

template <class Setting>
inline constexpr Table transferTemps = {
    Setting::template row<&_TransferTempInfo::top_single>("top_single"),
    Setting::template row<&_TransferTempInfo::bot_single>("bot_single"),
    Setting::template row<&_TransferTempInfo::top_double>("top_double"),
    Setting::template row<&_TransferTempInfo::bot_double>("bot_double"),
};

template <class Setting>
inline constexpr Table transferSpeeds = {
    Setting::template row<&_TransferSpeedInfo::input_single>("input_single"),
    Setting::template row<&_TransferSpeedInfo::output_single>("output_single"),
    Setting::template row<&_TransferSpeedInfo::input_double>("input_double"),
    Setting::template row<&_TransferSpeedInfo::output_double>("output_double"),
};

template <class Setting>
inline constexpr Table laminatorAdjustments = {
    Setting::template row<&_LaminationAdjustmentsNew::top_temp_adjust>("top_temp_adjust"),
    Setting::template row<&_LaminationAdjustmentsNew::bot_temp_adjust>("bot_temp_adjust"),
    Setting::template row<&_LaminationAdjustmentsNew::speed_adjust>("speed_adjust"),
};

}  // namespace Kovra::shared

#endif

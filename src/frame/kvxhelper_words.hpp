/// @file
/// The vocabularies that several families share: ribbons, feeders, encoders, laminates.

#ifndef KOVRA_FRAME_KVXHELPER_WORDS_HPP
#define KOVRA_FRAME_KVXHELPER_WORDS_HPP

#include "frame/vocabulary.hpp"
#include "kvxhelper.h"

namespace Kovra::frame {

inline constexpr Word ribbonNameWords[] = {
    {"YMCKO", 256},  {"YMCKOK", 257}, {"1/2 YMCKO", 258}, {"1/2 YMCKOKO", 259},
    {"YMCPKO", 260}, {"KdO", 261},    {"KrO", 262},       {"Black", 263},
    {"White", 264},  {"Red", 265},    {"Blue", 266},      {"Gold", 267},
    {"Silver", 268}, {"YMCKLL", 269}, {"SrDYMCKO", 270},  {"Hologram", 271},
};
/// An unknown ribbon counts as black mono.
inline constexpr Vocabulary ribbonNames{ribbonNameWords, Match::anyCase, 263};
static_assert(everyWordIsReachable(ribbonNames));

/// Descriptions and joined panel words. They know a code that the names lack (272), and read "ko"
/// like "kro" and the bare overlays like the hologram: hosts rely on all of it.
inline constexpr Word ribbonDescriptionWords[] = {
    {"black mono", 263},  {"black", 263},     {"white", 264},        {"red", 265},
    {"blue", 266},        {"gold", 267},      {"silver", 268},       {"ymcko", 256},
    {"ymckok", 257},      {"1/2 ymcko", 258}, {"kdo", 261},          {"kro", 262},
    {"ko", 262},          {"Hologram", 271},  {"holo overlay", 271}, {"o", 271},
    {"1/2 ymckoko", 259}, {"ymckoo", 272},    {"ymcoviko", 260},     {"ymcpko", 260},
    {"sdymcko", 270},     {"ymckll", 269},
};
inline constexpr Vocabulary ribbonDescriptions{ribbonDescriptionWords, Match::anyCase, 263};
static_assert(everyWordIsReachable(ribbonDescriptions));

inline constexpr Word ribbonTypeWords[] = {{"dye_sub", 0}};
inline constexpr Vocabulary ribbonTypes{ribbonTypeWords, Match::exact, -1};
static_assert(everyWordIsReachable(ribbonTypes));

/// Knows a word more than is read.
inline constexpr Word writableRibbonTypeWords[] = {{"dye_sub", 0}, {"resin", 1}};
inline constexpr Vocabulary writableRibbonTypes{writableRibbonTypeWords, Match::exact, -1};
static_assert(everyWordIsReachable(writableRibbonTypes));

/// Found anywhere in the text, so "contactless" is read as "contact": the order is behaviour.
inline constexpr Word feederSmartWords[] = {{"contact", 0}, {"iclass", 1}, {"mifare", 2},
                                            {"prox", 3},    {"uhf", 4},    {"legic", 5}};
inline constexpr Vocabulary feederSmarts{feederSmartWords, Match::substring, -1};
static_assert(everyWordIsReachable(feederSmarts));

/// Found anywhere in the text; a text that holds both words is "pvc".
inline constexpr Word feederTypeWords[] = {{"pvc", 1}, {"composite", 0}};
inline constexpr Vocabulary feederTypes{feederTypeWords, Match::substring, -1};
static_assert(everyWordIsReachable(feederTypes));

/// "none" has the code of every unknown word.
inline constexpr Word coercivityWords[] = {
    {COERCIVITYTYPES[0], 0}, {COERCIVITYTYPES[1], 1}, {COERCIVITYTYPES[2], 2}};
inline constexpr Vocabulary coercivities{coercivityWords, Match::exact, 0};
static_assert(everyWordIsReachable(coercivities));

inline constexpr Word laminationTypeWords[] = {{"2_side", 2}, {"1_side", 1}};
inline constexpr Vocabulary laminationTypes{laminationTypeWords, Match::exact, 0};
static_assert(everyWordIsReachable(laminationTypes));

inline constexpr Word commsChannelWords[] = {{"serial", 1}, {"usb", 2}};
inline constexpr Vocabulary commsChannels{commsChannelWords, Match::exact, 0};
static_assert(everyWordIsReachable(commsChannels));

inline constexpr Word contactlessEncoderWords[] = {
    {"mifare", 1}, {"felica", 2}, {"uhf", 3}, {"hf", 4}, {"lf", 5}};
inline constexpr Vocabulary contactlessEncoders{contactlessEncoderWords, Match::exact, 0};
static_assert(everyWordIsReachable(contactlessEncoders));

/// Of all kinds of encoder only this one is ever written.
inline constexpr Word writtenContactlessEncoderWords[] = {{"mifare", 1}};
inline constexpr Vocabulary writtenContactlessEncoders{writtenContactlessEncoderWords, Match::exact,
                                                       0};
static_assert(everyWordIsReachable(writtenContactlessEncoders));

/// The features of a card by the names of their elements, and their bits in `cardFeatures`.
inline constexpr Word cardFeatureBitWords[] = {
    {"mag_stripe", 0x01}, {"contact_encode", 0x02}, {"non_contact_encode", 0x04}};
inline constexpr Vocabulary cardFeatureBits{cardFeatureBitWords, Match::exact, 0};
static_assert(everyWordIsReachable(cardFeatureBits));

inline constexpr Word panelWords[] = {{"yellow_panel", 0}, {"magenta_panel", 1}, {"cyan_panel", 2}};
inline constexpr Vocabulary panels{panelWords, Match::exact, -1};
static_assert(everyWordIsReachable(panels));

inline constexpr Word laminatorWidthWords[] = {{"full", 0}, {"mag", 1}, {"signature", 2}};
inline constexpr Vocabulary laminatorWidths{laminatorWidthWords, Match::exact, -1};
static_assert(everyWordIsReachable(laminatorWidths));

inline constexpr Word laminatorRegistrationWords[] = {{"none", 0}, {"hologram", 1}, {"contact", 2}};
inline constexpr Vocabulary laminatorRegistrations{laminatorRegistrationWords, Match::exact, -1};
static_assert(everyWordIsReachable(laminatorRegistrations));

}  // namespace Kovra::frame

#endif

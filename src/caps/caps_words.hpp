/// @file
/// The words of the capabilities, for both directions.

#ifndef KOVRA_CAPS_CAPS_WORDS_HPP
#define KOVRA_CAPS_CAPS_WORDS_HPP

#include <cstddef>
#include <span>

#include "frame/vocabulary.hpp"

namespace Kovra::caps {

using frame::everyWordIsReachable;
using frame::Match;
using frame::Vocabulary;
using frame::Word;

// Words. Some are only read: they stand last, and the writer's vocabulary leaves them out.

template <std::size_t N>
constexpr Vocabulary withoutLast(Word const (&words)[N]) {
  return {std::span(words).first(N - 1), Match::exact, -1};
}

inline constexpr Word portTypeWords[] = {
    {"usb_2_0", 0},           {"serial", 1}, {"ethernet_10_100", 2}, {"ethernet_10_100_1G", 3},
    {"wifi_enet_802_11g", 4},  // only read
};
inline constexpr Vocabulary portTypes{portTypeWords, Match::exact, -1};
inline constexpr Vocabulary writtenPortTypes = withoutLast(portTypeWords);
static_assert(everyWordIsReachable(portTypes));

inline constexpr Word protocolWords[] = {{"snmp", 0}, {"snmp_trap", 1}, {"http", 2}, {"kovra", 3}};
inline constexpr Vocabulary protocols{protocolWords, Match::exact, -1};
static_assert(everyWordIsReachable(protocols));

inline constexpr Word transportWords[] = {{"udp", 0}, {"tcp", 1}, {"usb", 2}, {"usb_2_0", 3}};
inline constexpr Vocabulary transports{transportWords, Match::exact, -1};
static_assert(everyWordIsReachable(transports));

inline constexpr Word sharpeningWords[] = {{"off", 1}, {"normal", 2}, {"high", 4}, {"low", 8}};
inline constexpr Vocabulary sharpenings{sharpeningWords, Match::exact, 0};
static_assert(everyWordIsReachable(sharpenings));

/// "none" has the code of an unknown word, and is written for every code that has no other.
inline constexpr Word encryptionWords[] = {{"aes", 1}, {"3des", 2}, {"none", -1}};
inline constexpr Vocabulary encryptions{encryptionWords, Match::exact, -1};
inline constexpr Vocabulary properEncryptions = withoutLast(encryptionWords);
static_assert(everyWordIsReachable(encryptions));

/// The codes have gaps: meant.
inline constexpr Word graphicFormatWords[] = {
    {"bmp", 1}, {"jpeg", 2}, {"tga", 8}, {"tiff", 9}, {"raw", 10}};
inline constexpr Vocabulary graphicFormats{graphicFormatWords, Match::exact, -1};
static_assert(everyWordIsReachable(graphicFormats));

/// "none" has the code of an unknown word, and is written for every code that has no other.
inline constexpr Word fontStyleWords[] = {{"regular", 1}, {"bold", 2}, {"italic", 3}, {"none", 0}};
inline constexpr Vocabulary fontStyles{fontStyleWords, Match::exact, 0};
static_assert(everyWordIsReachable(fontStyles));

/// What is read. What is written is the writer's own choice of two other words.
inline constexpr Word printSystemWords[] = {{"direct", 0}, {"retransfer", 1}};
inline constexpr Vocabulary printSystems{printSystemWords, Match::exact, -1};
static_assert(everyWordIsReachable(printSystems));

constexpr char const* printSystemWord(bool direct) {
  return direct ? "direct_to_card" : "retransfer";
}

/// Of an unknown word the code is that of "notpresent".
inline constexpr Word laminatorWords[] = {{"present", 1}, {"notpresent", 0}};
inline constexpr Vocabulary laminators{laminatorWords, Match::exact, 0};
static_assert(everyWordIsReachable(laminators));

constexpr char const* laminatorWord(bool present) {
  return laminators.wordOf(present ? 1 : 0).data();
}

/// Of an unknown word, "none" among them, the code is 0.
inline constexpr Word laminatorTypeWords[] = {{"none", 0}, {"1_side", 1}, {"2_side", 2}};
inline constexpr Vocabulary laminatorTypes{laminatorTypeWords, Match::exact, 0};
static_assert(everyWordIsReachable(laminatorTypes));

inline constexpr Word magHeadWords[] = {
    {"none", 0}, {"iso", 1}, {"aamva", 2}, {"custom", 3}, {"binary", 4}, {"jis", 5},  // only read
};
inline constexpr Vocabulary magHeads{magHeadWords, Match::exact, -1};
inline constexpr Vocabulary writtenMagHeads = withoutLast(magHeadWords);
static_assert(everyWordIsReachable(magHeads));

inline constexpr Word magStripeWords[] = {{"back", 0}, {"front", 1}};
inline constexpr Vocabulary magStripes{magStripeWords, Match::exact, -1};
static_assert(everyWordIsReachable(magStripes));

/// Read is "usb", written "usb_2_0": meant.
inline constexpr Word writtenCommsChannelWords[] = {{"serial", 1}, {"usb_2_0", 2}};
inline constexpr Vocabulary writtenCommsChannels{writtenCommsChannelWords, Match::exact, 0};
static_assert(everyWordIsReachable(writtenCommsChannels));

/// What of a printer's capabilities is composed alone, by the modes of the writer.
inline constexpr Word partWords[] = {{"mag-encoder", 1}, {"internal-encoder", 2}};
inline constexpr Vocabulary partNames{partWords, Match::exact, 0};
static_assert(everyWordIsReachable(partNames));

}  // namespace Kovra::caps

#endif

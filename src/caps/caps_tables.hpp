/// @file
/// The capabilities document: its words, its lists and its tables, for both directions. Rows stand
/// in the writer's order; where it writes something else than the reader reads, the two rows stand
/// next to each other.

#ifndef KOVRA_CAPS_CAPS_TABLES_HPP
#define KOVRA_CAPS_CAPS_TABLES_HPP

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

#include "caps/caps_words.hpp"
#include "frame/field.hpp"
#include "frame/kvxhelper_words.hpp"
#include "kvxcapsrecords.h"
#include "shared/shared_tables.hpp"

namespace Kovra::caps {

using namespace frame;

/// What decides over rows when a document is written.
enum : Circumstances {
  directToCard = 1,    ///< the printer prints without transfer film
  hasLaminator = 2,    ///< the printer laminates
  withLocation = 4,    ///< a graphic, and not a template
  hasContact = 8,      ///< the encoder writes chips by contact
  hasContactless = 16  ///< the encoder writes chips without contact
};

// Kinds of rows that only this document has.

/// A keyword that every element stores, written by a vocabulary of its own.
template <Vocabulary const& Reads, Vocabulary const& Writes>
inline constexpr Keywords twoWays{.read = &Reads, .written = &Writes, .always = true};

/// A flag that is a keyword.
struct LaminatorKind {
  static constexpr Vocabulary const& words = laminators;

  static bool read(Element element, bool& present) {
    WordText text;
    bool const read = text.read(element);
    present = laminators.codeOf(text.get()) != 0;
    return read;
  }

  static void report(Observer& observer, std::string_view name, Element element, bool present) {
    observer.member(name, present);
    WordText text;
    text.read(element);
    if (laminators.find(text.get()) == nullptr) {
      observer.unknownWord(element, element.text(), laminators);
    }
  }

  static void missing(Observer& observer, std::string_view name, Element element, bool present) {
    observer.emptyElement(element);
    observer.member(name, present);
  }

  static bool write(Sink& sink, char const* element, bool present) {
    sink.leaf(element, laminatorWord(present));
    return true;
  }

  static Assigned assign(bool& present, Value const& value, Problems& problems) {
    return assignFlag(present, value, problems);
  }
};

/// A text that is always the same; never read.
template <Fixed Text>
struct AlwaysReading : NeverRead, NeverAssigned {
  template <class Record>
  static bool write(Sink& sink, char const* element, Record const&, Circumstances, bool) {
    sink.leaf(element, Text.text);
    return true;
  }
};

template <class Record, Fixed Text>
constexpr auto always(std::string_view element) {
  return reading<Record, AlwaysReading<Text>>(element);
}

// Entries of lists.

inline constexpr Table port = {
    number<&_PortCaps::portId>("port_id"),
    keywordBy<&_PortCaps::type, twoWays<portTypes, writtenPortTypes>>("type"),
};

inline constexpr Table softwareInterface = {
    anyKeyword<&_InterfaceCaps::protocol, protocols>("protocol"),
    anyKeyword<&_InterfaceCaps::transport, transports>("transport"),
    number<&_InterfaceCaps::port>("port"),
};

/// "none" is written for every code that has no other word.
inline constexpr Keywords fontStyleKeyword{
    .read = &fontStyles, .written = &fontStyles, .otherwise = "none", .always = true};

inline constexpr Table font = {
    text<&_FontCaps::name>("name"),
    // Reads "scalable", writes a second "name": meant.
    readOnly(clearedYesOrNo<&_FontCaps::scalable>("scalable")),
    writeOnly(clearedYesOrNo<&_FontCaps::scalable>("name")),
    keywordBy<&_FontCaps::style, fontStyleKeyword>("style"),
};

/// Templates are written without their location, graphicList with it: meant.
inline constexpr Table stored = {
    text<&_TemplateCaps::name>("name"),
    when(withLocation, text<&_TemplateCaps::location>("location")),
};

/// The text of the entry's own element.
inline constexpr Table barCode = {text<&_BarCodeCaps::name>("")};

// Lists. Each is an array of the host with its count beside it.

/// What a list's reading, writing and room need to know of its members in the record.
struct List : Entries {
  std::string_view name;    ///< of the element
  std::string_view member;  ///< of the array
  int& (*count)(_Capabilities&);
  void* (*array)(_Capabilities&);
  void (*place)(_Capabilities&, void* array);
  /// Left out of the document when its count is 0. A count below that is not 0, and leaves an empty
  /// list.
  bool isOptional = false;
  Circumstances with = 0;  ///< besides those that the document has
  /// Every entry is read into the first one of the array, over the one before. All are written.
  bool intoTheFirst = false;

  /// How many entries the host's array can hold.
  std::size_t capacity(_Capabilities& caps) const {
    return static_cast<std::size_t>(array(caps) != nullptr ? std::max(count(caps), 0) : 0);
  }
};

template <auto Array, auto Count, class Entry>
constexpr List listOf(std::string_view name, EntriesOf<Entry> const& entries) {
  static_assert(std::is_same_v<typename frame::Member<Array>::Type, Entry*>,
                "these entries are not those of the array");
  return {entries,
          name,
          memberName<Array>,
          [](_Capabilities& caps) -> int& { return caps.*Count; },
          [](_Capabilities& caps) -> void* { return caps.*Array; },
          [](_Capabilities& caps, void* array) { caps.*Array = static_cast<Entry*>(array); }};
}

constexpr List optional(List list) {
  list.isOptional = true;
  return list;
}
constexpr List under(Circumstances with, List list) {
  list.with = with;
  return list;
}
constexpr List intoTheFirst(List list) {
  list.intoTheFirst = true;
  list.most = 1;
  return list;
}

inline constexpr List hostPortList =
    optional(listOf<&_Capabilities::hostPorts, &_Capabilities::hostPortCount>(
        "host_ports", entries<port>("host_port")));
/// Meant: hosts know the last device port in the first place.
inline constexpr List devicePortList =
    intoTheFirst(optional(listOf<&_Capabilities::devicePorts, &_Capabilities::devicePortCount>(
        "device_ports", entries<port>("device_port"))));
inline constexpr List interfaceList =
    optional(listOf<&_Capabilities::swInterfaces, &_Capabilities::swInterfaceCount>(
        "software_interfaces", entries<softwareInterface>("software_interface")));
inline constexpr List languageList =
    optional(listOf<&_Capabilities::ocpLanguages, &_Capabilities::ocpLanguageCount>(
        "ocp_languages", entries<shared::language>("ocp_language")));
inline constexpr List graphicFormatList =
    listOf<&_Capabilities::graphicFormats, &_Capabilities::graphicFormatCount>(
        "graphic_formats", codeEntries<graphicFormats>("graphic_format"));
inline constexpr List fontList =
    listOf<&_Capabilities::fonts, &_Capabilities::fontCount>("fonts", entries<font>("font"));
inline constexpr List templateList =
    listOf<&_Capabilities::templates, &_Capabilities::templateCount>("templates",
                                                                     entries<stored>("template"));
inline constexpr List graphicList =
    under(withLocation, listOf<&_Capabilities::graphics, &_Capabilities::graphicCount>(
                            "graphics", entries<stored>("graphic")));
inline constexpr List barCodeList = listOf<&_Capabilities::barcodes, &_Capabilities::barcodeCount>(
    "barcodes", entries<barCode>("barcode"));

/// All of them, for those who ask the same of each.
inline constexpr List const* lists[] = {&hostPortList, &devicePortList,    &interfaceList,
                                        &languageList, &graphicFormatList, &fontList,
                                        &templateList, &graphicList,       &barCodeList};

/// All children count, whatever their names. More than the array can hold: their number becomes the
/// count, and that is a success. Otherwise the count stays as the host set it.
bool readList(List const& list, Element element, _Capabilities& caps, Watch const& watch);
/// Adds the list with entries that may stand anywhere.
bool writeList(List const& list, Sink& sink, void const* entries, int count,
               Circumstances circumstances);

extern Kind const hostListKind;

template <List const& L>
constexpr auto list() {
  return Field<_Capabilities>(Row{.element = L.name,
                                  .member = L.member,
                                  .place = &frame::detail::itself,
                                  .kind = &hostListKind,
                                  .with = static_cast<Entries const*>(&L)});
}

// The document.

/// Words that add their bits to those that the record has.
struct SharpeningLevels {
  static constexpr char name[] = "image_sharpening_levels";
  static constexpr char item[] = "image_sharpening_level";

  static bool read(Element levels, _Capabilities& caps, Watch const& watch);
  static bool write(Sink& sink, int levels);
  static bool write(Sink& sink, char const*, _Capabilities const& caps, Circumstances, bool) {
    return write(sink, caps.imageSharpeningLevels);
  }
  static Assigned assign(_Capabilities& caps, std::string_view member, Value const& value,
                         Problems& problems) {
    return bits.assign(caps, member, value, problems);
  }
  static void keys(Keys& keys) { bits.keys(keys); }
  static void outline(Outline& outline) {
    outline.emplace(item);
    outlineWords(sharpenings, outline);
  }

 private:
  static constexpr Field<_Capabilities> bits =
      bitFlag<&_Capabilities::imageSharpeningLevels, sharpenings>(item);

 public:
  static constexpr Table members = {adding(bits)};
};

/// "none" is written for every code that has no other word.
inline constexpr Keywords encryptionKeyword{
    .read = &encryptions, .written = &encryptions, .otherwise = "none", .always = true};

inline constexpr Table security = {
    clearedYesOrNo<&_SecurityCaps::passkeyProtection>("passkey_protection"),
    keywordBy<&_SecurityCaps::encryptionAlgorithm, encryptionKeyword>("encryption_algorithm"),
};
inline constexpr char securityName[] = "security";

inline constexpr Table memory = {
    number<&_Capabilities::ramSize>("ram"),
    number<&_Capabilities::flashSize>("flash"),
};
inline constexpr auto memoryRow = group<_Capabilities, memory>("memory");

inline constexpr Table mediaPath = {
    clearedYesOrNo<&_Capabilities::atm>("atm"),
    number<&_Capabilities::magazineCapacity>("magazine_capacity"),
};
inline constexpr auto mediaPathRow = group<_Capabilities, mediaPath>("media_path");

inline constexpr Table logicalPage = {
    number<&_Capabilities::logicalPageLength>("length"),
    number<&_Capabilities::logicalPageWidth>("width"),
};

inline constexpr Table physicalPage = {
    number<&_Capabilities::physicalPageLength>("length"),
    number<&_Capabilities::physicalPageWidth>("width"),
};

inline constexpr Table image = {
    group<_Capabilities, logicalPage>("logical_page"),
    group<_Capabilities, physicalPage>("physical_page"),
    number<&_Capabilities::printResolution>("print_resolution"),
};
inline constexpr auto imageRow = group<_Capabilities, image>("image");

inline constexpr auto contactlessRow =
    keywordBy<&_InternalEncoderInfo::contactless_encoder,
              twoWays<contactlessEncoders, writtenContactlessEncoders>>("contactless_encoder");

inline constexpr Table internalEncoder = {
    // Reads the channel, writes a channel made of the contactless encoder's code: meant.
    shared::encoderChannel,
    writeOnly(
        keyword<&_InternalEncoderInfo::contactless_encoder, writtenCommsChannels>("comms_channel")),
    shared::encodesByContact,
    contactlessRow,
    // Neither read nor written here: a member for whoever composes the encoder alone.
    readOnly(neverRead(clearedYesOrNo<&_InternalEncoderInfo::contact_station>("contact_station"))),
};
inline constexpr char internalEncoderName[] = "internal_encoder";

/// The same element in the document that holds the encoder alone. Its channel is always USB: meant.
inline constexpr Table internalEncoderAlone = {
    always<_InternalEncoderInfo, "usb_2_0">("comms_channel"),
    when(hasContact, shared::encodesByContact),
    when(hasContactless, contactlessRow),
};
inline constexpr auto contactStationRow =
    clearedYesOrNo<&_InternalEncoderInfo::contact_station>("contact_station");

inline constexpr auto magEncoderRow =
    keywordBy<&_Capabilities::magEncoderType, twoWays<magHeads, writtenMagHeads>>("mag_encoder");

/// The record's print system is not looked at: meant.
struct WrittenPrintSystem : NeverRead, NeverAssigned {
  static bool write(Sink& sink, char const* element, _Capabilities const&,
                    Circumstances circumstances, bool) {
    sink.leaf(element, printSystemWord((circumstances & directToCard) != 0));
    return true;
  }
};

inline constexpr auto printSystemRow =
    anyKeyword<&_Capabilities::printSystem, printSystems>("print_system");
inline constexpr auto printTypeRow =
    anyKeyword<&_Capabilities::printType, laminationTypes>("print_type");
inline constexpr auto laminatorRow =
    row<&_Capabilities::laminatorPresent, LaminatorKind>("laminator");
inline constexpr auto laminatorTypeRow =
    anyKeyword<&_Capabilities::laminatorType, laminatorTypes>("laminator_type");

inline constexpr Table capabilities = {
    list<hostPortList>(),
    list<devicePortList>(),
    list<interfaceList>(),
    list<languageList>(),
    adding(reading<_Capabilities, SharpeningLevels>(SharpeningLevels::name)),
    nested<&_Capabilities::security, security>(securityName),
    memoryRow,
    list<graphicFormatList>(),
    list<fontList>(),
    list<templateList>(),
    list<graphicList>(),
    // Reads one of two words into the record, writes one of two others by the writer's choice:
    // meant.
    readOnly(printSystemRow),
    reading<_Capabilities, WrittenPrintSystem>("print_system"),
    printTypeRow,
    laminatorRow,
    when(hasLaminator, laminatorTypeRow),
    mediaPathRow,
    imageRow,
    magEncoderRow,
    // Reads the stripe's place, writes a place made of the encoder's code: meant.
    readOnly(anyKeyword<&_Capabilities::magStripeLocation, magStripes>("mag_stripe")),
    writeOnly(keyword<&_Capabilities::magEncoderType, magStripes>("mag_stripe")),
    nested<&_Capabilities::internalEncoder, internalEncoder>(internalEncoderName),
    list<barCodeList>(),
};

inline constexpr char const* capabilitiesRoots[] = {"capabilities", "get_capabilities"};

/// How the document is read.
struct CapabilitiesReading {
  static bool read(Element root, _Capabilities& caps, Watch const& watch);
};

// Writing.

/// The document that holds the encoder alone, or what there is of it.
bool writeEncoderAlone(Sink& sink, _InternalEncoderInfo const& encoder);

/// All (mode 0), the magnetic encoder alone (1) or the internal encoder alone (2); false for any
/// other mode.
bool writeCapabilities(Sink& sink, _Capabilities const& caps, int mode, bool direct);

}  // namespace Kovra::caps

#endif

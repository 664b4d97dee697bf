/// @file
/// The capabilities document: its words, its lists and its tables, for both directions. Rows stand
/// in the writer's order; where it writes something else than the reader reads, the two rows stand
/// next to each other.

#ifndef KOVRA_CAPS_CAPS_TABLES_HPP
#define KOVRA_CAPS_CAPS_TABLES_HPP

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "frame/kvxhelper_words.hpp"
#include "frame/typed/field.hpp"
#include "kvxcapsrecords.h"

namespace Kovra::caps {

using namespace frame::typed;

/// What decides over rows when a document is written.
enum : Circumstances {
  directToCard = 1,    ///< the printer prints without transfer film
  hasLaminator = 2,    ///< the printer laminates
  withLocation = 4,    ///< a graphic, and not a template
  hasContact = 8,      ///< the encoder writes chips by contact
  hasContactless = 16  ///< the encoder writes chips without contact
};

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

// Kinds of rows that only this document has.

/// A keyword that is read by one vocabulary and written by another.
template <Vocabulary const& Reads, Vocabulary const& Writes>
struct TwoWaysKind : AnyKeywordKind<Reads> {
  template <class Code>
  static bool write(TiXmlElement& parent, char const* element, Code value) {
    return KeywordKind<Writes>::write(parent, element, value);
  }
};

/// A flag that is a keyword.
struct LaminatorKind : AnyKeywordKind<laminators> {
  static void report(Observer& observer, std::string_view name, Element element, bool present) {
    observer.member(name, shown(present));
    WordText text;
    text.read(element);
    if (laminators.find(text.get()) == nullptr) {
      observer.unknownWord(element, element.text(), laminators);
    }
  }

  static void missing(Observer& observer, std::string_view name, Element element, bool present) {
    observer.emptyElement(element);
    observer.member(name, shown(present));
  }

  static Assigned assign(bool& present, Value const& value, Problem& problem) {
    return assignFlag(present, value, problem);
  }
};

template <auto M>
constexpr auto flag(std::string_view element) {
  return row<M, ClearedSwitchKind>(element);
}

/// A text that is always the same; never read.
template <Fixed Text>
struct AlwaysReading : NeverAssigned {
  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const&, Circumstances, bool) {
    return KVXHelper::AddTagString(&parent, element, Text.text);
  }
};

template <class Record, Fixed Text>
constexpr auto always(std::string_view element) {
  return reading<Record, AlwaysReading<Text>>(element);
}

// Entries of lists.

inline constexpr Table port = {
    number<&_PortCaps::portId>("port_id"),
    row<&_PortCaps::type, TwoWaysKind<portTypes, writtenPortTypes>>("type"),
};

inline constexpr Table softwareInterface = {
    anyKeyword<&_InterfaceCaps::protocol, protocols>("protocol"),
    anyKeyword<&_InterfaceCaps::transport, transports>("transport"),
    number<&_InterfaceCaps::port>("port"),
};

inline constexpr Table language = {
    number<&_OCPLanguageCaps::type>("type"),
    text<&_OCPLanguageCaps::name>("name"),
};

inline constexpr Table font = {
    text<&_FontCaps::name>("name"),
    // Reads "scalable", writes a second "name": meant.
    readOnly(flag<&_FontCaps::scalable>("scalable")),
    writeOnly(flag<&_FontCaps::scalable>("name")),
    row<&_FontCaps::style, AlwaysWrittenKind<AnyKeywordKind<fontStyles>, fontStyles, 0>>("style"),
};

/// Templates are written without their location, graphics with it: meant.
inline constexpr Table stored = {
    text<&_TemplateCaps::name>("name"),
    when(withLocation, text<&_TemplateCaps::location>("location")),
};

/// An entry that is a code: the text of its element is the keyword. One without text is the code of
/// an unknown word, and is shown as nothing.
template <Vocabulary const& Words>
struct CodeEntry {
  using Entry = int;

  static bool read(Element element, int& entry, Watch const& watch, std::string_view list,
                   std::size_t index) {
    return watch.item(list, index, [&] {
      bool const read = AnyKeywordKind<Words>::read(element, entry);
      remark(watch, [&](Observer& observer) {
        read ? KeywordKind<Words>::report(observer, list, element, entry)
             : observer.emptyElement(element);
      });
      return read;
    });
  }
  static bool write(TiXmlElement& list, char const* element, int entry, Circumstances) {
    return KeywordKind<Words>::write(list, element, entry);
  }
  static Assigned assign(int& entry, Value const& value, Problem& problem) {
    return KeywordKind<Words>::assign(entry, value, problem);
  }
  static void outline(Outline& outline) { KeywordKind<Words>::outline(outline); }
};

/// An entry that is a record with one member, which is the text of its element.
template <auto M>
struct TextEntry {
  using Entry = typename frame::Member<M>::Record;
  static constexpr Table itself = {text<M>("")};

  static bool read(Element element, Entry& entry, Watch const& watch, std::string_view list,
                   std::size_t index) {
    return watch.entry(list, index, [&] {
      return readChild(&Rows(itself).front(), element, &entry, watch, false);
    });
  }
  static bool write(TiXmlElement& list, char const* element, Entry const& entry, Circumstances) {
    return TextKind::write(list, element, entry.*M);
  }
  static Assigned assign(Entry& entry, Value const& value, Problem& problem) {
    return assignAll(itself, entry, value, problem);
  }
  static void outline(Outline&) {}
};

// Lists. Each is an array of the host with its count beside it.

/// Adds the entries alone; the result is that of the last one, false when there is none.
template <class Each>
bool writeEntries(TiXmlElement& list, char const* element, typename Each::Entry const* entries,
                  int count, Circumstances circumstances) {
  bool result = false;
  for (int i = 0; entries != nullptr && i < count; ++i) {
    result = Each::write(list, element, entries[i], circumstances);
  }
  return result;
}

/// The list `Name` of children `Item`. Its rows are written under the circumstances `With` besides
/// those that the document has.
template <auto Array, auto Count, Fixed Name, Fixed Item, class Each, Circumstances With = 0>
struct List {
  using Entry = typename Each::Entry;
  static constexpr auto array = Array;
  static constexpr auto count = Count;
  static constexpr std::string_view name = Name;
  static constexpr std::string_view member = frame::Member<Array>::name();

  /// How many entries the host's array can hold.
  static int capacity(_Capabilities const& caps) {
    return caps.*Array != nullptr ? std::max(caps.*Count, 0) : 0;
  }

  /// All children count, whatever their names. More than the array can hold: their number becomes
  /// the count, and that is a success. Otherwise the count stays as the host set it.
  static bool read(Element list, _Capabilities& caps, Watch const& watch) {
    return readInto<EntriesBy<Array, Item, Each>>(list, caps, watch);
  }

  static bool write(TiXmlElement& parent, Entry const* entries, int entryCount,
                    Circumstances circumstances) {
    TiXmlElement* const list = KVXHelper::AddTag(&parent, Name.text);
    return list != nullptr &&
           writeEntries<Each>(*list, Item.text, entries, entryCount, circumstances | With);
  }
  static bool write(TiXmlElement& parent, char const*, _Capabilities const& caps,
                    Circumstances circumstances, bool) {
    return write(parent, caps.*Array, caps.*Count, circumstances);
  }

  /// Whoever assigns has made an array of as many entries as the value has.
  static Assigned assign(_Capabilities& caps, std::string_view key, Value const& value,
                         Problem& problem) {
    if (key != member) return Assigned::notMine;
    if (value.kind != Value::Kind::list) return fail(problem, described(value), "a list");
    auto const room = static_cast<std::size_t>(capacity(caps));
    for (std::size_t i = 0; i < std::min(room, value.items.size()); ++i) {
      if (value.items[i].kind == Value::Kind::nothing) continue;
      if (Each::assign((caps.*Array)[i], value.items[i], problem) == Assigned::failed) {
        prefix(problem, '[' + std::to_string(i) + ']');
        return Assigned::failed;
      }
    }
    return Assigned::done;
  }

  static void keys(Keys& keys) { keys.push_back(member); }
  static void outline(Outline& outline) { EntriesBy<Array, Item, Each>::outline(outline); }

 protected:
  template <class Entries>
  static bool readInto(Element list, _Capabilities& caps, Watch const& watch) {
    auto const room = static_cast<std::size_t>(capacity(caps));
    std::size_t const needed = countChildren(list);
    if (needed > room) {
      caps.*Count = static_cast<int>(needed);
      return true;
    }
    return Entries::read(list, {caps.*Array, room}, watch);
  }
};

/// A list that is left out of the document when its count is 0. A count below that is not 0, and
/// leaves an empty list.
template <class Base>
struct OptionalList : Base {
  using Base::write;
  static bool write(TiXmlElement& parent, char const* element, _Capabilities const& caps,
                    Circumstances circumstances, bool result) {
    if (caps.*Base::count == 0) return result;
    return Base::write(parent, element, caps, circumstances, result);
  }
};

using HostPorts = OptionalList<List<&_Capabilities::hostPorts, &_Capabilities::hostPortCount,
                                    "host_ports", "host_port", RecordEntry<port>>>;

using AllDevicePorts =
    OptionalList<List<&_Capabilities::devicePorts, &_Capabilities::devicePortCount, "device_ports",
                      "device_port", RecordEntry<port>>>;

/// Every port is read into the first entry of the array, over the one before: meant. All entries
/// are written.
struct DevicePorts : AllDevicePorts {
  struct IntoTheFirst {
    static bool read(Element list, std::span<_PortCaps> room, Watch const& watch) {
      remark(watch, [](Observer& observer) { observer.list(member); });
      Element overwritten;
      return walkEntries(list, "device_port", watch, [&](Element child, bool) {
        remark(watch, [&](Observer& observer) {
          if (overwritten) observer.surplusEntry(overwritten, 1);
        });
        overwritten = child;
        return RecordEntry<port>::read(child, room.front(), watch, member, 0);
      });
    }
  };

  static bool read(Element list, _Capabilities& caps, Watch const& watch) {
    return readInto<IntoTheFirst>(list, caps, watch);
  }
};

using SoftwareInterfaces =
    OptionalList<List<&_Capabilities::swInterfaces, &_Capabilities::swInterfaceCount,
                      "software_interfaces", "software_interface", RecordEntry<softwareInterface>>>;
using Languages = OptionalList<List<&_Capabilities::ocpLanguages, &_Capabilities::ocpLanguageCount,
                                    "ocp_languages", "ocp_language", RecordEntry<language>>>;
using GraphicFormats = List<&_Capabilities::graphicFormats, &_Capabilities::graphicFormatCount,
                            "graphic_formats", "graphic_format", CodeEntry<caps::graphicFormats>>;
using Fonts =
    List<&_Capabilities::fonts, &_Capabilities::fontCount, "fonts", "font", RecordEntry<font>>;
using Templates = List<&_Capabilities::templates, &_Capabilities::templateCount, "templates",
                       "template", RecordEntry<stored>>;
using Graphics = List<&_Capabilities::graphics, &_Capabilities::graphicCount, "graphics", "graphic",
                      RecordEntry<stored>, withLocation>;
using BarCodes = List<&_Capabilities::barcodes, &_Capabilities::barcodeCount, "barcodes", "barcode",
                      TextEntry<&_BarCodeCaps::name>>;

template <class L>
constexpr auto list() {
  return reading<_Capabilities, L>(L::name);
}

/// All lists, for those who ask the same of each: `(f(L{}), ...)`.
template <class... L>
struct Lists {
  using Numbers = std::array<int, sizeof...(L)>;

  static Numbers counts(_Capabilities const& caps) { return {caps.*L::count...}; }
  static Numbers capacities(_Capabilities const& caps) { return {L::capacity(caps)...}; }
  static void setCounts(_Capabilities& caps, Numbers const& numbers) {
    std::size_t next = 0;
    ((caps.*L::count = numbers[next++]), ...);
  }
};

using AllLists = Lists<HostPorts, DevicePorts, SoftwareInterfaces, Languages, GraphicFormats, Fonts,
                       Templates, Graphics, BarCodes>;

// The document.

/// Words that add their bits to those that the record has.
struct SharpeningLevels : BitReading<&_Capabilities::imageSharpeningLevels, sharpenings> {
  static constexpr char name[] = "image_sharpening_levels";
  static constexpr char item[] = "image_sharpening_level";

  static bool read(Element levels, _Capabilities& caps, Watch const& watch) {
    return walkEntries(levels, item, watch, [&](Element child, bool) {
      WordText text;
      bool const read = text.read(child);
      Word const* const word = read ? sharpenings.find(text.get()) : nullptr;
      if (word != nullptr) caps.imageSharpeningLevels |= word->code;
      remark(watch, [&](Observer& observer) { tell(observer, child, read, word); });
      return read;
    });
  }

  static bool write(TiXmlElement& parent, int levels) {
    TiXmlElement* const list = KVXHelper::AddTag(&parent, name);
    bool result = false;
    for (Word const& word : sharpenings.words) {
      if ((levels & word.code) != 0) result = KVXHelper::AddTagString(list, item, word.text.data());
    }
    return result;
  }
  static bool write(TiXmlElement& parent, char const*, _Capabilities const& caps, Circumstances,
                    bool) {
    return write(parent, caps.imageSharpeningLevels);
  }

  static void outline(Outline& outline) {
    outline.emplace(item);
    for (Word const& word : sharpenings.words) outline.emplace(word.text);
  }

 private:
  static void tell(Observer& observer, Element child, bool read, Word const* word) {
    if (!read) return observer.emptyElement(child);
    if (word == nullptr) return observer.unknownWord(child, child.text(), sharpenings);
    observer.within(frame::Member<&_Capabilities::imageSharpeningLevels>::name(), [&] {
      observer.member(word->text, shown(true));
      return true;
    });
  }
};

inline constexpr Table security = {
    flag<&_SecurityCaps::passkeyProtection>("passkey_protection"),
    row<&_SecurityCaps::encryptionAlgorithm,
        AlwaysWrittenKind<AnyKeywordKind<encryptions>, encryptions, -1>>("encryption_algorithm"),
};
inline constexpr char securityName[] = "security";

inline constexpr Table memory = {
    number<&_Capabilities::ramSize>("ram"),
    number<&_Capabilities::flashSize>("flash"),
};
inline constexpr auto memoryRow = group<_Capabilities, memory>("memory");

inline constexpr Table mediaPath = {
    flag<&_Capabilities::atm>("atm"),
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
    row<&_InternalEncoderInfo::contactless_encoder,
        TwoWaysKind<contactlessEncoders, writtenContactlessEncoders>>("contactless_encoder");

inline constexpr Table internalEncoder = {
    // Reads the channel, writes a channel made of the contactless encoder's code: meant.
    readOnly(anyKeyword<&_InternalEncoderInfo::comms_channel, commsChannels>("comms_channel")),
    writeOnly(
        keyword<&_InternalEncoderInfo::contactless_encoder, writtenCommsChannels>("comms_channel")),
    flag<&_InternalEncoderInfo::contact_encoding>("contact_encoding"),
    contactlessRow,
    // Neither read nor written here: a member for whoever composes the encoder alone.
    readOnly(neverRead(flag<&_InternalEncoderInfo::contact_station>("contact_station"))),
};
inline constexpr char internalEncoderName[] = "internal_encoder";

/// The same element in the document that holds the encoder alone. Its channel is always USB: meant.
inline constexpr Table internalEncoderAlone = {
    always<_InternalEncoderInfo, "usb_2_0">("comms_channel"),
    when(hasContact, flag<&_InternalEncoderInfo::contact_encoding>("contact_encoding")),
    when(hasContactless, contactlessRow),
};
inline constexpr auto contactStationRow =
    flag<&_InternalEncoderInfo::contact_station>("contact_station");

inline constexpr auto magEncoderRow =
    row<&_Capabilities::magEncoderType, TwoWaysKind<magHeads, writtenMagHeads>>("mag_encoder");

/// The record's print system is not looked at: meant.
struct WrittenPrintSystem : NeverAssigned {
  static bool write(TiXmlElement& parent, char const* element, _Capabilities const&,
                    Circumstances circumstances, bool) {
    return KVXHelper::AddTagString(&parent, element,
                                   printSystemWord((circumstances & directToCard) != 0));
  }
};

inline constexpr Table capabilities = {
    list<HostPorts>(),
    list<DevicePorts>(),
    list<SoftwareInterfaces>(),
    list<Languages>(),
    reading<_Capabilities, SharpeningLevels>(SharpeningLevels::name),
    nested<&_Capabilities::security, security>(securityName),
    memoryRow,
    list<GraphicFormats>(),
    list<Fonts>(),
    list<Templates>(),
    list<Graphics>(),
    // Reads one of two words into the record, writes one of two others by the writer's choice:
    // meant.
    readOnly(anyKeyword<&_Capabilities::printSystem, printSystems>("print_system")),
    reading<_Capabilities, WrittenPrintSystem>("print_system"),
    anyKeyword<&_Capabilities::printType, laminationTypes>("print_type"),
    row<&_Capabilities::laminatorPresent, LaminatorKind>("laminator"),
    when(hasLaminator, anyKeyword<&_Capabilities::laminatorType, laminatorTypes>("laminator_type")),
    mediaPathRow,
    imageRow,
    magEncoderRow,
    // Reads the stripe's place, writes a place made of the encoder's code: meant.
    readOnly(anyKeyword<&_Capabilities::magStripeLocation, magStripes>("mag_stripe")),
    writeOnly(keyword<&_Capabilities::magEncoderType, magStripes>("mag_stripe")),
    nested<&_Capabilities::internalEncoder, internalEncoder>(internalEncoderName),
    list<BarCodes>(),
};

inline constexpr char const* capabilitiesRoots[] = {"capabilities", "get_capabilities"};

}  // namespace Kovra::caps

#endif

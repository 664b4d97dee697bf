#include "kvxcapsparser.h"

#include <algorithm>

#include "caps/caps_replies.hpp"
#include "caps/caps_room.hpp"
#include "caps/caps_tables.hpp"
#include "frame/typed/reply.hpp"

namespace Kovra {

namespace {

using namespace caps;

/// A reply may name a list twice, and a first one that does not fit raises its count. Each is
/// measured with the room that the host has, which is the count of before the reply; what the lists
/// need is put into the counts when all have been read, for each the most that was needed.
class RoomOnEntry {
 public:
  explicit RoomOnEntry(_Capabilities& caps) : caps_(caps) {}

  /// Every list has the room that it had on entry.
  void offer() { AllLists::setCounts(caps_, room_); }

  /// Takes note of a count that was raised since.
  void collect() {
    AllLists::Numbers const now = AllLists::counts(caps_);
    for (std::size_t i = 0; i < now.size(); ++i) {
      if (now[i] > room_[i]) needed_[i] = std::max(needed_[i], now[i]);
    }
  }

  void settle() {
    for (std::size_t i = 0; i < needed_.size(); ++i) {
      if (needed_[i] > 0) counts_[i] = needed_[i];
    }
    AllLists::setCounts(caps_, counts_);
  }

 private:
  _Capabilities& caps_;
  AllLists::Numbers const room_ = AllLists::capacities(caps_);
  AllLists::Numbers counts_ = AllLists::counts(caps_);
  AllLists::Numbers needed_{};
};

struct CapabilitiesReading {
  static bool read(Element root, _Capabilities& caps, Watch const& watch) {
    RoomOnEntry room(caps);
    RowFinder rows(capabilities);
    bool const result = walkChildren(root, [&](Element child, bool earlier) {
      room.offer();
      bool const now = readChild(rows.find(child.name()), child, &caps, watch, earlier);
      room.collect();
      return now;
    });
    room.settle();
    return result;
  }
};

/// What a host does: it reads to learn what the lists need, makes room, and reads again. The result
/// is that of the entry, which hosts do not look at.
bool decodeCapabilities(Element root, Observer& observer) {
  Watch const nobody;
  Room room;
  do {
    CapabilitiesReading::read(root, room.record(), nobody);
  } while (room.grow());
  room.clear();
  CapabilitiesReading::read(root, room.record(), observer);
  return false;
}

constexpr ReplyReader replies[] = {
    {"capabilities", "what the printer can do", capabilitiesRoots, decodeCapabilities,
     TableReading<capabilities>::outline},
};

/// The most bytes of a reply that are read, without the terminator.
constexpr int mostBytes = 65531;

}  // namespace

std::span<frame::ReplyReader const> capabilitiesReplies() {
  return replies;
}

KVXCapsParser::KVXCapsParser() = default;
KVXCapsParser::~KVXCapsParser() = default;

bool KVXCapsParser::GetCapabilities(wchar_t const& text, int len, _Capabilities& caps) {
  // Hosts look at the record alone: the result is false whatever happened.
  static_cast<void>(
      readReply<CapabilitiesReading>(text, std::min(len, mostBytes), capabilitiesRoots, caps));
  return false;
}

bool KVXCapsParser::parseCapabilities(TiXmlElement* root, _Capabilities& caps) {
  return readHost<CapabilitiesReading>(root, caps);
}

// Lists.

bool KVXCapsParser::getHostPorts(TiXmlElement* list, _Capabilities& caps) {
  return readHost<HostPorts>(list, caps);
}

bool KVXCapsParser::getDevicePorts(TiXmlElement* list, _Capabilities& caps) {
  return readHost<DevicePorts>(list, caps);
}

bool KVXCapsParser::getSwInterfaces(TiXmlElement* list, _Capabilities& caps) {
  return readHost<SoftwareInterfaces>(list, caps);
}

bool KVXCapsParser::getOCPLanguages(TiXmlElement* list, _Capabilities& caps) {
  return readHost<Languages>(list, caps);
}

bool KVXCapsParser::getGraphicFormatCaps(TiXmlElement* list, _Capabilities& caps) {
  return readHost<GraphicFormats>(list, caps);
}

bool KVXCapsParser::getFontsCaps(TiXmlElement* list, _Capabilities& caps) {
  return readHost<Fonts>(list, caps);
}

bool KVXCapsParser::getTemplates(TiXmlElement* list, _Capabilities& caps) {
  return readHost<Templates>(list, caps);
}

bool KVXCapsParser::getGraphics(TiXmlElement* list, _Capabilities& caps) {
  return readHost<Graphics>(list, caps);
}

bool KVXCapsParser::getBarCodes(TiXmlElement* list, _Capabilities& caps) {
  return readHost<BarCodes>(list, caps);
}

// Items.

bool KVXCapsParser::getHostPort(TiXmlElement* element, _PortCaps& out) {
  return walk(element, port, out);
}

bool KVXCapsParser::getSwInterface(TiXmlElement* element, _InterfaceCaps& out) {
  return walk(element, softwareInterface, out);
}

bool KVXCapsParser::getOCPLanguage(TiXmlElement* element, _OCPLanguageCaps& out) {
  return walk(element, language, out);
}

bool KVXCapsParser::getFontCaps(TiXmlElement* element, _FontCaps& out) {
  return walk(element, font, out);
}

bool KVXCapsParser::getTemplate(TiXmlElement* element, _TemplateCaps& out) {
  return walk(element, stored, out);
}

bool KVXCapsParser::getSecurityCaps(TiXmlElement* element, _SecurityCaps& out) {
  return walk(element, security, out);
}

bool KVXCapsParser::getInternalEncoderInfo(TiXmlElement* element, _InternalEncoderInfo& out) {
  return walk(element, internalEncoder, out);
}

// Groups.

bool KVXCapsParser::getImageSharpeningLevels(TiXmlElement* levels, _Capabilities& caps) {
  return readHost<SharpeningLevels>(levels, caps);
}

bool KVXCapsParser::getMemoryCaps(TiXmlElement* element, _Capabilities& caps) {
  return walk(element, memory, caps);
}

bool KVXCapsParser::getMediaPath(TiXmlElement* path, _Capabilities& caps) {
  return walk(path, mediaPath, caps);
}

bool KVXCapsParser::getImageCaps(TiXmlElement* element, _Capabilities& caps) {
  return walk(element, image, caps);
}

bool KVXCapsParser::getLogicalPage(TiXmlElement* page, _Capabilities& caps) {
  return walk(page, logicalPage, caps);
}

bool KVXCapsParser::getPhysicalPage(TiXmlElement* page, _Capabilities& caps) {
  return walk(page, physicalPage, caps);
}

bool KVXCapsParser::getPrintSystem(TiXmlElement* system, _Capabilities& caps) {
  return readHostValue<AnyKeywordKind<printSystems>>(system, caps.printSystem);
}

bool KVXCapsParser::getPrintType(TiXmlElement* type, _Capabilities& caps) {
  return readHostValue<AnyKeywordKind<laminationTypes>>(type, caps.printType);
}

bool KVXCapsParser::getLaminator(TiXmlElement* laminator, _Capabilities& caps) {
  return readHostValue<LaminatorKind>(laminator, caps.laminatorPresent);
}

bool KVXCapsParser::getLaminatorType(TiXmlElement* type, _Capabilities& caps) {
  return readHostValue<AnyKeywordKind<laminatorTypes>>(type, caps.laminatorType);
}

// Keywords.

int KVXCapsParser::portTypeToInt(char* keyword) {
  return portTypes.codeOf(keyword);
}
int KVXCapsParser::protocolToInt(char* keyword) {
  return protocols.codeOf(keyword);
}
int KVXCapsParser::transportToInt(char* keyword) {
  return transports.codeOf(keyword);
}
int KVXCapsParser::encAlgToInt(char* keyword) {
  return encryptions.codeOf(keyword);
}
int KVXCapsParser::graphicsFormatToInt(char* keyword) {
  return caps::graphicFormats.codeOf(keyword);
}
int KVXCapsParser::printerTypeToInt(char* keyword) {
  return printSystems.codeOf(keyword);
}
int KVXCapsParser::magHeadTypeToInt(char* keyword) {
  return magHeads.codeOf(keyword);
}
int KVXCapsParser::magStripeLocationToInt(char* keyword) {
  return magStripes.codeOf(keyword);
}
int KVXCapsParser::laminationTypeToInt(char* keyword) {
  return laminationTypes.codeOf(keyword);
}

}  // namespace Kovra

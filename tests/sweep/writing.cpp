// Whatever writes: documents, their elements, single tags and words.

#include <tinyxml.h>

#include <array>
#include <cwchar>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kvxcapsparser.h"
#include "kvxconfigparser.h"
#include "kvxdevicecontrol.h"
#include "kvxhelper.h"
#include "kvxmediaparser.h"
#include "kvxprinteridparser.h"
#include "kvxsetcaps.h"
#include "kvxsetconfig.h"
#include "kvxsetmedia.h"
#include "kvxsetprinterinfo.h"
#include "kvxsetsecactions.h"
#include "support/folder.hpp"
#include "support/wide.hpp"
#include "sweep/operation.hpp"

namespace Kovra::sweep {
namespace {

// ---- What is seen of a tree ------------------------------------------------------------------

/// A line for each node and attribute, in the order in which they are written: what was written of
/// a tree is a beginning of it.
void list(TiXmlNode const& node, std::string const& indent, std::string& lines) {
  lines += indent + node.Value() + '\n';
  if (TiXmlElement const* const element = node.ToElement()) {
    for (TiXmlAttribute const* attribute = element->FirstAttribute(); attribute != nullptr;
         attribute = attribute->Next()) {
      lines += indent + attribute->Name() + '=' + attribute->Value() + '\n';
    }
  }
  for (TiXmlNode const* child = node.FirstChild(); child != nullptr; child = child->NextSibling()) {
    list(*child, indent + ' ', lines);
  }
}

std::string listed(TiXmlNode const& node) {
  std::string lines;
  list(node, "", lines);
  return lines;
}

// ---- Single tags -----------------------------------------------------------------------------

constexpr char longName[] = "a_name_that_needs_a_place_of_its_own";
constexpr char longText[] = "a text that needs a place of its own on the heap";

struct Parent {
  TiXmlElement element{"parent"};

  Parent() { element.SetAttribute("present", "before"); }
};

Operation tag(char const* name, std::function<bool(TiXmlElement*)> add) {
  return operation<Parent>(
      std::string("KVXHelper::") + name,
      [add = std::move(add)](Parent& parent) { return add(&parent.element) ? 1 : 0; },
      [](Parent& parent) {
        return Contents{listed(parent.element), ""};
      });
}

void addTags(std::vector<Operation>& all) {
  using H = KVXHelper;
  using P = TiXmlElement;
  static constexpr unsigned char address[6] = {};
  Operation const tags[] = {
      tag("AddTag", [](P* p) { return H::AddTag(p, longName) != nullptr; }),
      tag("AddTagString", [](P* p) { return H::AddTagString(p, longName, longText); }),
      tag("AddTagNumber", [](P* p) { return H::AddTagNumber(p, longName, 1); }),
      tag("AddTagFloat", [](P* p) { return H::AddTagFloat(p, longName, 1e30F); }),
      tag("AddTagDouble", [](P* p) { return H::AddTagDouble(p, longName, 1e300); }),
      tag("AddTagUnsigned", [](P* p) { return H::AddTagUnsigned(p, longName, 1); }),
      tag("AddTagLong", [](P* p) { return H::AddTagLong(p, longName, -1); }),
      tag("AddTagBool", [](P* p) { return H::AddTagBool(p, longName, 1); }),
      tag("AddTagPhysicalAddress",
          [](P* p) { return H::AddTagPhysicalAddress(p, longName, address); }),
      tag("AddTagMinMaxVal",
          [](P* p) {
            return H::AddTagMinMaxVal(p, longName, _MinMaxVal{1, 2, 3});
          }),
      tag("AddTagMinMaxVal",
          [](P* p) {
            return H::AddTagMinMaxVal(p, longName, _MinMaxValFloat{1e30F, 1e30F, 1});
          }),
      tag("AddTagAttrib", [](P* p) { return H::AddTagAttrib(p, longName, longText); }),
      tag("AddTagAttrib", [](P* p) { return H::AddTagAttrib(p, longName, 1); }),
  };
  all.insert(all.end(), std::begin(tags), std::end(tags));
}

// ---- Writers ---------------------------------------------------------------------------------

constexpr int roomOfOut = 1 << 14;

/// A writer of a host's, what its document goes into, and what it adds elements to.
template <class Writer, class Char>
struct Desk {
  Writer writer;
  TiXmlElement parent{"parent"};
  std::vector<Char> out = std::vector<Char>(roomOfOut, Char{0x5A});
};

template <class Writer, class Char>
std::string outOf(Desk<Writer, Char>& desk) {
  return {reinterpret_cast<char const*>(desk.out.data()), desk.out.size() * sizeof(Char)};
}

/// An element of the host's grows, and nothing else changes.
template <class Writer, class Char>
Contents added(Desk<Writer, Char>& desk) {
  return {outOf(desk) + listed(desk.writer), listed(desk.parent)};
}

/// A document grows, and goes out whole or not at all.
template <class Writer, class Char>
Contents composed(Desk<Writer, Char>& desk) {
  return {outOf(desk) + listed(desk.parent), listed(desk.writer)};
}

/// Adds operations of one writer.
template <class Writer, class Char = wchar_t>
class WriterOperations {
 public:
  using Host = Desk<Writer, Char>;

  WriterOperations(std::string prefix, std::vector<Operation>& all)
      : prefix_(std::move(prefix)), all_(&all) {}

  /// An operation that adds to an element of the host's.
  void adds(char const* name, std::function<bool(Writer&, TiXmlElement*)> add) {
    addsTo(name, [add = std::move(add)](Host& desk) { return add(desk.writer, &desk.parent); });
  }
  void addsTo(char const* name, std::function<bool(Host&)> add) {
    all_->push_back(operation<Host>(
        prefix_ + name, [add = std::move(add)](Host& desk) { return add(desk) ? 1 : 0; },
        added<Writer, Char>));
  }
  /// An operation that composes a document.
  void composes(char const* name, std::function<bool(Writer&, Char*)> compose) {
    all_->push_back(operation<Host>(
        prefix_ + name,
        [compose = std::move(compose)](Host& desk) {
          return compose(desk.writer, desk.out.data()) ? 1 : 0;
        },
        composed<Writer, Char>));
  }
  /// Both ways in which a host saves a document of its own.
  void saves() {
    all_->push_back(operation<Begun>(
        prefix_ + "saveJob",
        [](Begun& desk) { return desk.writer.saveJob(desk.out.data(), roomOfOut) ? 1 : 0; },
        composed<Writer, Char>));
    all_->push_back(operation<Begun>(
        prefix_ + "saveJob",
        [](Begun& desk) { return desk.writer.saveJob(desk.path.data()) ? 1 : 0; },
        composed<Writer, Char>));
  }
  void tells(char const* name, std::function<long(Writer&)> tell) {
    all_->push_back(telling(prefix_ + name, [tell = std::move(tell)] {
      Writer writer;
      return tell(writer);
    }));
  }

 private:
  /// A writer with a document. A file may be incomplete when memory ends, so that it is not seen.
  struct Begun : Host {
    test::TemporaryFolder folder;
    std::string path = folder.file("document");

    Begun() {
      auto root = std::make_unique<TiXmlElement>(longName);
      KVXHelper::AddTagString(root.get(), longName, std::string(20000, 'x').c_str());
      this->writer.LinkEndChild(root.release());
    }
  };

  std::string prefix_;
  std::vector<Operation>* all_;
};

/// Words that a writer stores in a buffer of the host's.
template <class Write>
long wordOf(Write write) {
  std::array<char, 64> word{};
  return write(word.data()) ? word[0] : -1;
}

// ---- Configuration ---------------------------------------------------------------------------

_KVConfiguration const& configuration() {
  static auto const record = [] {
    auto read = std::make_unique<_KVConfiguration>();
    std::string const reply = test::contentsOf(KOVRA_SAMPLES_DIR "/config/full.xml");
    KVXConfigParser().GetConfiguration(reply.c_str(), 0, *read);
    return read;
  }();
  return *record;
}

using ConfigurationOperations = WriterOperations<KVXSetConfig>;

void addSettings(ConfigurationOperations& all) {
  using W = KVXSetConfig;
  using P = TiXmlElement;
  static _KVConfiguration const& c = configuration();
  all.adds("addNetworkParams", [](W& w, P* p) { return w.addNetworkParams(p, c.ethernet); });
  all.adds("addWirelessParams", [](W& w, P* p) { return w.addWirelessParams(p, c.wireless); });
  all.adds("addUSBTimeout", [](W& w, P* p) { return w.addUSBTimeout(p, c.usb_timeout); });
  all.adds("addOCPLanguage", [](W& w, P* p) { return w.addOCPLanguage(p, c.ocp_language); });
  all.adds("addErrorControl", [](W& w, P* p) { return w.addErrorControl(p, c.error_control); });
  all.adds("addUSBSpeed", [](W& w, P* p) { return w.addUSBSpeed(p, c.usb_speed); });
  all.adds("addUsageCounters", [](W& w, P* p) { return w.addUsageCounters(p, c); });
  all.adds("addPowerAdjustments", [](W& w, P* p) { return w.addPowerAdjustments(p, {}); });
  all.adds("addImagingParameters",
           [](W& w, P* p) { return w.addImagingParameters(p, c.imaging_parameters); });
  all.adds("addTricolorSettings",
           [](W& w, P* p) { return w.addTricolorSettings(p, c.tricolor_settings); });
  all.adds("addRibbonMotorParams",
           [](W& w, P* p) { return w.addRibbonMotorParams(p, c.takeup_motor); });
  all.adds("addMechAdjustments",
           [](W& w, P* p) { return w.addMechAdjustments(p, c.mech_adjustments); });
  all.adds("addInternalEncoder",
           [](W& w, P* p) { return w.addInternalEncoder(p, c.internal_encoder); });
  all.adds("addCleanParams", [](W& w, P* p) { return w.addCleanParams(p, c.cleaning); });
  all.adds("addFeederParams", [](W& w, P* p) { return w.addFeederParams(p, c.feeder_mode); });
}

void addSettingsOfMedia(ConfigurationOperations& all) {
  using W = KVXSetConfig;
  using P = TiXmlElement;
  static _KVConfiguration const& c = configuration();
  static _CustomCardInfo const& card = c.cards[0];
  all.adds("addLaminateInfo", [](W& w, P* p) { return w.addLaminateInfo(p, {}, true); });
  all.adds("addLaminationInfo", [](W& w, P* p) { return w.addLaminationInfo(p, c.lamination); });
  all.adds("addCardInformation", [](W& w, P* p) { return w.addCardInformation(p, card); });
  all.adds("addTransferTemps",
           [](W& w, P* p) { return w.addTransferTemps(p, _TransferTempInfo{}); });
  all.adds("addTransferTemps",
           [](W& w, P* p) { return w.addTransferTemps(p, _ImageTransferTempInfo{}); });
  all.adds("addTransferSpeeds", [](W& w, P* p) { return w.addTransferSpeeds(p, {}); });
  all.adds("addTransferSettings",
           [](W& w, P* p) { return w.addTransferSettings(p, c.transfer_settings); });
  all.adds("addRibbonInfo", [](W& w, P* p) { return w.addRibbonInfo(p, c.ribbon, false); });
  all.adds("addMediaInfo", [](W& w, P* p) { return w.addMediaInfo(p, c); });
  all.adds("addLamAdjustments", [](W& w, P* p) { return w.addLamAdjustments(p, {}); });
  all.adds("addCardInfo", [](W& w, P* p) { return w.addCardInfo(p, card); });
}

void addWordsOfConfiguration(ConfigurationOperations& all) {
  using W = KVXSetConfig;
  all.tells("GetSecurity", [](W& w) { return w.GetSecurity(1)[0]; });
  all.tells("GetCrypto", [](W& w) { return w.GetCrypto(1)[0]; });
  all.tells("FeederModeToString", [](W& w) { return w.FeederModeToString(0)[0]; });
  all.tells("RibbonNameToString",
            [](W& w) { return wordOf([&](char* out) { return w.RibbonNameToString(out, 256); }); });
  all.tells("ribbonTypeToString",
            [](W& w) { return wordOf([&](char* out) { return w.ribbonTypeToString(out, 0); }); });
  all.tells("feederSmartToString",
            [](W& w) { return wordOf([&](char* out) { return w.feederSmartToString(out, 0); }); });
  all.tells("feederTypeToString",
            [](W& w) { return wordOf([&](char* out) { return w.feederTypeToString(out, 0); }); });
  all.tells("CommsChannelFromInt", [](W& w) {
    return wordOf([&](char* out) { return w.CommsChannelFromInt(1, out, 64); });
  });
  all.tells("ContactlessEncFromInt", [](W& w) {
    return wordOf([&](char* out) { return w.ContactlessEncFromInt(1, out, 64); });
  });
}

void addConfigurationWriter(std::vector<Operation>& operations) {
  ConfigurationOperations all("Kovra::KVXSetConfig::", operations);
  constexpr long allSections = ~0L;
  all.composes("SetConfiguration", [](KVXSetConfig& writer, wchar_t* out) {
    return writer.SetConfiguration(configuration(), out, roomOfOut, allSections, 0, false);
  });
  all.adds("addConfiguration", [](KVXSetConfig& writer, TiXmlElement* root) {
    return writer.addConfiguration(root, configuration(), allSections, 0);
  });
  all.saves();
  addSettings(all);
  addSettingsOfMedia(all);
  addWordsOfConfiguration(all);
}

// ---- Capabilities ----------------------------------------------------------------------------

/// The capabilities of the sample, with the lists that a host has to bring.
struct HostCapabilities {
  _PortCaps hostPorts[8] = {};
  _PortCaps devicePorts[8] = {};
  _InterfaceCaps interfaces[8] = {};
  _OCPLanguageCaps languages[8] = {};
  int formats[8] = {};
  _FontCaps fonts[8] = {};
  _TemplateCaps templates[8] = {};
  _TemplateCaps graphics[8] = {};
  _BarCodeCaps barcodes[8] = {};
  _Capabilities record = {};

  HostCapabilities() {
    record.hostPorts = hostPorts;
    record.devicePorts = devicePorts;
    record.swInterfaces = interfaces;
    record.ocpLanguages = languages;
    record.graphicFormats = formats;
    record.fonts = fonts;
    record.templates = templates;
    record.graphics = graphics;
    record.barcodes = barcodes;
    for (int* const room :
         {&record.hostPortCount, &record.devicePortCount, &record.swInterfaceCount,
          &record.ocpLanguageCount, &record.graphicFormatCount, &record.fontCount,
          &record.templateCount, &record.graphicCount, &record.barcodeCount}) {
      *room = 8;
    }
    std::wstring const reply = test::wide(test::contentsOf(KOVRA_SAMPLES_DIR "/caps/full.xml"));
    KVXCapsParser().GetCapabilities(*reply.c_str(), static_cast<int>(reply.size()), record);
  }
};

_Capabilities const& capabilities() {
  static auto const host = std::make_unique<HostCapabilities>();
  return host->record;
}

using CapabilitiesOperations = WriterOperations<KVXSetCaps>;

void addLists(CapabilitiesOperations& all) {
  using W = KVXSetCaps;
  using P = TiXmlElement;
  static _Capabilities const& c = capabilities();
  all.adds("addHostPorts", [](W& w, P* p) { return w.addHostPorts(p, c.hostPorts, 2); });
  all.adds("addDevicePorts", [](W& w, P* p) { return w.addDevicePorts(p, c.devicePorts, 2); });
  all.adds("addPorts", [](W& w, P* p) { return w.addPorts(p, c.hostPorts, 2, longName); });
  all.adds("addSWInterfaces", [](W& w, P* p) { return w.addSWInterfaces(p, c.swInterfaces, 2); });
  all.adds("addOcpLanguages", [](W& w, P* p) { return w.addOcpLanguages(p, c.ocpLanguages, 2); });
  all.adds("addGraphicFormatsCaps",
           [](W& w, P* p) { return w.addGraphicFormatsCaps(p, c.graphicFormats, 2); });
  all.adds("addFontsCaps", [](W& w, P* p) { return w.addFontsCaps(p, c.fonts, 2); });
  all.adds("addTemplateCaps", [](W& w, P* p) { return w.addTemplateCaps(p, c.templates, 2); });
  all.adds("addGraphicsCaps", [](W& w, P* p) { return w.addGraphicsCaps(p, c.graphics, 2); });
  all.adds("addBarCodes", [](W& w, P* p) { return w.addBarCodes(p, c.barcodes, 2); });
}

void addCapabilitiesBesideLists(CapabilitiesOperations& all) {
  using W = KVXSetCaps;
  using P = TiXmlElement;
  static _Capabilities const& c = capabilities();
  all.adds("addImageSharpeningLevels",
           [](W& w, P* p) { return w.addImageSharpeningLevels(p, 15); });
  all.adds("addSecurityCaps", [](W& w, P* p) { return w.addSecurityCaps(p, c.security); });
  all.adds("addMemoryCaps", [](W& w, P* p) { return w.addMemoryCaps(p, c); });
  all.adds("addMediaPathCaps", [](W& w, P* p) { return w.addMediaPathCaps(p, c); });
  all.adds("addImageCaps", [](W& w, P* p) { return w.addImageCaps(p, c); });
  all.adds("addInternalEncoder",
           [](W& w, P* p) { return w.addInternalEncoder(p, c.internalEncoder); });
  all.adds("addInternalEncoderOnly",
           [](W& w, P* p) { return w.addInternalEncoderOnly(p, c.internalEncoder); });
}

void addWordsOfCapabilities(CapabilitiesOperations& all) {
  using W = KVXSetCaps;
  auto const word = [&](char const* name, std::function<bool(W&, char*)> write) {
    all.tells(name, [write = std::move(write)](W& writer) {
      return wordOf([&](char* out) { return write(writer, out); });
    });
  };
  word("portTypeToString", [](W& w, char* out) { return w.portTypeToString(out, 1); });
  word("protocolToString", [](W& w, char* out) { return w.protocolToString(out, 1); });
  word("transportToString", [](W& w, char* out) { return w.transportToString(out, 1); });
  word("encAlgToString", [](W& w, char* out) { return w.encAlgToString(out, 1); });
  word("graphicFormatToString", [](W& w, char* out) { return w.graphicFormatToString(out, 1); });
  word("printSystemTypeToString",
       [](W& w, char* out) { return w.printSystemTypeToString(out, 1); });
  word("printTypeToString", [](W& w, char* out) { return w.printTypeToString(out, 1); });
  word("LaminatorToString", [](W& w, char* out) { return w.LaminatorToString(out, 1); });
  word("LamTypeToString", [](W& w, char* out) { return w.LamTypeToString(out, {}); });
  word("MagHeadTypeToString", [](W& w, char* out) { return w.MagHeadTypeToString(out, 1); });
  word("magStripeLocationToString",
       [](W& w, char* out) { return w.magStripeLocationToString(out, 1); });
  word("CommsChannelFromInt", [](W& w, char* out) { return w.CommsChannelFromInt(1, out, 64); });
  word("ContactlessEncFromInt",
       [](W& w, char* out) { return w.ContactlessEncFromInt(1, out, 64); });
  word("ribbonTypeToString", [](W& w, char* out) { return w.ribbonTypeToString(out, 1); });
  word("feederTypeToString", [](W& w, char* out) { return w.feederTypeToString(out, 1); });
  word("feederSmartToString", [](W& w, char* out) { return w.feederSmartToString(out, 1); });
}

void addCapabilitiesWriter(std::vector<Operation>& operations) {
  CapabilitiesOperations all("Kovra::KVXSetCaps::", operations);
  all.composes("SetCapabilities", [](KVXSetCaps& writer, wchar_t* out) {
    return writer.SetCapabilities(capabilities(), out, roomOfOut, 0, false);
  });
  all.adds("addCapabilities", [](KVXSetCaps& writer, TiXmlElement* into) {
    return writer.addCapabilities(into, capabilities(), 0);
  });
  all.saves();
  addLists(all);
  addCapabilitiesBesideLists(all);
  addWordsOfCapabilities(all);
}

// ---- Media and identity ----------------------------------------------------------------------

struct DestroyMedia {
  void operator()(_KVMediaInfo* media) const { DestroyKVMedia(media); }
};

_KVMediaInfo& media() {
  static auto const record = [] {
    std::unique_ptr<_KVMediaInfo, DestroyMedia> read(GetKVMedia());
    BuildKVMedia(read.get());
    std::string const reply = test::contentsOf(KOVRA_SAMPLES_DIR "/media/full.xml");
    KVXMediaParser().GetMedia(*reply.c_str(), 0, *read);
    return read;
  }();
  return *record;
}

void addMediaWriter(std::vector<Operation>& operations) {
  using W = KVXSetMedia;
  using P = TiXmlElement;
  WriterOperations<W> all("Kovra::KVXSetMedia::", operations);
  all.composes("SetMedia",
               [](W& w, wchar_t* out) { return w.SetMedia(media(), out, roomOfOut, 1, false); });
  all.addsTo("addMedia", [](auto& desk) {
    desk.writer.root = &desk.parent;
    return desk.writer.addMedia(media(), 1);
  });
  all.saves();
  all.adds("addCardInfo", [](W& w, P* p) { return w.addCardInfo(p, *media().cards->front()); });
  all.adds("addCardInformation",
           [](W& w, P* p) { return w.addCardInformation(p, *media().cards->front()); });
  all.adds("addTransferTemps", [](W& w, P* p) { return w.addTransferTemps(p, {}); });
  all.adds("addTransferSpeeds", [](W& w, P* p) { return w.addTransferSpeeds(p, {}); });
  all.adds("addLaminationAdjustments",
           [](W& w, P* p) { return w.addLaminationAdjustments(p, {}); });
}

KVPrinterInfo const& printer() {
  static KVPrinterInfo const record = [] {
    KVPrinterInfo read = {};
    std::string const reply = test::contentsOf(KOVRA_SAMPLES_DIR "/identity/full.xml");
    KVXPrinterIDParser().ParsePrinterInfo(reply.c_str(), 0, read);
    return read;
  }();
  return record;
}

void addIdentityWriter(std::vector<Operation>& operations) {
  using W = KVXSetPrinterInfo;
  using P = TiXmlElement;
  WriterOperations<W> all("Kovra::KVXSetPrinterInfo::", operations);
  all.composes("SetPrinterInfo",
               [](W& w, wchar_t* out) { return w.SetPrinterInfo(printer(), out, roomOfOut, ~0L); });
  all.adds("addPrinterInfo", [](W& w, P* p) { return w.addPrinterInfo(p, printer()); });
  all.adds("addPrinterInfo", [](W& w, P* p) { return w.addPrinterInfo(p, printer(), ~0L); });
  all.saves();
}

// ---- Secure actions and device commands ------------------------------------------------------

void addSecurityWriter(std::vector<Operation>& operations) {
  using W = KVXSetSecActions;
  static constexpr char const* t = longText;
  WriterOperations<W> all("Kovra::KVXSetSecActions::", operations);
  static _tagSecActionXMLValues action = {t, t, t, t, t};
  static _tagSecKeys keys = {"a data key", "a host key", "a lock key"};
  all.composes("GetNonceXML", [](W& w, wchar_t* out) { return w.GetNonceXML(t, out, roomOfOut); });
  all.composes("SecureActionRequestXML",
               [](W& w, wchar_t* out) { return w.SecureActionRequestXML(action, out, roomOfOut); });
  all.composes("SecureActionDirectiveXML", [](W& w, wchar_t* out) {
    return w.SecureActionDirectiveXML(action, out, roomOfOut, 30);
  });
  all.composes("GetPasskeyXML",
               [](W& w, wchar_t* out) { return w.GetPasskeyXML(t, t, out, roomOfOut); });
  all.composes("GetSecureActionXML",
               [](W& w, wchar_t* out) { return w.GetSecureActionXML(t, out, roomOfOut); });
  all.composes("SetSecureActionXML",
               [](W& w, wchar_t* out) { return w.SetSecureActionXML(keys, out, roomOfOut); });
  all.composes("SetHostAndEncryptXML", [](W& w, wchar_t* out) {
    return w.SetHostAndEncryptXML(out, roomOfOut, t, t, t, t, t, t, t, true, true, true);
  });
  all.saves();
}

void addDeviceControl(std::vector<Operation>& operations) {
  using W = KVXDeviceControl;
  constexpr int room = roomOfOut;
  WriterOperations<W, char> all("KVXDeviceControl::", operations);
  all.composes("RunMotorCommand",
               [](W& w, char* out) { return w.RunMotorCommand(1, 0, 50, 1, out, room); });
  all.composes("RunMotorCommand", [](W& w, char* out) {
    return w.RunMotorCommand(nullptr, 2, 5, 12.0F, 0, true, out, room);
  });
  all.composes("RunCamCommand",
               [](W& w, char* out) { return w.RunCamCommand(longText, "a state", out, room); });
  all.composes("RunCalibrateCommand", [](W& w, char* out) {
    return w.RunCalibrateCommand(nullptr, 1, 1.25F, 60.0F, out, room);
  });
  all.composes("RunOtherCommands", [](W& w, char* out) {
    return w.RunOtherCommands("fan", longText, "yellow", true, out, room);
  });
  all.composes("RunRFIDCommands",
               [](W& w, char* out) { return w.RunRFIDCommands("radio", 1, 1, out, room); });
  all.saves();
}

}  // namespace

std::vector<Operation> writingOperations() {
  std::vector<Operation> all;
  addTags(all);
  addConfigurationWriter(all);
  addCapabilitiesWriter(all);
  addMediaWriter(all);
  addIdentityWriter(all);
  addSecurityWriter(all);
  addDeviceControl(all);
  return all;
}

}  // namespace Kovra::sweep

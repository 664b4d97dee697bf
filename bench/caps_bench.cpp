// Capabilities: reading against a bare TinyXML parse, writing against the same tree built by hand
// with TinyXML alone.

#include <string>
#include <vector>

#include "kvxcapsparser.h"
#include "kvxsetcaps.h"
#include "support/bench_support.hpp"
#include "support/by_hand.hpp"

namespace {

using namespace kovra_bench;
using namespace Kovra;

/// The sample in ASCII, which every locale converts.
std::string reply() {
  std::string text = sample("caps/full.xml");
  for (char& c : text) {
    if (static_cast<unsigned char>(c) > 0x7F) c = '?';
  }
  return text;
}

/// A host's record with room for the sample's lists.
struct Host {
  _PortCaps hostPorts[8]{};
  _PortCaps devicePorts[8]{};
  _InterfaceCaps interfaces[8]{};
  _OCPLanguageCaps languages[8]{};
  int formats[8]{};
  _FontCaps fonts[8]{};
  std::vector<_TemplateCaps> templates = std::vector<_TemplateCaps>(8);
  std::vector<_TemplateCaps> graphics = std::vector<_TemplateCaps>(8);
  _BarCodeCaps barcodes[8]{};
  _Capabilities caps{};

  Host() {
    caps.hostPorts = hostPorts;
    caps.devicePorts = devicePorts;
    caps.swInterfaces = interfaces;
    caps.ocpLanguages = languages;
    caps.graphicFormats = formats;
    caps.fonts = fonts;
    caps.templates = templates.data();
    caps.graphics = graphics.data();
    caps.barcodes = barcodes;
    caps.hostPortCount = caps.devicePortCount = caps.swInterfaceCount = caps.ocpLanguageCount = 8;
    caps.graphicFormatCount = caps.fontCount = caps.templateCount = caps.graphicCount = 8;
    caps.barcodeCount = 8;
  }
  Host(Host const&) = delete;
  Host& operator=(Host const&) = delete;

  /// The counts become those of the sample.
  void read(std::wstring const& text) {
    KVXCapsParser().GetCapabilities(text.front(), static_cast<int>(text.size()), caps);
    caps.hostPortCount = caps.swInterfaceCount = caps.ocpLanguageCount = caps.fontCount = 3;
    caps.barcodeCount = 3;
    caps.devicePortCount = caps.graphicCount = 1;
    caps.templateCount = 2;
    caps.graphicFormatCount = 5;
  }
};

void ports(TiXmlElement* list, char const* item, _PortCaps const* first, int count) {
  char const* const words[] = {"usb_2_0", "serial", "ethernet_10_100", "ethernet_10_100_1G", ""};
  for (int i = 0; i < count; ++i) {
    TiXmlElement* const one = below(list, item);
    number(one, "port_id", first[i].portId);
    text(one, "type", words[first[i].type]);
  }
}

void lists(TiXmlElement* root, _Capabilities const& caps) {
  ports(below(root, "host_ports"), "host_port", caps.hostPorts, caps.hostPortCount);
  ports(below(root, "device_ports"), "device_port", caps.devicePorts, caps.devicePortCount);
  TiXmlElement* const interfaces = below(root, "software_interfaces");
  char const* const protocols[] = {"snmp", "snmp_trap", "http", "kovra"};
  char const* const transports[] = {"udp", "tcp", "usb", "usb_2_0"};
  for (int i = 0; i < caps.swInterfaceCount; ++i) {
    TiXmlElement* const one = below(interfaces, "software_interface");
    text(one, "protocol", protocols[caps.swInterfaces[i].protocol]);
    text(one, "transport", transports[caps.swInterfaces[i].transport]);
    number(one, "port", caps.swInterfaces[i].port);
  }
  TiXmlElement* const languages = below(root, "ocp_languages");
  for (int i = 0; i < caps.ocpLanguageCount; ++i) {
    TiXmlElement* const one = below(languages, "ocp_language");
    number(one, "type", caps.ocpLanguages[i].type);
    text(one, "name", caps.ocpLanguages[i].name);
  }
  TiXmlElement* const levels = below(root, "image_sharpening_levels");
  for (char const* const word : {"off", "normal", "high", "low"}) {
    text(levels, "image_sharpening_level", word);
  }
}

void stock(TiXmlElement* root, _Capabilities const& caps) {
  TiXmlElement* const security = below(root, "security");
  yesOrNo(security, "passkey_protection", caps.security.passkeyProtection);
  text(security, "encryption_algorithm", "aes");
  TiXmlElement* const memory = below(root, "memory");
  number(memory, "ram", caps.ramSize);
  number(memory, "flash", caps.flashSize);
  TiXmlElement* const formats = below(root, "graphic_formats");
  for (char const* const word : {"bmp", "jpeg", "tga", "tiff", "raw"}) {
    text(formats, "graphic_format", word);
  }
  TiXmlElement* const fonts = below(root, "fonts");
  char const* const styles[] = {"none", "regular", "bold", "italic"};
  for (int i = 0; i < caps.fontCount; ++i) {
    TiXmlElement* const one = below(fonts, "font");
    text(one, "name", caps.fonts[i].name);
    yesOrNo(one, "name", caps.fonts[i].scalable);
    text(one, "style", styles[caps.fonts[i].style]);
  }
  TiXmlElement* const templates = below(root, "templates");
  for (int i = 0; i < caps.templateCount; ++i) {
    text(below(templates, "template"), "name", caps.templates[i].name);
  }
  TiXmlElement* const graphics = below(root, "graphics");
  for (int i = 0; i < caps.graphicCount; ++i) {
    TiXmlElement* const one = below(graphics, "graphic");
    text(one, "name", caps.graphics[i].name);
    text(one, "location", caps.graphics[i].location);
  }
}

void rest(TiXmlElement* root, _Capabilities const& caps) {
  text(root, "print_system", "retransfer");
  text(root, "print_type", "2_side");
  text(root, "laminator", "present");
  text(root, "laminator_type", "2_side");
  TiXmlElement* const path = below(root, "media_path");
  yesOrNo(path, "atm", caps.atm);
  number(path, "magazine_capacity", caps.magazineCapacity);
  TiXmlElement* const image = below(root, "image");
  TiXmlElement* const logical = below(image, "logical_page");
  number(logical, "length", caps.logicalPageLength);
  number(logical, "width", caps.logicalPageWidth);
  TiXmlElement* const physical = below(image, "physical_page");
  number(physical, "length", caps.physicalPageLength);
  number(physical, "width", caps.physicalPageWidth);
  number(image, "print_resolution", caps.printResolution);
  text(root, "mag_encoder", "iso");
  text(root, "mag_stripe", "front");
  TiXmlElement* const encoder = below(root, "internal_encoder");
  text(encoder, "comms_channel", "serial");
  yesOrNo(encoder, "contact_encoding", caps.internalEncoder.contact_encoding);
  text(encoder, "contactless_encoder", "mifare");
  TiXmlElement* const barcodes = below(root, "barcodes");
  for (int i = 0; i < caps.barcodeCount; ++i) text(barcodes, "barcode", caps.barcodes[i].name);
}

void writeCapabilities(_Capabilities const& caps, wchar_t* out, std::size_t length) {
  TiXmlDocument document;
  TiXmlElement* const root = begin(document, "capabilities");
  lists(root, caps);
  stock(root, caps);
  rest(root, caps);
  print(document, out, length);
}

int const reading = registered("capabilities_read", [](benchmark::State& state) {
  std::string const narrow = reply();
  std::wstring const text = widened(narrow);
  Host host;
  compare(state,
          [&] {
            benchmark::DoNotOptimize(KVXCapsParser().GetCapabilities(
                text.front(), static_cast<int>(text.size()), host.caps));
          },
          {bareParse(narrow)});
});

int const writing = registered("capabilities_write", [](benchmark::State& state) {
  Host host;
  host.read(widened(reply()));
  std::vector<wchar_t> ours(10000);
  std::vector<wchar_t> theirs(10000);
  auto const write = [&] {
    KVXSetCaps writer;
    benchmark::DoNotOptimize(writer.SetCapabilities(host.caps, ours.data(), 10000, 0, false));
  };
  auto const writeByHand = [&] { writeCapabilities(host.caps, theirs.data(), theirs.size()); };
  write();
  writeByHand();
  require(ours == theirs, "the capabilities written by hand are other ones");
  compare(state, write, {byHand(writeByHand)});
});

}  // namespace

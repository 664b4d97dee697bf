/// @file
/// Any bytes as a configuration: reading never strays, and the record that was read is a record
/// that the writer takes. The same bytes as a record: what is written is well-formed and has a
/// child for everything that was written. The classic reader tells of ribbons on standard error, so
/// fuzz with -close_fd_mask=2.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "config/config_tables.hpp"
#include "frame/output.hpp"
#include "kvxconfigparser.h"

using namespace Kovra;

namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

int childrenOf(TiXmlElement const& element) {
  int count = 0;
  for (auto* child = element.FirstChild(); child != nullptr; child = child->NextSibling()) ++count;
  return count;
}

std::string composed(_KVConfiguration const& record, long sections, int card, bool filmless,
                     int& children) {
  TiXmlDocument document;
  TiXmlElement* const root = frame::beginDocument(document, config::configurationRoots[0]);
  bool const written = frame::writeAll(*root, config::configuration, record,
                                       config::chosenSections(sections, card, filmless), false);
  children = childrenOf(*root);
  require(written ? children > 0 : children <= 1);
  return frame::printNarrow(document);
}

/// Letters and digits: what TinyXML makes of other characters is not in question here.
template <std::size_t N>
void makePrintable(char (&text)[N]) {
  for (char& c : text)
    c = c == '\0' ? c : static_cast<char>('a' + (static_cast<unsigned char>(c) % 26));
}

/// A flag may hold nothing but true and false.
void makeFlag(bool& flag) {
  unsigned char byte = 0;
  std::memcpy(&byte, &flag, 1);
  flag = (byte & 1U) != 0;
}

void makeValid(_KVConfiguration& config) {
  for (bool* flag :
       {&config.ethernet.dhcp, &config.ethernet.snmp, &config.wireless.snmp, &config.wireless.dhcp,
        &config.wireless.radio, &config.lamination.topLaminateInstalled,
        &config.lamination.bottomLaminateInstalled, &config.internal_encoder.contact_encoding}) {
    makeFlag(*flag);
  }
  makePrintable(config.wireless.ssid);
  makePrintable(config.wireless.key);
  makePrintable(config.ocp_language.name);
  makePrintable(config.ribbon.oem_country);
  makePrintable(config.film.oem_country);
  makePrintable(config.cleaning.cleaning_deadline_is_soft);
  for (_Laminate* side : {&config.lamination.top_laminate, &config.lamination.bottom_laminate}) {
    makePrintable(side->laminate_installed.description);
    makePrintable(side->laminate_installed.oem_country);
  }
  for (_CustomCardInfo& card : config.cards) {
    makePrintable(card.halvex_part_number);
    makePrintable(card.description);
  }
}

void readAndWrite(std::string const& text) {
  auto config = std::make_unique<_KVConfiguration>();
  std::memset(static_cast<void*>(config.get()), 0, sizeof *config);
  KVXConfigParser parser;
  require(!parser.GetConfiguration(text.c_str(), 0, *config) && parser.NoChildren());
  require(std::memchr(config->wireless.key, '\0', sizeof config->wireless.key) != nullptr);
  require(std::memchr(config->cards[1].description, '\0', 64) != nullptr);
  int children = 0;
  composed(*config, ~0L, 0, false, children);
}

void writeAndParse(std::uint8_t const* data, std::size_t size) {
  auto config = std::make_unique<_KVConfiguration>();
  std::memset(static_cast<void*>(config.get()), 0, sizeof *config);
  std::memcpy(static_cast<void*>(config.get()), data, std::min(size, sizeof *config));
  makeValid(*config);
  std::int64_t sections = ~0L;
  std::memcpy(&sections, data, std::min(size, sizeof sections));
  for (long const bits : {~0L, static_cast<long>(sections)}) {
    for (int card = 0; card <= 3; ++card) {
      int children = 0;
      std::string const text = composed(*config, bits, card, (size & 1U) != 0, children);
      TiXmlDocument document;
      document.Parse(text.c_str());
      require(!document.Error() && document.RootElement() != nullptr);
      require(childrenOf(*document.RootElement()) == children);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  readAndWrite(std::string(reinterpret_cast<char const*>(data), size));
  if (size > 0) writeAndParse(data, size);
  return 0;
}

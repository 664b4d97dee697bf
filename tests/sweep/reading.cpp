// Whatever reads: replies, their elements, single values and words.

#include <tinyxml.h>

#include <array>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kvxcapsparser.h"
#include "kvxhelper.h"
#include "kvxmediaparser.h"
#include "kvxsecactionparser.h"
#include "kvxstatusparser.h"
#include "support/reading_operations.hpp"
#include "sweep/operation.hpp"

namespace Kovra::sweep {
namespace {

/// A reading of a sample. Entries of a record that has lists come one after the other.
class Reading : public Trial {
 public:
  Reading(std::unique_ptr<test::Trial> trial, bool grows)
      : trial_(std::move(trial)), grows_(grows) {}

  long call() override { return trial_->read() ? 1 : 0; }
  Contents contents() override {
    return grows_ ? Contents{"", trial_->contents()} : Contents{trial_->contents(), ""};
  }

 private:
  std::unique_ptr<test::Trial> trial_;
  bool grows_;
};

Operation readingOf(test::ReadingOperation const& reading, std::string const& text,
                    test::Length length) {
  return {reading.name, [reading, text, length] {
            return std::make_unique<Reading>(reading.startOn(text, length),
                                             reading.asks == test::Asks::forEntries);
          }};
}

/// The text with an element that nothing closes.
std::string refused(std::string text) {
  return text.insert(text.rfind("</"), "<open>");
}

/// The sample as it is, lengthened until neither its text nor its nodes find room on the stack, and
/// malformed.
void addReplies(std::vector<Operation>& all) {
  using test::Length;
  for (test::ReadingOperation const& reading : test::readingOperations()) {
    std::string const text = reading.text();
    all.push_back(readingOf(reading, text, Length::ofOrdinaryReplies));
    all.push_back(readingOf(reading, text, Length::beyondTheStack));
    if (reading.element != nullptr) continue;
    all.push_back(readingOf(reading, refused(text), Length::beyondTheStack));
  }
}

/// An element of a host's with all that single values are read from.
struct HostElement {
  TiXmlElement element{"an_element_with_a_long_name_of_its_own"};
  std::array<char, 64> text{};
  std::array<unsigned char, 6> address{};
  char flag = 0;
  bool boolean = false;
  int whole = 0;
  unsigned short narrow = 0;
  unsigned long counter = 0;
  unsigned int natural = 0;
  long large = 0;
  float real = 0;

  HostElement() {
    element.LinkEndChild(new TiXmlText("12 and a text that needs a place of its own"));
    element.SetAttribute("number", "34 and a value that needs a place of its own");
    element.SetAttribute("address", "192.0.2.7");
  }
};

Contents valuesOf(HostElement& host) {
  std::string values(host.text.begin(), host.text.end());
  values.append(host.address.begin(), host.address.end());
  for (double const value :
       {static_cast<double>(host.flag), static_cast<double>(host.boolean ? 1 : 0),
        static_cast<double>(host.whole), static_cast<double>(host.narrow),
        static_cast<double>(host.counter), static_cast<double>(host.natural),
        static_cast<double>(host.large), static_cast<double>(host.real)}) {
    values += ' ' + std::to_string(value);
  }
  return {values, ""};
}

Operation value(char const* name, std::function<bool(HostElement&)> read) {
  return operation<HostElement>(
      std::string("KVXHelper::") + name,
      [read = std::move(read)](HostElement& host) { return read(host) ? 1 : 0; }, valuesOf);
}

void addValues(std::vector<Operation>& all) {
  using H = KVXHelper;
  using E = HostElement;
  Operation const values[] = {
      value("GetString",
            [](E& e) { return H::GetString(&e.element, "number", e.text.data(), 64); }),
      value("GetString", [](E& e) { return H::GetString(&e.element, e.text[0], 64); }),
      value("GetBool", [](E& e) { return H::GetBool(&e.element, "number", e.flag); }),
      value("GetBool", [](E& e) { return H::GetBool(&e.element, e.flag); }),
      value("GetBool", [](E& e) { return H::GetBool(&e.element, e.boolean); }),
      value("GetNumberFromAttr",
            [](E& e) { return H::GetNumberFromAttr(&e.element, "number", e.whole); }),
      value("GetNumberFromAttr",
            [](E& e) { return H::GetNumberFromAttr(&e.element, "number", e.real); }),
      value("GetInt", [](E& e) { return H::GetInt(&e.element, "number", e.whole); }),
      value("GetShort", [](E& e) { return H::GetShort(&e.element, "number", e.narrow); }),
      value("GetIP", [](E& e) { return H::GetIP(&e.element, "address", e.counter); }),
      value("GetNumber", [](E& e) { return H::GetNumber(&e.element, e.whole, false); }),
      value("GetNumber", [](E& e) { return H::GetNumber(&e.element, e.narrow, false); }),
      value("GetNumber", [](E& e) { return H::GetNumber(&e.element, e.counter, false); }),
      value("GetNumber", [](E& e) { return H::GetNumber(&e.element, e.natural, false); }),
      value("GetNumber", [](E& e) { return H::GetNumber(&e.element, e.large, false); }),
      value("GetNumber", [](E& e) { return H::GetNumber(&e.element, e.real, false); }),
      value("GetPhysicalAddress",
            [](E& e) { return H::GetPhysicalAddress(&e.element, e.address.data()); }),
  };
  all.insert(all.end(), std::begin(values), std::end(values));
}

void addWordsOfTheToolbox(std::vector<Operation>& all) {
  using H = KVXHelper;
  auto const add = [&](char const* name, std::function<long()> call) {
    all.push_back(telling(std::string("KVXHelper::") + name, std::move(call)));
  };
  add("RibbonNameToInt", [] { return H::RibbonNameToInt("YMCKO"); });
  add("RibbonDescriptionToInt", [] { return H::RibbonDescriptionToInt("YMCKO"); });
  add("RibbonTypeToInt", [] { return H::RibbonTypeToInt("resin"); });
  add("FeederSmartToInt", [] { return H::FeederSmartToInt("prox"); });
  add("FeederTypeToInt", [] { return H::FeederTypeToInt("pvc"); });
  add("CoercivityToInt", [] { return H::CoercivityToInt("high"); });
  add("LaminationTypeToInt", [] { return H::LaminationTypeToInt("patch"); });
  add("CommsChannelToInt", [] { return H::CommsChannelToInt("usb"); });
  add("ContactlessEncToInt", [] { return H::ContactlessEncToInt("iclass"); });
  add("PanelToInt", [] { return H::PanelToInt("yellow"); });
  add("LaminatorWidthToInt", [] { return H::LaminatorWidthToInt("full"); });
  add("LaminatorRegistrationToInt", [] { return H::LaminatorRegistrationToInt("none"); });
}

void addWordsOfReaders(std::vector<Operation>& all) {
  using C = KVXCapsParser;
  using S = KVXStatusParser;
  auto const add = [&](char const* name, std::function<long()> call) {
    all.push_back(telling(std::string("Kovra::") + name, std::move(call)));
  };
  add("KVXCapsParser::portTypeToInt", [] { return C().portTypeToInt("usb"); });
  add("KVXCapsParser::protocolToInt", [] { return C().protocolToInt("tcp"); });
  add("KVXCapsParser::transportToInt", [] { return C().transportToInt("usb"); });
  add("KVXCapsParser::encAlgToInt", [] { return C().encAlgToInt("aes"); });
  add("KVXCapsParser::graphicsFormatToInt", [] { return C().graphicsFormatToInt("bmp"); });
  add("KVXCapsParser::printerTypeToInt", [] { return C().printerTypeToInt("direct"); });
  add("KVXCapsParser::magHeadTypeToInt", [] { return C().magHeadTypeToInt("iso"); });
  add("KVXCapsParser::magStripeLocationToInt", [] { return C().magStripeLocationToInt("front"); });
  add("KVXCapsParser::laminationTypeToInt", [] { return C().laminationTypeToInt("patch"); });
  add("KVXStatusParser::printerStateToInt", [] { return S().printerStateToInt("idle"); });
  add("KVXStatusParser::lamStateToInt", [] { return S().lamStateToInt("idle"); });
  add("KVXStatusParser::jobStatusToInt", [] { return S().jobStatusToInt("printing"); });
  add("KVXStatusParser::cleaningStateToInt", [] { return S().cleaningStateToInt("idle"); });
  add("KVXStatusParser::GetWirelessState", [] { return S().GetWirelessState("connected"); });
  add("KVXSecAction::GetActionName", [] {
    char text[] = "a text of no action at all";
    return KVXSecAction().GetActionName(text) ? 1 : 0;
  });
}

/// The lists of a host's record of media.
struct HostMedia {
  _KVMediaInfo* made = nullptr;

  HostMedia() = default;
  ~HostMedia() { DestroyKVMedia(made); }
  HostMedia(HostMedia const&) = delete;
  HostMedia& operator=(HostMedia const&) = delete;
};

struct HostRecord : HostMedia {
  HostRecord() { made = GetKVMedia(); }
};

struct HostLists : HostRecord {
  HostLists() { BuildKVMedia(made); }
};

Contents shown(HostMedia& media) {
  if (media.made == nullptr) return {"no record", ""};
  auto const& lists = *media.made;
  bool const hasAll = lists.cards != nullptr && lists.films != nullptr &&
                      lists.ribbons != nullptr && lists.laminates != nullptr;
  return {hasAll ? "all lists" : "a record without all lists", ""};
}

void addMediaRecords(std::vector<Operation>& all) {
  all.push_back(operation<HostMedia>(
      "Kovra::GetKVMedia",
      [](HostMedia& media) {
        media.made = GetKVMedia();
        return 1;
      },
      shown));
  all.push_back(operation<HostRecord>(
      "Kovra::BuildKVMedia",
      [](HostRecord& media) {
        BuildKVMedia(media.made);
        return 1;
      },
      shown));
  all.push_back(operation<HostLists>(
      "Kovra::DestroyKVMedia",
      [](HostLists& media) {
        DestroyKVMedia(media.made);
        media.made = nullptr;
        return 1;
      },
      shown));
}

}  // namespace

std::vector<Operation> readingOperations() {
  std::vector<Operation> all;
  addReplies(all);
  addValues(all);
  addWordsOfTheToolbox(all);
  addWordsOfReaders(all);
  addMediaRecords(all);
  return all;
}

}  // namespace Kovra::sweep

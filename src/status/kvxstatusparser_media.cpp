// Media status.

#include <cstring>
#include <span>
#include <string_view>

#include "frame/kvxhelper_words.hpp"
#include "frame/text.hpp"
#include "frame/typed/reply.hpp"
#include "kvxstatusparser.h"
#include "status/status_replies.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

constexpr std::string_view descriptionName = frame::Member<&_MediaStatusInfo::description>::name();
constexpr std::string_view codeName = frame::Member<&_MediaStatusInfo::code>::name();

// A ribbon's kind, by its panels.

/// The array of a consumable's description, also where only its first character is known.
using Description = std::span<char, sizeof(_MediaStatusInfo::description)>;

/// Deliberately appends to what the description holds already, be it an earlier panel or a text of
/// the host, who clears the record to have the panels alone.
struct PanelReading : NeverWritten, NeverAssigned {
  static bool read(Element panel, Description& description, Watch const& watch) {
    WordText words;
    if (!words.read(panel)) {
      remark(watch, [&](Observer& observer) { observer.emptyElement(panel); });
      return false;
    }
    std::size_t const before = ::strnlen(description.data(), description.size());
    appendBounded(words.get(), description.data(), static_cast<int>(description.size()));
    remark(watch, [&](Observer& observer) {
      std::string_view const kept = description.data();
      observer.member(descriptionName, shown(kept));
      if (std::strlen(panel.text()) > kept.size() - before) observer.cutText(panel, kept);
    });
    return true;
  }
};

constexpr Table ribbonPanels = {reading<Description, PanelReading>("panel")};

/// The code is that of all panels joined, and stays as it was when the last one has no text.
struct SequenceReading : NeverWritten, NeverAssigned {
  static bool read(Element sequence, _MediaStatusInfo& ribbon, Watch const& watch) {
    Description description(ribbon.description);
    if (!walk(sequence, ribbonPanels, description, watch)) return false;
    ribbon.code = ribbonDescriptions.codeOf(ribbon.description);
    remark(watch, [&](Observer& observer) {
      if (!Kind::show(observer, codeName, ribbon.description, ribbon.code)) {
        observer.unknownWord(sequence, ribbon.description, ribbonDescriptions);
      }
    });
    return true;
  }

  static void outline(Outline& outline) {
    outlineOf(ribbonPanels, outline);
    Kind::outline(outline);
  }

 private:
  using Kind = KeywordKind<ribbonDescriptions>;
};

// A ribbon's or film's kind, by its name.

/// The description fills two members: its own, and the code of the ribbon that it names.
struct NameReading : NeverWritten, NeverAssigned {
  static bool read(Element element, _MediaStatusInfo& media, Watch const& watch) {
    bool const read = TextKind::read(element, media.description) && Kind::read(element, media.code);
    remark(watch, [&](Observer& observer) {
      if (!read) return observer.emptyElement(element);
      TextKind::report(observer, descriptionName, element, media.description);
      Kind::report(observer, codeName, element, media.code);
    });
    return read;
  }

  static void outline(Outline& outline) { Kind::outline(outline); }

 private:
  using Kind = KeywordKind<ribbonNames>;
};

// The consumables. Where they differ is meant.

constexpr Table ribbon = {
    number<&_MediaStatusInfo::type>("type"),
    reading<_MediaStatusInfo, SequenceReading>("sequence"),
    reading<_MediaStatusInfo, NameReading>("description"),
    text<&_MediaStatusInfo::oem_country>("oem_country"),
    number<&_MediaStatusInfo::initial_size>("initial_size"),
    number<&_MediaStatusInfo::remaining>("panels_remaining"),
    number<&_MediaStatusInfo::remaining>("ribbon_remaining"),
    text<&_MediaStatusInfo::part_number>("part_number"),
    number<&_MediaStatusInfo::diam_payout>("diam_ribbon_payout"),
    number<&_MediaStatusInfo::diam_takeup>("diam_ribbon_takeup"),
};

/// No "sequence", no "part_number", and what remains has one name only.
constexpr Table film = {
    number<&_MediaStatusInfo::type>("type"),
    reading<_MediaStatusInfo, NameReading>("description"),
    text<&_MediaStatusInfo::oem_country>("oem_country"),
    number<&_MediaStatusInfo::initial_size>("initial_size"),
    number<&_MediaStatusInfo::remaining>("panels_remaining"),
    number<&_MediaStatusInfo::diam_payout>("diam_ribbon_payout"),
    number<&_MediaStatusInfo::diam_takeup>("diam_ribbon_takeup"),
};

/// The type goes into `code`, where hosts look for a laminate's kind; `type` stays theirs. The
/// description is no ribbon's name and has no code.
constexpr Table laminate = {
    number<&_MediaStatusInfo::code>("type"),
    text<&_MediaStatusInfo::description>("description"),
    text<&_MediaStatusInfo::oem_country>("oem_country"),
    number<&_MediaStatusInfo::initial_size>("initial_size"),
    number<&_MediaStatusInfo::remaining>("panels_remaining"),
};

constexpr Table mediaStatus = {
    nested<&MediaStatus::ribbon, ribbon>("ribbon"),
    nested<&MediaStatus::film, film>("film"),
    nested<&MediaStatus::top_laminate, laminate>("top_laminate"),
    nested<&MediaStatus::bottom_laminate, laminate>("bottom_laminate"),
};

constexpr char const* mediaStatusRoots[] = {"get_media_status"};
using MediaStatusReading = TableReading<mediaStatus>;

constexpr ReplyReader replies[] = {
    reader<MediaStatus, MediaStatusReading>("media-status", "ribbon, film and laminates loaded",
                                            mediaStatusRoots),
};

}  // namespace

std::span<frame::ReplyReader const> mediaStatusReplies() {
  return replies;
}

bool KVXStatusParser::ParseMediaStatus(wchar_t const& text, int len, MediaStatus& out) {
  return readReply<MediaStatusReading>(text, len, mediaStatusRoots, out);
}

bool KVXStatusParser::parseMediaStatus(TiXmlElement* root, MediaStatus& out) {
  return walk(root, mediaStatus, out);
}

bool KVXStatusParser::getRibbonStatus(TiXmlElement* element, MediaStatus& out) {
  return walk(element, ribbon, out.ribbon);
}

bool KVXStatusParser::getInTMStatus(TiXmlElement* element, MediaStatus& out) {
  return walk(element, film, out.film);
}

bool KVXStatusParser::getLaminateStatus(TiXmlElement* element, _MediaStatusInfo& out) {
  return walk(element, laminate, out);
}

bool KVXStatusParser::getRibbonDescription(TiXmlElement* sequence, char* description) {
  if (description == nullptr) return false;
  Description whole(description, Description::extent);
  return walk(sequence, ribbonPanels, whole);
}

}  // namespace Kovra

/// @file
/// The media document: its tables, for both directions. Rows stand in the writer's order.

#ifndef KOVRA_MEDIA_MEDIA_TABLES_HPP
#define KOVRA_MEDIA_MEDIA_TABLES_HPP

#include <cstddef>
#include <memory>
#include <string_view>
#include <type_traits>
#include <vector>

#include "frame/field.hpp"
#include "kvxmediarecords.h"
#include "shared/shared_tables.hpp"

namespace Kovra::media {

using namespace frame;

/// What decides over rows when a document is written.
enum : Circumstances {
  withTransfer = 1,  ///< the cards' transfer settings are wanted
};

// Cards.

inline constexpr char informationName[] = "information";
inline constexpr char transferTempsName[] = "transfer_temps";
inline constexpr char transferSpeedsName[] = "transfer_speeds";
inline constexpr char adjustmentsName[] = "laminator_adjustments";

inline constexpr auto const& information = shared::cardInformation<_CardInfo>;
inline constexpr auto const& transferTemps = shared::transferTemps<shared::ValueAlone>;
inline constexpr auto const& transferSpeeds = shared::transferSpeeds<shared::ValueAlone>;
inline constexpr auto const& adjustments = shared::laminatorAdjustments<shared::ValueAlone>;

inline constexpr Table card = {
    group<_CardInfo, information>(informationName),
    when(withTransfer, nested<&_CardInfo::transfer_temps, transferTemps>(transferTempsName)),
    when(withTransfer, nested<&_CardInfo::transfer_speeds, transferSpeeds>(transferSpeedsName)),
    nested<&_CardInfo::laminator_adjustments, adjustments>(adjustmentsName),
    number<&_CardInfo::cal_table>("cal_table"),
};

/// A film, a ribbon or a laminate.
inline constexpr Table ribbon = {
    text<&_MediaRibbonInfo::halvex_part_number>("halvex_part_number"),
    text<&_MediaRibbonInfo::description>("description"),
};

// Lists. Each is a vector that the record owns, as it owns the entries.

/// A list to which the children are appended. It may be missing: then it takes none.
struct List : Entries {
  std::string_view member;
  bool (*isThere)(_KVMediaInfo const&);
  std::size_t (*length)(_KVMediaInfo const&);
  /// Appends a cleared entry, or none: it is owned until the vector has a place for it, so that
  /// memory running out takes nothing from the record.
  void* (*append)(_KVMediaInfo&);
};

template <auto M, class Entry>
constexpr List listOf(EntriesOf<Entry> const& entries) {
  static_assert(std::is_same_v<typename frame::Member<M>::Type, std::vector<Entry*>*>,
                "these entries are not those of the list");
  return {entries, memberName<M>, [](_KVMediaInfo const& media) { return media.*M != nullptr; },
          [](_KVMediaInfo const& media) { return (media.*M)->size(); },
          [](_KVMediaInfo& media) -> void* {
            auto entry = std::make_unique<Entry>();
            (media.*M)->push_back(entry.get());
            return entry.release();
          }};
}

inline constexpr char cardsName[] = "cards";

inline constexpr List cardList = listOf<&_KVMediaInfo::cards>(entries<card>("card"));
inline constexpr List filmList = listOf<&_KVMediaInfo::films>(entries<ribbon>("film"));
inline constexpr List ribbonList = listOf<&_KVMediaInfo::ribbons>(entries<ribbon>("ribbon"));
inline constexpr List laminateList = listOf<&_KVMediaInfo::laminates>(entries<ribbon>("laminate"));

bool readList(List const& list, Element element, _KVMediaInfo& media, Watch const& watch);
/// Appends one entry, also an empty one.
bool readAppended(List const& list, Element element, _KVMediaInfo& media, Watch const& watch);

extern Kind const ownedListKind;

template <List const& L>
constexpr auto list(std::string_view element) {
  return adding(readOnly(Field<_KVMediaInfo>(Row{.element = element,
                                                 .member = L.member,
                                                 .place = &frame::detail::itself,
                                                 .kind = &ownedListKind,
                                                 .with = static_cast<Entries const*>(&L)})));
}

/// What is read and assigned. Written are only cards, and not all of them: see the writer.
inline constexpr Table catalogue = {
    list<cardList>(cardsName),
    list<filmList>("films"),
    // Deliberately the ribbons are searched for laminates, and no ribbon is ever read.
    list<laminateList>("ribbons"),
    list<laminateList>("laminates"),
    neverRead(list<ribbonList>("ribbons")),
};

inline constexpr char const* mediaRoots[] = {"media"};

// Writing.

/// The cards that the writer is asked for: all, or those of the types 0 and 1. False without one.
bool writeCards(Sink& sink, _KVMediaInfo const& media, bool allTypes, bool omitsTransfer);

}  // namespace Kovra::media

#endif

/// @file
/// The media document: its tables, for both directions. Rows stand in the writer's order.

#ifndef KOVRA_MEDIA_MEDIA_TABLES_HPP
#define KOVRA_MEDIA_MEDIA_TABLES_HPP

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/kvxhelper_words.hpp"
#include "frame/typed/field.hpp"
#include "kvxmediarecords.h"

namespace Kovra::media {

using namespace frame::typed;

/// What decides over rows when a document is written.
enum : Circumstances {
  withTransfer = 1,  ///< the cards' transfer settings are wanted
};

/// A bounded setting of which only the value is read, and all three parts are written: meant.
template <auto M>
struct ValueReading : BoundedReading<M> {
  template <class Record>
  static bool read(Element element, Record& record, Watch const& watch) {
    auto& value = (record.*M).val;
    bool const read = NumberKind::read(element, value);
    remark(watch, [&](Observer& observer) {
      if (!read) return observer.emptyElement(element);
      observer.within(frame::Member<M>::name(), [&] {
        NumberKind::report(observer, "val", element, value);
        return read;
      });
    });
    return read;
  }
};

template <auto M>
constexpr auto setting(std::string_view element) {
  return reading<typename frame::Member<M>::Record, ValueReading<M>>(element);
}

// Cards.

inline constexpr Table information = {
    number<&_CardInfo::type>("type"),
    text<&_CardInfo::halvex_part_number>("halvex_part_number"),
    text<&_CardInfo::description>("description"),
    number<&_CardInfo::thickness>("thickness"),
    row<&_CardInfo::coercivity, AlwaysWrittenKind<AnyKeywordKind<coercivities>, coercivities, 0>>(
        "coercivity"),
    bitFlag<&_CardInfo::cardFeatures, cardFeatureBits>("mag_stripe"),
    bitFlag<&_CardInfo::cardFeatures, cardFeatureBits>("contact_encode"),
    bitFlag<&_CardInfo::cardFeatures, cardFeatureBits>("non_contact_encode"),
};
inline constexpr char informationName[] = "information";

inline constexpr Table transferTemps = {
    setting<&_TransferTempInfo::top_single>("top_single"),
    setting<&_TransferTempInfo::bot_single>("bot_single"),
    setting<&_TransferTempInfo::top_double>("top_double"),
    setting<&_TransferTempInfo::bot_double>("bot_double"),
};
inline constexpr char transferTempsName[] = "transfer_temps";

inline constexpr Table transferSpeeds = {
    setting<&_TransferSpeedInfo::input_single>("input_single"),
    setting<&_TransferSpeedInfo::output_single>("output_single"),
    setting<&_TransferSpeedInfo::input_double>("input_double"),
    setting<&_TransferSpeedInfo::output_double>("output_double"),
};
inline constexpr char transferSpeedsName[] = "transfer_speeds";

inline constexpr Table adjustments = {
    setting<&_LaminationAdjustmentsNew::top_temp_adjust>("top_temp_adjust"),
    setting<&_LaminationAdjustmentsNew::bot_temp_adjust>("bot_temp_adjust"),
    setting<&_LaminationAdjustmentsNew::speed_adjust>("speed_adjust"),
};
inline constexpr char adjustmentsName[] = "laminator_adjustments";

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

/// The list `M`, to which the children `Item` are appended. It may be missing: then it takes none.
template <auto M, Fixed Item, auto const& Table>
struct Appending : NeverWritten {
  using Entry = decltype(frame::typed::detail::recordOf(Table));
  static constexpr std::string_view member = frame::Member<M>::name();

  static bool read(Element list, _KVMediaInfo& media, Watch const& watch) {
    remark(watch, [](Observer& observer) { observer.list(member); });
    return walkEntries(list, Item, watch,
                       [&](Element child, bool) { return readEntry(child, media, watch); });
  }

  /// Appends one entry, also an empty one. It is owned here until the vector has a place for it, so
  /// that memory running out takes nothing from the record.
  static bool readEntry(Element element, _KVMediaInfo& media, Watch const& watch) {
    auto* const entries = media.*M;
    if (entries == nullptr) return false;
    auto entry = std::make_unique<Entry>();
    bool const result = RecordEntry<Table>::read(element, *entry, watch, member, entries->size());
    append(*entries, std::move(entry));
    return result;
  }

  static Assigned assign(_KVMediaInfo& media, std::string_view key, Value const& value,
                         Problem& problem) {
    if (key != member) return Assigned::notMine;
    if (value.kind != Value::Kind::list) return fail(problem, described(value), "a list");
    for (std::size_t i = 0; i < value.items.size(); ++i) {
      auto entry = std::make_unique<Entry>();
      if (value.items[i].kind != Value::Kind::nothing &&
          assignAll(Table, *entry, value.items[i], problem) == Assigned::failed) {
        prefix(problem, '[' + std::to_string(i) + ']');
        return Assigned::failed;
      }
      append(*(media.*M), std::move(entry));
    }
    return Assigned::done;
  }

  static void keys(Keys& keys) { keys.push_back(member); }
  static void outline(Outline& outline) {
    outline.emplace(std::string_view(Item));
    outlineOf(Table, outline);
  }

 private:
  static void append(std::vector<Entry*>& entries, std::unique_ptr<Entry> entry) {
    entries.push_back(entry.get());
    static_cast<void>(entry.release());
  }
};

inline constexpr char cardsName[] = "cards";
inline constexpr Fixed cardName = "card";

using Cards = Appending<&_KVMediaInfo::cards, cardName, card>;
using Films = Appending<&_KVMediaInfo::films, "film", ribbon>;
using Ribbons = Appending<&_KVMediaInfo::ribbons, "ribbon", ribbon>;
using Laminates = Appending<&_KVMediaInfo::laminates, "laminate", ribbon>;

/// What is read and assigned. Written are only cards, and not all of them: see the writer.
inline constexpr Table catalogue = {
    reading<_KVMediaInfo, Cards>(cardsName),
    reading<_KVMediaInfo, Films>("films"),
    // Deliberately the ribbons are searched for laminates, and no ribbon is ever read.
    reading<_KVMediaInfo, Laminates>("ribbons"),
    reading<_KVMediaInfo, Laminates>("laminates"),
    neverRead(reading<_KVMediaInfo, Ribbons>("ribbons")),
};

inline constexpr char const* mediaRoots[] = {"media"};

/// Frees a record with all that it owns, when it is left.
struct Destroy {
  void operator()(_KVMediaInfo* media) const;
};
using OwnedMedia = std::unique_ptr<_KVMediaInfo, Destroy>;

/// A record with its lists.
OwnedMedia makeMedia();

}  // namespace Kovra::media

#endif

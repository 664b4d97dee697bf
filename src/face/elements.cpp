// What the elements of a reply tell, by the rows that read them.

#include <algorithm>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "face/results.hpp"
#include "frame/lists.hpp"
#include "kovra.hpp"

namespace Kovra {

namespace {

using namespace frame;

using Kovra::detail::ElementData;
using Kovra::detail::FaceAccess;
using Kovra::detail::Shared;

/// The element of that name in the one around it, which may have it already.
ElementData& elementIn(ElementData& around, std::string_view name) {
  auto const known = std::find_if(around.elements.begin(), around.elements.end(),
                                  [&](ElementData const& other) { return other.name == name; });
  if (known != around.elements.end()) return *known;
  // A text counts where it stands in front.
  ElementData& added =
      *around.elements.emplace(name.empty() ? around.elements.begin() : around.elements.end());
  added.name = name;
  return added;
}

void addWords(ElementData& element, std::span<Word const> words) {
  if (!element.words.empty()) return;
  for (Word const& word : words) element.words.push_back(&word);
}

void addAttributes(Row const& row, ElementData& element) {
  Kind const* const kinds[] = {&attributeKind, &wholeSettingKind, &realSettingKind};
  bool const hasAttributes =
      std::find(std::begin(kinds), std::end(kinds), row.kind) != std::end(kinds);
  if (!hasAttributes) return;
  Outline names;
  outlineOfRow(row, names);
  names.erase(std::string(row.element));
  element.attributes.assign(names.begin(), names.end());
}

void addRows(Rows rows, ElementData& around);

/// The entries of a list, which stand in an element of its own or in the one around it.
void addEntries(Row const& row, ElementData& around) {
  auto const& entries = *static_cast<Entries const*>(row.with);
  ElementData& list = row.element.empty() ? around : elementIn(around, row.element);
  ElementData& entry = elementIn(list, entries.item);
  if (entry.members.empty()) entry.members.push_back(Kovra::detail::memberOf(row));
  entry.most = entries.most;
  if (entries.codes != nullptr) addWords(entry, entries.codes->read->words);
  addRows(entries.rows, entry);
}

/// One that tells the member itself.
void addLeaf(Row const& row, ElementData& around) {
  ElementData& leaf = elementIn(around, row.element);
  leaf.members.push_back(Kovra::detail::memberOf(row));
  addWords(leaf, wordsIn(row));
  addAttributes(row, leaf);
  if (row.adds) leaf.most = leaf.words.size();
}

/// One whose elements are told of by the rows below.
void addBranch(Row const& row, ElementData& around) {
  ElementData inner;
  inner.name = row.element;
  addRows(rowsBelow(row), inner);
  if (row.kind->shape == Shape::record) inner.members.push_back(Kovra::detail::memberOf(row));
  if (row.adds && !inner.elements.empty()) inner.most = inner.elements.front().members.size();
  around.elements.push_back(std::move(inner));
}

/// One without an element of its own: those below it are told of around it.
void addInPlace(Row const& row, ElementData& around) {
  if (row.kind->shape == Shape::record) around.members.push_back(Kovra::detail::memberOf(row));
  addRows(rowsBelow(row), around);
}

void addRow(Row const& row, ElementData& around) {
  Shape const shape = row.kind->shape;
  bool const hasRows = shape == Shape::group || shape == Shape::odd || shape == Shape::record;
  if (shape == Shape::list) return addEntries(row, around);
  if (!hasRows) return addLeaf(row, around);
  return row.element.empty() ? addInPlace(row, around) : addBranch(row, around);
}

/// Rows without an element that hold others are for these others; all else counts if it is read.
void addRows(Rows rows, ElementData& around) {
  for (Row const& row : rows) {
    Shape const shape = row.kind->shape;
    bool const holds = row.element.empty() && (shape == Shape::group || shape == Shape::list);
    if (row.isRead || holds) addRow(row, around);
  }
}

ElementData rootOf(MessageRow const& message) {
  ElementData root;
  if (message.read == nullptr) return root;
  if (message.read == &readAsText) {
    addLeaf(message.rows.front(), root);
    return std::move(root.elements.front());
  }
  root.name = message.roots.front();
  addRows(message.rows, root);
  return root;
}

}  // namespace

std::string ElementDescription::name() const {
  return data_ != nullptr ? data_->name : "";
}

std::vector<MemberDescription> ElementDescription::members() const {
  if (data_ == nullptr) return {};
  return FaceAccess::each<MemberDescription>(data_, data_->members);
}

std::vector<Keyword> ElementDescription::words() const {
  std::vector<Keyword> words;
  if (data_ == nullptr) return words;
  for (Word const* const word : data_->words) words.push_back(FaceAccess::make<Keyword>(word));
  return words;
}

std::vector<std::string> ElementDescription::attributes() const {
  return data_ != nullptr ? data_->attributes : std::vector<std::string>();
}

std::size_t ElementDescription::mostTimes() const {
  return data_ != nullptr ? data_->most : 1;
}

std::vector<ElementDescription> ElementDescription::elements() const {
  if (data_ == nullptr) return {};
  return FaceAccess::each<ElementDescription>(data_, data_->elements);
}

ElementDescription Message::root() const {
  return FaceAccess::make<ElementDescription>(
      Shared<ElementData>(std::make_shared<ElementData const>(rootOf(*data_))));
}

}  // namespace Kovra

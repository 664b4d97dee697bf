#include "face/survey.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numeric>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "face/catalogue.hpp"
#include "frame/places.hpp"
#include "frame/row.hpp"

namespace Kovra {

namespace {

using namespace frame;
using Kovra::detail::FindingData;
using Kovra::detail::Spot;

constexpr std::string_view blanks = " \t\r\n";

std::string_view behindDocument(Source const& source, Scan const& scan) {
  std::string_view const rest = source.text().substr(scan.end);
  std::size_t const begin = rest.find_first_not_of(blanks);
  return begin == rest.npos ? std::string_view() : rest.substr(begin);
}

/// Of a node that no reading uses, is something lost?
bool isContent(Tree const& tree, Node const& node) {
  switch (node.kind) {
    case NodeKind::element:
    case NodeKind::text:
    case NodeKind::cdata:
      return true;
    case NodeKind::unknown:  // a tag that is none
      return !tree.view(node.value).starts_with("!DOCTYPE");
    case NodeKind::comment:
    case NodeKind::declaration:
      break;
  }
  return false;
}

/// The first unused one from `begin` on, or their number.
std::size_t nextUnused(std::span<Usage::State const> states, std::size_t begin) {
  void const* const found = begin < states.size()
                                ? std::memchr(states.data() + begin, 0, states.size() - begin)
                                : nullptr;
  return found != nullptr
             ? static_cast<std::size_t>(static_cast<Usage::State const*>(found) - states.data())
             : states.size();
}

/// Was nothing lost or changed, apart from what readings remark? Most replies are read whole.
bool isReadWhole(Source const& source, frame::Reply const& reply, Usage const& usage) {
  Scan const& scan = reply.scan();
  if (scan.isAltered || !source.replaced().empty() || source.skipped() != 0 ||
      !behindDocument(source, scan).empty()) {
    return false;
  }
  // Nobody uses a comment or a declaration, of which there are few.
  Tree const& tree = reply.tree();
  std::size_t declared = 0;
  for (std::size_t node = nextUnused(usage.nodes(), 0); node < tree.nodes().size();
       node = nextUnused(usage.nodes(), node + 1)) {
    auto const index = static_cast<std::uint32_t>(node);
    if (isContent(tree, tree.node(index))) return false;
    declared += tree.attributesOf(index);
  }
  auto const attributes = usage.attributes();
  return static_cast<std::size_t>(
             std::count(attributes.begin(), attributes.end(), Usage::unused)) == declared;
}

}  // namespace

// Offsets.

std::vector<Spot> spotsOf(Source const& source, std::vector<std::size_t> const& offsets) {
  std::vector<std::size_t> order(offsets.size());
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(),
            [&](std::size_t a, std::size_t b) { return offsets[a] < offsets[b]; });
  Scan scan;
  scan.encoding = Encoding::utf8;
  Places places(source.whole(), scan);
  std::vector<Spot> spots(offsets.size());
  for (std::size_t const index : order) {
    Place const place = places.of(offsets[index]);
    spots[index] = {place.line, place.column, source.offsetInBytes(offsets[index])};
  }
  return spots;
}

namespace {

/// A remark and where it stands in the whole text.
struct Finding {
  static constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();

  Remark remark;
  std::size_t begin = 0;
  std::size_t end = 0;
  std::uint32_t element = nowhere;
};

/// As much of a text as fits into a sentence.
std::string beginningOf(std::string_view text) {
  constexpr std::size_t most = 60;
  if (text.size() <= most) return std::string(text);
  std::size_t end = most;
  while ((static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) --end;
  return std::string(text.substr(0, end)) + "...";
}

/// Are there secrets among what an element is read into? Groups fill the same record.
bool holdSecrets(Rows rows) {
  return std::any_of(rows.begin(), rows.end(), [](Row const& row) {
    bool const isOfRecord = row.kind->shape == Shape::group || row.element.empty();
    return row.kind->shape == Shape::secret || (isOfRecord && holdSecrets(rowsBelow(row)));
  });
}

/// Reads a reply once more, with all details: decoding changed the text, and few replies need them.
class Survey {
 public:
  Survey(Source const& source, Usage const& usage);

  void addRemarks(std::span<Observer const> observers);
  void addUnused();
  void addAlterations();
  void addSurroundings();
  std::vector<FindingData> notes();

 private:
  using Index = std::uint32_t;

  Tree const& tree() const { return reply_.tree(); }
  Usage::State stateOf(Index node) const { return usage_.nodes()[node]; }
  bool isElement(Index node) const { return tree().node(node).kind == NodeKind::element; }
  std::size_t beginOf(Index node) const { return skipped_ + tree().node(node).offset; }
  std::size_t endOf(Index node) const { return skipped_ + details_.nodeEnds[node]; }
  std::string_view piece(std::size_t begin, std::size_t end) const {
    return source_.whole().substr(begin, end - begin);
  }
  bool isHidden(Index element) const {
    return stateOf(element) == Usage::hidden || besideSecrets_[element];
  }
  std::string pathOf(Index element) const;

  void hideBesideSecrets(Element element, Rows rows);
  void add(Remark remark, Index element, std::size_t begin, std::size_t end);
  bool isFurtherDocument(Index node) const;
  void addUnusedNode(Index node);
  void addUnusedAttributes(Index element);
  void addPiece(Remarked what, std::size_t begin, std::size_t end);

  Source const& source_;
  std::size_t const skipped_;
  Usage const& usage_;
  Details details_;
  frame::Reply reply_;
  std::vector<Index> parents_;
  Index firstRead_ = Finding::nowhere;
  std::vector<bool> lost_;           ///< nodes of which a finding tells, with all below them
  std::vector<bool> besideSecrets_;  ///< elements whose texts and attributes may be secrets
  std::vector<Finding> findings_;
  std::size_t unlisted_ = 0;
};

Survey::Survey(Source const& source, Usage const& usage)
    : source_(source),
      skipped_(source.skipped()),
      usage_(usage),
      reply_(source.text(), Encoding::utf8, &details_) {
  std::size_t const count = tree().nodes().size();
  details_.nodeEnds.resize(count);
  details_.attributeEnds.resize(tree().attributeCount());
  parents_.assign(count, Finding::nowhere);
  for (Index node = 0; node < count; ++node) {
    if (!tree().node(node).hasChild) continue;
    for (Index child = node + 1; child != 0; child = tree().node(child).next) {
      parents_[child] = node;
    }
  }
  lost_.resize(count);
  besideSecrets_.resize(count);
  for (Element root = firstElement(tree()); root; root = root.nextSibling()) {
    for (MessageRow const& message : repliesOf(root.name())) hideBesideSecrets(root, message.rows);
  }
  Element read = firstElement(tree());
  while (read && stateOf(read.index()) == Usage::unused) read = read.nextSibling();
  if (read) firstRead_ = read.index();
}

/// A text in the wrong place may be a secret that belongs into an element beside it. Rows that are
/// only written count as well: the reply may be a request that was saved.
void Survey::hideBesideSecrets(Element element, Rows rows) {
  if (holdSecrets(rows)) besideSecrets_[element.index()] = true;
  for (Row const& row : rows) {
    if (row.element.empty()) hideBesideSecrets(element, rowsBelow(row));
  }
  for (Element child = element.firstChild(); child; child = child.nextSibling()) {
    for (Row const& row : rows) {
      if (row.element == child.name()) hideBesideSecrets(child, rowsBelow(row));
    }
  }
}

void Survey::add(Remark remark, Index element, std::size_t begin, std::size_t end) {
  if (findings_.size() == Observer::maxRemarks) {
    ++unlisted_;
  } else {
    findings_.push_back({std::move(remark), begin, std::max(begin, end), element});
  }
}

/// What several readings remark alike is told once.
void Survey::addRemarks(std::span<Observer const> observers) {
  std::set<std::pair<Index, Remarked>> said;
  for (Observer const& observer : observers) {
    std::set<std::pair<Index, Remarked>> own;
    for (Remark const& remark : observer.remarks()) {
      std::pair const thing(remark.index, remark.what);
      if (said.contains(thing)) continue;
      own.insert(thing);
      add(remark, remark.index, beginOf(remark.index), endOf(remark.index));
    }
    said.merge(own);
    unlisted_ = std::max(unlisted_, observer.unlisted());
  }
}

void Survey::addUnused() {
  for (Index node = 0; node < parents_.size(); ++node) {
    Index const parent = parents_[node];
    if (parent != Finding::nowhere && lost_[parent]) {
      lost_[node] = true;
    } else {
      addUnusedNode(node);
    }
  }
}

/// Does it stand behind a document that was read, by a name of which there are replies?
bool Survey::isFurtherDocument(Index node) const {
  return node > firstRead_ && parents_[node] == Finding::nowhere &&
         !repliesOf(Element(tree(), node).name()).empty();
}

void Survey::addUnusedNode(Index node) {
  Node const& content = tree().node(node);
  Usage::State const state = stateOf(node);
  lost_[node] = state == Usage::told || (state == Usage::unused && isContent(tree(), content));
  Remark remark;
  if (isElement(node)) {
    if (isFurtherDocument(node)) remark.what = Remarked::textBehind;
    if (state == Usage::unused) add(remark, node, beginOf(node), endOf(node));
    if (!lost_[node]) addUnusedAttributes(node);
  } else if (lost_[node]) {
    Index const parent = parents_[node];
    remark.what = Remarked::unreadText;
    bool const isTold = parent == Finding::nowhere || !isHidden(parent);
    if (isTold) remark.found = beginningOf(tree().view(content.value));
    add(std::move(remark), parent, beginOf(node), endOf(node));
  }
}

void Survey::addUnusedAttributes(Index element) {
  Index const first = tree().node(element).attribute;
  for (Index i = first; i < first + tree().attributesOf(element); ++i) {
    if (usage_.attributes()[i] != Usage::unused) continue;
    std::size_t const begin = skipped_ + tree().attribute(i).name.at;
    std::size_t const end = skipped_ + details_.attributeEnds[i];
    Remark remark;
    remark.what = Remarked::unreadAttribute;
    std::string_view const name = tree().view(tree().attribute(i).name);
    bool const mayBeSecret = isHidden(element) || secretElements().contains(name);
    remark.found = mayBeSecret ? name : beginningOf(piece(begin, end));
    add(std::move(remark), element, begin, end);
  }
}

/// Of a piece of something that is told already nothing is told.
void Survey::addPiece(Remarked what, std::size_t begin, std::size_t end) {
  auto const nodes = tree().nodes();
  auto const behind =
      std::upper_bound(nodes.begin(), nodes.end(), begin - skipped_,
                       [](std::size_t offset, Node const& node) { return offset < node.offset; });
  if (behind == nodes.begin()) return;
  auto const node = static_cast<Index>(behind - nodes.begin() - 1);
  bool const isBehind = begin >= skipped_ + reply_.scan().end;
  if (isBehind || lost_[node] || !isContent(tree(), tree().node(node))) return;
  Index const element = isElement(node) ? node : parents_[node];
  if (element == Finding::nowhere) return;
  Remark remark;
  remark.what = what;
  if (!isHidden(element)) remark.found = beginningOf(piece(begin, end));
  add(std::move(remark), element, begin, end);
}

void Survey::addAlterations() {
  for (Alteration const& alteration : details_.alterations) {
    addPiece(alteration.isBlank ? Remarked::condensedBlanks : Remarked::alteredText,
             skipped_ + alteration.begin, skipped_ + alteration.end);
  }
  for (Replaced const& replaced : source_.replaced()) {
    if (replaced.at >= skipped_) addPiece(Remarked::replacedBytes, replaced.at, replaced.end);
  }
}

/// What stands before and behind the document, of which nobody knows whether it is a secret.
void Survey::addSurroundings() {
  std::string_view const before = source_.whole().substr(0, skipped_);
  Remark remark;
  if (!before.empty()) {
    std::size_t const begin = before.find_first_not_of(blanks);
    remark.what = Remarked::skippedText;
    add(remark, Finding::nowhere, begin, skipped_);
  }
  std::string_view const behind = behindDocument(source_, reply_.scan());
  if (!behind.empty()) {
    std::size_t const end = source_.whole().size();
    remark.what = Remarked::textBehind;
    add(remark, Finding::nowhere, end - behind.size(), end);
  }
}

std::string Survey::pathOf(Index element) const {
  std::string path;
  for (Index node = element; node != Finding::nowhere; node = parents_[node]) {
    path.insert(0, '/' + std::string(Element(tree(), node).name()));
  }
  return path;
}

std::vector<FindingData> Survey::notes() {
  std::stable_sort(findings_.begin(), findings_.end(),
                   [](Finding const& a, Finding const& b) { return a.begin < b.begin; });
  std::vector<std::size_t> offsets;
  for (Finding const& finding : findings_) {
    offsets.push_back(finding.begin);
    offsets.push_back(finding.end);
  }
  std::vector<Spot> const spots = spotsOf(source_, offsets);
  std::vector<FindingData> notes;
  for (Finding& finding : findings_) {
    FindingData& note = notes.emplace_back();
    Remark& remark = finding.remark;
    note.kind = &Kovra::detail::kindOf(remark.what);
    note.begin = spots[2 * (notes.size() - 1)];
    note.end = spots[2 * (notes.size() - 1) + 1];
    if (finding.element != Finding::nowhere) {
      note.path = pathOf(finding.element);
      note.element = Element(tree(), finding.element).name();
    }
    note.found = std::move(remark.found);
    note.kept = std::move(remark.kept);
    note.earlier = std::move(remark.earlier);
    note.expected = std::move(remark.expected);
    if (remark.words != nullptr) {
      for (Word const& word : remark.words->words) note.expected.emplace_back(word.text);
    }
    note.count = remark.count;
  }
  if (unlisted_ > 0) {
    notes.emplace_back().kind = &Kovra::detail::kindOf(Remarked::unlisted);
    notes.back().count = unlisted_;
  }
  return notes;
}

}  // namespace

std::vector<FindingData> notesOf(Source const& source, frame::Reply const& reply,
                                 Usage const& usage, std::span<Observer const> observers) {
  bool const isQuiet =
      std::all_of(observers.begin(), observers.end(),
                  [](Observer const& observer) { return observer.remarks().empty(); });
  if (isQuiet && isReadWhole(source, reply, usage)) return {};
  Survey survey(source, usage);
  survey.addRemarks(observers);
  survey.addUnused();
  survey.addAlterations();
  survey.addSurroundings();
  return survey.notes();
}

}  // namespace Kovra

#include "excerpt.hpp"

#include <algorithm>
#include <cstdint>

#include "characters.hpp"
#include "printable.hpp"

namespace Kovra::tool {

namespace {

constexpr std::string_view lineEnds = "\r\n";
constexpr std::string_view cut = "...";
constexpr std::size_t tabStop = 8;

/// What a character, or a secret, becomes, and where it stands in the text.
struct Cell {
  std::string shown;
  std::size_t width = 0;
  Stretch piece;
};

/// So many bytes of a line are looked at before and behind the place: what is farther away never
/// fits, and a reply may be one line of megabytes.
std::size_t reachOf(std::size_t width) {
  return 8 * width;
}

bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80;
}

/// The line around a place, or as much of it as is looked at.
Stretch lineAround(std::string_view text, std::size_t at, std::size_t reach) {
  Stretch line{at, at};
  std::size_t const least = at - std::min(at, reach);
  while (line.begin > least && lineEnds.find(text[line.begin - 1]) == lineEnds.npos) --line.begin;
  std::size_t const most = text.size() - at > reach ? at + reach : text.size();
  while (line.end < most && lineEnds.find(text[line.end]) == lineEnds.npos) ++line.end;
  for (int i = 0; i < 3 && line.begin == least && line.begin < at; ++i) {
    if (isContinuation(text[line.begin])) ++line.begin;
  }
  return line;
}

bool isLineCutBefore(std::string_view text, Stretch line) {
  return line.begin > 0 && lineEnds.find(text[line.begin - 1]) == lineEnds.npos;
}

bool isLineCutBehind(std::string_view text, Stretch line) {
  return line.end < text.size() && lineEnds.find(text[line.end]) == lineEnds.npos;
}

/// What the text that goes on here becomes, in that column.
Cell cellAt(std::string_view text, std::size_t at, std::size_t column) {
  if (text[at] == '\t') {
    std::size_t const width = tabStop - column % tabStop;
    return {std::string(width, ' '), width, {at, at + 1}};
  }
  Character const character = firstCharacter(text.substr(at));
  std::size_t const length = std::max<std::size_t>(character.length, 1);
  std::string shown = printable(text.substr(at, length));
  bool const isItself = character.length != 0 && isHarmless(character.code);
  std::size_t const width = isItself ? columnsOf(character.code) : shown.size();
  return {std::move(shown), width, {at, at + length}};
}

std::vector<Cell> cellsOf(std::string_view text, Stretch line,
                          std::vector<Stretch> const& secrets) {
  std::vector<Cell> cells;
  auto secret = std::find_if(secrets.begin(), secrets.end(),
                             [&](Stretch const& candidate) { return candidate.end > line.begin; });
  std::size_t column = 0;
  for (std::size_t at = line.begin; at < line.end; at = cells.back().piece.end) {
    if (secret != secrets.end() && at >= secret->begin) {
      cells.push_back({mask, sizeof mask - 1, {at, std::min(secret->end, line.end)}});
      ++secret;
    } else {
      cells.push_back(cellAt(text.substr(0, line.end), at, column));
    }
    column += cells.back().width;
  }
  return cells;
}

/// The columns of a line that are shown: `begin` to `end`, of all its columns.
struct Window {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// All, or what fits, with a third of it before the place.
Window windowAround(std::size_t place, std::size_t all, std::size_t room) {
  if (all <= room) return {0, all};
  std::size_t begin = place > room * 2 / 3 ? place - room / 3 : 0;
  begin = std::min(begin, all - room);
  return {begin, begin + room};
}

/// The two lines, built column by column.
class Excerpt {
 public:
  Excerpt(std::vector<Cell> cells, Stretch piece) : cells_(std::move(cells)), piece_(piece) {}

  void build(std::size_t room, bool isCutBefore, bool isCutBehind);
  std::string const& line() const { return line_; }
  std::string const& marks() const { return marks_; }

 private:
  bool isMarked(Cell const& cell) const {
    return cell.piece.begin < piece_.end && cell.piece.end > piece_.begin;
  }
  void add(std::string_view shown, std::size_t width, char mark);
  void addCell(Cell const& cell);

  std::vector<Cell> cells_;
  Stretch piece_;
  std::string line_;
  std::string marks_;
  bool hasCaret_ = false;
};

void Excerpt::add(std::string_view shown, std::size_t width, char mark) {
  line_ += shown;
  marks_.append(width, mark);
}

void Excerpt::addCell(Cell const& cell) {
  bool const isFirst = !hasCaret_ && isMarked(cell) && cell.width > 0;
  add(cell.shown, cell.width, isMarked(cell) ? '~' : ' ');
  if (isFirst) marks_[marks_.size() - cell.width] = '^';
  hasCaret_ = hasCaret_ || isFirst;
}

void Excerpt::build(std::size_t room, bool isCutBefore, bool isCutBehind) {
  std::size_t all = 0;
  std::size_t place = 0;
  for (Cell const& cell : cells_) {
    if (cell.piece.end <= piece_.begin) place += cell.width;
    all += cell.width;
  }
  std::size_t const dots = 2 * cut.size();
  bool const fits = !isCutBefore && !isCutBehind && all < room;
  Window const window = windowAround(place, all, fits ? room : room - std::min(room, dots + 1));
  if (isCutBefore || window.begin > 0) add(cut, cut.size(), ' ');
  std::size_t column = 0;
  for (Cell const& cell : cells_) {
    if (column >= window.begin && column + cell.width <= window.end) addCell(cell);
    column += cell.width;
  }
  if (!hasCaret_) marks_ += '^';
  if (isCutBehind || window.end < all) line_ += cut;
}

std::string gutter(std::string const& number) {
  constexpr std::size_t width = 5;
  return std::string(width - std::min(width, number.size()), ' ') + number + " | ";
}

}  // namespace

bool hasLines(std::string_view text) {
  return !text.starts_with("\xff\xfe") && !text.starts_with("\xfe\xff");
}

std::string excerpt(std::string_view text, Stretch piece, std::vector<Stretch> const& secrets,
                    int number, std::size_t width, Style style) {
  piece.begin = std::min(piece.begin, text.size());
  piece.end = std::max(piece.end, piece.begin + 1);
  std::string const before = gutter(std::to_string(number));
  Stretch const line = lineAround(text, piece.begin, reachOf(width));
  if (line.begin == line.end) return {};
  Excerpt shown(cellsOf(text, line, secrets), piece);
  shown.build(width - std::min(width, before.size()), isLineCutBefore(text, line),
              isLineCutBehind(text, line));
  std::string const marks = shown.marks().substr(0, shown.marks().find_last_not_of(' ') + 1);
  return styled(Style::faint, before) + shown.line() + '\n' +
         styled(Style::faint, gutter(std::string(before.size() - 3, ' '))) + styled(style, marks) +
         '\n';
}

}  // namespace Kovra::tool

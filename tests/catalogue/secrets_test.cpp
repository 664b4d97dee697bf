// A text that stands beside secrets, or in one behind what is read, may be one itself: no note
// shows it, whichever reply it is.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "face/catalogue.hpp"
#include "frame/row.hpp"
#include "kovra.hpp"

namespace Kovra {
namespace {

using frame::Row;
using frame::Rows;
using frame::Shape;

using Path = std::vector<std::string>;

/// The elements that lead from a root to each secret, and how many of them fill a record of their
/// own: beside a secret stands all that is in the last of those.
struct Secret {
  Path elements;
  std::size_t record = 0;
};

void addSecrets(Rows rows, Secret const& above, std::vector<Secret>& secrets) {
  for (Row const& row : rows) {
    Secret here = above;
    if (!row.element.empty()) here.elements.emplace_back(row.element);
    if (row.kind->shape == Shape::record) here.record = here.elements.size();
    if (row.kind->shape == Shape::secret) secrets.push_back(here);
    if (row.kind->shape != Shape::secret) addSecrets(rowsBelow(row), here, secrets);
  }
}

constexpr char shown[] = "seven red umbrellas";

/// A reply with the text in one element on the way, behind what is read there.
std::string replyWith(std::string const& root, Path const& path, std::size_t where) {
  std::string begin = '<' + root + '>';
  std::string end = "</" + root + '>';
  for (std::size_t i = 0; i < path.size(); ++i) {
    begin += '<' + path[i] + '>';
    if (i == where) end.insert(0, shown);
    end.insert(0, "</" + path[i] + '>');
  }
  if (where == path.size()) end.insert(0, std::string("<!-- -->") + shown);
  return begin + "known" + end;
}

void expectHidden(std::string const& text, std::string const& as) {
  SCOPED_TRACE(text + " as " + as);
  std::vector<Note> const notes = decode(text, as).notes();
  // In a saved request the elements of a key may be unknown to readers.
  EXPECT_TRUE(std::any_of(notes.begin(), notes.end(), [](Note const& note) {
    return note.id() == "K103" || note.id() == "K101";
  }));
  for (Note const& note : notes) {
    EXPECT_EQ(note.message().find("umbrellas"), std::string::npos) << note.message();
    EXPECT_EQ((note.found() + note.kept()).find("umbrellas"), std::string::npos);
  }
}

TEST(Secrets, ShareTheirElementsWithNoTextThatIsShown) {
  std::set<std::string> with;
  for (frame::MessageRow const& message : replies()) {
    std::vector<Secret> secrets;
    addSecrets(message.rows, {}, secrets);
    for (Secret const& secret : secrets) {
      with.emplace(message.name);
      std::string const root = message.roots.front();
      bool const isRoot = message.rows.size() == 1 && root == message.rows.front().element;
      Path const path = isRoot ? Path() : secret.elements;
      for (std::size_t where = secret.record; where <= path.size(); ++where) {
        expectHidden(replyWith(root, path, where), std::string(message.name));
        expectHidden(replyWith(root, path, where), "");
      }
    }
  }
  EXPECT_EQ(with, (std::set<std::string>{"configuration", "magnetic-tracks", "passkey",
                                         "secure-action-directive", "security-key-change",
                                         "security-keys"}));
}

/// What stands beside a record that holds one is no neighbour.
TEST(Secrets, LetTheTextsOfOtherElementsBeShown) {
  for (char const* const text :
       {"<configuration>seven<wireless><key>k</key></wireless></configuration>",
        "<configuration><ocp_language>seven<type>2</type></ocp_language></configuration>"}) {
    std::vector<Note> const notes = decode(text).notes();
    ASSERT_FALSE(notes.empty());
    EXPECT_EQ(notes.front().found(), "seven") << text;
  }
}

}  // namespace
}  // namespace Kovra

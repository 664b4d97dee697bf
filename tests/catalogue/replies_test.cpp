// What can be said of every reply, tried with every sample.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "face/catalogue.hpp"
#include "kovra.hpp"
#include "support/allocations.hpp"
#include "support/streams.hpp"

namespace Kovra {
namespace {

namespace fs = std::filesystem;

struct Sample {
  std::string name;
  std::string text;
};

/// Those that are replies: beside each broken one there is a text with what is told of it.
std::vector<Sample> samples() {
  std::vector<Sample> all;
  for (fs::directory_entry const& entry : fs::recursive_directory_iterator(KOVRA_SAMPLES_DIR)) {
    std::string const name = entry.path().filename();
    if (entry.path().extension() != ".xml" || name.find(".bad.") != name.npos) continue;
    std::ifstream file(entry.path());
    all.push_back({fs::relative(entry.path(), KOVRA_SAMPLES_DIR),
                   {std::istreambuf_iterator<char>(file), {}}});
  }
  std::sort(all.begin(), all.end(),
            [](Sample const& a, Sample const& b) { return a.name < b.name; });
  return all;
}

/// What the readings show, a line each.
std::string lines(Decoding const& decoding) {
  std::string text;
  for (Reading const& reading : decoding.readings()) {
    text += reading.message() + (reading.result() ? "+" : "-") + reading.record().toJson() + '\n';
  }
  return text;
}

/// An element of a sample's text: from its tag to its end.
struct Piece {
  std::size_t begin;
  std::size_t end;
  std::string name;
  std::size_t depth;
};

/// All elements in their order, the root first. Samples hold no tags in comments or CDATA sections
/// that would be taken for one; what is no element is skipped.
std::vector<Piece> pieces(std::string const& text) {
  std::vector<Piece> all;
  std::vector<std::size_t> open;
  for (std::size_t at = text.find('<'); at != text.npos; at = text.find('<', at + 1)) {
    if (text.compare(at, 4, "<!--") == 0) {
      at = text.find("-->", at);
    } else if (text.compare(at, 9, "<![CDATA[") == 0) {
      at = text.find("]]>", at);
    } else if (text[at + 1] == '/') {
      all[open.back()].end = text.find('>', at) + 1;
      open.pop_back();
    } else if (text[at + 1] != '?' && text[at + 1] != '!') {
      std::size_t const close = text.find('>', at);
      std::size_t const nameEnd = text.find_first_of(" \t\r\n/>", at);
      all.push_back({at, close + 1, text.substr(at + 1, nameEnd - at - 1), open.size()});
      if (text[close - 1] != '/') open.push_back(all.size() - 1);
    }
  }
  return all;
}

TEST(EverySample, HasAReaderAndEveryReaderASample) {
  std::set<std::string> read;
  for (Sample const& sample : samples()) {
    Decoding const decoding = decode(sample.text);
    EXPECT_TRUE(static_cast<bool>(decoding)) << sample.name;
    for (Reading const& reading : decoding.readings()) read.insert(reading.message());
  }
  for (frame::MessageRow const& message : replies()) {
    EXPECT_TRUE(read.count(std::string(message.name)) == 1) << message.name;
  }
}

TEST(EverySample, HasAResultIfItsMessageHas) {
  std::set<std::string> told;
  for (Sample const& sample : samples()) {
    for (Reading const& reading : decode(sample.text).readings()) {
      if (reading.result()) told.insert(reading.message());
    }
  }
  for (Message const& message : messages()) {
    EXPECT_EQ(message.hasResult(), told.count(message.name()) == 1) << message.name();
  }
}

/// Cut at the end of a block of exactly its size, so that reading beyond it is noticed.
TEST(EverySample, IsRefusedOrReadWhenItIsCutAnywhere) {
  for (Sample const& sample : samples()) {
    std::size_t const step = sample.text.size() > 6000 ? 13 : 1;
    for (std::size_t length = 0; length < sample.text.size(); length += step) {
      std::vector<char> const cut(sample.text.begin(),
                                  sample.text.begin() + static_cast<std::ptrdiff_t>(length));
      Decoding const decoding = decode({cut.data(), cut.size()});
      bool const isRead = static_cast<bool>(decoding);
      EXPECT_EQ(decoding.readings().empty(), !isRead) << sample.name << " cut at " << length;
      EXPECT_EQ(static_cast<bool>(decoding.refusal()), !isRead) << sample.name;
      // Behind the root's end there may be blanks and comments.
      if (isRead) {
        EXPECT_EQ(lines(decoding), lines(decode(sample.text))) << sample.name;
      }
    }
  }
}

/// The members of one value that another one lacks.
void missing(Value const& from, Value const& in, std::string const& path,
             std::vector<std::string>& paths) {
  for (Member const& member : from.members()) {
    std::string const inner = path + std::string(member.name());
    Value const* const other = in.find(member.name());
    if (other == nullptr) {
      paths.push_back(inner);
    } else {
      missing(member.value(), *other, inner + '.', paths);
    }
  }
}

TEST(EverySample, SaysNothingMoreWithoutAnElement) {
  for (Sample const& sample : samples()) {
    std::vector<Reading> const whole = decode(sample.text).readings();
    for (Piece const& piece : pieces(sample.text)) {
      if (piece.depth == 0) continue;
      std::string text = sample.text;
      text.erase(piece.begin, piece.end - piece.begin);
      Decoding const without = decode(text);
      ASSERT_TRUE(static_cast<bool>(without)) << sample.name << ": " << piece.name;
      for (Reading const& reading : without.readings()) {
        auto const same = std::find_if(whole.begin(), whole.end(), [&](Reading const& other) {
          return other.message() == reading.message();
        });
        if (same == whole.end()) continue;  // without it another reader may apply
        std::vector<std::string> paths;
        missing(reading.record(), same->record(), "", paths);
        EXPECT_TRUE(paths.empty()) << sample.name << " without " << piece.name << ": " << paths[0];
      }
    }
  }
}

TEST(EverySample, TakesAnElementInAnUnknownOneForNone) {
  for (Sample const& sample : samples()) {
    for (Piece const& piece : pieces(sample.text)) {
      if (piece.depth == 0) continue;
      // Some lists count children, whatever their names: so it is an unknown one instead of none.
      std::string nested = sample.text;
      nested.insert(piece.end, "</unknown>");
      nested.insert(piece.begin, "<unknown>");
      std::string other = sample.text;
      other.replace(piece.begin, piece.end - piece.begin, "<unknown/>");
      EXPECT_EQ(lines(decode(nested)), lines(decode(other))) << sample.name << ": " << piece.name;
    }
  }
}

/// Elements of which a second one says something more, and why. One that no longer does fails.
struct Repeatable {
  char const* element;
  char const* why;
};
constexpr Repeatable repeatable[] = {
    {"panel", "panels are joined"},
    {"sequence", "panels are joined"},
    {"ribbon", "it holds panels"},
    {"AccessPoint", "an entry of a list"},
    {"job", "an entry of a list"},
    {"service", "an entry of a list"},
    {"cleaning", "an entry of a list"},
    {"host_port", "an entry of a list"},
    {"software_interface", "an entry of a list"},
    {"ocp_language", "an entry of a list"},
    {"graphic_format", "an entry of a list"},
    {"font", "an entry of a list"},
    {"template", "an entry of a list"},
    {"graphic", "an entry of a list"},
    {"barcode", "an entry of a list"},
    {"card", "an entry of a list"},
    {"film", "an entry of a list"},
    {"laminate", "an entry of a list"},
    {"cards", "a list that grows"},
    {"films", "a list that grows"},
    {"ribbons", "a list that grows"},
    {"laminates", "a list that grows"},
    {"contactless_encoder", "the second one has a member of its own"},
    {"internal_encoder", "it holds an encoder"},
    {"firmware", "unknown, and yet counted among the entries"},
    {"Service", "unknown, and yet counted among the entries"},
    {"Scan", "unknown, and yet counted among the entries"},
};

TEST(EverySample, SaysTheSameWithAnElementTwice) {
  std::set<std::string> needed;
  for (Sample const& sample : samples()) {
    std::string const whole = lines(decode(sample.text));
    for (Piece const& piece : pieces(sample.text)) {
      if (piece.depth == 0) continue;
      std::string text = sample.text;
      text.insert(piece.end, sample.text.substr(piece.begin, piece.end - piece.begin));
      bool const isSame = lines(decode(text)) == whole;
      bool const isRepeatable =
          std::any_of(std::begin(repeatable), std::end(repeatable),
                      [&](Repeatable const& known) { return known.element == piece.name; });
      EXPECT_TRUE(isSame || isRepeatable) << sample.name << " with " << piece.name << " twice";
      if (!isSame) needed.insert(piece.name);
    }
  }
  for (Repeatable const& known : repeatable) {
    EXPECT_EQ(needed.count(known.element), 1U) << known.element << ": " << known.why;
  }
}

TEST(EverySample, IsReadWithAnyElementEmpty) {
  for (Sample const& sample : samples()) {
    for (Piece const& piece : pieces(sample.text)) {
      std::string text = sample.text;
      text.replace(piece.begin, piece.end - piece.begin, '<' + piece.name + "/>");
      EXPECT_TRUE(static_cast<bool>(decode(text))) << sample.name << ": " << piece.name;
    }
  }
}

TEST(EverySample, IsReadWithoutAWordOnStandardOutputOrError) {
  test::CaughtStream out(STDOUT_FILENO);
  test::CaughtStream error(STDERR_FILENO);
  for (Sample const& sample : samples()) static_cast<void>(decode(sample.text));
  std::string const said = error.release();
  EXPECT_EQ(out.release() + said, "");
}

using EverySampleWithoutMemory = test::HeapTest;

/// The first hundred allocations one by one, and later ones here and there.
TEST_F(EverySampleWithoutMemory, LosesNothing) {
  for (Sample const& sample : samples()) {
    std::string const whole = lines(decode(sample.text));
    bool threw = true;
    for (std::size_t failing = 1; threw; failing += failing < 100 ? 1 : failing / 50) {
      test::Allocations allocations(failing);
      threw = false;
      try {
        static_cast<void>(decode(sample.text));
      } catch (std::bad_alloc const&) {
        threw = true;
      }
      EXPECT_EQ(allocations.reclaim(), 0U) << sample.name << ", allocation " << failing;
    }
    EXPECT_EQ(lines(decode(sample.text)), whole) << sample.name;
  }
}

}  // namespace
}  // namespace Kovra

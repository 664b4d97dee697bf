// Replies of an input, however many bytes of it are there at once.

#include "stream.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/fed_pipe.hpp"
#include "support/replies.hpp"

namespace Kovra::tool {

namespace {

using Texts = std::vector<std::string>;

using test::noLimit;
using test::repliesOf;
using test::Reply;

Texts textsOf(std::string_view input, Division division = Division::reply) {
  Texts texts;
  for (Reply const& reply : repliesOf(input, division)) texts.push_back(reply.text);
  return texts;
}

/// The same replies are found wherever the input is cut, and where each byte comes alone.
void expectTheSameInPieces(std::string_view input, Division division = Division::reply,
                           std::size_t limit = noLimit) {
  std::vector<Reply> const whole = repliesOf(input, division, limit);
  EXPECT_EQ(repliesOf(input, division, limit, [] { return 1; }), whole) << input;
  for (std::size_t cut = 1; cut < input.size(); ++cut) {
    std::size_t next = cut;
    auto const sizeOfNext = [&] { return std::exchange(next, noLimit); };
    EXPECT_EQ(repliesOf(input, division, limit, sizeOfNext), whole) << input << " at " << cut;
  }
}

constexpr char declaration[] = "<?xml version=\"1.0\"?>";

TEST(ReplyStream, FindsTheEndOfEachDocument) {
  EXPECT_EQ(textsOf("<a/><b></b><c><a/></c>"), (Texts{"<a/>", "<b></b>", "<c><a/></c>"}));
  EXPECT_EQ(textsOf(" <a>\n</a>\n\n<b x='>'/>\n"), (Texts{"<a>\n</a>", "<b x='>'/>"}));
  EXPECT_EQ(textsOf("<a><a></a></a><a/>"), (Texts{"<a><a></a></a>", "<a/>"}));
  EXPECT_EQ(textsOf(std::string(declaration) + "<a/>" + declaration + "\n<b/>"),
            (Texts{std::string(declaration) + "<a/>", std::string(declaration) + "\n<b/>"}));
  EXPECT_EQ(textsOf(""), Texts());
  EXPECT_EQ(textsOf(" \n<!-- nothing -->\n"), Texts());
}

TEST(ReplyStream, TakesMarkupInTextsForText) {
  std::string const comment = "<a><!-- </a><b> --></a>";
  std::string const data = "<a><![CDATA[</a>]]></a>";
  std::string const attribute = "<a x=\"/>\" y='</a>'></a>";
  std::string const instruction = "<a><?x </a>?></a>";
  EXPECT_EQ(textsOf(comment + data + instruction), (Texts{comment, data, instruction}));
  // A value that holds the beginning of a tag has lost its quote.
  EXPECT_EQ(textsOf(attribute + "<b/>").back(), "<b/>");
}

TEST(ReplyStream, EndsBrokenDocumentsWhereTheNextOneBegins) {
  std::string const declared = std::string(declaration) + "<b/>";
  EXPECT_EQ(textsOf("<a><c>" + declared), (Texts{"<a><c>", declared}));
  EXPECT_EQ(textsOf("<a><c><get_general_status/>"), (Texts{"<a><c>", "<get_general_status/>"}));
  EXPECT_EQ(textsOf(std::string("<a><c>\0<b/>", 11)), (Texts{"<a><c>", "<b/>"}));
  EXPECT_EQ(textsOf("<a><!-- never closed" + declared), (Texts{"<a><!-- never closed", declared}));
  EXPECT_EQ(textsOf("</a></b><c/>"), (Texts{"</a>", "</b>", "<c/>"}));
  EXPECT_EQ(textsOf("no markup<a/>at all"), (Texts{"no markup", "<a/>", "at all"}));
}

TEST(ReplyStream, EndsRepliesAtZeroBytes) {
  using namespace std::string_view_literals;
  EXPECT_EQ(textsOf("<a/>\0<b/>\0"sv), (Texts{"<a/>", "<b/>"}));
  EXPECT_EQ(textsOf("\0\0<a/>\0\0"sv), (Texts{"<a/>"}));
  EXPECT_EQ(textsOf("<a><b/></a>\n\0\n"sv), (Texts{"<a><b/></a>"}));
}

TEST(ReplyStream, IsTheSameHoweverItArrives) {
  using namespace std::string_view_literals;
  for (std::string_view const input :
       {"<a/><b></b> <c><a/></c>\n"sv, "<?xml version='1.0'?><a/><?xml version='1.0'?><b/>"sv,
        "<a><!-- </a> --><![CDATA[</a>]]><?x </a>?></a><b x='>' y=\">\"/>"sv,
        "<a><c><get_general_status/></a><get_general_status><b/></get_general_status>"sv,
        "<a/>\0\0 <b>\0</b>\0<c/><!-- x -->"sv, "\xef\xbb\xbf<a/>\xef\xbb\xbf<b/>"sv,
        "junk<a/>junk <b></b ><c"sv, "</a><!DOCTYPE x><a></a><!-- <a/>"sv, "< <a<b></a></b><<"sv,
        "<a x='<b y='></a></b>"sv, "<?xm?><?xml?><?xml?><?xmlx?><a/>"sv}) {
    expectTheSameInPieces(input);
  }
}

TEST(ReplyStream, TellsOfLargeRepliesOnceAndGoesOn) {
  std::string const large = "<a>" + std::string(100, 'x') + "</a>";
  std::string const next = std::string(declaration) + "<b/>";
  std::vector<Reply> const expected = {{"<c/>", 1, false}, {"", 2, true}, {next, 3, false}};
  EXPECT_EQ(repliesOf("<c/>" + large + next, Division::reply, 60), expected);
  expectTheSameInPieces("<c/>" + large + next, Division::reply, 60);
  expectTheSameInPieces(large + large, Division::reply, 60);
  expectTheSameInPieces(large + '\0' + next, Division::reply, 60);
  expectTheSameInPieces(large + "<d/>" + next, Division::reply, 60);
}

TEST(ReplyStream, CountsNoBlanksInFront) {
  std::string const blanks(100, '\n');
  std::vector<Reply> const expected = {{"<a/>", 1, false}, {"<b/>", 2, false}};
  EXPECT_EQ(repliesOf(blanks + "<a/>" + blanks + "<b/>", Division::reply, 10), expected);
  expectTheSameInPieces(blanks + "<a/>" + blanks + "<b/>", Division::reply, 10);
}

/// That its comment never ended says nothing of the comments behind it.
TEST(ReplyStream, ForgetsWhatItPassedOver) {
  std::string const next = std::string(declaration) + "<b><!-- --></b>";
  for (char const* const markup : {"<!--", "<![CDATA[", "<?", "<!"}) {
    std::string const input = "<a>" + (markup + std::string(300, 'x')) + next + "<c/>";
    std::vector<Reply> const expected = {{"", 1, true}, {next, 2, false}, {"<c/>", 3, false}};
    EXPECT_EQ(repliesOf(input, Division::reply, 60), expected) << markup;
    EXPECT_EQ(repliesOf(input, Division::reply, 60, [] { return 1; }), expected) << markup;
  }
}

/// The next one is given before there is a byte behind it.
TEST(ReplyStream, WaitsForNothingBehindWhatItPassedOver) {
  std::string const next = std::string(declaration) + "<b/>";
  std::string const input = "<a>" + std::string(300, 'x') + next;
  bool isFed = false;
  test::FedPipe pipe(input, [] { return noLimit; });
  ReplyStream stream(pipe.path(), Division::reply, 60, [&] {
    ASSERT_FALSE(isFed) << "waits";
    pipe.feed();
    isFed = true;
  });
  ReplyStream::Item item;
  ASSERT_TRUE(stream.next(item));
  EXPECT_TRUE(item.isTooLarge);
  ASSERT_TRUE(stream.next(item));
  EXPECT_EQ(item.text, next);
}

TEST(ReplyStream, HoldsOneReplyAtATime) {
  std::string input;
  for (int i = 0; i < 50000; ++i) input += "<a>" + std::to_string(i) + "</a>";
  test::FedPipe pipe(input, [] { return 1000; });
  std::size_t fed = 0;
  ReplyStream stream(pipe.path(), Division::reply, noLimit, [&] {
    pipe.feed();
    fed += 1000;
  });
  std::size_t taken = 0;
  for (ReplyStream::Item item; stream.next(item);) {
    ASSERT_LE(fed, taken + 2000 + item.text.size());
    taken += item.text.size();
  }
  EXPECT_EQ(taken, input.size());
}

TEST(ReplyStream, TakesLines) {
  EXPECT_EQ(textsOf("<a/>\n\n \"<b>\\n</b>\"\r\n<c/>", Division::line),
            (Texts{"<a/>", "<b>\n</b>", "<c/>"}));
  std::vector<Reply> const numbered = {{"<a/>", 1, false}, {"<c/>", 3, false}};
  EXPECT_EQ(repliesOf("<a/>\n\n<c/>\n", Division::line), numbered);
  EXPECT_EQ(textsOf("\"no string\n\"", Division::line), (Texts{"\"no string", "\""}));
  expectTheSameInPieces("<a/>\n\n \"<b>\\n</b>\"\r\n\"x\n<c/>", Division::line);
}

TEST(ReplyStream, TellsOfLongLinesOnceAndGoesOn) {
  std::vector<Reply> const expected = {{"<a/>", 1, false}, {"", 2, true}, {"<b/>", 3, false}};
  std::string const input = "<a/>\n" + std::string(100, 'x') + "\n<b/>";
  EXPECT_EQ(repliesOf(input, Division::line, 10), expected);
  expectTheSameInPieces(input, Division::line, 10);
  expectTheSameInPieces(std::string(100, 'x'), Division::line, 10);
}

std::size_t countOf(std::string const& input) {
  return repliesOf(input, Division::reply, noLimit, [] { return 4096; }).size();
}

TEST(ReplyStream, TakesLongPiecesOfMarkup) {
  std::string const filling(1 << 18, 'x');
  EXPECT_EQ(countOf('<' + filling), 1U);
  EXPECT_EQ(countOf("</" + filling), 1U);
  EXPECT_EQ(countOf(filling), 1U);
  EXPECT_EQ(countOf("<a>" + filling), 1U);
  EXPECT_EQ(countOf("<a " + filling), 1U);
  EXPECT_EQ(countOf("<a x='" + filling), 1U);
  EXPECT_EQ(countOf("<!--" + filling), 1U);
  EXPECT_EQ(countOf("<a><![CDATA[" + filling), 1U);
  EXPECT_EQ(countOf("<?" + filling), 1U);
}

TEST(ReplyStream, TakesManyPiecesOfMarkup) {
  constexpr int count = 1 << 14;
  auto const repeated = [](std::string_view piece) {
    std::string text;
    for (int i = 0; i < count; ++i) text += piece;
    return text;
  };
  EXPECT_EQ(countOf("<a>" + repeated("<a>")), 1U);
  EXPECT_EQ(countOf("<a>" + repeated("<!--")), 1U);
  EXPECT_EQ(countOf("<a>" + repeated("<")), 1U);
  EXPECT_EQ(countOf("<a>" + repeated("<b x='")), 1U);
  EXPECT_EQ(countOf(repeated("</a>")), static_cast<std::size_t>(count));
}

}  // namespace

}  // namespace Kovra::tool

// Replies of an input, however many bytes of it are there at once.

#include "stream.hpp"

#include <gtest/gtest.h>
#include <sys/time.h>

#include <csignal>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/fed_pipe.hpp"
#include "support/replies.hpp"

namespace Kovra::tool {

namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

using test::noLimit;
using test::repliesOf;
using test::Reply;

Texts textsOf(std::vector<Reply> const& replies) {
  Texts texts;
  for (Reply const& reply : replies) texts.push_back(reply.text);
  return texts;
}

Texts textsOf(std::string_view input, Division division = Division::reply) {
  return textsOf(repliesOf(input, division));
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

TEST(ReplyStream, CountsBlanksOfEveryKindBetweenDocuments) {
  EXPECT_EQ(textsOf(" \t\r\n<a/>\r\n\t<b/>\t\r"), (Texts{"<a/>", "<b/>"}));
  EXPECT_EQ(textsOf("<a/>\v<b/>"), (Texts{"<a/>", "\v", "<b/>"}));
}

TEST(ReplyStream, KnowsNamesByTheirFirstLetter) {
  for (std::string const name : {"_", ":", "a", "z", "A", "Z", "\xC3\xA4"}) {
    std::string const document = "<" + name + "></" + name + ">";
    EXPECT_EQ(textsOf(document + document), (Texts{document, document})) << name;
  }
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
        "\xef\xbb\xbf\xef\xbb\xbf <a/>\xef\xbb\xbf\xef\xbb\xbfx<b/> \xef\xbb\xbf\n\xef<c/>"sv,
        "junk<a/>junk <b></b ><c"sv, "</a><!DOCTYPE x><a></a><!-- <a/>"sv, "< <a<b></a></b><<"sv,
        "<a x='<b y='></a></b>"sv, "<?xm?><?xml?><?xml?><?xmlx?><a/>"sv}) {
    expectTheSameInPieces(input);
  }
}

/// What is found behind a reply that was cut, in one piece and in others.
void expectFoundBehind(std::string const& cut, Texts const& next) {
  std::string input = cut;
  for (std::string const& reply : next) input += reply;
  Texts expected = next;
  expected.insert(expected.begin(), cut);
  EXPECT_EQ(textsOf(input), expected) << input;
  expectTheSameInPieces(input);
}

constexpr char status[] = "<get_general_status><error>1</error></get_general_status>";

/// The replies that are found while the input stays open.
Texts foundInOpen(std::string const& input) {
  struct Waits {};
  std::size_t fed = 0;
  test::FedPipe pipe(input, [&] {
    std::size_t const size = std::min<std::size_t>(input.size() - fed, 1 << 15);
    fed += size;
    return size;
  });
  ReplyStream stream(pipe.path(), Division::reply, noLimit, [&] {
    if (fed == input.size()) throw Waits();
    pipe.feed();
  });
  Texts found;
  try {
    for (ReplyStream::Item item; stream.next(item);) found.emplace_back(item.text);
    ADD_FAILURE() << "ends";
  } catch (Waits const&) {
  }
  return found;
}

TEST(ReplyStream, FindsWhatFollowsACutBeginningOfMarkup) {
  for (std::string const before :
       {"", "<a>", "<get_general_status><error>1", "<?xml version='1.0'?>"}) {
    for (char const* const markup :
         {"<", "</", "</erro", "<!", "<!-", "<![", "<![CDA", "<!DOCTYPE x", "<?", "<?x"}) {
      expectFoundBehind(before + markup, {status});
      expectFoundBehind(before + markup, {std::string(declaration) + "<b/>", status});
      // At once, and not when the input ends.
      Texts const expected = {before + markup, status, "<b/>"};
      EXPECT_EQ(foundInOpen(before + markup + status + "<b/>"), expected);
    }
  }
}

// A name that was cut may be the beginning of another one, be it that of a root.
TEST(ReplyStream, FindsWhatFollowsACutName) {
  expectFoundBehind("<configuration>\n<media", {status});
  expectFoundBehind("<configuration><ethernet><get_general_status", {status, "<b/>"});
  expectFoundBehind("<configuration><!-- <media", {std::string(declaration) + "<b/>", status});
}

/// Where a construct ends is known before, and blanks between replies do not move it.
TEST(ReplyStream, FindsEndsBehindBlanks) {
  EXPECT_EQ(textsOf("<?xml <b/>   <?xml?><a/>"), (Texts{"<?xml ", "<b/>", "<?xml?><a/>"}));
  EXPECT_EQ(textsOf("<! <b/>\n\n<!x><a/>"), (Texts{"<! ", "<b/>", "<!x><a/>"}));
  expectTheSameInPieces("<?xml <b/>   <?xml?><a/>  <! <b/>  \n<!x><a/>");
}

TEST(ReplyStream, FindsWhatFollowsACutDeclaration) {
  std::string const declared = std::string(declaration) + "<b/>";
  for (std::size_t length = 1; length < std::string_view(declaration).size(); ++length) {
    std::string const cut(declaration, length);
    expectFoundBehind(cut, {status});
    expectFoundBehind(cut, {declared, "<b/>"});
  }
}

/// All roots, where no reply holds one of them in an element of that name.
TEST(ReplyStream, FindsRootsThatAreElementsOfOtherReplies) {
  std::string const action = "<action name=\"x\"/>";
  std::string const request = "<secure_action_request>" + action + "</secure_action_request>";
  expectFoundBehind("<get_general_status><error>", {action, request});
  expectFoundBehind("<get_general_status x='", {action, request});
  expectFoundBehind("<get_gener", {action, request});
  expectFoundBehind("<action><x>", {action});
  EXPECT_EQ(textsOf(request + request), (Texts{request, request}));
  // A request may hold it, and what else does is not known of other roots.
  for (std::string const root : {"secure_action_request", "a"}) {
    std::string const broken = "<" + root + "><b>" + action;
    EXPECT_EQ(textsOf(broken + status), (Texts{broken, status}));
    std::string const odd = "<" + root + " x='<'>" + action + "</" + root + ">";
    EXPECT_EQ(textsOf(odd), Texts{odd});
    expectTheSameInPieces(odd + broken + status);
  }
}

struct Quoting {
  std::string opening;
  std::string ending;
};

Quoting const quotings[] = {{"<!-- ", "-->"}, {"<![CDATA[", "]]>"}, {"<?x ", "?>"}};

/// A whole reply, and the end of another, which are neither.
TEST(ReplyStream, LeavesQuotedRepliesAlone) {
  for (Quoting const& quoting : quotings) {
    std::string const quoted = quoting.opening + status + status + "</a><!DOCTYPE" + quoting.ending;
    std::string const inside = "<a>" + quoted + quoted + "</a>";
    EXPECT_EQ(textsOf(inside + status), (Texts{inside, status}));
    expectTheSameInPieces(inside + status);
    std::string const before = quoted + quoted + "<a></a>";
    EXPECT_EQ(textsOf(before + status), (Texts{before, status}));
    expectTheSameInPieces(before + status);
  }
}

/// A reply that holds a comment cannot be quoted in one.
TEST(ReplyStream, EndsACutCommentWhereTheNextReplyHasOne) {
  for (Quoting const& quoting : quotings) {
    std::string const note = quoting.opening + "note" + quoting.ending;
    std::string const noted = "<get_general_status>" + note + "</get_general_status>";
    for (char const* const before : {"", "<a>", "<get_general_status>"}) {
      expectFoundBehind(before + (quoting.opening + "cut "), {noted, status});
      expectFoundBehind(before + (quoting.opening + "cut "), {status, noted, status});
      expectFoundBehind(before + (quoting.opening + quoting.opening),
                        {declaration + noted, status});
    }
  }
}

TEST(ReplyStream, GivesUpACommentThatGoesOnForLong) {
  for (Quoting const& quoting : quotings) {
    std::string const cut = "<get_general_status>" + quoting.opening + std::string(100000, 'x');
    std::string input = cut;
    std::size_t count = 0;
    for (; input.size() <= cut.size() + Splitter::longestQuotation; ++count) input += status;
    Texts const found = foundInOpen(input);
    ASSERT_EQ(found.size(), 1 + count);
    EXPECT_EQ(found.front(), cut);
    EXPECT_EQ(found[1], status);
    EXPECT_EQ(found.back(), status);
  }
}

/// Up to the last byte it may end, however it arrives.
TEST(ReplyStream, KnowsHowLongAQuotationMayBe) {
  for (Quoting const& quoting : quotings) {
    std::string const before = "<a>" + quoting.opening;
    std::size_t const filling =
        Splitter::longestQuotation - quoting.ending.size() + 1 - std::string_view(status).size();
    for (std::size_t const surplus : {0U, 1U}) {
      std::string const quoted = status + std::string(filling + surplus, 'x') + quoting.ending;
      std::string const input = before + quoted + "</a>" + status;
      Texts const whole = textsOf(input);
      EXPECT_EQ(whole.front(), surplus == 0 ? before + quoted + "</a>" : before);
      EXPECT_EQ(whole.back(), status);
      for (std::size_t const size : {1U, 4096U}) {
        EXPECT_EQ(textsOf(repliesOf(input, Division::reply, noLimit, [=] { return size; })), whole);
      }
    }
  }
}

/// Types of documents, with literals and subsets, are part of the reply behind them.
TEST(ReplyStream, PassesTypesOfDocuments) {
  for (std::string const type :
       {"<!DOCTYPE a>", "<!DOCTYPE a SYSTEM \"x[y\">", "<!DOCTYPE a SYSTEM 'x>\"y'>",
        "<!DOCTYPE a PUBLIC '-//x//' \"y\" [ ]>",
        "<!DOCTYPE a [<!ENTITY x \"y\">\n<!ELEMENT a ANY>]>", "<!DOCTYPE a [<!ELEMENT a ANY>] >",
        "<!DOCTYPE a [<!ELEMENT a ANY>]\r\n\t>",
        "<!DOCTYPE a [<!-- don't ]> -->%x;<?x ]> ' ?><!ENTITY y ']>'><!ENTITY z \"<b>]></b>\">]>",
        "<!DOCTYPE a [ ]] ]>"}) {
    std::string const reply = declaration + type + "<a></a>";
    EXPECT_EQ(textsOf(reply + type + "<a/>" + status), (Texts{reply, type + "<a/>", status}));
    expectTheSameInPieces(reply + type + "<a/>" + status);
  }
}

TEST(ReplyStream, FindsWhatFollowsACutTypeOfADocument) {
  for (std::string const cut :
       {"<!DOCTYPE a", "<!DOCTYPE a SYSTEM 'x", "<!DOCTYPE a [", "<!DOCTYPE a []",
        "<!DOCTYPE a [<!ENTITY x", "<!DOCTYPE a [<!ENTITY x \"y", "<!DOCTYPE a [<!ENTITY x 'y'>",
        "<!DOCTYPE a [<"}) {
    expectFoundBehind(cut, {status});
    expectFoundBehind(cut, {declaration + "<b/>"s, status});
    EXPECT_EQ(foundInOpen(cut + status + "<b/>"), (Texts{cut, status, "<b/>"}));
  }
  // Within an element there are none, and what looks like one has no literals.
  expectFoundBehind("<get_general_status><![", {status});
  EXPECT_EQ(textsOf("<a><!x'></a><a/>"), (Texts{"<a><!x'></a>", "<a/>"}));
}

/// As UTF-16, which is declared.
std::string littleOf(std::string_view text) {
  std::string wide;
  for (char const letter : text) (wide += letter) += '\0';
  return wide;
}

std::string bigOf(std::string_view text) {
  return '\0' + littleOf(text.substr(0, text.size() - 1)) + text.back();
}

struct WideReply {
  std::string mark;
  std::string (*of)(std::string_view text);
};

WideReply const wideReplies[] = {
    {"\xFF\xFE", littleOf}, {"\xFE\xFF", bigOf}, {"", littleOf}, {"", bigOf}};

constexpr char wideDeclaration[] = "<?xml version='1.0' encoding='UTF-16'?>";

TEST(ReplyStream, FindsRepliesInUtf16) {
  for (auto const& [mark, of] : wideReplies) {
    std::string const reply = mark + of(wideDeclaration + "\n<a><!-- </a> --><a>x</a></a>"s);
    std::string const other = mark + of(wideDeclaration + "<b/>"s);
    EXPECT_EQ(textsOf(reply + other + reply), (Texts{reply, other, reply}));
    expectTheSameInPieces(reply + other + reply);
    // Among others, with and without something between them.
    for (std::string const& between : {""s, "\n"s, "\0"s, "\n\0"s}) {
      std::string const input = status + between + reply + between + status + between + other;
      expectTheSameInPieces(input);
      Texts found = textsOf(input);
      ASSERT_EQ(found.size(), 4U);
      // Behind a NUL byte, and without a mark, both orders are the same bytes.
      if (mark.empty() && between.find('\0') != between.npos) {
        for (std::size_t const i : {1U, 3U}) {
          if (found[i].front() == '\0' && of("x").front() == 'x')
            found[i] = found[i].substr(1) + '\0';
        }
      }
      EXPECT_EQ(found, (Texts{status, reply, status, other}));
    }
    // At once, and not when the next one comes.
    EXPECT_EQ(foundInOpen(reply + other), (Texts{reply, other}));
  }
}

/// What has more units than are looked at in one go, and letters of all kinds.
TEST(ReplyStream, FindsLongRepliesInUtf16) {
  for (auto const& [mark, of] : wideReplies) {
    std::string letters;
    for (std::size_t code = 1; code < 5000; ++code) {
      if (code == '<' || code == '&') continue;
      bool const isLittle = of("a").front() == 'a';
      letters += static_cast<char>(isLittle ? code % 256 : code / 256);
      letters += static_cast<char>(isLittle ? code / 256 : code % 256);
    }
    std::string const reply = mark + of(wideDeclaration + "<a>"s) + letters + of("</a>");
    EXPECT_EQ(textsOf(reply + reply + status), (Texts{reply, reply, status}));
    EXPECT_EQ(
        textsOf(repliesOf(reply + reply + status, Division::reply, noLimit, [] { return 1; })),
        (Texts{reply, reply, status}));
  }
}

TEST(ReplyStream, FindsWhatFollowsACutReplyInUtf16) {
  std::string const declared = declaration + "<b/>"s;
  for (auto const& [mark, of] : wideReplies) {
    std::string const begun = mark + of(wideDeclaration + "<get_general_status><error>1"s);
    std::string const next = mark + of(wideDeclaration + "<b/>"s);
    expectFoundBehind(begun, {next, status});
    expectFoundBehind(begun, {status, next});
    expectFoundBehind(begun, {declared});
    EXPECT_EQ(textsOf(begun), Texts{begun});
    // Within a unit, where a mark or bytes show what follows.
    std::string const torn = begun.substr(0, begun.size() - 1);
    EXPECT_EQ(textsOf(torn), Texts{torn});
    expectFoundBehind(torn, {declared, next});
    if (!mark.empty()) expectFoundBehind(torn, {next, status});
    // Bytes that were cut.
    if (!mark.empty()) expectFoundBehind("<get_general_status><err", {next, status});
  }
}

/// A mark that follows on what was cut may belong to it, and to UTF-16.
TEST(ReplyStream, KnowsAMarkBehindWhatWasCut) {
  for (std::string const cut :
       {"x", "</", "</a", "<?", "<?x", "<!", "<!x", "<?xml", "<!DOCTYPE a [", "<a", "<a>"}) {
    for (std::string const& behind : {"<\0?\0"s, "<b/>"s, "<"s, "<\0"s, ""s}) {
      expectTheSameInPieces(cut + "\xFF\xFE" + behind);
      expectTheSameInPieces(cut + "\xFE\xFF" + behind);
      expectTheSameInPieces(cut + behind);
    }
  }
}

TEST(ReplyStream, RefusesOnceWhatUtf16DoesNotDeclare) {
  for (auto const& [mark, of] : wideReplies) {
    if (mark.empty()) continue;
    std::string const reply = mark + of(status);
    EXPECT_EQ(textsOf(reply + reply + status), (Texts{reply, reply, status}));
    expectTheSameInPieces(reply + reply + status);
  }
}

TEST(ReplyStream, TellsOfLargeRepliesInUtf16Once) {
  for (auto const& [mark, of] : wideReplies) {
    std::string const large = mark + of(wideDeclaration + "<a>"s + std::string(300, 'x') + "</a>");
    std::string const next = mark + of(wideDeclaration + "<b/>"s);
    std::vector<Reply> const expected = {{"", 1, true}, {next, 2, false}, {status, 3, false}};
    EXPECT_EQ(repliesOf(large + next + status, Division::reply, 150), expected);
    expectTheSameInPieces(large + next + status, Division::reply, 150);
    expectTheSameInPieces(large + status + large, Division::reply, 150);
  }
}

/// Whatever unit the limit falls into, and wherever the next reply stands.
TEST(ReplyStream, KnowsWhatIsTooLargeInUtf16) {
  for (auto const& [mark, of] : wideReplies) {
    std::string const next = mark + of(wideDeclaration + "<b/>"s);
    for (std::size_t filling = 9; filling < 100; ++filling) {
      std::string const large = mark + of(wideDeclaration + "<a>"s + std::string(filling, 'x'));
      for (std::size_t const limit : {100U, 101U}) {
        std::vector<Reply> const whole = repliesOf(large + next, Division::reply, limit);
        EXPECT_EQ(whole, (std::vector<Reply>{{"", 1, true}, {next, 2, false}})) << filling;
        EXPECT_EQ(repliesOf(large + next, Division::reply, limit, [] { return 1; }), whole);
        EXPECT_EQ(repliesOf(large + next, Division::reply, limit, [] { return 7; }), whole);
      }
    }
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

/// Its own root is no other reply's, whether it is cut or too large.
TEST(ReplyStream, TellsOnceOfWhatHasNoEnd) {
  std::string const begun = std::string(declaration) + "\n<!-- x --><get_general_status>";
  for (char const* const rest :
       {"", "<error>1", "<!-- ", "<error x='", "<![CDATA[ <!-- --> ]]></err"}) {
    EXPECT_EQ(textsOf(begun + rest), Texts{begun + rest});
    expectTheSameInPieces(begun + rest);
    std::string const large = begun + rest + std::string(300, 'x');
    std::vector<Reply> const expected = {{"", 1, true}, {status, 2, false}};
    EXPECT_EQ(repliesOf(large + status, Division::reply, 150), expected) << large;
    expectTheSameInPieces(large + status, Division::reply, 150);
  }
}

/// Some bytes more than the limit are looked at, and each may be the last one.
TEST(ReplyStream, KnowsWhatIsTooLargeToTheByte) {
  using namespace std::string_view_literals;
  for (std::size_t filling = 0; filling < 100; ++filling) {
    std::string const x(filling, 'x');
    std::string const blanks(filling, ' ');
    for (std::string const& large :
         {"<a>" + x + "</a>", "<a>" + x, "<!--" + x + "-->" + blanks, "<?xml " + x, x + "<",
          "<get_general_status " + x, "<a><!-- <get_general_status>" + x}) {
      for (std::string_view const next : {"<get_free_ram/>"sv, "\0<b/>"sv, "<?xml?><b/>"sv, ""sv}) {
        std::string const input = large + std::string(next);
        std::vector<Reply> const whole = repliesOf(input, Division::reply, 20);
        EXPECT_EQ(repliesOf(input, Division::reply, 20, [] { return 1; }), whole) << input;
        EXPECT_EQ(repliesOf(input, Division::reply, 20, [] { return 7; }), whole) << input;
      }
    }
  }
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

struct LongMarkup {
  std::string begin;
  std::string end;
  /// What would end it, or begin something else.
  std::string change = "' --> ]]> ?> /> <?xml?><get_general_status/></a><";
};

LongMarkup const longMarkups[] = {
    {"<a", "/>"},
    {"<a><b", "/></a>"},
    {"<a><b ", "/></a>"},
    {"<a><b x='", "'/></a>"},
    {"<a></", "></a>"},
    {"<a>", "</a>"},
    {"<a><!-- ", "--></a>"},
    {"<!-- <get_general_status/>", "--><a/>"},
    {"<a><![CDATA[ ", "]]></a>"},
    {"<?", " ?><a/>", " / = \"/"},  // whose end is looked for when its name is known
    {"<?x ", "?><a/>"},
    {"<?xml ", "?><a/>"},
    {"<!x", "><a/>"},
};

/// So what was looked at may change: it takes linear time.
TEST(Splitter, LooksAtNoByteTwice) {
  constexpr std::size_t length = 1000;
  for (LongMarkup const& markup : longMarkups) {
    std::string text = markup.begin + std::string(length, 'x');
    Splitter splitter;
    EXPECT_FALSE(splitter.look(text, false).isWhole) << markup.begin;
    text.replace(markup.begin.size() + length / 2, markup.change.size(), markup.change);
    EXPECT_FALSE(splitter.look(text + "xx", false).isWhole) << markup.begin;
    text += "xx" + markup.end;
    EXPECT_EQ(splitter.look(text, false).length, text.size()) << markup.begin;
  }
}

TEST(Splitter, LooksAtNoJunkTwice) {
  for (char const* const begin : {"junk", "<1", "< "}) {
    std::string text = begin + std::string(1000, 'x');
    Splitter splitter;
    EXPECT_FALSE(splitter.look(text, false).isWhole) << begin;
    text[500] = '<';
    EXPECT_EQ(splitter.look(text + "x<a/>", false).length, text.size() + 1) << begin;
  }
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

/// With a buffer that a large reply has left: what is in it is searched for each end once.
TEST(ReplyStream, TakesManyShortRepliesBehindALargeOne) {
  constexpr int count = 1 << 12;
  for (auto const& [mark, of] : wideReplies) {
    std::string input = "<a>" + std::string(1 << 22, 'x') + "</a>";
    for (int i = 0; i < count; ++i) input += mark + of(wideDeclaration + "<b/>"s) + "<a/>";
    EXPECT_EQ(countOf(input), 1U + 2 * count);
  }
}

}  // namespace

/// sends signals.
class ManySignals {
 public:
  ManySignals() {
    struct sigaction ignored {};
    ignored.sa_handler = [](int) {};
    ignored.sa_flags = SA_RESTART;
    ::sigaction(SIGALRM, &ignored, &before_);
    set({0, 500});  // much more often, and nothing else would be done
  }
  ~ManySignals() {
    set({0, 0});
    ::sigaction(SIGALRM, &before_, nullptr);
  }
  ManySignals(ManySignals const&) = delete;
  ManySignals& operator=(ManySignals const&) = delete;

 private:
  static void set(timeval interval) {
    itimerval const timer{interval, interval};
    ::setitimer(ITIMER_REAL, &timer, nullptr);
  }

  struct sigaction before_ {};
};

// It is told before each wait, or what was found before stays in buffers meanwhile.
TEST(ReplyStream, TellsThatItWaitsAlsoWhereASignalComes) {
  ManySignals const signals;
  std::string const input(50'000, '\n');
  EXPECT_TRUE(test::repliesOf(input, Division::line, test::noLimit, [] { return 1; }).empty());
}

}  // namespace Kovra::tool

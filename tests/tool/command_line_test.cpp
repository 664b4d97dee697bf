// The words of the command line, and complaints about them.

#include "command_line.hpp"

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string>
#include <vector>

namespace Kovra::tool {

namespace {

using Words = std::vector<std::string>;

/// What is told of a command line that is wrong; empty for one that is not.
std::string told(std::vector<std::string_view> const& arguments) {
  Words words = wordsOf(arguments);
  ExitStatus status = ExitStatus::good;
  CLI::App app;
  app.require_subcommand(1);
  addVerbs(app, words.empty() ? "" : words.front(), status);
  app.parse_complete_callback([] { throw CLI::Success(); });  // before any verb does anything
  std::reverse(words.begin(), words.end());
  try {
    app.parse(std::move(words));
  } catch (CLI::Error const& error) {
    if (error.get_name() == "Success") return {};
    return commandName(app) + ": " + complaintOf(app, error);
  }
  return {};
}

TEST(CommandLine, DecodesAFileAlone) {
  EXPECT_EQ(wordsOf({"reply.xml", "-j", "2"}), (Words{"decode", "reply.xml", "-j", "2"}));
  EXPECT_EQ(wordsOf({"./decode"}), (Words{"decode", "./decode"}));
  EXPECT_EQ(wordsOf({"decode"}), (Words{"decode"}));
  EXPECT_EQ(wordsOf({"--x=a.b"}), (Words{"--x=a.b"}));
}

TEST(CommandLine, AsksTheVerbForHelp) {
  EXPECT_EQ(wordsOf({"help", "check"}), (Words{"check", "--help"}));
  EXPECT_EQ(wordsOf({"help"}), (Words{"--help"}));
  EXPECT_EQ(wordsOf({"help", "chekc"}), (Words{"chekc"}));
}

TEST(CommandLine, TakesFilesForFilesWhateverTheirNames) {
  EXPECT_EQ(wordsOf({"check", "[a,b]", "++", "["}), (Words{"check", "./[a,b]", "./++", "["}));
  EXPECT_EQ(wordsOf({"[a,b]"}), (Words{"decode", "./[a,b]"}));
}

TEST(CommandLine, MayBeEmpty) {
  EXPECT_EQ(wordsOf({}), Words());
  EXPECT_EQ(wordsOf({""}), Words{""});
  EXPECT_NE(told({}), "");
}

TEST(CommandLine, TellsWhatMayHaveBeenMeant) {
  EXPECT_EQ(told({"decode", "x", "--format", "json"}), "");
  EXPECT_EQ(told({"deocde"}), "kovra: unknown subcommand \"deocde\". Did you mean \"decode\"?");
  EXPECT_NE(told({"decode", "--fromat=json"}).find("Did you mean \"--format\"?"),
            std::string::npos);
  EXPECT_EQ(told({"list", "x"}).rfind("kovra list: ", 0), 0U);
}

TEST(CommandLine, ComplainsOfWordsThatAreNone) {
  EXPECT_NE(told({""}), "");
  EXPECT_NE(told({"list", ""}), "");
  EXPECT_NE(told({"list", "=x"}), "");
  EXPECT_NE(told({"list", "-"}), "");
  EXPECT_NE(told({"compose", ""}), "");
}

}  // namespace

}  // namespace Kovra::tool

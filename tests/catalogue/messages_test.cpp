// What the tables say of all messages, row by row: the file beside this holds it as it is told. A
// row that is dropped, or that goes elsewhere, a word that is another or has another code stands
// out in it.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "kovra.hpp"
#include "support/golden.hpp"

namespace Kovra {
namespace {

void printWords(std::ostream& out, std::vector<Keyword> const& words) {
  for (Keyword const& word : words) out << ' ' << word.word() << '=' << word.code();
}

/// With words where no element tells them.
void printMembers(std::ostream& out, std::vector<MemberDescription> const& members,
                  std::string const& path, bool withWords) {
  for (MemberDescription const& member : members) {
    out << "  " << path << member.name() << (member.isSecret() ? " secret" : "") << ' '
        << static_cast<int>(member.kind()) << ' ' << static_cast<int>(member.form()) << ' '
        << member.mostBytes();
    if (!member.title().empty()) out << " \"" << member.title() << '"';
    if (withWords) printWords(out, member.words());
    out << '\n';
    printMembers(out, member.members(), path + member.name() + '.', withWords);
  }
}

void printElement(std::ostream& out, ElementDescription const& element, std::string const& path) {
  std::string const inner = path + '/' + element.name();
  out << "  " << inner;
  if (element.mostTimes() != 1) out << " times " << element.mostTimes();
  for (MemberDescription const& member : element.members()) {
    out << ' ' << member.name();
    if (!member.members().empty()) out << '(' << member.members().size() << ')';
  }
  for (std::string const& attribute : element.attributes()) out << " @" << attribute;
  if (!element.words().empty()) out << ':';
  printWords(out, element.words());
  out << '\n';
  for (ElementDescription const& child : element.elements()) printElement(out, child, inner);
}

/// What the tool's help is made of.
void printCommand(std::ostream& out, Message const& message) {
  out << "  command " << message.command() << ": " << message.purpose() << '\n'
      << "  record of " << message.recordOf() << '\n'
      << message.help() << '\n'
      << "  group " << message.groupPurpose() << '\n'
      << message.groupHelp() << '\n';
  for (std::string const& path : message.secrets()) out << "  secret " << path << '\n';
  for (Choice const& choice : message.choices()) {
    out << "  choice " << choice.name();
    for (std::string const& word : choice.words()) out << ' ' << word;
    out << '\n';
  }
}

std::string printed() {
  std::ostringstream out;
  for (Message const& message : messages()) {
    out << message.name() << ": " << message.title() << '\n';
    for (std::string const& root : message.roots()) out << "  <" << root << ">\n";
    for (std::string const& name : message.required()) out << "  required " << name << '\n';
    printMembers(out, message.members(), "", !message.isRead());
    if (message.isWritten()) printCommand(out, message);
    if (message.isRead()) printElement(out, message.root(), "");
  }
  return out.str();
}

TEST(Messages, AreToldRowByRow) {
  test::expectGolden(printed(), "messages.txt");
}

}  // namespace
}  // namespace Kovra

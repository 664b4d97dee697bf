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

/// Where replies say it, and by which elements, attributes and words: nothing where its name tells.
void printElements(std::ostream& out, MemberDescription const& member) {
  std::vector<std::string> const alone = {member.name()};
  if (member.elements() == alone && member.vocabulary() == alone) return;
  out << "   ";
  for (std::string const& element : member.elements()) out << ' ' << element;
  out << ':';
  for (std::string const& word : member.vocabulary()) out << ' ' << word;
  out << '\n';
}

void printMembers(std::ostream& out, std::vector<MemberDescription> const& members,
                  std::string const& path) {
  for (MemberDescription const& member : members) {
    out << "  " << path << member.name() << (member.isSecret() ? " secret" : "") << ' '
        << static_cast<int>(member.kind()) << ' ' << static_cast<int>(member.form()) << ' '
        << member.mostBytes();
    if (!member.title().empty()) out << " \"" << member.title() << '"';
    printWords(out, member.words());
    out << '\n';
    if (member.members().empty()) printElements(out, member);
    printMembers(out, member.members(), path + member.name() + '.');
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
    printMembers(out, message.members(), "");
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

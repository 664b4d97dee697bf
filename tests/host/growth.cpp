// A host that uses all that the face returns. It is built once, and runs with this library and with
// a later one, in which every result holds more: it prints the same but for the version.

#include <iostream>
#include <kovra.hpp>
#include <string>

namespace {

void show(Kovra::Finding const& finding) {
  std::cout << finding.id() << ' ' << Kovra::nameOf(finding.severity()) << ' ' << finding.line()
            << ':' << finding.column() << '@' << finding.offset() << '-' << finding.endLine() << ':'
            << finding.endColumn() << '@' << finding.endOffset() << ' ' << finding.path() << ' '
            << finding.element() << ' ' << finding.found() << ' ' << finding.kept() << ' '
            << finding.expected().size() << ' ' << finding.count() << ' ' << finding.message()
            << '\n';
}

void show(Kovra::Composition const& composition) {
  std::cout << bool(composition) << ' ' << composition.text() << '\n';
  for (Kovra::Problem const& problem : composition.problems()) {
    std::cout << problem.path() << '|' << problem.found() << '|' << problem.expected() << '|'
              << problem.message() << '\n';
  }
}

void showCatalogue() {
  for (Kovra::FindingKind const& kind : Kovra::findingKinds()) {
    std::cout << kind.id() << kind.name() << kind.title() << kind.explanation() << '\n';
  }
  for (Kovra::Message const& message : Kovra::messages()) {
    std::cout << message.name() << message.title() << message.roots().size() << message.isRead()
              << message.isWritten() << message.required().size() << '\n';
    for (Kovra::MemberDescription const& member : message.members()) {
      std::cout << member.name() << int(member.kind()) << member.title() << '\n';
    }
    for (Kovra::ElementDescription const& element : message.root().elements()) {
      std::cout << element.name() << element.members().size() << element.words().size()
                << element.attributes().size() << element.mostTimes() << '\n';
    }
    for (Kovra::Choice const& choice : message.choices()) {
      std::cout << choice.name() << int(choice.form()) << choice.words().size() << '\n';
    }
  }
}

}  // namespace

int main() {
  std::string const text =
      "<get_general_status><error>5x</error><alarms>0x1A</alarms><error>6</error><x/>"
      "</get_general_status> rest";
  for (std::string const& reply : {text, std::string("<a>"), std::string()}) {
    Kovra::Decoding const decoding = Kovra::decode(reply);
    std::cout << bool(decoding) << decoding.root() << decoding.toJson() << '\n';
    for (Kovra::Reading const& reading : decoding.readings()) {
      std::cout << reading.message() << reading.result() << reading.record().toJson() << '\n';
      for (auto const& [name, value] : reading.record().members()) {
        std::cout << name << '=' << value.toJson() << '\n';
      }
    }
    for (Kovra::Note const& note : decoding.notes()) show(note);
    show(decoding.refusal());
    auto const status = Kovra::read<Kovra::KVGeneralStatus>(reply);
    std::cout << bool(status) << status->error << status->alarms << status.has("error")
              << status.has("warning") << status.result() << status.message() << '\n';
    for (Kovra::Note const& note : status.notes()) show(note);
    show(status.refusal());
  }
  show(Kovra::compose("nonce", Kovra::Value::object({{"nonce", "abc"}})));
  show(Kovra::compose("keys", Kovra::Value::object({{"nonce", "abc"}})));
  Kovra::_tagSecKeys keys{};
  show(Kovra::compose(keys));
  showCatalogue();
  std::cerr << Kovra::version() << '\n';
}

// Lists what the replies of a fleet do not say, member by member, and how many of them: members of
// the messages that were read that some reply lacks.
//   fleet_gaps REPLY...

#include <fstream>
#include <iostream>
#include <iterator>
#include <kovra.hpp>
#include <map>
#include <string>

namespace {

/// How often each message was read, and how often each of its members was there.
struct Count {
  int replies = 0;
  std::map<std::string, int> members;
};

std::map<std::string, Count> countsOf(int argc, char** argv) {
  std::map<std::string, Count> counts;
  for (int i = 1; i < argc; ++i) {
    std::ifstream file(argv[i], std::ios::binary);
    std::string const text{std::istreambuf_iterator<char>(file), {}};
    Kovra::Decoding const decoding = Kovra::decode(text);
    if (!decoding) std::cerr << argv[i] << ": " << decoding.refusal().message() << '\n';
    for (Kovra::Reading const& reading : decoding.readings()) {
      Count& count = counts[reading.message()];
      ++count.replies;
      for (auto const& [name, value] : reading.record().members())
        ++count.members[std::string(name)];
    }
  }
  return counts;
}

}  // namespace

int main(int argc, char** argv) {
  std::map<std::string, Count> counts = countsOf(argc, argv);
  for (Kovra::Message const& message : Kovra::messages()) {
    Count& count = counts[message.name()];
    for (Kovra::MemberDescription const& member : message.members()) {
      int const lacking = count.replies - count.members[member.name()];
      if (lacking == 0) continue;
      std::cout << message.name() << '.' << member.name() << ": " << lacking << " of "
                << count.replies << '\n';
    }
  }
}

// Changes the name of the wireless network in a configuration that a printer reported, and prints
// the request that sets it.
//   set_wifi NETWORK <configuration.xml >request.xml

#include <iostream>
#include <iterator>
#include <kovra.hpp>
#include <string>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: set_wifi NETWORK <configuration.xml\n";
    return 2;
  }
  std::string const text{std::istreambuf_iterator<char>(std::cin), {}};
  Kovra::Decoding const reply = Kovra::decode(text, "configuration");
  if (!reply) {
    std::cerr << reply.refusal().message() << '\n';
    return 1;
  }

  // All other settings of the section are sent back as they were.
  Kovra::Value record = reply.readings().front().record();
  record.set("wireless.ssid", argv[1]);
  Kovra::Composition const request =
      Kovra::compose("configuration", record,
                     Kovra::Value::object({{"sections", Kovra::Value::list({"wireless"})}}));
  for (Kovra::Problem const& problem : request.problems()) std::cerr << problem.message() << '\n';
  std::cout << request.text();
  return request ? 0 : 1;
}

/// @file
/// Any names, texts, codes and sizes: no device command is written beyond its buffer, and one that
/// was written is a document. Copies for debugging are made, too, where the build has them.

#include <tinyxml.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "kvxdevicecontrol.h"

namespace {

// Takes the input apart; at its end there are zeros.
class Input {
 public:
  Input(std::uint8_t const* data, std::size_t size) : data_(data), size_(size) {}

  int number() {
    std::int32_t value = 0;
    std::size_t const length = size_ < sizeof value ? size_ : sizeof value;
    std::memcpy(&value, data_, length);
    skip(length);
    return value;
  }
  std::string text() {
    std::size_t const length = size_ != 0 ? static_cast<std::size_t>(*data_) % size_ : 0;
    std::string const text(reinterpret_cast<char const*>(data_), length);
    skip(length);
    return text;
  }

 private:
  void skip(std::size_t length) {
    data_ += length;
    size_ -= length;
  }

  std::uint8_t const* data_;
  std::size_t size_;
};

// A buffer of exactly the size that the operation is told.
template <class Run>
void drive(int room, Run run) {
  std::unique_ptr<char[]> const out(new char[static_cast<std::size_t>(room)]);
  bool const written = run(out.get(), room);
  if (room > 0 && std::memchr(out.get(), 0, static_cast<std::size_t>(room)) == nullptr)
    std::abort();
  if (written == (room == 0 || *out.get() == '\0')) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  Input input(data, size);
  int const room = static_cast<int>(static_cast<unsigned>(input.number()) % 700);
  int const code = input.number() % 8;
  int const other = input.number();
  float rpm = 0;
  std::memcpy(&rpm, &other, sizeof rpm);
  std::string const name = input.text();
  std::string const text = input.text();
  char const* const names[] = {"fan", "advance", "laminator", "radio", "rfid", name.c_str()};

  KVXDeviceControl control;
  drive(room, [&](char* out, int length) {
    return control.RunMotorCommand(code, other, other, code, out, length);
  });
  drive(room, [&](char* out, int length) {
    return control.RunMotorCommand(nullptr, code, other, rpm, other, other > 0, out, length);
  });
  drive(room, [&](char* out, int length) {
    return control.RunCamCommand(text.c_str(), name.c_str(), out, length);
  });
  drive(room, [&](char* out, int length) {
    return control.RunCalibrateCommand(nullptr, code, rpm, rpm, out, length);
  });
  for (char const* const device : names) {
    drive(room, [&](char* out, int length) {
      return control.RunOtherCommands(device, text.c_str(), name.c_str(), other > 0, out, length);
    });
    drive(room, [&](char* out, int length) {
      return control.RunRFIDCommands(device, code, other, out, length);
    });
  }
  return 0;
}

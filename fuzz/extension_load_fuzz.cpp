// Fuzz target: the extension's settings read from a damaged stream. The
// bytes are taken as a run of typed values (a type byte, then a text of up
// to 255 bytes, a 32-bit number, a double or a flag); the stream ends where
// the bytes do. Loading must never let an error out, and whatever it kept
// must save and load again to the same 24 values.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/host/memory_map_document.h"
#include "platform/host/terminal_application.h"
#include "shell/extension.h"

namespace {

using tarnwick::StreamValue;

class BytesStream : public tarnwick::ValueStream {
 public:
  BytesStream(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  StreamValue Read() override {
    switch (Byte() % 4) {
      case 0: {
        const std::size_t wanted = Byte();
        const std::size_t length = std::min(wanted, size_ - pos_);
        std::string text(reinterpret_cast<const char*>(data_ + pos_), length);
        pos_ += length;
        return text;
      }
      case 1: return Bits<std::int32_t>();
      case 2: return Bits<double>();
      default: return Byte() % 2 == 1;
    }
  }
  void Write(const StreamValue&) override {}

 private:
  std::uint8_t Byte() {
    if (pos_ >= size_) throw std::runtime_error("End of stream");
    return data_[pos_++];
  }
  template <class T>
  T Bits() {
    if (size_ - pos_ < sizeof(T)) throw std::runtime_error("End of stream");
    T value;
    std::memcpy(&value, data_ + pos_, sizeof(T));
    pos_ += sizeof(T);
    return value;
  }
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t pos_ = 0;
};

class VectorStream : public tarnwick::ValueStream {
 public:
  StreamValue Read() override {
    if (next >= values.size()) throw std::runtime_error("End of stream");
    return values[next++];
  }
  void Write(const StreamValue& value) override { values.push_back(value); }
  std::vector<StreamValue> values;
  std::size_t next = 0;
};

// The command line's host with the error road's message window kept quiet.
class QuietApplication : public tarnwick::platform::host::TerminalApplication {
 public:
  void ShowMessageWindow(const std::string&) override {}
};

// Equal values, a NaN equal to itself.
bool Same(const std::vector<StreamValue>& a, const std::vector<StreamValue>& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i].index() != b[i].index()) return false;
    if (const auto* x = std::get_if<double>(&a[i])) {
      const double y = std::get<double>(b[i]);
      if (std::memcmp(x, &y, sizeof y) != 0) return false;
    } else if (a[i] != b[i]) {
      return false;
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  QuietApplication application;
  // The error log goes beside the document, in a folder that cannot be
  // made, so a run writes no files.
  const tarnwick::platform::host::MemoryMapDocument document("/proc/tarnwick-fuzz/settings.qgz", "settings");
  auto load = [&](tarnwick::ValueStream& stream) {
    tarnwick::clsExtension extension;
    extension.SetErrorHost(&application, &document);
    extension.Load(stream);
    VectorStream saved;
    extension.Save(saved);
    return saved;
  };

  BytesStream damaged(data, size);
  VectorStream first = load(damaged);
  VectorStream second = load(first);
  VectorStream third = load(second);
  if (second.values.size() != 24 || !Same(second.values, third.values)) std::abort();
  return 0;
}

// libFuzzer target for the stream readers: every typed read of ZnStream
// over a ZnMemoryStream of any bytes, each value written again and held in
// a ZnVariant; the same bytes through ZnBinaryStream and ZnBinary.
//
// Input: one byte n, then n bytes that choose the reads (and seeks), then
// the bytes that are read.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include <znutil/containers/ZnUuid.h>
#include <znutil/values/ZnBinary.h>
#include <znutil/values/ZnBinaryStream.h>
#include <znutil/values/ZnMemoryStream.h>
#include <znutil/values/ZnStreamException.h>
#include <znutil/values/ZnVariant.h>

namespace {

int Position(ZnMemoryStream const &stream) {
  int length;
  stream.GetBuffer(length);
  return length;
}

// Where conversions land, so that the compiler keeps them.
volatile double sink;

// A variant keeps what it was given; a copy of it equals it.
void CheckVariant(ZnVariant const &variant, bool comparable) {
  ZnVariant const copy(variant);
  if (comparable && copy != variant) std::abort();
  sink = copy.ToString().Length();
  sink = static_cast<int>(copy);
  sink = static_cast<unsigned int>(copy);
  sink = static_cast<double>(copy);
  sink = static_cast<float>(copy);
  sink = static_cast<bool>(copy);
}

class Reader {
 public:
  Reader(std::vector<char> *bytes) : bytes_(*bytes), in_(bytes->data(), static_cast<int>(bytes->size())) {}

  void Step(std::uint8_t choice) {
    switch (choice % 14) {
      case 0: Scalar<bool>(); break;
      case 1: Scalar<char>(); break;
      case 2: Scalar<unsigned char>(); break;
      case 3: Scalar<short>(); break;
      case 4: Scalar<unsigned short>(); break;
      case 5: Scalar<int>(); break;
      case 6: Scalar<unsigned int>(); break;
      case 7: Scalar<long long>(); break;
      case 8: Scalar<unsigned long long>(); break;
      case 9: Scalar<float>(); break;
      case 10: Scalar<double>(); break;
      case 11: Text(); break;
      case 12: Uuid(); break;
      default: Seek(static_cast<std::int8_t>(choice) / 14); break;
    }
  }

  // Every value read and written again gives the bytes it came from (a
  // bool: 0 or 1).
  void CheckWritten() const {
    int length;
    char const *written = out_.GetBuffer(length);
    if (static_cast<std::size_t>(length) != expected_.size() ||
        (length > 0 && std::memcmp(written, expected_.data(), length) != 0))
      std::abort();
  }

 private:
  // Reads one value: it comes from the bytes at the position and moves it
  // on by its size, or the read fails where too few bytes are left and
  // the position stays.
  template <typename T>
  void Scalar() {
    int const before = Position(in_);
    T value{};
    try {
      in_ >> value;
    } catch (ZnStreamException const &) {
      if (before + sizeof value <= bytes_.size() || Position(in_) != before) std::abort();
      return;
    }
    if (Position(in_) != before + static_cast<int>(sizeof value)) std::abort();
    char const *source = bytes_.data() + before;
    if constexpr (std::is_same_v<T, bool>) {
      if (value != (*source != 0)) std::abort();
      expected_.push_back(value ? 1 : 0);
    } else {
      if (std::memcmp(&value, source, sizeof value) != 0) std::abort();
      expected_.insert(expected_.end(), source, source + sizeof value);
    }
    out_ << value;
    Hold(value);
  }

  template <typename T>
  void Hold(T value) {
    if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, unsigned int> || std::is_same_v<T, float> ||
                  std::is_same_v<T, double>) {
      CheckVariant(ZnVariant(value), !std::is_floating_point_v<T>);
    } else {
      CheckVariant(ZnVariant(static_cast<int>(value)), true);
    }
  }

  void Text() {
    int const before = Position(in_);
    ZnString text;
    try {
      in_ >> text;
    } catch (ZnStreamException const &) {
      return;
    }
    int declared;
    std::memcpy(&declared, bytes_.data() + before, sizeof declared);
    int const taken = declared > 0 ? declared : 0;
    if (Position(in_) != before + 4 + taken || text.Length() > taken) std::abort();
    CheckVariant(ZnVariant(text), true);
  }

  void Uuid() {
    int const before = Position(in_);
    ZnUuid value(NULL_UUID);
    try {
      in_ >> value;
    } catch (ZnStreamException const &) {
      return;
    }
    if (Position(in_) != before + 16) std::abort();
  }

  void Seek(int distance) {
    try {
      in_.Seek(distance);
    } catch (ZnStreamException const &) {
    }
  }

  std::vector<char> const &bytes_;
  ZnMemoryStream in_;
  ZnMemoryStream out_;
  std::vector<char> expected_;
};

void ReadBinaryStream(std::vector<char> const &bytes, std::uint8_t const *choices, std::size_t count) {
  ZnBinaryStream stream;
  stream.AppendBytes(reinterpret_cast<unsigned char const *>(bytes.data()), bytes.size());
  if (stream.Size() != bytes.size()) std::abort();
  ZnBinary value(stream);
  if (value.Size() != bytes.size() ||
      (!bytes.empty() && std::memcmp(static_cast<unsigned char *>(value), bytes.data(), bytes.size()) != 0))
    std::abort();
  ZnBinary const copy(value);
  if (copy != value || copy.Compare(value) != 0) std::abort();
  value.Dump(false);
  value.Dump(true);
  if (static_cast<ZnString>(value).Length() > static_cast<int>(bytes.size())) std::abort();
  ZnBinaryStream again(value);
  if (again.Size() != bytes.size()) std::abort();
  for (std::size_t i = 0; i < count; ++i) {
    int integer;
    unsigned long wide;
    double real;
    float single;
    ZnString text;
    switch (choices[i] % 5) {
      case 0: again >> integer; break;
      case 1: again >> wide; break;
      case 2: again >> real; break;
      case 3: again >> single; break;
      default: again >> text; break;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
  if (size < 1) return 0;
  std::size_t const count = std::min<std::size_t>(data[0] % 64, size - 1);
  std::uint8_t const *choices = data + 1;
  std::vector<char> bytes(choices + count, data + size);
  Reader reader(&bytes);
  for (std::size_t i = 0; i < count; ++i) reader.Step(choices[i]);
  reader.CheckWritten();
  ReadBinaryStream(bytes, choices, count);
  return 0;
}

// Helpers of the value and stream tests: temporary files (one folder per
// test process, whole-file reads and writes that do not go through the
// library), texts, reads of expected values and the status a call throws.
#ifndef ZNUTIL_TESTS_VALUES_STREAMTESTSUPPORT_H
#define ZNUTIL_TESTS_VALUES_STREAMTESTSUPPORT_H

#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/values/ZnStreamException.h>

namespace znutil_test {

using Bytes = std::vector<std::uint8_t>;

/// A folder of this process under the temporary directory; not created.
inline std::filesystem::path TestFolder() {
  return std::filesystem::temp_directory_path() / ("znutil_values_" + std::to_string(getpid()));
}

/// A fresh file name in the test folder, which is created.
inline std::string TempFile(char const *stem) {
  static std::atomic<int> counter{0};
  std::filesystem::create_directories(TestFolder());
  return (TestFolder() / (std::string(stem) + std::to_string(counter++) + ".bin")).string();
}

inline Bytes ReadWholeFile(std::string const &path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void WriteWholeFile(std::string const &path, Bytes const &bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<char const *>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

inline std::string Text(ZnString const &text) { return static_cast<char const *>(text); }

/// Reads a value of the type of each of `expected` from `in`, in order, and compares.
template <typename Stream, typename... T>
void ExpectReads(Stream &in, T const &...expected) {
  auto const readOne = [&in](auto const &value) {
    std::decay_t<decltype(value)> read{};
    in >> read;
    EXPECT_EQ(read, value);
  };
  (readOne(expected), ...);
}

/// The status that `call` throws as a ZnStreamException, or ZnStreamOk.
template <typename Call>
ZnStreamError Thrown(Call call) {
  try {
    call();
  } catch (ZnStreamException const &e) {
    return e.eError;
  }
  return ZnStreamOk;
}

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_VALUES_STREAMTESTSUPPORT_H

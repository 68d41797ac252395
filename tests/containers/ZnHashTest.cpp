#include <znutil/containers/ZnHash.h>

#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(ZnHashTest, PublishedCheckValues) {
  struct {
    std::string text;
    ZnULong hash;
  } const cases[] = {
      {"", 0xbd49d10du},
      {"abc", 0x251e4793u},
      {"Four score and seven years ago", 0x50f2424bu},
      {std::string(4, '\0'), 0x8965bbe9u},
  };
  for (auto const &c : cases) EXPECT_EQ(ZnHash(c.text.data(), static_cast<ZnULong>(c.text.size())), c.hash) << c.text;
}

TEST(ZnHashTest, AlignmentDoesNotMatterAndEveryTailByteCounts) {
  unsigned char buffer[64], shifted[64];
  for (int i = 0; i < 64; ++i) buffer[i] = static_cast<unsigned char>(i * 37 + 11);
  for (ZnULong length = 0; length <= 40; ++length) {
    ZnULong const aligned = ZnHash(buffer, length);
    std::memcpy(shifted + 3, buffer, length);
    EXPECT_EQ(ZnHash(shifted + 3, length), aligned) << length;
    EXPECT_NE(ZnHash(buffer, length, 1), aligned) << "the seed counts";
    for (ZnULong changed = 0; changed < length; ++changed) {
      buffer[changed] ^= 0x80;
      EXPECT_NE(ZnHash(buffer, length), aligned) << "byte " << changed << " of " << length;
      buffer[changed] ^= 0x80;
    }
  }
}

}  // namespace

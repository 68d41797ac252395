#include <znutil/memory/ZenoUtilHeap.h>

#include <cstring>

#include <gtest/gtest.h>

namespace {

TEST(ZenoUtilHeapTest, FrontsTheRunTimeHeap) {
  auto *block = static_cast<char *>(ZenoUtilAllocDbg(100, 1, "file.cpp", 12));
  ASSERT_NE(block, nullptr);
  std::memset(block, 'x', 100);
  unsigned int const usable = ZenoUtilMSize(block);
  EXPECT_GE(usable, 100u);
  EXPECT_EQ(ZenoUtilExpand(block, usable), block) << "fits in place";
  EXPECT_EQ(ZenoUtilExpand(block, usable + 4096), nullptr) << "cannot grow in place";
  block = static_cast<char *>(ZenoUtilRealloc(block, 5000));
  EXPECT_EQ(block[99], 'x');
  ZenoUtilFreeDbg(block, 1);

  auto *zeroed = static_cast<unsigned char *>(ZenoUtilCalloc(16, 4));
  for (int i = 0; i < 64; ++i) EXPECT_EQ(zeroed[i], 0);
  ZenoUtilFree(zeroed);
}

TEST(ZenoUtilHeapTest, AccountingIsAFixedStub) {
  void *block = ZenoUtilAlloc(1000);
  EXPECT_EQ(ZenoUtilTotalMemInUse(), 0xFFFFFFFFul);
  EXPECT_EQ(ZenoUtilCheckpointMemInUse(), 0xFFFFFFFFul);
  ZenoUtilFree(block);
  EXPECT_EQ(ZenoUtilTotalMemInUse(), 0xFFFFFFFFul);
}

}  // namespace

#include <znutil/memory/ZnMemBlock.h>

#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(ZnMemBlockTest, UpwardBlockCommitsWholePagesFromItsBase) {
  unsigned int const page = static_cast<unsigned int>(ZnMemBlock::GetPageSize());
  void *first = nullptr;
  unsigned int committed = 7, reserved = 0;
  ZnMemBlock block(16 * page, ZnMemBlockGrowUp, 1, &first, &committed, &reserved);
  EXPECT_EQ(reserved, 16 * page);
  EXPECT_EQ(block.TotalReserved(), 16 * page);
  EXPECT_EQ(first, block.GetAddress());
  EXPECT_EQ(committed, page) << "a 1-byte commit takes a whole page";
  std::memset(first, 1, page);

  unsigned int got = 0;
  void *second = block.Alloc(page, &got);
  EXPECT_EQ(second, static_cast<char *>(first) + page);
  EXPECT_EQ(got, page);
  EXPECT_EQ(block.GetTopOfBlock(), static_cast<char *>(first) + 2 * page);

  EXPECT_EQ(block.Alloc(15 * page, &got), nullptr);
  EXPECT_EQ(got, 14 * page) << "a refusal reports what is still free";

  EXPECT_EQ(block.Dealloc(page - 1, &got), first) << "decommit rounds down";
  EXPECT_EQ(got, 0u);
  block.Dealloc(page, &got);
  EXPECT_EQ(got, page);
  EXPECT_EQ(block.TotalCommitted(), page);
}

TEST(ZnMemBlockTest, InitialCommitNeedsAnAddressToReportIt) {
  unsigned int const page = static_cast<unsigned int>(ZnMemBlock::GetPageSize());
  ZnMemBlock block(4 * page, ZnMemBlockGrowUp, page, nullptr, nullptr, nullptr);
  EXPECT_EQ(block.TotalCommitted(), 0u);
}

TEST(ZnMemBlockTest, DownwardBlockGrowsFromTheEndBelowAGuardPage) {
  unsigned int const page = static_cast<unsigned int>(ZnMemBlock::GetPageSize());
  void *address = nullptr;
  unsigned int committed = 0;
  ZnMemBlock block(8 * page, ZnMemBlockGrowDown, page, &address, &committed, nullptr);
  char *end = static_cast<char *>(block.GetAddress()) + 8 * page;
  EXPECT_EQ(committed, 2 * page) << "one page and its guard";
  EXPECT_EQ(address, end - 2 * page) << "the address is the guard page itself";
  std::memset(end - page, 1, page);

  unsigned int got = 0;
  void *lower = block.Alloc(page, &got);
  EXPECT_EQ(lower, end - 4 * page);
  EXPECT_EQ(got, 2 * page);
  std::memset(end - 3 * page, 2, 2 * page);  // the old guard is ordinary memory now
  EXPECT_EQ(block.TotalCommitted(), 4 * page);

  EXPECT_EQ(block.Dealloc(page, &got), end - 3 * page);
  EXPECT_EQ(got, page);
  block.ResetGuardPage();
  std::string const style = GTEST_FLAG_GET(death_test_style);
  GTEST_FLAG_SET(death_test_style, "threadsafe");  // other tests here leave threads behind
  EXPECT_DEATH(*static_cast<char volatile *>(end - 3 * page) = 3, "") << "the new top is a guard page again";
  GTEST_FLAG_SET(death_test_style, style);
}

TEST(ZnMemBlockTest, AssignmentSharesTheReservation) {
  unsigned int const page = static_cast<unsigned int>(ZnMemBlock::GetPageSize());
  auto *owner = new ZnMemBlock(4 * page, ZnMemBlockGrowUp, 0, nullptr, nullptr, nullptr);
  ZnMemBlock alias(0, ZnMemBlockGrowUp, 0, nullptr, nullptr, nullptr);
  EXPECT_EQ(alias.GetAddress(), nullptr);
  EXPECT_EQ(alias.Alloc(page, nullptr), nullptr) << "nothing reserved, nothing to commit";
  alias = *owner;
  EXPECT_EQ(alias.GetAddress(), owner->GetAddress());
  EXPECT_NE(alias.Alloc(page, nullptr), nullptr);
  // The caller decides which copy releases the range: here the alias.
  ::operator delete(owner);
}

}  // namespace

// Parses on several threads at once keep to their own items.
#include <znutil/configuration/ZnCfgFileParser.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/configuration/ZnCfgIntegerData.h>
#include <znutil/configuration/ZnCfgSectionList.h>

#include "../system/ScratchDirectory.h"
#include "CfgTestSupport.h"

namespace {

using namespace znutil_test;

TEST(ZnCfgParserThreadsTest, ParsesOnSeveralThreadsAtOnce) {
  ScratchDirectory folder;
  std::string const good = Backslashed(
      WriteFile(folder / "good.cfg", "section \"s\" \"k\" = (integer) 1 \"k\" = (integer) 2 \"f\" = (float) x01\n"));
  std::string const bad = Backslashed(WriteFile(folder / "bad.cfg", "section \"s\" \"k\" = (binary) x01,x02 \"j\" = )"));
  constexpr int kThreads = 4, kRounds = 50;
  std::vector<int> failures(kThreads + 1, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 0; round < kRounds; ++round) {
        std::unique_ptr<ZnCfgSectionList> sections(ZnCfgFileParser(good.c_str()).Parse());
        int value = 0;
        if (!sections || !sections->FindSection("s")->Entries()->FindEntry("k", "all")->Data()->GetInteger(&value) || value != 1)
          ++failures[t];
        if (ZnCfgFileParser(bad.c_str()).Parse() != nullptr) ++failures[t];
      }
    });
  }
  // Items made with tracking on by a thread that does not parse are its own.
  threads.emplace_back([&] {
    for (int round = 0; round < kThreads * kRounds; ++round) failures[kThreads] += ZnCfgIntegerData(round).Release();
  });
  for (std::thread &thread : threads) thread.join();
  EXPECT_EQ(failures, std::vector<int>(kThreads + 1, 0));
  // Each round: a duplicate and a short float in one file, a syntax error in the other.
  EXPECT_EQ(ZnCfgFileParserTestAccess::TakeMessages().size(), 3u * kThreads * kRounds);
}

}  // namespace

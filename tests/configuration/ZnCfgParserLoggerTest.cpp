// The parser's messages and the logger: what is found before the logger is
// up waits, and comes out first and in order once it is.
#include <znutil/configuration/ZnCfgFileParser.h>

#include <string>

#include <gtest/gtest.h>

#include <znutil/configuration/ZnConfiguration.h>
#include <znutil/configuration/internal/ZnCfgManager.h>
#include <znutil/logging/ZnLogger.h>

#include "../logging/LoggerFixture.h"

namespace {

using ZnCfgParserLoggerTest = znutil_test::LoggerTest;

// A parse of a missing file, whose one message names it.
void ParseMissing(std::string const &name) { EXPECT_EQ(ZnCfgFileParser(name.c_str()).Parse(), nullptr); }

TEST_F(ZnCfgParserLoggerTest, QueuedMessagesComeOutFirstAndInOrder) {
  ASSERT_FALSE(ZnLogger::IsInitialized());
  ParseMissing("first.cfg");
  ParseMissing("second.cfg");
  ZnCfgFileParser::PurgeErrorMessages();  // no logger yet: they keep waiting
  ASSERT_TRUE(ZnLogger::Initialize());
  ASSERT_TRUE(znutil_test::WaitFor([] { return ZnLogger::IsInitialized(); }));
  ParseMissing("third.cfg");
  ZnCfgFileParser::PurgeErrorMessages();
  ParseMissing("fourth.cfg");
  ASSERT_TRUE(WaitForInFile("fourth.cfg"));
  ZnLogger::Shutdown();

  std::string const log = LogText();
  std::size_t last = 0;
  for (char const *name : {"first.cfg", "second.cfg", "third.cfg", "fourth.cfg"}) {
    std::string const text = std::string("The file name is ") + name;
    EXPECT_EQ(znutil_test::Count(log, text), 1) << name;
    EXPECT_GT(log.find(text), last) << name;
    last = log.find(text);
  }
  EXPECT_EQ(znutil_test::Count(log, "CfgFile"), 4);
  EXPECT_EQ(znutil_test::Count(log, "Reader"), 4);
}

// With no parse after the logger came up, the manager's turns deliver what
// its start queued.
TEST_F(ZnCfgParserLoggerTest, TheManagersTurnsDeliverQueuedMessages) {
  ASSERT_FALSE(ZnLogger::IsInitialized());
  setenv("ZNUTIL_SYSTEM_DIR", scratch_.Path().c_str(), 1);
  std::string const profile = znutil_test::WriteFile(scratch_ / "broken.cfg", "section \"s\" \"k\" =\n");
  InitializeConfiguration(znutil_test::LibraryPath(profile));
  ASSERT_TRUE(ZnLogger::Initialize());
  EXPECT_TRUE(WaitForInFile("Configuration File Syntax error."));
  ShutdownConfiguration();
}

}  // namespace

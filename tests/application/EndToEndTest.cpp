// The whole library as an application uses it: start with a profile, the
// global file in its own folder and a log folder; log from several threads;
// settings of every type; stop, start again, and check what reached the disk.
#include <string>

#include <znutil/logging/ZnLogger.h>
#include <znutil/values/ZnBinary.h>

#include "LibraryFixture.h"

namespace znutil_test {
namespace {

constexpr int kMessages = 50;

void WriteEveryType(UtilityApp const &app) {
  app.WriteProfileBool("All", "Bool", true);
  app.WriteProfileInt("All", "Int", -42);
  app.WriteProfileStringA("All", "Text", "Main \"view\"");
  app.WriteProfileFloat("All", "Float", 1.0f);
  unsigned char const bytes[] = {1, 2, 0xff};
  ZnBinary pattern;
  pattern.Store(bytes, 3);
  app.WriteProfileBinary("All", "Binary", pattern);
  app.WriteGlobalInt("Shared", "Count", 3);
}

void ExpectEveryType(UtilityApp const &app) {
  EXPECT_TRUE(app.GetProfileBool("All", "Bool", false));
  EXPECT_EQ(app.GetProfileIntA("All", "Int", 0), -42);
  EXPECT_EQ(Text(app.GetProfileStringA("All", "Text", "")), "Main \"view\"");
  EXPECT_EQ(app.GetProfileFloat("All", "Float", 0), 1.0f);
  ZnBinary pattern;
  EXPECT_TRUE(app.GetProfileBinary("All", "Binary", &pattern));
  EXPECT_EQ(pattern.Size(), 3u);
  EXPECT_EQ(app.GetGlobalInt("Shared", "Count", 0), 3);
}

TEST_F(LibraryTest, TheWholeLibraryEndToEnd) {
  Start(false);
  Concurrently(4, [] {
    for (int m = 0; m < kMessages; ++m) ZnLogger::Log(ZnLogger::kInformation, "EndToEnd", "Threads", ZnString("message ") << m);
  });
  WriteEveryType(app_);
  ExpectEveryType(app_);
  app_.Flush();  // on the disk at once, not at the manager's next turn
  std::string const profile = ReadFile(Profile());
  EXPECT_NE(profile.find("section \"All\"\r\n\"Binary\" (all) =(binary) x01,x02,xff\r\n"
                         "\"Bool\" (all) =(integer) 1\r\n\"Float\" (all) =(float) x00,x00,x80,x3f\r\n"),
            std::string::npos)
      << profile;
  EXPECT_NE(ReadFile(Global()).find("\"Count\" (all) =(integer) 3\r\n"), std::string::npos);
  ShutdownUtilityLibrary();

  std::string const log = ReadFile(LogFile());
  EXPECT_EQ(Count(log, "  Information  EndToEnd  Threads\n"), 4 * kMessages);
  EXPECT_EQ(Count(log, "\tmessage 49\n"), 4);
  std::string const stopped = ReadFile(Profile());
  Start(false);
  ExpectEveryType(app_);
  ShutdownUtilityLibrary();
  // The second start kept the first run's files as generation 1.
  EXPECT_EQ(ReadFile(Profile() + ".1"), stopped);
  EXPECT_TRUE(std::filesystem::exists(Global() + ".1"));
}

}  // namespace
}  // namespace znutil_test

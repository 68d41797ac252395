// The library's start and stop, the settings, GetVariable and the logger's
// own settings, through the interface an application uses.
#include <znutil/platform/UserInterface.h>
#include <znutil/values/ZnBinary.h>

#include "LibraryFixture.h"

namespace znutil_test {
namespace {

// Every read gives its default and every write fails.
void ExpectNoSettings(UtilityApp const &app) {
  ZnBinary binary(7);
  EXPECT_EQ(app.GetProfileIntA("View", "Width", 640), 640);
  EXPECT_TRUE(app.GetProfileBool("View", "Shown", true));
  EXPECT_EQ(Text(app.GetProfileStringA("View", "Name", "none")), "none");
  EXPECT_EQ(app.GetGlobalFloat("View", "Scale", 1.5f), 1.5f);
  EXPECT_FALSE(app.GetGlobalBinary("View", "Pattern", &binary));
  EXPECT_TRUE(binary == ZnBinary(7));
  EXPECT_FALSE(app.WriteProfileInt("View", "Width", 1));
  EXPECT_FALSE(app.WriteGlobalString("View", "Name", "x"));
}

// Settings exist only between a start and a stop.
TEST_F(LibraryTest, StartStopStartReadsTheFilesAgainAndASecondStartChangesNothing) {
  ExpectNoSettings(app_);
  EXPECT_TRUE(ShutdownUtilityLibrary());  // a stop without a start does nothing
  WriteFile(Profile(), "section \"View\"\n\"Width\" = (integer) 800\n");
  Start();
  // A second start with another profile is ignored.
  EXPECT_TRUE(InitializeUtilityLibrary("", (scratch_ / "other.cfg").c_str(), true));
  EXPECT_EQ(app_.GetProfileIntA("View", "Width", 0), 800);
  EXPECT_TRUE(app_.WriteProfileStringA("View", "Name", "main"));
  ShutdownUtilityLibrary();
  // The stop wrote the change, and both files exist.
  EXPECT_NE(ReadFile(Profile()).find("\"Name\" (all) =(text) \"main\"\r\n"), std::string::npos);
  EXPECT_TRUE(std::filesystem::exists(Global()));
  EXPECT_FALSE(std::filesystem::exists(scratch_ / "other.cfg"));

  WriteFile(Profile(), "section \"View\"\n\"Width\" = (integer) 900\n");
  for (int run = 0; run < 3; ++run) {
    Start();
    EXPECT_EQ(app_.GetProfileIntA("View", "Width", 0), 900);
    EXPECT_EQ(Text(app_.GetProfileStringA("View", "Name", "gone")), "gone");  // the file replaced the tree
    ShutdownUtilityLibrary();
  }
  EXPECT_TRUE(std::filesystem::exists(Profile() + ".3"));  // each start kept the earlier generation
  ExpectNoSettings(app_);
}

TEST_F(LibraryTest, SettingsConvertBetweenTypesAndKeepTheFilesApart) {
  Start();
  app_.WriteProfileFloat("Convert", "Float", 2.9f);
  EXPECT_EQ(app_.GetProfileIntA("Convert", "Float", 0), 2);
  app_.WriteProfileStringA("Convert", "Text", "12");
  EXPECT_EQ(app_.GetProfileIntA("Convert", "Text", 0), 12);
  app_.WriteProfileStringA("Convert", "True", "true");
  EXPECT_FALSE(app_.GetProfileBool("Convert", "True", true));  // atoi("true") is 0
  app_.WriteProfileBinary("Convert", "Binary", ZnBinary(5));
  EXPECT_EQ(app_.GetProfileIntA("Convert", "Binary", -1), -1);  // binary converts to nothing
  ZnBinary binary;
  EXPECT_TRUE(app_.GetProfileBinary("Convert", "Binary", &binary));
  EXPECT_TRUE(binary == ZnBinary(5));
  app_.WriteProfileBool("Convert", "Bool", true);
  EXPECT_EQ(Text(app_.GetProfileStringA("Convert", "Bool", "")), "1");
  // Nothing falls back from one file to the other.
  app_.WriteGlobalInt("Convert", "Global", 7);
  EXPECT_EQ(app_.GetProfileIntA("Convert", "Global", 0), 0);
  EXPECT_EQ(app_.GetGlobalInt("Convert", "Global", 0), 7);
  EXPECT_FALSE(app_.GetGlobalBool("Convert", "Bool", false));
}

TEST_F(LibraryTest, GetVariableTriesTheEnvironmentThenThePathsSection) {
  Start();
  app_.WriteProfileStringA("PATHS", "ZNTEST_DATA", "from profile");
  ZnString value("unchanged");
  EXPECT_FALSE(value.GetVariable("ZNTEST_NOWHERE"));
  EXPECT_EQ(Text(value), "unchanged");
  setenv("ZNTEST_DATA", "from environment", 1);
  EXPECT_TRUE(value.GetVariable("ZNTEST_DATA"));
  EXPECT_EQ(Text(value), "from environment");
  setenv("ZNTEST_DATA", "", 1);  // set but empty counts as unset
  EXPECT_TRUE(value.GetVariable("ZNTEST_DATA"));
  EXPECT_EQ(Text(value), "from profile");
  unsetenv("ZNTEST_DATA");
}

unsigned long Controls() { return znutil::platform::CountUserInterfaceCalls().initCommonControls; }

// Only a start with a user interface brings up the logger; starts and stops
// from several threads have one winner each.
TEST_F(LibraryTest, TheLoggerComesWithTheUserInterfaceAndEachStartHasOneWinner) {
  unsigned long const controls = Controls();
  Start(true);
  EXPECT_FALSE(ZnLogger::IsInitialized());
  EXPECT_EQ(Controls(), controls);
  ShutdownUtilityLibrary();

  Start(false);
  EXPECT_TRUE(ZnLogger::IsInitialized());
  EXPECT_TRUE(WaitFor([] { return Text(Frame().fsTitle) == "Test Log"; }));
  ZnLogger::Log(ZnLogger::kWarning, "Lifetime", "Test", "into LOGDIR");
  ShutdownUtilityLibrary();
  EXPECT_EQ(Count(ReadFile(LogFile()), "\tinto LOGDIR\n"), 1);  // nothing lost at the stop
  for (unsigned long round = 1; round <= 3; ++round) {
    Concurrently(4, [this] { InitializeUtilityLibrary("", Profile().c_str(), false); });
    EXPECT_EQ(Controls(), controls + 1 + round);
    EXPECT_TRUE(WaitFor([] { return Text(Frame().fsTitle) == "Test Log"; }));  // no suggestion: the title stays
    EXPECT_TRUE(app_.WriteProfileInt("View", "Round", static_cast<int>(round)));
    Concurrently(4, [] { ShutdownUtilityLibrary(); });
    EXPECT_FALSE(ZnLogger::IsInitialized());
    EXPECT_FALSE(app_.WriteProfileInt("View", "Round", 0));
  }
  EXPECT_NE(ReadFile(Profile()).find("\"Round\" (all) =(integer) 3\r\n"), std::string::npos);
}

// The logger's flags keep their high bits from run to run, and its folder
// may come from the paths section.
TEST_F(LibraryTest, TheLoggerKeepsTheHighBitsOfItsFlagsAndMayTakeItsFolderFromThePathsSection) {
  unsetenv("LOGDIR");
  std::string const saved =
      WriteFile(Profile(), "section \"Logger Options\"\n\"Flags\" = (integer) 65541\n"  // 0x10005
                           "section \"PATHS\"\n\"LOGDIR\" = (text) \"" + (scratch_ / "logs") + "\"\n");
  Start(true);  // no logger: the saved flags stay as they are
  ShutdownUtilityLibrary();
  EXPECT_EQ(ReadFile(Profile()), ReadFile(saved + ".1"));  // not even rewritten
  Start(false);
  EXPECT_EQ(ZnLogger::GetFlags(), ZnLogger::kQuiet);
  ZnLogger::Log(ZnLogger::kWarning, "Lifetime", "Test", "into the profile's LOGDIR");
  ZnLogger::SetFlags(ZnLogger::kLoud);
  ZnLogger::ClearFlags(ZnLogger::kQuiet);
  ShutdownUtilityLibrary();
  EXPECT_NE(ReadFile(Profile()).find("\"Flags\" (all) =(integer) 131072\r\n"), std::string::npos);
  EXPECT_EQ(Count(ReadFile(LogFile()), "\tinto the profile's LOGDIR\n"), 1);
  ZnLogger::ClearFlags(ZnLogger::kLoud);
}

// The logger thread opens its file while the start may be writing the
// application's name and folder (a race that ThreadSanitizer sees).
TEST_F(LibraryTest, ALoggerStartedBeforeTheLibraryReadsItsIdentitySafely) {
  for (int run = 0; run < 3; ++run) {
    ZnLogger::Log(ZnLogger::kWarning, "Lifetime", "Test", "before the start");
    Start(false);
    ShutdownUtilityLibrary();
  }
  std::string const logs = ReadFile(LogFile()) + ReadFile(scratch_ / "logs/LOGGER.log");
  EXPECT_EQ(Count(logs, "\tbefore the start\n"), 3);
}

// A disabled logger cannot be brought back, so it is tried in a child.
TEST_F(LibraryTest, ADisabledLoggerSavesNoFlags) {
  EXPECT_EXIT(
      {
        Start(false);
        ZnLogger::SetFlags(ZnLogger::kLoud);
        ZnLogger::DisableLogger();
        app_.WriteProfileInt("View", "Width", 1024);
        ShutdownUtilityLibrary();
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
  std::string const profile = ReadFile(Profile());
  EXPECT_NE(profile.find("\"Width\""), std::string::npos);
  EXPECT_EQ(profile.find("\"Flags\""), std::string::npos);
}

}  // namespace
}  // namespace znutil_test

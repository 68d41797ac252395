// The configuration manager's thread and the ZnConfiguration guard: files
// kept in step with the disk, backups at start, a stop that races settings
// calls.
#include <znutil/configuration/ZnConfiguration.h>
#include <znutil/configuration/internal/ZnCfgManager.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include "../system/Eventually.h"
#include "../system/ScratchDirectory.h"

namespace {

namespace fs = std::filesystem;
using namespace znutil_test;

constexpr int kProfile = 0, kGlobal = 1;

// A scratch folder holding the profile and, in "system", the global file.
class ZnCfgManagerTest : public testing::Test {
 protected:
  ZnCfgManagerTest() : profile_(scratch_ / "App.cfg"), global_(scratch_ / "system/Lumiframe.cfg") {
    setenv("ZNUTIL_SYSTEM_DIR", (scratch_ / "system").c_str(), 1);
    fs::create_directory(scratch_ / "system");
  }
  ~ZnCfgManagerTest() override { ShutdownConfiguration(); }

  void Start() { InitializeConfiguration(LibraryPath(profile_)); }

  int ReadInteger(int file, char const *section, char const *entry) {
    int value = -1;
    return configuration_.GetIntegerEntry(file, section, entry, &value) == 0 ? value : -1;
  }

  ScratchDirectory scratch_;
  std::string profile_, global_;
  ZnConfiguration configuration_;
};

TEST_F(ZnCfgManagerTest, NoManagerGivesThreeEverywhere) {
  ZnString text;
  int integer;
  float number;
  ZnBinary bytes;
  for (unsigned long status :
       {configuration_.GetTextEntry(kProfile, "A", "B", &text), configuration_.GetIntegerEntry(kProfile, "A", "B", &integer),
        configuration_.GetFloatEntry(kGlobal, "A", "B", &number), configuration_.GetBinaryEntry(kGlobal, "A", "B", &bytes),
        configuration_.SetTextEntry(kProfile, "A", "B", "x"), configuration_.SetIntegerEntry(kProfile, "A", "B", 1),
        configuration_.SetFloatEntry(kGlobal, "A", "B", 1.0f), configuration_.SetBinaryEntry(kGlobal, "A", "B", bytes)})
    EXPECT_EQ(3u, status);
  FlushConfiguration();
  EXPECT_TRUE(ShutdownConfiguration());
  EXPECT_FALSE(fs::exists(profile_));
}

TEST_F(ZnCfgManagerTest, MissingFilesAreWrittenAndWritesReachTheirOwnFileWithinATurn) {
  Start();
  EXPECT_EQ(3u, configuration_.SetIntegerEntry(2, "A", "B", 1));  // no third file
  EXPECT_EQ(-1, ReadInteger(kProfile, "A", "B"));
  EXPECT_TRUE(Eventually([&] { return fs::exists(profile_) && fs::exists(global_); }));
  EXPECT_EQ("", ReadFile(profile_) + ReadFile(global_));
  EXPECT_EQ(0u, configuration_.SetIntegerEntry(kProfile, "View", "Width", 800));
  EXPECT_EQ(0u, configuration_.SetTextEntry(kGlobal, "Paths", "Home", "here"));
  EXPECT_EQ(-1, ReadInteger(kGlobal, "View", "Width"));  // no fall-back between files
  EXPECT_TRUE(Eventually([&] { return ReadFile(profile_) == "section \"View\"\r\n\"Width\" (all) =(integer) 800\r\n\r\n"; }));
  EXPECT_TRUE(Eventually([&] { return ReadFile(global_) == "section \"Paths\"\r\n\"Home\" (all) =(text) \"here\"\r\n\r\n"; }));
}

TEST_F(ZnCfgManagerTest, OutsideEditReplacesTheWholeContentWithinATurn) {
  WriteFile(profile_, "section \"View\" \"Width\" = (integer) 640 \"Height\" = (integer) 480\n");
  Start();
  EXPECT_EQ(640, ReadInteger(kProfile, "View", "Width"));
  // Stamped later than the file read at start, however coarse the clock
  // of the file system.
  WriteFile(scratch_ / "edit", "section \"View\" \"Width\" = (integer) 1280\n");
  fs::last_write_time(scratch_ / "edit", fs::last_write_time(profile_) + std::chrono::seconds(1));
  fs::rename(scratch_ / "edit", profile_);
  EXPECT_TRUE(Eventually([&] { return ReadInteger(kProfile, "View", "Width") == 1280; }));
  EXPECT_EQ(-1, ReadInteger(kProfile, "View", "Height"));
}

// A second start changes nothing, a stop flushes, each start shifts the backups.
TEST_F(ZnCfgManagerTest, StartsStopsAndBackups) {
  for (int start = 1; start <= 3; ++start) {
    WriteFile(profile_, "section \"Run\" \"Number\" = (integer) " + std::to_string(start) + "\n");
    Start();
    InitializeConfiguration(LibraryPath(scratch_ / "Other.cfg"));
    configuration_.SetIntegerEntry(kProfile, "A", "B", 5);
    ShutdownConfiguration();
  }
  EXPECT_EQ("section \"A\"\r\n\"B\" (all) =(integer) 5\r\n\r\nsection \"Run\"\r\n\"Number\" (all) =(integer) 3\r\n\r\n",
            ReadFile(profile_));
  EXPECT_FALSE(fs::exists(scratch_ / "Other.cfg"));
  EXPECT_EQ(-1, ReadInteger(kProfile, "A", "B"));
  EXPECT_NE(std::string::npos, ReadFile(profile_ + ".1").find("3"));
  EXPECT_NE(std::string::npos, ReadFile(profile_ + ".3").find("1"));
  EXPECT_FALSE(fs::exists(profile_ + ".4"));
  EXPECT_TRUE(fs::exists(global_ + ".1"));  // written empty by the first run
}

TEST_F(ZnCfgManagerTest, DefaultProfileWithoutIdentityStaysInTheCurrentFolder) {
  fs::path const before = fs::current_path();
  fs::current_path(scratch_.Path());
  InitializeConfiguration("");  // no identity in this program: the name is empty
  bool const written = Eventually([&] { return fs::exists(scratch_ / ".cfg"); });
  ShutdownConfiguration();
  fs::current_path(before);
  EXPECT_TRUE(written);
}

TEST_F(ZnCfgManagerTest, MachineKeyIsTheLowerCaseComputerName) {
  char host[256] = {};
  gethostname(host, sizeof host - 1);
  std::string machine = std::string(host).substr(0, std::string(host).find('.'));
  for (char &c : machine) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  // Only a name that the file form reads as a machine can be tried.
  if (machine.empty() || std::isdigit(static_cast<unsigned char>(machine[0])) ||
      machine.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_") != std::string::npos)
    GTEST_SKIP() << "host name " << machine << " is not a machine word";
  WriteFile(profile_, "section \"A\" \"B\" = (integer) 1 \"B\" (" + machine + ") = (integer) 2\n");
  Start();
  EXPECT_EQ(2, ReadInteger(kProfile, "A", "B"));
}

TEST_F(ZnCfgManagerTest, UnwritableFolderLeavesSettingsWorking) {
  WriteFile(scratch_ / "plain", "");
  profile_ = scratch_ / "plain/App.cfg";  // a file is no folder, even for root
  Start();
  EXPECT_EQ(0u, configuration_.SetIntegerEntry(kProfile, "A", "B", 7));
  EXPECT_TRUE(Eventually([&] { return fs::exists(global_); }));  // turns go on
  FlushConfiguration();
  EXPECT_EQ(7, ReadInteger(kProfile, "A", "B"));
}

TEST_F(ZnCfgManagerTest, CallsRacingStartAndStopAreSafe) {
  std::atomic<bool> done{false};
  std::atomic<int> landed{0};
  std::vector<std::thread> callers;
  for (int thread = 0; thread < 4; ++thread) {
    callers.emplace_back([&, thread] {
      for (int i = 0; !done.load(); ++i) {
        ZnConfiguration guard;
        int value;
        if (guard.SetIntegerEntry(kProfile, "Race", "Value", i) == 0) landed.fetch_add(1);
        guard.GetIntegerEntry(thread % 2, "Race", "Value", &value);
        if (i % 64 == 0) FlushConfiguration();
      }
    });
  }
  // Each stop comes while the callers are at work on the running manager.
  for (int round = 0; round < 20; ++round) {
    Start();
    int const before = landed.load();
    EXPECT_TRUE(Eventually([&] { return landed.load() > before; }));
    ShutdownConfiguration();
  }
  done.store(true);
  for (std::thread &caller : callers) caller.join();
  EXPECT_NE(std::string::npos, ReadFile(profile_).find("\"Value\" (all) =(integer)"));
}

}  // namespace

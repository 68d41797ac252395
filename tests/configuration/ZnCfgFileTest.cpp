// ZnCfgFile: status codes, the machine fall-back, conversions, the time
// stamps of Flush and Refresh, atomic writes and backups.
#include <znutil/configuration/ZnCfgFile.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <future>
#include <initializer_list>
#include <thread>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <gtest/gtest.h>

#include "../system/ScratchDirectory.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using namespace znutil_test;

constexpr char kSample[] =
    "section \"Display\"\n"
    "\"Pattern\" = (binary) x01, x02\n"
    "\"Scale\" = (float) x66,x66,x3a,x40\n"  // 2.9
    "\"Title\" = \"12abc\"\n"
    "\"Width\" = (integer) 1024\n"
    "section \"Network\"\n"
    "\"Port\" = (integer) 80\n"
    "\"Port\" (alpha7) = (integer) 8080\n"
    "\"ab\" (c) = (integer) 3\n";

// A file object loaded from `text` written at `path`.
class LoadedFile : public ZnCfgFile {
 public:
  LoadedFile(std::string const &path, std::string const &text) : ZnCfgFile(LibraryPath(WriteFile(path, text))) {
    EXPECT_TRUE(Refresh());
  }
};

struct Read {
  char const *section, *entry, *machine, *expected;  // "status:value"
};

// Integer reads of `file`, each as its status and the value read (-1 when untouched).
void ExpectReads(ZnCfgFile &file, std::initializer_list<Read> reads) {
  for (Read const &read : reads) {
    int value = -1;
    unsigned long const status = file.GetIntegerEntry(read.section, read.entry, read.machine, &value);
    EXPECT_EQ(std::to_string(status) + ":" + std::to_string(value), read.expected)
        << read.section << "/" << read.entry << "/" << read.machine;
  }
}

TEST(ZnCfgFileTest, StatusCodesAndConversionsOfGet) {
  ScratchDirectory scratch;
  ZnCfgFile empty(LibraryPath(scratch / "none.cfg"));
  ExpectReads(empty, {{"Display", "Width", "all", "3:-1"}});
  LoadedFile file(scratch / "app.cfg", kSample);
  ExpectReads(file, {{"Nothing", "Width", "all", "1:-1"}, {"display", "Depth", "all", "2:-1"},
                     {"DISPLAY", "width", "beta", "0:1024"}, {"Display", "Pattern", "all", "6:-1"},
                     {"Display", "Scale", "all", "0:2"}, {"Display", "Title", "all", "0:12"}});
  ZnString text;
  float number = 0;
  EXPECT_EQ(5u, file.GetTextEntry("Display", "Pattern", "all", &text));
  EXPECT_EQ(7u, file.GetFloatEntry("Display", "Pattern", "all", &number));
  // A null result gives 4 and leaves the lock: another thread gets in.
  EXPECT_EQ(4u, file.GetIntegerEntry("Display", "Width", "all", nullptr));
  auto other = std::async(std::launch::async, [&] { return file.SetIntegerEntry("Display", "Width", "all", 1); });
  ASSERT_EQ(std::future_status::ready, other.wait_for(10s));
  EXPECT_EQ(0u, other.get());
  // What converts does.
  EXPECT_EQ(0u, file.GetTextEntry("Network", "Port", "all", &text));
  EXPECT_EQ("80", Text(text));
  ZnBinary bytes;
  EXPECT_EQ(0u, file.GetBinaryEntry("Display", "Pattern", "all", &bytes));
  EXPECT_EQ("x01,x02", Text(bytes.Dump(false)));
  EXPECT_EQ(0u, file.GetFloatEntry("Display", "Width", "all", &number));
  EXPECT_EQ(1.0f, number);  // the other thread set 1
}

TEST(ZnCfgFileTest, MachineFallBackAndItsEffectOnSet) {
  ScratchDirectory scratch;
  LoadedFile file(scratch / "app.cfg", kSample);
  // An entry is its name and machine joined: ab on c is a on bc.
  ExpectReads(file, {{"Network", "Port", "alpha7", "0:8080"}, {"Network", "Port", "beta", "0:80"},
                     {"NETWORK", "A", "Bc", "0:3"}, {"Network", "a", "b", "2:-1"}});
  // A machine with no entry of its own changes the one for all machines.
  EXPECT_EQ(0u, file.SetIntegerEntry("Network", "Port", "beta", 81));
  EXPECT_EQ(0u, file.SetIntegerEntry("Network", "Port", "alpha7", 8081));
  // New entries are always for all machines, whatever machine was given.
  EXPECT_EQ(0u, file.SetTextEntry("Network", "Host", "beta", "server"));
  ExpectReads(file, {{"Network", "Port", "alpha7", "0:8081"}, {"Network", "Port", "gamma", "0:81"}});
  EXPECT_TRUE(file.Flush());
  EXPECT_EQ(ReadFile(scratch / "app.cfg"),
            "section \"Display\"\r\n\"Pattern\" (all) =(binary) x01,x02\r\n\"Scale\" (all) =(float) x66,x66,x3a,x40\r\n"
            "\"Title\" (all) =(text) \"12abc\"\r\n\"Width\" (all) =(integer) 1024\r\n\r\n"
            "section \"Network\"\r\n\"ab\" (c) =(integer) 3\r\n\"Host\" (all) =(text) \"server\"\r\n"
            "\"Port\" (all) =(integer) 81\r\n\"Port\" (alpha7) =(integer) 8081\r\n\r\n");
  // Each name under one machine alone: an entry of another machine is no entry here.
  LoadedFile single(scratch / "single.cfg",
                    "section \"Net\"\n\"Port\" (other) = (integer) 1\n\"ab\" (c) = (integer) 3\n");
  ExpectReads(single, {{"Net", "Port", "mine", "2:-1"}, {"Net", "Port", "OTHER", "0:1"}, {"Net", "a", "bc", "0:3"}});
}

TEST(ZnCfgFileTest, SetWithoutTreeMakesTreeAndCanChangeType) {
  ScratchDirectory scratch;
  ZnCfgFile file(LibraryPath(scratch / "app.cfg"));
  EXPECT_EQ(0u, file.SetFloatEntry("View", "Zoom", "alpha7", 1.0f));
  EXPECT_EQ(0u, file.SetBinaryEntry("VIEW", "zoom", "alpha7", ZnBinary(1.5f)));
  ExpectReads(file, {{"View", "Zoom", "beta", "6:-1"}});
  EXPECT_TRUE(file.Flush());
  EXPECT_EQ("section \"View\"\r\n\"Zoom\" (all) =(binary) x00,x00,xc0,x3f\r\n\r\n", ReadFile(scratch / "app.cfg"));
  file.Clear();
  ExpectReads(file, {{"View", "Zoom", "all", "3:-1"}});
  EXPECT_TRUE(file.Flush());
  EXPECT_EQ("", ReadFile(scratch / "app.cfg"));
}

TEST(ZnCfgFileTest, FlushWritesOnlyWhatIsNewerOrMissing) {
  ScratchDirectory scratch;
  std::string const path = scratch / "app.cfg";
  ZnCfgFile file(LibraryPath(path));
  EXPECT_TRUE(file.Flush());  // missing: written, even empty
  EXPECT_TRUE(fs::exists(path));
  EXPECT_FALSE(file.Flush());    // no change since
  EXPECT_FALSE(file.Refresh());  // its own write is not read back
  file.SetIntegerEntry("A", "B", "all", 1);
  // A file stamped ahead of this computer's clock keeps the change back.
  fs::last_write_time(path, fs::last_write_time(path) + 1h);
  EXPECT_FALSE(file.Flush());
  EXPECT_EQ("", ReadFile(path));
  fs::last_write_time(path, fs::last_write_time(path) - 2h);
  EXPECT_TRUE(file.Flush());
  EXPECT_EQ("section \"A\"\r\n\"B\" (all) =(integer) 1\r\n\r\n", ReadFile(path));
  // Nothing but the file is left in the folder.
  EXPECT_EQ(1, std::distance(fs::directory_iterator(scratch.Path()), {}));
}

TEST(ZnCfgFileTest, RefreshReadsOnlyAStrictlyNewerFileAndReplacesAll) {
  ScratchDirectory scratch;
  std::string const path = scratch / "app.cfg";
  LoadedFile file(path, kSample);
  EXPECT_FALSE(file.Refresh());
  EXPECT_FALSE(file.Flush());  // nothing changed since the read
  EXPECT_EQ(kSample, ReadFile(path));
  auto const seen = fs::last_write_time(path);
  WriteFile(path, "section \"Other\" \"Key\" = \"new\"\n");
  fs::last_write_time(path, seen);
  EXPECT_FALSE(file.Refresh());  // equal times: the file is taken as read
  fs::last_write_time(path, seen + 100ns);
  EXPECT_TRUE(file.Refresh());
  ExpectReads(file, {{"Display", "Width", "all", "1:-1"}});
  ZnString text;
  EXPECT_EQ(0u, file.GetTextEntry("Other", "Key", "all", &text));
  EXPECT_EQ("new", Text(text));
  // A broken file leaves no tree, and is not read again.
  WriteFile(path, "section \"Broken\" \"Key\" =\n");
  fs::last_write_time(path, seen + 1s);
  EXPECT_TRUE(file.Refresh());
  EXPECT_EQ(3u, file.GetTextEntry("Other", "Key", "all", &text));
  EXPECT_FALSE(file.Refresh());
}

TEST(ZnCfgFileTest, FlushKeepsModeAndWritesThroughLinks) {
  ScratchDirectory scratch;
  std::string const target = WriteFile(scratch / "real.cfg", "");
  fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink(target, scratch / "link.cfg");
  ZnCfgFile file(LibraryPath(scratch / "link.cfg"));
  file.SetIntegerEntry("A", "B", "all", 2);
  EXPECT_TRUE(file.Flush());
  EXPECT_TRUE(fs::is_symlink(scratch / "link.cfg"));
  EXPECT_EQ("section \"A\"\r\n\"B\" (all) =(integer) 2\r\n\r\n", ReadFile(target));
  EXPECT_EQ(fs::perms::owner_read | fs::perms::owner_write, fs::status(target).permissions());
  // A chain of relative links to a file not made yet, as long as the
  // kernel follows (40), makes the file and keeps every link.
  for (int hop = 40; hop >= 1; --hop)
    fs::create_symlink(hop == 40 ? "dangling.cfg" : "hop" + std::to_string(hop + 1) + ".cfg",
                       scratch / ("hop" + std::to_string(hop) + ".cfg"));
  ZnCfgFile fresh(LibraryPath(scratch / "hop1.cfg"));
  mode_t const umaskBefore = umask(022);  // a new file gets what the umask leaves
  EXPECT_TRUE(fresh.Flush());
  umask(umaskBefore);
  EXPECT_EQ(fs::perms(0644), fs::status(scratch / "dangling.cfg").permissions());
  EXPECT_TRUE(fs::is_symlink(scratch / "hop1.cfg") && fs::is_symlink(scratch / "hop40.cfg"));
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(scratch / "dangling.cfg")));
}

TEST(ZnCfgFileTest, UnwritableFileOrDeviceIsTriedAgainAndNothingBreaks) {
  ScratchDirectory scratch;
  WriteFile(scratch / "plain", "");
  ZnCfgFile file(LibraryPath(scratch / "plain/app.cfg"));  // a file is no folder
  EXPECT_TRUE(file.Flush());
  file.SetIntegerEntry("A", "B", "all", 3);
  EXPECT_TRUE(file.Flush());
  EXPECT_TRUE(file.Flush());
  ExpectReads(file, {{"A", "B", "all", "0:3"}});
  EXPECT_FALSE(file.Refresh());
  // Nor does a device in place of the file get replaced.
  std::string const device = scratch / "null.cfg";
  if (mknod(device.c_str(), S_IFCHR | 0600, makedev(1, 3)) != 0) GTEST_SKIP() << "no right to make a device";
  ZnCfgFile null(LibraryPath(device));
  null.SetIntegerEntry("A", "B", "all", 4);
  EXPECT_TRUE(null.Flush());
  EXPECT_TRUE(fs::is_character_file(device));
  EXPECT_FALSE(null.Refresh()) << "the device was not written, so it is no newer than what was read";
}

TEST(ZnCfgFileTest, AWriteCutShortLeavesTheOldFileAndNoTemporaryOne) {
  ScratchDirectory scratch;
  std::string const path = WriteFile(scratch / "app.cfg", "section \"Old\"\r\n");
  fs::last_write_time(path, fs::last_write_time(path) - 1h);
  ZnCfgFile file(LibraryPath(path));
  file.SetIntegerEntry("A", "B", "all", 5);
  rlimit before;
  ASSERT_EQ(0, getrlimit(RLIMIT_FSIZE, &before));
  rlimit tiny = before;
  tiny.rlim_cur = 4;  // files may grow to 4 bytes: the write fails part way
  void (*const handler)(int) = signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &tiny));
  file.Flush();
  setrlimit(RLIMIT_FSIZE, &before);
  signal(SIGXFSZ, handler);
  EXPECT_EQ("section \"Old\"\r\n", ReadFile(path));
  EXPECT_EQ(1, std::distance(fs::directory_iterator(scratch.Path()), {}));
}

TEST(ZnCfgFileTest, ReadersRaceClearSetFlushAndRefresh) {
  ScratchDirectory scratch;
  std::string const path = scratch / "app.cfg";
  LoadedFile file(path, kSample);
  std::atomic<bool> done{false};
  std::thread reader([&] {
    ZnString section("Display"), entry("Title"), machine("all"), text;
    while (!done.load()) file.GetTextEntry(section, entry, machine, &text);
  });
  for (int i = 0; i < 200; ++i) {
    file.SetTextEntry("Display", "Title", "all", ZnString(i));
    if (i % 3 == 0) file.Clear();
    file.Flush();
    if (i % 7 == 0) WriteFile(path, kSample);
    file.Refresh();
  }
  done.store(true);
  reader.join();
}

TEST(ZnCfgFileTest, BackupShiftsFiveGenerations) {
  ScratchDirectory scratch;
  std::string const path = scratch / "App.cfg";
  ZnCfgFile file(LibraryPath(path));
  WriteFile(path, "0");
  EXPECT_TRUE(file.Backup());  // no earlier generations: only .1
  EXPECT_EQ("0", ReadFile(path + ".1"));
  EXPECT_FALSE(fs::exists(path + ".2"));
  for (char generation = '1'; generation <= '6'; ++generation) {
    WriteFile(path, std::string(1, generation));
    file.Backup();
  }
  EXPECT_EQ("6", ReadFile(path + ".1"));
  EXPECT_EQ("2", ReadFile(path + ".5"));
  EXPECT_FALSE(fs::exists(path + ".6"));
}

}  // namespace

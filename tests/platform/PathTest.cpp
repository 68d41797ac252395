#include <znutil/platform/Path.h>

#include <gtest/gtest.h>

namespace {

TEST(PathTest, BackslashesBecomeSlashesForTheSystem) {
  struct Case {
    char const *library, *system;
  } const cases[] = {
      {"", ""},
      {"plain.txt", "plain.txt"},
      {"\\var\\log\\app.log", "/var/log/app.log"},
      {"mixed/parts\\file", "mixed/parts/file"},
      {"C:\\data\\x.cfg", "C:/data/x.cfg"},  // a drive passes through
      {"\\\\double\\\\", "//double//"},
      {"/already/slashed", "/already/slashed"},
  };
  for (Case const &c : cases) EXPECT_EQ(znutil::platform::ToSystemPath(c.library), c.system) << c.library;
}

}  // namespace

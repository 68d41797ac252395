// Registry variables over the library's registry store, and the store's
// calls themselves, in a scratch store.
#include <znutil/application/ZnRegVariable.h>

#include <cstring>
#include <filesystem>
#include <string>

#include <znutil/platform/Registry.h>

#include <gtest/gtest.h>

#include "../system/ScratchDirectory.h"
#include "../system/TestClocks.h"

namespace {

using namespace znutil::platform;
using znutil_test::ScopedVariable;
using znutil_test::Text;

HKEY const kRoots[] = {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS};

class ZnRegVariableTest : public ::testing::Test {
 protected:
  // Opens a key of the current user, failing the test if it cannot.
  HKEY Open(char const *path) {
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, path, 0, KEY_READ, &key), ERROR_SUCCESS);
    return key;
  }
  znutil_test::ScratchDirectory scratch;
  ScopedVariable store{"ZNUTIL_REGISTRY_DIR", scratch.Path()};
};

TEST_F(ZnRegVariableTest, SetCreatesTheKeyWithItsParentsAndTheTextReadsBack) {
  ZnRegVariable colour(HKEY_CURRENT_USER, "Software\\Acme\\Paint", "Colour");
  EXPECT_EQ(Text(colour.Get()), "");
  colour.Set("red");
  EXPECT_TRUE(std::filesystem::is_directory(scratch / "HKEY_CURRENT_USER/software/acme/paint"));
  // A copy writes to the same key without reading.
  ZnRegVariable copy(colour);
  ZnRegVariable(HKEY_CURRENT_USER, "Software\\Acme\\Paint", "Colour").Set("blue");
  EXPECT_EQ(Text(copy.Get()), "red");
  copy.Set("red");
  colour.SetName("Colour");
  EXPECT_EQ(Text(colour.Get()), "red");

  // Names compare without regard to case, and `/` separates keys too.
  HKEY key = Open("software/ACME/paint");
  DWORD type = 0, size = 0;
  EXPECT_EQ(RegQueryValueExA(key, "COLOUR", nullptr, &type, nullptr, &size), ERROR_SUCCESS);
  EXPECT_EQ(type, REG_SZ);
  EXPECT_EQ(size, 4u);
  char small[2], text[8] = {};
  EXPECT_EQ(RegQueryValueExA(key, "colour", nullptr, &type, reinterpret_cast<BYTE *>(small), &(size = 2)),
            ERROR_MORE_DATA);
  EXPECT_EQ(size, 4u);
  EXPECT_EQ(RegQueryValueExA(key, "colour", nullptr, &type, reinterpret_cast<BYTE *>(text), &size), ERROR_SUCCESS);
  EXPECT_EQ(std::memcmp(text, "red", 4), 0);
  EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
  EXPECT_EQ(RegCloseKey(key), ERROR_INVALID_HANDLE);

  // A value straight under a root makes the root's folder first.
  for (HKEY root : kRoots) {
    EXPECT_EQ(RegSetValueExA(root, "Direct", 0, REG_SZ, reinterpret_cast<BYTE const *>("on"), 3), ERROR_SUCCESS)
        << root;
    EXPECT_EQ(RegQueryValueExA(root, "direct", nullptr, &type, nullptr, &size), ERROR_SUCCESS) << root;
  }
}

TEST_F(ZnRegVariableTest, WhatIsNotTextOrIsMissingReadsAsEmpty) {
  HKEY key = nullptr;
  DWORD const number = 0x01020304;
  DWORD type = 0, read = 0, size = sizeof read;
  ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, "Software\\Acme", 0, "", REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                            nullptr, &key, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(RegSetValueExA(key, "Count", 0, REG_DWORD, reinterpret_cast<BYTE const *>(&number), size), ERROR_SUCCESS);
  RegCloseKey(key);
  EXPECT_EQ(Text(ZnRegVariable(HKEY_CURRENT_USER, "Software\\Acme", "Count").Get()), "");

  key = Open("Software\\Acme");
  EXPECT_EQ(RegQueryValueExA(key, "Count", nullptr, &type, reinterpret_cast<BYTE *>(&read), &size), ERROR_SUCCESS);
  EXPECT_EQ(type, REG_DWORD);
  EXPECT_EQ(read, number);
  EXPECT_EQ(RegQueryValueExA(key, "Missing", nullptr, &type, nullptr, &size), ERROR_FILE_NOT_FOUND);
  RegCloseKey(key);
  // A missing key reads as empty even with an environment variable of the name.
  ScopedVariable variable("ZNUTIL_REG_TEST", "from the environment");
  EXPECT_EQ(Text(ZnRegVariable(HKEY_CURRENT_USER, "Software\\Nothing", "ZNUTIL_REG_TEST").Get()), "");
  EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "Software\\Nothing", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(RegOpenKeyExA(reinterpret_cast<HKEY>(&key), "x", 0, KEY_READ, &key), ERROR_INVALID_HANDLE);
  // A predefined root opens before anything was stored under it.
  for (HKEY root : kRoots) {
    EXPECT_EQ(RegOpenKeyExA(root, "", 0, KEY_READ, &key), ERROR_SUCCESS) << root;
    RegCloseKey(key);
  }
}

TEST_F(ZnRegVariableTest, OddNamesKeepApartAndNoTemporaryFileStays) {
  char const *const names[] = {"", "@", "a/b\\c", "%41", "A", ".hidden", "#XXXXXX"};
  for (std::string name : names) {
    ZnRegVariable(HKEY_LOCAL_MACHINE, "Odd\\..\\.", name.c_str()).Set((name + "!").c_str());
  }
  for (std::string name : names) {
    EXPECT_EQ(Text(ZnRegVariable(HKEY_LOCAL_MACHINE, "odd/../.", name.c_str()).Get()), name + "!") << name;
  }
  EXPECT_EQ(Text(ZnRegVariable(HKEY_LOCAL_MACHINE, "Odd\\..\\.", "a").Get()), "A!");  // "A" replaced "a"
  for (auto const &entry : std::filesystem::recursive_directory_iterator(scratch.Path())) {
    EXPECT_NE(entry.path().filename().string()[0], '#') << entry.path();
  }
}

TEST_F(ZnRegVariableTest, TheStoreFallsBackToTheConfigurationFolder) {
  ScopedVariable noStore("ZNUTIL_REGISTRY_DIR", "");
  ScopedVariable config("XDG_CONFIG_HOME", scratch / "config");
  ZnRegVariable(HKEY_CLASSES_ROOT, ".txt", "").Set("textfile");
  EXPECT_TRUE(std::filesystem::exists(scratch / "config/znutil/registry/HKEY_CLASSES_ROOT/%2Etxt/@"));
  ScopedVariable noConfig("XDG_CONFIG_HOME", "");
  ScopedVariable home("HOME", scratch / "home");
  ZnRegVariable(HKEY_USERS, "Default", "Name").Set("me");
  EXPECT_TRUE(std::filesystem::exists(scratch / "home/.config/znutil/registry/HKEY_USERS/default/@name"));
}

}  // namespace

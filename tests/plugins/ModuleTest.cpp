// The platform's module functions, on one of the example plug-ins.
#include <string>

#include <gtest/gtest.h>

#include <znutil/platform/Module.h>
#include <znutil/system/ZnPathFunctions.h>

namespace {

using namespace znutil::platform;

TEST(ModuleTest, LoadsFindsOnlyExportedSymbolsAndFrees) {
  ZnString const path = ZnFromNativePath(ZNUTIL_TEST_PLUGIN);
  std::string error;
  HMODULE const module = LoadLibraryA(path, &error);
  ASSERT_NE(module, nullptr) << error;
  EXPECT_NE(GetProcAddress(module, "PluginStart"), nullptr);
  // Built with hidden visibility: its action class (here its vtable) stays its own.
  EXPECT_EQ(GetProcAddress(module, "_ZTV17ProfileEditAction"), nullptr);
  EXPECT_EQ(GetProcAddress(module, nullptr), nullptr);
  EXPECT_TRUE(FreeLibrary(module));
}

TEST(ModuleTest, FailuresSayWhy) {
  for (char const *path : {"", "\\no\\such\\plugin.so"}) {
    std::string error;
    EXPECT_EQ(LoadLibraryA(path, &error), nullptr) << path;
    EXPECT_FALSE(error.empty()) << path;
  }
  EXPECT_EQ(LoadLibraryA(nullptr), nullptr);
  EXPECT_EQ(GetProcAddress(nullptr, "PluginStart"), nullptr);
  EXPECT_FALSE(FreeLibrary(nullptr));
}

}  // namespace

// Environment variables: a cached value that only the constructor and
// SetName read, and that only Set writes.
#include <znutil/application/ZnEnvVariable.h>

#include <cstdlib>

#include <gtest/gtest.h>

#include "../system/TestClocks.h"

namespace {

char const kName[] = "ZNUTIL_ENV_TEST";

std::string Text(ZnString const &value) { return value.Chars(); }

TEST(ZnEnvVariableTest, KeepsTheValueItReadUntilSetNameReadsAgainAndSetWritesIt) {
  znutil_test::ScopedVariable variable(kName, "first");
  ZnEnvVariable env(kName);
  EXPECT_EQ(Text(env.Get()), "first");
  setenv(kName, "second", 1);
  EXPECT_EQ(Text(env), "first");
  ZnEnvVariable copy(env);  // copies the cache, reads nothing
  EXPECT_EQ(Text(copy.Get()), "first");
  env.SetName(kName);
  EXPECT_EQ(Text(env.Get()), "second");
  EXPECT_EQ(Text(env.GetName()), kName);

  env.Set("new value");
  EXPECT_STREQ(std::getenv(kName), "new value");
  env.Set("");  // empty removes the variable
  EXPECT_EQ(std::getenv(kName), nullptr);
  EXPECT_EQ(Text(env.Get()), "");
  copy.SetName(kName);
  EXPECT_EQ(Text(copy.Get()), "");
  ZnEnvVariable unnamed("");
  unnamed.Set("x");  // no such name can be set: ignored
  EXPECT_EQ(Text(unnamed.Get()), "x");
}

}  // namespace

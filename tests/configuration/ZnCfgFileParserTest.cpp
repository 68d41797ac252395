#include <znutil/configuration/ZnCfgFileParser.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CfgTestSupport.h"

namespace {

using cfgtest::Parsed;

class ZnCfgFileParserTest : public ::testing::Test, public cfgtest::ParseFixture {};

// The example file of the format reads into the tree the writer writes
// back in its own layout.
TEST_F(ZnCfgFileParserTest, ReadsHandMadeFileAndWritesItInItsOwnLayout) {
  Parsed const parsed = Parse(
      "# hand-made\r\n"
      "section \"Display\" \"Width\" = (integer, ascii) 1024\n"
      "\"Title\" = \"Main \\\"view\\\"\"\n"
      "\"Depth\" (alpha7) = (integer, hex) x20, x00,\n"
      "   x00, x00\n");
  EXPECT_EQ(parsed.messages, std::vector<std::string>());
  EXPECT_EQ(parsed.Written(),
            "section \"Display\"\r\n"
            "\"Depth\" (alpha7) =(integer) 32\r\n"
            "\"Title\" (all) =(text) \"Main \\\"view\\\"\"\r\n"
            "\"Width\" (all) =(integer) 1024\r\n"
            "\r\n");
}

}  // namespace

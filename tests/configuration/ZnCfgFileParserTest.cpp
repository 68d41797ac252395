#include <znutil/configuration/ZnCfgFileParser.h>

#include <cctype>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <znutil/configuration/ZnCfgBinaryData.h>
#include <znutil/configuration/ZnCfgEntryList.h>
#include <znutil/configuration/ZnCfgFloatData.h>
#include <znutil/configuration/ZnCfgIntegerData.h>
#include <znutil/configuration/ZnCfgSectionList.h>
#include <znutil/configuration/ZnCfgTextData.h>

#include "../system/ScratchDirectory.h"
#include "CfgTestSupport.h"

namespace {

using Texts = std::vector<std::string>;

Texts TakeTexts() {
  Texts texts;
  for (auto const &message : ZnCfgFileParserTestAccess::TakeMessages()) texts.push_back(message.text);
  return texts;
}

// A parse of one text, with what it reported.
struct Parsed {
  std::unique_ptr<ZnCfgSectionList> sections;
  Texts messages;

  // The tree as the writer writes it, or "null".
  std::string Written() const { return sections ? sections->FormatFile().Chars() : "null"; }
  ZnCfgData const *Data(char const *name, ZnString const &machine = "all") const {
    return sections->FindSection("s")->Entries()->FindEntry(name, machine)->Data();
  }
  // The text of entry `name` of section "s", zero bytes included.
  std::string Text(char const *name) const {
    ZnString value;
    EXPECT_TRUE(Data(name)->GetText(&value));
    return std::string(value.Chars(), value.Length());
  }
};

class ZnCfgFileParserTest : public ::testing::Test {
 protected:
  Parsed Parse(std::string const &text) { return ParseFile(znutil_test::WriteFile(folder / "test.cfg", text)); }
  Parsed ParseFile(std::string const &path) {
    TakeTexts();
    Parsed parsed;
    parsed.sections.reset(ZnCfgFileParser(znutil_test::Backslashed(path).c_str()).Parse());
    parsed.messages = TakeTexts();
    return parsed;
  }
  // The written form of `text` read as the only section "s".
  std::string Entries(std::string const &text) {
    std::string const written = Parse("section \"s\"\n" + text).Written(), head = "section \"s\"\r\n";
    return written.compare(0, head.size(), head) == 0 ? written.substr(head.size()) : written;
  }
  std::string Path() const { return znutil_test::Backslashed(folder / "test.cfg"); }
  std::string At(int line) const { return "\nError in file " + Path() + " on line " + std::to_string(line); }
  std::string ErrorIn(std::string const &message) const { return "Error in configuration file.\nError in file " + Path() + "\n" + message; }
  std::string SyntaxErrorOn(int line) const { return "Configuration File Syntax error." + At(line); }
  std::string JamOn(int line, std::string const &token) const {
    return "Configuration File parser is jammed." + At(line) + "\nThe token that was read is '" + token + "'";
  }

  znutil_test::ScratchDirectory folder;
};

// Every production, the tokens at their edges, and the escapes of strings.
TEST_F(ZnCfgFileParserTest, ReadsEveryFormOfEntryAndEscape) {
  struct {
    char const *input;    // entries of section "s"
    char const *written;  // the entries as written, or "null"
  } const cases[] = {
      {"", "\r\n"},
      {"\"k\" = \"v\"", "\"k\" (all) =(text) \"v\"\r\n\r\n"},
      {"\"k\" = (text) \"v\"", "\"k\" (all) =(text) \"v\"\r\n\r\n"},
      {"\"k\" (m_1) = \"v\"", "\"k\" (m_1) =(text) \"v\"\r\n\r\n"},
      {"\"k\" = (integer) -5", "\"k\" (all) =(integer) -5\r\n\r\n"},
      {"\"k\"=(integer,ascii)007", "\"k\" (all) =(integer) 7\r\n\r\n"},
      {"\"k\" = (integer, hex) x01,x02,x00,x80", "\"k\" (all) =(integer) -2147483135\r\n\r\n"},
      {"\"k\" = (float) x00,\n\nx00 ,x80,\tx3F", "\"k\" (all) =(float) x00,x00,x80,x3f\r\n\r\n"},
      {"\"k\" = (binary) X1ff", "\"k\" (all) =(binary) xff\r\n\r\n"},
      {"\"k\" = (binary) x123456789", "\"k\" (all) =(binary) xff\r\n\r\n"},  // 32 bits at most
      {"\"k\" = (binary) xFF \"j\" (xFFg) = \"v\" \"i\" (x) = \"w\"",
       "\"i\" (x) =(text) \"w\"\r\n\"j\" (xFFg) =(text) \"v\"\r\n\"k\" (all) =(binary) xff\r\n\r\n"},
      {"\"k\" = \"a\\qb\"", "\"k\" (all) =(text) \"aqb\"\r\n\r\n"},
      {"\"k\" = \"a\\101\\1101\\0777\"", "\"k\" (all) =(text) \"aAA\\x0ff\"\r\n\r\n"},
      {"\"k\" = \"a\\x41\"", "\"k\" (all) =(text) \"a\\x000\"\r\n\r\n"},
      {"\"k\" = \"\\x\\xg\\8\\9\"", "\"k\" (all) =(text) \"xxg89\"\r\n\r\n"},
      {"\"k\" = \"\\n\\r\\b\\t\\\\\\'\\\"\"", "\"k\" (all) =(text) \"\\n\\r\\b\\t\\\\\\'\\\"\"\r\n\r\n"},
      {"\"k\" = \"\t\xe9\r\"", "\"k\" (all) =(text) \"\\t\\x0e9\\r\"\r\n\r\n"},
      {"\"\\x00\" = \"\"", "\"\" (all) =(text) \"\"\r\n\r\n"},
      // Zero bytes stay in place however long the string grows after them.
      {"\"k\" = \"\\0yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy\"",
       "\"k\" (all) =(text) \"\\x000yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy\"\r\n\r\n"},
  };
  for (auto const &c : cases) EXPECT_EQ(Entries(c.input), c.written) << c.input;
  for (char const *refused : {"\"k\" = (binary) xFFg", "\"k\" = (integer) 5x1", "\"k\" = (binary) x01,", "\"k\" = (text) 1",
                              "\"k\" = (integer, ascii) x01", "\"k\" = (integer, hex) 1", "\"k\" (all = \"v\"", "= \"v\"",
                              "\"k\" (\"all\") = \"v\"", "\"k\" \"v\"", "\"k\" = (Integer) 1", "\"k\" (hex) = \"v\"",
                              "\"k\" = (integer, text) 1"})
    EXPECT_EQ(Entries(refused), "null") << refused;
}

TEST_F(ZnCfgFileParserTest, ReadsFilesOfNoSectionAndRefusesWhatIsNotASection) {
  EXPECT_EQ(Parse("").Written() + Parse("# only\n# comments").Written(), "");
  EXPECT_EQ(Parse("section \"a\" section \"b\"#").Written(), "section \"a\"\r\n\r\nsection \"b\"\r\n\r\n");
  for (char const *refused : {"\"k\" = \"v\"", "section", "section \"a\" section", "Section \"a\"", "section a",
                              "section \"a\" )", "section \"a\" \"k\" = \"v\" ("})
    EXPECT_EQ(Parse(refused).Written(), "null") << refused;
}

TEST_F(ZnCfgFileParserTest, ReadsNumbersSignsAndUnknownCharacters) {
  Parsed const minus = Parse("section \"s\" \"k\" = (integer) - 5 \"j\" = (integer) +7\n\"i\" = (integer) 99999999999");
  EXPECT_EQ(minus.Written(),
            "section \"s\"\r\n\"i\" (all) =(integer) 1215752191\r\n\"j\" (all) =(integer) 7\r\n"
            "\"k\" (all) =(integer) 5\r\n\r\n");
  EXPECT_EQ(minus.messages, (Texts{JamOn(1, "-"), JamOn(1, "+")}));
  // A comment counts the line feed that ends it, and none at the end of input.
  Parsed const odd = Parse("section \"s\" $#c\n\n\x80\r\n\"k\" = \"v\"");
  EXPECT_EQ(odd.Written(), "section \"s\"\r\n\"k\" (all) =(text) \"v\"\r\n\r\n");
  EXPECT_EQ(odd.messages, (Texts{JamOn(1, "$"), JamOn(3, "\x80")}));
  EXPECT_EQ(Parse("section \"s\" \"k\" =\n#c").messages, Texts{SyntaxErrorOn(2)});
}

// A line feed ends a string without a token and without counting the line;
// after a backslash it is refused and the escape still waits. A carriage
// return right before a line feed is gone before scanning.
TEST_F(ZnCfgFileParserTest, LineFeedsInStringsAreNotCounted) {
  Parsed const cut = Parse("section \"s\" \"k\" = \"ok\" \"cut\n$ \"j\" = \"v\"");
  EXPECT_EQ(cut.Written(), "section \"s\"\r\n\"j\" (all) =(text) \"v\"\r\n\"k\" (all) =(text) \"ok\"\r\n\r\n");
  EXPECT_EQ(cut.messages, Texts{JamOn(1, "$")});
  Parsed const escaped = Parse("section \"s\"\n\"k\" = \"a\\\r\nq\"\n$");
  EXPECT_EQ(escaped.Written(), "section \"s\"\r\n\"k\" (all) =(text) \"aq\"\r\n\r\n");
  EXPECT_EQ(escaped.messages, (Texts{JamOn(2, "\n"), JamOn(3, "$")}));
  Parsed const broken = Parse("section \"s\"\n\"k\" = \"v\n\"j\" = \"w\"");
  EXPECT_EQ(broken.Written(), "null");
  EXPECT_EQ(broken.messages, Texts{SyntaxErrorOn(2)});
}

// A file that ends inside a string or an escape makes the next parse start
// there.
TEST_F(ZnCfgFileParserTest, NextParseStartsWhereTheLastFileEnded) {
  char const next[] = "\nsection \"b\"";
  EXPECT_EQ(Parse("section \"a\" \"k").Written(), "section \"a\"\r\n\r\n");
  EXPECT_EQ(Parse(next).Written(), "section \"b\"\r\n\r\n");  // the line feed ends the string
  EXPECT_EQ(Parse("section \"a\" \"k\\").Written(), "section \"a\"\r\n\r\n");
  Parsed const afterEscape = Parse(next);
  EXPECT_EQ(afterEscape.Written(), "null");  // the line feed is refused; the rest is a string
  EXPECT_EQ(afterEscape.messages, (Texts{JamOn(1, "\n"), SyntaxErrorOn(1)}));
  EXPECT_EQ(Parse(next).Written(), "section \"b\"\r\n\r\n");
}

TEST_F(ZnCfgFileParserTest, DropsDuplicatesWithOneMessageEach) {
  Parsed const parsed = Parse(
      "section \"Net\" \"Port\" = (integer) 80 \"PORT\" (ALL) = (integer) 81 \"ab\" (c) = \"1\" \"a\" (bc) = \"2\"\n"
      "section \"NET\" \"Other\" = \"x\"\n"
      "section \"net\"");
  EXPECT_EQ(parsed.Written(), "section \"Net\"\r\n\"ab\" (c) =(text) \"1\"\r\n\"Port\" (all) =(integer) 80\r\n\r\n");
  EXPECT_EQ(parsed.messages,
            (Texts{ErrorIn("The entry named PORTis already defined"), ErrorIn("The entry named ais already defined"),
                   ErrorIn("The section named NETis already defined"),
                   ErrorIn("The section named netis already defined")}));
}

TEST_F(ZnCfgFileParserTest, ByteListsOfTheWrongLengthGivePlaceholders) {
  Parsed const parsed = Parse("section \"s\"\n\"i\" = (integer, hex) x01,\nx02\n\"f\" = (float) x01 \"b\" = (binary) x01");
  EXPECT_EQ(parsed.Written(),
            "section \"s\"\r\n\"b\" (all) =(binary) x01\r\n\"f\" (all) =(float) x00,x00,x00,x00\r\n"
            "\"i\" (all) =(integer) -1\r\n\r\n");
  EXPECT_EQ(parsed.messages,
            (Texts{ErrorIn("Incorrect integer entry format\nThe error occurred for the integer entry defined on line 2\n"
                           "There were 2 bytes specified and only 4 are allowed."),
                   ErrorIn("Incorrect float entry format\nThe error occurred for the integer entry defined on line 4\n"
                           "There were 1 bytes specified and only 4 are allowed.")}));
}

TEST_F(ZnCfgFileParserTest, ReportsWithSourceCategoryAndLevel) {
  Parse("section \"s\" \"k\" = \"1\" \"k\" = \"2\" $ )");
  ZnCfgFileParser(Path().c_str()).WarningMessage("careful");
  EXPECT_EQ(ZnCfgFileParser((Path() + "-none").c_str()).Parse(), nullptr);
  auto const messages = ZnCfgFileParserTestAccess::TakeMessages();
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[0].text, "Warning in configuration file.\nWarning for file " + Path() + "\ncareful");
  EXPECT_EQ(messages[1].text, "Cannot open configuration file\nThe file name is " + Path() + "-none");
  for (auto const &message : messages)
    EXPECT_EQ(message.source + "/" + message.category + "/" + std::to_string(message.level),
              &message == &messages[0] ? "CfgFile/Reader/1" : "CfgFile/Reader/2");
  Parsed const failed = Parse("section \"s\" \"k\" = \"1\" \"k\" = \"2\" $ \n)");
  EXPECT_EQ(failed.messages, (Texts{ErrorIn("The entry named kis already defined"), JamOn(1, "$"), SyntaxErrorOn(2)}));
  // A folder, or a file that cannot be read, gives null.
  Parsed const folderParse = ParseFile(folder.Path());
  EXPECT_EQ(folderParse.Written(), "null");
  EXPECT_EQ(folderParse.messages, Texts{"Cannot open configuration file\nThe file name is " + znutil_test::Backslashed(folder.Path())});
  if (geteuid() != 0) {
    std::string const locked = znutil_test::WriteFile(folder / "locked.cfg", "section \"a\"");
    chmod(locked.c_str(), 0);
    EXPECT_EQ(ParseFile(locked).Written(), "null");
  }
}

// Every type read back from what the writer wrote: floats bit for bit.
TEST_F(ZnCfgFileParserTest, EveryTypeRoundTripsThroughTheWrittenForm) {
  float const floats[] = {0.0f, -0.0f, 1.0f / 3, 1e-45f, -3.4e38f, std::numeric_limits<float>::infinity()};
  unsigned char bytes[20];
  for (int i = 0; i < 20; ++i) bytes[i] = static_cast<unsigned char>(i * 13);
  ZnBinary twenty;
  twenty.Store(bytes, 20);
  std::string printable;
  for (int c = 1; c < 256; ++c) printable += std::isprint(c) || std::strchr("\b\t\n\r", c) ? static_cast<char>(c) : 'x';
  ZnCfgSectionList written;
  auto *entries = new ZnCfgEntryList;
  for (int i = 0; i < 6; ++i) entries->Add(new ZnCfgEntry("f", ZnString("m") << i, new ZnCfgFloatData(floats[i])));
  entries->Add(new ZnCfgEntry("i", "min", new ZnCfgIntegerData(std::numeric_limits<int>::min())));
  entries->Add(new ZnCfgEntry("i", "max", new ZnCfgIntegerData(std::numeric_limits<int>::max())));
  entries->Add(new ZnCfgEntry("b", "all", new ZnCfgBinaryData(twenty)));
  entries->Add(new ZnCfgEntry("t", "all", new ZnCfgTextData(printable.c_str())));
  written.Add(new ZnCfgSection("s", entries));
  std::string const text = written.FormatFile().Chars();
  EXPECT_NE(text.find("=(binary) x00,x0d,x1a,x27,x34,x41,x4e,x5b,x68,x75,x82,x8f,x9c,xa9,xb6,xc3,xd0,xdd,xea,\r\nxf7\r\n"),
            std::string::npos);

  Parsed const read = Parse(text);
  ASSERT_TRUE(read.sections);
  EXPECT_EQ(read.Written(), text);
  for (int i = 0; i < 6; ++i) {
    float value = 1;
    ASSERT_TRUE(read.Data("f", ZnString("m") << i)->GetFloat(&value));
    EXPECT_EQ(std::memcmp(&value, &floats[i], 4), 0) << i;
  }
  ZnBinary value;
  ASSERT_TRUE(read.Data("b")->GetBinary(&value));
  EXPECT_EQ(value.Size(), 20u);
  EXPECT_EQ(std::memcmp(static_cast<unsigned char *>(value), bytes, 20), 0);
  EXPECT_EQ(read.Text("t"), printable);
}

// What the writer makes and the reader does not take back: names with a
// quote or backslash, machines outside the word form, empty binaries, and
// unprintable bytes, which come back as zero bytes.
TEST_F(ZnCfgFileParserTest, KeepsTheDocumentedDifferencesOfReaderAndWriter) {
  auto writtenWith = [](ZnString const &name, ZnString const &machine, ZnCfgData *data) {
    ZnCfgSectionList sections;
    auto *entries = new ZnCfgEntryList;
    entries->Add(new ZnCfgEntry(name, machine, data));
    sections.Add(new ZnCfgSection("s", entries));
    return std::string(sections.FormatFile().Chars());
  };
  for (char const *machine : {"my-pc", "7up", "hex", "xbad"})
    EXPECT_EQ(Parse(writtenWith("k", machine, new ZnCfgIntegerData(1))).Written(), "null") << machine;
  EXPECT_EQ(Parse(writtenWith("k\"q", "all", new ZnCfgIntegerData(1))).Written(), "null");
  EXPECT_EQ(Parse(writtenWith("k", "all", new ZnCfgBinaryData(ZnBinary()))).Written(), "null");
  std::string const backslash = writtenWith("a\\qb", "all", new ZnCfgTextData("\x01z"));
  EXPECT_EQ(backslash, "section \"s\"\r\n\"a\\qb\" (all) =(text) \"\\x001z\"\r\n\r\n");
  Parsed const lossy = Parse(backslash);
  ASSERT_TRUE(lossy.sections);
  EXPECT_EQ(lossy.Text("aqb"), std::string("\0z", 2));
}

TEST_F(ZnCfgFileParserTest, SurvivesHostileFiles) {
  std::mt19937 random(7);
  std::string garbage(1 << 16, '\0');
  for (char &c : garbage) c = static_cast<char>(random());
  Parse(garbage);
  Parse(std::string(1 << 20, '('));
  Parse("section \"s\" \"k");  // ends inside a string...
  Parse("\\");                 // ...then inside an escape
  EXPECT_EQ(Parse("q\n").Written(), "");  // the escape takes q, the line feed ends the string

  std::string const longValue(10 << 20, 'v');
  Parsed const longLine = Parse("section \"s\" \"k\" = \"" + longValue + "\" # " + longValue);
  ASSERT_TRUE(longLine.sections);
  EXPECT_EQ(longLine.Text("k").size(), 10u << 20);

  std::string many;
  for (int i = 0; i < 100000; ++i) many += "section \"" + std::to_string(i) + "\"\n";
  Parsed const sections = Parse(many + "section \"0\"\n");
  ASSERT_TRUE(sections.sections);
  EXPECT_EQ(sections.sections->GetCount(), 100000);
  EXPECT_EQ(sections.messages, Texts{ErrorIn("The section named 0is already defined")});
  EXPECT_EQ(Parse(many + "x").messages, Texts{SyntaxErrorOn(100001)});

  std::string bytes = "\"k\" = (integer, hex) x00";
  for (int i = 1; i < 100000; ++i) bytes += ",x01";
  EXPECT_EQ(Entries(bytes), "\"k\" (all) =(integer) -1\r\n\r\n");
}

}  // namespace

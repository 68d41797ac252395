#include <znutil/text/ZnString.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <znutil/memory/ZnFixedBlockAllocator.h>
#include <znutil/text/ZnStringRef.h>

namespace {

// True if running `body` takes a block of the size class of `size` (by
// default that of string refs and short buffers): the allocator serves the
// last freed block first, so a probe block freed just before comes back
// only if nothing else took it.
template <typename Body>
bool Allocates(Body body, unsigned long size = sizeof(ZnStringRef)) {
  void *probe = ZnFixedBlockAllocator::Alloc(size);
  ZnFixedBlockAllocator::Free(probe);
  body();
  void *next = ZnFixedBlockAllocator::Alloc(size);
  ZnFixedBlockAllocator::Free(next);
  return next != probe;
}

// Each pair is {got, wanted}; the row number tells a failure apart.
void ExpectRows(std::initializer_list<std::pair<long, long>> rows) {
  int row = 0;
  for (auto const &r : rows) EXPECT_EQ(r.first, r.second) << "row " << row++;
}

std::string TempPath(char const *name) {
  char const *dir = std::getenv("TMPDIR");
  return std::string(dir != nullptr ? dir : "/tmp") + "/znutil_text_test_" + name;
}

ZnString WithNul(char const *text, int at) {
  ZnString result(text);
  result.SetCharacter(at, '\0');
  return result;
}

TEST(ZnStringTest, NullStringNeverAllocatesButEmptyTextDoes) {
  EXPECT_FALSE(Allocates([] {
    ZnString a, b(NULL_STRING), c(a);
    c = b;
    c = NULL_STRING;
    EXPECT_TRUE(a == NULL_STRING && a.Length() == 0 && a.MaxLength() == 32);
  }));
  ZnString kept;
  EXPECT_TRUE(Allocates([&] { kept = ""; }));
  EXPECT_TRUE(kept == NULL_STRING) << "an empty text equals the null string";
  EXPECT_FALSE(kept != NULL_STRING);
  EXPECT_TRUE(ZnString("x") != NULL_STRING);
  EXPECT_TRUE(ZnString(static_cast<char const *>(nullptr)) == NULL_STRING);
}

TEST(ZnStringTest, CopiesShareUntilOneIsWritten) {
  ZnString original("shared text"), copy;
  char const *pointer = static_cast<char const *>(original);
  EXPECT_FALSE(Allocates([&] { copy = original; }));
  EXPECT_TRUE(Allocates([&] { copy << "!"; })) << "the write makes the copy private";
  EXPECT_STREQ(pointer, "shared text");
  EXPECT_EQ(copy, "shared text!");
  EXPECT_FALSE(Allocates([&] { original << "?"; })) << "the original is sole owner again";
  EXPECT_EQ(original, "shared text?");
  copy = original;
  copy = ZnString("other");
  EXPECT_FALSE(Allocates([&] { original << "."; })) << "assigning over the copy gave up its share";

  ZnString plain("plain"), converted(plain);
  static_cast<unsigned short const *>(converted);
  EXPECT_FALSE(Allocates([&] { plain << "+"; })) << "converting the copy to a pointer gave up its share";
  ZnString compacted(converted);
  compacted.Compact();
  EXPECT_FALSE(Allocates([&] { converted << "-"; })) << "compacting the copy gave up its share";
  EXPECT_EQ(compacted, "plain");
  EXPECT_EQ(converted, "plain-");

  ZnString abc("abc"), written(abc), replaced(abc), prepended(abc);
  written.SetCharacter(0, 'x');
  EXPECT_EQ(written, "xbc");
  EXPECT_EQ(written.MaxLength(), 3 + 32) << "the private copy gets slack";
  replaced.ReplaceString(ZnString("X"), 1, 1);
  EXPECT_EQ(replaced, "aXc");
  prepended >> "<" >> ZnString("[");
  EXPECT_EQ(prepended, "[<abc");
  EXPECT_EQ(abc, "abc");
}

TEST(ZnStringTest, SizeHintsAndAssignment) {
  ZnString appended, one, sized(ZnStringSize(100));
  appended << "hello";
  one << 'c';
  EXPECT_TRUE(sized == NULL_STRING);
  EXPECT_EQ(sized.MaxLength(), 132);
  sized << std::string(100, 'x').c_str();
  ZnString left = ZnString("abcdef").LeftString(3);
  int const leftRoom = left.MaxLength();
  left << "d";
  ZnString untouched;
  EXPECT_FALSE(untouched.SetCharacter(0, 'x'));
  // Appends hint the size of the addition (4 for a character); substrings
  // have no slack; used room means no growth; a write outside an empty
  // string asks for no room; a negative hint keeps what slack is left.
  ExpectRows({{appended.MaxLength(), 5 + 32}, {one.MaxLength(), 4 + 32}, {sized.MaxLength(), 132},
              {leftRoom, 3}, {left.MaxLength(), 4 + 32}, {untouched.MaxLength(), 32},
              {ZnString::MakeFill('x', -5).MaxLength(), 28}, {ZnString(ZnStringSize(-10)).MaxLength(), 22}});

  ZnString text("first"), shared(text);
  text = "second";
  EXPECT_EQ(text, "second");
  EXPECT_EQ(shared, "first") << "a shared ref is left to the other value";
  int const room = text.MaxLength();
  text = "3rd";
  EXPECT_EQ(text.MaxLength(), room) << "a sole owner keeps its buffer";
  text = static_cast<char const *>(nullptr);
  EXPECT_TRUE(text == NULL_STRING);
  unsigned short const wide[] = {'w', 'i', 0};
  text = wide;
  text = text;
  EXPECT_EQ(text, "wi");
}

TEST(ZnStringTest, NumbersAndShiftOperators) {
  ZnString seven, half;
  seven = 7;
  half = 0.5;
  struct {
    ZnString got;
    char const *wanted;
  } const texts[] = {{ZnString(-12), "-12"}, {ZnString(4000000000u), "4000000000"}, {ZnString(1.5f), "1.500000"},
                     {ZnString(2.25), "2.250000"}, {seven, "7"}, {half, "0.500000"}};
  for (auto const &t : texts) EXPECT_EQ(t.got, t.wanted);
  ExpectRows({{static_cast<int>(ZnString("42abc")), 42}, {static_cast<long>(ZnString("42abc")), 42},
              {static_cast<unsigned int>(ZnString("17")), 17}, {static_cast<unsigned int>(ZnString("none")), 0},
              {static_cast<int>(ZnString()), 0}});
  EXPECT_FLOAT_EQ(static_cast<float>(ZnString("2.5")), 2.5f);
  EXPECT_DOUBLE_EQ(static_cast<double>(ZnString("-0.25")), -0.25);

  ZnString x("x");
  x >> 5;
  EXPECT_EQ(x, "5x");
  x << 'y' << static_cast<unsigned short>(0x17A) << 1.5f;
  x >> "<" >> ZnString("[");
  x += "!";
  x += 3;
  EXPECT_EQ(x, "[<5xyz1.500000!3");
  ZnString base("a");
  EXPECT_EQ(base + ZnString("b"), "ab");
  base << base;
  EXPECT_EQ(base, "aa");
}

TEST(ZnStringTest, ComparisonsReadUnsignedBytes) {
  ZnString b("b");
  ExpectRows({{b.Compare(ZnString("a")), 1}, {b.Compare(ZnString("zzz")), -1}, {b.Compare(ZnString("b")), 0},
              {ZnString().Compare(ZnString("")), 0}, {ZnString("Hello").CaseCompare(ZnString("hELLO")), 0},
              {ZnString("abc").CaseCompare(ZnString("ABD")) < 0, 1}, {ZnString("b").CaseCompare(ZnString("A")) > 0, 1}});
  unsigned short const wide[] = {'b', 0};
  EXPECT_TRUE(b < ZnString("\xE9") && b > "B" && b <= "b" && b >= "b" && b == wide);
  // Equality reads lengths where it can, but still ends a text at its first NUL.
  ZnString shared(b), cut(WithNul("abXcd", 2));
  EXPECT_TRUE(shared == b);
  EXPECT_TRUE(ZnString() == ZnString(""));
  EXPECT_TRUE(cut == ZnString("ab") && ZnString("ab") == cut);
  EXPECT_FALSE(cut != ZnString("ab"));
  EXPECT_TRUE(ZnString("ab") != ZnString("abc") && ZnString("ab") != ZnString("ac"));
  EXPECT_FALSE(cut == ZnString("abX"));
}

TEST(ZnStringTest, Searches) {
  ZnString abc("abcabc"), text("Hello hello"), cut(WithNul("abXcd", 2));
  ExpectRows({
      {abc.HaveCharacter('c', 0), 2}, {abc.HaveCharacter('c', 3), 5},
      {abc.HaveCharacter('a', 6), -1},  // start equal to length
      {abc.HaveCharacter('a', -1), -1}, {ZnString().HaveCharacter('a', 0), -1},
      {abc.ReverseHaveCharacter('a', 2), 3},  // the last at or after start
      {abc.ReverseHaveCharacter('a', 4), -1}, {abc.HaveCharactersInSet(ZnString("xc"), 0), 2},
      {abc.HaveCharactersInSet(ZnString("xyz"), 0), -1},
      {text.ContainsSubString(ZnString("llo"), 0), 2}, {text.ContainsSubString(ZnString("llo"), 3), 8},
      {text.ContainsSubString(ZnString(""), 0), -1}, {text.CaseContainsSubString(ZnString("HELLO"), 1), 6},
      {text.ReverseContainsSubString(ZnString("llo"), 100), 8}, {text.ReverseContainsSubString(ZnString("llo"), 7), 2},
      {text.ReverseCaseContainsSubString(ZnString("HE"), 5), 0},
      {text.ReverseCaseContainsSubString(ZnString("HEL"), 5), -1},  // the wrong 'l' used up the right one
      {ZnString("abb").ReverseContainsSubString(ZnString("ab"), 2), -1},  // a failed partial match is not retried
      {ZnString("ab").ReverseContainsSubString(ZnString("abc"), 1), -1},
      {text.ReverseContainsSubString(ZnString("H"), -1), -1},
      {text.ReverseContainsSubString(ZnString(""), 10), -1},  // an empty pattern never matches
      {text.ReverseCaseContainsSubString(ZnString(), 10), -1},
      {cut.ContainsSubString(ZnString("cd"), 0), -1},  // the text ends at its first NUL
      {cut.ContainsSubString(ZnString("b"), 0), 1}, {ZnString("aaab").ContainsSubString(ZnString("aab"), 0), 1},
      {ZnString("abc").ContainsSubString(ZnString("bcd"), 0), -1},
  });
}

TEST(ZnStringTest, CuttingAndEditing) {
  ZnString text("abcdef");
  struct {
    ZnString got;
    char const *wanted;
  } const cuts[] = {{text.MidString(-5, 2), "ab"}, {text.MidString(2, 99), "cdef"}, {text.MidString(6, 1), ""},
                    {text.MidString(1, 0), ""},    {text.LeftString(99), "abcdef"}, {text.LeftString(0), ""},
                    {text.RightString(2), "ef"},   {text.RightString(20), "abcdef"}, {ZnString::MakeFill('=', 4), "===="}};
  for (auto const &c : cuts) EXPECT_EQ(std::string(static_cast<char const *>(c.got)), c.wanted);
  EXPECT_TRUE(text.MidString(6, 1) == NULL_STRING && text.LeftString(0) == NULL_STRING);
  ExpectRows({{text[1], 'b'}, {text.GetCharacter(6), 0}, {text[-1], 0}});
  text.ReplaceString(ZnString("XY"), 2, 2);
  EXPECT_EQ(text, "abXYef");
  text.ReplaceString(ZnString("!"), 6, 0);
  EXPECT_EQ(text, "abXYef!") << "a start at the end appends";
  text.Truncate(2);
  text.Fill('-', 3);
  EXPECT_EQ(text, "ab---") << "Fill adds, it clears nothing";
}

// Texts of length 0 and 1, white space only, and one letter at either end:
// where a bound that is one off shows. Each result's length is checked too.
TEST(ZnStringTest, CaseAndWhiteSpaceForms) {
  ZnString (ZnString::*const forms[])() const = {&ZnString::ToNoWhite, &ZnString::ToNoLeadingWhite,
                                                 &ZnString::ToNoTrailingWhite, &ZnString::ToUpper,
                                                 &ZnString::ToLower, &ZnString::ToCapitalize};
  // The text, then the result of each form in order.
  char const *const cases[][7] = {
      {"", "", "", "", "", "", ""},
      {"a", "a", "a", "a", "A", "a", "A"},
      {" ", "", "", "", " ", " ", " "},
      {" \t\n ", "", "", "", " \t\n ", " \t\n ", " \t\n "},
      {" a", "a", "a", " a", " A", " a", " A"},
      {"a ", "a", "a ", "a", "A ", "a ", "A "},
      {"aB", "aB", "aB", "aB", "AB", "ab", "Ab"},  // only the first letter stays raised
      {"  Mixed CASE  ", "MixedCASE", "Mixed CASE  ", "  Mixed CASE", "  MIXED CASE  ", "  mixed case  ",
       "  Mixed case  "},
  };
  auto expect = [](ZnString const &got, char const *wanted) {
    EXPECT_EQ(std::string(static_cast<char const *>(got)), wanted);
    EXPECT_EQ(got.Length(), static_cast<int>(std::strlen(wanted))) << wanted;
  };
  for (auto const &c : cases) {
    SCOPED_TRACE(std::string("\"") + c[0] + "\"");
    ZnString const text(c[0]);
    for (int form = 0; form < 6; ++form) expect((text.*forms[form])(), c[form + 1]);
    expect(text, c[0]);  // the To forms leave the value alone
  }
}

// Wide texts are measured up to their NUL, for the length and for the size
// hint of an append.
TEST(ZnStringTest, WideTextsOfEachLength) {
  unsigned short const wide[] = {'a', 'b', 'c', 0};
  for (int n = 0; n <= 3; ++n) {
    SCOPED_TRACE(n);
    unsigned short const *const text = wide + 3 - n;
    ZnString assigned, appended;
    assigned = text;
    appended << text;
    EXPECT_TRUE(assigned == text);
    ExpectRows({{assigned.Length(), n}, {appended.Length(), n}, {appended.MaxLength(), n + 32},
                {ZnStringRef(text).GetLength(), n}});
  }
}

TEST(ZnStringTest, PointerConversionsHandOutCopies) {
  ZnString text("value");
  static_cast<char *>(text)[0] = 'V';
  EXPECT_EQ(text, "value") << "writing through the pointer never changes the string";
  unsigned short const *wide = static_cast<unsigned short const *>(text);
  EXPECT_TRUE(wide[0] == 'v' && wide[5] == 0);
  EXPECT_STREQ(static_cast<char const *>(ZnString()), "");
  EXPECT_FALSE(Allocates([] { static_cast<char const *>(ZnString("value")); }, 6)) << "the copy goes with the string";
  text.Compact();
  char *narrow = text.DuplicateAscii();
  EXPECT_STREQ(narrow, "value");
  delete[] narrow;
}

TEST(ZnStringTest, FilesRoundTrip) {
  std::string const path = TempPath("round_trip");
  std::string windowsForm = path;
  std::replace(windowsForm.begin(), windowsForm.end(), '/', '\\');
  ASSERT_TRUE(ZnString("line one\nline two\n").WriteToFile(ZnString(windowsForm.c_str())))
      << "paths accept backslashes";
  ZnString read;
  ASSERT_TRUE(read.ReadFromFile(ZnString(path.c_str())));
  EXPECT_EQ(read, "line one\nline two\n");
  ASSERT_TRUE(ZnString().WriteToFile(ZnString(path.c_str())));
  ASSERT_TRUE(read.ReadFromFile(ZnString(path.c_str())));
  EXPECT_TRUE(read == NULL_STRING) << "an empty file gives an empty text";
  std::FILE *file = std::fopen(path.c_str(), "wb");
  std::fwrite("ab\0cd", 1, 5, file);
  std::fclose(file);
  ASSERT_TRUE(read.ReadFromFile(ZnString(path.c_str())));
  EXPECT_EQ(read, "ab") << "the text ends at an embedded NUL";
  std::remove(path.c_str());
  EXPECT_FALSE(read.ReadFromFile(ZnString(TempPath("missing").c_str())));
  EXPECT_EQ(read, "ab");
  EXPECT_FALSE(read.WriteToFile(ZnString("/nonexistent-dir/x")));
}

TEST(ZnStringTest, StandardStreams) {
  std::ostringstream out;
  out << ZnString("ab") << ZnString() << ZnString("c");
  EXPECT_EQ(out.str(), "abc");
  std::istringstream in("first line\r\nsecond\n");
  ZnString line, second;
  in >> line >> second;
  EXPECT_EQ(line, "first line");
  EXPECT_EQ(second, "second");
  in >> line;
  EXPECT_TRUE(in.fail());
  EXPECT_TRUE(line == NULL_STRING) << "the read that fails still assigns its empty line";
  line = "kept";
  in >> line;
  EXPECT_EQ(line, "kept") << "a failed stream leaves the string alone";
}

}  // namespace

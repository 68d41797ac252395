#include <znutil/text/ZnString.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

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

std::string TempPath(char const *name) {
  char const *dir = std::getenv("TMPDIR");
  return std::string(dir != nullptr ? dir : "/tmp") + "/znutil_text_test_" + name;
}

TEST(ZnStringTest, NullStringNeverAllocatesButEmptyTextDoes) {
  EXPECT_FALSE(Allocates([] {
    ZnString a;
    ZnString b(NULL_STRING);
    ZnString c(a);
    c = b;
    c = NULL_STRING;
    EXPECT_TRUE(a == NULL_STRING);
    EXPECT_EQ(a.Length(), 0);
    EXPECT_EQ(a.MaxLength(), 32);
  }));
  ZnString kept;
  EXPECT_TRUE(Allocates([&] { kept = ""; }));
  EXPECT_TRUE(kept == NULL_STRING) << "an empty text equals the null string";
  EXPECT_FALSE(kept != NULL_STRING);
  EXPECT_TRUE(ZnString("x") != NULL_STRING);
  EXPECT_TRUE(ZnString(static_cast<char const *>(nullptr)) == NULL_STRING);
}

TEST(ZnStringTest, CopiesShareUntilOneIsWritten) {
  ZnString original("shared text");
  char const *pointer = static_cast<char const *>(original);
  ZnString copy;
  EXPECT_FALSE(Allocates([&] { copy = original; }));
  EXPECT_TRUE(Allocates([&] { copy << "!"; })) << "the write makes the copy private";
  EXPECT_STREQ(pointer, "shared text");
  EXPECT_EQ(original, "shared text");
  EXPECT_EQ(copy, "shared text!");
  EXPECT_FALSE(Allocates([&] { original << "?"; })) << "the original is sole owner again";
  EXPECT_EQ(original, "shared text?");
  copy = original;
  copy = ZnString("other");
  EXPECT_FALSE(Allocates([&] { original << "."; })) << "assigning over the copy gave up its share";

  ZnString plain("plain");
  ZnString converted(plain);
  static_cast<unsigned short const *>(converted);
  EXPECT_FALSE(Allocates([&] { plain << "+"; })) << "converting the copy to a pointer gave up its share";
  ZnString compacted(converted);
  compacted.Compact();
  EXPECT_FALSE(Allocates([&] { converted << "-"; })) << "compacting the copy gave up its share";
  EXPECT_EQ(compacted, "plain");
  EXPECT_EQ(converted, "plain-");

  ZnString abc("abc");
  ZnString written(abc);
  written.SetCharacter(0, 'x');
  EXPECT_EQ(written, "xbc");
  EXPECT_EQ(written.MaxLength(), 3 + 32) << "the private copy gets slack";
  EXPECT_EQ(abc, "abc");
  ZnString replaced(abc);
  replaced.ReplaceString(ZnString("X"), 1, 1);
  EXPECT_EQ(replaced, "aXc");
  EXPECT_EQ(abc, "abc");
  ZnString prepended(abc);
  prepended >> "<" >> ZnString("[");
  EXPECT_EQ(prepended, "[<abc");
  EXPECT_EQ(abc, "abc");
}

TEST(ZnStringTest, SizeHints) {
  ZnString appended;
  appended << "hello";
  EXPECT_EQ(appended.MaxLength(), 5 + 32) << "append hint: the size of the addition";
  ZnString one;
  one << 'c';
  EXPECT_EQ(one.MaxLength(), 4 + 32);
  ZnString sized(ZnStringSize(100));
  EXPECT_TRUE(sized == NULL_STRING);
  EXPECT_EQ(sized.MaxLength(), 132);
  sized << std::string(100, 'x').c_str();
  EXPECT_EQ(sized.MaxLength(), 132) << "the room was used, no growth";
  ZnString left = ZnString("abcdef").LeftString(3);
  EXPECT_EQ(left.MaxLength(), 3) << "substrings have no slack";
  left << "d";
  EXPECT_EQ(left.MaxLength(), 4 + 32);
  ZnString untouched;
  EXPECT_FALSE(untouched.SetCharacter(0, 'x'));
  EXPECT_EQ(untouched.MaxLength(), 32) << "a write outside an empty string asks for no room";
}

TEST(ZnStringTest, AssignmentFromText) {
  ZnString text("first");
  ZnString shared(text);
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
  EXPECT_EQ(text, "wi");
  text = text;
  EXPECT_EQ(text, "wi");
}

TEST(ZnStringTest, NumbersInAndOut) {
  EXPECT_EQ(ZnString(-12), "-12");
  EXPECT_EQ(ZnString(4000000000u), "4000000000");
  EXPECT_EQ(ZnString(1.5f), "1.500000");
  EXPECT_EQ(ZnString(2.25), "2.250000");
  ZnString text;
  text = 7;
  EXPECT_EQ(text, "7");
  text = 0.5;
  EXPECT_EQ(text, "0.500000");
  EXPECT_EQ(static_cast<int>(ZnString("42abc")), 42);
  EXPECT_EQ(static_cast<long>(ZnString("42abc")), 42L);
  EXPECT_EQ(static_cast<unsigned int>(ZnString("17")), 17u);
  EXPECT_FLOAT_EQ(static_cast<float>(ZnString("2.5")), 2.5f);
  EXPECT_DOUBLE_EQ(static_cast<double>(ZnString("-0.25")), -0.25);
  EXPECT_EQ(static_cast<unsigned int>(ZnString("none")), 0u);
  EXPECT_EQ(static_cast<int>(ZnString()), 0);
}

TEST(ZnStringTest, ShiftOperatorsAppendAndPrepend) {
  ZnString x("x");
  x >> 5;
  EXPECT_EQ(x, "5x");
  x << 'y' << static_cast<unsigned short>(0x17A) << 1.5f;
  EXPECT_EQ(x, "5xyz1.500000");
  x >> "<" >> ZnString("[");
  x += "!";
  x += 3;
  EXPECT_EQ(x, "[<5xyz1.500000!3");
  ZnString base("a");
  EXPECT_EQ(base + ZnString("b"), "ab");
  EXPECT_EQ(base, "a");
  base << base;
  EXPECT_EQ(base, "aa");
}

TEST(ZnStringTest, ComparisonsReadUnsignedBytes) {
  ZnString b("b");
  EXPECT_EQ(b.Compare(ZnString("a")), 1);
  EXPECT_EQ(b.Compare(ZnString("zzz")), -1);
  EXPECT_EQ(b.Compare(ZnString("b")), 0);
  EXPECT_TRUE(b < ZnString("\xE9"));
  EXPECT_TRUE(b > "B");
  EXPECT_TRUE(b <= "b");
  EXPECT_TRUE(b >= "b");
  EXPECT_EQ(ZnString().Compare(ZnString("")), 0);
  EXPECT_EQ(ZnString("Hello").CaseCompare(ZnString("hELLO")), 0);
  EXPECT_LT(ZnString("abc").CaseCompare(ZnString("ABD")), 0);
  EXPECT_GT(ZnString("b").CaseCompare(ZnString("A")), 0);
  unsigned short const wide[] = {'b', 0};
  EXPECT_TRUE(b == wide);
  // Equality reads lengths where it can, but still ends a text at its first NUL.
  ZnString shared(b), cut("abXcd");
  cut.SetCharacter(2, '\0');
  EXPECT_TRUE(shared == b);
  EXPECT_TRUE(ZnString() == ZnString(""));
  EXPECT_TRUE(cut == ZnString("ab") && ZnString("ab") == cut);
  EXPECT_FALSE(cut != ZnString("ab"));
  EXPECT_TRUE(ZnString("ab") != ZnString("abc") && ZnString("ab") != ZnString("ac"));
  EXPECT_FALSE(cut == ZnString("abX"));
}

TEST(ZnStringTest, CharacterSearches) {
  ZnString text("abcabc");
  EXPECT_EQ(text.HaveCharacter('c', 0), 2);
  EXPECT_EQ(text.HaveCharacter('c', 3), 5);
  EXPECT_EQ(text.HaveCharacter('a', 6), -1) << "start equal to length";
  EXPECT_EQ(text.HaveCharacter('a', -1), -1);
  EXPECT_EQ(ZnString().HaveCharacter('a', 0), -1);
  EXPECT_EQ(text.ReverseHaveCharacter('a', 2), 3) << "the last at or after start";
  EXPECT_EQ(text.ReverseHaveCharacter('a', 4), -1);
  EXPECT_EQ(text.HaveCharactersInSet(ZnString("xc"), 0), 2);
  EXPECT_EQ(text.HaveCharactersInSet(ZnString("xyz"), 0), -1);
}

TEST(ZnStringTest, SubStringSearches) {
  ZnString text("Hello hello");
  EXPECT_EQ(text.ContainsSubString(ZnString("llo"), 0), 2);
  EXPECT_EQ(text.ContainsSubString(ZnString("llo"), 3), 8);
  EXPECT_EQ(text.ContainsSubString(ZnString(""), 0), -1);
  EXPECT_EQ(text.CaseContainsSubString(ZnString("HELLO"), 1), 6);
  EXPECT_EQ(text.ReverseContainsSubString(ZnString("llo"), 100), 8);
  EXPECT_EQ(text.ReverseContainsSubString(ZnString("llo"), 7), 2);
  EXPECT_EQ(text.ReverseCaseContainsSubString(ZnString("HE"), 5), 0);
  EXPECT_EQ(text.ReverseCaseContainsSubString(ZnString("HEL"), 5), -1) << "the wrong 'l' used up the right one";
  EXPECT_EQ(ZnString("abb").ReverseContainsSubString(ZnString("ab"), 2), -1)
      << "a failed partial match is not tried again";
  EXPECT_EQ(ZnString("ab").ReverseContainsSubString(ZnString("abc"), 1), -1);
  EXPECT_EQ(text.ReverseContainsSubString(ZnString("H"), -1), -1);
  EXPECT_EQ(text.ReverseContainsSubString(ZnString(""), 10), -1) << "an empty pattern never matches";
  EXPECT_EQ(text.ReverseCaseContainsSubString(ZnString(), 10), -1);
  ZnString cut("abXcd");
  cut.SetCharacter(2, '\0');
  EXPECT_EQ(cut.ContainsSubString(ZnString("cd"), 0), -1) << "the text ends at its first NUL";
  EXPECT_EQ(cut.ContainsSubString(ZnString("b"), 0), 1);
  EXPECT_EQ(ZnString("aaab").ContainsSubString(ZnString("aab"), 0), 1);
  EXPECT_EQ(ZnString("abc").ContainsSubString(ZnString("bcd"), 0), -1);
}

TEST(ZnStringTest, Cutting) {
  ZnString text("abcdef");
  EXPECT_EQ(text.MidString(-5, 2), "ab");
  EXPECT_EQ(text.MidString(2, 99), "cdef");
  EXPECT_TRUE(text.MidString(6, 1) == NULL_STRING);
  EXPECT_TRUE(text.MidString(1, 0) == NULL_STRING);
  EXPECT_EQ(text.LeftString(99), "abcdef");
  EXPECT_TRUE(text.LeftString(0) == NULL_STRING);
  EXPECT_EQ(text.RightString(2), "ef");
  EXPECT_EQ(text.RightString(20), "abcdef");
  EXPECT_EQ(text[1], 'b');
  EXPECT_EQ(text.GetCharacter(6), '\0');
  EXPECT_EQ(text[-1], '\0');
}

TEST(ZnStringTest, EditsInPlaceAndOnCopies) {
  ZnString text("abcdef");
  text.ReplaceString(ZnString("XY"), 2, 2);
  EXPECT_EQ(text, "abXYef");
  text.ReplaceString(ZnString("!"), 6, 0);
  EXPECT_EQ(text, "abXYef!") << "a start at the end appends";
  text.Truncate(2);
  text.Fill('-', 3);
  EXPECT_EQ(text, "ab---") << "Fill adds, it clears nothing";
  EXPECT_EQ(ZnString::MakeFill('=', 4), "====");
  EXPECT_EQ(ZnString::MakeFill('x', -5).MaxLength(), 28) << "the hint -4 keeps its slack";
  EXPECT_EQ(ZnString(ZnStringSize(-10)).MaxLength(), 22);
}

// Texts of length 0 and 1, white space only, and one letter at either end:
// where a bound that is one off shows. Each result's length is checked too.
TEST(ZnStringTest, CaseAndWhiteSpaceForms) {
  struct {
    char const *text, *noWhite, *noLeading, *noTrailing, *upper, *lower, *capitalized;
  } const cases[] = {
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
    SCOPED_TRACE(std::string("\"") + c.text + "\"");
    ZnString const text(c.text);
    expect(text.ToNoWhite(), c.noWhite);
    expect(text.ToNoLeadingWhite(), c.noLeading);
    expect(text.ToNoTrailingWhite(), c.noTrailing);
    expect(text.ToUpper(), c.upper);
    expect(text.ToLower(), c.lower);
    expect(text.ToCapitalize(), c.capitalized);
    expect(text, c.text);  // the To forms leave the value alone
  }
}

// Wide texts are measured up to their NUL, for the length and for the size
// hint of an append.
TEST(ZnStringTest, WideTextsOfEachLength) {
  unsigned short const wide[] = {'a', 'b', 'c', 0};
  for (int n = 0; n <= 3; ++n) {
    SCOPED_TRACE(n);
    unsigned short const *const text = wide + 3 - n;
    ZnString assigned;
    assigned = text;
    EXPECT_EQ(assigned.Length(), n);
    EXPECT_TRUE(assigned == text);
    ZnString appended;
    appended << text;
    EXPECT_EQ(appended.Length(), n);
    EXPECT_EQ(appended.MaxLength(), n + 32);
    EXPECT_EQ(ZnStringRef(text).GetLength(), n);
  }
}

TEST(ZnStringTest, PointerConversionsHandOutCopies) {
  ZnString text("value");
  char *writable = static_cast<char *>(text);
  writable[0] = 'V';
  EXPECT_EQ(text, "value") << "writing through the pointer never changes the string";
  unsigned short const *wide = static_cast<unsigned short const *>(text);
  EXPECT_EQ(wide[0], 'v');
  EXPECT_EQ(wide[5], 0);
  EXPECT_STREQ(static_cast<char const *>(ZnString()), "");
  EXPECT_FALSE(Allocates([] { static_cast<char const *>(ZnString("value")); }, 6)) << "the copy goes with the string";
  text.Compact();
  EXPECT_EQ(text, "value");
  char *narrow = text.DuplicateAscii();
  EXPECT_STREQ(narrow, "value");
  delete[] narrow;
}

TEST(ZnStringTest, FilesRoundTrip) {
  std::string const path = TempPath("round_trip");
  std::string windowsForm = path;
  for (char &c : windowsForm)
    if (c == '/') c = '\\';
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

  ZnString kept("kept");
  EXPECT_FALSE(kept.ReadFromFile(ZnString(TempPath("missing").c_str())));
  EXPECT_EQ(kept, "kept");
  EXPECT_FALSE(kept.WriteToFile(ZnString("/nonexistent-dir/x")));
}

TEST(ZnStringTest, StandardStreams) {
  std::ostringstream out;
  out << ZnString("ab") << ZnString() << ZnString("c");
  EXPECT_EQ(out.str(), "abc");
  std::istringstream in("first line\r\nsecond\n");
  ZnString line;
  in >> line;
  EXPECT_EQ(line, "first line");
  in >> line;
  EXPECT_EQ(line, "second");
  in >> line;
  EXPECT_TRUE(in.fail());
  EXPECT_TRUE(line == NULL_STRING) << "the read that fails still assigns its empty line";
  line = "kept";
  in >> line;
  EXPECT_EQ(line, "kept") << "a failed stream leaves the string alone";
}

}  // namespace

#include <znutil/text/ZnStringRef.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace {

// Reaches the protected slack so that tests can change growth.
struct PadScope : ZnStringRef {
  explicit PadScope(int pad) : saved(nNumPadChars) { nNumPadChars = pad; }
  ~PadScope() override { nNumPadChars = saved; }
  int saved;
};

// Each pair is {got, wanted}; the row number tells a failure apart.
void ExpectRows(std::initializer_list<std::pair<long, long>> rows) {
  int row = 0;
  for (auto const &r : rows) EXPECT_EQ(r.first, r.second) << "row " << row++;
}

TEST(ZnStringRefTest, ConstructorsSizeTheBuffer) {
  ZnStringRef empty, text("hello"), exact("abcdef", 3);
  ZnStringRef padded("abc", 2000);  // a buffer of the C heap, which has no room to spare
  EXPECT_STREQ(empty.GetInternal(), "");
  EXPECT_STREQ(exact.GetInternal(), "abc");
  EXPECT_STREQ(padded.GetInternal(), "abc");
  { ZnStringRef const dirty(std::string(100, 'x').c_str()); }  // leaves a written block of room's size
  ZnStringRef room(100);
  EXPECT_STREQ(room.GetInternal(), "");
  // Substrings have no slack; padding is with NULs up to the count.
  ExpectRows({{empty.GetMaxLength(), 32}, {empty.GetCount(), 0}, {text.GetLength(), 5}, {text.GetMaxLength(), 37},
              {exact.GetLength(), 3}, {exact.GetMaxLength(), 3}, {padded.GetLength(), 2000},
              {padded.GetInternal()[1999], 0}, {room.GetLength(), 0}, {room.GetMaxLength(), 132},
              {ZnStringRef(-1).GetMaxLength(), 31}, {ZnStringRef(-10).GetMaxLength(), 22},
              {ZnStringRef(-32).GetMaxLength(), 0}, {ZnStringRef(-33).GetMaxLength(), 0}});
  unsigned short const wide[] = {'w', 0x263A, 0xE9, 0};
  EXPECT_STREQ(ZnStringRef(wide).GetInternal(), "w?\xE9") << "Latin-1, one unit to one byte";
}

TEST(ZnStringRefTest, NullAndZeroSizedBuffers) {
  ZnStringRef none(static_cast<char const *>(nullptr)), other(static_cast<char const *>(nullptr)),
      third(static_cast<char const *>(nullptr));
  EXPECT_EQ(none.GetInternal(), nullptr);
  EXPECT_EQ(none.GetMaxLength(), 0);
  none.AllocBuffer(0);  // a zero max length always reallocates
  ASSERT_NE(none.GetInternal(), nullptr);
  other.ReallocBuffer(0);
  EXPECT_STREQ(other.GetInternal(), "");
  third.MakeCopy("");
  ZnStringRef ref("keep");
  ref.MakeCopy(static_cast<char const *>(nullptr));
  ref.MakeCopy(static_cast<unsigned short const *>(nullptr));
  EXPECT_STREQ(ref.GetInternal(), "keep") << "null pointers change nothing";
  ExpectRows({{none.GetMaxLength(), 32}, {other.GetMaxLength(), 32}, {third.GetMaxLength(), 32},
              {ref.GetMaxLength(), 36}});
}

TEST(ZnStringRefTest, GrowthIsAdditiveNeverShrinksAndReadsTheSlackEachTime) {
  ZnStringRef ref("abc");
  ref.Append("defg");
  EXPECT_EQ(ref.GetMaxLength(), 35) << "fits the slack: no growth";
  char *before = ref.GetInternal();
  ref.Append(std::string(40, 'x').c_str());
  EXPECT_NE(ref.GetInternal(), before);
  EXPECT_EQ(ref.GetMaxLength(), 47 + 32) << "exactly the needed size plus 32";
  ref.MakeCopy("short");
  ref.SetMaxLength(10);
  EXPECT_EQ(ref.GetMaxLength(), 79) << "a buffer never shrinks";
  ref.SetMaxLength(60);
  EXPECT_EQ(ref.GetMaxLength(), 92);
  EXPECT_STREQ(ref.GetInternal(), "short");

  ZnStringRef padded("ab");
  {
    PadScope pad(4);
    padded.Append(std::string(40, 'y').c_str());
    EXPECT_EQ(padded.GetMaxLength(), 42 + 4);
  }
  padded.Append(std::string(10, 'z').c_str());
  EXPECT_EQ(padded.GetMaxLength(), 52 + 32);

  // Filling the room exactly is no growth: the buffer stays.
  ZnStringRef full(3), exact("abcdef", 6);
  char *const room = full.GetInternal();
  full.SetMaxLength(3);
  full.AllocBuffer(35);
  EXPECT_EQ(full.GetInternal(), room);
  EXPECT_EQ(full.GetMaxLength(), 35);
  exact.ReplaceString(ZnStringRef("XY"), 0, 2);
  EXPECT_STREQ(exact.GetInternal(), "XYcdef");
  EXPECT_EQ(exact.GetMaxLength(), 6);
}

TEST(ZnStringRefTest, AppendPrependReplaceAndInternalAppend) {
  ZnStringRef ref("middle");
  ref.Prepend("<");
  ref.Append('>');
  ref.Append(static_cast<unsigned short>(0x141));  // low 8 bits, unconverted
  EXPECT_STREQ(ref.GetInternal(), "<middle>A");
  ref.ReplaceString(ZnStringRef("MID"), 1, 6);
  EXPECT_STREQ(ref.GetInternal(), "<MID>A");
  ref.ReplaceString(ZnStringRef("long text"), 1, 1);
  EXPECT_STREQ(ref.GetInternal(), "<long textID>A");
  ref.ReplaceString(ZnStringRef("x"), 0, 5);
  EXPECT_STREQ(ref.GetInternal(), "x textID>A");
  EXPECT_EQ(ref.GetLength(), 10);

  ZnStringRef exact("abcdef", 6), shortRef("abc");
  exact.ReplaceString(ZnStringRef("1234"), 2, 1);
  EXPECT_STREQ(exact.GetInternal(), "ab1234def");
  EXPECT_EQ(exact.GetMaxLength(), 6 - 1 + 4 + 32) << "grows from the old max length";
  shortRef.ReplaceString(ZnStringRef("XY"), 2, 50);
  EXPECT_STREQ(shortRef.GetInternal(), "abXY") << "a range beyond the text stays inside the buffer";
  shortRef.ReplaceString(ZnStringRef("_"), -3, 1);
  EXPECT_STREQ(shortRef.GetInternal(), "_bXY");

  std::string const longText(1100, 'a');
  ZnStringRef large(longText.c_str(), 1100);
  large.ReplaceString(ZnStringRef("bc"), 1, 1);  // outgrows a buffer of the C heap
  EXPECT_EQ(std::string(large.GetInternal()), "abc" + longText.substr(2));

  // Internal appends add at the first NUL and stop at the end of the buffer.
  ZnStringRef internal("ab", 6);
  internal.AppendToInternal("cd", 0);
  EXPECT_STREQ(internal.GetInternal(), "abcd");
  internal.AppendToInternal("efgh", 3);
  EXPECT_STREQ(internal.GetInternal(), "abcdef");
  EXPECT_EQ(internal.GetMaxLength(), 6);

  ZnStringRef self("abcdefghij", 10);  // appending itself is safe
  self.Append(self);
  self.Prepend(self.GetInternal() + 18);
  EXPECT_STREQ(self.GetInternal(), "ijabcdefghijabcdefghij");
}

TEST(ZnStringRefTest, TruncateAndSetCharacterStayInRange) {
  ZnStringRef ref("abcdef");
  EXPECT_FALSE(ref.SetCharacter(6, 'x') || ref.SetCharacter(-1, 'x'));
  EXPECT_TRUE(ref.SetCharacter(1, '\0'));
  EXPECT_EQ(ref.GetLength(), 6) << "storing a NUL does not change the length";
  ref.Truncate(6);
  EXPECT_EQ(ref.GetLength(), 6) << "truncating at the length does nothing";
  ref.Truncate(4);
  EXPECT_EQ(ref.GetLength(), 1) << "the length is measured again";
  ref.Truncate(10);
  ref.Truncate(-1);
  EXPECT_EQ(ref.GetLength(), 1);
}

TEST(ZnStringRefTest, ConvertToCStringEscapesAndCopiesBelongToTheCaller) {
  ZnStringRef ref("\r\x07\xE9q\"'\\\b\t\n");
  ref.ConvertToCString();
  EXPECT_STREQ(ref.GetInternal(), "\\r\\x007\\x0e9q\\\"\\'\\\\\\b\\t\\n");
  EXPECT_EQ(ref.GetMaxLength(), 5 + 5 + 1 + 2 * 7 + 32);

  ZnStringRef latin("A\xE9");
  std::unique_ptr<char[]> narrow(latin.DuplicateAscii());
  EXPECT_STREQ(narrow.get(), "A\xE9");
  std::unique_ptr<unsigned short[]> wide(latin.DuplicateUnicode());
  ExpectRows({{wide[0], 'A'}, {wide[1], 0xE9}, {wide[2], 0}});

  ZnStringRef text("text"), target;
  text.IncrementCount();
  text.IncrementCount();
  std::unique_ptr<ZnStringRef> copy(text.CopyOnWrite());
  EXPECT_STREQ(copy->GetInternal(), "text");
  // The copy's count starts at 0; the source count is not touched.
  ExpectRows({{copy->GetCount(), 0}, {copy->GetMaxLength(), 4 + 32}, {text.GetCount(), 2}, {text.DecrementCount(), 1}});
  target = text;
  EXPECT_STREQ(target.GetInternal(), "text");
  EXPECT_EQ(target.GetCount(), 1);
  EXPECT_NE(target.GetInternal(), text.GetInternal());
}

}  // namespace

#include <znutil/values/ZnVariant.h>

#include <climits>
#include <functional>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include <znutil/values/ZnVariantData.h>
#include <znutil/values/ZnVdBool.h>
#include <znutil/values/ZnVdInt.h>
#include <znutil/values/ZnVdString.h>

namespace {

std::string Text(ZnString const &text) { return static_cast<char const *>(text); }

// What each conversion of one variant gives.
struct ConversionRow {
  char const *name;
  std::function<ZnVariant()> make;
  int type;
  bool asBool;
  int asInt;
  unsigned int asUnsigned;
  float asFloat;
  double asDouble;
  char const *asText;
};

ConversionRow const kConversions[] = {
    {"nothing", [] { return ZnVariant(); }, 0, false, 0, 0, 0.0f, 0.0, ""},
    {"true", [] { return ZnVariant(true); }, 1, true, 1, 1, 0.0f, 0.0, ""},
    {"false", [] { return ZnVariant(false); }, 1, false, 0, 0, 0.0f, 0.0, ""},
    {"int -7", [] { return ZnVariant(-7); }, 2, true, -7, 0xFFFFFFF9u, -7.0f, -7.0, "-7"},
    {"int 0", [] { return ZnVariant(0); }, 2, false, 0, 0, 0.0f, 0.0, "0"},
    {"unsigned max", [] { return ZnVariant(0xFFFFFFFFu); }, 3, true, -1, 0xFFFFFFFFu, 4294967296.0f, 4294967295.0,
     "4294967295"},
    {"float 2.9", [] { return ZnVariant(2.9f); }, 4, false, 2, 2, 2.9f, static_cast<double>(2.9f), "2.900000"},
    {"float -2.9", [] { return ZnVariant(-2.9f); }, 4, false, -2, 0xFFFFFFFEu, -2.9f, static_cast<double>(-2.9f),
     "-2.900000"},
    {"double 1.5", [] { return ZnVariant(1.5); }, 5, false, 1, 1, 1.5f, 1.5, "1.500000"},
    {"double -2.9", [] { return ZnVariant(-2.9); }, 5, false, -2, 0xFFFFFFFEu, -2.9f, -2.9, "-2.900000"},
    {"double out of range", [] { return ZnVariant(1e20); }, 5, false, INT_MIN, 0x80000000u, 1e20f, 1e20,
     "100000000000000000000.000000"},
    {"text 12abc", [] { return ZnVariant(ZnString("12abc")); }, 6, false, 12, 12, 12.0f, 12.0, "12abc"},
    {"text true", [] { return ZnVariant(ZnString("true")); }, 6, false, 0, 0, 0.0f, 0.0, "true"},
    {"text 3.25", [] { return ZnVariant(ZnString("3.25")); }, 6, false, 3, 3, 3.25f, 3.25, "3.25"},
};

TEST(ZnVariantTest, ConversionMatrix) {
  for (ConversionRow const &row : kConversions) {
    SCOPED_TRACE(row.name);
    ZnVariant const value = row.make();
    EXPECT_EQ(value.Type(), row.type);
    EXPECT_EQ(static_cast<bool>(value), row.asBool);
    EXPECT_EQ(static_cast<int>(value), row.asInt);
    EXPECT_EQ(static_cast<unsigned int>(value), row.asUnsigned);
    EXPECT_EQ(static_cast<float>(value), row.asFloat);
    EXPECT_EQ(static_cast<double>(value), row.asDouble);
    EXPECT_EQ(Text(value.ToString()), row.asText);
  }
}

// Whether two variants compare equal, in the order given.
struct EqualityRow {
  char const *name;
  std::function<ZnVariant()> left, right;
  int equal;
};

EqualityRow const kEqualities[] = {
    {"nothing, nothing", [] { return ZnVariant(); }, [] { return ZnVariant(); }, 0},
    {"int, double", [] { return ZnVariant(1); }, [] { return ZnVariant(1.0); }, 0},
    {"int, bool", [] { return ZnVariant(1); }, [] { return ZnVariant(true); }, 0},
    {"bool, int", [] { return ZnVariant(true); }, [] { return ZnVariant(1); }, 0},
    {"int, unsigned", [] { return ZnVariant(-1); }, [] { return ZnVariant(0xFFFFFFFFu); }, 1},
    {"unsigned, int", [] { return ZnVariant(0xFFFFFFFFu); }, [] { return ZnVariant(-1); }, 1},
    {"int, other int", [] { return ZnVariant(2); }, [] { return ZnVariant(3); }, 0},
    {"float, double", [] { return ZnVariant(1.5f); }, [] { return ZnVariant(1.5); }, 1},
    {"double, float", [] { return ZnVariant(1.5); }, [] { return ZnVariant(1.5f); }, 1},
    // Each side converts the other to its own type: a float narrows the
    // double, a double widens the float.
    {"float, inexact double", [] { return ZnVariant(0.1f); }, [] { return ZnVariant(0.1); }, 1},
    {"inexact double, float", [] { return ZnVariant(0.1); }, [] { return ZnVariant(0.1f); }, 0},
    {"bool, bool", [] { return ZnVariant(true); }, [] { return ZnVariant(true); }, 1},
    {"bool, other bool", [] { return ZnVariant(true); }, [] { return ZnVariant(false); }, 0},
    {"text, text", [] { return ZnVariant(ZnString("abc")); }, [] { return ZnVariant(ZnString("abc")); }, 1},
    {"text, other text", [] { return ZnVariant(ZnString("abc")); }, [] { return ZnVariant(ZnString("abd")); }, 0},
    {"text, int", [] { return ZnVariant(ZnString("1")); }, [] { return ZnVariant(1); }, 0},
};

TEST(ZnVariantTest, EqualityNeedsLikeTypesThenConvertsTheRightSide) {
  for (EqualityRow const &row : kEqualities) {
    SCOPED_TRACE(row.name);
    ZnVariant const left = row.left(), right = row.right();
    EXPECT_EQ(left == right, row.equal);
    EXPECT_EQ(left != right, !row.equal);
  }
  ZnVariant const nothing;
  EXPECT_EQ(nothing == nothing, 0);  // not even equal to itself
}

TEST(ZnVariantTest, TypeQueries) {
  ZnVariant const b(true), i(1), u(1u), f(1.0f), d(1.0), s(ZnString("x")), n;
  EXPECT_TRUE(b.IsBool());
  EXPECT_FALSE(b.IsNumber());
  EXPECT_TRUE(i.IsInt() && u.IsInt() && !f.IsInt());
  EXPECT_TRUE(f.IsFloat() && d.IsFloat() && !i.IsFloat());
  EXPECT_TRUE(i.IsNumber() && u.IsNumber() && f.IsNumber() && d.IsNumber());
  EXPECT_TRUE(s.IsString() && !s.IsNumber());
  EXPECT_FALSE(n.IsBool() || n.IsNumber() || n.IsString());
  EXPECT_TRUE(i.IsLike(u) && f.IsLike(d) && n.IsLike(ZnVariant()));
  EXPECT_FALSE(b.IsLike(i) || i.IsLike(f) || s.IsLike(n));
}

TEST(ZnVariantTest, AssignmentKeepsOrReplacesThePayload) {
  ZnVariant value(ZnString("text"));
  value = 5;
  EXPECT_EQ(value.Type(), 2);
  EXPECT_EQ(static_cast<int>(value), 5);
  value = 6;
  EXPECT_EQ(static_cast<int>(value), 6);
  value = 2.5f;
  EXPECT_EQ(value.Type(), 4);
  value = 7u;
  value = true;
  value = 0.5;
  value = ZnString("again");
  EXPECT_EQ(value.Type(), 6);
  EXPECT_EQ(Text(value.ToString()), "again");

  ZnVariant copy(value);
  value = 1;
  EXPECT_EQ(Text(copy.ToString()), "again");
  ZnVariant &alias = copy;
  copy = alias;
  EXPECT_EQ(Text(copy.ToString()), "again");
  copy = value;
  EXPECT_EQ(copy.Type(), 2);
}

TEST(ZnVariantTest, PayloadsAssignTheirOwnTypeInPlace) {
  auto const owned = [](variant_namespace::ZnVariantData *data) {
    return std::unique_ptr<variant_namespace::ZnVariantData>(data);
  };
  variant_namespace::ZnVdInt number(1);
  EXPECT_EQ(number.Assign(2), &number);
  EXPECT_EQ(static_cast<int>(number), 2);
  auto const text = owned(number.Assign(ZnString("x")));
  EXPECT_NE(text.get(), &number);
  EXPECT_EQ(text->Type(), 6);
  EXPECT_EQ(static_cast<int>(number), 2);

  variant_namespace::ZnVdString words(ZnString("a"));
  EXPECT_EQ(words.Assign(ZnString("b")), &words);
  auto const flag = owned(words.Assign(true));
  EXPECT_EQ(flag->Type(), 1);
  auto const copy = owned(words.MakeCopy());
  EXPECT_EQ(Text(copy->ToString()), "b");

  variant_namespace::ZnVariantData empty;
  auto const emptyCopy = owned(empty.MakeCopy());
  EXPECT_EQ(emptyCopy->Type(), 0);
  EXPECT_EQ(empty.Compare(emptyCopy.get()), 0);
}

}  // namespace

namespace {

TEST(ZnVariantTest, StringFromAVariantSharesItsText) {
  ZnVariant const number(42);
  EXPECT_EQ(ZnString(number), number.ToString());
  ZnVariant const text(ZnString("shared"));
  EXPECT_EQ(ZnString(text), "shared");
  EXPECT_TRUE(ZnString(ZnVariant()) == NULL_STRING);
}

}  // namespace

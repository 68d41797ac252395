#include <znutil/values/ZnVariant.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <new>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/values/ZnVariantData.h>
#include <znutil/values/ZnVdInt.h>

#include "StreamTestSupport.h"

namespace {

using variant_namespace::ZnVariantData;
using znutil_test::Text;

// The type of `variant` after each assignment of `values`, in order.
template <typename... T>
std::vector<int> TypesAfter(ZnVariant &variant, T const &...values) {
  return {(variant = values, variant.Type())...};
}

TEST(ZnVariantTest, ConversionMatrix) {
  struct Row {
    ZnVariant value;
    int type;
    bool asBool;
    int asInt;
    unsigned int asUnsigned;
    float asFloat;
    double asDouble;
    char const *asText;
  } const rows[] = {
      {ZnVariant(), 0, false, 0, 0, 0.0f, 0.0, ""},
      {ZnVariant(true), 1, true, 1, 1, 0.0f, 0.0, ""},
      {ZnVariant(false), 1, false, 0, 0, 0.0f, 0.0, ""},
      {ZnVariant(-7), 2, true, -7, 0xFFFFFFF9u, -7.0f, -7.0, "-7"},
      {ZnVariant(0), 2, false, 0, 0, 0.0f, 0.0, "0"},
      {ZnVariant(0xFFFFFFFFu), 3, true, -1, 0xFFFFFFFFu, 4294967296.0f, 4294967295.0, "4294967295"},
      {ZnVariant(2.9f), 4, false, 2, 2, 2.9f, static_cast<double>(2.9f), "2.900000"},
      {ZnVariant(-2.9f), 4, false, -2, 0xFFFFFFFEu, -2.9f, static_cast<double>(-2.9f), "-2.900000"},
      {ZnVariant(1.5), 5, false, 1, 1, 1.5f, 1.5, "1.500000"},
      {ZnVariant(-2.9), 5, false, -2, 0xFFFFFFFEu, -2.9f, -2.9, "-2.900000"},
      {ZnVariant(1e20), 5, false, INT_MIN, 0x80000000u, 1e20f, 1e20, "100000000000000000000.000000"},
      {ZnVariant(ZnString("12abc")), 6, false, 12, 12, 12.0f, 12.0, "12abc"},
      {ZnVariant(ZnString("true")), 6, false, 0, 0, 0.0f, 0.0, "true"},
      {ZnVariant(ZnString("3.25")), 6, false, 3, 3, 3.25f, 3.25, "3.25"},
  };
  for (Row const &row : rows) {
    SCOPED_TRACE(testing::Message() << "type " << row.type << ", text " << row.asText);
    ZnVariant const &value = row.value;
    EXPECT_EQ(value.Type(), row.type);
    EXPECT_EQ(static_cast<bool>(value), row.asBool);
    EXPECT_EQ(static_cast<int>(value), row.asInt);
    EXPECT_EQ(static_cast<unsigned int>(value), row.asUnsigned);
    EXPECT_EQ(static_cast<float>(value), row.asFloat);
    EXPECT_EQ(static_cast<double>(value), row.asDouble);
    EXPECT_EQ(Text(value.ToString()) + "|" + Text(ZnString(value)), std::string(row.asText) + "|" + row.asText);
    int const t = row.type;
    EXPECT_EQ((std::vector<bool>{value.IsBool(), value.IsInt(), value.IsFloat(), value.IsNumber(), value.IsString()}),
              (std::vector<bool>{t == 1, t == 2 || t == 3, t == 4 || t == 5, t >= 2 && t <= 5, t == 6}));
  }
}

TEST(ZnVariantTest, EqualityNeedsLikeTypesThenConvertsTheRightSide) {
  struct Row {
    ZnVariant left, right;
    bool like;
    int equal;
  } const rows[] = {
      {ZnVariant(), ZnVariant(), true, 0},  // nothing equals nothing
      {ZnVariant(1), ZnVariant(1.0), false, 0},
      {ZnVariant(1), ZnVariant(true), false, 0},
      {ZnVariant(true), ZnVariant(1), false, 0},
      {ZnVariant(-1), ZnVariant(0xFFFFFFFFu), true, 1},
      {ZnVariant(0xFFFFFFFFu), ZnVariant(-1), true, 1},
      {ZnVariant(2), ZnVariant(3), true, 0},
      {ZnVariant(1.5), ZnVariant(1.5f), true, 1},
      // A float narrows an inexact double; a double widens the float.
      {ZnVariant(0.1f), ZnVariant(0.1), true, 1},
      {ZnVariant(0.1), ZnVariant(0.1f), true, 0},
      {ZnVariant(true), ZnVariant(true), true, 1},
      {ZnVariant(true), ZnVariant(false), true, 0},
      {ZnVariant(ZnString("abc")), ZnVariant(ZnString("abc")), true, 1},
      {ZnVariant(ZnString("abc")), ZnVariant(ZnString("abd")), true, 0},
      {ZnVariant(ZnString("1")), ZnVariant(1), false, 0},
      {ZnVariant(ZnString()), ZnVariant(), false, 0},
  };
  for (Row const &row : rows) {
    SCOPED_TRACE(Text(row.left.ToString()) + " vs " + Text(row.right.ToString()));
    EXPECT_EQ(row.left.IsLike(row.right), row.like);
    EXPECT_EQ(row.left == row.right, row.equal);
    EXPECT_EQ(row.left != row.right, !row.equal);
  }
  ZnVariant const nothing;
  EXPECT_EQ(nothing == nothing, 0);  // not even equal to itself
}

TEST(ZnVariantTest, AssignmentKeepsOrReplacesThePayload) {
  ZnVariant value(ZnString("text"));
  EXPECT_EQ(TypesAfter(value, 5, 6, 2.5f, 7u, true, 0.5, ZnString("again")), (std::vector<int>{2, 2, 4, 3, 1, 5, 6}));
  ZnVariant copy(value), &alias = copy;
  value = 1;
  copy = alias;
  EXPECT_EQ(Text(copy.ToString()), "again");
  copy = value;
  value = 2;
  EXPECT_TRUE(static_cast<int>(copy) == 1 && static_cast<int>(value) == 2);
}

TEST(ZnVariantTest, DestructionMarksThePayloadPointer) {
  // The payload pointer is the last member, behind the virtual table pointer.
  static_assert(sizeof(ZnVariant) == 2 * sizeof(void *), "layout this test reads");
  alignas(ZnVariant) unsigned char storage[sizeof(ZnVariant)];
  ZnVariant *variant = new (storage) ZnVariant(ZnString("payload"));
  variant->~ZnVariant();
  std::uintptr_t left;
  std::memcpy(&left, storage + sizeof(void *), sizeof left);
  EXPECT_EQ(left, std::uintptr_t{0xDEADBEEF});
}

TEST(ZnVariantTest, PayloadsAssignTheirOwnTypeInPlace) {
  variant_namespace::ZnVdInt number(1);
  EXPECT_EQ(number.Assign(2), &number);
  std::unique_ptr<ZnVariantData> const text(number.Assign(ZnString("x")));
  EXPECT_EQ(static_cast<int>(number), 2);
  std::unique_ptr<ZnVariantData> const copy(text->MakeCopy()), empty(ZnVariantData().MakeCopy());
  EXPECT_EQ(Text(copy->ToString()), "x");
  EXPECT_EQ(empty->Type(), 0);
}

}  // namespace

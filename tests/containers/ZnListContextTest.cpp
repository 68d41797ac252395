#include <znutil/containers/ZnListContext.h>

#include <gtest/gtest.h>

namespace {

int destroyed = 0;

class CountedData : public ZnListContextData {
 public:
  ~CountedData() override { ++destroyed; }
};

// The count of data, read through AddRef and Release alone.
int CountOf(ZnListContextData *data) {
  data->AddRef();
  return data->Release() - 1;
}

int marker = 0;

TEST(ZnListContextTest, ConstructorsAndComparisonsLookAtTheDataOnly) {
  ZnListContext none;
  ZnListContext null(NULL_CONTEXT);
  ZnListContext at(&marker);
  EXPECT_TRUE(none == NULL_CONTEXT);
  EXPECT_TRUE(null == NULL_CONTEXT);
  EXPECT_EQ(null.Key(), nullptr);
  EXPECT_EQ(null.OwnedData(), nullptr);
  EXPECT_TRUE(at != NULL_CONTEXT);
  EXPECT_TRUE(at == &marker);
  EXPECT_EQ(at.Key(), nullptr);

  ZnListContext keyed(&marker);
  keyed.SetKey(&destroyed);
  EXPECT_TRUE(keyed == at) << "the key does not count";
  EXPECT_FALSE(keyed != at);
  keyed.SetData(nullptr);
  EXPECT_TRUE(keyed == NULL_CONTEXT);
  EXPECT_TRUE(keyed == none);
  EXPECT_TRUE(keyed != &marker);
}

TEST(ZnListContextTest, ReleaseReturnsTheCountFromBeforeAndDestroysAtZero) {
  destroyed = 0;
  auto *data = new CountedData;
  data->AddRef();
  EXPECT_EQ(data->Release(), 2);
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(data->Release(), 1);
  EXPECT_EQ(destroyed, 1);
}

TEST(ZnListContextTest, CopiesShareOwnedDataUntilTheLastOneGoes) {
  destroyed = 0;
  auto *data = new CountedData;
  {
    ZnListContext first(&marker);
    first.SetKey(&marker);
    first.SetOwnedData(data);
    EXPECT_EQ(data->Release(), 2) << "SetOwnedData adds the context's own reference";
    {
      ZnListContext copy(first);
      EXPECT_EQ(copy.OwnedData(), data);
      EXPECT_EQ(copy.Key(), &marker);
      EXPECT_EQ(CountOf(data), 2);
      ZnListContext assigned;
      assigned = copy;
      EXPECT_EQ(CountOf(data), 3);
      assigned = assigned;
      EXPECT_EQ(CountOf(data), 3) << "self-assignment keeps the count";
    }
    EXPECT_EQ(CountOf(data), 1);
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 1);
}

TEST(ZnListContextTest, ReplacingOwnedDataReleasesTheOldOne) {
  destroyed = 0;
  ZnListContext context;
  auto *first = new CountedData;
  context.SetOwnedData(first);
  first->Release();
  auto *second = new CountedData;
  ZnListContext other;
  other.SetOwnedData(second);
  second->Release();

  context = other;
  EXPECT_EQ(destroyed, 1) << "assignment released the first data";
  EXPECT_EQ(context.OwnedData(), second);
  context.SetOwnedData(second);
  EXPECT_EQ(CountOf(second), 2) << "setting the same data again keeps the count";
  context.SetOwnedData(nullptr);
  other.SetOwnedData(nullptr);
  EXPECT_EQ(destroyed, 2);
}

}  // namespace

#include <znutil/containers/ZnListContext.h>

#include <gtest/gtest.h>

#include "ContextHelpers.h"

namespace {

int destroyed = 0;
int marker = 0;

class CountedData : public ZnListContextData {
 public:
  ~CountedData() override { ++destroyed; }
};

TEST(ZnListContextTest, ComparisonsLookAtTheDataOnly) {
  ZnListContext null(NULL_CONTEXT), at(&marker), keyed(&marker);
  EXPECT_TRUE(ZnListContext() == NULL_CONTEXT);
  EXPECT_TRUE(null == NULL_CONTEXT && null.Key() == nullptr && null.OwnedData() == nullptr);
  EXPECT_TRUE(at != NULL_CONTEXT && at == &marker);
  keyed.SetKey(&destroyed);
  EXPECT_TRUE(keyed == at && !(keyed != at)) << "the key does not count";
  keyed.SetData(nullptr);
  EXPECT_TRUE(keyed == null && keyed != &marker);
}

TEST(ZnListContextTest, OwnedDataIsSharedByCopiesAndDestroyedWithTheLastOne) {
  destroyed = 0;
  auto *data = new CountedData;
  auto *other = new CountedData;
  ZnListContext first(&marker);
  first.SetKey(&marker);
  first.SetOwnedData(data);
  EXPECT_EQ(data->Release(), 2) << "Release returns the count from before; SetOwnedData added one";
  {
    ZnListContext copy(first), assigned;
    EXPECT_EQ(copy.Key(), &marker);
    assigned.SetOwnedData(other);
    other->Release();
    assigned = copy;
    EXPECT_EQ(destroyed, 1) << "assignment released the old data";
    EXPECT_EQ(assigned.OwnedData(), data);
    assigned = assigned;
    first.SetOwnedData(data);
    EXPECT_EQ(CountOf(data), 3) << "self-assignment and setting the same data keep the count";
  }
  EXPECT_EQ(CountOf(data), 1);
  {
    ZnListContext last(first);
    first.SetOwnedData(nullptr);
    EXPECT_EQ(CountOf(data), 1);
  }
  EXPECT_EQ(destroyed, 2) << "the last context destroys it";
}

}  // namespace

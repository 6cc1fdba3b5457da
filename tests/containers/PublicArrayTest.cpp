#include <zqcore/public/Float64Array.h>
#include <zqcore/public/Int64Array.h>
#include <zqcore/public/StringArray.h>

#include <gtest/gtest.h>

namespace {

using namespace Velmora::Tessara::ZQ::Core;

TEST(PublicArrays, ClearAndReserveKeepCapacityAndElements) {
  Float64Array values(4);
  values.Set(0, 2.5);
  values.Clear();
  EXPECT_TRUE(values.IsEmpty() && values.IsInitialized());
  EXPECT_EQ(values.Capacity(), 4);
  EXPECT_EQ(values.Get(0), 2.5);
  values.Reserve(10);
  EXPECT_EQ(values.Capacity(), 10);
  EXPECT_EQ(values.Size(), 0);
  values.Reset();
  EXPECT_FALSE(values.IsInitialized());
}

TEST(PublicArrays, CopiesAreDeepAndKeepTheCapacity) {
  Int64Array source(3);
  source.Set(2, -7);
  source.Resize(2);
  Int64Array copy(source);
  EXPECT_EQ(copy.Capacity(), 3);
  EXPECT_EQ(copy.Get(2), -7);
  copy.Set(2, 1);
  EXPECT_EQ(source.Get(2), -7);
  Int64Array &alias = source;
  source = alias;
  EXPECT_EQ(source.Get(2), -7);
}

TEST(PublicArrays, StringArrayHandsOutIndependentStrings) {
  StringArray names(2);
  EXPECT_STREQ(names.Get(1).c_str(), "");
  names.Set(0, "first");
  String got = names.Get(0);
  got += "!";
  StringArray assigned;
  assigned = names;
  assigned.Set(0, "other");
  EXPECT_STREQ(names.Get(0).c_str(), "first");
  EXPECT_STREQ(assigned.Get(0).c_str(), "other");
}

} // namespace

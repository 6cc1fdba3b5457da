#include <zqcore/containers/ZQMapNativeTypes.h>
#include <zqcore/containers/ZQMapNativeValueType.h>
#include <zqcore/containers/ZQSetObjectType.h>
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using namespace Velmora::Tessara::ZQ::Core;

TEST(MapsAndSets, StringKeysIterateInByteOrder) {
  ZQMapNativeValueType<ZQString, long long> counts;
  for (char const *key : {"a", "\xC3\xA9t\xC3\xA9", "Z", "ab", "", "B", "a"})
    ++counts[key];
  std::string order;
  for (auto const &[key, count] : counts)
    order += "[" + std::string(key.c_str()) + "]" + std::to_string(count);
  EXPECT_EQ(order, "[]1[B]1[Z]1[a]2[ab]1[\xC3\xA9t\xC3\xA9]1");
}

TEST(MapsAndSets, ResetAndClearThroughTheBaseEmptyTheContainer) {
  ZQSetObjectType<ZQString> set{"b", "B", "b"};
  EXPECT_EQ(set.size(), 2u);
  static_cast<ZQSet<ZQString> &>(set).Clear();
  EXPECT_TRUE(set.empty());

  std::unique_ptr<ZQMap<int, int>> map(new ZQMapNativeTypes<int, int>{{2, 20}, {1, 10}});
  map->Reset();
  EXPECT_TRUE(map->empty());
}

} // namespace

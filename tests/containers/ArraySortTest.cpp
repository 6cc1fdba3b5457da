#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace Velmora::Tessara::ZQ::Core;

enum class Order { Random, FewDistinct, Sorted, Reversed };

// Values drawn as integers, so that every element type can hold them exactly.
std::vector<long long> MakeKeys(long long n, Order order, std::mt19937_64 &random) {
  std::vector<long long> keys(static_cast<std::size_t>(n));
  long long const range = order == Order::FewDistinct ? 4 : 1000000;
  for (long long &key : keys)
    key = static_cast<long long>(random() % static_cast<unsigned long long>(range));
  if (order == Order::Sorted)
    std::sort(keys.begin(), keys.end());
  if (order == Order::Reversed)
    std::sort(keys.begin(), keys.end(), std::greater<>());
  return keys;
}

double AsElement(long long key, double) { return static_cast<double>(key) * 0.25; }
// Short texts of varying length with a shared prefix now and then, as keys in files are.
ZQString AsElement(long long key, ZQString const &) {
  std::string text = "k" + std::to_string(key * 7919 % 1000003);
  text.resize(1 + static_cast<std::size_t>(key % 11), 'x');
  return ZQString(text.c_str());
}

// Sorts [start, end) of an array built from `keys` and compares the whole array with
// std::sort applied to the same range of the same values.
template <typename T, typename Array>
void ExpectSortsLikeStdSort(std::vector<long long> const &keys, long long start, long long end, bool descending) {
  Array array;
  array.Resize(static_cast<long long>(keys.size()));
  std::vector<T> expected;
  for (std::size_t p = 0; p < keys.size(); ++p) {
    expected.push_back(AsElement(keys[p], T()));
    array(static_cast<long long>(p)) = expected.back();
  }
  std::sort(expected.begin() + start, expected.begin() + end,
            [descending](T const &x, T const &y) { return descending ? y < x : x < y; });
  array.Sort(start, end, descending);
  auto const differ = std::mismatch(expected.begin(), expected.end(), array.GetData()).first;
  EXPECT_TRUE(differ == expected.end()) << "n=" << keys.size() << " [" << start << ", " << end << ") descending "
                                        << descending << " at " << differ - expected.begin();
}

// Every size up to 64 (sizes 9 and up partition; 8 and below go to insertion sort) and
// some larger ones, in every order of input: the whole array, and a range inside it.
template <typename T, typename Array> void ExpectSortsLikeStdSortAtManySizes(std::vector<long long> larger) {
  std::vector<long long> sizes(65);
  std::iota(sizes.begin(), sizes.end(), 0);
  sizes.insert(sizes.end(), larger.begin(), larger.end());
  std::mt19937_64 random(12345);
  for (Order order : {Order::Random, Order::FewDistinct, Order::Sorted, Order::Reversed}) {
    for (long long n : sizes) {
      std::vector<long long> const keys = MakeKeys(n, order, random);
      for (bool descending : {false, true}) {
        ExpectSortsLikeStdSort<T, Array>(keys, 0, n, descending);
        ExpectSortsLikeStdSort<T, Array>(keys, n / 4, n - n / 4, descending);
      }
    }
  }
}

TEST(ArraySort, NumbersMatchStdSort) {
  ExpectSortsLikeStdSortAtManySizes<double, ZQArrayNativeType<double, long long>>({100, 257, 1000, 4097, 65537});
}

TEST(ArraySort, StringsMatchStdSortInByteOrder) {
  ExpectSortsLikeStdSortAtManySizes<ZQString, ZQArrayObjectType<ZQString, long long>>({100, 1000, 4097});
}

TEST(ArraySort, WholeSortCoversTheUsedSizeAndRangesAreClamped) {
  ZQArrayNativeType<int, long long> array;
  array.Resize(12);
  for (int p = 0; p < 12; ++p)
    array(p) = 12 - p;
  array.Resize(10); // elements 10 and 11 are outside the used range
  array.Sort(false);
  EXPECT_EQ(array(0), 3);
  EXPECT_EQ(array.GetData()[10], 2);

  array.Sort(-5, 100, true);
  EXPECT_EQ(array(0), 12);
  EXPECT_EQ(array.GetData()[11], 1);

  ZQArrayNativeType<int, long long>().Sort(true); // rank 0: nothing to do, and not fatal
}

} // namespace

#include <zqcore/containers/ZQArrayForwardIterator.h>
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace Velmora::Tessara::ZQ::Core;
using Ints = ZQArrayNativeType<int, long long>;
using Names = ZQArrayObjectType<ZQString, long long>;

// Each flat position of the block holds its own index.
void FillFlat(Ints &array) {
  for (long long p = 0; p < array.Capacity(); ++p)
    array(p) = static_cast<int>(p);
}

// "rank: sizes / capacities" over dimensions 0 to 2, so that one check covers the whole shape.
std::string Shape(ZQArrayBase<long long> const &array) {
  std::string sizes, capacities;
  for (long long d = 0; d < 3; ++d) {
    sizes += " " + std::to_string(array.GetSize(d));
    capacities += " " + std::to_string(array.GetCapacity(d));
  }
  return std::to_string(array.GetRank()) + ":" + sizes + " /" + capacities;
}

using Walker = ZQArrayForwardIterator<int const, long long>;

std::vector<int> Walk(Walker it) {
  std::vector<int> seen;
  for (; it.IsValid(); ++it)
    seen.push_back(*it);
  return seen;
}

TEST(ArrayShape, RankOneGrowsToExactlyTheRequestAndShrinksInPlace) {
  Ints array;
  EXPECT_FALSE(array.IsInitialized());
  array.Resize(0); // initialized and empty, without a block
  EXPECT_EQ(Shape(array), "1: 0 0 0 / 0 0 0");
  EXPECT_EQ(array.GetData(), nullptr);
  EXPECT_TRUE(array.IsEmpty() && array.IsInitialized());
  array.Resize(10);
  FillFlat(array);
  int const *block = array.GetData();
  array.Resize(5);
  EXPECT_EQ(Shape(array), "1: 5 0 0 / 10 0 0");
  EXPECT_EQ(array.GetData(), block);
  array.Resize(12); // copies the whole old capacity, not only the used part
  EXPECT_EQ(Shape(array), "1: 12 0 0 / 12 0 0");
  for (int p = 0; p < 10; ++p)
    EXPECT_EQ(array(p), p);
}

// Positions follow the capacities; a growth moves each used element to the same indexes
// under the new capacities.
TEST(ArrayShape, StridesFollowCapacitiesAndGrowthKeepsIndexes) {
  Ints plane;
  plane.Resize(2, 5);
  plane.Resize(2, 3);
  EXPECT_EQ(Shape(plane), "2: 2 3 0 / 2 5 0");
  for (int p = 0; p < 6; ++p)
    plane(p / 3, p % 3) = p;
  plane.Resize(4, 3);
  EXPECT_EQ(Shape(plane), "2: 4 3 0 / 4 3 0");
  for (int p = 0; p < 6; ++p)
    EXPECT_EQ(plane(p / 3, p % 3), p);

  Ints cube;
  cube.Resize(2, 3, 4);
  cube.Resize(2, 2, 2);
  EXPECT_EQ(cube.GetSize(-1), 0); // dimensions outside 0 to 2 read as 0
  EXPECT_EQ(cube.GetCapacity(3), 0);
  for (int p = 0; p < 8; ++p)
    cube(p / 4, p / 2 % 2, p % 2) = p;
  cube.Resize(3, 3, 3);
  for (int p = 0; p < 8; ++p)
    EXPECT_EQ(cube(p / 4, p / 2 % 2, p % 2), p);
}

TEST(ArrayShape, ChangeOfRankKeepsFlatContentsAndRoom) {
  Ints array;
  array.Resize(4);
  FillFlat(array);
  array.Resize(2, 3); // more room: a new block with the old contents first
  EXPECT_EQ(Shape(array), "2: 2 3 0 / 2 3 0");
  EXPECT_EQ(array(1, 0), 3);
  int const *block = array.GetData();
  array.Resize(3); // a kept block loses no room
  EXPECT_EQ(Shape(array), "1: 3 0 0 / 6 0 0");
  EXPECT_EQ(array(3), 3);
  array.Resize(2, 0); // an extent of 0 counts as 1 when dividing the room
  EXPECT_EQ(Shape(array), "2: 2 0 0 / 6 0 0");
  EXPECT_EQ(array.GetData(), block);

  Ints roomy;
  roomy.Resize(13);
  roomy.Resize(1, 2, 3); // the first dimension takes what the others leave: 13 / 6
  EXPECT_EQ(Shape(roomy), "3: 1 2 3 / 2 2 3");
}

TEST(ArrayShape, ReserveKeepsSizesAndDimensionFormsUseTheOtherSizes) {
  Ints array;
  array.ResizeDim(1, 5);
  EXPECT_EQ(Shape(array), "2: 0 5 0 / 0 5 0");
  array.ResizeDim(0, 2);
  EXPECT_EQ(Shape(array), "2: 2 5 0 / 2 5 0");
  array(1, 4) = 14;
  array.ReserveDim(0, 6);
  EXPECT_EQ(Shape(array), "2: 2 5 0 / 6 5 0");
  EXPECT_EQ(array(1, 4), 14);
}

TEST(ArrayShape, ResizeLikeTakesSizesAndOptionallyCapacities) {
  Ints model;
  model.Reserve(4, 6); // sets the rank of an array that had none
  EXPECT_EQ(Shape(model), "2: 0 0 0 / 4 6 0");
  model.Resize(2, 3);
  Ints array;
  array.ResizeLike(model, false);
  EXPECT_EQ(Shape(array), "2: 2 3 0 / 2 3 0");
  array.ResizeLike(model, true);
  EXPECT_EQ(Shape(array), "2: 2 3 0 / 4 6 0");
  array.ResizeLike(Ints(), true);
  EXPECT_EQ(Shape(array), "0: 0 0 0 / 0 0 0");
  EXPECT_EQ(array.GetData(), nullptr);
}

// Strings, so that a growth which moved elements out of a shared block would show.
TEST(ArraySharing, VirtualCopySharesTheBlockUntilOneGrows) {
  Names first;
  first.Resize(4);
  for (long long p = 0; p < 4; ++p)
    first(p) = std::to_string(p).c_str();
  Names second;
  second.Copy(static_cast<ZQArrayBase<long long> const &>(first));
  EXPECT_EQ(second.GetData(), first.GetData());
  second(0) = "shared";
  EXPECT_EQ(first(0), "shared");

  second.Resize(8); // a growing array copies into a block of its own
  second(1) = "own";
  EXPECT_EQ(first(1), "1");
  EXPECT_EQ(second(3), "3");

  Names third;
  third.Copy(first);
  first.Reset(); // the block lives on in `third`
  third.Copy(third);
  EXPECT_EQ(third(0), "shared");
}

TEST(ArraySharing, CopyConstructionIsDeepAndKeepsGaps) {
  Ints source;
  source.Resize(2, 3);
  FillFlat(source);
  source.Resize(2, 2);
  Ints copy(source);
  EXPECT_EQ(Shape(copy), "2: 2 2 0 / 2 3 0");
  EXPECT_EQ(copy.GetData()[2], 2); // a gap element travels too
  copy(0, 0) = 99;
  EXPECT_EQ(source(0, 0), 0);
}

TEST(ArrayAppend, GrowsBySixteenAndKeepsEarlierElements) {
  ZQArrayNativeType<double, long long> array;
  array.Append(0.0);
  EXPECT_EQ(Shape(array), "1: 1 0 0 / 16 0 0");
  for (int n = 1; n < 17; ++n)
    array.Append(0.5 * n);
  EXPECT_EQ(Shape(array), "1: 17 0 0 / 32 0 0");
  for (int n = 0; n < 17; ++n)
    EXPECT_EQ(array(n), 0.5 * n);
  array.Append(array(3)); // legal while there is room
  EXPECT_EQ(array(17), 1.5);
}

TEST(ArrayIterator, VisitsUsedElementsInStorageOrderAndSkipsGaps) {
  Ints array;
  array.Resize(2, 2, 3);
  FillFlat(array);
  array.Resize(2, 1, 2);
  EXPECT_EQ(Walk(Walker(array)), (std::vector<int>{0, 1, 6, 7}));
  array.Resize(2, 0, 2); // the block is there, but no element is in use
  EXPECT_TRUE(Walk(Walker(array)).empty());
  array.Resize(3, 4);
  array.Resize(2, 2);
  Walker const plane(array); // keeps the shape it was made with
  array.Resize(3);
  EXPECT_EQ(Walk(plane), (std::vector<int>{0, 1, 4, 5}));
  EXPECT_EQ(Walk(Walker(array)), (std::vector<int>{0, 1, 2}));
}

} // namespace

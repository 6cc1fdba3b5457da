// The counts and buffers records: sizing, measuring, copying and ordering.
#include <zqcore/hdf5/ZQHDF5DataBuffers.h>
#include <zqcore/hdf5/ZQHDF5DataCounts.h>

#include <gtest/gtest.h>

#include <type_traits>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

ZQHDF5DataCounts Counts(long long i, long long i64, long long f, long long d) {
  ZQHDF5DataCounts counts;
  counts.intCount = i;
  counts.int64Count = i64;
  counts.floatCount = f;
  counts.doubleCount = d;
  return counts;
}

TEST(HDF5DataCounts, ArePlainRecordsOfFourCountsInFieldOrder) {
  static_assert(!std::is_polymorphic_v<ZQHDF5DataCounts>);
  static_assert(sizeof(ZQHDF5DataCounts) == 4 * sizeof(long long));
  static_assert(!std::is_polymorphic_v<ZQHDF5DataBuffers>);
  EXPECT_EQ(ZQHDF5DataCounts(3), Counts(3, 3, 3, 3));
  EXPECT_EQ(ZQHDF5DataCounts(), Counts(0, 0, 0, 0));
  ZQHDF5DataCounts counts = Counts(1, 2, 3, 4);
  counts.Reset();
  EXPECT_EQ(counts, ZQHDF5DataCounts());
}

TEST(HDF5DataCounts, AddFieldByFieldAndCompareLikeWords) {
  ZQHDF5DataCounts sum = Counts(1, 2, 3, 4);
  sum += Counts(10, -20, 0, 5);
  EXPECT_EQ(sum, Counts(11, -18, 3, 9));
  EXPECT_NE(sum, Counts(11, -18, 3, 8));

  EXPECT_TRUE(Counts(1, 0, 0, 0) > Counts(0, 9, 9, 9));
  EXPECT_TRUE(Counts(0, 9, 9, 9) < Counts(1, 0, 0, 0));
  EXPECT_TRUE(Counts(2, 2, 2, 1) < Counts(2, 2, 2, 2));
  EXPECT_TRUE(Counts(2, 3, 0, 0) > Counts(2, 2, 9, 9));
  EXPECT_TRUE(Counts(-1, 0, 0, 0) < Counts(0, 0, 0, 0));
  EXPECT_FALSE(Counts(5, 5, 5, 5) < Counts(5, 5, 5, 5));
  EXPECT_FALSE(Counts(5, 5, 5, 5) > Counts(5, 5, 5, 5));
}

TEST(HDF5DataBuffers, ResizeFromCountsAndMeasureBackIntoCounts) {
  ZQHDF5DataBuffers buffers;
  ZQHDF5DataCounts counts(7);
  buffers.GetSizes(counts);
  EXPECT_EQ(counts, ZQHDF5DataCounts());

  buffers.text0 = "kept";
  buffers.text3 = "also";
  buffers.Resize(Counts(2, 0, 0, 5));
  EXPECT_EQ(buffers.intValues.GetRank(), 1);
  EXPECT_EQ(buffers.int64Values.GetRank(), 1);
  buffers.GetSizes(counts);
  EXPECT_EQ(counts, Counts(2, 0, 0, 5));
  EXPECT_EQ(buffers.text0, "kept");
  EXPECT_EQ(buffers.text3, "also");

  // Sizes, not capacities, are measured, whatever the rank.
  buffers.floatValues.Resize(3, 4);
  buffers.doubleValues.Resize(1);
  buffers.GetSizes(counts);
  EXPECT_EQ(counts, Counts(2, 0, 12, 1));

  buffers.Reset();
  EXPECT_TRUE(buffers.text0.IsEmpty());
  EXPECT_TRUE(buffers.text3.IsEmpty());
  EXPECT_EQ(buffers.doubleValues.GetRank(), 0);
  buffers.GetSizes(counts);
  EXPECT_EQ(counts, ZQHDF5DataCounts());
}

TEST(HDF5DataBuffers, CopiesShareNoArrayBlock) {
  ZQHDF5DataBuffers original;
  original.Resize(Counts(2, 1, 1, 3));
  original.text1 = "label";
  original.doubleValues(2) = 4.5;
  original.intValues(0) = 9;

  ZQHDF5DataBuffers copy(original);
  ZQHDF5DataBuffers assigned;
  assigned = original;
  for (ZQHDF5DataBuffers *target : {&copy, &assigned}) {
    EXPECT_EQ(target->text1, "label");
    EXPECT_EQ(target->doubleValues(2), 4.5);
    EXPECT_NE(target->doubleValues.GetData(), original.doubleValues.GetData());
    EXPECT_NE(target->intValues.GetData(), original.intValues.GetData());
  }
  copy.doubleValues(2) = -1.0;
  EXPECT_EQ(original.doubleValues(2), 4.5);

  ZQHDF5DataBuffers &self = assigned;
  assigned = self;
  EXPECT_EQ(assigned.intValues(0), 9);
  EXPECT_EQ(assigned.text1, "label");
}

} // namespace

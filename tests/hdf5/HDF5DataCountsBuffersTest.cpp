// The counts and buffers records: sizing, measuring, copying and ordering.
#include <zqcore/hdf5/ZQHDF5DataBuffers.h>
#include <zqcore/hdf5/ZQHDF5DataCounts.h>

#include <gtest/gtest.h>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

ZQHDF5DataCounts Counts(long long i, long long i64, long long f, long long d) {
  ZQHDF5DataCounts counts;
  counts.intCount = i, counts.int64Count = i64, counts.floatCount = f, counts.doubleCount = d;
  return counts;
}

TEST(HDF5DataCounts, AddFieldByFieldAndCompareLikeWordsNotByTotal) {
  static_assert(!std::is_polymorphic_v<ZQHDF5DataCounts> && !std::is_polymorphic_v<ZQHDF5DataBuffers>);
  EXPECT_EQ(ZQHDF5DataCounts(3), Counts(3, 3, 3, 3));
  ZQHDF5DataCounts sum = Counts(1, 2, 3, 4);
  sum += Counts(10, -20, 0, 5);
  EXPECT_EQ(sum, Counts(11, -18, 3, 9));
  EXPECT_NE(sum, Counts(11, -18, 3, 8));
  sum.Reset();
  EXPECT_EQ(sum, ZQHDF5DataCounts());
  EXPECT_TRUE(Counts(1, 0, 0, 0) > Counts(0, 9, 9, 9));
  EXPECT_TRUE(Counts(0, 9, 9, 9) < Counts(1, 0, 0, 0));
  EXPECT_TRUE(Counts(2, 2, 2, 1) < Counts(2, 2, 2, 2));
  EXPECT_TRUE(Counts(2, 3, 0, 0) > Counts(2, 2, 9, 9));
  EXPECT_TRUE(Counts(-1, 0, 0, 0) < Counts(0, 0, 0, 0));
  EXPECT_FALSE(Counts(5, 5, 5, 5) < Counts(5, 5, 5, 5) || Counts(5, 5, 5, 5) > Counts(5, 5, 5, 5));
}

TEST(HDF5DataBuffers, AreSizedFromCountsMeasuredBackAndCopiedDeep) {
  ZQHDF5DataBuffers buffers;
  ZQHDF5DataCounts counts(7);
  buffers.GetSizes(counts);
  EXPECT_EQ(counts, ZQHDF5DataCounts());
  buffers.text0 = "kept";
  buffers.Resize(Counts(2, 0, 0, 5));
  buffers.GetSizes(counts);
  EXPECT_EQ(counts, Counts(2, 0, 0, 5));
  EXPECT_EQ(buffers.text0, "kept");
  buffers.floatValues.Resize(3, 4); // sizes are measured whatever the rank
  buffers.GetSizes(counts);
  EXPECT_EQ(counts, Counts(2, 0, 12, 5));

  buffers.doubleValues(4) = 4.5;
  ZQHDF5DataBuffers copy(buffers);
  ZQHDF5DataBuffers assigned;
  assigned = buffers;
  for (ZQHDF5DataBuffers const *target : {&copy, &assigned}) {
    EXPECT_EQ(target->text0, "kept");
    EXPECT_EQ(target->doubleValues(4), 4.5);
    EXPECT_NE(target->doubleValues.GetData(), buffers.doubleValues.GetData());
    EXPECT_NE(target->intValues.GetData(), buffers.intValues.GetData());
  }
  ZQHDF5DataBuffers &self = assigned;
  assigned = self;
  EXPECT_EQ(assigned.doubleValues(4), 4.5);

  buffers.Reset();
  buffers.GetSizes(counts);
  EXPECT_EQ(counts, ZQHDF5DataCounts());
  EXPECT_TRUE(buffers.text0.IsEmpty());
  EXPECT_EQ(buffers.floatValues.GetRank(), 0);
}

} // namespace

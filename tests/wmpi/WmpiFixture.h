// A private duplicate of the world for each test, so that no message of one test can be
// matched or probed by another.
#pragma once

#include "MpiTestSupport.h"

#include <zqcore/wmpi.h>

#include <gtest/gtest.h>

class WmpiOnDup : public ::testing::Test {
protected:
  void SetUp() override {
    // Every rank stops together if any rank lacks its duplicate.
    ASSERT_TRUE(zqtest::AllRanks(WMPI_Comm_dup(WMPI_COMM_WORLD, &comm) == 0));
    EXPECT_EQ(0, WMPI_Comm_rank(comm, &rank));
    EXPECT_EQ(0, WMPI_Comm_size(comm, &size));
  }
  void TearDown() override { EXPECT_EQ(0, WMPI_Comm_free(&comm)); }

  int Right() const { return (rank + 1) % size; }
  int Left() const { return (rank + size - 1) % size; }

  unsigned long long comm = WMPI_COMM_NULL;
  int rank = -1;
  int size = 1;
};

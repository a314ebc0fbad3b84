// The square stiffness matrix that holds only what is coupled.
#include "model/coupling_matrix.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <random>

#include "model/run_time_error.h"

namespace quillane {
namespace {

/// Random additions, dense enough that rows spill past their slots, against a plain map.
TEST(CouplingMatrix, EqualsAPlainSquareMatrix) {
  constexpr int kSize = 60;
  std::mt19937 random(3);
  CouplingMatrix matrix;
  for (int round = 0; round < 2; ++round) {  // the second round reuses the allocation
    matrix.ReDim(kSize);
    std::map<std::pair<int, int>, double> expected;
    for (int i = 0; i < 2500; ++i) {
      const int p = 1 + static_cast<int>(random() % kSize);
      const int q = 1 + static_cast<int>(random() % (i % 2 == 0 ? kSize : 9));
      const double value = static_cast<double>(random() % 7) - 3;
      matrix.Add(p, q, value);
      expected[{p, q}] += value;
    }
    auto next = expected.begin();
    for (int p = 0; p <= kSize; ++p) {
      for (const auto& entry : matrix.Row(p)) {
        ASSERT_EQ(next->first, (std::pair{p, int{entry.column}})) << "ascending, none left out";
        EXPECT_EQ(entry.value, next->second);
        EXPECT_EQ(matrix(p, entry.column), next++->second);
      }
    }
    EXPECT_EQ(next, expected.end());
  }
  EXPECT_EQ(matrix(0, 5), 0);
  EXPECT_THROW(matrix.Add(1, kSize + 1, 1.0), RunTimeError);
  EXPECT_THROW(matrix.Add(-1, 1, 1.0), RunTimeError);
  matrix.Add(2, 2, std::numeric_limits<double>::max());
  EXPECT_THROW(matrix.Add(2, 2, std::numeric_limits<double>::max()), RunTimeError);
}

}  // namespace
}  // namespace quillane

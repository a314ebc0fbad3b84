// The square stiffness matrix that holds only what is coupled.
#include "model/coupling_matrix.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

#include "model/run_time_error.h"

namespace quillane {
namespace {

/// Random additions, dense enough that rows spill past their slots, against a plain square.
TEST(CouplingMatrix, EqualsAPlainSquareMatrix) {
  constexpr int kSize = 60;
  std::mt19937 random(3);
  CouplingMatrix matrix;
  for (int round = 0; round < 2; ++round) {  // the second round reuses the allocation
    matrix.ReDim(kSize);
    std::vector<double> square((kSize + 1) * (kSize + 1), 0.0);
    for (int i = 0; i < 2500; ++i) {
      const int p = 1 + static_cast<int>(random() % kSize);
      const int q = 1 + static_cast<int>(random() % (i % 2 == 0 ? kSize : 9));
      const double value = static_cast<double>(random() % 7) - 3;
      matrix.Add(p, q, value);
      square[static_cast<std::size_t>(p * (kSize + 1) + q)] += value;
    }
    for (int p = 0; p <= kSize; ++p) {
      int before = -1;
      for (const auto& entry : matrix.Row(p)) {
        EXPECT_LT(before, entry.column);
        before = entry.column;
        EXPECT_EQ(entry.value, square[static_cast<std::size_t>(p * (kSize + 1) + entry.column)]);
      }
      for (int q = 0; q <= kSize; ++q) {
        EXPECT_EQ(matrix(p, q), square[static_cast<std::size_t>(p * (kSize + 1) + q)]);
      }
    }
  }
  EXPECT_THROW(matrix.Add(1, kSize + 1, 1.0), RunTimeError);
  EXPECT_THROW(matrix.Add(-1, 1, 1.0), RunTimeError);
  matrix.Add(2, 2, std::numeric_limits<double>::max());
  EXPECT_THROW(matrix.Add(2, 2, std::numeric_limits<double>::max()), RunTimeError);
}

}  // namespace
}  // namespace quillane

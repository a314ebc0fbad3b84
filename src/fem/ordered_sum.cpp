// A sum rounded addition by addition in a fixed order, computed in lanes.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fem/ordered_sum.cpp"
// The order counts: the targets, the loop over them, then what is compiled for each.
// clang-format off
#include "fem/grid_targets.h"
#include "hwy/foreach_target.h"
#include "fem/grid_lanes-inl.h"
// clang-format on

#include <bit>
#include <cmath>
#include <cstdint>

#include "fem/grid_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// The largest power of two not above |value|; 0 where the method must not be used.
double BinadeOf(double value) {
  const double size = std::fabs(value);
  if (!(size > 1e-250 && size < 1e300)) return 0.0;
  return std::bit_cast<double>(std::bit_cast<std::uint64_t>(size) & 0x7FF0000000000000U);
}

/// One number per lane, which changes lane by lane as the rows of a lane follow each other.
struct LaneNumbers {
  Lanes vector[kVectors];

  explicit LaneNumbers(double value) {
    for (Lanes& lanes : vector) lanes = hn::Set(kTag, value);
  }
  HWY_INLINE void Replace(std::ptrdiff_t lane, double value) {
    for (std::ptrdiff_t h = 0; h < kVectors; ++h) {
      const auto chosen = hn::Eq(hn::Iota(kTag, static_cast<double>(h * kWidth)),
                                 hn::Set(kTag, static_cast<double>(lane)));
      vector[h] = hn::IfThenElse(chosen, hn::Set(kTag, value), vector[h]);
    }
  }
  /// Returns the lane's number and puts zero in its place.
  HWY_INLINE double Take(std::ptrdiff_t lane) {
    alignas(64) double numbers[kGridLanes];
    for (std::ptrdiff_t h = 0; h < kVectors; ++h) hn::Store(vector[h], kTag, numbers + h * kWidth);
    Replace(lane, 0.0);
    return numbers[lane];
  }
};

/// Walks the slots upward and calls visit(at, h) for every vector, and rowEnds(row) and
/// rowBegins(row) where a lane passes from one row to the next.
template <class Visit, class RowEnds, class RowBegins>
HWY_INLINE void WalkRows(const SkewedGrid& grid, const Visit& visit, const RowEnds& rowEnds,
                         const RowBegins& rowBegins) {
  std::ptrdiff_t t = 0;
  for (std::ptrdiff_t row = 0; row < grid.Rows() + kGridLanes; ++row) {
    if (row >= kGridLanes) rowEnds(row - kGridLanes);
    if (row < grid.Rows()) rowBegins(row);
    const std::ptrdiff_t end =
        grid.Start(row + 1) < grid.Slots() ? grid.Start(row + 1) : grid.Slots();
    for (; t < end; ++t) {
#pragma GCC unroll 8
      for (std::ptrdiff_t h = 0; h < kVectors; ++h) visit(t * kGridLanes + h * kWidth, h);
    }
  }
}

/// The sums of each row's products and of their sizes, added in any order.
void RowSums(const GridSystem& system, const ConstNodeNumbers& a, const ConstNodeNumbers& b) {
  LaneNumbers total(0.0), size(0.0);
  WalkRows(
      system.grid,
      [&](std::ptrdiff_t at, std::ptrdiff_t h) {
        for (std::size_t c = 0; c < 2; ++c) {
          const Lanes term = hn::Mul(hn::Load(kTag, a[c] + at), hn::Load(kTag, b[c] + at));
          total.vector[h] = hn::Add(total.vector[h], term);
          size.vector[h] = hn::Add(size.vector[h], hn::Abs(term));
        }
      },
      [&](std::ptrdiff_t row) {
        system.rowTotal[row] = total.Take(row % kGridLanes);
        system.rowSize[row] = size.Take(row % kGridLanes);
      },
      [](std::ptrdiff_t) {});
}

/// The sum continued along one row, one addition after the other.
double ContinueRow(const SkewedGrid& grid, std::ptrdiff_t row, const ConstNodeNumbers& a,
                   const ConstNodeNumbers& b, double sum) {
  std::ptrdiff_t at = grid.At(row, 0);
  for (int j = 0; j < grid.Columns(); ++j, at += kGridLanes) {
    sum += a[0][at] * b[0][at];
    sum += a[1][at] * b[1][at];
  }
  return sum;
}

/// While the running sum s stays between a power of two
/// L and 2 L, doubles there are the multiples of one unit, and adding a term moves s by the term
/// rounded to a whole number of units: by an amount that does not depend on s, unless the term lies
/// exactly half way between two multiples. So each term is rounded by adding it to 1.5 L and taking
/// 1.5 L off again, and the rounded terms, whole multiples that add up exactly, may be summed in
/// any order, a row in one lane. L of each row is guessed from the rows' rough sums; once the row
/// is done and s before it is known, the guess is checked, and that s could not leave [L, 2 L) by
/// any part of the row, and that no term lay half way. A row that fails is added term by term.
double Sum(GridSystem& system, const ConstNodeNumbers& a, const ConstNodeNumbers& b) {
  RowSums(system, a, b);
  LaneNumbers anchor(1.5), moved(0.0), rest(0.0);
  double binade[kGridLanes] = {};
  double rough = 0.0;
  double sum = 0.0;
  WalkRows(
      system.grid,
      [&](std::ptrdiff_t at, std::ptrdiff_t h) {
        for (std::size_t c = 0; c < 2; ++c) {
          const Lanes term = hn::Mul(hn::Load(kTag, a[c] + at), hn::Load(kTag, b[c] + at));
          const Lanes whole = hn::Sub(hn::Add(term, anchor.vector[h]), anchor.vector[h]);
          rest.vector[h] = hn::Max(rest.vector[h], hn::Abs(hn::Sub(term, whole)));
          moved.vector[h] = hn::Add(moved.vector[h], whole);
        }
      },
      [&](std::ptrdiff_t row) {
        const std::ptrdiff_t lane = row % kGridLanes;
        const double low = binade[lane];
        const double step = moved.Take(lane);
        const double largestRest = rest.Take(lane);
        const double reach = system.rowSize[row] * (1.0 + 0x1p-20) + low * 0x1p-30;
        const double size = std::fabs(sum);
        const bool whole = low > 0.0 && size - reach > low && size + reach < 2.0 * low &&
                           largestRest < low * 0x1p-53;
        sum = whole ? sum + step : ContinueRow(system.grid, row, a, b, sum);
      },
      [&](std::ptrdiff_t row) {
        binade[row % kGridLanes] = BinadeOf(rough);
        anchor.Replace(row % kGridLanes, 1.5 * BinadeOf(rough));
        rough += system.rowTotal[row];
      });
  return sum;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace quillane
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quillane {
namespace {
HWY_EXPORT(Sum);
}  // namespace

double OrderedSum(GridSystem& system, const ConstNodeNumbers& a, const ConstNodeNumbers& b) {
  return HWY_DYNAMIC_DISPATCH(Sum)(system, a, b);
}

}  // namespace quillane
#endif  // HWY_ONCE

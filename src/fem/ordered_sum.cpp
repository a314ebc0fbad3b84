// A sum rounded addition by addition in a fixed order, computed in lanes.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fem/ordered_sum.cpp"
// The order counts: the targets, the loop over them, then what is compiled for each.
// clang-format off
#include "fem/grid_targets.h"
#include "hwy/foreach_target.h"
#include "fem/grid_lanes-inl.h"
// clang-format on

#include <algorithm>
#include <cmath>

#include "fem/grid_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// The sum continued along the piece of a row that lies in a segment, one addition at a time.
HWY_NOINLINE double ContinuePiece(const SkewedGrid& grid, std::ptrdiff_t row,
                                  std::ptrdiff_t segment, const ConstNodeNumbers& a,
                                  const ConstNodeNumbers& b, double sum) {
  const std::ptrdiff_t first = grid.Start(segment) - grid.Start(row);
  const std::ptrdiff_t last =
      std::min<std::ptrdiff_t>(grid.Start(segment + 1) - grid.Start(row), grid.Columns());
  for (std::ptrdiff_t column = first; column < last; ++column) {
    const std::ptrdiff_t at = grid.At(row, 0) + column * kGridLanes;
    sum += a[0][at] * b[0][at];
    sum += a[1][at] * b[1][at];
  }
  return sum;
}

/// Where a lane's piece stands among the numbers of its segment.
std::ptrdiff_t PieceAt(std::ptrdiff_t row, std::ptrdiff_t segment) {
  return segment * kGridLanes + row % kGridLanes;
}

/// From the rough totals of the pieces: the rough sum before each row, kept in the row's first
/// segment's place of segmentLimit.
void RoughSums(const GridSystem& system) {
  double sum = 0.0;
  for (std::ptrdiff_t row = 0; row < system.grid.Rows(); ++row) {
    const std::ptrdiff_t first = PieceAt(row, row);
    system.segmentLimit[first] = sum;
    const double* const piece = system.segmentTotal + first;
    double even = 0.0;
    double odd = 0.0;
    for (std::ptrdiff_t k = 0; k < kGridLanes; k += 2) {
      even += piece[k * kGridLanes];
      odd += piece[(k + 1) * kGridLanes];
    }
    sum += even + odd;
  }
}

/// The binades of one segment's pieces, and what rounding to their unit makes of the terms.
struct Pieces {
  Lanes low, anchor;
  Lanes moved[2], rest[2];  // u and v apart: two chains of additions instead of one

  /// low: the largest power of two not above the rough sum's size.
  HWY_INLINE void Begin(Lanes rough) {
    const hn::RebindToUnsigned<Tag> bits;
    const auto exponent = hn::Set(bits, 0x7FF0000000000000U);
    low = hn::BitCast(kTag, hn::And(hn::BitCast(bits, rough), exponent));
    anchor = hn::Mul(low, hn::Set(kTag, 1.5));
    moved[0] = moved[1] = rest[0] = rest[1] = hn::Zero(kTag);
  }

  HWY_INLINE void Add(std::size_t c, Lanes term) {
    const Lanes whole = hn::Sub(hn::Add(term, anchor), anchor);
    rest[c] = hn::Max(rest[c], hn::Abs(hn::Sub(term, whole)));
    moved[c] = hn::Add(moved[c], whole);
  }

  /// Leaves the pieces' rounded totals, and the bounds the sum before a piece must lie between for
  /// the total to be what the sum moves by.
  HWY_INLINE void Store(const GridSystem& system, std::ptrdiff_t at) const {
    const Lanes size = hn::Load(kTag, system.segmentSize + at);
    const Lanes reach =
        Plus(hn::Mul(size, hn::Set(kTag, 1.0 + 0x1p-20)), low, hn::Set(kTag, 0x1p-30));
    const auto usable =
        hn::And(hn::Lt(hn::Max(rest[0], rest[1]), hn::Mul(low, hn::Set(kTag, 0x1p-53))),
                hn::And(hn::Gt(low, hn::Set(kTag, 1e-250)), hn::Lt(low, hn::Set(kTag, 1e300))));
    const Lanes never = hn::Set(kTag, 1e301);
    hn::Store(hn::Add(moved[0], moved[1]), kTag, system.segmentTotal + at);
    hn::Store(hn::IfThenElse(usable, hn::Add(low, reach), never), kTag, system.segmentSize + at);
    hn::Store(hn::Sub(hn::Add(low, low), reach), kTag, system.segmentLimit + at);
  }
};

/// Turns the rough totals and sizes of all pieces into rounded totals and bounds.
void RoundPieces(const GridSystem& system, const ConstNodeNumbers& a, const ConstNodeNumbers& b) {
  Lanes rough[kVectors] = {};
  std::ptrdiff_t t = 0;
  for (std::ptrdiff_t segment = 0; segment < system.grid.Segments(); ++segment) {
    const Lanes lane = hn::Set(kTag, static_cast<double>(segment % kGridLanes));
    const Lanes begun = hn::Set(
        kTag, segment < system.grid.Rows() ? system.segmentLimit[PieceAt(segment, segment)] : 0.0);
    ForVectors([&](auto h) {
      const auto chosen = hn::Eq(hn::Iota(kTag, static_cast<double>(h * kWidth)), lane);
      rough[h] = hn::IfThenElse(chosen, begun, rough[h]);
    });
    Pieces pieces[kVectors];
    ForVectors([&](auto h) { pieces[h].Begin(rough[h]); });
    for (const std::ptrdiff_t end = system.grid.Start(segment + 1); t < end; ++t) {
      ForVectors([&](auto h) {
        const std::ptrdiff_t at = t * kGridLanes + h * kWidth;
        pieces[h].Add(0, hn::Mul(hn::Load(kTag, a[0] + at), hn::Load(kTag, b[0] + at)));
        pieces[h].Add(1, hn::Mul(hn::Load(kTag, a[1] + at), hn::Load(kTag, b[1] + at)));
      });
    }
    ForVectors([&](auto h) {
      const std::ptrdiff_t at = segment * kGridLanes + h * kWidth;
      rough[h] = hn::Add(rough[h], hn::Load(kTag, system.segmentTotal + at));
      pieces[h].Store(system, at);
    });
  }
}

/// While the running sum s stays between a power of two L and 2 L, doubles there are the multiples
/// of one unit, and adding a term moves s by the term rounded to a whole number of units: by an
/// amount that does not depend on s, unless the term lies exactly half way between two multiples.
/// So each term is rounded by adding it to 1.5 L and taking 1.5 L off again, and the rounded terms,
/// whole multiples that add up exactly, may be summed in any order: here the terms of one grid row
/// that lie in one segment, in one lane. L of each such piece is guessed from the rough sums; then
/// s goes from piece to piece, and before it takes a piece's total it is checked that the guess was
/// right, that s can not leave [L, 2 L) by any part of the piece, and that no term lay half way. A
/// piece that fails is added term by term.
double Sum(const GridSystem& system, const ConstNodeNumbers& a, const ConstNodeNumbers& b) {
  RoughSums(system);
  RoundPieces(system, a, b);
  const double* const total = system.segmentTotal;
  const double* const lowest = system.segmentSize;
  const double* const highest = system.segmentLimit;
  double sum = 0.0;
  for (std::ptrdiff_t row = 0; row < system.grid.Rows(); ++row) {
    const std::ptrdiff_t first = PieceAt(row, row);
    for (std::ptrdiff_t k = 0; k < kGridLanes; ++k) {
      const std::ptrdiff_t piece = first + k * kGridLanes;
      const double size = std::fabs(sum);
      if (HWY_LIKELY((size > lowest[piece]) & (size < highest[piece]))) {
        sum += total[piece];
      } else {
        sum = ContinuePiece(system.grid, row, row + k, a, b, sum);
      }
    }
  }
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

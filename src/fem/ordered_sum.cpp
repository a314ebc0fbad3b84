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
#include <array>
#include <cmath>

#include "fem/grid_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// The factors of the products to be summed, and the sum's pieces.
struct Products {
  ConstNodeNumbers a, b;
  SumPieces pieces;

  Products(const NodeNumbers& first, const NodeNumbers& second, const SumPieces& sumPieces)
      : a{first[0], first[1]}, b{second[0], second[1]}, pieces(sumPieces) {}
};

/// The sum continued along the piece of a row that lies in a segment, one addition at a time.
HWY_NOINLINE double ContinuePiece(const SkewedGrid& grid, const Products& products,
                                  std::ptrdiff_t row, std::ptrdiff_t segment, double sum) {
  const std::ptrdiff_t first = grid.Start(segment) - grid.Start(row);
  const std::ptrdiff_t last =
      std::min<std::ptrdiff_t>(grid.Start(segment + 1) - grid.Start(row), grid.Columns());
  for (std::ptrdiff_t column = first; column < last; ++column) {
    const std::ptrdiff_t at = grid.At(row, 0) + column * kGridLanes;
    sum += products.a[0][at] * products.b[0][at];
    sum += products.a[1][at] * products.b[1][at];
  }
  return sum;
}

/// Where the first piece of a row stands; the next ones follow kGridLanes apart.
std::ptrdiff_t FirstPiece(std::ptrdiff_t row) { return row * kGridLanes + row % kGridLanes; }

/// From the rough totals of the pieces: the rough sum before each row, left in its first piece's
/// limit.
void RoughSums(const SkewedGrid& grid, const SumPieces& pieces) {
  double sum = 0.0;
  for (std::ptrdiff_t row = 0; row < grid.Rows(); ++row) {
    pieces.limit[FirstPiece(row)] = sum;
    const double* const total = pieces.total + FirstPiece(row);
    double even = 0.0;
    double odd = 0.0;
    for (std::ptrdiff_t k = 0; k < kGridLanes; k += 2) {
      even += total[k * kGridLanes];
      odd += total[(k + 1) * kGridLanes];
    }
    sum += even + odd;
  }
}

/// The binades of one segment's pieces, and what rounding to their unit makes of the terms.
struct Rounding {
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
  HWY_INLINE void Store(const SumPieces& pieces, std::ptrdiff_t at) const {
    const Lanes size = hn::Load(kTag, pieces.size + at);
    const Lanes reach =
        Plus(hn::Mul(size, hn::Set(kTag, 1.0 + 0x1p-20)), low, hn::Set(kTag, 0x1p-30));
    const auto usable =
        hn::And(hn::Lt(hn::Max(rest[0], rest[1]), hn::Mul(low, hn::Set(kTag, 0x1p-53))),
                hn::And(hn::Gt(low, hn::Set(kTag, 1e-250)), hn::Lt(low, hn::Set(kTag, 1e300))));
    const Lanes never = hn::Set(kTag, 1e301);
    hn::Store(hn::Add(moved[0], moved[1]), kTag, pieces.total + at);
    hn::Store(hn::IfThenElse(usable, hn::Add(low, reach), never), kTag, pieces.size + at);
    hn::Store(hn::Sub(hn::Add(low, low), reach), kTag, pieces.limit + at);
  }
};

/// Turns the rough totals and sizes of all pieces into rounded totals and bounds.
template <std::size_t kSums>
HWY_INLINE void RoundPieces(const SkewedGrid& grid, const std::array<Products, kSums>& products) {
  Lanes rough[kSums][kVectors] = {};
  std::ptrdiff_t t = 0;
  for (std::ptrdiff_t segment = 0; segment < grid.Segments(); ++segment) {
    const Lanes lane = hn::Set(kTag, static_cast<double>(segment % kGridLanes));
    Rounding rounding[kSums][kVectors];
    ForVectors([&](auto h) {
      const auto begins = hn::Eq(hn::Iota(kTag, static_cast<double>(h * kWidth)), lane);
      for (std::size_t i = 0; i < kSums; ++i) {
        const double* const limit = products[i].pieces.limit;
        const double begun = segment < grid.Rows() ? limit[FirstPiece(segment)] : 0.0;
        rough[i][h] = hn::IfThenElse(begins, hn::Set(kTag, begun), rough[i][h]);
        rounding[i][h].Begin(rough[i][h]);
      }
    });
    for (const std::ptrdiff_t end = grid.Start(segment + 1); t < end; ++t) {
      ForVectors([&](auto h) {
        const std::ptrdiff_t at = t * kGridLanes + h * kWidth;
        for (std::size_t i = 0; i < kSums; ++i) {
          const ConstNodeNumbers &a = products[i].a, &b = products[i].b;
          rounding[i][h].Add(0, hn::Mul(hn::Load(kTag, a[0] + at), hn::Load(kTag, b[0] + at)));
          rounding[i][h].Add(1, hn::Mul(hn::Load(kTag, a[1] + at), hn::Load(kTag, b[1] + at)));
        }
      });
    }
    ForVectors([&](auto h) {
      const std::ptrdiff_t at = segment * kGridLanes + h * kWidth;
      for (std::size_t i = 0; i < kSums; ++i) {
        rough[i][h] = hn::Add(rough[i][h], hn::Load(kTag, products[i].pieces.total + at));
        rounding[i][h].Store(products[i].pieces, at);
      }
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
template <std::size_t kSums>
HWY_INLINE std::array<double, kSums> Sums(const SkewedGrid& grid,
                                          const std::array<Products, kSums>& products) {
  for (const Products& factors : products) RoughSums(grid, factors.pieces);
  RoundPieces(grid, products);
  std::array<double, kSums> sums{};
  for (std::ptrdiff_t row = 0; row < grid.Rows(); ++row) {
    for (std::ptrdiff_t k = 0; k < kGridLanes; ++k) {
      const std::ptrdiff_t at = FirstPiece(row) + k * kGridLanes;
      for (std::size_t i = 0; i < kSums; ++i) {
        const SumPieces& pieces = products[i].pieces;
        const double size = std::fabs(sums[i]);
        if (HWY_LIKELY((size > pieces.size[at]) & (size < pieces.limit[at]))) {
          sums[i] += pieces.total[at];
        } else {
          sums[i] = ContinuePiece(grid, products[i], row, row + k, sums[i]);
        }
      }
    }
  }
  return sums;
}

double OneSum(const GridSystem& s) { return Sums<1>(s.grid, {Products(s.p, s.q, s.pieces[0])})[0]; }

ResidualSums TwoSums(const GridSystem& s) {
  const auto [squared, preconditioned] =
      Sums<2>(s.grid, {Products(s.r, s.r, s.pieces[0]), Products(s.r, s.z, s.pieces[1])});
  return {squared, preconditioned};
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace quillane
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quillane {
namespace {
HWY_EXPORT(OneSum);
HWY_EXPORT(TwoSums);
}  // namespace

double DirectionTimesProduct(const GridSystem& system) {
  return HWY_DYNAMIC_DISPATCH(OneSum)(system);
}

ResidualSums SumResiduals(const GridSystem& system) {
  return HWY_DYNAMIC_DISPATCH(TwoSums)(system);
}

}  // namespace quillane
#endif  // HWY_ONCE

// Incomplete Cholesky factorization on the skewed grid.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fem/grid_factor.cpp"
// The order counts: the targets, the loop over them, then what is compiled for each.
// clang-format off
#include "fem/grid_targets.h"
#include "hwy/foreach_target.h"
#include "fem/grid_lanes-inl.h"
// clang-format on

#include <algorithm>
#include <array>
#include <cstring>

#include "fem/grid_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// The stiffness rows of one slot's nodes up to the diagonal, one number per lane.
struct SlotStiffness {
  alignas(64) double row[2][kLowerCouplings + 1][kGridLanes];  // [8], [9]: the node's own u and v
  alignas(64) double hasEquation[2][kGridLanes];
  std::uint8_t code[kGridLanes];

  explicit SlotStiffness(const GridSystem& system) { Fill(system, system.code - kGridLanes); }

  /// Most slots have the codes of the slot before.
  void Read(const GridSystem& system, const std::uint8_t* codes) {
    if (std::memcmp(code, codes, sizeof(code)) != 0) Fill(system, codes);
  }

 private:
  void Fill(const GridSystem& system, const std::uint8_t* codes) {
    std::memcpy(code, codes, sizeof(code));
    for (std::size_t lane = 0; lane < kGridLanes; ++lane) {
      for (std::size_t c = 0; c < 2; ++c) {
        const bool used = (code[lane] & (c == 0 ? kEquationU : kEquationV)) != 0;
        const auto& values = system.stiffness[code[lane] & kAllCells][c];
        hasEquation[c][lane] = used ? 1.0 : 0.0;
        for (std::size_t m = 0; m <= kLowerCouplings; ++m) row[c][m][lane] = used ? values[m] : 0.0;
      }
    }
  }
};

/// Factorizes the rows of one vector's nodes. Couplings that are exactly zero are not part of the
/// pattern; those to nodes without equation drop out by their reciprocal pivot of 0.
class RowFactorizer {
 public:
  RowFactorizer(GridSystem& system, const SlotStiffness& stiffness, std::ptrdiff_t at,
                std::ptrdiff_t lane)
      : system_(system), stiffness_(stiffness), at_(at), lane_(lane) {
    const std::ptrdiff_t offsets[] = {system.grid.Offset(-1, -1), system.grid.Offset(-1, 0),
                                      system.grid.Offset(-1, 1), system.grid.Offset(0, -1)};
    for (std::size_t m = 0; m < kOwn; ++m) {
      place_[m] = at + offsets[m / 2];
      inverse_[m] = hn::LoadU(kTag, system.invDiag[m % 2] + place_[m]);
    }
  }

 private:
  using Index = std::size_t;

  Lanes Stiffness(Index c, Index m) const { return hn::Load(kTag, stiffness_.row[c][m] + lane_); }

  /// Entry (coupling `row` of this node, coupling `column` of this node) of the factor, which the
  /// row of that neighbour holds as its own coupling `entry`.
  Lanes Entry(Index row, Index entry) const {
    return hn::LoadU(kTag, system_.lower[row % 2][entry] + place_[row]);
  }

  void Reduce(Lanes& value, Index c, Index row, Index entry, Index column) const {
    value =
        hn::Sub(value, hn::Mul(hn::Mul(inverse_[column], Entry(row, entry)), factor_[c][column]));
  }

  void Keep(Index c, Index m, Lanes value) {
    const auto coupled = hn::Ne(Stiffness(c, m), hn::Zero(kTag));
    factor_[c][m] = hn::IfThenElseZero(coupled, value);
    hn::Store(factor_[c][m], kTag, system_.lower[c][m] + at_);
  }

  /// Entries 0 to 7 of component c's row. The neighbours' rows have in common with this one: the
  /// lower node's the lower left, the lower right node's the lower one, the left node's the lower
  /// left and the lower one; and each v the u of its own node.
  void Merge(Index c) {
    for (Index m = 0; m < kOwn; ++m) {
      Lanes value = Stiffness(c, m);
      const Index node = m - m % 2;
      if (node == kLower || node == kLowerRight) {
        Reduce(value, c, m, kLeft, node - 2);
        Reduce(value, c, m, kLeft + 1, node - 1);
      } else if (node == kLeft) {
        Reduce(value, c, m, kLower, kLowerLeft);
        Reduce(value, c, m, kLower + 1, kLowerLeft + 1);
        Reduce(value, c, m, kLowerRight, kLower);
        Reduce(value, c, m, kLowerRight + 1, kLower + 1);
      }
      if (m % 2 == 1) Reduce(value, c, m, kOwn, m - 1);
      Keep(c, m, value);
    }
  }

  void MergeOwn() {
    Lanes value = Stiffness(1, kOwn);
    for (Index m = 0; m < kOwn; ++m) {
      value = hn::Sub(value, hn::Mul(hn::Mul(inverse_[m], factor_[0][m]), factor_[1][m]));
    }
    Keep(1, kOwn, value);
  }

  Lanes Pivot(Index c, Index diagonal) {
    Lanes pivot = Stiffness(c, diagonal);
    for (Index m = 0; m < diagonal; ++m) {
      const Lanes inverse = m == kOwn ? own_[0] : inverse_[m];
      pivot = hn::Sub(pivot, hn::Mul(hn::Mul(factor_[c][m], factor_[c][m]), inverse));
    }
    const Lanes smallest = hn::Set(kTag, system_.tolerance);
    const Lanes guarded = hn::IfThenElse(hn::Le(hn::Abs(pivot), smallest), smallest, pivot);
    const auto used = hn::Ne(hn::Load(kTag, stiffness_.hasEquation[c] + lane_), hn::Zero(kTag));
    own_[c] = hn::IfThenElseZero(used, hn::Div(hn::Set(kTag, 1.0), guarded));
    hn::Store(own_[c], kTag, system_.invDiag[c] + at_);
    return pivot;
  }

  /// True where component c has no equation or its row has the ordinary form: no coupling with the
  /// other component of the lower and left node, and the stiffness itself towards the lower left
  /// node and the other component of the lower right one.
  auto RowIsOrdinary(Index c, const std::array<int, 2>& zeros, int crossing) const {
    const auto& stiffness = system_.stiffness[kAllCells][c];
    auto ordinary = hn::Eq(factor_[c][static_cast<Index>(crossing)],
                           hn::Set(kTag, stiffness[static_cast<Index>(crossing)]));
    for (const Index m : {Index{kLowerLeft}, Index{kLowerLeft + 1}}) {
      ordinary = hn::And(ordinary, hn::Eq(factor_[c][m], hn::Set(kTag, stiffness[m])));
    }
    for (const int m : zeros) {
      ordinary = hn::And(ordinary, hn::Eq(factor_[c][static_cast<Index>(m)], hn::Zero(kTag)));
    }
    return hn::Or(ordinary, hn::Eq(own_[c], hn::Zero(kTag)));
  }

 public:
  /// Returns a number that is not zero in lanes whose pivot is not finite.
  Lanes Factorize() {
    const Lanes zero = hn::Zero(kTag);
    Merge(0);
    const Lanes pivotU = Pivot(0, kOwn);
    Merge(1);
    MergeOwn();
    const Lanes pivotV = Pivot(1, kOwn + 1);
    const auto ordinaryU = RowIsOrdinary(0, {kLower + 1, kLeft + 1}, kLowerRight + 1);
    const auto ordinaryV = hn::And(RowIsOrdinary(1, {kLower, kLeft}, kLowerRight),
                                   hn::Or(hn::Eq(factor_[1][kOwn], zero), hn::Eq(own_[1], zero)));
    uint8_t bits[8];
    (void)hn::StoreMaskBits(kTag, hn::And(ordinaryU, ordinaryV), bits);
    std::uint16_t& slot = system_.ordinaryForward[(at_ - lane_) / kGridLanes];
    slot = static_cast<std::uint16_t>(slot | (bits[0] << lane_));
    return hn::Add(hn::Sub(pivotU, pivotU), hn::Sub(pivotV, pivotV));
  }

 private:
  GridSystem& system_;
  const SlotStiffness& stiffness_;
  std::ptrdiff_t at_;
  std::ptrdiff_t lane_;
  std::ptrdiff_t place_[kOwn];
  Lanes inverse_[kOwn];
  Lanes factor_[2][kLowerCouplings];
  Lanes own_[2];
};

bool Factorize(GridSystem& system) {
  SlotStiffness stiffness(system);
  Lanes notFinite = hn::Zero(kTag);
  for (std::ptrdiff_t t = 0; t < system.grid.Slots(); ++t) {
    stiffness.Read(system, system.code + t * kGridLanes);
    system.ordinaryForward[t] = 0;
    for (std::ptrdiff_t lane = 0; lane < kGridLanes; lane += kWidth) {
      RowFactorizer rows(system, stiffness, t * kGridLanes + lane, lane);
      notFinite = hn::Add(notFinite, rows.Factorize());
    }
  }
  return hn::AllTrue(kTag, hn::Eq(notFinite, hn::Zero(kTag)));
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace quillane
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quillane {
namespace {

HWY_EXPORT(Factorize);

/// Lanes of the neighbours `up` and `right` of a slot's nodes, as bits.
unsigned NeighbourBits(const GridSystem& system, std::ptrdiff_t slot, int up, int right) {
  const std::ptrdiff_t first = slot * kGridLanes + system.grid.Offset(up, right);
  const std::ptrdiff_t at = first / kGridLanes;
  const unsigned pair = system.ordinaryForward[at] |
                        static_cast<unsigned>(system.ordinaryForward[at + 1]) << kGridLanes;
  return (pair >> (first % kGridLanes)) & 0xFFFFU;
}

void MarkOrdinaryBackward(GridSystem& system) {
  const std::ptrdiff_t slots = system.grid.Slots();
  std::fill_n(system.ordinaryForward + slots, system.grid.GuardSlots(), std::uint16_t{0xFFFF});
  for (std::ptrdiff_t t = 0; t < slots; ++t) {
    system.ordinaryBackward[t] =
        static_cast<std::uint16_t>(system.ordinaryForward[t] & NeighbourBits(system, t, 0, 1) &
                                   NeighbourBits(system, t, 1, -1) &
                                   NeighbourBits(system, t, 1, 0) & NeighbourBits(system, t, 1, 1));
  }
}

}  // namespace

bool FactorizeGrid(GridSystem& system) {
  if (!HWY_DYNAMIC_DISPATCH(Factorize)(system)) return false;
  MarkOrdinaryBackward(system);
  return true;
}

}  // namespace quillane
#endif  // HWY_ONCE

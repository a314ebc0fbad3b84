// What the kernels of the grid solver share, compiled once per vector length.
#if defined(QUILLANE_FEM_GRID_LANES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef QUILLANE_FEM_GRID_LANES_INL_H_
#undef QUILLANE_FEM_GRID_LANES_INL_H_
#else
#define QUILLANE_FEM_GRID_LANES_INL_H_
#endif

#include <cstddef>
#include <utility>

#include "fem/grid_system.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using Tag = hn::ScalableTag<double>;
using Lanes = hn::Vec<Tag>;
constexpr Tag kTag;

/// Numbers per vector, and vectors per slot.
constexpr std::ptrdiff_t kWidth = HWY_LANES(double);
constexpr std::ptrdiff_t kVectors = kGridLanes / kWidth;

/// Calls body(h) for every vector of a slot with h a constant, so that arrays over h stay in
/// registers.
template <class Body, std::ptrdiff_t... H>
HWY_INLINE void ForVectors(std::integer_sequence<std::ptrdiff_t, H...>, const Body& body) {
  (body(std::integral_constant<std::ptrdiff_t, H>{}), ...);
}
template <class Body>
HWY_INLINE void ForVectors(const Body& body) {
  ForVectors(std::make_integer_sequence<std::ptrdiff_t, kVectors>{}, body);
}

/// u and v of one vector's nodes.
struct Nodes {
  Lanes u, v;
};

HWY_INLINE Nodes LoadNodes(const NodeNumbers& numbers, std::ptrdiff_t at) {
  return {hn::Load(kTag, numbers[0] + at), hn::Load(kTag, numbers[1] + at)};
}
/// For neighbours in other lanes.
HWY_INLINE Nodes LoadShifted(const NodeNumbers& numbers, std::ptrdiff_t at) {
  return {hn::LoadU(kTag, numbers[0] + at), hn::LoadU(kTag, numbers[1] + at)};
}
HWY_INLINE void StoreNodes(const Nodes& nodes, const NodeNumbers& numbers, std::ptrdiff_t at) {
  hn::Store(nodes.u, kTag, numbers[0] + at);
  hn::Store(nodes.v, kTag, numbers[1] + at);
}

/// sum - factor * value and sum + factor * value, both rounded twice: never a fused operation.
HWY_INLINE Lanes Minus(Lanes sum, Lanes factor, Lanes value) {
  return hn::Sub(sum, hn::Mul(factor, value));
}
HWY_INLINE Lanes Plus(Lanes sum, Lanes factor, Lanes value) {
  return hn::Add(sum, hn::Mul(factor, value));
}

/// True if the lanes of vector `vector` of a slot are all set in the slot's bits.
HWY_INLINE bool AllSet(unsigned bits, std::ptrdiff_t vector) {
  constexpr unsigned kAll = (1U << kWidth) - 1U;
  return ((bits >> (vector * kWidth)) & kAll) == kAll;
}

/// Rough sums of products, and of the products' sizes, over each segment.
class SegmentSums {
 public:
  HWY_INLINE void Add(std::ptrdiff_t h, const Nodes& a, const Nodes& b) {
    Add(h, hn::Mul(a.u, b.u));
    Add(h, hn::Mul(a.v, b.v));
  }
  HWY_INLINE void End(const SumPieces& pieces, std::ptrdiff_t segment) {
    ForVectors([&](auto h) {
      const std::ptrdiff_t at = segment * kGridLanes + h * kWidth;
      hn::Store(total_[h], kTag, pieces.total + at);
      hn::Store(size_[h], kTag, pieces.size + at);
      total_[h] = size_[h] = hn::Zero(kTag);
    });
  }

 private:
  HWY_INLINE void Add(std::ptrdiff_t h, Lanes term) {
    total_[h] = hn::Add(total_[h], term);
    size_[h] = hn::Add(size_[h], hn::Abs(term));
  }

  Lanes total_[kVectors] = {};
  Lanes size_[kVectors] = {};
};

}  // namespace HWY_NAMESPACE
}  // namespace quillane
HWY_AFTER_NAMESPACE();

#endif

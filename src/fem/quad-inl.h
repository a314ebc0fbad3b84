// Arithmetic on quads, in as many processor registers as they fill. Everything that the fast solver
// uses of the vector library is here, except the choice of the instruction set. Included once per
// instruction set and so without a guard.
#include <cstddef>

#include "fem/wave_system.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using Tag = hn::CappedTag<double, kLanes>;
constexpr Tag kTag;
constexpr std::size_t kWidth = hn::MaxLanes(kTag);
constexpr std::size_t kParts = kLanes / kWidth;

/// One number per lane. Sums and products are rounded one by one: -ffp-contract=off keeps the
/// compiler from fusing them.
struct Lanes {
  hn::Vec<Tag> part[kParts];
};

/// Returns the numbers whose part i is operation(i).
template <class Operation>
HWY_INLINE Lanes Each(const Operation& operation) {
  Lanes lanes;
  for (std::size_t i = 0; i < kParts; ++i) lanes.part[i] = operation(i);
  return lanes;
}

HWY_INLINE Lanes operator+(const Lanes& a, const Lanes& b) {
  return Each([&](std::size_t i) { return hn::Add(a.part[i], b.part[i]); });
}
HWY_INLINE Lanes operator-(const Lanes& a, const Lanes& b) {
  return Each([&](std::size_t i) { return hn::Sub(a.part[i], b.part[i]); });
}
HWY_INLINE Lanes operator*(const Lanes& a, const Lanes& b) {
  return Each([&](std::size_t i) { return hn::Mul(a.part[i], b.part[i]); });
}
HWY_INLINE Lanes operator/(const Lanes& a, const Lanes& b) {
  return Each([&](std::size_t i) { return hn::Div(a.part[i], b.part[i]); });
}

HWY_INLINE Lanes All(double number) {
  return Each([&](std::size_t) { return hn::Set(kTag, number); });
}
HWY_INLINE Lanes Load(const LaneNumbers& from) {
  return Each([&](std::size_t i) { return hn::Load(kTag, from.lane + i * kWidth); });
}
HWY_INLINE void Store(const Lanes& lanes, LaneNumbers& to) {
  for (std::size_t i = 0; i < kParts; ++i) hn::Store(lanes.part[i], kTag, to.lane + i * kWidth);
}

HWY_INLINE double Lane0(const Lanes& lanes) { return hn::GetLane(lanes.part[0]); }

/// Returns `number` in the lanes where the mask is not zero, else `otherwise`.
HWY_INLINE Lanes Where(const Lanes& mask, const Lanes& number, const Lanes& otherwise) {
  return Each([&](std::size_t i) {
    const auto isZero = hn::Eq(mask.part[i], hn::Zero(kTag));
    return hn::IfThenElse(isZero, otherwise.part[i], number.part[i]);
  });
}

/// Returns `number`, but `least` in the lanes where its magnitude is at most `least`.
HWY_INLINE Lanes ReplaceSmall(const Lanes& number, const Lanes& least) {
  return Each([&](std::size_t i) {
    const auto isSmall = hn::Le(hn::Abs(number.part[i]), least.part[i]);
    return hn::IfThenElse(isSmall, least.part[i], number.part[i]);
  });
}

/// Returns lanes kFrom to kFrom + 3 of `first` followed by `last`; kFrom is 1 or 3.
template <std::size_t kFrom>
HWY_INLINE Lanes Window(const Lanes& first, const Lanes& last) {
#if HWY_TARGET <= HWY_AVX3 && HWY_ARCH_X86
  const auto bits = [](const Lanes& lanes) { return _mm256_castpd_si256(lanes.part[0].raw); };
  return {{hn::Vec<Tag>{_mm256_castsi256_pd(_mm256_alignr_epi64(bits(last), bits(first), kFrom))}}};
#elif HWY_TARGET <= HWY_AVX2 && HWY_ARCH_X86
  const auto middle = hn::ConcatLowerUpper(kTag, last.part[0], first.part[0]);
  return {{kFrom == 1 ? hn::CombineShiftRightBytes<sizeof(double)>(kTag, middle, first.part[0])
                      : hn::CombineShiftRightBytes<sizeof(double)>(kTag, last.part[0], middle)}};
#else
  const auto part = [&](std::size_t i) {
    return i < kParts ? first.part[i] : last.part[i - kParts];
  };
#if HWY_TARGET == HWY_SCALAR
  return Each([&](std::size_t i) { return part(i + kFrom); });
#else
  static_assert(kWidth == 2);
  return Each([&](std::size_t i) {
    const std::size_t place = i + kFrom / 2;
    return hn::CombineShiftRightBytes<sizeof(double)>(kTag, part(place + 1), part(place));
  });
#endif
#endif
}

/// Both components of the nodes of a quad.
struct Nodes {
  Lanes u, v;
};

HWY_INLINE Nodes operator+(const Nodes& a, const Nodes& b) { return {a.u + b.u, a.v + b.v}; }
HWY_INLINE Nodes operator-(const Nodes& a, const Nodes& b) { return {a.u - b.u, a.v - b.v}; }
HWY_INLINE Nodes operator*(const Nodes& a, const Nodes& b) { return {a.u * b.u, a.v * b.v}; }
HWY_INLINE Nodes operator*(const Nodes& a, const Lanes& b) { return {a.u * b, a.v * b}; }

HWY_INLINE Nodes Both(double number) { return {All(number), All(number)}; }
HWY_INLINE Nodes Load(const QuadNumbers& from) { return {Load(from.u), Load(from.v)}; }
HWY_INLINE void Store(const Nodes& nodes, QuadNumbers& to) {
  Store(nodes.u, to.u);
  Store(nodes.v, to.v);
}
HWY_INLINE Nodes Where(const Nodes& mask, const Nodes& number, const Nodes& otherwise) {
  return {Where(mask.u, number.u, otherwise.u), Where(mask.v, number.v, otherwise.v)};
}

/// Moves each lane one up; lane 0 comes from lane 3 of the strip below. From numbers of a wave,
/// those of the same wave one row below.
HWY_INLINE Nodes FromBelow(const Nodes& own, const Nodes& below) {
  return {Window<3>(below.u, own.u), Window<3>(below.v, own.v)};
}

/// Moves each lane one down; lane 3 comes from lane 0 of the strip above.
HWY_INLINE Nodes FromAbove(const Nodes& own, const Nodes& above) {
  return {Window<1>(own.u, above.u), Window<1>(own.v, above.v)};
}

/// Returns the sum over lanes and components, in an order independent of the vector length.
HWY_INLINE double Sum(const Nodes& nodes) {
  LaneNumbers sum;
  Store(nodes.u + nodes.v, sum);
  return (sum.lane[0] + sum.lane[1]) + (sum.lane[2] + sum.lane[3]);
}

/// Couplings of a quad's nodes with a neighbour of each: of both components with the neighbour's u,
/// and with its v.
struct Coupling {
  Nodes u, v;
};

HWY_INLINE Coupling Load(const QuadNumbers (&k)[2]) { return {Load(k[0]), Load(k[1])}; }

}  // namespace HWY_NAMESPACE
}  // namespace quillane
HWY_AFTER_NAMESPACE();

// Numbering of the quads and the steps through them.
#include "fem/wave_order.h"

#include <algorithm>
#include <limits>

namespace quillane {

WaveOrder::WaveOrder(int rows, int columns, std::span<const NodeCode> codes) {
  std::size_t fewest = std::numeric_limits<std::size_t>::max();
  int best = 0;
  for (rowsBelow_ = 0; rowsBelow_ <= kMostOutside; ++rowsBelow_) {
    NumberQuads(rows, columns, codes);
    if (Quads() >= fewest) continue;
    fewest = Quads();
    best = rowsBelow_;
  }
  rowsBelow_ = best;
  NumberQuads(rows, columns, codes);
  MakeSteps(columns);
}

void WaveOrder::NumberQuads(int rows, int columns, std::span<const NodeCode> codes) {
  strips_ = (rows + rowsBelow_ + kLanes - 1) / kLanes;
  places_ = columns + kShear + 2 * kWavesPerStrip;
  const int places = (strips_ + 2) * places_;
  quadAt_.assign(static_cast<std::size_t>(places), 0);
  const std::ptrdiff_t width = columns + 2 * kShear;
  const NodeCode* row = codes.data() + (kMostOutside - rowsBelow_) * width;
  codes_ = {0};
  for (int strip = 0; strip < strips_; ++strip, row += kLanes * width) {
    for (int column = 0; column < columns + kShear; ++column) {
      std::uint32_t quad = 0;
      for (int lane = 0; lane < kLanes; ++lane) {
        // One row up and two columns left is the same wave.
        const std::uint32_t code = row[lane * (width - 2) + column + kShear];
        quad |= code << (8 * lane);
      }
      if (quad == 0) continue;
      quadAt_[Place(strip, column + strip * kWavesPerStrip)] =
          static_cast<QuadIndex>(codes_.size());
      codes_.push_back(quad);
    }
  }
}

void WaveOrder::MakeSteps(int columns) {
  std::vector<std::size_t> stepOf(codes_.size());
  const auto append = [&](QuadIndex below, QuadIndex own, QuadIndex above) {
    stepOf[own] = steps_.size();
    // The nodes below are the lower left neighbours of the nodes kReach waves later.
    if (below != 0) distance_ = std::max(distance_, steps_.size() + kReach - stepOf[below]);
    steps_.push_back({below, own, above});
  };
  const auto appendStep = [&](int strip, int wave) {
    append(QuadAt(strip - 1, wave), QuadAt(strip, wave), QuadAt(strip + 1, wave));
  };
  // The place of the last own quad; at first that of a strip with nothing above it.
  int endStrip = -2;
  int endWave = -2 * kWavesPerStrip;
  const auto appendGap = [&](int strip, int wave) {
    for (int k = 0; k < kReach; ++k) {
      append(QuadAt(strip - 1, wave - kReach + k), 0, QuadAt(endStrip + 1, endWave + 1 + k));
    }
  };
  for (int strip = 0; strip < strips_; ++strip) {
    const int firstWave = strip * kWavesPerStrip;
    for (int wave = firstWave; wave < firstWave + columns + kShear; ++wave) {
      if (QuadAt(strip, wave) == 0) continue;
      const bool isFar = strip != endStrip || wave - endWave > kReach;
      if (isFar) appendGap(strip, wave);
      for (int k = isFar ? wave : endWave + 1; k <= wave; ++k) appendStep(strip, k);
      endStrip = strip;
      endWave = wave;
    }
  }
  appendGap(strips_ + 1, (strips_ + 1) * kWavesPerStrip);  // nothing is below that
}

}  // namespace quillane

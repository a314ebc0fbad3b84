// Numbering of the quads and the steps through them.
#include "fem/wave_order.h"

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
  const int strips = (rows + rowsBelow_ + kLanes - 1) / kLanes;
  places_ = columns + kShear + 2 * kStripStep;
  const int places = (strips + 2) * places_;
  quadAt_.assign(static_cast<std::size_t>(places), 0);
  const std::ptrdiff_t width = columns + 2 * kShear;
  const NodeCode* row = codes.data() + (kMostOutside - rowsBelow_) * width;
  codes_ = {0};
  strips_.clear();
  for (int strip = 0; strip < strips; ++strip, row += kLanes * width) {
    strips_.push_back({0, codes_.size()});
    for (int column = 0; column < columns + kShear; ++column) {
      std::uint32_t quad = 0;
      for (int lane = 0; lane < kLanes; ++lane) {
        // One row up and two columns left is the same wave.
        const std::uint32_t code = row[lane * (width - 2) + column + kShear];
        quad |= code << (8 * lane);
      }
      if (quad == 0) continue;
      quadAt_[Place(strip, column + strip * kStripStep)] = static_cast<QuadIndex>(codes_.size());
      codes_.push_back(quad);
    }
  }
  strips_.push_back({0, codes_.size()});
}

void WaveOrder::MakeSteps(int columns) {
  const int strips = static_cast<int>(strips_.size()) - 1;
  const auto stepAt = [&](int strip, int wave) {
    return Step{QuadAt(strip - 1, wave), QuadAt(strip, wave), QuadAt(strip + 1, wave)};
  };
  // Where the last own quad was; at first as if after a strip with nothing above it.
  int endStrip = -2;
  int endWave = -2 * kStripStep;
  const auto appendGap = [&](int strip, int wave) {
    for (int k = 0; k < kReach; ++k) {
      steps_.push_back(
          {QuadAt(strip - 1, wave - kReach + k), 0, QuadAt(endStrip + 1, endWave + 1 + k)});
    }
  };
  for (int strip = 0; strip < strips; ++strip) {
    strips_[static_cast<std::size_t>(strip)].step = steps_.size();
    const int firstWave = strip * kStripStep;
    for (int wave = firstWave; wave < firstWave + columns + kShear; ++wave) {
      if (QuadAt(strip, wave) == 0) continue;
      if (strip != endStrip || wave - endWave > kReach) {
        appendGap(strip, wave);
      } else {
        for (int k = endWave + 1; k < wave; ++k) steps_.push_back(stepAt(strip, k));
      }
      steps_.push_back(stepAt(strip, wave));
      endStrip = strip;
      endWave = wave;
    }
  }
  appendGap(strips + 1, (strips + 1) * kStripStep);  // nothing is below that
  strips_.back().step = steps_.size() - 1;
}

}  // namespace quillane

// Numbering of the quads, wave by wave.
#include "fem/wave_order.h"

#include <algorithm>

namespace quillane {

WaveOrder::WaveOrder(int rows, int columns, std::span<const NodeCode> codes) {
  const int strips = (rows + kLanes - 1) / kLanes;
  const int columnsOfLane0 = columns + 2 * (kLanes - 1);  // lane l stands 2 l columns to the left
  places_ = columnsOfLane0 + 2 * kStripStep;
  quadAt_.assign(static_cast<std::size_t>((strips + 2) * places_), 0);
  const auto codesOf = [&](int strip, int columnOfLane0) {
    std::uint32_t quad = 0;
    for (int lane = 0; lane < kLanes; ++lane) {
      const int row = strip * kLanes + lane;
      const int column = columnOfLane0 - 2 * lane;
      if (row >= rows || column < 0 || column >= columns) continue;
      const std::uint32_t code = codes[static_cast<std::size_t>(row * columns + column)];
      quad |= code << (8 * lane);
    }
    return quad;
  };

  std::vector<std::size_t> placeOf = {0};
  codes_ = {0};
  const int waves = columns + 2 * (rows - 1);
  for (int wave = 0; wave < waves; ++wave) {
    firstOfWave_.push_back(codes_.size());
    const int lowest = std::max(0, wave - columnsOfLane0 + kStripStep) / kStripStep;
    for (int strip = lowest; strip < strips && strip * kStripStep <= wave; ++strip) {
      const int column = wave - strip * kStripStep;
      const std::uint32_t quad = codesOf(strip, column);
      if (quad == 0) continue;
      placeOf.push_back(Place(strip, column));
      quadAt_[placeOf.back()] = static_cast<QuadIndex>(codes_.size());
      codes_.push_back(quad);
    }
  }
  firstOfWave_.push_back(codes_.size());

  surroundings_.resize(codes_.size());
  const auto nextStrip = static_cast<std::size_t>(places_ - kStripStep);  // in the same wave
  for (std::size_t quad = 1; quad < codes_.size(); ++quad) {
    const std::size_t place = placeOf[quad];
    for (std::size_t k = 0; k < 3; ++k) {
      Surroundings& around = surroundings_[quad];
      around.before[k] = quadAt_[place - (k + 1)];
      around.beforeBelow[k] = quadAt_[place - nextStrip - (k + 1)];
      around.after[k] = quadAt_[place + (k + 1)];
      around.afterAbove[k] = quadAt_[place + nextStrip + (k + 1)];
    }
  }
}

}  // namespace quillane

#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "drawing/surface.h"

namespace touch {

/// A stroke as the files keep it. Samples are in twips.
struct Stroke {
  static constexpr std::size_t mostSamples = 3001;
  int colour = 12;  ///< palette index, 0 to 15
  int width = 1;    ///< pixels, 1 or 2
  std::vector<TwipsPoint> samples;

  friend bool operator==(const Stroke&, const Stroke&) = default;
};

/// The samples of the stroke that is being drawn, or was drawn or read last.
class StrokeBuffer {
 public:
  /// Begins a stroke.
  void begin(TwipsPoint first) {
    count_ = 0;
    add(first);
  }
  /// A stroke goes on however long it lasts: beyond 3000 samples the newest takes the place of the
  /// one before, outside the count, so that the measured part stays as it was.
  void add(TwipsPoint sample) {
    samples_[std::min(count_, mostCounted)] = sample;
    count_ = std::min(count_ + 1, mostCounted);
  }
  /// Takes over a stroke that was read, at most Stroke::mostSamples long.
  void assign(std::span<const TwipsPoint> samples) {
    count_ = std::min(samples.size(), samples_.size());
    std::copy_n(samples.begin(), count_, samples_.begin());
  }

  std::span<const TwipsPoint> samples() const { return {samples_.data(), count_}; }

 private:
  static constexpr std::size_t mostCounted = Stroke::mostSamples - 1;
  std::array<TwipsPoint, Stroke::mostSamples> samples_{};
  std::size_t count_ = 0;
};

}  // namespace touch

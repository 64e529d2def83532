// A small seeded generator, so that the same scale always yields the same
// bytes on every machine (the standard distributions are not portable).
#pragma once

#include <cstdint>
#include <span>

namespace suizo::gen {

class Rng {
 public:
  explicit Rng(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Next() {  // SplitMix64
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }

  // A whole number from lo to hi, both included.
  int Between(int lo, int hi) {
    return lo + static_cast<int>(Next() % static_cast<std::uint64_t>(hi - lo + 1));
  }

  bool Percent(int percent) { return Between(0, 99) < percent; }

  template <typename T>
  const T& Pick(std::span<const T> items) {
    return items[static_cast<std::size_t>(Next() % items.size())];
  }

 private:
  std::uint64_t state_;
};

}  // namespace suizo::gen

// A perfect hash for words that are known at compile time: the words of a bucket share a
// displacement that maps each one to its own slot, so that a lookup compares one word, found or
// not.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace tavo {

class WordHash {
 public:
  static constexpr size_t kBuckets = 256;
  static constexpr size_t kSlots = 1024;

  // head, tail: the word's first and last eight characters, as in WordRun; length in characters.
  WordHash() = default;
  constexpr WordHash(uint64_t head, uint64_t tail, size_t length)
      : mixed_(((head ^ std::rotl(tail, 29)) + length) * 0x9E3779B97F4A7C15u) {}

  constexpr size_t bucket() const {
    return mixed_ >> 56;
  }
  constexpr size_t slot(uint32_t displacement) const {
    return ((mixed_ >> 40) + displacement) % kSlots;
  }

 private:
  uint64_t mixed_ = 0;
};

using Displacements = std::array<uint16_t, WordHash::kBuckets>;

// Not constexpr, so that calling it during the search for displacements is a compile error.
inline void two_words_share_every_slot() {}

// A displacement for each bucket, the fullest buckets first.
template <size_t kWords>
constexpr Displacements find_displacements(const std::array<WordHash, kWords>& words) {
  Displacements displacements{};
  std::array<size_t, WordHash::kBuckets> sizes{};
  size_t largest = 0;
  for (const WordHash& word : words) {
    const size_t size = ++sizes[word.bucket()];
    if (size > largest) largest = size;
  }
  std::array<bool, WordHash::kSlots> taken{};
  const auto take = [&](size_t bucket, uint32_t displacement) {
    std::array<size_t, kWords> slots{};
    size_t count = 0;
    bool free = true;
    for (const WordHash& word : words) {
      if (word.bucket() != bucket) continue;
      const size_t slot = word.slot(displacement);
      if (taken[slot]) {
        free = false;
        break;
      }
      taken[slot] = true;
      slots[count++] = slot;
    }
    for (size_t i = 0; i < count && !free; ++i) taken[slots[i]] = false;
    return free;
  };
  for (size_t size = largest; size != 0; --size) {
    for (size_t bucket = 0; bucket < WordHash::kBuckets; ++bucket) {
      if (sizes[bucket] != size) continue;
      uint32_t displacement = 0;
      while (!take(bucket, displacement)) {
        if (++displacement == WordHash::kSlots) two_words_share_every_slot();
      }
      displacements[bucket] = static_cast<uint16_t>(displacement);
    }
  }
  return displacements;
}

}  // namespace tavo

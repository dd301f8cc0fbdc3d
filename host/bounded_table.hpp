// A hash table that never has more than so many entries, for counting over traces of any size.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace wirelines::host {

template <std::size_t N>
using Key = std::array<std::uint8_t, N>;

template <typename KeyType, typename Value>
class BoundedTable {
 public:
  struct Entry {
    KeyType key;
    Value value;
  };

  explicit BoundedTable(std::size_t bound) : bound_(bound), slots_(kFirstSlots) {}

  // The value of `key`, entered if it was not there; null when it would be one entry too many.
  Value* enter(const KeyType& key) {
    std::size_t slot = find(key);
    if (slots_[slot] == 0) {
      if (entries_.size() >= bound_) return nullptr;
      if ((entries_.size() + 1) * 2 > slots_.size()) {
        grow();
        slot = find(key);
      }
      entries_.push_back({key, {}});
      slots_[slot] = static_cast<std::uint32_t>(entries_.size());
    }
    return &entries_[slots_[slot] - 1].value;
  }

  [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }

 private:
  static constexpr std::size_t kFirstSlots = 64;  // a power of two, as every later size

  // Seeded, so that no trace can be made to put all its keys into one place.
  [[nodiscard]] std::size_t hash(const KeyType& key) const {
    std::uint64_t sum = seed_;
    for (std::size_t i = 0; i < key.size(); i += 8) {
      std::uint64_t word = 0;
      std::memcpy(&word, key.data() + i, std::min<std::size_t>(8, key.size() - i));
      sum = (sum ^ word) * 0x9E3779B97F4A7C15;
      sum ^= sum >> 29;
    }
    return sum;
  }

  // The slot of `key`, or the free one where it belongs.
  [[nodiscard]] std::size_t find(const KeyType& key) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = hash(key) & mask;
    while (slots_[slot] != 0 && entries_[slots_[slot] - 1].key != key) slot = (slot + 1) & mask;
    return slot;
  }

  void grow() {
    slots_.assign(slots_.size() * 2, 0);
    for (std::size_t i = 0; i < entries_.size(); i++) {
      slots_[find(entries_[i].key)] = static_cast<std::uint32_t>(i + 1);
    }
  }

  std::size_t bound_;
  std::uint64_t seed_ = std::random_device{}() * 0x9E3779B97F4A7C15 + 1;
  std::vector<Entry> entries_;
  std::vector<std::uint32_t> slots_;  // index in entries_ plus 1, or 0; at most half of them are taken
};

}  // namespace wirelines::host

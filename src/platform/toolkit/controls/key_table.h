// KeyTable: which row bears a key, where there may be a hundred thousand of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace dossierkit::toolkit {

// Places that are tried one after the other, at most half of them taken: one block of memory, of which a
// look at a key touches one place. The keys themselves lie with their rows.
class KeyTable {
 public:
  // The row whose key `is` confirms, or -1; `is` is asked for hardly any other row.
  template <typename Is>
  int Find(std::string_view key, const Is& is) const {
    if (places_.empty()) return -1;
    const std::uint32_t hash = HashOf(key);
    return places_[PlaceOf(hash, is)].row;
  }

  // Adds a row from 0 on. False, and nothing is added, where `is` confirms that another bears the key.
  template <typename Is>
  bool Add(std::string_view key, int row, const Is& is) {
    Reserve(count_ + 1);
    const std::uint32_t hash = HashOf(key);
    Place& place = places_[PlaceOf(hash, is)];
    if (place.row >= 0) return false;
    place = {hash, row};
    ++count_;
    return true;
  }

  // Makes room for that many rows in all.
  void Reserve(std::size_t rows) {
    if (2 * rows > places_.size()) Grow(2 * rows);
  }

  void Clear() {
    places_.clear();
    count_ = 0;
  }

 private:
  struct Place {
    std::uint32_t hash = 0;
    int row = -1;
  };

  static std::uint32_t HashOf(std::string_view key) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(key));
  }
  std::size_t Mask() const { return places_.size() - 1; }

  // The place of a key, or the one where it would stand.
  template <typename Is>
  std::size_t PlaceOf(std::uint32_t hash, const Is& is) const {
    std::size_t at = hash & Mask();
    while (places_[at].row >= 0 && (places_[at].hash != hash || !is(places_[at].row))) at = (at + 1) & Mask();
    return at;
  }

  void Grow(std::size_t least) {
    std::size_t size = 16;
    while (size < least) size *= 2;
    std::vector<Place> former(size);
    former.swap(places_);
    for (const Place& place : former) {
      if (place.row >= 0) places_[PlaceOf(place.hash, [](int) { return false; })] = place;
    }
  }

  std::vector<Place> places_;  // none, or a power of two
  std::size_t count_ = 0;
};

}  // namespace dossierkit::toolkit

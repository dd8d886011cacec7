#include "QuilloCore/Artifacts/TextInterner.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>
#include <numeric>
#include <utility>

namespace quillo {
namespace {

/// Numbers distinct texts in the order met. The general hash table takes twice as long, for the memory of its nodes.
class FirstSightings {
 public:
  explicit FirstSightings(std::size_t textCount) : places_(std::bit_ceil(2 * textCount + 1)) {}

  std::uint32_t number(std::string_view text) {
    const std::size_t hash = std::hash<std::string_view>()(text);
    const std::size_t mask = places_.size() - 1;
    for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
      Place& place = places_[i];
      if (place.number == 0) {
        texts_.push_back(text);
        place = {hash, static_cast<std::uint32_t>(texts_.size())};
      } else if (place.hash != hash || texts_[place.number - 1] != text) {
        continue;
      }
      return place.number - 1;
    }
  }

  const std::vector<std::string_view>& texts() const { return texts_; }

 private:
  struct Place {
    std::size_t hash = 0;
    std::uint32_t number = 0;  ///< from 1; 0 is free
  };
  std::vector<Place> places_;
  std::vector<std::string_view> texts_;
};

/// The first eight bytes as a number that compares as they do.
std::uint64_t leadingBytes(std::string_view text) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, text.data(), std::min(text.size(), sizeof(bytes)));
  return std::endian::native == std::endian::little ? std::byteswap(bytes) : bytes;
}

}  // namespace

TextInterner::TextInterner(const std::vector<std::string_view>& strings) {
  FirstSightings sightings(strings.size());
  ids_.reserve(strings.size());
  for (const std::string_view text : strings) ids_.push_back(sightings.number(text));

  struct SortedText {
    std::uint64_t leading;
    std::uint32_t number;
  };
  std::vector<SortedText> order;
  order.reserve(sightings.texts().size());
  for (std::uint32_t i = 0; i < sightings.texts().size(); ++i) order.push_back({leadingBytes(sightings.texts()[i]), i});
  std::ranges::sort(order, [&](const SortedText& a, const SortedText& b) {
    // char_traits compares bytes as unsigned.
    return a.leading != b.leading ? a.leading < b.leading : sightings.texts()[a.number] < sightings.texts()[b.number];
  });

  std::vector<std::int64_t> idOfSighting(order.size());
  texts_.reserve(order.size());
  for (const SortedText& text : order) {
    idOfSighting[text.number] = static_cast<std::int64_t>(texts_.size());
    texts_.push_back(sightings.texts()[text.number]);
  }
  for (std::int64_t& id : ids_) id = idOfSighting[static_cast<std::size_t>(id)];
}

}  // namespace quillo

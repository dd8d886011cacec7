#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillo {

/// What turns the data of a representation into its type. Forms that are costly to make, and that hardly any program
/// asks for, are offered unmade.
enum class PasteboardConversion : std::uint8_t {
  none,         ///< the data are the type's own
  tiffFromPNG,  ///< the data are a PNG, as `TIFFImageConversion` takes them
};

/// One form of an item's content.
struct PasteboardRepresentation {
  std::string type;
  std::string data;
  /// How the platform packs the data, in its own words, so that what was read can be given back just so. Empty for data
  /// of ours, which is plain bytes.
  std::string packing{};
  /// What the platform does to the data when somebody asks for the type; one that fails makes it refuse the type.
  PasteboardConversion conversion = PasteboardConversion::none;

  friend bool operator==(const PasteboardRepresentation&, const PasteboardRepresentation&) = default;
};

/// What was on the clipboard, as far as its owner gave it out.
struct PasteboardSnapshot {
  struct Item {
    std::vector<std::string> advertisedTypes;               ///< in the item's order; not those that the owner refused
    std::vector<PasteboardRepresentation> representations;  ///< in the order of the types; those that came

    /// The advertised types without a representation, in that order, each once.
    std::vector<std::string> uncapturedTypes() const;

    friend bool operator==(const Item&, const Item&) = default;
  };

  std::vector<Item> items;

  /// Types that the clipboard advertised although it gave out no item.
  std::vector<std::string> unrepresentedTopLevelTypes;

  /// Only a complete snapshot can be put back without loss.
  bool isComplete() const;

  friend bool operator==(const PasteboardSnapshot&, const PasteboardSnapshot&) = default;
};

}  // namespace quillo

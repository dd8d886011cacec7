#include "QuilloCore/Shortcuts/KeyLabels.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillo {
namespace {

using KeyLabel = std::pair<std::uint32_t, std::string_view>;

// clang-format off
constexpr auto labels = std::to_array<KeyLabel>({
    {0, "A"}, {11, "B"}, {8, "C"}, {2, "D"}, {14, "E"}, {3, "F"}, {5, "G"}, {4, "H"}, {34, "I"}, {38, "J"}, {40, "K"},
    {37, "L"}, {46, "M"}, {45, "N"}, {31, "O"}, {35, "P"}, {12, "Q"}, {15, "R"}, {1, "S"}, {17, "T"}, {32, "U"},
    {9, "V"}, {13, "W"}, {7, "X"}, {16, "Y"}, {6, "Z"},
    {29, "0"}, {18, "1"}, {19, "2"}, {20, "3"}, {21, "4"}, {23, "5"}, {22, "6"}, {26, "7"}, {28, "8"}, {25, "9"},
    {49, "Space"}, {36, "↩"}, {48, "⇥"}, {123, "←"}, {124, "→"}, {126, "↑"}, {125, "↓"}, {115, "↖"}, {119, "↘"},
    {116, "⇞"}, {121, "⇟"}, {117, "⌦"},
    {122, "F1"}, {120, "F2"}, {99, "F3"}, {118, "F4"}, {96, "F5"}, {97, "F6"}, {98, "F7"}, {100, "F8"}, {101, "F9"},
    {109, "F10"}, {103, "F11"}, {111, "F12"},
});
// clang-format on

static_assert(labels.size() == 60);

}  // namespace

std::string_view keyLabel(std::uint32_t keyCode) {
  const auto found = std::ranges::find(labels, keyCode, &KeyLabel::first);
  return found == labels.end() ? std::string_view() : found->second;
}

}  // namespace quillo

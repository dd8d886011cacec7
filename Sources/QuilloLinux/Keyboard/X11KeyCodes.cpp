#include "QuilloLinux/Keyboard/X11KeyCodes.h"

#include <algorithm>
#include <array>

namespace quillo {
namespace {

struct PhysicalKey {
  std::uint8_t ansi;
  std::uint8_t kernel;
};

/// The display's codes are the kernel's, moved up: X11 reserves the first eight.
constexpr std::uint32_t x11Offset = 8;

// clang-format off
constexpr auto keys = std::to_array<PhysicalKey>({
    // Letters, row by row: Q to P, A to L, Z to M.
    {12, 16}, {13, 17}, {14, 18}, {15, 19}, {17, 20}, {16, 21}, {32, 22}, {34, 23}, {31, 24}, {35, 25},
    {0, 30}, {1, 31}, {2, 32}, {3, 33}, {5, 34}, {4, 35}, {38, 36}, {40, 37}, {37, 38},
    {6, 44}, {7, 45}, {8, 46}, {9, 47}, {11, 48}, {45, 49}, {46, 50},
    // Digits, 1 to 0.
    {18, 2}, {19, 3}, {20, 4}, {21, 5}, {23, 6}, {22, 7}, {26, 8}, {28, 9}, {25, 10}, {29, 11},
    // ` - = [ ] \ ; ' , . / and the keys that other layouts have besides: beside the left Shift, Yen, the Japanese \.
    {50, 41}, {27, 12}, {24, 13}, {33, 26}, {30, 27}, {42, 43}, {41, 39}, {39, 40}, {43, 51}, {47, 52}, {44, 53},
    {10, 86}, {93, 124}, {94, 89},
    // Escape, Backspace, Tab, Return, Space.
    {53, 1}, {51, 14}, {48, 15}, {36, 28}, {49, 57},
    // Left, right, down, up; Home, End, Page Up, Page Down, Delete, Insert (Help on the ANSI layout), Menu.
    {123, 105}, {124, 106}, {125, 108}, {126, 103},
    {115, 102}, {119, 107}, {116, 104}, {121, 109}, {117, 111}, {114, 110}, {110, 127},
    // F1 to F12, F13 to F20.
    {122, 59}, {120, 60}, {99, 61}, {118, 62}, {96, 63}, {97, 64}, {98, 65}, {100, 66}, {101, 67}, {109, 68},
    {103, 87}, {111, 88},
    {105, 183}, {107, 184}, {113, 185}, {106, 186}, {64, 187}, {79, 188}, {80, 189}, {90, 190},
    // The keypad: 0 to 9, the point, / * - + Enter = and the comma.
    {82, 82}, {83, 79}, {84, 80}, {85, 81}, {86, 75}, {87, 76}, {88, 77}, {89, 71}, {91, 72}, {92, 73},
    {65, 83}, {75, 98}, {67, 55}, {78, 74}, {69, 78}, {76, 96}, {81, 117}, {95, 121},
});
// clang-format on

}  // namespace

std::optional<std::uint8_t> x11KeyCode(std::uint32_t ansiKeyCode) {
  const auto found = std::ranges::find(keys, ansiKeyCode, &PhysicalKey::ansi);
  if (found == keys.end()) return std::nullopt;
  return static_cast<std::uint8_t>(found->kernel + x11Offset);
}

std::optional<std::uint32_t> ansiKeyCode(std::uint32_t x11KeyCode) {
  const auto found = std::ranges::find(keys, x11KeyCode - x11Offset, &PhysicalKey::kernel);
  return found == keys.end() ? std::nullopt : std::optional<std::uint32_t>(found->ansi);
}

}  // namespace quillo

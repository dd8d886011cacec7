#pragma once

#include <string_view>

namespace quillo {

/// The types under which a capture is put on the clipboard.
namespace PasteboardTypes {
inline constexpr std::string_view png = "image/png";
inline constexpr std::string_view tiff = "image/tiff";
inline constexpr std::string_view text = "text/plain;charset=utf-8";
inline constexpr std::string_view html = "text/html";
/// Tells which capture this is: JSON with the members "captureID" and "version".
inline constexpr std::string_view captureMarker = "org.quillo.Quillo.context-capture";
}  // namespace PasteboardTypes

}  // namespace quillo

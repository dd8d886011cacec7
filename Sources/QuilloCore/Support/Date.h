#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "QuilloCore/Support/JsonReader.h"
#include "QuilloCore/Support/JsonWriter.h"

namespace quillo {

/// A moment of civil time, UTC.
using Date = std::chrono::sys_time<std::chrono::microseconds>;

/// "2026-11-14T21:35:47Z": whole seconds, a fraction is dropped (toward the past).
std::string formatDateSeconds(Date date);

/// "2026-11-14T21:35:47.123Z": milliseconds, a finer fraction is dropped.
std::string formatDateMilliseconds(Date date);

/// Reads an ISO 8601 date-time in extended form with four-digit year, seconds, an optional fraction, and "Z" or a
/// numeric offset; nothing for any other text (no blanks, no missing parts, no day that the month lacks).
std::optional<Date> parseDate(std::string_view text);

/// The canonical evidence counts time from 2001-01-01T00:00:00Z, in seconds.
double secondsSinceReferenceDate(Date date);
Date dateFromSecondsSinceReferenceDate(double seconds);

template <>
struct JsonCodec<Date> {
  static void write(JsonWriter& writer, const Date& date);
  static Date read(const JsonCursor& cursor);
};

}  // namespace quillo

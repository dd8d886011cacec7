#include "QuilloCore/Support/Date.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quillo {
namespace {

using std::chrono::microseconds;
using std::chrono::sys_days;

constexpr Date referenceDate = sys_days{std::chrono::year{2001} / 1 / 1};
constexpr Date firstDate = sys_days{std::chrono::year{0} / 1 / 1};
constexpr Date lastDate = sys_days{std::chrono::year{10000} / 1 / 1} - microseconds{1};

/// The parts up to the seconds, without the zone.
std::string formatCivilTime(std::chrono::sys_seconds moment) {
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date{day};
  const std::chrono::hh_mm_ss time{moment - day};
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), time.hours().count(),
                     time.minutes().count(), time.seconds().count());
}

class DateParser {
 public:
  explicit DateParser(std::string_view text) : text_(text) {}

  std::optional<Date> parse() {
    const int year = digits(4);
    const int month = separated('-');
    const int day = separated('-');
    const int hour = separated('T');
    const int minute = separated(':');
    const int second = separated(':');
    const microseconds fraction = readFraction();
    const std::chrono::minutes offset = readOffset();
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                                           std::chrono::day{static_cast<unsigned>(day)}};
    if (!isGood_ || !text_.empty() || !date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    const Date moment = sys_days{date} + std::chrono::hours{hour} + std::chrono::minutes{minute} +
                        std::chrono::seconds{second} + fraction - offset;
    if (moment < firstDate || moment > lastDate) return std::nullopt;
    return moment;
  }

 private:
  bool skip(char c) {
    if (!text_.starts_with(c)) return false;
    text_.remove_prefix(1);
    return true;
  }

  bool isAtDigit() const { return !text_.empty() && text_.front() >= '0' && text_.front() <= '9'; }

  int digits(int count) {
    int value = 0;
    for (int i = 0; i < count; ++i) {
      if (!isAtDigit()) {
        isGood_ = false;
        return 0;
      }
      value = 10 * value + (text_.front() - '0');
      text_.remove_prefix(1);
    }
    return value;
  }

  int separated(char separator) {
    if (!skip(separator)) isGood_ = false;
    return digits(2);
  }

  microseconds readFraction() {
    if (!skip('.')) return microseconds{0};
    if (!isAtDigit()) isGood_ = false;
    microseconds fraction{0};
    for (std::int64_t unit = 100'000; isAtDigit(); unit /= 10) fraction += microseconds{unit * digits(1)};
    return fraction;
  }

  std::chrono::minutes readOffset() {
    if (skip('Z')) return std::chrono::minutes{0};
    const bool isWest = text_.starts_with('-');
    if (!isWest && !text_.starts_with('+')) isGood_ = false;
    const int hours = separated(isWest ? '-' : '+');
    const int minutes = separated(':');
    if (hours > 23 || minutes > 59) isGood_ = false;
    const std::chrono::minutes east = std::chrono::hours{hours} + std::chrono::minutes{minutes};
    return isWest ? -east : east;
  }

  std::string_view text_;
  bool isGood_ = true;
};

}  // namespace

std::string formatDateSeconds(Date date) {
  return formatCivilTime(std::chrono::floor<std::chrono::seconds>(date)) + "Z";
}

std::string formatDateMilliseconds(Date date) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(date);
  const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(date - seconds);
  return fmt::format("{}.{:03}Z", formatCivilTime(seconds), milliseconds.count());
}

std::optional<Date> parseDate(std::string_view text) {
  return DateParser(text).parse();
}

double secondsSinceReferenceDate(Date date) {
  return static_cast<double>((date - referenceDate).count()) / 1e6;
}

Date dateFromSecondsSinceReferenceDate(double seconds) {
  if (std::isnan(seconds)) return referenceDate;
  const double first = secondsSinceReferenceDate(firstDate);
  const double last = secondsSinceReferenceDate(lastDate);
  const double micros = std::round(std::clamp(seconds, first, last) * 1e6);
  return std::clamp(referenceDate + microseconds{static_cast<std::int64_t>(micros)}, firstDate, lastDate);
}

void JsonCodec<Date>::write(JsonWriter& writer, const Date& date) {
  writer.string(formatDateSeconds(date));
}

Date JsonCodec<Date>::read(const JsonCursor& cursor) {
  const auto date = parseDate(cursor.string());
  if (!date) throw JsonError(JsonError::InvalidValue{cursor.path(), "it is not an ISO 8601 date and time"});
  return *date;
}

}  // namespace quillo

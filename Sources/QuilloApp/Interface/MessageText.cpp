#include "QuilloApp/Interface/MessageText.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <optional>

#include "QuilloApp/Interface/MessagePatterns.h"

namespace quillo {
namespace {

constexpr int deepestReason = 4;  ///< a message in a message in …

bool isPlaceholder(QStringView pattern, qsizetype at) {
  return pattern[at] == QLatin1Char('%') && at + 1 < pattern.size() &&
         (pattern[at + 1].isDigit() || pattern[at + 1] == QLatin1Char('n'));
}

/// The end of the literal text that begins there.
qsizetype literalEnd(QStringView pattern, qsizetype at) {
  while (at < pattern.size() && !isPlaceholder(pattern, at)) ++at;
  return at;
}

/// What stands in the text for the pattern's placeholders, in their order; nothing when it does not fit.
std::optional<QStringList> fit(QStringView pattern, QStringView text) {
  QStringList values;
  qsizetype at = literalEnd(pattern, 0);
  if (!text.startsWith(pattern.first(at))) return std::nullopt;
  text = text.sliced(at);
  while (at < pattern.size()) {
    const bool isNumber = pattern[at + 1] == QLatin1Char('n');
    const qsizetype end = literalEnd(pattern, at + 2);
    const QStringView literal = pattern.sliced(at + 2, end - at - 2);
    const qsizetype length = end == pattern.size() ? text.size() - literal.size() : text.indexOf(literal);
    if (length < 0 || !text.sliced(length).startsWith(literal)) return std::nullopt;
    values << text.first(length).toString();
    bool isWhole = true;
    if (isNumber) values.back().toInt(&isWhole);
    if (!isWhole) return std::nullopt;
    text = text.sliced(length + literal.size());
    at = end;
  }
  return text.isEmpty() ? std::optional(values) : std::nullopt;
}

/// What stands for a placeholder may look like one itself, so everything is put in at once.
QString filled(const QString& translated, const QStringList& values) {
  QString text;
  for (qsizetype at = 0; at < translated.size(); ++at) {
    const int number = isPlaceholder(translated, at) ? translated[at + 1].digitValue() : 0;
    if (number < 1 || number > values.size()) {
      text += translated[at];
    } else {
      text += values[number - 1];
      ++at;
    }
  }
  return text;
}

std::optional<QString> translation(const QString& message, int depth);

std::optional<QString> translationOfWhole(const QString& message, int depth) {
  for (const char* source : messagePatterns) {
    const QString pattern = QString::fromUtf8(source);
    std::optional<QStringList> values = fit(pattern, message);
    if (!values) continue;
    int count = -1;
    if (const qsizetype number = pattern.indexOf(QStringLiteral("%n")); number >= 0) {
      count = values->takeAt(pattern.first(number).count(QLatin1Char('%'))).toInt();
    }
    for (QString& value : *values) value = translation(value, depth + 1).value_or(value);
    return filled(QCoreApplication::translate(messageContext, source, nullptr, count), *values);
  }
  return std::nullopt;
}

std::optional<QString> translation(const QString& message, int depth) {
  if (depth > deepestReason) return std::nullopt;
  if (auto whole = translationOfWhole(message, depth)) return whole;
  // Several sentences or reasons in a row.
  for (const QString& separator : {QStringLiteral(". "), QStringLiteral(", "), QStringLiteral(" and ")}) {
    for (qsizetype at = message.indexOf(separator); at >= 0; at = message.indexOf(separator, at + 1)) {
      const qsizetype end = at + (separator.startsWith(QLatin1Char('.')) ? 1 : 0);
      const auto first = translationOfWhole(message.first(end), depth + 1);
      if (!first) continue;
      const QString rest = message.sliced(at + separator.size());
      const QString between = separator.size() > 2 ? QCoreApplication::translate(messageContext, " and ")
                                                   : separator.last(separator.size() - (end - at));
      return *first + between + translation(rest, depth + 1).value_or(rest);
    }
  }
  return std::nullopt;
}

}  // namespace

QString messageText(std::string_view message) {
  const QString text = QString::fromUtf8(message.data(), static_cast<qsizetype>(message.size()));
  return translation(text, 0).value_or(text);
}

}  // namespace quillo

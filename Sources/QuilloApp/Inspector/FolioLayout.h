#pragma once

#include <QLabel>
#include <QString>
#include <QToolButton>
#include <string_view>

class QPushButton;

namespace quillo::folio {

/// The grid that everything stands on, in pixels of the desktop's scale.
inline constexpr int unit = 8;

/// A label in bold whose mnemonic leads to the field.
QLabel* makeHeading(QWidget* field, const QString& text);

/// A flat button, with what it does in full for pointers and screen readers.
QToolButton* makeToolButton(QWidget* parent, const QString& objectName, const QString& text,
                            const QString& accessibleName);

QPushButton* makeButton(QWidget* parent, const QString& objectName, const QString& text, std::string_view symbol);

}  // namespace quillo::folio

#pragma once

#include <QLabel>
#include <string_view>

class QGridLayout;
class QVBoxLayout;

namespace quillo::setup {

/// The grid that everything stands on, in pixels of the desktop's scale.
inline constexpr int unit = 8;

QString qString(std::string_view text);

/// The title of a section.
QLabel* makeHeading(QWidget* parent, const QString& text);

/// A text that may take several lines.
QLabel* makeParagraph(QWidget* parent, const QString& objectName, const QString& text = {});

/// A paragraph that is said beside the main thing; it follows the palette.
QLabel* makeQuietParagraph(QWidget* parent, const QString& objectName, const QString& text = {});

/// Sets the text and hides the label while there is none.
void setOptionalText(QLabel& label, const QString& text);

}  // namespace quillo::setup

#pragma once

#include <QWidget>
#include <functional>
#include <initializer_list>
#include <string>

namespace quillo::test {

/// Calls `draw` while the application is light, dark, in high contrast, and from right to left.
void inEveryLook(const std::function<void(const std::string& look)>& draw);

/// Draws the widget as it is now into the build folder, for people to look at, at so many pixels a point. Fails when
/// the picture cannot be written.
void savePicture(QWidget& shown, const std::string& name, int scale);

/// The same in every look.
void drawPictures(QWidget& shown, const std::string& name, std::initializer_list<int> scales = {1, 2});

}  // namespace quillo::test

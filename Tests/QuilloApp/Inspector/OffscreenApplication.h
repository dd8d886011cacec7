#pragma once

#include <QApplication>

namespace quillo::test {

/// The one application object of the program; it draws into memory.
inline QApplication& offscreenApplication() {
  static int argumentCount = 1;
  static char name[] = "test";
  static char* arguments[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static QApplication application(argumentCount, arguments);
  return application;
}

}  // namespace quillo::test

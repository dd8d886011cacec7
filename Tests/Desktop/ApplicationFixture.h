#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "RunningProgram.h"

namespace quillo::test {

/// The application itself, driven as a user does: by keys, by its menu over the bus, by starting it again. The first
/// run's guide is done with.
class Application : public testing::Test {
 protected:
  using Environment = std::vector<std::string>;  ///< NAME=value

  void SetUp() override;

  static std::unique_ptr<RunningProgram> start(const Arguments& options = {}, const Environment& environment = {});
  /// Starts it while another runs; the exit status.
  static int secondStart(const Arguments& options = {}, const Environment& environment = {});
  static Arguments commandLine(const Arguments& options, const Environment& environment = {});
  static bool isRunning();

  /// Its place on the desktop: a tray host, and what its menu shows.
  static std::unique_ptr<RunningProgram> startTrayHost();
  static std::string menu();
  static bool choose(const std::string& item);

  /// On the desktop's display, or on another.
  static bool hasWindow(const std::string& name, const Environment& display = {});
  static std::string activeWindow(const Environment& display = {});  ///< its title, and a line feed
  static void press(const std::string& keys, const Environment& display = {});
  static void type(const std::string& text, const Environment& display = {});

  /// Brings the library to the front, with the cursor in the title of the capture that is selected.
  static void beginRenaming(const Environment& display = {});

  /// The same for the first capture of the list; the title is then one word, "First", which `library` has seen saved.
  static void beginTyping(const std::function<std::string()>& library, const Environment& display = {});

  /// Puts one capture into the library, while the application does not run.
  static void addCapture();
  static std::string libraryPath();
  /// What the library's manifests say.
  static std::string library();
};

}  // namespace quillo::test

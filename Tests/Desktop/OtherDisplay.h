#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>
#include <vector>

#include "RunningProgram.h"
#include "Tests/Support/GoldenFile.h"

namespace quillo::test {

/// A display and its window manager, apart from the desktop's.
class OtherDisplay {
 public:
  explicit OtherDisplay(const std::string& options = {})
      : announcement_(writeFile("display-number", "")),
        server_({"sh", "-c",
                 "exec Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset " + options + " 3>\"$0\"",
                 announcement_}) {
    EXPECT_TRUE(eventually([this] { return readFile(announcement_).ends_with("\n"); }));
    std::string number = readFile(announcement_);
    number.pop_back();
    environment_ = {"DISPLAY=:" + number};
    manager_ = std::make_unique<RunningProgram>(Arguments{"env", environment_[0], "openbox", "--sm-disable"});
  }

  /// What a program that is to use it is started with.
  const std::vector<std::string>& environment() const { return environment_; }
  void end() const { server_.signal(SIGKILL); }

 private:
  std::string announcement_;
  RunningProgram server_;
  std::vector<std::string> environment_;
  std::unique_ptr<RunningProgram> manager_;
};

}  // namespace quillo::test

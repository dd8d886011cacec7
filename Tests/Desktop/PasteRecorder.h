#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "RunningProgram.h"

namespace quillo::test {

/// Fields of real toolkits that one pastes into.
enum class PasteField : std::uint8_t { gtk3Editor, gtk4Entry, qtEditor, chromiumTextarea, chromiumEditable, terminal };

std::string nameOf(PasteField field);
inline void PrintTo(PasteField field, std::ostream* stream) {
  *stream << nameOf(field);
}

/// A program with a focused field that writes down what is pasted into it.
class PasteRecorder {
 public:
  /// Starts the program and waits until its window has the focus.
  explicit PasteRecorder(PasteField field);

  pid_t pid() const { return program_.pid(); }
  const std::string& path() const { return path_; }  ///< of the file that it writes
  void signal(int number) const { program_.signal(number); }

  /// What has arrived, one line each: "image 16x12", "text " and everything that the field then holds (JSON).
  std::string recorded() const;

  /// Waits until the record ends with the line; gives the record.
  std::string awaitLine(const std::string& line) const;

 private:
  PasteField field_;
  std::string path_;
  RunningProgram program_;
};

}  // namespace quillo::test

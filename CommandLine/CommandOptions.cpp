#include "CommandOptions.h"

#include <CLI/CLI.hpp>

#include <sstream>

namespace quillo {

ParsedCommandLine parseCommandLine(int argumentCount, const char* const* arguments) {
  ParsedCommandLine parsed;
  CLI::App app("Turns the window in front of you into text for a language model.", "quillo");
  app.set_version_flag("--version", QUILLO_VERSION);
  app.require_subcommand(1);

  SnapshotOptions snapshotOptions;
  auto* snapshot = app.add_subcommand("snapshot", "Reads a window's accessibility tree and prints it as JSON");
  snapshot->add_option("--window", snapshotOptions.windowNumber,
                       "The window's number on the display; by default the frontmost window of another application");
  snapshot->callback([&] { parsed.command = snapshotOptions; });

  ObserveOptions observeOptions;
  bool withoutRoot = false;
  bool withoutActions = false;
  auto* observe = app.add_subcommand("observe", "Turns a snapshot (JSON) into an interface observation (JSON)");
  observe->add_option("file", observeOptions.input, "The snapshot; standard input by default")->type_name("FILE");
  observe->add_flag("--no-application-root", withoutRoot, "Do not put the window under an application element");
  observe->add_flag("--no-inferred-actions", withoutActions, "List only the actions that the application lists");
  observe->callback([&] {
    observeOptions.synthesizesApplicationRoot = !withoutRoot;
    observeOptions.infersActions = !withoutActions;
    parsed.command = observeOptions;
  });

  RenderOptions renderOptions;
  auto* render = app.add_subcommand("render", "Turns an interface observation (JSON) into text");
  render->add_option("file", renderOptions.input, "The observation; standard input by default")->type_name("FILE");
  render->callback([&] { parsed.command = renderOptions; });

  app.add_subcommand("doctor", "Tells what this desktop offers and what is missing")->callback([&] {
    parsed.command = DoctorOptions{};
  });

  try {
    app.parse(argumentCount, arguments);
  } catch (const CLI::ParseError& mistake) {
    constexpr int wrongCommandLine = 2;
    std::ostringstream output;
    std::ostringstream error;
    const int status = app.exit(mistake, output, error);
    parsed.command.reset();
    parsed.output = output.str();
    if (status != 0) parsed.error = mistake.what();
    parsed.exitStatus = status == 0 ? 0 : wrongCommandLine;
  }
  return parsed;
}

}  // namespace quillo

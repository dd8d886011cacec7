#include "CommandOptions.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "QuilloCore/Support/Utf8.h"

namespace quillo {
namespace {

/// What is parsed into the returned options becomes the command when the sub-command is met.
template <class Options>
std::shared_ptr<Options> yields(CLI::App* subcommand, ParsedCommandLine& parsed) {
  auto options = std::make_shared<Options>();
  subcommand->callback([options, &parsed] { parsed.command = *options; });
  return options;
}

/// Empty when the text can be stored.
std::string isUtf8(const std::string& text) {
  return findInvalidUtf8(text) ? "the text is not UTF-8" : "";
}

void addArtifact(CLI::App* subcommand, std::string& artifact) {
  subcommand->add_option("artifact", artifact, "An identifier, its beginning, or the path of a bundle")
      ->type_name("ARTIFACT")
      ->required();
}

void addEvidence(CLI::App* evidence, const char* name, const char* description, EvidenceOptions::Direction direction,
                 ParsedCommandLine& parsed) {
  auto* subcommand = evidence->add_subcommand(name, description);
  const auto options = yields<EvidenceOptions>(subcommand, parsed);
  options->direction = direction;
  subcommand->add_option("file", options->input, "The file; standard input by default")->type_name("FILE");
}

void addCopy(CLI::App& app, ParsedCommandLine& parsed) {
  auto* copy = app.add_subcommand("copy", "Puts an artifact on the clipboard and stays until another program owns it");
  copy->footer(
      "What is on the clipboard lasts only as long as the program that put it there, so this one\n"
      "stays. Control-C ends it; a clipboard manager, where one runs, then keeps the contents.\n"
      "With --background the command returns as soon as the artifact is on the clipboard, and a\n"
      "process in the background stays.");
  const auto options = yields<CopyOptions>(copy, parsed);
  addArtifact(copy, options->artifact);
  const auto choose = [options](const std::string& name) { options->composition = *clipboardComposition(name); };
  copy->add_option_function<std::string>("--composition", choose, "What is written, and as how many items")
      ->check(
          CLI::IsMember(std::vector<std::string>(clipboardCompositionNames.begin(), clipboardCompositionNames.end())))
      ->type_name("NAME")
      ->default_str(std::string(rawValue(options->composition)));
  copy->add_flag("--background", options->runsInBackground, "Return at once and stay in the background");
}

void addLibraryCommands(CLI::App& app, ParsedCommandLine& parsed) {
  auto* list = app.add_subcommand("list", "Lists the library, newest first");
  list->add_flag("--json", yields<ListOptions>(list, parsed)->printsJson, "Print the manifests");

  auto* show = app.add_subcommand("show", "Describes one artifact");
  const auto showOptions = yields<ShowOptions>(show, parsed);
  addArtifact(show, showOptions->artifact);
  show->add_flag("--json", showOptions->printsJson, "Print the manifest");

  auto* text = app.add_subcommand("text", "Prints the text that is pasted for an artifact");
  addArtifact(text, yields<TextOptions>(text, parsed)->artifact);

  addCopy(app, parsed);

  auto* paste = app.add_subcommand("paste", "Pastes the screenshot and the text into the focused field");
  const auto pasteOptions = yields<PasteOptions>(paste, parsed);
  addArtifact(paste, pasteOptions->artifact);
  paste->add_option("--pid", pasteOptions->processIdentifier, "Only into this process")->check(CLI::PositiveNumber);
  paste->add_option("--delay", pasteOptions->delay, "Seconds to focus the field")->check(CLI::Range(0.0, 3600.0));

  auto* edit = app.add_subcommand("edit", "Changes the title, the note or both");
  const auto editOptions = yields<EditOptions>(edit, parsed);
  addArtifact(edit, editOptions->artifact);
  auto* changes = edit->add_option_group("changes")->require_option(1, 2);
  changes->add_option("--title", editOptions->title, "The new title")->type_name("TEXT")->check(isUtf8);
  changes->add_option("--annotations", editOptions->annotations, "The new note")->type_name("TEXT")->check(isUtf8);

  auto* trash = app.add_subcommand("trash", "Moves artifacts to the Trash and prints where they are then");
  trash->add_option("artifacts", yields<TrashOptions>(trash, parsed)->artifacts, "Identifiers or bundles")
      ->type_name("ARTIFACT")
      ->required();

  auto* check = app.add_subcommand("check", "Reads every file of artifacts and tells which are damaged");
  check
      ->add_option("artifacts", yields<CheckOptions>(check, parsed)->artifacts,
                   "Identifiers or bundles; by default all")
      ->type_name("ARTIFACT");

  using Direction = EvidenceOptions::Direction;
  auto* evidence = app.add_subcommand("evidence", "Converts between snapshots and canonical evidence");
  evidence->require_subcommand(1);
  addEvidence(evidence, "encode", "Turns a snapshot (JSON) into canonical evidence (JSON)", Direction::encode, parsed);
  addEvidence(evidence, "decode", "Turns canonical evidence (JSON) into a snapshot (JSON)", Direction::decode, parsed);
}

}  // namespace

ParsedCommandLine parseCommandLine(int argumentCount, const char* const* arguments) {
  ParsedCommandLine parsed;
  CLI::App app("Turns the window in front of you into text for a language model.", "quillo");
  app.set_version_flag("--version", QUILLO_VERSION);
  app.require_subcommand(0, 1);
  app.fallthrough();
  app.add_option("--library", parsed.library, "The directory that holds the bundles; by default the user's own")
      ->type_name("DIR");

  AppOptions appOptions;
  auto* application = app.add_subcommand("app", "Starts the application, which is also what no command does");
  application->add_flag("--background", appOptions.runsInBackground, "Show no window");
  application->callback([&] { parsed.command = appOptions; });

  SnapshotOptions snapshotOptions;
  auto* snapshot = app.add_subcommand("snapshot", "Reads a window's accessibility tree and prints it as JSON");
  snapshot->add_option("--window", snapshotOptions.windowNumber,
                       "The window's number on the display; by default the frontmost window of another application");
  snapshot->callback([&] { parsed.command = snapshotOptions; });

  CaptureOptions captureOptions;
  auto* capture = app.add_subcommand("capture", "Captures a window's pixels and text into the library");
  capture->add_option("--window", captureOptions.windowNumber,
                      "The window's number on the display; by default the frontmost window of another application");
  capture->add_option("--delay", captureOptions.delay, "Seconds to bring the window to the front")
      ->check(CLI::Range(0.0, 3600.0));
  capture->add_flag("--print", captureOptions.printsText, "Print the paste text instead of the identifier");
  capture->callback([&] { parsed.command = captureOptions; });

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

  addLibraryCommands(app, parsed);
  try {
    app.parse(argumentCount, arguments);
    if (!parsed.command) parsed.command = AppOptions{};
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

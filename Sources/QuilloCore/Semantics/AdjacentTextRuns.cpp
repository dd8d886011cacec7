#include "QuilloCore/Semantics/AdjacentTextRuns.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Semantics/PrintedDetails.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

bool endsWithWhiteSpace(std::string_view text) {
  return !text.empty() && trimmingWhiteSpace(text).end() != text.end();
}
bool beginsWithWhiteSpace(std::string_view text) {
  return !text.empty() && trimmingWhiteSpace(text).begin() != text.begin();
}

/// Whether the second text goes on in the line of the first, or, when a blank between them shows that they are pieces
/// of one sentence, in the line below.
bool continues(const InterfaceElement& first, const InterfaceElement& second) {
  if (!first.bounds || !second.bounds || !first.bounds->isFinite() || !second.bounds->isFinite()) return false;
  const ArtifactRect& above = *first.bounds;
  const ArtifactRect& below = *second.bounds;
  if (above.minY() < below.maxY() && below.minY() < above.maxY()) return true;
  const double lineGap = std::min(above.height, below.height) / 2;
  return above.maxY() <= below.minY() && below.minY() - above.maxY() < lineGap &&
         (endsWithWhiteSpace(primaryText(first)) || beginsWithWhiteSpace(primaryText(second)));
}

/// Whether the text begins with a mark that follows a word without a blank.
bool beginsWithClosingMark(std::string_view text) {
  static constexpr std::u32string_view marks = U".,;:!?)]}’”»…";
  std::size_t position = 0;
  return !text.empty() && marks.contains(nextCodePoint(text, position));
}

/// Whether the texts inside stand in one line for want of room, not as one sentence.
bool holdsFields(const InterfaceElement& element) {
  return element.properties->roleDescription == "status bar";
}

/// What stands between two pieces: the line break and indentation that one of them has there, nothing before a closing
/// mark, else one blank.
std::string joint(std::string_view first, std::string_view second) {
  const std::string_view behind =
      first.substr(static_cast<std::size_t>(trimmingWhiteSpace(first).end() - first.begin()));
  const std::string_view before =
      second.substr(0, static_cast<std::size_t>(trimmingWhiteSpace(second).begin() - second.begin()));
  if (before.contains('\n')) return std::string(before.substr(before.rfind('\n')));
  if (behind.contains('\n')) return std::string(behind.substr(behind.rfind('\n'))).append(before);
  const bool isClosing = behind.empty() && before.empty() && beginsWithClosingMark(second);
  return isClosing ? "" : " ";
}

class RunMerger {
 public:
  RunMerger(const RenderContext& context, RenderPlan& plan) : context_(context), plan_(plan) {}

  void mergeChildren(ElementIndex parent) {
    if (holdsFields(context_[parent])) return;
    for (const ElementForest::Child child : context_.forest().children(parent)) {
      const bool isMember =
          child.element != noElement && context_.isInScope(child.element) && isLoneText(context_, plan_, child.element);
      if (isMember && !run_.empty() && !continues(context_[run_.back()], context_[child.element])) finishRun();
      if (isMember) {
        run_.push_back(child.element);
      } else {
        finishRun();
      }
    }
    finishRun();
  }

 private:
  void finishRun() {
    if (run_.size() > 1) {
      std::string text;
      std::string_view previous;
      for (const ElementIndex member : run_) {
        const std::string_view piece = context_.primaryText(member);
        if (member != run_.front()) {
          text += joint(previous, piece);
          plan_.suppressedMergedTextElementIDs.insert(member);
        }
        text += trimmingWhiteSpace(piece);
        previous = piece;
      }
      plan_.mergedTextByElementID.emplace(run_.front(), std::move(text));
      ++plan_.mergedTextRunCount;
    }
    run_.clear();
  }

  const RenderContext& context_;
  RenderPlan& plan_;
  std::vector<ElementIndex> run_;
};

}  // namespace

void mergeAdjacentTextRuns(const RenderContext& context, RenderPlan& plan) {
  RunMerger merger(context, plan);
  for (const ElementIndex parent : context.forest().preorder()) {
    if (context.isInScope(parent)) merger.mergeChildren(parent);
  }
}

}  // namespace quillo

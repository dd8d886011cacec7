#include "QuilloCore/Semantics/AdjacentTextRuns.h"

#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

bool shareALine(const InterfaceElement& first, const InterfaceElement& second) {
  if (!first.bounds || !second.bounds || !first.bounds->isFinite() || !second.bounds->isFinite()) return false;
  return first.bounds->minY() < second.bounds->maxY() && second.bounds->minY() < first.bounds->maxY();
}

class RunMerger {
 public:
  RunMerger(const RenderContext& context, RenderPlan& plan) : context_(context), plan_(plan) {}

  void mergeChildren(ElementIndex parent) {
    for (const ElementForest::Child child : context_.forest().children(parent)) {
      const bool isMember = child.element != noElement && context_.isInScope(child.element) &&
                            context_.isPlainTextLeaf(child.element) && !plan_.isSilent(child.element);
      if (isMember && !run_.empty() && !shareALine(context_[run_.back()], context_[child.element])) finishRun();
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
      for (const ElementIndex member : run_) {
        if (!text.empty()) text += ' ';
        text += trimmingWhiteSpace(context_.primaryText(member));
        if (member != run_.front()) plan_.suppressedMergedTextElementIDs.insert(member);
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

#include "QuilloCore/Semantics/AuthoritativeContentSection.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/AuthoritativeTextMarking.h"
#include "QuilloCore/Semantics/InterfaceElementLine.h"
#include "QuilloCore/Semantics/PrintableText.h"

namespace quillo {
namespace {

std::string attachmentsAsBlanks(std::string_view text) {
  constexpr std::string_view attachment = "\uFFFC";
  std::string result(text);
  for (std::size_t at = result.find(attachment); at != std::string::npos; at = result.find(attachment, at)) {
    result.replace(at, attachment.size(), " ");
  }
  return result;
}

void appendSpans(const std::string& spans, TextLines& lines) {
  lines.add("uncovered aggregate content (position-anchored; structured descendant text omitted):");
  std::vector<std::string> block(1);
  appendBlockText(block, spans);
  lines.addBlock(0, block);
}

void appendMarkedText(const InterfaceElement& element, TextLines& lines) {
  const std::vector<MarkedTextPiece> pieces = markAuthoritativeText(
      *element.content, element.properties->selectedTextRange, element.properties->visibleTextRange);
  lines.add(hasMarkers(pieces) ? "content (authoritative full text with inline range markers):" : "content:");
  std::vector<std::string> block(1);
  for (const MarkedTextPiece& piece : pieces) {
    if (piece.isMarker) {
      block.back() += piece.text;
    } else {
      appendBlockText(block, attachmentsAsBlanks(piece.text));
    }
  }
  lines.addBlock(0, block);
}

}  // namespace

void appendAuthoritativeContent(const RenderContext& context, const RenderPlan& plan, TextLines& lines) {
  if (plan.authoritativeElements.empty()) return;
  lines.add("");
  lines.add("## Authoritative content");
  lines.add("");
  lines.add(
      "Aggregate document and editor text is emitted here when it is not fully represented by structured descendants. "
      "The interface map preserves available structure and concrete semantic leaves.");
  std::size_t number = 0;
  for (const ElementIndex owner : plan.authoritativeElements) {
    ++number;
    std::string heading = fmt::format("### Content {} — {}", number, displayRole(context[owner]));
    if (const std::string_view primary = context.primaryText(owner); !primary.empty()) {
      heading.append(" ").append(quoted(primary));
    }
    lines.add(heading);
    lines.add("");
    const auto spans = plan.authoritativeContentOverrides.find(owner);
    if (spans != plan.authoritativeContentOverrides.end()) {
      appendSpans(spans->second, lines);
    } else {
      appendMarkedText(context[owner], lines);
    }
  }
}

}  // namespace quillo

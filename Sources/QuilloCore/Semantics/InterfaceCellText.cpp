#include "QuilloCore/Semantics/InterfaceCellText.h"

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/WholeWords.h"
#include "QuilloCore/Support/NumberFormatting.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

using Role = InterfaceSemanticRole;

/// Their names stand around them on the screen; what one reads in them is the value.
bool isInput(Role role) {
  return role == Role::textField || role == Role::searchField || role == Role::textArea || role == Role::comboBox ||
         role == Role::popUpButton;
}

bool isToggle(Role role) {
  return role == Role::checkbox || role == Role::radioButton || role == Role::switchControl;
}

bool showsItsValue(Role role) {
  return role == Role::text || role == Role::cell || role == Role::heading;
}

/// The value where it is what one reads on the screen.
std::optional<std::string> valueText(const InterfaceElement& element) {
  if (!element.value) return std::nullopt;
  if (const auto* text = std::get_if<std::string>(&*element.value)) return collapsingWhiteSpace(*text);
  if (!showsItsValue(element.role)) return std::nullopt;
  if (const auto* integer = std::get_if<std::int64_t>(&*element.value)) return std::to_string(*integer);
  if (const auto* number = std::get_if<double>(&*element.value)) return formatNumber(*number);
  return std::nullopt;
}

void addDistinct(std::string& text, std::string more) {
  if (more.empty() || holdsWords(text, more)) return;
  if (text.empty() || holdsWords(more, text)) {
    text = std::move(more);
  } else {
    text.append(" ").append(more);
  }
}

std::string ownText(const InterfaceElement& element) {
  if (isInput(element.role)) {
    if (auto value = valueText(element); value && !value->empty()) return *std::move(value);
  }
  std::string text;
  if (element.label) text = collapsingWhiteSpace(*element.label);
  if (auto value = valueText(element)) addDistinct(text, *std::move(value));
  if (element.description) addDistinct(text, collapsingWhiteSpace(*element.description));
  return text;
}

bool contributes(const InterfaceElement& element) {
  return !element.isProtected && element.visibility != InterfaceVisibility::hidden;
}

/// Collects the texts of a subtree in one buffer: an element's own text, then its children's.
class CellTextCollector {
 public:
  explicit CellTextCollector(const InterfaceDraftTree& tree) : tree_(tree) {}

  std::string collect(InterfaceDraftIndex cell) && {
    enter(cell);
    while (!path_.empty()) {
      Frame& frame = path_.back();
      const auto& children = tree_.children[frame.index];
      if (frame.nextChild < children.size()) {
        enter(children[frame.nextChild++]);
      } else {
        leave();
      }
    }
    return std::move(text_);
  }

 private:
  struct Frame {
    InterfaceDraftIndex index;
    std::size_t ownBegin;
    std::size_t ownEnd;
    std::size_t nextChild = 0;
  };

  void enter(InterfaceDraftIndex index) {
    const InterfaceElement& element = tree_.elements[index];
    if (!contributes(element)) return;
    std::string own = ownText(element);
    // The text beside a toggle usually is its name.
    const bool isBesideToggle = isToggle(element.role) != isLastToggle_ && lastBegin_ <= text_.size();
    if (isBesideToggle && std::string_view(text_).substr(lastBegin_) == own) own.clear();
    if (!own.empty() && !text_.empty()) text_ += ' ';
    if (!own.empty()) {
      lastBegin_ = text_.size();
      isLastToggle_ = isToggle(element.role);
    }
    path_.push_back({.index = index, .ownBegin = text_.size(), .ownEnd = text_.size() + own.size()});
    text_ += own;
  }

  void leave() {
    const Frame frame = path_.back();
    path_.pop_back();
    const std::size_t ownSize = frame.ownEnd - frame.ownBegin;
    if (ownSize == 0 || text_.size() <= frame.ownEnd) return;
    const std::string_view own = std::string_view(text_).substr(frame.ownBegin, ownSize);
    const std::string_view children = std::string_view(text_).substr(frame.ownEnd + 1);
    // A name is compared with a longer text only up to a multiple of its length, so that a deep chain of short names
    // around a long text takes linear time.
    constexpr std::size_t multiple = 16;
    constexpr std::size_t always = 4096;
    if (children.size() <= ownSize && holdsWords(own, children)) {
      text_.resize(frame.ownEnd);
    } else if (children.size() <= multiple * ownSize + always && holdsWords(children, own)) {
      text_.erase(frame.ownBegin, ownSize + 1);
    }
  }

  const InterfaceDraftTree& tree_;
  std::string text_;
  std::size_t lastBegin_ = 0;  // of the last own text
  bool isLastToggle_ = false;
  std::vector<Frame> path_;
};

}  // namespace

std::string cellText(const InterfaceDraftTree& tree, InterfaceDraftIndex cell) {
  return CellTextCollector(tree).collect(cell);
}

bool saysMoreThanCellText(const InterfaceElement& element) {
  const bool hasOtherValue = element.value && !valueText(element);
  return isInput(element.role) || element.help || element.placeholder || element.properties->valueDescription ||
         element.properties->url || hasOtherValue;
}

}  // namespace quillo

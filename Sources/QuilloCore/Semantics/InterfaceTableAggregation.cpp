#include "QuilloCore/Semantics/InterfaceTableAggregation.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/InterfaceCellText.h"
#include "QuilloCore/Semantics/InterfaceRetention.h"
#include "QuilloCore/Semantics/InterfaceTableSurvey.h"
#include "QuilloCore/Semantics/SubstringIndex.h"
#include "QuilloCore/Semantics/WholeWords.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

using Role = InterfaceSemanticRole;
using Index = InterfaceDraftIndex;
using Texts = std::vector<std::string>;

bool isLeftOutOfTexts(const InterfaceElement& element) {
  return element.isProtected || element.visibility == InterfaceVisibility::hidden;
}

/// Such elements stay with everything below them.
bool isKeptWhole(const InterfaceElement& element, bool isInCell) {
  return isLeftOutOfTexts(element) || isTabularRow(element.role) || isStructure(element.role) ||
         (isListOrHeading(element.role) && !isInCell);
}

/// Pressing is what header cells are for, and selecting what list items are for.
bool isExpected(const InterfaceAction& action, const InterfaceElement& element) {
  if (isColumnHeaderCell(element)) return action.name == "press" || action.name == "showMenu";
  return element.role == Role::listItem && action.source == InterfaceActionSource::inferred;
}

bool standsBesideTexts(const InterfaceElement& element, bool isRowSelected) {
  InterfaceElementState state = element.state;
  // Toolkits that select rows mark each of their cells.
  if (isRowSelected && element.role == Role::cell) state.selected.reset();
  const bool offersMore =
      std::ranges::any_of(element.actions, [&](const InterfaceAction& action) { return !isExpected(action, element); });
  return hasIndependentState(state) || offersMore || !element.identifiers.empty() || saysMoreThanCellText(element);
}

std::string joined(const Texts& texts) {
  std::string all;
  for (const std::string& text : texts) {
    if (!text.empty()) all += (all.empty() ? "" : " ") + text;
  }
  return all;
}

/// Toolkits name rows with their cells' texts, often without blanks between them.
bool repeats(const std::optional<std::string>& name, const Texts& texts) {
  if (!name) return true;
  const auto squeezed = [](std::string_view text) {
    std::string result;
    for (const std::string_view piece : splittingAtWhiteSpace(text)) result += piece;
    return result;
  };
  return findSubstring(squeezed(joined(texts)), squeezed(*name)) != std::string::npos;
}

class Aggregation {
 public:
  explicit Aggregation(InterfaceDraftTree& tree) : tree_(tree), removals_(tree.elements.size(), Removal::none) {}

  void run() {
    std::vector<Index> tables;
    for (InterfaceDraftPreorder walk(tree_, tree_.root); !walk.isAtEnd();) {
      const Index index = walk.next();
      if (isTabular(tree_.elements[index].role)) tables.push_back(index);
    }
    for (const Index table : tables) aggregate(surveyTable(tree_, table));
    removeAbsorbed();
  }

 private:
  enum class Removal : std::uint8_t { none, whenEmpty, always };
  enum class Children : std::uint8_t { surroundCells, areCells };

  struct Row {
    InterfaceTableRow survey;
    Texts texts;          // one for each cell
    bool isText = false;  // the texts can stand for the cells
    bool isHeader = false;
  };

  Texts textsOf(const std::vector<Index>& cells) const {
    Texts texts;
    texts.reserve(cells.size());
    for (const Index cell : cells) texts.push_back(cellText(tree_, cell));
    return texts;
  }

  /// Header cells, apart from empty corners.
  bool isHeaderRow(const Row& row) const {
    bool hasHeader = false;
    for (std::size_t i = 0; i < row.texts.size(); ++i) {
      const bool isHeader = isColumnHeaderCell(tree_.elements[row.survey.cells[i]]);
      if (!isHeader && !row.texts[i].empty()) return false;
      hasHeader = hasHeader || isHeader;
    }
    return hasHeader;
  }

  /// A first row without cells is taken for the columns' titles, one for each child; it counts as a header row only
  /// where another row has as many cells.
  void readTitles(Row& row) const {
    const std::vector<Index>& children = tree_.children[row.survey.index];
    const bool isPlain = std::ranges::none_of(
        children, [&](Index child) { return isKeptWhole(tree_.elements[child], false) || tree_.isEmptyCell[child]; });
    if (!row.survey.cells.empty() || children.empty() || !isPlain) return;
    row.texts = textsOf(children);
    row.isHeader = std::ranges::none_of(row.texts, &std::string::empty);
  }

  /// The columns' titles, when a row before the next header row has as many cells; a header that spans columns names
  /// none of them. Some toolkits leave out the corner above the rows' own headers.
  std::optional<Texts> columnTitles(const std::vector<Row>& rows, std::size_t header) const {
    const Texts& titles = rows[header].texts;
    for (std::size_t i = header + 1; i < rows.size() && !rows[i].isHeader; ++i) {
      if (rows[i].texts.size() == titles.size()) return titles;
      if (rows[i].texts.size() != titles.size() + 1 || !isRowHeaderCell(rows[i].survey.cells.front())) continue;
      Texts withCorner = {""};
      withCorner.insert(withCorner.end(), titles.begin(), titles.end());
      return withCorner;
    }
    return std::nullopt;
  }

  bool isRowHeaderCell(Index cell) const { return tree_.elements[cell].accessibilitySubrole == "AXRowHeader"; }

  bool hasHeaders(const InterfaceTable& table) const {
    const auto isHeader = [&](Index cell) { return isColumnHeaderCell(tree_.elements[cell]); };
    return !table.looseHeaderCells.empty() ||
           std::ranges::any_of(table.columns, [&](Index column) { return tree_.elements[column].label.has_value(); }) ||
           std::ranges::any_of(table.rows,
                               [&](const InterfaceTableRow& row) { return std::ranges::any_of(row.cells, isHeader); });
  }

  /// Some toolkits have no rows, and mark every cell of a selected one.
  bool areAllSelected(const std::vector<Index>& cells) const {
    bool anySelected = false;
    for (const Index cell : cells) {
      if (tree_.isEmptyCell[cell]) continue;
      if (!tree_.elements[cell].state.selected.value_or(false)) return false;
      anySelected = true;
    }
    return anySelected;
  }

  /// Where a toolkit has no rows, the one cell that opens and closes what is below tells whether the row is open.
  void takeExpansion(InterfaceElement& row, const std::vector<Index>& cells) {
    const auto isExpandable = [&](Index cell) { return tree_.elements[cell].state.expanded.has_value(); };
    if (row.state.expanded || std::ranges::count_if(cells, isExpandable) != 1) return;
    row.state.expanded = std::exchange(tree_.elements[*std::ranges::find_if(cells, isExpandable)].state.expanded, {});
  }

  Texts headersOutsideRows(const InterfaceTable& table) const {
    if (!table.looseHeaderCells.empty()) return textsOf(table.looseHeaderCells);
    Texts labels;
    for (const Index column : table.columns) labels.push_back(tree_.elements[column].label.value_or(""));
    return std::ranges::all_of(labels, &std::string::empty) ? Texts{} : labels;
  }

  void aggregate(InterfaceTable table) {
    const bool isData = hasHeaders(table);
    std::vector<Row> rows;
    rows.reserve(table.rows.size());
    for (InterfaceTableRow& survey : table.rows) {
      Row& row = rows.emplace_back(std::move(survey));
      row.isText = !row.survey.cells.empty() && !row.survey.holdsStructure && (isData || !row.survey.holdsLists);
      if (row.isText) row.texts = textsOf(row.survey.cells);
      row.isHeader = isHeaderRow(row);
    }

    if (!rows.empty()) readTitles(rows.front());

    Texts headers = headersOutsideRows(table);
    std::string carriedHeaders;
    bool isCarried = false;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      Row& row = rows[i];
      std::optional<Texts> titles = row.isHeader ? columnTitles(rows, i) : std::nullopt;
      if (!row.isText && !titles) continue;
      InterfaceElement& element = tree_.elements[row.survey.index];
      InterfaceElementProperties& properties = element.properties.edit();
      if (titles) {
        headers = *std::move(titles);
        isCarried = false;
        properties.columnHeaders = headers;
        if (repeats(element.label, headers)) element.label.reset();
        const bool saysMore = element.label || isLeftOutOfTexts(element) || standsBesideTexts(element, false);
        if (!saysMore) removals_[row.survey.index] = Removal::whenEmpty;
      } else {
        if (repeats(element.label, row.texts)) element.label.reset();
        if (!element.state.selected && areAllSelected(row.survey.cells)) element.state.selected = true;
        takeExpansion(element, row.survey.cells);
        properties.rowValues = std::move(row.texts);
        if (!headers.empty()) properties.columnHeaders = headers;
        if (!isCarried) carriedHeaders.append(" ").append(joined(headers));
        isCarried = true;
      }
      pruneRow(row.survey.index, row.isText ? Children::surroundCells : Children::areCells);
    }
    absorbHeadersOutsideRows(table, carriedHeaders);
  }

  void absorbHeadersOutsideRows(const InterfaceTable& table, std::string_view carriedHeaders) {
    for (const Index cell : table.looseHeaderCells) {
      bool stands = false;
      for (InterfaceDraftPreorder walk(tree_, cell); !walk.isAtEnd() && !stands;) {
        const InterfaceElement& element = tree_.elements[walk.next()];
        stands = isKeptWhole(element, true) || standsBesideTexts(element, false);
      }
      if (!stands && holdsWords(carriedHeaders, cellText(tree_, cell))) removals_[cell] = Removal::always;
    }
    for (const Index column : table.columns) {
      const InterfaceElement& element = tree_.elements[column];
      const bool addsWords = element.label && !holdsWords(carriedHeaders, *element.label);
      if (!addsWords && !isLeftOutOfTexts(element) && !standsBesideTexts(element, false)) {
        removals_[column] = Removal::whenEmpty;
      }
    }
  }

  /// Keeps, in source order, the outermost descendants that stand beside the row's texts. What stands outside every
  /// cell keeps its own text, because no entry holds it.
  void pruneRow(Index row, Children role) {
    struct Visit {
      Index index;
      bool isInCell;
      bool isDone = false;
    };
    const bool isRowSelected = tree_.elements[row].state.selected.value_or(false);
    std::vector<Index> kept;
    std::vector<std::size_t> starts;  // where in `kept` the results of the open elements begin
    std::vector<Visit> pending;
    const auto push = [&](Index parent, bool isInCell) {
      for (const Index child : tree_.children[parent] | std::views::reverse) pending.push_back({child, isInCell});
    };
    push(row, role == Children::areCells);
    while (!pending.empty()) {
      const Visit visit = pending.back();
      pending.pop_back();
      const InterfaceElement& element = tree_.elements[visit.index];
      const bool isInCell = visit.isInCell || element.role == Role::cell;
      if (visit.isDone) {
        const std::size_t start = starts.back();
        starts.pop_back();
        tree_.children[visit.index].assign(kept.begin() + static_cast<std::ptrdiff_t>(start), kept.end());
        kept.resize(start);
        kept.push_back(visit.index);
      } else if (isKeptWhole(element, isInCell)) {
        kept.push_back(visit.index);
      } else {
        if (standsBesideTexts(element, isRowSelected) || (!isInCell && hasText(element))) {
          starts.push_back(kept.size());
          pending.push_back({visit.index, visit.isInCell, true});
        }
        push(visit.index, isInCell);
      }
    }
    tree_.children[row] = std::move(kept);
  }

  /// Containers that held nothing else go, too; therefore parents come after their children here.
  void removeAbsorbed() {
    const auto isRemoved = [&](Index index) {
      return removals_[index] == Removal::always ||
             (removals_[index] == Removal::whenEmpty && tree_.children[index].empty());
    };
    for (auto index = static_cast<Index>(tree_.elements.size()); index-- > 0;) {
      std::vector<Index>& children = tree_.children[index];
      if (children.empty()) continue;
      std::erase_if(children, [&](Index child) { return tree_.isEmptyCell[child]; });
      if (std::erase_if(children, isRemoved) > 0 && children.empty() && isBareContainer(tree_.elements[index])) {
        removals_[index] = Removal::always;
      }
    }
  }

  InterfaceDraftTree& tree_;
  std::vector<Removal> removals_;
};

}  // namespace

void aggregateTabularStructures(InterfaceDraftTree& tree) {
  Aggregation(tree).run();
}

}  // namespace quillo

#pragma once

#include <cstdint>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"

namespace quillo::bench {

/// A page as browsers expose it: nested groups, headings, paragraphs of texts and links, forms, lists.
AccessibilitySnapshot makePage(std::int64_t nodeCount);

/// One document of `wordCount` words and one text element for every one of them.
AccessibilitySnapshot makeDocument(std::int64_t wordCount);

/// A table with a header row.
AccessibilitySnapshot makeTable(std::int64_t rowCount, std::int64_t columnCount);

}  // namespace quillo::bench

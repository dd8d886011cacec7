#pragma once

#include <string>
#include <vector>

#include "QuilloLinux/Accessibility/AtspiNodeRecord.h"

namespace quillo {

/// The words that stand between an object's children and nowhere else: one entry before each child and one after the
/// last, with white space trimmed, empty where there is none. Empty altogether when the object's text holds no such
/// words, when it does not mark each of its children, or when its name has the words already.
///
/// Toolkits that have no objects for plain words mark each child in the parent's text with one special character.
std::vector<std::string> wordsBetweenChildren(const AtspiNodeRecord& record, AtspiToolkit toolkit);

}  // namespace quillo

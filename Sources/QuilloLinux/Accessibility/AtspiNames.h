#pragma once

#include <string>

#include "QuilloLinux/Accessibility/AtspiNodeRecord.h"

namespace quillo {

/// The texts that name and explain an object; empty when there is none.
struct AtspiNames {
  std::string title;
  std::string description;
  std::string help;
  std::string placeholder;

  friend bool operator==(const AtspiNames&, const AtspiNames&) = default;
};

/// Sorts out what toolkits put into names and descriptions: class names, an entry's own text, tooltips, placeholders.
AtspiNames accessibleNames(const AtspiNodeRecord& record, AtspiToolkit toolkit);

/// Whether it is a list of choices that says in its name which one is made, and leaves what it is about to a label.
bool isNamedByItsChoice(const AtspiNodeRecord& record, AtspiToolkit toolkit);

/// Whether it is a cell whose text stands in objects of its own. A word processor names such a cell by its place ("A1")
/// and gives it a value of 0; neither is to be seen.
bool holdsParagraphs(const AtspiNodeRecord& record);

/// Whether the object's text is more than placeholders of embedded objects and white space.
bool hasOwnText(const AtspiNodeRecord& record);

}  // namespace quillo

#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"
#include "QuilloCore/Semantics/SemanticTokens.h"

namespace quillo {

/// Roles whose name is made of the texts inside them: buttons, links, headings, cells …
bool isNamedByItsTexts(InterfaceSemanticRole role);

/// Finds what repeats the name of the element around it. The texts inside a button, link, heading and their like from
/// which it has its name, and the caption that labels a group, are silenced; an element that says more than such a text
/// (the link that is a whole heading) keeps its line, without the name.
void findNamingTexts(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan);

}  // namespace quillo

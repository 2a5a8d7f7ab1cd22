#pragma once

#include "platform/accessible_elements.h"

#include <QString>
#include <optional>

// Turns a click into one line of instruction. Without state; callable from any thread.
namespace StepCaptions {

// Never empty without an element. `application` may be absent.
QString caption(const std::optional<ClickedElement> &element, const std::optional<QString> &application);

// Whether the element is typed into: what stands in it never becomes a caption.
bool isTextInput(const ClickedElement &element);
// The words on the element, cleaned and not shortened; empty if it has none.
QString label(const ClickedElement &element);

} // namespace StepCaptions

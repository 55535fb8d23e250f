#pragma once

namespace quillmender {

/// Keeps the text of every password field out of the events that announce changes to assistive
/// technology: bullets stand in for it. (Questions about the text are refused by the toolkit
/// itself.) May be called more than once.
void hideSecretsFromAccessibility();

} // namespace quillmender

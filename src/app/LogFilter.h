#pragma once

namespace quillmender {

/// Lets nobody but this program's own categories say more than warnings, whatever the logging
/// rules ask for: the toolkit's debugging messages quote what is on the screen. Call it first.
void keepTextsOutOfTheLog();

} // namespace quillmender

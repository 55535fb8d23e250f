#pragma once

namespace quillmender::harness {

/// Compositors refuse to run for root, and browsers behave differently for it. Where this program
/// does, it starts itself anew as the user "nobody"; what it keeps of failed tests can be written
/// then, too. To be called first in main().
void becomeOrdinaryUser(char *arguments[]);

} // namespace quillmender::harness

#pragma once

#include <QString>

namespace quillmender {

/// Whether windows of this class are an editor's in which the chords for copy and paste are parts
/// of commands. What they do there depends on a state that the editor tells nobody.
bool isCommandEditor(const QString &className);

} // namespace quillmender

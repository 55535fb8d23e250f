#pragma once

#include <QString>
#include <QStringList>

namespace quillmender::sway {

/// The lines of the compositor's configuration: of its main file, as the compositor itself has it,
/// and of the files that it includes, as they are now. Continued lines are one, comments are left
/// out, and variables stand for their values. What an include would run a program for is left out.
QStringList configurationLines(const QString &mainText, const QString &mainPath);

} // namespace quillmender::sway

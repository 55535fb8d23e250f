#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace quillmender {

/// The value of the key `Exec` in freedesktop.org's desktop entries.
namespace execLine {

/// Program and arguments, without what format() writes before them; field codes (`%U`, ...) are
/// left out, since nothing is opened. Absent when quotes are not closed or there is no program.
std::optional<QStringList> parse(const QString &value);

/// The value that starts the program with these arguments: quoted where it must be, and through
/// `env` when the program has a percent sign in its path. Absent when the format has no way to
/// write it: an empty program, or one with an equal sign.
std::optional<QString> format(const QStringList &command);

} // namespace execLine

} // namespace quillmender

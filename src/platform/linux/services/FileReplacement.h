#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillmender {

/// Both answer what went wrong, in the system's words with the file's name, or nothing on success.

/// Puts a file with these contents in the place of whatever has the name, a link included, in one
/// step: afterwards the name leads to the old or the new contents, whole. Makes the folder.
std::optional<QString> replaceFile(const QString &path, const QByteArray &contents);

/// Removes the name. A file that is not there is a success.
std::optional<QString> removeFile(const QString &path);

} // namespace quillmender

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

namespace quillmender {

/// The group `[Desktop Entry]` of a .desktop file, freedesktop.org's standard for them.
class DesktopEntry {
  public:
    /// Absent when there is no such regular file, it cannot be read, or it has no such group.
    static std::optional<DesktopEntry> read(const QString &path);

    /// The text of a file with these keys, in this order, with values escaped.
    static QByteArray format(const QList<std::pair<QString, QString>> &values);

    /// The unescaped value; absent when the key is.
    std::optional<QString> string(const QString &key) const;

    /// Whether the key is there and says so; `1` and `0` are the forms of old files.
    bool isTrue(const QString &key) const;
    bool isFalse(const QString &key) const;

    /// The program and arguments that `Exec` starts, with the program as found on the `PATH`.
    /// Empty when there is none that can be executed, or `TryExec` says so.
    QStringList command() const;

  private:
    QHash<QString, QString> values_;
};

} // namespace quillmender

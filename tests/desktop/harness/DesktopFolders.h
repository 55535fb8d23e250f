#pragma once

#include <QString>
#include <QTemporaryDir>

class QProcessEnvironment;

namespace quillmender::harness {

/// The private home of one desktop, in a temporary folder that goes away with it.
class DesktopFolders {
  public:
    DesktopFolders();

    QString home() const { return path(QStringLiteral("home")); }
    QString config() const { return path(QStringLiteral("home/.config")); }
    QString data() const { return path(QStringLiteral("home/.local/share")); }
    QString runtime() const { return path(QStringLiteral("run")); }
    QString logs() const { return path(QStringLiteral("logs")); }

    /// The log file of one program.
    QString log(const QString &name) const;

    /// Only what programs need, with these folders; nothing else of the caller's.
    QProcessEnvironment environment() const;

  private:
    QString path(const QString &name) const { return root_.filePath(name); }

    QTemporaryDir root_;
};

} // namespace quillmender::harness

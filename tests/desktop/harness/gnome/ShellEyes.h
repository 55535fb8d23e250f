#pragma once

#include <QDBusConnection>
#include <QJsonObject>
#include <QString>
#include <QVariant>

namespace quillmender::harness {

class DesktopFolders;

/// What a small extension of the tests' own tells of a GNOME Shell, and does there: the shell lets
/// ordinary programs know nothing of windows.
class ShellEyes {
  public:
    explicit ShellEyes(QDBusConnection bus) : bus_(std::move(bus)) {}

    /// Puts the extension into the user's folder, where the shell finds it when it starts. Gives
    /// the name that the shell knows it by.
    static QString install(const DesktopFolders &folders);

    /// Empty when the shell does not answer.
    QJsonObject state() const;

    /// "Activate" or "Close" with a window's number, "UseLayout" with one of the layouts'.
    void tell(const QString &method, uint number) const;

  private:
    QVariantList call(const QString &method, const QVariantList &arguments) const;

    QDBusConnection bus_;
};

} // namespace quillmender::harness

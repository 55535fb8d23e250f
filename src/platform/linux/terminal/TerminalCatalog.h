#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace quillmender {

/// Which window classes are terminal emulators': well-known ones, and those of the installed
/// applications that say so in their .desktop file.
class TerminalCatalog {
  public:
    /// Where `applications/` folders are looked for; the session's own when not given.
    explicit TerminalCatalog(QStringList dataFolders = {});

    /// `instance` and `className` are the two strings of WM_CLASS.
    bool isTerminal(const QString &instance, const QString &className) const;

  private:
    void load() const;
    void loadFile(const QString &path) const;

    QStringList dataFolders_;
    mutable bool isLoaded_ = false;
    mutable QSet<QString> names_;
};

} // namespace quillmender

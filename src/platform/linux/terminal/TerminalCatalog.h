#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace quillmender {

/// Which window classes are terminal emulators': well-known ones, and those of the installed
/// applications that say so in their .desktop file.
class TerminalCatalog {
  public:
    /// Where `applications/` folders are looked for; the session's own when not given.
    explicit TerminalCatalog(QStringList dataFolders = {});

    /// `instance` and `className` are the two strings of WM_CLASS.
    bool isTerminal(const QString &instance, const QString &className) const;

    /// Reads some of the installed applications' files ahead of the first question, for a few
    /// milliseconds. False when all are read.
    bool prepareMore() const;

  private:
    void list() const;
    void readListed(qsizetype most) const;
    void loadFile(const QString &path) const;

    QStringList dataFolders_;
    mutable std::optional<QStringList> unread_; ///< absent until they are listed
    mutable QSet<QString> names_;
};

} // namespace quillmender

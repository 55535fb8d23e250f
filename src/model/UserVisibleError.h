#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace quillmender {

/// An exception with a text that is fit for the user's eyes. It never holds a secret.
class UserVisibleError : public std::exception {
  public:
    QString errorDescription() const { return description_; }

    /// The description in UTF-8.
    const char *what() const noexcept override { return utf8_.constData(); }

  protected:
    explicit UserVisibleError(const QString &description);

  private:
    QString description_;
    QByteArray utf8_;
};

} // namespace quillmender

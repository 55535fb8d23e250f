#pragma once

#include "applications/EditorField.h"

namespace quillmender::applications {

/// A document of a word processor, saved as flat XML, in which one word of the only paragraph is
/// bold. It is read by saving it.
class FormattedField : public EditorField {
  public:
    FormattedField(const Application &application, harness::AnyDesktop &desktop)
        : EditorField(application, desktop),
          home_(desktop.folders().home()) {}

    /// Where the document is, in the home folder.
    static QString fileName() { return QStringLiteral("letter.fodt"); }
    static QByteArray document();

    QList<Scenario> scenarios() const override;
    void prepare(const Scenario &scenario) override;
    std::optional<QString> read(const QString &wanted) override;

  private:
    QString saved() const;

    QString home_;
};

} // namespace quillmender::applications

#pragma once

#include "desktop/harness/Desktop.h"
#include "desktop/harness/TestApplication.h"
#include "desktop/stalls/Document.h"

namespace quillmender {

/// The text of our own editor, whose every call can go wrong as a session's plan says.
class ScriptedDocument : public Document {
  public:
    ScriptedDocument(harness::Desktop &desktop, bool isOnBus);

    void activate() override { application_.activate(); }
    void prepare(const QString &text, int start, int end, const QList<Stall> &stalls) override;
    void comeToRest() override;
    QString text() override { return ask("report").text; }
    QStringList calls() override { return ask("report").calls; }
    QString busName() override;
    qint64 processGroup() override { return application_.pid(); }

  private:
    struct Report {
        QString text;
        int pending = 0;
        int sentinels = 0;
        QStringList calls;
    };

    Report ask(const char *member, const QVariantList &arguments = {});
    void sendSentinel();

    harness::Desktop &desktop_;
    QString name_;
    harness::TestApplication application_;
};

} // namespace quillmender

#pragma once

#include "desktop/harness/Accessible.h"
#include "desktop/harness/Desktop.h"
#include "desktop/harness/TestApplication.h"
#include "desktop/stalls/Document.h"

namespace quillmender {

/// The text of a real editor, which misbehaves only by being stopped.
class RealDocument : public Document {
  public:
    /// An application with the text open that it is given.
    RealDocument(harness::Desktop &desktop, harness::TestApplication application,
                 const QString &text);

    void activate() override { application_.activate(); }
    void prepare(const QString &text, int start, int end, const QList<Stall> &stalls) override;
    void comeToRest() override;
    QString text() override { return text_.text(); }
    QString busName() override { return text_.service(); }
    qint64 processGroup() override { return application_.pid(); }

  private:
    harness::Desktop &desktop_;
    harness::TestApplication application_;
    harness::Accessible text_;
};

} // namespace quillmender

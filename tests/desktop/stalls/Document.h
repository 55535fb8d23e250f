#pragma once

#include "desktop/stalls/Stall.h"

#include <QString>

namespace quillmender {

/// A text that is open in an application.
class Document {
  public:
    Document() = default;
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;
    virtual ~Document() = default;

    virtual void activate() = 0;

    /// Its window is active, it holds this text, and so much of it is selected; with nothing
    /// selected the cursor is there.
    virtual void prepare(const QString &text, int start, int end, const QList<Stall> &stalls) = 0;

    /// Its window is active, and it has handled every key and every call that were sent before.
    virtual void comeToRest() = 0;

    /// May be asked when it has come to rest.
    virtual QString text() = 0;

    /// The calls that it has had since it was prepared, as far as it tells.
    virtual QStringList calls() { return {}; }

    /// The unique name of its application on the accessibility bus.
    virtual QString busName() = 0;
    virtual qint64 processGroup() = 0;
};

} // namespace quillmender

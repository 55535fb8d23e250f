#pragma once

#include "desktop/stalls/Stall.h"
#include "desktop/stalls/editor/AccessibleText.h"

#include <QDBusVirtualObject>
#include <QHash>

#include <functional>

namespace quillmender {

/// What the editor is on the accessibility bus: every call is answered as the session's stalls want
/// it. Under the path /control it is told what to do, and tells what it has done.
class StallingObject : public QDBusVirtualObject {
  public:
    StallingObject(QPlainTextEdit &field, AccessibleText &text, QDBusConnection bus);

    /// A key that says that all earlier ones have been handled.
    void noteSentinel() { ++sentinels_; }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &call, const QDBusConnection &bus) override;

  private:
    QVariantList control(const QDBusMessage &call);
    void prepare(const QVariantList &arguments);
    const Stall *stallOf(const QString &call);
    void misbehave(const Stall &stall, const QDBusMessage &call);
    void later(std::chrono::milliseconds after, const std::function<void()> &act);

    QPlainTextEdit &field_;
    AccessibleText &text_;
    QDBusConnection bus_;
    QList<Stall> stalls_;
    QHash<QString, int> counts_;
    QStringList calls_;
    int pending_ = 0;
    int sentinels_ = 0;
};

} // namespace quillmender

#pragma once

#include "desktop/atspi/ScriptedField.h"

namespace quillmender::atspi {

/// An application of the registry with one frame, and in it a field that has the focus.
class ScriptedApplication : public ScriptedField {
  public:
    ScriptedApplication(const QString &busAddress, const QString &initialText);

    /// Joins the registry, which lists it from then on.
    void join();

    bool isActive = true;      ///< of its frame
    uint fieldRole = textRole; ///< the protocol's number

    static constexpr uint textRole = 61;
    static constexpr uint terminalRole = 60;

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

  private:
    QVariant traitOf(const QDBusMessage &message) const;

    QString busAddress_;
};

} // namespace quillmender::atspi

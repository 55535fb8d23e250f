#pragma once

#include <QDBusConnection>
#include <QObject>

namespace quillmender {

/// How often the portal tells a connection that a shortcut of its is pressed, repeats and all.
class ActivationCount : public QObject {
    Q_OBJECT

  public:
    explicit ActivationCount(QDBusConnection bus);

    int count() const { return count_; }

  private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void add() { ++count_; }

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    int count_ = 0;
};

} // namespace quillmender

#pragma once

#include <QObject>

#include <functional>

/// Control + Alt + Return as a global shortcut of KGlobalAccel.
class KdeKey : public QObject {
    Q_OBJECT

  public:
    explicit KdeKey(std::function<void()> pressed);

  private Q_SLOTS:
    void handlePress(const QString &component, const QString &action);

  private:
    std::function<void()> pressed_;
};

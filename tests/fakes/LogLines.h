#pragma once

#include <QLoggingCategory>
#include <QStringList>

#include <algorithm>

namespace quillmender::fakes {

/// What one category logs while this lives, down to its information.
class LogLines {
  public:
    explicit LogLines(const char *category) {
        QLoggingCategory::setFilterRules(
            QStringLiteral("%1.info=true").arg(QLatin1String(category)));
        lines().clear();
        previous_ = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &,
                                              const QString &line) { lines().append(line); });
    }
    LogLines(const LogLines &) = delete;
    LogLines &operator=(const LogLines &) = delete;
    ~LogLines() {
        qInstallMessageHandler(previous_);
        QLoggingCategory::setFilterRules(QString());
    }

    bool contain(const QString &part) const {
        return std::any_of(lines().cbegin(), lines().cend(),
                           [&](const QString &line) { return line.contains(part); });
    }

  private:
    static QStringList &lines() {
        static QStringList all;
        return all;
    }

    QtMessageHandler previous_ = nullptr;
};

} // namespace quillmender::fakes

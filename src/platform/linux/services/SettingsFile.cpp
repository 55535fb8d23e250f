#include "platform/linux/services/SettingsFile.h"

#include <QLoggingCategory>

#include <future>
#include <memory>

namespace quillmender {

namespace {
Q_LOGGING_CATEGORY(log, "quillmender.settings", QtWarningMsg)

QString name() {
    return QStringLiteral("quillmender");
}

void write(const QString &key, const QString &value) {
    QSettings settings(QSettings::NativeFormat, QSettings::UserScope, name(), name());
    settings.setValue(key, value);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        qCWarning(log) << "could not write" << settings.fileName() << "for" << key;
}
} // namespace

SettingsFile::SettingsFile(std::chrono::milliseconds lastWait)
    : lastWait_(lastWait),
      settings_(QSettings::NativeFormat, QSettings::UserScope, name(), name()) {}

SettingsFile::~SettingsFile() {
    auto written = std::make_shared<std::promise<void>>();
    const std::future<void> isWritten = written->get_future();
    worker_.enqueue([written] { written->set_value(); });
    if (isWritten.wait_for(lastWait_) == std::future_status::timeout)
        qCWarning(log, "the last changes are not written yet");
}

std::optional<QString> SettingsFile::string(const QString &key) {
    const auto changed = changed_.constFind(key);
    if (changed != changed_.constEnd())
        return *changed;
    const QVariant value = settings_.value(key);
    if (!value.isValid())
        return std::nullopt;
    // A comma in a line that somebody wrote by hand makes a list of it.
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QStringLiteral(", "));
    return value.toString();
}

void SettingsFile::setString(const QString &key, const QString &value) {
    changed_[key] = value;
    const std::string subject = key.toStdString();
    worker_.dropWaiting(subject);
    worker_.enqueue([key, value] { write(key, value); }, subject);
}

std::optional<QByteArray> SettingsFile::data(const QString &key) {
    const auto text = string(key);
    if (!text)
        return std::nullopt;
    return text->toUtf8();
}

void SettingsFile::setData(const QString &key, const QByteArray &value) {
    setString(key, QString::fromUtf8(value));
}

} // namespace quillmender

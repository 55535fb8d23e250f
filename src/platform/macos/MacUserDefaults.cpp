#include "platform/macos/MacUserDefaults.h"

#include "platform/macos/CFConversions.h"

#include <QLoggingCategory>

namespace quillmender {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.settings", QtWarningMsg)

CFRef<CFTypeRef> stored(const QString &key) {
    const CFRef<CFStringRef> name = toCFString(key);
    if (!name)
        return {};
    return CFRef<CFTypeRef>::adopted(
        CFPreferencesCopyAppValue(name.get(), kCFPreferencesCurrentApplication));
}

void store(const QString &key, CFTypeRef value) {
    const CFRef<CFStringRef> name = toCFString(key);
    // A null value would delete what is stored.
    if (!name || !value) {
        qCWarning(log) << "no memory to store" << key;
        return;
    }
    CFPreferencesSetAppValue(name.get(), value, kCFPreferencesCurrentApplication);
    if (!CFPreferencesAppSynchronize(kCFPreferencesCurrentApplication))
        qCWarning(log) << "could not write" << key;
}

} // namespace

std::optional<QString> MacUserDefaults::string(const QString &key) {
    return stringFrom(stored(key).get());
}

void MacUserDefaults::setString(const QString &key, const QString &value) {
    store(key, toCFString(value).get());
}

std::optional<QByteArray> MacUserDefaults::data(const QString &key) {
    return bytesFrom(stored(key).get());
}

void MacUserDefaults::setData(const QString &key, const QByteArray &value) {
    store(key, toCFData(value).get());
}

} // namespace quillmender

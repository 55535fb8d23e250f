#include "desktop/wayland/panel/HeadlessDesktop.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quillmender::test {

namespace {

void write(const QString &path, const QByteArray &content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw harness::HarnessError(QStringLiteral("cannot write %1").arg(path));
    file.close();
    giveToUser(path);
}

QByteArray swayOutput(int number) {
    return QStringLiteral("output HEADLESS-%1 resolution %2x%3 position %4 0\n")
        .arg(number)
        .arg(HeadlessDesktop::size.width())
        .arg(HeadlessDesktop::size.height())
        .arg((number - 1) * HeadlessDesktop::size.width())
        .toUtf8();
}

} // namespace

HeadlessDesktop::HeadlessDesktop(const QString &name, int outputs, const QByteArray &lines)
    : name_(name),
      outputs_(outputs) {
    if (!folder_.isValid())
        throw harness::HarnessError(QStringLiteral("no folder for a desktop"));
    giveToUser(folder_.path());
    writeConfiguration(lines);
    QStringList arguments;
    if (name == QStringLiteral("sway"))
        arguments = {QStringLiteral("-c"), folder_.filePath(QStringLiteral("sway.conf"))};
    else
        arguments = {QStringLiteral("-C"), folder_.path()};
    compositor_ = std::make_unique<Program>(name, arguments, environment(),
                                            folder_.filePath(QStringLiteral("compositor.log")));
    harness::waitUntil(
        [this] {
            const QStringList sockets =
                QDir(folder_.path())
                    .entryList({QStringLiteral("wayland-?")}, QDir::System | QDir::Files);
            if (!sockets.isEmpty())
                display_ = QFile::encodeName(folder_.filePath(sockets.first()));
            return !display_.isEmpty() || !compositor_->isRunning();
        },
        QStringLiteral("a socket of ") + name);
    if (display_.isEmpty()) {
        QFile log(folder_.filePath(QStringLiteral("compositor.log")));
        throw harness::HarnessError(
            name + QStringLiteral(" ended: ") +
            QString::fromUtf8(log.open(QIODevice::ReadOnly) ? log.readAll() : QByteArray()));
    }
}

void HeadlessDesktop::writeConfiguration(const QByteArray &lines) const {
    if (name_ == QStringLiteral("sway")) {
        QByteArray text = "xwayland disable\nfocus_follows_mouse no\ndefault_border none\n";
        for (int number = 1; number <= outputs_; ++number)
            text += swayOutput(number);
        text += lines;
        write(folder_.filePath(QStringLiteral("sway.conf")), text);
    } else {
        write(folder_.filePath(QStringLiteral("rc.xml")),
              "<labwc_config><focus><followMouse>no</followMouse></focus></labwc_config>\n");
    }
}

QProcessEnvironment HeadlessDesktop::environment() const {
    QProcessEnvironment environment;
    const auto set = [&](const char *name, const QString &value) {
        environment.insert(QString::fromLatin1(name), value);
    };
    set("PATH", qEnvironmentVariable("PATH"));
    set("LANG", QStringLiteral("C.UTF-8"));
    for (const char *name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        set(name, folder_.path());
    set("WLR_BACKENDS", QStringLiteral("headless"));
    set("WLR_RENDERER", QStringLiteral("pixman"));
    set("WLR_LIBINPUT_NO_DEVICES", QStringLiteral("1"));
    set("WLR_HEADLESS_OUTPUTS", QString::number(outputs_));
    set("QT_QPA_PLATFORM", QStringLiteral("wayland"));
    set("NO_AT_BRIDGE", QStringLiteral("1"));
    set("QT_LOGGING_RULES", QStringLiteral("quillmender.wayland.info=true"));
    const QString sanitizer = qEnvironmentVariable("ASAN_OPTIONS");
    if (!sanitizer.isEmpty())
        set("ASAN_OPTIONS", sanitizer);
    if (!display_.isEmpty())
        set("WAYLAND_DISPLAY", QFile::decodeName(display_));
    return environment;
}

std::unique_ptr<Program> HeadlessDesktop::start(const QString &file, const QStringList &arguments,
                                                const QProcessEnvironment &more) const {
    QProcessEnvironment own = environment();
    own.insert(more);
    return std::make_unique<Program>(
        file, arguments, own,
        folder_.filePath(QFileInfo(file).fileName() + QStringLiteral(".log")));
}

} // namespace quillmender::test

#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace quillmender {

/// The folders that a desktop session names in its environment, all in a temporary one, and nothing
/// on the PATH but what the test puts there.
class DesktopFolderTest : public testing::Test {
  protected:
    DesktopFolderTest() {
        set("HOME", path(QStringLiteral("home")));
        set("XDG_CONFIG_HOME", path(QStringLiteral("home/config")));
        set("XDG_CONFIG_DIRS", path(QStringLiteral("etc")));
        set("XDG_DATA_HOME", path(QStringLiteral("home/data")));
        set("XDG_DATA_DIRS", path(QStringLiteral("local")) + u':' + path(QStringLiteral("usr")));
        set("PATH", path(QStringLiteral("bin")));
        set("XDG_CURRENT_DESKTOP", {});
        QDir().mkpath(path(QStringLiteral("home")));
    }

    ~DesktopFolderTest() override {
        for (auto each = before_.cbegin(); each != before_.cend(); ++each)
            qputenv(each.key().constData(), each.value());
    }

    void set(const char *variable, const QString &value) {
        if (!before_.contains(variable))
            before_.insert(variable, qgetenv(variable));
        qputenv(variable, QFile::encodeName(value));
    }

    QString path(const QString &name) const { return root_.filePath(name); }

    QString write(const QString &name, const QByteArray &contents) {
        const QString target = path(name);
        QDir().mkpath(QFileInfo(target).path());
        QFile file(target);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << target.toStdString();
        file.write(contents);
        return target;
    }

    QByteArray read(const QString &name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// False when another program has not made it within 20 seconds.
    bool waitForFile(const QString &name) const {
        return QTest::qWaitFor([&] { return QFile::exists(path(name)); }, 20000);
    }

    /// A program that writes its arguments, one per line, into `<name>.arguments` beside it.
    QString writeProgram(const QString &name) {
        const QString target = write(name, "#!/bin/sh\nfor each do printf '%s\\n' \"$each\"; done "
                                           "> \"$0.new\"\n/bin/mv \"$0.new\" \"$0.arguments\"\n");
        QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                          QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
                                          QFile::ExeOther);
        return target;
    }

    /// The desktop entry by which the program is known to desktops.
    void install() {
        writeProgram(QStringLiteral("bin/quillmender"));
        write(QStringLiteral("usr/applications/com.quillmender.Quillmender.desktop"),
              "[Desktop Entry]\nType=Application\nName=Quillmender\nExec=quillmender\n");
    }

  private:
    QTemporaryDir root_;
    QHash<QByteArray, QByteArray> before_;
};

} // namespace quillmender

#pragma once

#include "desktop/harness/Waiter.h"
#include "desktop/wayland/wlroots/Compositor.h"
#include "desktop/wayland/wlroots/UserKeyboard.h"

#include <QCoroTask>
#include <QFile>
#include <QGuiApplication>
#include <QRasterWindow>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmender::wlroots {

using harness::becomesTrue;
using harness::waitUntil;

/// A test on a compositor of its own, with a user at its keyboard.
class WlrootsTest : public testing::Test {
  protected:
    void start(Compositor::Kind kind, const QByteArray &configuration = {},
               const QByteArray &layouts = "us", quint32 active = 0) {
        compositor_ = std::make_unique<Compositor>(kind, configuration);
        user_ = std::make_unique<UserKeyboard>(compositor_->display(), layouts, active);
        connection_ = wayland::WaylandConnection::open(compositor_->display());
        ASSERT_NE(connection_, nullptr);
    }

    /// A terminal that writes the keys that it gets to a file, as they come.
    harness::ChildProcess &startTerminal(const QString &appId = QStringLiteral("foot")) {
        auto &terminal = compositor_->start(
            QStringLiteral("foot"),
            {QStringLiteral("--app-id"), appId, QStringLiteral("sh"), QStringLiteral("-c"),
             QStringLiteral("stty raw -echo; touch %1.ready; exec cat > %1.typed").arg(appId)});
        waitUntil([&] { return QFile::exists(path(appId + QStringLiteral(".ready"))); },
                  QStringLiteral("the terminal reads keys"));
        return terminal;
    }

#ifdef COVERING_SURFACE
    /// A surface above the windows, which has the keyboard.
    harness::ChildProcess &cover() {
        compositor_->environment().insert(QStringLiteral("QT_QPA_PLATFORM"),
                                          QStringLiteral("wayland"));
        const QString sign = path(QStringLiteral("covered"));
        auto &surface = compositor_->start(QStringLiteral(COVERING_SURFACE), {sign});
        waitUntil([&] { return QFile::exists(sign); }, QStringLiteral("the windows are covered"));
        return surface;
    }
#endif

    QString path(const QString &name) const {
        return compositor_->folder() + QLatin1Char('/') + name;
    }

    QByteArray typed(const QString &appId = QStringLiteral("foot")) const {
        QFile file(path(appId + QStringLiteral(".typed")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void pressHotKey() {
        user_->down(XKB_KEY_Control_L);
        user_->down(XKB_KEY_Alt_L);
        user_->tap(XKB_KEY_space);
        user_->up(XKB_KEY_Alt_L);
        user_->up(XKB_KEY_Control_L);
    }

    /// The focus of a window of this program's, which is hidden again when the object goes.
    class OwnFocus {
      public:
        OwnFocus() {
            window_.show();
            window_.requestActivate();
            waitUntil([] { return QGuiApplication::focusWindow() != nullptr; },
                      QStringLiteral("a window of our own has the focus"));
        }
        ~OwnFocus() {
            window_.destroy();
            // This toolkit's plugin does not tell; that of a compositor does.
            Q_EMIT qGuiApp->focusWindowChanged(nullptr);
        }

      private:
        QRasterWindow window_;
    };

    std::unique_ptr<Compositor> compositor_;
    std::unique_ptr<UserKeyboard> user_;
    std::unique_ptr<wayland::WaylandConnection> connection_;
};

inline int runWlrootsTests(int argc, char **argv, const QStringList &programs) {
    testing::InitGoogleMock(&argc, argv);
    // Windows of this program's own are of no consequence for the compositor.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QString missing = Compositor::missing(programs);
    if (!missing.isEmpty()) {
        printf("not tested: %s is not installed\n", qPrintable(missing));
        return 0;
    }
    return RUN_ALL_TESTS();
}

} // namespace quillmender::wlroots

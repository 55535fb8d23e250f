#include "desktop/wayland/kwin/KwinSession.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <gtest/gtest.h>

#include <cstdio>
#include <optional>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    const QStringList missing = quillmender::KwinSession::missingPrograms();
    if (!missing.isEmpty()) {
        std::printf("not tested: KWin (missing: %s)\n",
                    qUtf8Printable(missing.join(QStringLiteral(", "))));
        return 0;
    }
    std::optional<quillmender::KwinSession> session;
    {
        const QCoreApplication beforeTheCompositor(argc, argv);
        session.emplace();
    }
    int result = 1;
    {
        const QGuiApplication application(argc, argv);
        QGuiApplication::setQuitOnLastWindowClosed(false);
        result = RUN_ALL_TESTS();
    }
    session.reset();
    return result;
}

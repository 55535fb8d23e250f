#include "demo/Demonstration.h"

#include <QCoreApplication>

#include <cstdio>
#include <exception>

// Usage: quillmender-demo <folder for the pictures>
int main(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    const QString folder = QCoreApplication::arguments().value(1, QStringLiteral("build/demo"));
    try {
        quillmender::demo::Demonstration(folder).run();
    } catch (const std::exception &error) {
        std::fprintf(stderr, "The demonstration failed: %s\n", error.what());
        return 1;
    }
    return 0;
}

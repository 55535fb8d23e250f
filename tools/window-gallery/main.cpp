// Writes pictures of the settings, the action editor, About and an alert.
#include "WindowScenes.h"
#include "panel-gallery/GalleryDesktop.h"
#include "panel-gallery/GalleryOptions.h"

#include <QApplication>
#include <QCommandLineParser>

using namespace quillmender;

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const GalleryOptions options(parser);
    parser.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("For the pictures"));
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(1);

    GalleryAppearance appearance(options.apply());
    DrawnSymbols symbols;
    NoneOwnWindows ownWindows;
    QApplication::setQuitOnLastWindowClosed(false);
    Theme theme(appearance, symbols);
    WindowScenes scenes(theme, ownWindows, parser.positionalArguments().first());
    QObject::connect(&scenes, &WindowScenes::finished, &QCoreApplication::quit);
    scenes.start();
    return QApplication::exec();
}

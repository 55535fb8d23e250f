// Writes pictures of the settings, the action editor, About and an alert.
#include "WindowScenes.h"
#include "panel-gallery/GalleryDesktop.h"

#include <QApplication>
#include <QCommandLineParser>

using namespace quillmender;

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Dark colours"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption(dark);
    parser.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("For the pictures"));
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(1);

    DesktopColors colors;
    colors.scheme = parser.isSet(dark) ? ColorScheme::dark : ColorScheme::light;
    GalleryAppearance appearance(colors);
    DrawnSymbols symbols;
    NoneOwnWindows ownWindows;
    QApplication::setQuitOnLastWindowClosed(false);
    Theme theme(appearance, symbols);
    WindowScenes scenes(theme, ownWindows, parser.positionalArguments().first());
    QObject::connect(&scenes, &WindowScenes::finished, &QCoreApplication::quit);
    scenes.start();
    return QApplication::exec();
}

// Shows the action picker in one made-up state, or writes pictures of all of them.
#include "GalleryDesktop.h"
#include "GalleryModel.h"
#include "GalleryOptions.h"
#include "Photographer.h"
#include "States.h"
#include "platform/linux/services/SymbolDrawings.h"
#include "ui/ActionPanel.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QPainter>
#include <QTimer>

using namespace quillmender;

namespace {

bool writeSymbolSheet(const QString &file) {
    const QStringList names = symbolNames();
    constexpr int column = 80;
    constexpr int half = 210;
    QImage sheet(column * int(names.size()), 2 * half, QImage::Format_ARGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    painter.fillRect(0, half, sheet.width(), half, QColor(0x28, 0x28, 0x2d));
    for (qsizetype i = 0; i < names.size(); ++i) {
        QPoint corner(int(i) * column + 8, 8);
        for (const int size : {16, 20, 24, 32, 64}) {
            painter.drawImage(corner, drawSymbol(names[i], size, QColor(0x24, 0x24, 0x30)));
            painter.drawImage(corner + QPoint(0, half), drawSymbol(names[i], size, Qt::white));
            corner.ry() += size + 10;
        }
    }
    painter.end();
    return sheet.save(file);
}

} // namespace

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    const QCommandLineOption state(QStringLiteral("state"),
                                   QStringLiteral("One of: ") + galleryStates().join(u' '),
                                   QStringLiteral("name"), QStringLiteral("selection"));
    const QCommandLineOption scroll(QStringLiteral("scroll"), QStringLiteral("Scroll position"),
                                    QStringLiteral("percent"), QStringLiteral("0"));
    const QCommandLineOption all(QStringLiteral("all"),
                                 QStringLiteral("Write pictures of all states"),
                                 QStringLiteral("folder"));
    const QCommandLineOption symbols(QStringLiteral("symbols"),
                                     QStringLiteral("Write a picture of all symbols"),
                                     QStringLiteral("file"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({state, scroll, all, symbols});
    const GalleryOptions options(parser);
    parser.process(application);

    if (parser.isSet(symbols))
        return writeSymbolSheet(parser.value(symbols)) ? 0 : 1;

    GalleryAppearance appearance(options.apply());
    DrawnSymbols drawings;
    NoneOwnWindows ownWindows;
    QApplication::setQuitOnLastWindowClosed(false);
    Theme theme(appearance, drawings);

    if (parser.isSet(all)) {
        Photographer photographer(theme, ownWindows, parser.value(all));
        QObject::connect(&photographer, &Photographer::finished, &QCoreApplication::quit);
        photographer.start();
        return QApplication::exec();
    }
    GalleryModel model;
    enterState(model, parser.value(state));
    ActionPanelController controller(model, theme, ownWindows);
    controller.makeKeyAndOrderFront();
    QTimer::singleShot(0, &model, [&] { scrollPanel(controller, parser.value(scroll).toInt()); });
    return QApplication::exec();
}

// An editor that says what is typed into it and whether it is active.
#include "desktop/wayland/panel/CommandReader.h"

#include <QApplication>
#include <QPlainTextEdit>

using namespace quillmender::test;

int main(int argc, char *argv[]) {
    const QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("document"));
    QPlainTextEdit editor;
    editor.showMaximized();
    const CommandReader commands([](const QString &) {},
                                 [&] {
                                     return QJsonObject{
                                         {QStringLiteral("isActive"), editor.isActiveWindow()},
                                         {QStringLiteral("text"), editor.toPlainText()}};
                                 });
    return QApplication::exec();
}

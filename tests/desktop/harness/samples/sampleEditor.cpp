#include "CommandField.h"

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

// Usage: sample-editor plain|line|password|commands|stalling [text]
int main(int argc, char *argv[]) {
    const QApplication application(argc, argv);
    const QString kind = application.arguments().value(1);
    const QString text = application.arguments().value(2);

    QWidget window;
    window.setWindowTitle(QStringLiteral("Sample editor: ") + kind);
    auto *layout = new QVBoxLayout(&window);
    QWidget *editor = nullptr;
    if (kind == QStringLiteral("plain")) {
        editor = new QPlainTextEdit(text);
    } else if (kind == QStringLiteral("commands") || kind == QStringLiteral("stalling")) {
        constexpr std::chrono::seconds stall(2);
        editor = kind == QStringLiteral("stalling") ? new CommandField(text, stall)
                                                    : new CommandField(text);
        window.setWindowTitle(text);
    } else {
        auto *line = new QLineEdit(text);
        if (kind == QStringLiteral("password"))
            line->setEchoMode(QLineEdit::Password);
        editor = line;
    }
    layout->addWidget(editor);
    window.resize(480, 240);
    window.show();
    editor->setFocus();
    return QApplication::exec();
}

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>

#include <chrono>
#include <cstdio>

namespace {

void tell(const char *what, qsizetype length) {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    std::printf("%lld %s %lld\n", static_cast<long long>(nanoseconds), what,
                static_cast<long long>(length));
    std::fflush(stdout);
}

} // namespace

// A field that is written to through the clipboard alone, when it is started off the accessibility
// bus. It writes the moment, in nanoseconds of the steady clock, each time that its text has
// changed
// ("text", and the new length) and that somebody has taken the clipboard ("clipboard", which it
// does not read, and 0). All of the text is selected, again and again, as by somebody who replaces
// it. Usage: paste-field text
int main(int argc, char *argv[]) {
    const QApplication application(argc, argv);
    QLineEdit field(application.arguments().value(1));
    QObject::connect(&field, &QLineEdit::textChanged, &field, [&](const QString &text) {
        tell("text", text.size());
        QMetaObject::invokeMethod(&field, &QLineEdit::selectAll, Qt::QueuedConnection);
    });
    QObject::connect(QApplication::clipboard(), &QClipboard::dataChanged, &field,
                     [] { tell("clipboard", 0); });
    field.resize(480, 60);
    field.show();
    field.selectAll();
    return QApplication::exec();
}

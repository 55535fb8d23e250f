#include <QApplication>
#include <QLineEdit>

#include <chrono>
#include <cstdio>

// A field that is written to through the clipboard alone, when it is started off the accessibility
// bus. Each time that its text changes it writes the moment, in nanoseconds of the steady clock,
// and the new length; all of the text is selected, again and again, as by somebody who replaces it.
// Usage: paste-field text
int main(int argc, char *argv[]) {
    const QApplication application(argc, argv);
    QLineEdit field(application.arguments().value(1));
    QObject::connect(&field, &QLineEdit::textChanged, &field, [&](const QString &text) {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        std::printf("%lld %lld\n",
                    static_cast<long long>(
                        std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()),
                    static_cast<long long>(text.size()));
        std::fflush(stdout);
        QMetaObject::invokeMethod(&field, &QLineEdit::selectAll, Qt::QueuedConnection);
    });
    field.resize(480, 60);
    field.show();
    field.selectAll();
    return QApplication::exec();
}

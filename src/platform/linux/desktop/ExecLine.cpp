#include "platform/linux/desktop/ExecLine.h"

namespace quillmender::execLine {

namespace {

const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
const QString escapedInQuotes = QStringLiteral("\"`$\\");
// Most desktops look whether the program is there before they make one percent sign of two.
const QString launcher = QStringLiteral("/usr/bin/env");

bool needsLauncher(const QString &program) {
    return program.contains(u'%') && !program.contains(u'=');
}

QString formatArgument(const QString &argument) {
    bool needsQuotes = argument.isEmpty();
    QString body;
    for (const QChar character : argument) {
        needsQuotes |= reserved.contains(character);
        if (escapedInQuotes.contains(character))
            body += u'\\';
        body += character;
        if (character == u'%')
            body += u'%';
    }
    return needsQuotes ? u'"' + body + u'"' : body;
}

/// Reads one argument at a time.
class Reader {
  public:
    explicit Reader(const QString &value) : value_(value) {}

    std::optional<QStringList> arguments() {
        for (; at_ < value_.size(); ++at_) {
            const QChar character = value_[at_];
            if (character == u'"') {
                isInQuotes_ = !isInQuotes_;
                hasArgument_ = true;
            } else if (!isInQuotes_ && (character == u' ' || character == u'\t')) {
                finish();
            } else {
                take(character);
            }
        }
        if (isInQuotes_)
            return std::nullopt;
        finish();
        return arguments_;
    }

  private:
    void take(QChar character) {
        const bool hasNext = at_ + 1 < value_.size();
        if (character == u'%') {
            // "%%" is a percent sign, any other code stands for what is to be opened.
            if (hasNext && value_[at_ + 1] == u'%')
                add(u'%');
            ++at_;
            return;
        }
        if (character == u'\\' && hasNext)
            character = value_[++at_];
        add(character);
    }

    void add(QChar character) {
        argument_ += character;
        hasArgument_ = true;
    }

    void finish() {
        if (hasArgument_)
            arguments_.append(argument_);
        argument_.clear();
        hasArgument_ = false;
    }

    const QString &value_;
    qsizetype at_ = 0;
    bool isInQuotes_ = false;
    bool hasArgument_ = false;
    QString argument_;
    QStringList arguments_;
};

} // namespace

std::optional<QStringList> parse(const QString &value) {
    auto command = Reader(value).arguments();
    if (!command || command->isEmpty() || command->constFirst().isEmpty())
        return std::nullopt;
    if (command->constFirst() == launcher && command->size() > 1 && needsLauncher(command->at(1)))
        command->removeFirst();
    return command;
}

std::optional<QString> format(const QStringList &command) {
    if (command.isEmpty() || command.constFirst().isEmpty() || command.constFirst().contains(u'='))
        return std::nullopt;
    QStringList arguments;
    if (needsLauncher(command.constFirst()))
        arguments.append(launcher);
    for (const QString &argument : command)
        arguments.append(formatArgument(argument));
    return arguments.join(u' ');
}

} // namespace quillmender::execLine

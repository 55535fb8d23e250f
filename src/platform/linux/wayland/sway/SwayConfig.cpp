#include "platform/linux/wayland/sway/SwayConfig.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QSet>

#include <algorithm>
#include <wordexp.h>

namespace quillmender::sway {

namespace {

constexpr int mostFiles = 200;
constexpr qint64 longestFile = 1024 * 1024;
constexpr qsizetype longestLine = 64 * 1024;

/// The files that a word of the shell's language names, as the compositor takes it.
QStringList filesNamed(const QString &word, const QString &folder) {
    // A path in a configuration counts from the file that it stands in.
    const bool isAnchored = word.startsWith(u'/') || word.startsWith(u'~') || word.startsWith(u'$');
    const QString whole = isAnchored ? word : folder + u'/' + word;
    wordexp_t words{};
    if (wordexp(QFile::encodeName(whole).constData(), &words, WRDE_NOCMD) != 0)
        return {};
    const auto free = qScopeGuard([&words] { wordfree(&words); });
    QStringList files;
    for (size_t i = 0; i < words.we_wordc; ++i)
        files.append(QFile::decodeName(words.we_wordv[i]));
    return files;
}

class Reading {
  public:
    QStringList lines;

    void add(const QString &text, const QString &path) {
        const QString folder = QFileInfo(path).absolutePath();
        QString whole;
        for (const QString &piece : text.split(u'\n')) {
            whole += piece;
            if (whole.endsWith(u'\\') && whole.size() < longestLine) {
                whole.chop(1);
                continue;
            }
            addLine(whole.simplified(), folder);
            whole.clear();
        }
        addLine(whole.simplified(), folder);
    }

  private:
    void addLine(const QString &written, const QString &folder) {
        if (written.isEmpty() || written.startsWith(u'#'))
            return;
        const QString command = written.section(u' ', 0, 0).toLower();
        if (command == QStringLiteral("set")) {
            // The name of a variable is not one of its uses.
            const QString name = written.section(u' ', 1, 1);
            if (name.startsWith(u'$'))
                variables_[name] = substituted(written.section(u' ', 2));
            return;
        }
        const QString line = substituted(written);
        if (command == QStringLiteral("include"))
            include(line.section(u' ', 1), folder);
        else
            lines.append(line);
    }

    QString substituted(QString line) const {
        // The longest first: $mod is not the beginning of $modifier. Values have been substituted
        // when they were set, so that once is enough.
        QStringList names = variables_.keys();
        std::ranges::sort(names, std::greater{}, &QString::size);
        for (qsizetype at = line.indexOf(u'$'); at >= 0; at = line.indexOf(u'$', at + 1)) {
            const auto name = std::ranges::find_if(names, [&](const QString &known) {
                return QStringView(line).mid(at).startsWith(known);
            });
            if (name == names.end() || line.size() > longestLine)
                continue;
            const QString value = variables_[*name];
            line.replace(at, name->size(), value);
            at += value.size() - 1;
        }
        return line;
    }

    void include(QString word, const QString &folder) {
        if (word.size() > 1 && (word.startsWith(u'"') || word.startsWith(u'\'')))
            word = word.mid(1, word.size() - 2);
        for (const QString &name : filesNamed(word, folder)) {
            const QString path = QFileInfo(name).canonicalFilePath();
            if (path.isEmpty() || included_.contains(path) || included_.size() >= mostFiles)
                continue;
            included_.insert(path);
            QFile file(path);
            if (QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly))
                add(QString::fromUtf8(file.read(longestFile)), path);
        }
    }

    QMap<QString, QString> variables_;
    QSet<QString> included_;
};

} // namespace

QStringList configurationLines(const QString &mainText, const QString &mainPath) {
    Reading reading;
    reading.add(mainText, mainPath);
    return reading.lines;
}

} // namespace quillmender::sway

#include "applications/Scenario.h"

namespace quillmender::applications {

namespace {

constexpr qsizetype largeText = 1'000'000;

QString family() {
    return QStringLiteral("\U0001F469\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466");
}

Scenario everythingLarge() {
    QString text = QStringLiteral("You recieve it.\n");
    for (int line = 1; text.size() < largeText; ++line)
        text += QStringLiteral("Line %1 of a long letter that has very many of them.\n").arg(line);
    text += QStringLiteral("The end.");
    QString answer = text;
    answer.replace(QStringLiteral("recieve"), QStringLiteral("receive"));
    return {QStringLiteral("1 MB, everything"), text, Pick::everything, text, answer};
}

} // namespace

bool Scenario::isLarge() const {
    return text.size() >= largeText;
}

QString Scenario::replaced() const {
    if (picked == text)
        return answer;
    QString result = text;
    return result.replace(result.lastIndexOf(picked), picked.size(), answer);
}

QList<Scenario> editingScenarios() {
    const QString wholeField = QStringLiteral("Gr\u00fc\u00dfe %1, you recieve it.").arg(family());
    const QString tabs = QStringLiteral("one\ttwo\nthree\tfuor");
    const QString lines = QStringLiteral("first line\nsecond lien\nthird line");
    const QString linesOfWindows = QStringLiteral("first line\r\nsecond lien\r\nthird line");
    return {
        {QStringLiteral("ASCII, a word in the middle, forwards"),
         QStringLiteral("Hello, you recieve it tomorrow."), Pick::wordForwards,
         QStringLiteral("recieve"), QStringLiteral("receive")},
        {QStringLiteral("accents, at the start, backwards"),
         QStringLiteral("Gruesse aus Z\u00fcrich, \u00e0 bient\u00f4t"), Pick::wordBackwards,
         QStringLiteral("Gruesse"), QStringLiteral("Gr\u00fc\u00dfe")},
        {QStringLiteral("CJK, at the end, backwards"),
         QStringLiteral("\u4f1a\u8bae\u5728\u4e0b\u5348\u5f00\u4f7f"), Pick::wordBackwards,
         QStringLiteral("\u5f00\u4f7f"), QStringLiteral("\u5f00\u59cb")},
        {QStringLiteral("Arabic, everything"),
         QStringLiteral("\u0643\u064a\u0641 \u062d\u0627\u0644\u0643\u0643"), Pick::everything,
         QStringLiteral("\u0643\u064a\u0641 \u062d\u0627\u0644\u0643\u0643"),
         QStringLiteral("\u0643\u064a\u0641 \u062d\u0627\u0644\u0643\u061f")},
        {QStringLiteral("emoji with joiners before, forwards"),
         family() + QStringLiteral(" \U0001F600 you recieve"), Pick::wordForwards,
         QStringLiteral("recieve"), QStringLiteral("receive \U0001F389") + family()},
        {QStringLiteral("emoji with joiners, everything"), wholeField, Pick::everything, wholeField,
         QStringLiteral("%1 Gr\u00fc\u00dfe, you receive it.").arg(family())},
        {QStringLiteral("a line among others, forwards"), lines, Pick::lineForwards,
         QStringLiteral("second lien"), QStringLiteral("second line")},
        {QStringLiteral("a line among others, backwards"), lines, Pick::lineBackwards,
         QStringLiteral("second lien"), QStringLiteral("zweite Zeile")},
        {QStringLiteral("tabs, everything"), tabs, Pick::everything, tabs,
         QStringLiteral("one\ttwo\nthree\tfour")},
        {QStringLiteral("line ends of Windows in the answer"), lines, Pick::lineForwards,
         QStringLiteral("second lien"), QStringLiteral("zwei\r\nZeilen")},
        {QStringLiteral("line ends of Windows in the text"), linesOfWindows, Pick::wordOfLine,
         QStringLiteral("lien"), QStringLiteral("line")},
        {QStringLiteral("nothing selected: the whole field"), wholeField, Pick::nothing, wholeField,
         QStringLiteral("Gr\u00fc\u00dfe %1, you receive it today.").arg(family())},
        everythingLarge(),
    };
}

} // namespace quillmender::applications

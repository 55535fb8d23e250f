#include "States.h"

#include <QHash>

#include <functional>

namespace quillmender {

namespace {

const QString prose = QStringLiteral(
    "hey, i wanted too let you know that the report are late because we was waiting on the "
    "numbers from finance, sorry about that and ill send it over first thing tomorow morning "
    "if thats\u2026");

PromptAction custom(const QString &title) {
    return PromptAction::custom({QUuid::createUuid(), title, QString()});
}

void nothingCaptured(GalleryModel &model) {
    model.description.clear();
    model.preview.clear();
}

void shortSelection(GalleryModel &model) {
    model.preview = QStringLiteral("their is three thing we need too discuss before monday");
}

void fullField(GalleryModel &model) {
    model.title = QStringLiteral("Captured Field");
    model.description = QStringLiteral(
        "No selection was found, so Quillmender captured the full focused text field.");
}

void working(GalleryModel &model) {
    model.working = true;
    model.running = QStringLiteral("Fix My Grammar");
    model.instruction = QStringLiteral("Turn this into a friendly status update.");
}

void accessNeeded(GalleryModel &model) {
    nothingCaptured(model);
    model.granted = false;
    model.error = QStringLiteral("Accessibility access is required to read the selected text and "
                                 "to put the result back.");
}

void longError(GalleryModel &model) {
    const QString sentence =
        QStringLiteral("The provider answered 500: upstream \u2018inference-7\u2019 went away. ");
    model.error =
        sentence.repeated(5000 / int(sentence.size()) + 1).left(4900) + QString(100, u'x');
}

void providerError(GalleryModel &model) {
    model.error = QStringLiteral("Rate limit reached. Please try again in 20 seconds.");
}

void manyActions(GalleryModel &model) {
    for (int i = 1; i <= 40; ++i)
        model.actionList.append(custom(
            i % 2 ? QStringLiteral("Rewrite as a release note for version %1 with highlights, "
                                   "fixes and known issues & thanks")
                        .arg(i)
                  : QStringLiteral("Custom %1").arg(i)));
}

void rightToLeft(GalleryModel &model) {
    model.preview = QStringLiteral(
        "\u0645\u0631\u062d\u0628\u0627\u060c \u0623\u0648\u062f \u0623\u0646 \u0623\u062e\u0628"
        "\u0631\u0643\u0645 \u0623\u0646 \u0627\u0644\u062a\u0642\u0631\u064a\u0631 PDF \u0633"
        "\u064a\u062a\u0623\u062e\u0631 \u0642\u0644\u064a\u0644\u0627\u064b \u0644\u0623\u0646"
        "\u0646\u0627 \u0646\u0646\u062a\u0638\u0631 \u0627\u0644\u0623\u0631\u0642\u0627\u0645 "
        "2026 \u0645\u0646 \u0642\u0633\u0645 \u0627\u0644\u0645\u0627\u0644\u064a\u0629\u060c "
        "\u0648\u0634\u0643\u0631\u0627\u064b \u0644\u0635\u0628\u0631\u0643\u0645.");
    model.instruction = QStringLiteral(
        "\u0627\u0643\u062a\u0628 \u0647\u0630\u0627 \u0628\u0623\u0633\u0644\u0648\u0628 "
        "\u0631\u0633\u0645\u064a");
    model.actionList.prepend(
        custom(QStringLiteral("\u062a\u0644\u062e\u064a\u0635 \u0627\u0644\u0646\u0635 "
                              "\u0641\u064a \u062c\u0645\u0644\u0629 \u0648\u0627\u062d\u062f"
                              "\u0629 \u0642\u0635\u064a\u0631\u0629 \u0645\u0639 \u0627\u0644"
                              "\u0646\u0642\u0627\u0637")));
}

void longWord(GalleryModel &model) {
    model.preview = QString(180, u'W') + QChar(0x2026);
}

using Enter = std::function<void(GalleryModel &)>;

const QList<std::pair<QString, Enter>> &states() {
    static const QList<std::pair<QString, Enter>> all = {
        {QStringLiteral("selection"), [](GalleryModel &) {}},
        {QStringLiteral("short-selection"), shortSelection},
        {QStringLiteral("full-field"), fullField},
        {QStringLiteral("working"), working},
        {QStringLiteral("access-needed"), accessNeeded},
        {QStringLiteral("provider-error"), providerError},
        {QStringLiteral("long-error"), longError},
        {QStringLiteral("many-actions"), manyActions},
        {QStringLiteral("right-to-left"), rightToLeft},
        {QStringLiteral("long-word"), longWord},
        {QStringLiteral("nothing"), nothingCaptured},
    };
    return all;
}

} // namespace

QStringList galleryStates() {
    QStringList names;
    for (const auto &[name, enter] : states())
        names.append(name);
    return names;
}

void enterState(GalleryModel &model, const QString &state) {
    model.preview = prose;
    for (const auto &[name, enter] : states())
        if (name == state)
            enter(model);
}

} // namespace quillmender

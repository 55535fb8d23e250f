#include "demo/Demonstration.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Screenshot.h"
#include "support/ProviderAnswers.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <X11/keysym.h>
#include <cstdio>

namespace quillmender::demo {

namespace {

using harness::HarnessError;
using harness::waitUntil;

const auto wrongWord = QStringLiteral("recieve");
const auto rightWord = QStringLiteral("receive");
const auto letter = QStringLiteral("Dear Ms Keller,\n\n"
                                   "you will recieve the parcel on Tuesday.\n\n"
                                   "Kind regards,\nJonas\n");
const auto action = QStringLiteral("Fix My Grammar");
const auto panelTitle = QStringLiteral("Quillmender");

void require(bool condition, const QString &what) {
    if (!condition)
        throw HarnessError(what);
}

qsizetype countColors(const QImage &image) {
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    }
    return colors.size();
}

double shareOfDifferentPixels(const QImage &one, const QImage &other) {
    if (one.isNull() || one.size() != other.size())
        return 1;
    qsizetype different = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            different += one.pixel(x, y) != other.pixel(x, y) ? 1 : 0;
    }
    return double(different) / (double(one.width()) * one.height());
}

} // namespace

Demonstration::Demonstration(const QString &folder) : folder_(folder) {
    QDir(folder_).removeRecursively();
    QDir().mkpath(folder_);
}

void Demonstration::run() {
    account_.step(QStringLiteral("X server %1, window manager, session bus, accessibility bus and "
                                 "an unlocked keyring are up")
                      .arg(desktop_.display()));
    try {
        prepareProvider();
        fillClipboard();
        startProgram();
        openEditor();
        selectWord();
        pressHotKey();
        clickAction();
        expectRequest();
        expectReplacement();
        expectClipboard();
    } catch (const std::exception &) {
        desktop_.keepArtifacts(folder_ + QStringLiteral("/failure"));
        throw;
    }
    std::printf("Done in %lld ms. Pictures: %s/{1-before,2-panel,3-after}.png\n",
                static_cast<long long>(account_.totalMs()), qUtf8Printable(folder_));
}

void Demonstration::prepareProvider() {
    provider_.setAnswer(test::ScriptedAnswer::http(200, test::openAIBody(rightWord)));
    account_.step(QStringLiteral("a provider answers at %1").arg(provider_.baseUrl()));
}

void Demonstration::fillClipboard() {
    clipboard_.emplace(desktop_.display(), harness::ClipboardOwner::textHtmlAndImage());
    clipboardBefore_ = harness::ClipboardProbe(desktop_.display()).read();
    require(!clipboardBefore_.bytes("image/png").isEmpty(),
            QStringLiteral("the clipboard was not filled"));
    account_.step(QStringLiteral("another application has put text, HTML and a picture on the "
                                 "clipboard"));
}

void Demonstration::startProgram() {
    program_.emplace(desktop_, harness::ProductProcess::openAi(provider_.baseUrl() +
                                                               QStringLiteral("/v1/responses")));
    program_->waitUntilReady();
    account_.step(QStringLiteral("Quillmender runs in the background"));
}

void Demonstration::openEditor() {
    editor_ = harness::TestApplication::mousepad(desktop_, letter);
    text_ = editor_->focusedText();
    waitUntil([&] { return text_->text() == letter; }, QStringLiteral("the letter is open"));
    account_.step(QStringLiteral("mousepad shows a letter"));
}

void Demonstration::selectWord() {
    const auto offset = static_cast<int>(letter.indexOf(wrongWord) + wrongWord.size() / 2);
    desktop_.input().doubleClick(text_->characterExtents(offset).center());
    waitUntil([&] { return text_->selectedText() == wrongWord; },
              QStringLiteral("a double click selects \"%1\"").arg(wrongWord));
    account_.step(QStringLiteral("a double click selects \"%1\"").arg(wrongWord));
    waitUntilPainted(editor_->geometry(), QStringLiteral("the editor"));
    editorBefore_ = harness::takeScreenshot(desktop_.connection(), editor_->geometry());
    takePicture(QStringLiteral("1-before"));
}

void Demonstration::pressHotKey() {
    desktop_.input().chord({XK_Control_L, XK_Alt_L, XK_space});
    xcb_window_t panel = XCB_WINDOW_NONE;
    waitUntil(
        [&] {
            panel = desktop_.windows().titled(panelTitle);
            return panel != XCB_WINDOW_NONE && desktop_.windows().active() == panel;
        },
        QStringLiteral("the panel is shown and has the focus"));
    account_.step(QStringLiteral("Control + Alt + Space: the panel has the focus"));
    desktop_.accessible().waitFor(program_->pid(), {}, wrongWord);
    account_.step(QStringLiteral("the panel previews \"%1\"").arg(wrongWord));
    waitUntilPainted(desktop_.windows().geometry(panel), QStringLiteral("the panel"));
    takePicture(QStringLiteral("2-panel"));
}

void Demonstration::clickAction() {
    const harness::Accessible button =
        desktop_.accessible().waitFor(program_->pid(), QStringLiteral("push button"), action);
    desktop_.input().click(button.extents().center());
    account_.step(QStringLiteral("the mouse clicks \"%1\"").arg(action));
}

void Demonstration::expectRequest() {
    waitUntil([&] { return !provider_.requests().empty(); },
              QStringLiteral("a request arrives at the provider"));
    const test::ReceivedRequest request = provider_.requests().front();
    require(request.method == "POST" && request.target == "/v1/responses",
            QStringLiteral("unexpected request: %1").arg(QString::fromUtf8(request.head)));
    require(request.header("Authorization") == QByteArray("Bearer test-key"),
            QStringLiteral("the request does not carry the key from the keyring"));
    const QJsonObject body = QJsonDocument::fromJson(request.body).object();
    const QString prompt =
        body[QStringLiteral("input")][1][QStringLiteral("content")][0][QStringLiteral("text")]
            .toString();
    require(prompt.startsWith(QStringLiteral("Correct grammar")) && prompt.endsWith(wrongWord),
            QStringLiteral("unexpected prompt: %1").arg(prompt));
    account_.step(QStringLiteral("the provider receives POST %1 with the action's prompt and the "
                                 "word (%2 bytes)")
                      .arg(QString::fromUtf8(request.target))
                      .arg(request.body.size()));
}

void Demonstration::expectReplacement() {
    QString expected = letter;
    expected.replace(wrongWord, rightWord);
    waitUntil([&] { return text_->text() == expected; },
              QStringLiteral("the answer takes the word's place"));
    account_.step(QStringLiteral("mousepad holds \"%1\" in its place").arg(rightWord));
    waitUntil([&] { return text_->selectedText() == rightWord; },
              QStringLiteral("the inserted text is selected"));
    waitUntil([&] { return desktop_.windows().titled(panelTitle) == XCB_WINDOW_NONE; },
              QStringLiteral("the panel is hidden"));
    waitUntil([&] { return desktop_.windows().active() == editor_->window(); },
              QStringLiteral("the editor has the focus again"));
    account_.step(QStringLiteral("the inserted text is selected, the panel is gone, the editor has "
                                 "the focus"));
    waitUntilEditorIsUncovered();
    takePicture(QStringLiteral("3-after"));
    require(provider_.requests().size() == 1,
            QStringLiteral("%1 requests instead of one").arg(provider_.requests().size()));
}

void Demonstration::expectClipboard() {
    const harness::ClipboardContents after = harness::ClipboardProbe(desktop_.display()).read();
    require(after.targets == clipboardBefore_.targets,
            QStringLiteral("the clipboard offers other targets than before"));
    require(after == clipboardBefore_, QStringLiteral("the clipboard's bytes have changed"));
    require(after.owner == clipboardBefore_.owner,
            QStringLiteral("the clipboard has changed its owner"));
    account_.step(QStringLiteral("the clipboard is untouched: %1 targets, the same bytes and owner")
                      .arg(after.targets.size()));
}

void Demonstration::waitUntilPainted(QRect area, const QString &what) {
    constexpr qsizetype colorsOfAnEmptyWindow = 16;
    QImage previous;
    waitUntil(
        [&] {
            const QImage now = harness::takeScreenshot(desktop_.connection(), area);
            const bool isStill = now == previous && countColors(now) > colorsOfAnEmptyWindow;
            previous = now;
            return isStill;
        },
        QStringLiteral("%1 is painted").arg(what));
}

// Where the panel was the editor still has to paint: then it looks as before but for a word.
void Demonstration::waitUntilEditorIsUncovered() {
    constexpr double shareOfAWord = 0.03;
    waitUntil(
        [&] {
            const QImage now = harness::takeScreenshot(desktop_.connection(), editor_->geometry());
            return shareOfDifferentPixels(now, editorBefore_) < shareOfAWord;
        },
        QStringLiteral("the editor is painted where the panel was"));
    waitUntilPainted(editor_->geometry(), QStringLiteral("the editor"));
}

void Demonstration::takePicture(const QString &name) {
    const QString path = folder_ + QLatin1Char('/') + name + QStringLiteral(".png");
    require(desktop_.screenshot().save(path), QStringLiteral("cannot write %1").arg(path));
    account_.step(QStringLiteral("picture: %1").arg(path));
}

} // namespace quillmender::demo

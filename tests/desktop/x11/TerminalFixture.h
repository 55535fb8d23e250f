#pragma once

#include "desktop/x11/KeyTyper.h"
#include "desktop/x11/X11Test.h"

#include <QFile>
#include <QTemporaryDir>

namespace quillmender::x11 {

/// A real terminal in which a program runs, and the program's services that paste into it.
class TerminalFixture : public X11Test {
  protected:
    ~TerminalFixture() override {
        for (auto &program : {xterm_.get(), windowManager_.get()}) {
            if (program == nullptr)
                continue;
            program->kill();
            program->waitForFinished(5000);
        }
    }

    void SetUp() override {
        X11Test::SetUp();
        windowManager_ = startWindowManager();
    }

    /// Starts the command in a terminal and waits until that is in front and the command has made
    /// the file `ready`.
    void start(const QString &command) {
        // One that hands on to the program in it whatever is pasted.
        const QStringList arguments{
            QStringLiteral("-xrm"),
            QStringLiteral("*disallowedPasteControls: NUL"),
            QStringLiteral("-e"),
            QStringLiteral("sh"),
            QStringLiteral("-c"),
            QStringLiteral("cd '%1'; export HOME='%1'; %2").arg(folder_.path(), command)};
        xterm_ = server_.start(QStringLiteral("xterm"), arguments);
        ASSERT_TRUE(
            waitFor([this] { return processInFront() == xterm_->processId() && exists("ready"); }));
        terminal_ = services_->workspace->frontmostApplication();
    }

    QString path(const char *name) const { return folder_.filePath(QLatin1String(name)); }
    bool exists(const char *name) const { return QFile::exists(path(name)); }

    QByteArray contents(const char *name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    Outcome paste(const QString &answer) {
        lent_ = lend(answer, terminal_);
        EXPECT_NE(lent_, nullptr);
        const ChordResult result = type(Chord::paste, terminal_, lent_);
        reason_ = result.reason.toStdString();
        return result.outcome;
    }

    /// The terminal may take a moment to be at the program's disposal.
    bool pasteInTheEnd(const QString &answer) {
        return waitFor([&] { return paste(answer) == Outcome::typed; });
    }

    void tap(std::initializer_list<xkb_keysym_t> symbols) {
        KeyTyper typer(*peer_);
        for (const xkb_keysym_t symbol : symbols)
            typer.tap(symbol);
    }

    void tapWithControl(xkb_keysym_t symbol) {
        KeyTyper typer(*peer_);
        typer.down(XKB_KEY_Control_L);
        typer.tap(symbol);
        typer.up(XKB_KEY_Control_L);
    }

    QTemporaryDir folder_;
    std::unique_ptr<QProcess> windowManager_;
    std::unique_ptr<QProcess> xterm_;
    RunningApplicationRef terminal_;
    std::shared_ptr<X11LentText> lent_;
    std::string reason_;
};

} // namespace quillmender::x11

#pragma once

#include <QList>
#include <QString>

#include <chrono>
#include <optional>

namespace quillmender {

/// One thing that a partner of the program does wrong, once, in a session. Written as
/// "partner@moment=how:milliseconds", for example "editor@InsertText#1=hangs:700".
struct Stall {
    enum class Partner { editor, windowManager, clipboard, keyring, provider };

    enum class How {
        /// An editor's call: the whole program stands still before it does what it was asked.
        hangs,
        /// It does what it was asked, and stands still before it answers.
        hangsAfterwards,
        /// It does what it was asked and answers later, other calls meanwhile.
        answersLate,
        /// It does what it was asked, and answers, later; other calls meanwhile.
        actsLate,
        answersTwice,
        /// It does what it was asked and answers with another type.
        talksNonsense,
        /// It does what it was asked and never answers.
        keepsSilent,
        /// It answers that it did what it was asked, and did not.
        lies,
        /// It answers with an error, and did nothing.
        fails,
        /// The process is stopped when the moment comes, and continued later.
        isStopped,
        /// A clipboard's owner: the target is asked for and all that follows waits. A provider: a
        /// pause before the bytes.
        isLate,
    };

    Partner partner = Partner::editor;
    /// An editor's call with its number in the session ("GetText#2"), what is observed on the
    /// desktop ("clipboardTaken"), a clipboard's target, a part of the provider's answer.
    QString at;
    How how = How::hangs;
    std::chrono::milliseconds duration{0};

    QString toString() const;
    static std::optional<Stall> fromString(const QString &text);
};

QStringList toStrings(const QList<Stall> &stalls);

} // namespace quillmender

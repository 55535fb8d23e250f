#pragma once

#include <QList>
#include <QString>

namespace quillmender::applications {

/// What is selected in a text before a session, and how.
enum class Pick {
    nothing,
    everything,
    wordForwards,
    wordBackwards,
    lineForwards,
    lineBackwards,
    /// Forwards, in a text of several lines.
    wordOfLine
};

/// A text, what the user selects in it, and the provider's answer.
struct Scenario {
    QString name;
    QString text;
    Pick pick = Pick::nothing;
    /// The selected part of the text; the whole text when everything or nothing is selected.
    QString picked;
    QString answer;

    bool hasSeveralLines() const { return text.contains(u'\n'); }
    bool hasTabs() const { return text.contains(u'\t'); }
    bool hasWindowsLineEnds() const { return text.contains(QStringLiteral("\r\n")); }
    bool isLarge() const;

    /// The text when the answer stands where the selection was.
    QString replaced() const;
};

/// Every text and every way to select, each at least once.
QList<Scenario> editingScenarios();

} // namespace quillmender::applications

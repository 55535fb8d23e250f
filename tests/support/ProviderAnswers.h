#pragma once

#include <QByteArray>
#include <QString>

namespace quillmender::test {

/// Bodies in the shape in which each interface answers with one text.
QByteArray openAIBody(const QString &text);
QByteArray anthropicBody(const QString &text);
QByteArray geminiBody(const QString &text);

/// The body of an error, the same shape for all interfaces.
QByteArray errorBody(const QString &message);

/// A JSON string, quotes included.
QByteArray jsonText(const QString &text);

} // namespace quillmender::test

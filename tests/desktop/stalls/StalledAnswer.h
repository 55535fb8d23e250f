#pragma once

#include "desktop/stalls/Stall.h"
#include "support/ScriptedAnswer.h"

namespace quillmender {

/// A provider's answer with this text, sent with the pauses of the provider's stalls: before its
/// "head", between that and the "body", or in the "middle" of the body.
test::ScriptedAnswer stalledAnswer(const QString &text, const QList<Stall> &stalls);

} // namespace quillmender

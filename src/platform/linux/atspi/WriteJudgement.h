#pragma once

#include "platform/linux/atspi/TextSplice.h"

#include <optional>

namespace quillmender::atspi {

/// What an object holds when the orders to change it are over.
struct WriteJudgement {
    enum class Standing {
        written,
        untouched, ///< as before, but for what the user may have typed meanwhile
        missing,   ///< neither the old words nor the new ones: `repaired` has the old ones again
        unknown,
    };
    Standing standing = Standing::unknown;
    QString repaired{};

    friend bool operator==(const WriteJudgement &, const WriteJudgement &) = default;
};

/// Judges what is shown after the one change of `old`. The user may have typed meanwhile, anywhere:
/// nothing of that is missing in what `repaired` holds.
WriteJudgement judgeWrite(const QString &old, const TextSplice &splice, const QString &shown);

} // namespace quillmender::atspi

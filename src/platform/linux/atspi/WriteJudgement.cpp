#include "platform/linux/atspi/WriteJudgement.h"

#include "platform/linux/atspi/EditedText.h"

namespace quillmender::atspi {

namespace {

using Standing = WriteJudgement::Standing;

/// Without what fields change of a text on their own: the form of its line ends, and letters where
/// they take one case only.
QString canonical(QString text) {
    return text.remove(u'\r').toLower();
}

bool holds(const QString &text, const QString &part) {
    return !part.isEmpty() && canonical(text).contains(canonical(part));
}

/// What stands between the text before and the text after the change.
WriteJudgement judgeMiddle(const QString &old, const TextSplice &splice, const QString &before,
                           const QString &middle, const QString &after) {
    // Nothing, half of ours or ours in other letters, or ours beside what should have gone: none of
    // it is the user's.
    const bool isOurs = middle.isEmpty() || middle == splice.inserted + splice.removed ||
                        holds(splice.inserted, middle);
    if (isOurs)
        return {Standing::missing, old};
    const bool hasNew = holds(middle, splice.inserted);
    const bool hasOld = holds(middle, splice.removed);
    if (hasNew && hasOld)
        return {Standing::unknown};
    if (hasNew || splice.inserted.isEmpty())
        return {hasOld ? Standing::untouched : Standing::written};
    if (hasOld)
        return {Standing::untouched};
    return {Standing::missing, before + splice.removed + middle + after};
}

} // namespace

WriteJudgement judgeWrite(const QString &old, const TextSplice &splice, const QString &shown) {
    if (shown == old)
        return {Standing::untouched};
    QString wanted = old;
    wanted.replace(splice.start, splice.removed.size(), splice.inserted);
    if (shown == wanted)
        return {Standing::written};

    const QString before = old.left(splice.start);
    const QString after = old.mid(splice.start + splice.removed.size());
    const bool surroundingsStand = shown.size() >= before.size() + after.size() &&
                                   shown.startsWith(before) && shown.endsWith(after);
    if (surroundingsStand) {
        const qsizetype length = shown.size() - before.size() - after.size();
        return judgeMiddle(old, splice, before, shown.mid(before.size(), length), after);
    }
    // Somebody changed the text elsewhere at the same time. If our words are there, they are
    // written.
    const bool isThere =
        !splice.inserted.isEmpty() &&
        rangeAfterEdit(wanted, shown, {splice.start, splice.inserted.size()}).has_value();
    return {isThere ? Standing::written : Standing::unknown};
}

} // namespace quillmender::atspi

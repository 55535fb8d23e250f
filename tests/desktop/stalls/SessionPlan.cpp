#include "desktop/stalls/SessionPlan.h"

#include "desktop/harness/HarnessError.h"

#include <QStringList>

#include <array>

namespace quillmender {

namespace {

const QStringList applications{QStringLiteral("onBus"), QStringLiteral("offBus"),
                               QStringLiteral("mousepad"), QStringLiteral("plainEdit"),
                               QStringLiteral("lineEdit")};
const QStringList clipboards{QStringLiteral("isKept"), QStringLiteral("isText"),
                             QStringLiteral("isRich"), QStringLiteral("isLarge")};
const QString field = QStringLiteral("field");
const QString elsewhere = QStringLiteral("elsewhere");
const QString fresh = QStringLiteral("fresh");

/// The position in the list, which the value has to be in.
int indexIn(const QStringList &names, const QString &name) {
    const qsizetype index = names.indexOf(name);
    if (index < 0)
        throw harness::HarnessError(QStringLiteral("no plan has \"%1\"").arg(name));
    return int(index);
}

bool SessionPlan::*flag(const QString &word) {
    const QList<bool SessionPlan::*> flags{
        &SessionPlan::isWordOnly, &SessionPlan::focusGoesElsewhere, &SessionPlan::isProgramFresh};
    return flags[indexIn({field, elsewhere, fresh}, word)];
}

} // namespace

QString SessionPlan::toString() const {
    QStringList words{applications[int(application)], clipboards[int(clipboard)]};
    if (!isWordOnly)
        words.append(field);
    if (focusGoesElsewhere)
        words.append(elsewhere);
    if (isProgramFresh)
        words.append(fresh);
    return (words + toStrings(stalls)).join(u' ');
}

SessionPlan SessionPlan::fromString(const QString &text) {
    SessionPlan plan;
    QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    words.resize(std::max<qsizetype>(words.size(), 2));
    plan.application = Application(indexIn(applications, words.takeFirst()));
    plan.clipboard = Clipboard(indexIn(clipboards, words.takeFirst()));
    for (const QString &word : words) {
        const auto stall = Stall::fromString(word);
        if (stall)
            plan.stalls.append(*stall);
        else
            plan.*flag(word) = word != field;
    }
    return plan;
}

} // namespace quillmender

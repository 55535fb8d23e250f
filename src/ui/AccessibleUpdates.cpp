#include "ui/AccessibleUpdates.h"

#include "ui/AccessibleSecrets.h"

#include <QList>

#include <algorithm>

namespace quillmender {

namespace {

QList<AccessibleUpdateFilter *> &filters() {
    static QList<AccessibleUpdateFilter *> filters;
    return filters;
}

void supervise(QAccessibleEvent *event);

void announce(QAccessibleEvent *event) {
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(supervise);
}

void supervise(QAccessibleEvent *event) {
    const auto holdsBack = [event](AccessibleUpdateFilter *filter) {
        return filter->holdsBack(*event);
    };
    if (!std::any_of(filters().begin(), filters().end(), holdsBack))
        announceWithoutSecrets(event, announce);
}

} // namespace

void superviseAccessibleUpdates() {
    QAccessible::installUpdateHandler(supervise);
}

AccessibleUpdateFilter::AccessibleUpdateFilter() {
    superviseAccessibleUpdates();
    filters().append(this);
}

AccessibleUpdateFilter::~AccessibleUpdateFilter() {
    filters().removeOne(this);
}

} // namespace quillmender

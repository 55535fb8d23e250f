#include "app/LogFilter.h"

#include <QLoggingCategory>

namespace quillmender {

namespace {

QLoggingCategory::CategoryFilter rulesFilter = nullptr;

void filter(QLoggingCategory *category) {
    rulesFilter(category);
    if (QLatin1String(category->categoryName()).startsWith(QLatin1String("quillmender.")))
        return;
    category->setEnabled(QtDebugMsg, false);
    category->setEnabled(QtInfoMsg, false);
}

} // namespace

void keepTextsOutOfTheLog() {
    // Installing a filter applies it at once, so the one that it stands before is taken first.
    rulesFilter = QLoggingCategory::installFilter(nullptr);
    QLoggingCategory::installFilter(filter);
}

} // namespace quillmender

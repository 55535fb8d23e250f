#include "applications/ReaderField.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

namespace quillmender::applications {

QList<Scenario> ReaderField::scenarios() const {
    const QString text = QStringLiteral("You recieve it tomorrow.");
    return {{QStringLiteral("read only, everything"), text, Pick::everything, text,
             QStringLiteral("You receive it tomorrow.")}};
}

void ReaderField::prepare(const Scenario &scenario) {
    using namespace std::chrono_literals;
    const auto isSelected = [&] {
        return normalised(read(scenario.text).value_or(QString())) == scenario.text;
    };
    if (!harness::becomesTrue(isSelected, 60s))
        throw harness::HarnessError(QStringLiteral("the document is not shown"));
}

} // namespace quillmender::applications

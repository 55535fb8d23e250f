#include "applications/SecretField.h"

namespace quillmender::applications {

QList<Scenario> SecretField::scenarios() const {
    const QString secret = QStringLiteral("Open sesame");
    const QString answer = QStringLiteral("never to be asked for");
    return {
        {QStringLiteral("a password, selected"), secret, Pick::everything, secret, answer},
        {QStringLiteral("a password, nothing selected"), secret, Pick::nothing, secret, answer}};
}

void SecretField::prepare(const Scenario &scenario) {
    selectAll();
    desktop_.input().type(scenario.text);
    if (scenario.pick == Pick::everything)
        selectAll();
}

void SecretField::selectAll() {
    for (const Keys::Chord &chord : application_.keys.selectAll)
        desktop_.input().chord(chord);
}

} // namespace quillmender::applications

#include "desktop/stalls/Stall.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>
#include <utility>

namespace quillmender {

namespace {

using Partner = Stall::Partner;
using How = Stall::How;

constexpr std::array partners{
    std::pair{Partner::editor, "editor"},       std::pair{Partner::windowManager, "windowManager"},
    std::pair{Partner::clipboard, "clipboard"}, std::pair{Partner::keyring, "keyring"},
    std::pair{Partner::provider, "provider"},
};

constexpr std::array ways{
    std::pair{How::hangs, "hangs"},
    std::pair{How::hangsAfterwards, "hangsAfterwards"},
    std::pair{How::answersLate, "answersLate"},
    std::pair{How::actsLate, "actsLate"},
    std::pair{How::answersTwice, "answersTwice"},
    std::pair{How::talksNonsense, "talksNonsense"},
    std::pair{How::keepsSilent, "keepsSilent"},
    std::pair{How::lies, "lies"},
    std::pair{How::fails, "fails"},
    std::pair{How::isStopped, "isStopped"},
    std::pair{How::isLate, "isLate"},
};

QString nameIn(const auto &table, auto value) {
    const auto found = std::ranges::find(table, value, [](const auto &each) { return each.first; });
    return QString::fromLatin1(found->second);
}

auto valueIn(const auto &table, const QString &name) {
    using Value = std::remove_cvref_t<decltype(table.front().first)>;
    for (const auto &[value, known] : table) {
        if (name == QLatin1String(known))
            return std::optional<Value>(value);
    }
    return std::optional<Value>();
}

} // namespace

QString Stall::toString() const {
    return QStringLiteral("%1@%2=%3:%4")
        .arg(nameIn(partners, partner), at, nameIn(ways, how))
        .arg(duration.count());
}

std::optional<Stall> Stall::fromString(const QString &text) {
    static const QRegularExpression shape(QStringLiteral("^(\\w+)@(.+)=(\\w+):(\\d+)$"));
    const QRegularExpressionMatch match = shape.match(text);
    const auto partner = valueIn(partners, match.captured(1));
    const auto how = valueIn(ways, match.captured(3));
    if (!match.hasMatch() || !partner || !how)
        return std::nullopt;
    return Stall{*partner, match.captured(2), *how,
                 std::chrono::milliseconds(match.captured(4).toInt())};
}

QStringList toStrings(const QList<Stall> &stalls) {
    QStringList texts;
    for (const Stall &stall : stalls)
        texts.append(stall.toString());
    return texts;
}

} // namespace quillmender

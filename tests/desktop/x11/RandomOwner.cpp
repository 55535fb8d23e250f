#include "desktop/x11/RandomOwner.h"

#include <QTimer>

#include <algorithm>

namespace quillmender::x11 {

namespace {

const QList<QByteArray> realNames{"UTF8_STRING",
                                  "STRING",
                                  "TEXT",
                                  "COMPOUND_TEXT",
                                  "text/plain",
                                  "text/plain;charset=utf-8",
                                  "text/html",
                                  "text/rtf",
                                  "image/png",
                                  "image/bmp",
                                  "image/x-MS-bmp",
                                  "text/uri-list",
                                  "x-special/gnome-copied-files",
                                  "x-kde-passwordManagerHint",
                                  "application/x-openoffice-embed-source-xml",
                                  "CUT_BUFFER0"};
const QList<QByteArray> realTypes{"UTF8_STRING", "STRING",    "ATOM",    "INTEGER",
                                  "PIXMAP",      "text/html", "C_STRING"};

} // namespace

RandomOwner::RandomOwner(const QByteArray &display, Random &random, Character character)
    : random_(random),
      character_(character),
      owner_(std::make_unique<ScriptedOwner>(display)) {
    const bool isMany = number(0, 4) == 0;
    const int targets = number(0, isMany ? 100 : 12);
    const int fatal = character == Character::dying ? number(0, targets) : -1;
    for (int i = 0; i < targets; ++i) {
        if (i == fatal)
            owner_->offerSpecially(makeName(i).constData(),
                                   [this](const auto &) { owner_->die(); });
        else if ((character == Character::sparing || character == Character::lying) &&
                 number(0, 3) == 0)
            addBadTarget(i);
        else
            offer({makeName(i), makeProperty()});
    }
}

int RandomOwner::number(int least, int most) {
    return std::uniform_int_distribution(least, most)(random_);
}

QByteArray RandomOwner::makeName(int index) {
    if (index < realNames.size() && number(0, 1) == 0)
        return realNames[index];
    return "application/x-made-up-" + QByteArray::number(index) + ";version=\"\xe9\"";
}

X11Property RandomOwner::makeProperty() {
    const int format = 8 << number(0, 2);
    const int sort = number(0, 19);
    const int most = sort < 4 ? 0 : sort < 14 ? 2'000 : sort < 19 ? 100'000 : 2'000'000;
    const qsizetype units = number(most / 2, most) / (format / 8);
    X11Property property{owner_->atom(realTypes[number(0, int(realTypes.size()) - 1)].constData()),
                         static_cast<quint8>(format), QByteArray(units * (format / 8), char(0))};
    std::ranges::generate(property.value, [this] { return static_cast<char>(random_()); });
    return property;
}

void RandomOwner::offer(const Offer &offer) {
    offers_.append(offer);
    const char *const target = offer.target.constData();
    const qsizetype length = offer.property.value.size();
    const bool fits = length < 1'000'000;
    switch (fits ? number(0, 5) : 0) {
    case 0: {
        // A whole number of units of every format.
        const qsizetype chunk = std::max<qsizetype>(length / number(1, 20), 1000) & ~qsizetype{3};
        owner_->offerIncrementally(target, offer.property, chunk);
        break;
    }
    case 1: {
        const std::chrono::milliseconds after(number(0, 100));
        owner_->offerSpecially(target, [this, offer, after](const auto &asked) {
            QTimer::singleShot(after, owner_.get(), [this, offer, request = asked] {
                if (!owner_->isDead())
                    owner_->answer(request, offer.property);
            });
        });
        break;
    }
    default:
        owner_->offer(target, offer.property);
    }
}

void RandomOwner::addBadTarget(int index) {
    const QByteArray name = makeName(index);
    const int sort = character_ == Character::sparing ? number(0, 1) : number(2, 4);
    owner_->offerSpecially(name.constData(), [this, sort](const auto &request) {
        switch (sort) {
        case 0: // Never says anything.
            break;
        case 1:
            owner_->notify(request, XCB_ATOM_NONE);
            break;
        case 2: // Says that it has and has not.
            owner_->notify(request, request.property);
            break;
        case 3: // In a property that nobody asked for.
            owner_->notify(request, owner_->atom("WM_NAME"));
            break;
        default: // Begins and never goes on.
            writeCardinals(owner_->connection(), request.requestor, request.property,
                           owner_->atom("INCR"), {10'000});
            owner_->notify(request, request.property);
        }
    });
}

} // namespace quillmender::x11

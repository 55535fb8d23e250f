#include "desktop/x11/RandomOwner.h"
#include "desktop/x11/TestRequestor.h"
#include "desktop/x11/X11Test.h"

#include <QElapsedTimer>

#include <iostream>

namespace quillmender::x11 {

namespace {

using Character = RandomOwner::Character;

/// Owners of every sort, one after another; a seed that fails can be given again as
/// QUILLMENDER_SEED.
class RandomOwnerTest : public X11Test, public testing::WithParamInterface<Character> {
  protected:
    RandomOwnerTest() : seed_(chosenSeed()), random_(seed_) {
        std::cout << "QUILLMENDER_SEED=" << seed_ << std::endl;
        lag_.start(20);
        QObject::connect(&lag_, &QTimer::timeout, &lag_,
                         [this] { longestLag_ = std::max(longestLag_, sinceTick_.restart()); });
        sinceTick_.start();
    }

    /// What a program that puts back what it read leaves to others.
    void expectKept(const RandomOwner &owner) {
        longestLag_ = 0;
        const auto items = wait(pasteboard().items());
        // A machine that stands still for so long lets deadlines pass without anybody's fault.
        const bool isJudged = longestLag_ < 300;
        const auto &offers = owner.offers();
        if (offers.isEmpty()) {
            EXPECT_TRUE(items.isEmpty());
            return;
        }
        pasteboard().replaceContents({});
        // Somebody else has it meanwhile, as after a copy; nothing of that may be left.
        ScriptedOwner other(server_.display());
        other.offer("UTF8_STRING", {other.atom("UTF8_STRING"), 8, "somebody else's"});
        finishTurn();
        pasteboard().replaceContents(items);
        finishTurn();
        expectOffered(offers, isJudged);
    }

    void expectOffered(const QList<RandomOwner::Offer> &offers, bool isJudged) {
        TestRequestor reader(*peer_);
        QList<QByteArray> names{"TARGETS", "TIMESTAMP", "MULTIPLE"};
        for (const auto &offer : offers)
            names.append(offer.target);
        const QList<QByteArray> listed = reader.fetchTargets();
        if (GetParam() == Character::honest && isJudged) {
            EXPECT_TRUE(listed == names);
        }
        for (const QByteArray &name : listed)
            EXPECT_TRUE(names.contains(name)) << name.toStdString() << " was made up";
        for (const auto &offer : offers) {
            const bool mustBeThere = isJudged && GetParam() != Character::dying;
            if (!mustBeThere && !listed.contains(offer.target))
                continue;
            const auto kept = reader.fetch(offer.target.constData());
            ASSERT_TRUE(kept.has_value()) << offer.target.toStdString();
            EXPECT_TRUE(*kept == offer.property)
                << offer.target.toStdString() << ", " << offer.property.value.size() << " bytes";
        }
    }

    RandomOwner::Random &random() { return random_; }

  private:
    static unsigned chosenSeed() {
        const QByteArray given = qgetenv("QUILLMENDER_SEED");
        return given.isEmpty() ? std::random_device()() : given.toUInt();
    }

    unsigned seed_;
    RandomOwner::Random random_;
    QTimer lag_;
    QElapsedTimer sinceTick_;
    qint64 longestLag_ = 0;
};

TEST_P(RandomOwnerTest, IsReadAndPutBackByteForByte) {
    // Silence costs half a second each time.
    const bool isQuick = GetParam() == Character::honest || GetParam() == Character::dying;
    const int owners = isQuick ? 40 : 6;
    for (int i = 0; i < owners && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        const RandomOwner owner(server_.display(), random(), GetParam());
        expectKept(owner);
    }
}

TEST_P(RandomOwnerTest, TakingOverDuringTheReadIsReadInstead) {
    const int owners = GetParam() == Character::honest ? 20 : 3;
    for (int i = 0; i < owners && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        RandomOwner first(server_.display(), random(), Character::honest);
        std::unique_ptr<RandomOwner> second;
        first.owner().offerSpecially("x-test/last", [&](const auto &) {
            second = std::make_unique<RandomOwner>(server_.display(), random(), GetParam());
        });
        const auto items = wait(pasteboard().items());
        ASSERT_NE(second, nullptr);
        QList<QByteArray> names;
        for (const auto &offer : second->offers())
            names.append(offer.target);
        for (const PasteboardItem &item : items) {
            for (const auto &each : item.representations())
                EXPECT_TRUE(names.contains(each.type.toLatin1())) << each.type.toStdString();
        }
        expectKept(*second);
    }
}

std::string nameOf(const testing::TestParamInfo<Character> &chosen) {
    switch (chosen.param) {
    case Character::honest:
        return "Honest";
    case Character::sparing:
        return "Sparing";
    case Character::lying:
        return "Lying";
    case Character::dying:
        break;
    }
    return "Dying";
}

INSTANTIATE_TEST_SUITE_P(Owners, RandomOwnerTest,
                         testing::Values(Character::honest, Character::sparing, Character::lying,
                                         Character::dying),
                         nameOf);

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}

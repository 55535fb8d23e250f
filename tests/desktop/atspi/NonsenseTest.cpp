#include "desktop/atspi/ScriptedField.h"
#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/Waiter.h"
#include "platform/linux/atspi/BusApplications.h"
#include "platform/linux/atspi/TextFlow.h"
#include "platform/linux/atspi/TextReader.h"
#include "platform/linux/atspi/TreeWalk.h"

#include <QCoroTask>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusSignature>

namespace quillmender::atspi {
namespace {

using harness::waitUntil;

/// Values that an application may answer with where another type belongs.
QVariantList wrongTypes() {
    const ObjectRef object{QStringLiteral(":1.1"), QStringLiteral("/field")};
    QVariantList types{
        QVariant::fromValue(object),
        QVariant::fromValue(QList<ObjectRef>{object, object}),
        QVariant::fromValue(QList<QList<int>>{{1, 2}, {3}}),
        QVariant::fromValue(QList<qulonglong>{1, 2, 3}),
        QVariant::fromValue(QList<uint>{1, 2, 3}),
        QVariant::fromValue(QList<double>{0.5}),
        QVariant::fromValue(QMap<QString, QString>{{QStringLiteral("a"), QStringLiteral("b")}}),
        QVariant::fromValue(QVariantMap{{QStringLiteral("a"), 1}}),
        QVariant::fromValue(MatchRule()),
        QVariant::fromValue(QDBusObjectPath("/field")),
        QVariant::fromValue(QDBusSignature("a(so)")),
        QStringList{QStringLiteral("a"), QStringLiteral("b")},
        QByteArray("bytes"),
        QStringLiteral("text"),
        QString(),
        true,
        -1,
        0,
        2147483647,
        -2147483648LL,
        qulonglong(-1),
        0.5,
    };
    QVariantList wrapped;
    for (const QVariant &type : std::as_const(types))
        wrapped.append(QVariant::fromValue(QDBusVariant(type)));
    return types + wrapped;
}

/// An application that answers everything with values of whatever type.
class NonsenseTest : public harness::DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        harness::Desktop::Options options;
        options.windowManager = false;
        options.keyring = false;
        startDesktop(options);
        qDBusRegisterMetaType<QList<ObjectRef>>();
        qDBusRegisterMetaType<QList<QList<int>>>();
        qDBusRegisterMetaType<QList<double>>();
        qDBusRegisterMetaType<QList<qulonglong>>();
        field = std::make_unique<ScriptedField>(desktop().accessibilityBus()->address(),
                                                QStringLiteral("text"));
        bus = std::make_unique<AtspiBus>(desktop().sessionBus().connection());
        waitUntil([this] { return bus->isConnected(); }, QStringLiteral("the bus is there"));
    }

    ObjectRef object() const { return {field->service(), ScriptedField::path()}; }
    static CallBudgetRef budget() { return std::make_shared<CallBudget>(); }

    std::unique_ptr<ScriptedField> field;
    std::unique_ptr<AtspiBus> bus;
};

TEST_F(NonsenseTest, WrongTypesAreNoAnswers) {
    BusApplications applications(*bus);
    TextReader reader(*bus);
    TextFlow flow(*bus);
    ElementTraits traits;
    traits.object = object();
    for (const QVariant &wrong : wrongTypes()) {
        SCOPED_TRACE(wrong.typeName());
        field->nonsense = wrong;
        const auto element =
            std::make_shared<const TextElement>(traits, Toolkit::libreOffice, budget());
        const CallBudget::Use use(element->budget);
        EXPECT_EQ(QCoro::waitFor(examine(*bus, {object()}, budget())).size(), 1);
        QCoro::waitFor(childrenOf(*bus, object(), budget()));
        QCoro::waitFor(findFocusedBelow(*bus, {object()}, budget()));
        QCoro::waitFor(matchFocused(*bus, field->service(), budget()));
        QCoro::waitFor(flow.selectionGoesOn(object(), budget()));
        QCoro::waitFor(reader.selectedText(element));
        QCoro::waitFor(reader.value(element));
        QCoro::waitFor(reader.selectedRange(element));
        QCoro::waitFor(applications.toolkitOf(field->service(), budget()));
        QCoro::waitFor(applications.wake(object(), budget()));
        applications.clear();
    }
}

TEST_F(NonsenseTest, ObjectsOfTheRightTypeAreUnderstood) {
    const ObjectRef child{QStringLiteral(":1.7"), QStringLiteral("/child")};
    field->nonsense = QVariant::fromValue(QList<ObjectRef>{child, object()});
    EXPECT_EQ(QCoro::waitFor(childrenOf(*bus, object(), budget())),
              (QList<ObjectRef>{child, object()}));
    field->nonsense = QVariant::fromValue(QList<uint>{1U << 12, 0});
    EXPECT_TRUE(QCoro::waitFor(examine(*bus, {object()}, budget())).constFirst().isFocused());
}

} // namespace
} // namespace quillmender::atspi

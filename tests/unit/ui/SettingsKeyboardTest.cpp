#include "AccessibleTree.h"
#include "SettingsWindowFixture.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QScrollArea>

namespace quillmender {

namespace {

class SettingsKeyboardTest : public SettingsWindowFixture {
  protected:
    static QString name(QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    }
};

} // namespace

TEST_F(SettingsKeyboardTest, TabWalksFromTopToBottom) {
    store().hideBuiltInAction(TextAction::casual);
    for (int i = 2; i < 6; ++i)
        store().hideBuiltInAction(allTextActions.at(size_t(i)));
    show();
    QStringList walked;
    const QWidget *start = QApplication::focusWidget();
    EXPECT_FALSE(qobject_cast<const QLineEdit *>(start)) << "nothing is typed in by accident";
    for (QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
         walked.size() < 100 && name(QApplication::focusWidget()) != QLatin1String("Close");
         QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab))
        walked.append(name(QApplication::focusWidget()));
    EXPECT_EQ(walked.join(u'|').toStdString(),
              "OpenAI|Launch Quillmender when I log in|Open Login Items Settings|"
              "OpenAI API Key|OpenAI Model|OpenAI Endpoint|"
              "Anthropic API Key|Claude Model|Anthropic Endpoint|"
              "Gemini API Key|Gemini Model|Gemini Base URL|"
              "Refresh|Request Access|Open Privacy Settings|"
              "Edit|Remove|Edit|Remove|Edit|Remove|New Action|Restore Starter Actions");
}

TEST_F(SettingsKeyboardTest, TabReachesActionsThatCameLater) {
    show();
    store().addCustomAction(QStringLiteral("Mine"), QStringLiteral("x"));
    settle();
    rows().at(6)->removeButton()->setFocus();
    for (QWidget *expected : {static_cast<QWidget *>(rows().at(7)->editButton()),
                              static_cast<QWidget *>(rows().at(7)->removeButton()),
                              static_cast<QWidget *>(button("New Action"))}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), expected);
    }
}

TEST_F(SettingsKeyboardTest, TheFieldWithTheFocusIsInView) {
    show();
    auto *area = window()->findChild<QScrollArea *>();
    for (int i = 0; i < 12; ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QWidget *focus = QApplication::focusWidget();
    EXPECT_TRUE(area->viewport()->rect().contains(
        QRect(focus->mapTo(area->viewport(), QPoint()), focus->size())))
        << name(focus).toStdString();
}

TEST_F(SettingsKeyboardTest, TheProgramsOwnFocusIsInViewToo) {
    show();
    auto *area = window()->findChild<QScrollArea *>();
    const auto isInView = [&](const QWidget *control) {
        return area->viewport()->rect().contains(
            QRect(control->mapTo(area->viewport(), QPoint()), control->size()));
    };
    for (QWidget *control : {static_cast<QWidget *>(button("New Action")),
                             static_cast<QWidget *>(window()->findChild<QComboBox *>()),
                             static_cast<QWidget *>(field("Gemini Model"))}) {
        EXPECT_FALSE(isInView(control) && control != window()->findChild<QComboBox *>());
        control->setFocus();
        EXPECT_TRUE(isInView(control)) << name(control).toStdString();
    }
}

TEST_F(SettingsKeyboardTest, NoAccessibleReachesBeyondItsChildren) {
    show();
    EXPECT_GT(expectBoundedTree(QAccessible::queryAccessibleInterface(window())), 80);
    button("New Action")->click();
    settle();
    EXPECT_GT(expectBoundedTree(QAccessible::queryAccessibleInterface(sheet())), 8);
    window()->findChild<QComboBox *>()->showPopup();
    EXPECT_GT(expectBoundedTree(QAccessible::queryAccessibleInterface(window())), 80);
    window()->close();
    EXPECT_GT(expectBoundedTree(QAccessible::queryAccessibleInterface(window())), 80);
    expectBoundedTree(QAccessible::queryAccessibleInterface(qApp));
}

TEST_F(SettingsKeyboardTest, EveryControlHasANameAndARole) {
    show();
    const auto isLabelled = [](QWidget *widget, const QString &label) {
        const auto labels =
            QAccessible::queryAccessibleInterface(widget)->relations(QAccessible::Label);
        return std::ranges::any_of(labels, [&](const auto &relation) {
            return relation.first->text(QAccessible::Name) == label;
        });
    };
    for (TextField *each : window()->findChildren<TextField *>()) {
        EXPECT_EQ(QAccessible::queryAccessibleInterface(each)->role(), QAccessible::EditableText);
        EXPECT_FALSE(name(each).isEmpty());
        EXPECT_TRUE(isLabelled(each, name(each))) << name(each).toStdString();
    }
    auto *provider = window()->findChild<QComboBox *>();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(provider)->role(), QAccessible::ComboBox);
    EXPECT_TRUE(isLabelled(provider, QStringLiteral("Active Provider")));
    QAccessibleInterface *launch =
        QAccessible::queryAccessibleInterface(window()->findChild<QCheckBox *>());
    EXPECT_EQ(launch->role(), QAccessible::CheckBox);
    EXPECT_EQ(launch->text(QAccessible::Name).toStdString(), "Launch Quillmender when I log in");
}

} // namespace quillmender

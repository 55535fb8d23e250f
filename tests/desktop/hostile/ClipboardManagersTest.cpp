#include "desktop/hostile/HostileFixture.h"

#include <QDirIterator>
#include <QFile>

namespace quillmender {
namespace {

using harness::ChildProcess;
using harness::ClipboardOwner;
using harness::waitUntil;

struct Manager {
    const char *program;
    /// What the session bus starts for it.
    const char *service;
};

void PrintTo(const Manager &manager, std::ostream *stream) {
    *stream << manager.program;
}

const QString answer = QStringLiteral("receive, answered by the provider");

/// Programs that keep a history of everything that was on the clipboard.
class ClipboardManagersTest : public HostileFixture,
                              public testing::WithParamInterface<Manager> {
  protected:
    void start() {
        harness::Desktop::Options options;
        const QString service = QString::fromLatin1(GetParam().service);
        if (!service.isEmpty())
            options.services = {service};
        HostileFixture::start(options);
        manager_.emplace(desktop().command(QString::fromLatin1(GetParam().program)));
        waitUntil([&] { return records(); }, QStringLiteral("the manager records the clipboard"));
    }

    /// Everything that it has recorded, as it writes it down.
    QByteArray endAndReadHistory() {
        manager_->end();
        QByteArray history;
        const QString home = desktop().folders().home();
        for (QDirIterator each(home, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
             each.hasNext();) {
            QFile file(each.next());
            if (!file.fileName().endsWith(QStringLiteral(".txt")) && file.open(QIODevice::ReadOnly))
                history += file.readAll();
        }
        return history;
    }

    void TearDown() override {
        HostileFixture::TearDown();
        manager_.reset();
        copied_.reset();
    }

  private:
    /// Copies what was on the clipboard again, which it reads once it has come up.
    bool records() {
        copied_.reset();
        copied_.emplace(desktop().display(), ClipboardOwner::textHtmlAndImage());
        return harness::becomesTrue([&] { return copied_->requests().contains("UTF8_STRING"); },
                                    std::chrono::seconds(1));
    }

    std::optional<ChildProcess> manager_;
    std::optional<ClipboardOwner> copied_;
};

TEST_P(ClipboardManagersTest, KeepsTheUsersEntryAndNotTheAnswer) {
    start();
    openLetter(Route::clipboard);
    answerWith(answer);
    pressHotKey();
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    waitUntilPanelIsGone();
    expectClipboardUntouched();

    // What is copied next is in the history when everything before it has been seen.
    const QString next = QStringLiteral("copied afterwards");
    const ClipboardOwner owner(desktop().display(), ClipboardOwner::plainText(next));
    waitUntil([&] { return owner.requests().contains("UTF8_STRING"); },
              QStringLiteral("the manager has seen the next copy"));
    waitUntil([&] { return endAndReadHistory().contains(next.toUtf8()); },
              QStringLiteral("the manager has written its history"));
    const QByteArray history = endAndReadHistory();
    EXPECT_TRUE(history.contains("What the user had copied"));
    EXPECT_FALSE(history.contains(answer.toUtf8()));
}

INSTANTIATE_TEST_SUITE_P(
    Managers, ClipboardManagersTest,
    testing::Values(Manager{"copyq", ""}, Manager{"parcellite", ""},
                    Manager{"xfce4-clipman",
                            "/usr/share/dbus-1/services/org.xfce.Xfconf.service"}),
    [](const auto &chosen) {
        QByteArray name = chosen.param.program;
        return name.replace('-', '_').toStdString();
    });

} // namespace
} // namespace quillmender

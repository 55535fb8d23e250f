// The panel on a Wayland compositor, with all that the product has of windows and nothing else.
#include "desktop/wayland/panel/CommandReader.h"
#include "fakes/FakeAppearance.h"
#include "platform/ApplicationId.h"
#include "platform/linux/services/DrawnSymbols.h"
#include "platform/linux/wayland/Toplevels.h"
#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/own/WaylandOwnWindows.h"
#include "ui/ActionPanel.h"
#include "ui/ActionPanelController.h"
#include "ui/HostedWindow.h"
#include "ui/TextLabel.h"
#include "unit/ui/FakePickerModel.h"

#include <QApplication>
#include <QJsonArray>
#include <QLineEdit>
#include <QProcess>
#include <QScreen>
#include <QWindow>

#include <cstdio>

using namespace quillmender;

namespace {

/// Tells that the user works on whichever output the test says.
class ToldToplevels : public wayland::Toplevels {
  public:
    std::optional<wayland::Toplevel> active() const override { return active_; }
    bool hasKeyboard(const QByteArray &) const override { return false; }
    bool activate(const QByteArray &) override { return false; }

    void workOn(const QString &output) {
        active_.emplace();
        active_->output = output;
    }

  private:
    std::optional<wayland::Toplevel> active_;
};

/// Whether the panel has said how it gets the keyboard. Until then it may have it for a moment.
bool isKeyboardDecided = false;
/// How often some window has waited for it in vain.
int timesWithheld = 0;

void noteDecision(QtMsgType, const QMessageLogContext &, const QString &message) {
    isKeyboardDecided =
        isKeyboardDecided || message.startsWith(QStringLiteral("the panel has the keyboard"));
    if (message.startsWith(QStringLiteral("the compositor gives the keyboard to another")))
        ++timesWithheld;
    std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}

class Desk {
  public:
    Desk() {
        // What the panel shows while it works on is the model's to say.
        model_.change([](FakePickerModel::State &state) {
            state.preview = QStringLiteral("their is three thing we need too discuss");
        });
    }

    void perform(const QString &command) {
        const QString name = command.section(u' ', 0, 0);
        if (name == QStringLiteral("show"))
            show();
        else if (name == QStringLiteral("hide"))
            controller_.orderOut();
        else if (name == QStringLiteral("aside"))
            aside_ = controller_.stepAside();
        else if (name == QStringLiteral("return"))
            aside_.reset();
        else if (name == QStringLiteral("settings"))
            settings_.makeKeyAndOrderFront();
        else if (name == QStringLiteral("close"))
            settings_.close();
        else if (name == QStringLiteral("output"))
            toplevels_.workOn(command.section(u' ', 1));
    }

    QJsonObject state() {
        const ActionPanel &panel = *controller_.panel();
        QJsonArray down;
        for (const quint32 code : windows_.keysDownAtFocus(panel.windowHandle()))
            down.append(qint64(code));
        QJsonArray texts;
        for (const TextLabel *label : panel.findChildren<TextLabel *>())
            texts.append(label->text());
        return {
            {QStringLiteral("texts"), texts},
            {QStringLiteral("timesWithheld"), timesWithheld},
            {QStringLiteral("backend"), windows_.panelBackend()},
            {QStringLiteral("isVisible"), controller_.isVisible()},
            {QStringLiteral("isShown"), panel.windowHandle() && panel.windowHandle()->isExposed()},
            {QStringLiteral("isActive"), panel.isActiveWindow()},
            {QStringLiteral("isDecided"), isKeyboardDecided},
            {QStringLiteral("isAside"), aside_ != nullptr},
            {QStringLiteral("output"), panel.screen()->name()},
            {QStringLiteral("text"), model_.customInstruction()},
            {QStringLiteral("calls"), QJsonArray::fromStringList(model_.calls)},
            {QStringLiteral("downAtFocus"), down},
            {QStringLiteral("settings"), settingsText_->text()},
            {QStringLiteral("settingsAreActive"), settings_.isActiveWindow()},
        };
    }

  private:
    void show() {
        controller_.centre(std::nullopt);
        controller_.makeKeyAndOrderFront();
    }

    wayland::CompositorHelp help() {
        wayland::CompositorHelp help;
        help.toplevels = &toplevels_;
        if (qEnvironmentVariableIsSet("SWAYSOCK"))
            help.swayCommand = [](const QString &command) {
                QProcess::execute(QStringLiteral("swaymsg"),
                                  {QStringLiteral("-q"), QStringLiteral("--"), command});
            };
        return help;
    }

    std::unique_ptr<wayland::WaylandConnection> connection_ = wayland::WaylandConnection::open();
    ToldToplevels toplevels_;
    wayland::WaylandOwnWindows windows_{*connection_, help()};
    FakePickerModel model_;
    fakes::FakeAppearance appearance_;
    DrawnSymbols symbols_;
    Theme theme_{appearance_, symbols_};
    ActionPanelController controller_{model_, theme_, windows_};
    QLineEdit *settingsText_ = new QLineEdit;
    HostedWindow settings_{QStringLiteral("Quillmender Settings"), QSize(500, 300), settingsText_,
                           windows_};
    std::shared_ptr<SteppedAside> aside_;
};

} // namespace

int main(int argc, char *argv[]) {
    qInstallMessageHandler(noteDecision);
    const QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QString::fromLatin1(applicationId));
    QApplication::setQuitOnLastWindowClosed(false);
    Desk desk;
    const test::CommandReader commands([&](const QString &line) { desk.perform(line); },
                                       [&] { return desk.state(); });
    return QApplication::exec();
}

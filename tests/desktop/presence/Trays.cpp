#include "desktop/presence/Trays.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QDir>
#include <QFile>

namespace quillmender {

using harness::Command;
using harness::Desktop;

namespace {

Command trayCommand(const Desktop &desktop, WindowTray::Shade shade) {
    const QString color =
        shade == WindowTray::Shade::light ? QStringLiteral("0xf0f0f0") : QStringLiteral("0x202020");
    return desktop.command(
        QStringLiteral("trayer"),
        {QStringLiteral("--edge"), QStringLiteral("top"), QStringLiteral("--align"),
         QStringLiteral("right"), QStringLiteral("--widthtype"), QStringLiteral("pixel"),
         QStringLiteral("--width"), QStringLiteral("200"), QStringLiteral("--height"),
         QStringLiteral("28"), QStringLiteral("--transparent"), QStringLiteral("true"),
         QStringLiteral("--alpha"), QStringLiteral("0"), QStringLiteral("--tint"), color});
}

// One panel with nothing but the status area, which would otherwise hide what it does not know.
void writePanelSettings(const Desktop &desktop) {
    const QString folder =
        desktop.folders().config() + QStringLiteral("/xfce4/xfconf/xfce-perchannel-xml");
    QDir().mkpath(folder);
    QFile file(folder + QStringLiteral("/xfce4-panel.xml"));
    if (!file.open(QIODevice::WriteOnly))
        throw harness::HarnessError(QStringLiteral("cannot write %1").arg(file.fileName()));
    file.write(R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="true"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray">
      <property name="square-icons" type="bool" value="true"/>
    </property>
  </property>
</channel>
)");
}

} // namespace

WindowTray::WindowTray(Desktop &desktop, Shade shade) : process_(trayCommand(desktop, shade)) {}

BusPanel::BusPanel(Desktop &desktop) {
    writePanelSettings(desktop);
    settings_.emplace(
        desktop.command(QStringLiteral("/usr/lib/" QUILLMENDER_MULTIARCH "/xfce4/xfconf/xfconfd")));
    desktop.sessionBus().waitForOwner(QStringLiteral("org.xfce.Xfconf"));
    panel_.emplace(
        desktop.command(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")}));
    desktop.sessionBus().waitForOwner(QStringLiteral("org.kde.StatusNotifierWatcher"));
}

} // namespace quillmender

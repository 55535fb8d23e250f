#include "platform/linux/wayland/keys/CompositorLines.h"

#include "platform/linux/wayland/sway/SwayBindings.h"

#include <QXmlStreamReader>
#include <gmock/gmock.h>

namespace quillmender::wayland {

namespace {

constexpr QKeyCombination controlAltSpace(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space);
constexpr auto command = "gapplication action com.quillmender.Quillmender transform";

TEST(CompositorLinesTest, ForSwayBindTheKeys) {
    const CompositorLines made = linesForSway(controlAltSpace);
    EXPECT_EQ(made.lines, QStringLiteral("bindsym --no-repeat Ctrl+Mod1+space exec %1\n")
                              .arg(QLatin1String(command)));
    EXPECT_TRUE(sway::bindingOf(controlAltSpace, {made.lines.trimmed()}).has_value());
    EXPECT_EQ(made.file, QStringLiteral("~/.config/sway/config"));
    EXPECT_EQ(made.after, QStringLiteral("swaymsg reload"));
}

TEST(CompositorLinesTest, ForLabwcAreAnElement) {
    const CompositorLines made = linesForLabwc(
        QKeyCombination(Qt::MetaModifier | Qt::ShiftModifier | Qt::AltModifier, Qt::Key_Less));
    QXmlStreamReader reader(made.lines);
    ASSERT_TRUE(reader.readNextStartElement());
    EXPECT_EQ(reader.name(), QStringLiteral("keybind"));
    EXPECT_EQ(reader.attributes().value(QStringLiteral("key")), QStringLiteral("A-S-W-less"));
    ASSERT_TRUE(reader.readNextStartElement());
    EXPECT_EQ(reader.attributes().value(QStringLiteral("name")), QStringLiteral("Execute"));
    EXPECT_EQ(reader.attributes().value(QStringLiteral("command")), QLatin1String(command));
    EXPECT_EQ(made.file, QStringLiteral("~/.config/labwc/rc.xml"));
    EXPECT_TRUE(made.place.contains(QStringLiteral("<default/>")));
    EXPECT_EQ(made.after, QStringLiteral("labwc --reconfigure"));
    EXPECT_TRUE(linesForLabwc(controlAltSpace).lines.contains(QStringLiteral("\"C-A-space\"")));
}

TEST(CompositorLinesTest, ForOthersAreTheCommand) {
    const CompositorLines made = linesForAny(controlAltSpace);
    EXPECT_EQ(made.lines, QLatin1String(command) + QStringLiteral("\n"));
    EXPECT_EQ(made.file, QString());
    EXPECT_TRUE(made.place.contains(QStringLiteral("Ctrl+Alt+Space")));
}

} // namespace

} // namespace quillmender::wayland

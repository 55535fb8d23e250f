#include "desktop/sessions/SessionFixture.h"

#include <QStandardPaths>

#include <ostream>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::AccessibleState;
using harness::waitUntil;
using harness::XcbPointer;

struct Case {
    const char *windowManager;
    QSize screen;
    double scale;
    int panelHeight = 0; ///< of a task bar at the screen's end, in pixels
};

void PrintTo(const Case &each, std::ostream *out) {
    *out << each.windowManager << ' ' << each.screen.width() << 'x' << each.screen.height()
         << " at " << each.scale << (each.panelHeight > 0 ? " with a task bar" : "");
}

/// Every window on a screen that is lower than it wants to be.
class LowScreenTest : public SessionFixture, public testing::WithParamInterface<Case> {
  protected:
    void SetUp() override {
        SessionFixture::SetUp();
        const QString command = QString::fromLatin1(GetParam().windowManager);
        if (QStandardPaths::findExecutable(command.section(u' ', 0, 0)).isEmpty())
            GTEST_SKIP() << command.toStdString() << " is not installed";
        startDesktop({.screen = GetParam().screen,
                      .scale = GetParam().scale,
                      .windowManagerCommand = command.split(u' ')});
        if (GetParam().panelHeight > 0)
            showTaskBar(GetParam().panelHeight);
        allowLog();
        startProgram();
    }

    void showTaskBar(int height) {
        xcb_connection_t *xcb = desktop().connection().get();
        const auto width = quint16(GetParam().screen.width());
        const int top = GetParam().screen.height() - height;
        barHeight_ = height;
        bar_ = xcb_generate_id(xcb);
        xcb_create_window(xcb, XCB_COPY_FROM_PARENT, bar_, desktop().connection().root(), 0,
                          qint16(top), width, quint16(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, 0, nullptr);
        const std::array<quint32, 12> strut{0, 0, 0, quint32(height),   0, 0, 0, 0,
                                            0, 0, 0, quint32(width - 1)};
        auto &connection = desktop().connection();
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, bar_,
                            connection.atom("_NET_WM_STRUT_PARTIAL"), XCB_ATOM_CARDINAL, 32,
                            strut.size(), strut.data());
        const xcb_atom_t dock = connection.atom("_NET_WM_WINDOW_TYPE_DOCK");
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, bar_,
                            connection.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &dock);
        xcb_map_window(xcb, bar_);
        connection.roundTrip();
        waitUntil(
            [&] {
                const auto area = connection.property(connection.root(), "_NET_WORKAREA");
                return area && area->size() >= qsizetype(4 * sizeof(quint32)) &&
                       reinterpret_cast<const quint32 *>(area->constData())[3] <= quint32(top);
            },
            QStringLiteral("the task bar has its place"));
    }

    QRect free() const { return QRect(QPoint(), GetParam().screen - QSize(0, barHeight_)); }

    QList<xcb_window_t> childrenOf(xcb_window_t window) {
        xcb_connection_t *xcb = desktop().connection().get();
        const XcbPointer<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(xcb, xcb_query_tree(xcb, window), nullptr));
        QList<xcb_window_t> children;
        for (int i = 0; tree && i < tree->children_len; ++i)
            children.append(xcb_query_tree_children(tree.get())[i]);
        return children;
    }

    bool hasTitle(xcb_window_t window, const QString &title) {
        const auto name = desktop().connection().property(window, "WM_NAME");
        return (name && QString::fromUtf8(*name) == title &&
                desktop().connection().property(window, "_NET_WM_PID").has_value());
    }

    struct Found {
        xcb_window_t window = XCB_WINDOW_NONE;
        xcb_window_t frame = XCB_WINDOW_NONE; ///< child of the root
    };

    Found find(const QString &title) {
        for (const xcb_window_t top : desktop().windows().viewable()) {
            QList<xcb_window_t> inside{top};
            for (qsizetype i = 0; i < inside.size(); ++i) {
                if (hasTitle(inside[i], title) && desktop().windows().isViewable(inside[i]))
                    return {inside[i], top};
                inside.append(childrenOf(inside[i]));
            }
        }
        return {};
    }

    /// The window with the part of its frame that can be seen: what catches the mouse around it is
    /// not among the extents.
    QRect outline(const Found &found) {
        const auto extents = desktop().connection().property(found.window, "_NET_FRAME_EXTENTS");
        if (extents && extents->size() == qsizetype(4 * sizeof(quint32))) {
            const auto *side = reinterpret_cast<const int *>(extents->constData());
            return desktop()
                .windows()
                .geometry(found.window)
                .adjusted(-side[0], -side[2], side[1], side[3]);
        }
        return frameGeometry(found.frame);
    }

    QRect frameGeometry(xcb_window_t frame) {
        xcb_connection_t *xcb = desktop().connection().get();
        const XcbPointer<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, frame), nullptr));
        return geometry
                   ? QRect(geometry->x, geometry->y, geometry->width + 2 * geometry->border_width,
                           geometry->height + 2 * geometry->border_width)
                   : QRect();
    }

    void expectFits(const QString &title) {
        Found found;
        waitUntil([&] { return (found = find(title)).window != XCB_WINDOW_NONE; },
                  QStringLiteral("%1 is shown").arg(title));
        QRect seen;
        const auto fits = [&] { return free().contains(seen = outline(found)); };
        EXPECT_TRUE(harness::becomesTrue(fits))
            << title.toStdString() << " is " << seen.width() << " x " << seen.height() << " at "
            << seen.x() << ", " << seen.y();
    }

    void expectInView(const QString &caption) {
        const Accessible control = button(caption);
        waitUntil([&] { return free().contains(control.extents()); },
                  QStringLiteral("%1 can be clicked").arg(caption));
    }

  private:
    xcb_window_t bar_ = XCB_WINDOW_NONE;
    int barHeight_ = 0;
};

} // namespace

TEST_P(LowScreenTest, EveryWindowFitsItAtItsFirstShow) {
    program().activateAction(QStringLiteral("transform"));
    expectFits(QStringLiteral("Quillmender"));
    expectInView(QStringLiteral("Close"));
    button(QStringLiteral("Close")).doAction();
    program().activateAction(QStringLiteral("about"));
    expectFits(QStringLiteral("About Quillmender"));
    program().activateAction(QStringLiteral("settings"));
    expectFits(QStringLiteral("Quillmender Settings"));
    button(QStringLiteral("New Action")).doAction();
    expectFits(QStringLiteral("New Action"));
    expectInView(QStringLiteral("Cancel"));
}

TEST_P(LowScreenTest, WindowsComeBackIntoAScreenThatBecomesSmaller) {
    if (QByteArray(GetParam().windowManager) == "twm" || GetParam().panelHeight > 0)
        GTEST_SKIP() << "no place is kept for another task bar";
    program().activateAction(QStringLiteral("settings"));
    program().activateAction(QStringLiteral("transform"));
    expectFits(QStringLiteral("Quillmender Settings"));
    expectFits(QStringLiteral("Quillmender"));
    showTaskBar(GetParam().screen.height() / 3);
    expectFits(QStringLiteral("Quillmender"));
    expectInView(QStringLiteral("Close"));
    expectFits(QStringLiteral("Quillmender Settings"));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, LowScreenTest, testing::ValuesIn([] {
                             QList<Case> cases;
                             for (const char *manager :
                                  {"openbox --sm-disable", "twm", "xfwm4 --compositor=off",
                                   "metacity", "icewm"}) {
                                 for (const double scale : {1.0, 1.25, 1.5})
                                     cases.append({manager, QSize(1366, 768), scale});
                                 cases.append({manager, QSize(1920, 1080), 1.75});
                             }
                             cases.append({"openbox --sm-disable", QSize(1366, 768), 1.5, 48});
                             cases.append({"xfwm4 --compositor=off", QSize(1366, 768), 1.5, 48});
                             return cases;
                         }()));

} // namespace quillmender

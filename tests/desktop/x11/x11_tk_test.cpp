#include "desktop/x11/X11Test.h"
#include "platform/linux/MaskedText.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/windows/TkWindows.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace quillmender::x11 {
namespace {

class TkTest : public X11Test {
  protected:
    void registerPrograms(const QByteArray &list) {
        writeProperty(*peer_, peer_->root(), peer_->atom("InterpRegistry"),
                      {XCB_ATOM_STRING, 8, list});
        peer_->serverTime();
    }
};

TEST_F(TkTest, KnowsAProgramByTheListOnTheRootWindow) {
    X11Connection &connection = *services_->connection;
    EXPECT_FALSE(isTkWindow(connection, peer_->window()));
    registerPrograms("1 elsewhere");
    EXPECT_FALSE(isTkWindow(connection, peer_->window()));
    const QByteArray number = QByteArray::number(peer_->window(), 16);
    registerPrograms(QByteArray("1 elsewhere") + '\0' + number + " sample #2" + '\0');
    EXPECT_TRUE(isTkWindow(connection, peer_->window()));
}

TEST(TkMaskTest, IsOneSignOverAndOver) {
    EXPECT_TRUE(isMask(u"*********"));
    EXPECT_TRUE(isMask(u"\u25cf\u25cf"));
    EXPECT_FALSE(isMask(u""));
    EXPECT_FALSE(isMask(u"   "));
    EXPECT_FALSE(isMask(u"aaa"));
    EXPECT_FALSE(isMask(u"*a*"));
}

} // namespace
} // namespace quillmender::x11
int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}

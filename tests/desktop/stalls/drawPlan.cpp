#include "desktop/stalls/SessionPlan.h"

namespace quillmender {

namespace {

using Application = SessionPlan::Application;
using Clipboard = SessionPlan::Clipboard;
using How = Stall::How;
using Partner = Stall::Partner;

class Drawing {
  public:
    Drawing(unsigned seed, int number) {
        std::seed_seq sequence{seed, unsigned(number)};
        random_.seed(sequence);
    }

    /// Less than the count.
    int number(int count) {
        // The library's distributions are not the same everywhere, and a seed has to be.
        return int(random_() % unsigned(count));
    }
    bool oneIn(int count) { return number(count) == 0; }
    template <typename T> T oneOf(const QList<T> &values) {
        return values[number(int(values.size()))];
    }

    std::chrono::milliseconds duration() {
        const int longest = oneIn(8) ? 3000 : 1500;
        return std::chrono::milliseconds(200 + number(longest - 199));
    }

  private:
    SessionPlan::Random random_;
};

/// A call of a capture or a write-back, more often one that comes late in the session.
QString drawCall(Drawing &drawing) {
    static const QStringList orders{QStringLiteral("DeleteText"), QStringLiteral("InsertText")};
    static const QStringList questions{
        QStringLiteral("GetText"),         QStringLiteral("Get:CharacterCount"),
        QStringLiteral("GetSelection"),    QStringLiteral("GetNSelections"),
        QStringLiteral("Get:CaretOffset"), QStringLiteral("GetState"),
        QStringLiteral("GetRole"),         QStringLiteral("GetInterfaces"),
        QStringLiteral("GetChildren"),     QStringLiteral("Get:ToolkitName"),
        QStringLiteral("SetSelection"),    QStringLiteral("AddSelection"),
        QStringLiteral("Get:Name"),
    };
    const bool isOrder = drawing.oneIn(2);
    const QString call = drawing.oneOf(isOrder ? orders : questions);
    const int latest = isOrder ? 2 : 8;
    const int number = isOrder && !drawing.oneIn(6) ? 1 : 1 + drawing.number(latest);
    return QStringLiteral("%1#%2").arg(call).arg(number);
}

QString drawMoment(Drawing &drawing) {
    return drawing.oneOf(QStringList{QStringLiteral("hotKey"), QStringLiteral("hotKeyPressed"),
                                     QStringLiteral("captured"), QStringLiteral("requested"),
                                     QStringLiteral("clipboardTaken"),
                                     QStringLiteral("activated")});
}

bool isScripted(Application application) {
    return application == Application::onBus || application == Application::offBus;
}

Stall drawEditorStall(Drawing &drawing, Application application) {
    static const QList<How> ways{How::hangs,       How::hangs,         How::hangsAfterwards,
                                 How::answersLate, How::actsLate,      How::answersTwice,
                                 How::fails,       How::talksNonsense, How::keepsSilent};
    Stall stall{Partner::editor, drawCall(drawing), How::isStopped, drawing.duration()};
    if (application == Application::offBus || drawing.oneIn(4))
        stall.at = drawMoment(drawing);
    else if (isScripted(application))
        stall.how = drawing.oneOf(ways);
    return stall;
}

Stall drawStall(Drawing &drawing, Application application) {
    switch (drawing.number(12)) {
    case 0:
    case 1:
        return {Partner::windowManager, drawMoment(drawing), How::isStopped, drawing.duration()};
    case 2:
        return {Partner::clipboard,
                drawing.oneOf(QStringList{QStringLiteral("TARGETS"), QStringLiteral("UTF8_STRING"),
                                          QStringLiteral("STRING"), QStringLiteral("text/html"),
                                          QStringLiteral("image/png")}),
                How::isLate, drawing.duration()};
    case 3:
        return {Partner::keyring, QStringLiteral("started"), How::isStopped, drawing.duration()};
    case 4:
        return {Partner::provider,
                drawing.oneOf(QStringList{QStringLiteral("head"), QStringLiteral("body"),
                                          QStringLiteral("middle")}),
                How::isLate, drawing.duration()};
    default:
        return drawEditorStall(drawing, application);
    }
}

} // namespace

SessionPlan SessionPlan::draw(unsigned seed, int number) {
    Drawing drawing(seed, number);
    SessionPlan plan;
    plan.application = drawing.oneOf(
        QList{Application::onBus, Application::onBus, Application::onBus, Application::onBus,
              Application::offBus, Application::offBus, Application::mousepad,
              Application::mousepad, Application::plainEdit, Application::lineEdit});
    plan.clipboard = Clipboard(drawing.number(4));
    // What is not on the bus can be copied from only.
    plan.isWordOnly = plan.application == Application::offBus || !drawing.oneIn(3);
    plan.focusGoesElsewhere = drawing.oneIn(8);
    const int stalls = drawing.oneIn(3) ? 2 + drawing.number(2) : 1;
    for (int i = 0; i < stalls; ++i)
        plan.stalls.append(drawStall(drawing, plan.application));
    return plan;
}

} // namespace quillmender

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

    /// From 0.2 s to 1.5 s, at times to 3 s; the shorter the more often.
    std::chrono::milliseconds duration() {
        const int most = oneIn(8) ? 2800 : 1300;
        return std::chrono::milliseconds(200 + std::min(number(most), number(most)));
    }

  private:
    SessionPlan::Random random_;
};

/// An order to write, with its number in the session.
QString drawOrder(Drawing &drawing) {
    const QString order =
        drawing.oneOf(QStringList{QStringLiteral("DeleteText"), QStringLiteral("InsertText")});
    return QStringLiteral("%1#%2").arg(order).arg(drawing.oneIn(6) ? 2 : 1);
}

QString drawQuestion(Drawing &drawing) {
    static const QStringList oftenAsked{
        QStringLiteral("GetText"), QStringLiteral("Get:CharacterCount"),
        QStringLiteral("GetSelection"), QStringLiteral("GetNSelections"),
        QStringLiteral("Get:CaretOffset")};
    static const QStringList askedOnce{
        QStringLiteral("GetState"),      QStringLiteral("GetRole"),
        QStringLiteral("GetInterfaces"), QStringLiteral("GetChildren"),
        QStringLiteral("SetSelection"),  QStringLiteral("AddSelection"),
        QStringLiteral("Get:Name"),      QStringLiteral("Get:ToolkitName")};
    const bool isOftenAsked = drawing.oneIn(2);
    const QString question = drawing.oneOf(isOftenAsked ? oftenAsked : askedOnce);
    return QStringLiteral("%1#%2").arg(question).arg(1 + drawing.number(isOftenAsked ? 8 : 3));
}

QString drawMoment(Drawing &drawing) {
    return drawing.oneOf(QStringList{QStringLiteral("hotKey"), QStringLiteral("hotKeyPressed"),
                                     QStringLiteral("captured"), QStringLiteral("requested"),
                                     QStringLiteral("clipboardTaken"),
                                     QStringLiteral("activated")});
}

Stall drawEditorStall(Drawing &drawing, Application application) {
    static const QList<How> ways{
        How::hangs,        How::hangs, How::hangsAfterwards, How::answersLate, How::actsLate,
        How::answersTwice, How::fails, How::talksNonsense,   How::keepsSilent, How::lies};
    const bool isMoment = application == Application::offBus || drawing.oneIn(4);
    if (isMoment)
        return {Partner::editor, drawMoment(drawing), How::isStopped, drawing.duration()};
    const QString call = drawing.oneIn(2) ? drawOrder(drawing) : drawQuestion(drawing);
    const How how = application == Application::onBus ? drawing.oneOf(ways) : How::isStopped;
    return {Partner::editor, call, how, drawing.duration()};
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
    plan.isProgramFresh = drawing.oneIn(6);
    const int stalls = drawing.oneIn(3) ? 2 + drawing.number(2) : 1;
    for (int i = 0; i < stalls; ++i)
        plan.stalls.append(drawStall(drawing, plan.application));
    return plan;
}

} // namespace quillmender

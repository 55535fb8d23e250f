#pragma once

#include "desktop/hostile/Responsiveness.h"
#include "desktop/sessions/SessionFixture.h"
#include "desktop/stalls/CallWatch.h"
#include "desktop/stalls/Document.h"
#include "desktop/stalls/PanelReader.h"
#include "desktop/stalls/SessionPlan.h"
#include "desktop/stalls/SessionRecord.h"
#include "desktop/stalls/Stopper.h"
#include "desktop/stalls/WindowWatch.h"

#include <atomic>
#include <map>

namespace quillmender {

/// Sessions with partners that misbehave for a while, on one desktop with an editor of each kind.
class StallFixture : public SessionFixture {
  protected:
    ~StallFixture() override;

    void start() override;

    /// Plays the session to its end, waits until all stalls are over and everything that came late
    /// has been carried out, and tells what is wrong then.
    QStringList play(const SessionPlan &plan);

    bool wasReplaced() const { return !record_.message; }

    /// What programs told during the last session, to look into a failure.
    QStringList traces();

    /// The program anew, after a session that may have left it in any state.
    void startAgain();

  private:
    using Application = SessionPlan::Application;

    void openDocument(Application application);
    Document &document(Application application) { return *documents_.at(application); }
    void noteCall(const QString &destination, const QString &member);
    void letGoOfKeys();
    void startLoggingProgram(harness::ProductProcess::Setup setup);
    void prepare(const SessionPlan &plan, Document &source);
    void takeClipboard(const SessionPlan &plan);
    void armStops(const SessionPlan &plan, Document &source);
    void answerAs(const SessionPlan &plan, const QString &answer);
    void restartProgram(const SessionPlan &plan);

    bool isAlive() { return program().process().isRunning(); }
    /// The message that it ends with; nothing when the panel shows what was captured.
    std::optional<QString> capture(PanelReader &panel);
    /// The same of an action on it.
    std::optional<QString> run(const SessionPlan &plan, PanelReader &panel);
    void moveFocusAway(Application source);
    void letAnswer();
    void comeToRest(PanelReader &panel, Document &source);
    void observe(const SessionPlan &plan, const QString &answer);

    std::map<Application, std::unique_ptr<Document>> documents_;
    /// What they held at the end of the last session.
    std::map<Application, QString> texts_;
    std::optional<harness::ClipboardOwner> owner_;
    SessionRecord record_;
    size_t requestsBefore_ = 0;
    std::optional<Responsiveness> responsiveness_;
    Stopper stopper_;
    std::optional<CallWatch> calls_;
    std::optional<WindowWatch> windows_;
    std::mutex sourceMutex_;
    QString sourceBusName_;
    QHash<QString, int> callCounts_;
    QStringList callsSeen_;
    qsizetype logBefore_ = 0;
    std::atomic<bool> isRequested_ = false;
    std::atomic<bool> mayAnswer_ = true;
    Application last_ = Application::onBus;
    int sessions_ = 0;
};

} // namespace quillmender

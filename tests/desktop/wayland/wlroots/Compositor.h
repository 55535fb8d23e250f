#pragma once

#include "desktop/harness/ChildProcess.h"

#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace quillmender::wlroots {

/// A headless compositor and what runs on it. As root it is run by another user, since sway refuses
/// root.
class Compositor {
  public:
    enum class Kind { sway, labwc };

    /// What is not installed of all that a test wants; empty when everything is.
    static QString missing(const QStringList &programs);

    /// `configuration` is added to the compositor's own file.
    explicit Compositor(Kind kind, const QByteArray &configuration = {});
    ~Compositor();

    /// The path of its socket.
    QByteArray display() const;
    /// Of its socket for the i3 protocol.
    QString swaySocket() const;

    QString folder() const { return folder_.path(); }
    QString configurationFile() const;
    void writeConfiguration(const QByteArray &added) const;

    /// For programs on it.
    QProcessEnvironment &environment() { return environment_; }

    /// Runs until it is ended or the compositor goes.
    harness::ChildProcess &start(const QString &program, const QStringList &arguments);

    harness::ChildProcess &process() { return *process_; }
    QByteArray log() const { return process_->log(); }

  private:
    QString runtime() const { return folder_.filePath(QStringLiteral("run")); }

    Kind kind_;
    QTemporaryDir folder_;
    QProcessEnvironment environment_;
    std::unique_ptr<harness::ChildProcess> process_;
    std::vector<std::unique_ptr<harness::ChildProcess>> programs_;
};

} // namespace quillmender::wlroots

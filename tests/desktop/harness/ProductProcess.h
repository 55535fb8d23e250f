#pragma once

#include "desktop/harness/ChildProcess.h"

#include <QMap>
#include <QVariant>

namespace quillmender::harness {

class AnyDesktop;

/// The program under test on a desktop.
class ProductProcess {
  public:
    struct Setup {
        /// What the settings file holds when the program starts, by key. Without any it stays as
        /// it is.
        QMap<QString, QString> settings;
        /// The keys in the keyring, by provider ("openAI", "anthropic", "gemini").
        QMap<QString, QByteArray> apiKeys;
        /// Added to what the desktop gives every program.
        QMap<QString, QString> environment;
        /// A program that stands in for the product's own executable; empty for none.
        QString program{};
        QStringList arguments{};
    };

    ProductProcess(AnyDesktop &desktop, const Setup &setup);

    /// The usual one: OpenAI at the endpoint, with an API key.
    static Setup openAi(const QString &endpoint);

    /// Of its executable: $QUILLMENDER_PROGRAM if that is set, else what this build has made.
    static QString path();

    qint64 pid() const { return process_.pid(); }
    ChildProcess &process() { return process_; }
    QByteArray log() const { return process_.log(); }

    /// Waits until the program has grabbed its hot key, so that a press is its own.
    void waitUntilReady();

    /// What the desktop entry's action of this name does: "transform", "settings", "about", "quit".
    void activateAction(const QString &action);

  private:
    AnyDesktop &desktop_;
    ChildProcess process_;
};

} // namespace quillmender::harness

#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace quillmender {

/// A program in a terminal of its own, which this process holds as a terminal emulator does.
class TerminalProgram {
  public:
    /// In the folder; `terminal` is its TERM.
    TerminalProgram(const QByteArray &folder, const QByteArrayList &command,
                    const QByteArray &terminal = "xterm");
    TerminalProgram(const TerminalProgram &) = delete;
    TerminalProgram &operator=(const TerminalProgram &) = delete;
    ~TerminalProgram();

    int id() const { return process_; }

    void type(const QByteArray &keys);

    /// Whether the program writes this within the deadline.
    bool writes(const QByteArray &text);

    /// Takes what was written, so that the program can go on.
    void drain();

  private:
    int process_ = -1;
    int screen_ = -1;
    QByteArray written_;
};

} // namespace quillmender

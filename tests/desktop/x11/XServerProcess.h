#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

namespace quillmender::x11 {

/// An X server of the test's own, on whichever display is free; it ends with this object.
class XServerProcess {
  public:
    explicit XServerProcess(const QStringList &moreArguments = {});
    XServerProcess(const XServerProcess &) = delete;
    XServerProcess &operator=(const XServerProcess &) = delete;
    ~XServerProcess();

    /// Such as ":7".
    const QByteArray &display() const { return display_; }

    /// Runs a program on this display to its end and answers what it wrote.
    QByteArray run(const QString &program, const QStringList &arguments,
                   const QByteArray &input = {}) const;

    /// Starts a program that ends with the display.
    std::unique_ptr<QProcess> start(const QString &program, const QStringList &arguments) const;

  private:
    QProcess process_;
    QByteArray display_;
};

} // namespace quillmender::x11

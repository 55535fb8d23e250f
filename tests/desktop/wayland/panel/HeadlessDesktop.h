#pragma once

#include "desktop/wayland/panel/Program.h"

#include <QSize>
#include <QTemporaryDir>

#include <memory>

namespace quillmender::test {

/// A compositor without any screen or device, and the folder in which its programs live. Its
/// outputs are HEADLESS-1, and HEADLESS-2 to its right, of `size` each.
class HeadlessDesktop {
  public:
    static constexpr QSize size{1280, 720};

    /// `name` is sway or labwc; `lines` are more of sway's configuration. Throws HarnessError when
    /// it does not start.
    HeadlessDesktop(const QString &name, int outputs, const QByteArray &lines = {});

    /// The socket, for a connection of the test's own.
    QByteArray display() const { return display_; }

    /// What its programs are started with.
    QProcessEnvironment environment() const;

    std::unique_ptr<Program> start(const QString &file, const QStringList &arguments = {},
                                   const QProcessEnvironment &more = {}) const;

  private:
    void writeConfiguration(const QByteArray &lines) const;

    QTemporaryDir folder_;
    QString name_;
    int outputs_;
    QByteArray display_;
    std::unique_ptr<Program> compositor_;
};

} // namespace quillmender::test

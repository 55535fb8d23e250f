#pragma once

#include <QDBusConnection>
#include <QList>
#include <QRect>
#include <QString>
#include <QVariant>

#include <optional>

namespace quillmender::harness {

/// The states that tests ask for, by their number in the accessibility protocol.
enum class AccessibleState {
    active = 1,
    checked = 4,
    editable = 7,
    enabled = 8,
    focused = 12,
    sensitive = 24,
    showing = 25,
    visible = 30,
};

/// One object on the accessibility bus: a widget of some application. Every question goes to the
/// application; one that does not answer in time gives an empty value.
class Accessible {
  public:
    Accessible(QDBusConnection bus, QString service, QString path);

    const QString &service() const { return service_; }
    const QString &path() const { return path_; }

    QString name() const;
    QString description() const;
    /// The protocol's English name: "push button", "text", "frame", ...
    QString roleName() const;
    /// The protocol's number of the role; it can tell more than the name: 40 is a password's text.
    uint role() const;
    bool hasState(AccessibleState state) const;
    QStringList interfaces() const;
    QList<Accessible> children() const;
    /// The same in steps, between which the application can change.
    int childCount() const;
    std::optional<Accessible> child(int index) const;
    int indexInParent() const;

    /// On the screen, in pixels.
    QRect extents() const;

    QString text() const;
    /// Of the character at the offset, on the screen, in pixels.
    QRect characterExtents(int offset) const;
    int caretOffset() const;
    /// Start and end as the application counts; absent when nothing is selected.
    std::optional<std::pair<int, int>> selection() const;
    QString selectedText() const;

    bool select(int start, int end) const;
    bool setText(const QString &text) const;
    bool setCaretOffset(int offset) const;
    bool grabFocus() const;
    /// The action that a click would do.
    bool doAction() const;

    friend bool operator==(const Accessible &a, const Accessible &b) {
        return a.service_ == b.service_ && a.path_ == b.path_;
    }

  private:
    QList<QVariant> ask(const char *interface, const char *method,
                        const QList<QVariant> &arguments = {}) const;
    QVariant property(const char *interface, const char *name) const;

    QDBusConnection bus_;
    QString service_;
    QString path_;
};

} // namespace quillmender::harness

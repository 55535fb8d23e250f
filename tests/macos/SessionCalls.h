#pragma once

#include <QStringList>

namespace quillmender::sessionCalls {

constexpr int copyKey = 8;
constexpr int pasteKey = 9;

/// One call a line.
inline std::string joined(const QStringList &calls) {
    return calls.join(u'\n').toStdString();
}

/// What each step of a session asks of the system, in its order.

inline QStringList snapshotOfTheUsersOwn() {
    return {QStringLiteral("AXIsProcessTrusted"),
            QStringLiteral("NSWorkspace frontmostApplication"),
            QStringLiteral("NSPasteboard pasteboardItems"),
            QStringLiteral("NSPasteboardItem dataForType public.utf8-plain-text"),
            QStringLiteral("NSPasteboardItem dataForType public.rtf"),
            QStringLiteral("NSPasteboardItem dataForType public.png"),
            QStringLiteral("NSPasteboard changeCount")};
}

inline QStringList search() {
    return {QStringLiteral("AXUIElementCreateSystemWide"),
            QStringLiteral("AXUIElementCopyAttributeValue system-wide AXFocusedUIElement")};
}

/// Whose the focused element is, and whether it holds a password.
inline QStringList examination() {
    return {QStringLiteral("AXUIElementGetPid editor"),
            QStringLiteral("AXUIElementCopyAttributeValue editor AXSubrole")};
}

inline QStringList read(const QString &attribute) {
    return {QStringLiteral("AXUIElementCopyAttributeValue editor ") + attribute};
}

inline QStringList activation() {
    return {QStringLiteral("NSRunningApplication 7 activateWithOptions 0"),
            QStringLiteral("sleep 120")};
}

inline QStringList chord(int keyCode) {
    const auto line = [keyCode](const char *form) {
        return QString::fromLatin1(form).arg(keyCode);
    };
    return {QStringLiteral("CGEventSourceCreate 0"),  line("CGEventCreateKeyboardEvent %1 down"),
            line("CGEventCreateKeyboardEvent %1 up"), line("CGEventSetFlags %1 down 0x100000"),
            line("CGEventSetFlags %1 up 0x100000"),   line("CGEventPost 0 %1 down 0x100000"),
            line("CGEventPost 0 %1 up 0x100000")};
}

inline QStringList poll() {
    return {QStringLiteral("sleep 50"), QStringLiteral("NSPasteboard changeCount")};
}

inline QStringList copiedString() {
    return {QStringLiteral("NSPasteboard stringForType public.utf8-plain-text")};
}

inline QStringList restore() {
    return {QStringLiteral("NSPasteboard clearContents"),
            QStringLiteral("NSPasteboard writeObjects 2")};
}

inline QStringList panelShown() {
    return {QStringLiteral("NSWorkspace frontmostApplication"), QStringLiteral("panel centre"),
            QStringLiteral("panel makeKeyAndOrderFront")};
}

inline QStringList request() {
    return {QStringLiteral("SecItemCopyMatching {acct=api-key, class=genp, m_Limit=m_LimitOne, "
                           "r_Data=true, svce=com.quillmender.openAI}"),
            QStringLiteral("send")};
}

inline QStringList answerOnThePasteboard(const QString &answer) {
    return {QStringLiteral("NSPasteboard clearContents"),
            QStringLiteral("NSPasteboard setString %1 public.utf8-plain-text").arg(answer)};
}

inline QStringList panelHidden() {
    return {QStringLiteral("panel orderOut")};
}

} // namespace quillmender::sessionCalls

#pragma once

#include "demo/Account.h"
#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/ClipboardProbe.h"
#include "desktop/harness/Desktop.h"
#include "desktop/harness/ProductProcess.h"
#include "desktop/harness/TestApplication.h"
#include "support/LoopbackServer.h"

#include <optional>

namespace quillmender::demo {

/// One whole session on a desktop of its own, by keyboard and mouse only: a word is selected in an
/// editor, the hot key pressed, an action clicked, and the answer of a provider on the loopback
/// takes the word's place while the clipboard stays as it was.
class Demonstration {
  public:
    /// Pictures and logs go to the folder, which is made.
    explicit Demonstration(const QString &folder);

    /// Throws std::exception with the reason when anything is not as it should be.
    void run();

  private:
    void prepareProvider();
    void fillClipboard();
    void startProgram();
    void openEditor();
    void selectWord();
    void pressHotKey();
    void clickAction();
    void expectRequest();
    void expectReplacement();
    void expectClipboard();

    void waitUntilPainted(QRect area, const QString &what);
    void waitUntilEditorIsUncovered();
    void takePicture(const QString &name);

    QString folder_;
    Account account_;
    harness::Desktop desktop_;
    test::LoopbackServer provider_;
    std::optional<harness::ClipboardOwner> clipboard_;
    harness::ClipboardContents clipboardBefore_;
    std::optional<harness::ProductProcess> program_;
    std::optional<harness::TestApplication> editor_;
    std::optional<harness::Accessible> text_;
    QImage editorBefore_;
};

} // namespace quillmender::demo

#include "applications/Field.h"

#include "applications/CommandField.h"
#include "applications/EditorField.h"
#include "applications/FormattedField.h"
#include "applications/PromptField.h"
#include "applications/ReaderField.h"
#include "applications/SecretField.h"

namespace quillmender::applications {

std::unique_ptr<Field> Field::make(const Application &application, harness::AnyDesktop &desktop,
                                   RunningApplication &running) {
    switch (application.kind) {
    case Application::Kind::prompt:
        return std::make_unique<PromptField>(application, desktop, running);
    case Application::Kind::commands:
        return std::make_unique<CommandField>(application, desktop);
    case Application::Kind::formatted:
        return std::make_unique<FormattedField>(application, desktop);
    case Application::Kind::reader:
        return std::make_unique<ReaderField>(application, desktop);
    case Application::Kind::password:
        return std::make_unique<SecretField>(application, desktop);
    case Application::Kind::editor:
        break;
    }
    return std::make_unique<EditorField>(application, desktop);
}

QString withPlainLineEnds(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QChar(QChar::ParagraphSeparator), u'\n');
    text.replace(QChar(QChar::Nbsp), u' ');
    return text;
}

QString normalised(QString text) {
    text = withPlainLineEnds(std::move(text));
    while (text.endsWith(u'\n'))
        text.chop(1);
    return text;
}

} // namespace quillmender::applications

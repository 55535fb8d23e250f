#include "applications/FormattedField.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QFile>
#include <QRegularExpression>

namespace quillmender::applications {

using namespace std::chrono_literals;

QByteArray FormattedField::document() {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0"
 office:version="1.3" office:mimetype="application/vnd.oasis.opendocument.text">
<office:automatic-styles><style:style style:name="T1" style:family="text">
<style:text-properties fo:font-weight="bold"/></style:style></office:automatic-styles>
<office:body><office:text><text:p>You <text:span text:style-name="T1">really</text:span> do recieve it.</text:p></office:text></office:body>
</office:document>
)";
}

QList<Scenario> FormattedField::scenarios() const {
    const QString text = QStringLiteral("You really do recieve it.");
    return {{QStringLiteral("a word beside a bold one"), text, Pick::wordForwards,
             QStringLiteral("recieve"), QStringLiteral("receive")}};
}

void FormattedField::prepare(const Scenario &scenario) {
    if (!harness::becomesTrue([&] { return select(scenario); }, 60s))
        throw harness::HarnessError(QStringLiteral("the word cannot be selected"));
}

std::optional<QString> FormattedField::read(const QString &wanted) {
    const auto plain = EditorField::read(wanted);
    if (!plain)
        return std::nullopt;
    const auto savedText = [this] {
        QString text = saved();
        text = text.mid(text.indexOf(QStringLiteral("<office:text")));
        text.remove(QRegularExpression(QStringLiteral("<[^>]*>")));
        return text.simplified();
    };
    input().chord({XK_Control_L, XK_s});
    if (!harness::becomesTrue([&] { return savedText() == wanted; }, 20s))
        return QStringLiteral("not saved: ") + savedText();
    const bool isBold = saved().contains(QStringLiteral(">really</text:span>"));
    return isBold ? *plain : *plain + QStringLiteral(" (no longer bold)");
}

QString FormattedField::saved() const {
    QFile file(home_ + u'/' + fileName());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace quillmender::applications

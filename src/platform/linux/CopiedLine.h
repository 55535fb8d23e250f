#pragma once

#include <QByteArray>
#include <QStringView>

namespace quillmender {

/// Whether a text can be the line that editors for code copy when nothing is selected: it ends with
/// a line feed and has no other. Whoever copied it has it as selection for the middle button too if
/// it was selected.
bool canBeCopiedLine(QStringView text);

/// Whether only spreadsheets and office suites offer this format beside a text. The cell of a
/// spreadsheet looks like a copied line and is none.
bool isFormatOfTable(const QByteArray &format);

} // namespace quillmender

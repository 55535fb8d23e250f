#pragma once

#include <QAccessible>

namespace quillmender {

/// Announces a change to assistive technology with bullets in place of a password field's text.
/// (Questions about the text are refused by the toolkit itself.)
void announceWithoutSecrets(QAccessibleEvent *event, QAccessible::UpdateHandler announce);

} // namespace quillmender

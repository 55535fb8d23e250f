#pragma once

class QProcessEnvironment;
class QString;

namespace quillmender::harness {

/// Changes a setting of the desktop's user; the value is in the notation of GVariant. Throws
/// HarnessError when there is no such setting.
void setGnomeSetting(const QProcessEnvironment &environment, const QString &schema,
                     const QString &key, const QString &value);

} // namespace quillmender::harness

#include "model/UserVisibleError.h"

namespace quillmender {

UserVisibleError::UserVisibleError(const QString &description)
    : description_(description),
      utf8_(description.toUtf8()) {}

} // namespace quillmender

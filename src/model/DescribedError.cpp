#include "model/DescribedError.h"

namespace quillmender {

DescribedError::DescribedError(const QString &description)
    : description_(description),
      utf8_(description.toUtf8()) {}

} // namespace quillmender

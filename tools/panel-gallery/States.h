#pragma once

#include "GalleryModel.h"

namespace quillmender {

/// The names of the states that are worth a look.
QStringList galleryStates();

/// Puts the model into the named state.
void enterState(GalleryModel &model, const QString &state);

} // namespace quillmender

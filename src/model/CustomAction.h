#pragma once

#include <QString>
#include <QUuid>

namespace quillmender {

/// An action that the user made.
struct CustomAction {
    QUuid id; ///< made fresh with the action; never changes
    QString title;
    QString promptTemplate;

    friend bool operator==(const CustomAction &, const CustomAction &) = default;
};

} // namespace quillmender

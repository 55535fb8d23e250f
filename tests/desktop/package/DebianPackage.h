#pragma once

#include <QString>
#include <QStringList>

namespace quillmender {

/// The package that the build has made.
namespace DebianPackage {

QString path();

/// A field of its control file.
QString field(const QString &name);

/// Every file and folder in it, as the absolute path that it is installed to.
QStringList contents();

/// Unpacks it below the folder.
void extract(const QString &folder);

} // namespace DebianPackage

} // namespace quillmender

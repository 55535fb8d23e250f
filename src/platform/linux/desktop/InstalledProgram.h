#pragma once

#include <QCoreApplication>
#include <QStringList>

namespace quillmender {

/// Program and arguments by which a desktop can start this program in a later session, with an
/// absolute path; empty when it is not installed. Installed means one of these, in this order:
/// - an application folder of `$XDG_DATA_HOME` or `$XDG_DATA_DIRS` has the entry
///   `com.quillmender.Quillmender.desktop` and its program can be executed: what it starts;
/// - the entry is in `share/applications` beside the `bin` folder of the running executable;
/// - the running executable is found on the `PATH` under its name.
/// So a program that runs out of its build folder is not installed.
QStringList
installedProgram(const QString &runningExecutable = QCoreApplication::applicationFilePath());

} // namespace quillmender

#pragma once

#include "desktop/harness/AnyDesktop.h"

#include <X11/keysym.h>
#include <functional>

namespace quillmender::applications {

class RunningApplication;

/// The chords by which an application is used.
struct Keys {
    using Chord = QList<harness::UserInput::Keysym>;

    QList<Chord> selectAll{{XK_Control_L, XK_a}};
    Chord copy{XK_Control_L, XK_c};
    Chord paste{XK_Control_L, XK_v};
    /// Empty where undo takes more back than the text.
    Chord undo{XK_Control_L, XK_z};
};

/// What a program in a terminal is asked for what was written into it.
struct PromptKeys {
    using Strokes = std::function<void(harness::UserInput &)>;

    /// Makes a place for new words, which are then typed.
    Strokes clear;
    /// Lets what was typed and pasted be written to the file `prompt.txt`, at its end.
    Strokes save;
};

/// How an editor in which Control + C begins a command is used; it has the file `letter.txt`.
struct CommandKeys {
    using Input = harness::UserInput;

    /// Takes the file anew.
    std::function<void(Input &)> load;
    /// Selects the part of the text behind what stands before it.
    std::function<void(Input &, const QString &before, const QString &part, bool isForwards)>
        select;
    /// Writes its text to the file `written.txt`, and then makes the file `done.txt`.
    std::function<void(Input &)> save;
    std::function<void(Input &)> undo;
};

/// One text field of a real application: how it is started and what it can do.
struct Application {
    enum class Kind {
        /// Its text can be selected, copied, pasted and undone by keys.
        editor,
        /// A program in a terminal: what is pasted arrives where its cursor is.
        prompt,
        /// Its keys are parts of commands.
        commands,
        /// A document of its own, in which a formatted word must stay so.
        formatted,
        /// Its text can be selected and copied only.
        reader,
        /// Never read.
        password,
    };

    using Prepare = std::function<void(harness::AnyDesktop &, RunningApplication &)>;

    /// How it is asked for on the command line.
    QString id;
    QString name;
    QString field;
    /// Whose version is told.
    QString package;
    std::function<harness::Command(harness::AnyDesktop &)> command;
    Kind kind = Kind::editor;
    bool hasOneLine = false;
    /// Whether a tab stays one in it.
    bool keepsTabs = true;
    /// Whether a text of 1 MB is tried.
    bool takesLargeTexts = false;
    /// Kept off the accessibility bus, as one that was started before there was one.
    bool isOffTheBus = false;
    /// Speaks X11 on every desktop.
    bool needsX = false;
    /// What the title of its window begins or ends with when it is ready; empty for any.
    QString title{};
    /// Brings the cursor into the field.
    Prepare prepare{};
    Keys keys{};
    PromptKeys prompt{};
    CommandKeys commands{};
};

} // namespace quillmender::applications

#pragma once

#include "app/commandline/Verb.h"

#include <QByteArrayList>
#include <QHash>

namespace tessary {

/// What the words of the command line ask for.
struct CommandLine {
    enum class Request {
        Run,          ///< Start, or show the panel of the one that runs.
        RunUnnoticed, ///< Start, or leave the one that runs alone.
        Perform,      ///< What the verb says.
        ShowVersion,
        ShowHelp,
        Misuse,
    };

    Request request = Request::Run;
    const Verb* verb = nullptr;            ///< To perform, or to explain; null for the program as a whole.
    QByteArrayList operands;               ///< As they were given: file names may be any bytes.
    QHash<QByteArray, QByteArray> options; ///< By name; the values of those without one are empty.
    QString complaint;                     ///< About a misuse, one line.

    /// @param arguments without the program's name.
    [[nodiscard]] static CommandLine parse(const QByteArrayList& arguments);
    [[nodiscard]] static QString helpText();
    [[nodiscard]] static QString versionText();
};

} // namespace tessary

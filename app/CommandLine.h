#pragma once

#include <QString>
#include <QStringList>

namespace tessary {

/// What the words of the command line ask for.
struct CommandLine {
    enum class Request { Run, ShowVersion, ShowHelp, Misuse };

    Request request = Request::Run;
    QString complaint; ///< About a misuse, one line.

    /// @param arguments without the program's name.
    [[nodiscard]] static CommandLine parse(const QStringList& arguments);
    [[nodiscard]] static QString helpText();
    [[nodiscard]] static QString versionText();
};

} // namespace tessary

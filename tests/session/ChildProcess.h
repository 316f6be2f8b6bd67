#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

#include <memory>
#include <optional>

namespace tessary::testing {

/// A program that a test runs beside itself, ended with this object. Test thread only.
class ChildProcess {
public:
    /// Both outputs are collected as one text.
    ChildProcess(const QString& program, const QStringList& arguments,
                 const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());
    ~ChildProcess();

    /// Whether the text came, at the latest within the deadline of the tests. False as soon as the program
    /// has ended without it.
    [[nodiscard]] bool printed(const QString& text);
    [[nodiscard]] QString output();
    /// Waits for the end. @returns the exit status; nothing when it crashed, was killed or did not end.
    [[nodiscard]] std::optional<int> exitCode();
    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] qint64 processId() const;
    /// Sends the signal, and for one that ends the program waits for that.
    void kill(int signal);

private:
    std::unique_ptr<QProcess> m_process;
    QString m_output;
};

} // namespace tessary::testing

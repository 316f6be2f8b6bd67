#pragma once

#include "app/commandline/BusClient.h"
#include "app/commandline/CommandLine.h"
#include "app/commandline/ExitStatus.h"

#include <optional>

namespace tessary {

/// Carries out the verbs of the command line by asking the running program: results go to standard output,
/// complaints, a line each, to standard error.
class VerbRunner {
public:
    explicit VerbRunner(BusClient& client) : m_client(client) {}

    /// @returns how it ended; everything is printed. @throws CommandError for what concerns the whole verb.
    [[nodiscard]] ExitStatus perform(const CommandLine& line);

private:
    ExitStatus search(const CommandLine& line);
    ExitStatus show(const CommandLine& line);
    ExitStatus importFiles(const CommandLine& line);
    std::optional<QDBusPendingCall> beginImport(const QByteArray& file);
    static ExitStatus finishImport(const QByteArray& file, const std::optional<QDBusPendingCall>& call);
    ExitStatus exportTo(const QByteArray& folder);
    ExitStatus restoreFrom(const QByteArray& folder);
    ExitStatus purge(bool everything);
    ExitStatus facts(const QString& method, const CommandLine& line);
    ExitStatus watch();
    ExitStatus recognize(const CommandLine& line);
    /// Calls the method for each operand, after which further arguments stand.
    ExitStatus forEach(const QByteArrayList& ids, const QString& method, const QVariantList& further);

    BusClient& m_client;
};

} // namespace tessary

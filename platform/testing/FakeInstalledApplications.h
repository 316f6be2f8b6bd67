#pragma once

#include "platform/InstalledApplications.h"
#include "platform/testing/NextTurn.h"

#include <algorithm>

namespace tessary::testing {

/// The programs that a test installs. Answers come after a turn of the event loop.
class FakeInstalledApplications : public InstalledApplications {
public:
    [[nodiscard]] QCoro::Task<QList<InstalledApplication>> all() override
    {
        const QList<InstalledApplication> answer = installed;
        co_await NextTurn();
        co_return answer;
    }
    [[nodiscard]] QCoro::Task<QList<InstalledApplication>> find(QStringList identifiers) override
    {
        QList<InstalledApplication> answer;
        for (const QString& identifier : identifiers) {
            const auto found =
                std::find_if(installed.cbegin(), installed.cend(), [&](const InstalledApplication& one) {
                    return one.bundleIdentifier == identifier;
                });
            if (found != installed.cend())
                answer.append(*found);
        }
        co_await NextTurn();
        co_return answer;
    }

    QList<InstalledApplication> installed;
};

} // namespace tessary::testing

#pragma once

#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QProcess>

namespace tessary::testing {

/// The program as `cmake --install` puts it somewhere, for one test. Test thread only.
class InstalledTree {
public:
    /// @param prefix where it will be used, such as /usr; it is put into a folder that stands for the root.
    explicit InstalledTree(const QString& prefix)
        : m_root(m_folder.file(QStringLiteral("root"))),
          m_prefix(prefix)
    {
        QProcess install;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DESTDIR"), m_root);
        install.setProcessEnvironment(environment);
        install.setProcessChannelMode(QProcess::MergedChannels);
        install.start(QStringLiteral(TESSARY_CMAKE),
                      {QStringLiteral("--install"), QStringLiteral(TESSARY_BUILD_FOLDER),
                       QStringLiteral("--prefix"), prefix, QStringLiteral("--strip")});
        EXPECT_TRUE(install.waitForFinished(60'000));
        EXPECT_EQ(install.exitCode(), 0) << install.readAll().constData();
    }

    /// The folder that stands for the prefix, or what is in it.
    [[nodiscard]] QString path(const QString& below = {}) const
    {
        return QDir::cleanPath(m_root + m_prefix + QLatin1Char('/') + below);
    }
    /// Moves everything: what worked before works afterwards.
    void moveTo(const QString& root)
    {
        EXPECT_TRUE(QDir().rename(m_root, root));
        m_root = root;
    }

private:
    TemporaryFolder m_folder;
    QString m_root;
    QString m_prefix;
};

} // namespace tessary::testing

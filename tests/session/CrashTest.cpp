#include "tests/session/SessionTest.h"
#include "tests/session/TestPictures.h"

#include <QDeadlineTimer>
#include <QDir>

#include <csignal>
#include <random>

namespace tessary::testing {

namespace {

class CrashTest : public SessionTest {
protected:
    /// Copies texts and pictures in turn, each as soon as the one before has come, until the time is over.
    void copyUntil(const QDeadlineTimer& deadline)
    {
        while (!deadline.hasExpired()) {
            const std::size_t before = library().items().size();
            const QString path = scratch(QStringLiteral("picture %1.png").arg(++m_copies));
            if (m_copies % 2 == 0) {
                writeFile(path, pngOf(picture(300 + m_copies, 200, m_copies)));
                copyPng(path);
            } else {
                copyText(QStringLiteral("copy %1").arg(m_copies));
            }
            EXPECT_TRUE(
                eventually([&] { return deadline.hasExpired() || library().items().size() > before; }));
        }
    }

    void expectSound()
    {
        const LibraryReader reader = library();
        EXPECT_EQ(reader.recordIds(), reader.projectionIds());
        EXPECT_EQ(reader.recordIds(), reader.searchIds());
        for (const LibraryItem& item : reader.pictures()) {
            EXPECT_TRUE(QFile::exists(item.libraryPath)) << qPrintable(item.libraryPath);
            EXPECT_EQ(QFileInfo(item.libraryPath).size(), item.fileSize);
            EXPECT_FALSE(QImage::fromData(readFile(item.thumbnailPath), "JPEG").isNull());
        }
        EXPECT_TRUE(eventually([this] { return leftovers().isEmpty(); }))
            << qPrintable(leftovers().join(u' '));
    }

    /// Files directly in the library's folder that do not belong there.
    [[nodiscard]] QStringList leftovers() const
    {
        QStringList found = QDir(root()).entryList(QDir::Files | QDir::Hidden);
        found.removeIf([](const QString& name) {
            return name.startsWith(QLatin1String("Tessary.")) ||
                   name == QLatin1String("FrontmostApps.json") || name == QLatin1String(".lock");
        });
        return found;
    }

private:
    int m_copies = 0;
};

TEST_F(CrashTest, KilledAtAnyMomentTheLibraryStaysWholeAndKeepsWhatItHad)
{
    constexpr int kRounds = 12;
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> moment(200, 2600);
    QSet<QString> known;
    for (int round = 1; round <= kRounds; ++round) {
        SCOPED_TRACE(round);
        start();
        expectSound();
        EXPECT_TRUE(library().recordIds().contains(known)) << "an item was lost";
        copyUntil(QDeadlineTimer(moment(random)));
        known = library().recordIds();
        tessary().kill(SIGKILL);
    }
    start();
    expectSound();
    EXPECT_TRUE(library().recordIds().contains(known)) << "an item was lost";
    EXPECT_GE(known.size(), kRounds / 2) << "hardly anything was copied";
    EXPECT_TRUE(keepsCopying());
}

} // namespace

} // namespace tessary::testing

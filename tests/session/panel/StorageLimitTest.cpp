#include "store/AppPaths.h"
#include "tests/session/TestPictures.h"
#include "tests/session/panel/PanelSession.h"
#include "tests/support/RecordSamples.h"

#include <QDir>

namespace tessary::testing {

namespace {

constexpr qint64 kMega = 1'000'000;

/// The real program with a library of more than it may keep.
class StorageLimitTest : public PanelSession {
protected:
    StorageLimitTest()
    {
        QDir().mkpath(shots());
        writeSettings({QStringLiteral("automaticStorageCleanup=true"), QStringLiteral("maxStorageGB=1"),
                       QStringLiteral("monitoredDirectory=") + shots()});
    }
    QString shots() const { return scratch(QStringLiteral("shots")); }
    QString originals() const { return root() + QStringLiteral("/Originals"); }
    /// A picture of that size, as far as the library knows, with a file of that size that is one hole.
    ScreenshotRecord libraryPicture(double capturedAt, qint64 fileSize)
    {
        ScreenshotRecord record = pictureRecord(capturedAt, fileSize);
        record.libraryPath = originals() + u'/' + identifierText(record.id) + QStringLiteral(".png");
        QDir().mkpath(originals());
        QFile file(record.libraryPath);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(fileSize));
        return record;
    }
    QStringList left() const
    {
        QStringList ids;
        for (const LibraryItem& item : library().items())
            ids.append(item.id);
        return ids;
    }
    static QStringList ids(const QList<ScreenshotRecord>& records)
    {
        QStringList texts;
        for (const ScreenshotRecord& record : records)
            texts.append(identifierText(record.id));
        return texts;
    }
};

TEST_F(StorageLimitTest, KeepsFavouritesPinnedItemsAndTextsAndTheNewestPictures)
{
    ScreenshotRecord favorite = libraryPicture(1000, 200 * kMega);
    favorite.isFavorite = true;
    ScreenshotRecord pinned = libraryPicture(1001, 200 * kMega);
    pinned.isPinned = true;
    ScreenshotRecord text = textRecord(QStringLiteral("an old text"), 1002);
    text.fileSize = 200 * kMega;
    QList<ScreenshotRecord> kept{favorite, pinned, text};
    QList<ScreenshotRecord> gone;
    for (int i = 0; i < 8; ++i)
        (i < 4 ? gone : kept).append(libraryPicture(2000 + i, 100 * kMega));
    prepare(kept + gone);
    start();
    ASSERT_TRUE(eventually([&] { return left() == ids(kept); })) << qPrintable(left().join(u'\n'));
    EXPECT_TRUE(eventually([&] { return QDir(originals()).count() == 2 + 6; }));
    for (const ScreenshotRecord& record : gone)
        EXPECT_FALSE(QFile::exists(record.libraryPath));

    // The library is as large as it may be: with one more picture another one goes.
    writeFile(shots() + QStringLiteral("/Screenshot 1.png"), pngOf(picture(300, 300)));
    EXPECT_TRUE(eventually([&] {
        return library().pictures().size() == 6 && !left().contains(identifierText(kept.at(3).id));
    })) << qPrintable(tessary().output());
    EXPECT_TRUE(left().contains(identifierText(favorite.id)));
    EXPECT_TRUE(left().contains(identifierText(pinned.id)));
    EXPECT_TRUE(library().text(QStringLiteral("an old text")));
    // Whoever reads one after the other may come between two writes.
    EXPECT_TRUE(eventually([&] { return library().searchIds() == library().projectionIds(); }));
    EXPECT_TRUE(eventually([&] { return library().recordIds() == library().projectionIds(); }));
}

} // namespace

} // namespace tessary::testing

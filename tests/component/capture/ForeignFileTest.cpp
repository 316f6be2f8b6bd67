#include "tests/component/capture/ImporterFixture.h"

#include "base/ContentHash.h"
#include "base/FileDescriptor.h"

#include <fcntl.h>

namespace tessary {
namespace {

using Outcome = FileImport::Outcome;

/// Files that others write while we read them, under names that we did not choose.
class ForeignFileTest : public testing::ImporterFixture {
protected:
    QByteArray writeRaw(const QByteArray& name, const QByteArray& bytes) const
    {
        QByteArray path = QFile::encodeName(folder.path()) + '/' + name;
        const FileDescriptor file(::open(path.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        EXPECT_EQ(::write(file.get(), bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
        return path;
    }
};

TEST_F(ForeignFileTest, NamesMayHoldAnyByte)
{
    QList<QByteArray> names{"Screenshot \n\t\"'`$(x)\\ \xf0\x9f\x8e\x89.png", QByteArray(251, 'x') + ".png"};
    for (const int byte : {1, 9, 10, 27, 34, 39, 92, 127, 128, 191, 195, 237, 254, 255})
        names.append("s" + QByteArray(1, static_cast<char>(byte)) + ".png");
    for (const QByteArray& name : names) {
        const QByteArray path = writeRaw(name, name);
        EXPECT_EQ(takeFile(path).import.outcome, Outcome::Added) << path.toPercentEncoding().constData();
        ASSERT_EQ(listed().size(), names.indexOf(name) + 1);
    }
    QStringList filenames;
    for (const ScreenshotRecord& record : listed()) {
        EXPECT_EQ(contentHash(contents(record.libraryPath)), record.contentHash);
        filenames.append(record.filename);
    }
    EXPECT_TRUE(filenames.contains(QString::fromUtf8(names.first())));
    EXPECT_EQ(filenames.filter(QStringLiteral("s\ufffd.png")).size(), 6);
    EXPECT_TRUE(strayFiles().isEmpty()) << "links that stood in for names that are no text";
}

TEST_F(ForeignFileTest, ALinkThatACrashLeftIsSweptAtTheStart)
{
    const ImportJournal journal(paths);
    const QString link = journal.linkTo("/nowhere/\xff.png");
    const QString living = journal.linkTo(QFile::encodeName(write(QStringLiteral("a.png"), "kept")));
    journal.sweepRoot();
    EXPECT_FALSE(QFileInfo(link).isSymLink());
    EXPECT_FALSE(QFileInfo(living).isSymLink());
    EXPECT_EQ(contents(folder.file(QStringLiteral("a.png"))), "kept");
}

TEST_F(ForeignFileTest, TheItemIsWhatTheCopyHoldsHoweverTheFileChangesMeanwhile)
{
    const QString path = write(QStringLiteral("Screenshot.png"), QByteArray(4'000'000, 'x'));
    std::jthread writer([&](const std::stop_token& stop) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::Append | QIODevice::Unbuffered));
        while (!stop.stop_requested()) {
            file.write("more");
            std::this_thread::yield();
        }
    });
    const Date start = clock.now();
    const TakenFile taken = takeFile(QFile::encodeName(path));
    writer = {};
    EXPECT_EQ(taken.import.outcome, Outcome::Added);
    EXPECT_LE(clock.now(), start.addingSeconds(3.1)) << "twelve rounds at most";
    ASSERT_EQ(listed().size(), 1);
    const ScreenshotRecord record = listed().first();
    const QByteArray copy = contents(record.libraryPath);
    EXPECT_EQ(record.contentHash, contentHash(copy));
    EXPECT_EQ(record.fileSize, copy.size());
    EXPECT_NE(takeFile(QFile::encodeName(path)).stamp, taken.stamp) << "so that it is taken again";
    EXPECT_EQ(listed().size(), 2);
}

TEST_F(ForeignFileTest, AFileOfPixelsThatCannotBeReadLeavesNothing)
{
    codec.defaultSize = QSize();
    EXPECT_THROW(takeFile(writeRaw("a\xff.png", "text")), FileError);
    EXPECT_TRUE(filesIn(paths.originals).isEmpty());
    EXPECT_TRUE(filesIn(paths.thumbnails).isEmpty());
    EXPECT_TRUE(strayFiles().isEmpty());
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(ForeignFileTest, WhatWasGivenUpLeavesNothingBehindAfterTheNextStart)
{
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(takeFile(writeRaw("a.png", "pixels"), stop.get_token()), Abandoned);
    (void)run(importer.recover([](Date) { return std::nullopt; }));
    EXPECT_TRUE(filesIn(paths.originals).isEmpty());
    EXPECT_TRUE(strayFiles().isEmpty());
}

} // namespace
} // namespace tessary

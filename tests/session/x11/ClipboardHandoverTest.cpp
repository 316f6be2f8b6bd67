#include "tests/session/x11/PasteboardFixture.h"

#include <QBuffer>
#include <QElapsedTimer>

namespace tessary {
namespace {

using testing::await;
using testing::ChildProcess;
using testing::eventually;
using testing::Requestor;

class ClipboardHandoverTest : public testing::PasteboardFixture {
protected:
    static std::unique_ptr<ChildProcess> keeper(const QStringList& arguments)
    {
        auto program = std::make_unique<ChildProcess>(QStringLiteral(TESSARY_CLIPBOARD_KEEPER), arguments);
        EXPECT_TRUE(program->printed(QStringLiteral("managing"))) << qPrintable(program->output());
        return program;
    }
    std::unique_ptr<ChildProcess> keeper(const char* target)
    {
        return keeper({QLatin1String(target), kept()});
    }
    QString kept() const { return folder.file(QStringLiteral("kept")); }
    QByteArray keptBytes() const
    {
        QFile file(kept());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(ClipboardHandoverTest, WithoutAManagerItEndsAtOnce)
{
    ASSERT_TRUE(write(QStringLiteral("x")));
    QElapsedTimer timer;
    timer.start();
    await(pasteboard->handOver());
    EXPECT_LT(timer.elapsed(), 1000);
}

TEST_F(ClipboardHandoverTest, ALongTextOutlivesUs)
{
    const QString text = QString(20'000'000, u'x') + QStringLiteral("结束");
    const auto manager = keeper("UTF8_STRING");
    ASSERT_TRUE(write(text));
    await(pasteboard->handOver());
    pasteboard.reset();
    EXPECT_TRUE(manager->printed(QStringLiteral("saved 20000006 bytes"))) << qPrintable(manager->output());
    EXPECT_EQ(keptBytes(), text.toUtf8());
}

TEST_F(ClipboardHandoverTest, APictureOutlivesUs)
{
    const QByteArray png = testing::pngOf(testing::picture(1500, 1100));
    const auto manager = keeper("image/png");
    ASSERT_TRUE(writeFile(save("picture.png", png)));
    await(pasteboard->handOver());
    pasteboard.reset();
    EXPECT_EQ(keptBytes(), png);
}

TEST_F(ClipboardHandoverTest, APhotoThatTheManagerWantsAsPngIsMadeInTime)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    testing::picture(3000, 2000).save(&buffer, "JPEG", 90);
    const auto manager = keeper("image/png");
    ASSERT_TRUE(writeFile(save("photo.jpg", buffer.data())));
    await(pasteboard->handOver());
    EXPECT_EQ(QImage::fromData(keptBytes(), "PNG").size(), QSize(3000, 2000));
}

TEST_F(ClipboardHandoverTest, TheManagerOfXfceKeepsWhatWeHad)
{
    ChildProcess manager(QStringLiteral("xfce4-clipman"), {});
    Requestor requestor;
    ASSERT_TRUE(eventually([&] { return requestor.isOwned("CLIPBOARD_MANAGER"); }));
    ASSERT_TRUE(write(QStringLiteral("outlives 我们")));
    await(pasteboard->handOver());
    pasteboard.reset();
    EXPECT_TRUE(eventually([&] { return xclipSelection("clipboard") == "outlives 我们"; }));
}

TEST_F(ClipboardHandoverTest, WhatIsNotOursIsNotHandedOver)
{
    const auto manager = keeper("UTF8_STRING");
    ASSERT_TRUE(write(QStringLiteral("ours")));
    takeAway("clipboard", "theirs");
    await(pasteboard->handOver());
    EXPECT_FALSE(manager->output().contains(QStringLiteral("saved")));
}

TEST_F(ClipboardHandoverTest, AManagerThatHangsIsGivenUpAfterTwoSeconds)
{
    const auto manager = keeper({QStringLiteral("hang")});
    ASSERT_TRUE(write(QStringLiteral("x")));
    QElapsedTimer timer;
    timer.start();
    await(pasteboard->handOver());
    EXPECT_GE(timer.elapsed(), 1900);
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_TRUE(manager->printed(QStringLiteral("asked")));
}

} // namespace
} // namespace tessary

#include "platform/x11/ClipboardOffer.h"

#include "tests/support/TemporaryFolder.h"

#include <QFile>

#include <gtest/gtest.h>

namespace tessary {
namespace {

QByteArray bytesOf(const ClipboardOffer& offer, const QByteArray& target)
{
    const auto form = offer.form(target);
    return form && form->bytes ? form->bytes->read(0, form->bytes->size()) : QByteArray("nothing");
}

class ClipboardOfferTest : public ::testing::Test {
protected:
    std::shared_ptr<const ClipboardOffer> picture(const QByteArray& bytes)
    {
        QFile file(folder.file(QStringLiteral("picture")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        return ClipboardOffer::image(PictureFile::open(file.fileName()));
    }
    testing::TemporaryFolder folder;
};

TEST_F(ClipboardOfferTest, ATextIsOfferedInUtf8FirstAndInLatin1ForOldPrograms)
{
    const auto offer = ClipboardOffer::text(QStringLiteral("é世").toUtf8());
    EXPECT_EQ(offer->targets().first(), "UTF8_STRING");
    EXPECT_EQ(bytesOf(*offer, "text/plain"), QStringLiteral("é世").toUtf8());
    EXPECT_EQ(bytesOf(*offer, "STRING"), QByteArray("\xe9?"));
    EXPECT_EQ(offer->form("STRING")->type, "STRING");
    EXPECT_FALSE(offer->form("image/png"));
}

TEST_F(ClipboardOfferTest, WhoLeavesTheEncodingToUsIsToldWhichItIs)
{
    EXPECT_EQ(ClipboardOffer::text("plain")->form("TEXT")->type, "STRING");
    EXPECT_EQ(ClipboardOffer::text("\xc3\xa9")->form("TEXT")->type, "UTF8_STRING");
}

TEST_F(ClipboardOfferTest, APngNeedsNoOtherForm)
{
    const QByteArray png("\x89PNG\r\n\x1a\nrest");
    const auto offer = picture(png);
    EXPECT_EQ(offer->targets(), QList<QByteArray>{"image/png"});
    EXPECT_EQ(bytesOf(*offer, "image/png"), png);
    EXPECT_EQ(offer->utf8(), std::nullopt);
}

TEST_F(ClipboardOfferTest, AnotherPictureIsOfferedAsItIsAndAsAPngToBeMade)
{
    const auto offer = picture("\xff\xd8\xff jpeg");
    EXPECT_EQ(offer->targets(), (QList<QByteArray>{"image/jpeg", "image/png"}));
    EXPECT_EQ(bytesOf(*offer, "image/jpeg"), "\xff\xd8\xff jpeg");
    ASSERT_TRUE(offer->form("image/png"));
    EXPECT_FALSE(offer->form("image/png")->bytes);
}

TEST_F(ClipboardOfferTest, AFileIsKnownByItsFirstBytes)
{
    EXPECT_EQ(pictureMimeType(QByteArrayView("II*\0", 4)), "image/tiff");
    EXPECT_EQ(pictureMimeType(QByteArrayView("MM\0*", 4)), "image/tiff");
    EXPECT_EQ(pictureMimeType(QByteArrayView("\0\0\0\x18"
                                             "ftypheic",
                                             12)),
              "image/heic");
    EXPECT_EQ(pictureMimeType(QByteArrayView("\0\0\0\x18"
                                             "ftypmp42",
                                             12)),
              "");
    EXPECT_EQ(pictureMimeType("GIF89a"), "");
    EXPECT_EQ(pictureMimeType(""), "");
}

TEST_F(ClipboardOfferTest, AFileThatShrankYieldsNothingInsteadOfAPart)
{
    const auto offer = picture(QByteArray("\x89PNG\r\n\x1a\n") + QByteArray(1000, 'x'));
    QFile::resize(folder.file(QStringLiteral("picture")), 100);
    EXPECT_EQ(bytesOf(*offer, "image/png"), "");
}

TEST_F(ClipboardOfferTest, WhatIsNoRegularFileIsNotOpened)
{
    EXPECT_EQ(PictureFile::open(folder.path()), nullptr);
    EXPECT_EQ(PictureFile::open(QStringLiteral("/dev/zero")), nullptr);
    EXPECT_EQ(PictureFile::open(folder.file(QStringLiteral("none"))), nullptr);
}

} // namespace
} // namespace tessary

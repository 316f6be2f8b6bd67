#include "workers/recognizer/LineFinder.h"
#include "workers/recognizer/ReadingOrder.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace tessary::recognizer {
namespace {

/// A picture with rows of strokes that stand for letters.
class Sheet {
public:
    Sheet(int width, int height, QColor colour = Qt::white) : m_image(width, height, QImage::Format_RGB32)
    {
        m_image.fill(colour);
    }
    /// Letters of two uprights and a bar, 10 wide and 14 high, one every 14 pixels.
    void write(QPoint at, int letters, QColor colour)
    {
        QPainter painter(&m_image);
        for (int i = 0; i < letters; ++i) {
            const QPoint corner = at + QPoint(14 * i, 0);
            painter.fillRect(QRect(corner, QSize(2, 14)), colour);
            painter.fillRect(QRect(corner + QPoint(8, 0), QSize(2, 14)), colour);
            painter.fillRect(QRect(corner + QPoint(0, 6), QSize(10, 2)), colour);
        }
    }
    void fill(QRect area, QColor colour) { QPainter(&m_image).fillRect(area, colour); }
    void disc(QRect area, QColor colour)
    {
        QPainter painter(&m_image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawEllipse(area);
    }
    [[nodiscard]] std::vector<TextLine> lines() const
    {
        std::vector<TextLine> found = findLines(
            {reinterpret_cast<const quint32*>(m_image.constBits()), m_image.width(), m_image.height()});
        sortForReading(found);
        return found;
    }

private:
    QImage m_image;
};

/// Whether a box is that one but for the pixel that edges take on each side.
::testing::AssertionResult isAbout(const QRect& found, const QRect& expected)
{
    if (found.adjusted(-2, -2, 2, 2).contains(expected) && expected.adjusted(-2, -2, 2, 2).contains(found))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << found.x() << ',' << found.y() << ' ' << found.width() << 'x' << found.height();
}

TEST(LineFinderTest, FindsNothingInAPlainPicture)
{
    EXPECT_TRUE(Sheet(300, 200).lines().empty());
    EXPECT_TRUE(Sheet(1, 1).lines().empty());
    EXPECT_TRUE(Sheet(300, 1).lines().empty());
    EXPECT_TRUE(Sheet(1, 300).lines().empty());
}

TEST(LineFinderTest, FindsLinesWhateverIsLighter)
{
    Sheet sheet(400, 120);
    sheet.write({20, 20}, 12, Qt::black);
    sheet.fill({0, 60, 400, 60}, QColor(20, 30, 90));
    sheet.write({20, 80}, 8, QColor(200, 200, 210));
    const auto lines = sheet.lines();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(isAbout(lines[0].box, {20, 20, 14 * 12 - 4, 14}));
    EXPECT_TRUE(isAbout(lines[1].box, {20, 80, 14 * 8 - 4, 14}));
}

TEST(LineFinderTest, LeavesFramesAndRulesOut)
{
    Sheet sheet(400, 120);
    sheet.fill({10, 10, 300, 60}, Qt::gray);
    sheet.fill({12, 12, 296, 56}, Qt::white);
    sheet.fill({0, 100, 400, 2}, Qt::black);
    sheet.write({40, 32}, 10, Qt::black);
    const auto lines = sheet.lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(isAbout(lines[0].box, {40, 32, 14 * 10 - 4, 14}));
}

TEST(LineFinderTest, TellsLinesApartThatTouch)
{
    Sheet sheet(400, 120);
    sheet.write({20, 20}, 16, Qt::black);
    sheet.write({20, 36}, 16, Qt::black);
    sheet.fill({22 + 14 * 5, 30, 2, 10}, Qt::black); // a tail that reaches into the line below
    EXPECT_EQ(sheet.lines().size(), 2U);
}

TEST(LineFinderTest, KeepsColumnsThatAreFarApartAsLinesOfTheirOwn)
{
    Sheet sheet(600, 60);
    sheet.write({20, 20}, 8, Qt::black);
    sheet.write({300, 20}, 8, Qt::black);
    EXPECT_EQ(sheet.lines().size(), 2U);
}

TEST(LineFinderTest, DoesNotTakeAFilledIconIntoALine)
{
    Sheet sheet(400, 80);
    sheet.disc({10, 22, 34, 34}, QColor(180, 60, 60));
    sheet.write({56, 32}, 14, Qt::black);
    const auto lines = sheet.lines();
    const auto text =
        std::find_if(lines.begin(), lines.end(), [](const TextLine& line) { return !line.maybeIcon; });
    ASSERT_NE(text, lines.end());
    EXPECT_TRUE(isAbout(text->box, {56, 32, 14 * 14 - 4, 14}));
}

TEST(LineFinderTest, TakesAPointIntoItsLine)
{
    Sheet sheet(400, 80);
    sheet.write({20, 32}, 10, Qt::black);
    sheet.fill({20 + 14 * 10, 43, 3, 3}, Qt::black);
    const auto lines = sheet.lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(isAbout(lines[0].box, {20, 32, 14 * 10 + 3, 14}));
}

} // namespace
} // namespace tessary::recognizer

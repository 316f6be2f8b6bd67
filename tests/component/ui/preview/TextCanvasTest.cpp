#include "ui/preview/TextCanvas.h"

#include "tests/support/Await.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/TextPage.h"

#include <QTextDocumentFragment>
#include <QWheelEvent>

namespace tessary {
namespace {

using testing::eventually;

class TextCanvasTest : public ::testing::Test {
protected:
    TextCanvasTest()
    {
        canvas.resize(1200, 560);
        canvas.show();
    }
    QTextEdit& view() { return canvas.page().view(); }

    Theme theme;
    TextCanvas canvas{theme};
};

TEST_F(TextCanvasTest, LineBreaksAreKeptAndTheTextCanBeSelected)
{
    const QString text = QStringLiteral("一\n\n二\tthree\n  four");
    canvas.setText(text, false);
    EXPECT_EQ(canvas.page().shownText(), text);
    view().selectAll();
    EXPECT_EQ(view().textCursor().selection().toPlainText(), text);
    EXPECT_TRUE(view().isReadOnly());
}

TEST_F(TextCanvasTest, AWideCanvasCentresAColumnOf52Characters)
{
    canvas.setText(QStringLiteral("汉").repeated(200), false);
    EXPECT_EQ(canvas.page().card().width(), 52 * 14 + 2 * 28);
    EXPECT_NEAR(canvas.page().card().center().x(), canvas.rect().center().x(), 1);
    canvas.resize(500, 560);
    EXPECT_EQ(canvas.page().card().width(), 500 - 2 * 24);
}

TEST_F(TextCanvasTest, CodeHasLettersOfOneWidth)
{
    canvas.setText(QStringLiteral("int main()\n{\n    return 0;\n}\n"), false);
    EXPECT_TRUE(canvas.page().look().isCode);
    EXPECT_TRUE(view().font().families().contains(QStringLiteral("monospace")));
    canvas.setText(QStringLiteral("Dear all, nothing to see here."), false);
    EXPECT_FALSE(canvas.page().look().isCode);
}

TEST_F(TextCanvasTest, ZoomingScalesTheLetters)
{
    canvas.setText(QStringLiteral("text"), false);
    EXPECT_EQ(view().font().pixelSize(), 14);
    canvas.setScale(2);
    EXPECT_EQ(view().font().pixelSize(), 28);
    theme.setTextScale(2);
    EXPECT_EQ(view().font().pixelSize(), 56);
    EXPECT_EQ(canvas.page().shownText(), QStringLiteral("text"));
}

TEST_F(TextCanvasTest, CtrlAndWheelZoomThroughTheCanvas)
{
    canvas.setText(QStringLiteral("text"), false);
    const QPointF at(20, 20);
    QWheelEvent event(at, view().viewport()->mapToGlobal(at), {}, QPoint(0, 120), Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view().viewport(), &event);
    EXPECT_EQ(canvas.scale(), 1.2);
}

TEST_F(TextCanvasTest, OfAHugeTextTheBeginningIsShownAndItSaysSo)
{
    const QString text = QStringLiteral("一行文字\n").repeated(100'000);
    canvas.setText(text, false);
    ASSERT_TRUE(
        eventually([&] { return canvas.page().shownText().contains(QStringLiteral("复制和导出时为全文")); }));
    EXPECT_LT(canvas.page().shownText().size(), TextCanvas::kMostText + 100);
}

TEST_F(TextCanvasTest, ATextThatEndsInTheMiddleOfACharacterIsCutBeforeIt)
{
    canvas.setText(QStringLiteral("a") + QStringLiteral("😀").repeated(TextCanvas::kMostText), false);
    ASSERT_TRUE(eventually([&] { return canvas.page().shownText().contains(QStringLiteral("全文")); }));
    EXPECT_TRUE(canvas.page().shownText().isValidUtf16());
}

} // namespace
} // namespace tessary

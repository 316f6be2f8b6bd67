#include "ui/kit/AsyncFileImage.h"

#include "platform/testing/FakeImageCodec.h"
#include "tests/support/Await.h"

#include <QSignalSpy>

namespace tessary {
namespace {

using namespace testing;
using State = AsyncFileImage::State;

class AsyncFileImageTest : public ::testing::Test {
protected:
    AsyncFileImageTest()
    {
        m_codec.defaultSize = QSize(80, 40);
        m_view = std::make_unique<AsyncFileImage>(
            [this](QString path, int size) { return m_codec.decode(std::move(path), size); });
        m_view->resize(60, 60);
        m_view->setPlaceholderSystemImage(QStringLiteral("photo"));
        m_view->setPlaceholderColour(Qt::magenta);
    }
    [[nodiscard]] AsyncFileImage& view() { return *m_view; }
    [[nodiscard]] bool reaches(State state)
    {
        return eventually([&] { return view().state() == state; });
    }
    [[nodiscard]] int pixelsOf(const QColor& colour)
    {
        const QImage picture = view().grab().toImage();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixelColor(x, y) == colour;
        return count;
    }

    FakeImageCodec m_codec;
    std::unique_ptr<AsyncFileImage> m_view;
};

TEST_F(AsyncFileImageTest, ShowsThePictureFittedAndCentred)
{
    view().setSource(QStringLiteral("/a.png"), 100);
    EXPECT_TRUE(m_codec.requests.isEmpty()) << "nothing is loaded before it is seen";
    view().show();
    EXPECT_EQ(view().state(), State::Loading);
    ASSERT_TRUE(reaches(State::Shown));
    EXPECT_EQ(view().imageRect(), QRect(0, 15, 60, 30));
    EXPECT_GE(pixelsOf(Qt::red), 60 * 28);
}

TEST_F(AsyncFileImageTest, NeverEnlargesThePicture)
{
    m_codec.defaultSize = QSize(20, 10);
    view().setSource(QStringLiteral("/a.png"), 100);
    view().show();
    ASSERT_TRUE(reaches(State::Shown));
    EXPECT_EQ(view().imageRect().size(), QSize(20, 10));
}

TEST_F(AsyncFileImageTest, ShowsThePlaceholderWhenNoImageCanBeHad)
{
    m_codec.decodeFailure = ImageError::Case::NotAnImage;
    view().setSource(QStringLiteral("/a.png"), 100);
    view().show();
    ASSERT_TRUE(reaches(State::Unavailable));
    EXPECT_GT(pixelsOf(Qt::magenta), 20);
}

TEST_F(AsyncFileImageTest, ShowsThePlaceholderWithoutAPath)
{
    view().show();
    EXPECT_EQ(view().state(), State::Unavailable);
    EXPECT_TRUE(m_codec.requests.isEmpty());
}

TEST_F(AsyncFileImageTest, ShowsProgressOnlyAfterAWhileAndStopsWithTheAnswer)
{
    m_codec.gate.close();
    view().setSource(QStringLiteral("/a.png"), 100);
    view().show();
    EXPECT_FALSE(view().isProgressVisible());
    EXPECT_TRUE(eventually([&] { return view().isProgressVisible(); }));
    m_codec.gate.open();
    ASSERT_TRUE(reaches(State::Shown));
    EXPECT_FALSE(view().isProgressVisible());
}

TEST_F(AsyncFileImageTest, DropsTheAnswerForAnEarlierPath)
{
    m_codec.gate.close();
    m_codec.sizes.insert(QStringLiteral("/new.png"), QSize(10, 10));
    view().setSource(QStringLiteral("/old.png"), 100);
    view().show();
    ASSERT_TRUE(eventually([&] { return m_codec.gate.waitingCount() == 1; }));
    view().setSource(QStringLiteral("/new.png"), 100);
    ASSERT_TRUE(eventually([&] { return m_codec.gate.waitingCount() == 2; }));
    QSignalSpy states(&view(), &AsyncFileImage::stateChanged);
    m_codec.gate.open();
    ASSERT_TRUE(reaches(State::Shown));
    EXPECT_EQ(view().image().size(), QSize(10, 10));
    EXPECT_EQ(states.size(), 1);
}

TEST_F(AsyncFileImageTest, LoadsAgainForAnotherSizeButNotForTheSame)
{
    view().setSource(QStringLiteral("/a.png"), 100);
    view().show();
    ASSERT_TRUE(reaches(State::Shown));
    view().setSource(QStringLiteral("/a.png"), 100);
    EXPECT_EQ(view().state(), State::Shown);
    view().setSource(QStringLiteral("/a.png"), 50);
    ASSERT_TRUE(reaches(State::Shown));
    EXPECT_EQ(view().image().width(), 50);
    EXPECT_EQ(m_codec.requests.size(), 2);
}

TEST_F(AsyncFileImageTest, ForgetsWhatIsLoadingWhenHiddenAndStartsAgainWhenShown)
{
    m_codec.gate.close();
    view().setSource(QStringLiteral("/a.png"), 100);
    view().show();
    ASSERT_TRUE(eventually([&] { return m_codec.gate.waitingCount() == 1; }));
    view().hide();
    EXPECT_EQ(view().state(), State::Idle);
    m_codec.gate.open();
    EXPECT_EQ(view().state(), State::Idle);
    view().show();
    ASSERT_TRUE(reaches(State::Shown));
    EXPECT_EQ(m_codec.requests.size(), 2);
}

TEST_F(AsyncFileImageTest, MayGoAwayWhileItLoads)
{
    m_codec.gate.close();
    view().setSource(QStringLiteral("/a.png"), 100);
    view().show();
    ASSERT_TRUE(eventually([&] { return m_codec.gate.waitingCount() == 1; }));
    m_view.reset();
    m_codec.gate.open();
    EXPECT_EQ(m_codec.gate.waitingCount(), 0);
}

} // namespace
} // namespace tessary

#include "tests/session/SessionTest.h"
#include "tests/session/TestPictures.h"

#include <QElapsedTimer>

#include <csignal>

namespace tessary::testing {

namespace {

/// Programs that own the clipboard and do not answer as they should. Each may cost one missed item.
class HostileOwnerTest : public SessionTest {
protected:
    void SetUp() override { start(); }

    /// The most memory that the program has had, in MB.
    [[nodiscard]] qint64 peakMegabytes()
    {
        const QByteArray status = readFile(QStringLiteral("/proc/%1/status").arg(tessary().processId()));
        const qsizetype at = status.indexOf("VmHWM:");
        EXPECT_GE(at, 0);
        return status.mid(at + 6).simplified().split(' ').front().toLongLong() / 1024;
    }
};

TEST_F(HostileOwnerTest, AStoppedOwnerDoesNotHoldUpLaterCopies)
{
    ChildProcess& stopped = own({QStringLiteral("--offer"), QStringLiteral("UTF8_STRING=text:never served"),
                                 QStringLiteral("--stops"), QStringLiteral("yes")});
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(keepsCopying());
    EXPECT_LT(timer.elapsed(), 6000) << "2 s without progress are enough to give up";
    EXPECT_TRUE(holds(1));
    stopped.kill(SIGCONT);
}

TEST_F(HostileOwnerTest, AnOwnerStoppedForGoodDoesNotKeepTheProgramFromQuitting)
{
    own({QStringLiteral("--offer"), QStringLiteral("UTF8_STRING=text:never served"),
         QStringLiteral("--stops"), QStringLiteral("yes")});
    QElapsedTimer timer;
    timer.start();
    quit();
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST_F(HostileOwnerTest, AnOwnerThatDiesInTheMiddleLeavesNothingHalf)
{
    ChildProcess& dying = own({QStringLiteral("--offer"), QStringLiteral("UTF8_STRING=size:5000000"),
                               QStringLiteral("--die-after"), QStringLiteral("3")});
    EXPECT_EQ(dying.exitCode(), 3) << "nobody asked for the text";
    EXPECT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(1));
}

TEST_F(HostileOwnerTest, AnOwnerThatDiesInTheMiddleOfAPictureLeavesNothingHalf)
{
    const QString path = scratch(QStringLiteral("noise.png"));
    QByteArray png = pngOf(picture(600, 400));
    png.append(QByteArray(2'000'000, 'n')); // large enough for many pieces
    writeFile(path, png);
    ChildProcess& dying = own({QStringLiteral("--offer"), QStringLiteral("image/png=file:") + path,
                               QStringLiteral("--die-after"), QStringLiteral("5")});
    EXPECT_EQ(dying.exitCode(), 3);
    EXPECT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(1));
}

TEST_F(HostileOwnerTest, AnAnnouncementOfTwoGigabytesIsNotBelieved)
{
    own({QStringLiteral("--offer"), QStringLiteral("UTF8_STRING=size:1000000"), QStringLiteral("--announce"),
         QStringLiteral("2147483648"), QStringLiteral("--stall-after"), QStringLiteral("2")});
    EXPECT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(1));
    RecordProperty("peak_megabytes", static_cast<int>(peakMegabytes()));
    EXPECT_LT(peakMegabytes(), 500);
}

TEST_F(HostileOwnerTest, AnOwnerThatOffersNothingItServesCostsNothing)
{
    ownForAWhile({QStringLiteral("--announce"), QStringLiteral("4000000000"), QStringLiteral("--offer"),
                  QStringLiteral("image/png=text:")});
    EXPECT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(1));
}

} // namespace

} // namespace tessary::testing

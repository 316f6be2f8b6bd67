#include "tests/session/SessionTest.h"

namespace tessary::testing {

namespace {

class PrivacyTest : public SessionTest {
protected:
    void SetUp() override { start(); }

    /// The password is nowhere in what the program wrote, while an ordinary copy is.
    void expectKeptOut(const QByteArray& password)
    {
        ASSERT_TRUE(keepsCopying());
        EXPECT_TRUE(holds(1));
        EXPECT_TRUE(filesHolding(password, scratch(QString())).isEmpty());
        EXPECT_FALSE(filesHolding("marker 1", root()).isEmpty()) << "the search would find nothing";
        EXPECT_FALSE(tessary().output().contains(QString::fromUtf8(password)));
        quit();
        EXPECT_TRUE(filesHolding(password, scratch(QString())).isEmpty());
    }
};

TEST_F(PrivacyTest, AHintedPasswordIsInNoByteOfTheLibrary)
{
    ownForAWhile({QStringLiteral("--offer"), QStringLiteral("UTF8_STRING=text:correct-horse-7319"),
                  QStringLiteral("--offer"), QStringLiteral("x-kde-passwordManagerHint=text:secret")});
    expectKeptOut("correct-horse-7319");
}

TEST_F(PrivacyTest, AHintedPasswordOfAGtkProgramIsInNoByteOfTheLibrary)
{
    ChildProcess& manager =
        gtk({QStringLiteral("--offer"), QStringLiteral("x-kde-passwordManagerHint=text:secret"),
             QStringLiteral("--offer"), QStringLiteral("UTF8_STRING=text:battery-staple-2204"),
             QStringLiteral("--quit-after"), QStringLiteral("1000")});
    EXPECT_EQ(manager.exitCode(), 0);
    expectKeptOut("battery-staple-2204");
}

} // namespace

} // namespace tessary::testing

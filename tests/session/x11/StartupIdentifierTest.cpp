#include "platform/x11/StartupIdentifier.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(StartupIdentifier, CarriesTheServersTimeAndIsNeverTheSame)
{
    const QRegularExpression form(QStringLiteral("^tessary-\\d+-(\\d+)_TIME([1-9]\\d*)$"));
    const QRegularExpressionMatch first = form.match(x11StartupIdentifier());
    const QRegularExpressionMatch second = form.match(x11StartupIdentifier());
    ASSERT_TRUE(first.hasMatch());
    ASSERT_TRUE(second.hasMatch());
    EXPECT_NE(first.captured(1), second.captured(1));
    EXPECT_LE(first.captured(2).toUInt(), second.captured(2).toUInt());
}

TEST(StartupIdentifier, IsEmptyWithoutAServer)
{
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4000000");
    EXPECT_EQ(x11StartupIdentifier(), QString());
    qputenv("DISPLAY", display);
}

} // namespace
} // namespace tessary

#include "base/Date.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(DateTest, ComparesByTheVeryDouble)
{
    const Date early{1772701623.25};
    EXPECT_EQ(early, Date{1772701623.25});
    EXPECT_LT(early, early.addingSeconds(0.001));
}

TEST(DateTest, ConvertsToLocalTimeAndBack)
{
    const QDateTime time(QDate(2026, 3, 5), QTime(9, 7, 3, 125));
    EXPECT_EQ(Date::fromDateTime(time).toDateTime(), time);
}

} // namespace
} // namespace tessary

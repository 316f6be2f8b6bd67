#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(CommandLineTest, WithoutWordsStartsTheProgram)
{
    EXPECT_EQ(CommandLine::parse({}).request, CommandLine::Request::Run);
}

TEST(CommandLineTest, AnswersForVersionAndHelp)
{
    EXPECT_EQ(CommandLine::parse({QStringLiteral("--version")}).request, CommandLine::Request::ShowVersion);
    EXPECT_EQ(CommandLine::parse({QStringLiteral("-h")}).request, CommandLine::Request::ShowHelp);
    EXPECT_TRUE(CommandLine::versionText().startsWith(QStringLiteral("tessary ")));
    EXPECT_TRUE(CommandLine::helpText().contains(QStringLiteral("--version")));
}

TEST(CommandLineTest, NamesTheWordItDoesNotKnow)
{
    const CommandLine line = CommandLine::parse({QStringLiteral("--frobnicate")});
    EXPECT_EQ(line.request, CommandLine::Request::Misuse);
    EXPECT_TRUE(line.complaint.contains(QStringLiteral("--frobnicate")));
}

} // namespace
} // namespace tessary

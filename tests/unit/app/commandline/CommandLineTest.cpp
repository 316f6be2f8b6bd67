#include "app/commandline/CommandLine.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

using Request = CommandLine::Request;

TEST(CommandLineTest, WithoutWordsStartsTheProgram)
{
    EXPECT_EQ(CommandLine::parse({}).request, Request::Run);
    EXPECT_EQ(CommandLine::parse({"--background"}).request, Request::RunUnnoticed);
}

TEST(CommandLineTest, AnswersForVersionAndHelp)
{
    EXPECT_EQ(CommandLine::parse({"--version"}).request, Request::ShowVersion);
    EXPECT_EQ(CommandLine::parse({"-h"}).request, Request::ShowHelp);
    EXPECT_TRUE(CommandLine::versionText().startsWith(QStringLiteral("tessary ")));
    EXPECT_TRUE(CommandLine::helpText().contains(QStringLiteral("--version")));
}

TEST(CommandLineTest, NamesTheWordItDoesNotKnow)
{
    for (const char* word : {"--frobnicate", "frobnicate", "--background=1"}) {
        const CommandLine line = CommandLine::parse({word});
        EXPECT_EQ(line.request, Request::Misuse) << word;
        EXPECT_TRUE(line.complaint.contains(QLatin1String(word))) << word;
    }
    EXPECT_EQ(CommandLine::parse({"--background", "toggle"}).request, Request::Misuse);
}

TEST(CommandLineTest, EveryVerbIsListedAndExplained)
{
    for (const Verb& verb : allVerbs()) {
        const QString word = QLatin1String(verb.word);
        EXPECT_TRUE(CommandLine::helpText().contains(QStringLiteral("\n  ") + word + QLatin1Char(' ')))
            << verb.word;
        const CommandLine line = CommandLine::parse({verb.word, "--help"});
        EXPECT_EQ(line.request, Request::ShowHelp) << verb.word;
        ASSERT_NE(line.verb, nullptr) << verb.word;
        EXPECT_TRUE(helpText(*line.verb).startsWith(QStringLiteral("Usage: tessary ") + word)) << verb.word;
        for (const QString& shown : helpText(*line.verb).split(QLatin1Char('\n')))
            EXPECT_LE(shown.size(), 100) << qPrintable(shown);
    }
}

TEST(CommandLineTest, TakesOptionsBetweenOperandsAndStopsAtTwoDashes)
{
    const CommandLine line = CommandLine::parse(
        {"search", "red", "--limit", "5", "car", "--json", "--scope=trash", "--", "--sort"});
    ASSERT_EQ(line.request, Request::Perform);
    EXPECT_EQ(line.verb->name, Verb::Name::Search);
    EXPECT_EQ(line.operands, (QByteArrayList{"red", "car", "--sort"}));
    EXPECT_EQ(line.options.value("limit"), "5");
    EXPECT_EQ(line.options.value("scope"), "trash");
    EXPECT_TRUE(line.options.contains("json"));
    EXPECT_FALSE(line.options.contains("sort"));
}

TEST(CommandLineTest, KeepsTheBytesOfFileNames)
{
    const QByteArray name("Screenshot \xff\n.png");
    EXPECT_EQ(CommandLine::parse({"import", name}).operands, QByteArrayList{name});
}

TEST(CommandLineTest, ComplainsInOneLineThatNamesTheVerb)
{
    const QList<QByteArrayList> misuses{
        {"search", "--foo"}, {"search", "--limit"},
        {"toggle", "now"},   {"tag"},
        {"note", "ID"},      {"show"},
        {"show", "A", "B"},  {"export"},
        {"purge", "x"},      {"watch", "--json"},
    };
    for (const QByteArrayList& words : misuses) {
        const CommandLine line = CommandLine::parse(words);
        EXPECT_EQ(line.request, Request::Misuse) << words.join(' ').constData();
        EXPECT_TRUE(line.complaint.startsWith(QStringLiteral("tessary: ") + QLatin1String(words.first())));
        EXPECT_FALSE(line.complaint.contains(QLatin1Char('\n')));
    }
}

} // namespace
} // namespace tessary

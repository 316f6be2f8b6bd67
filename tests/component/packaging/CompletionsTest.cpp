#include "app/commandline/Verb.h"
#include "search/ScreenshotScope.h"
#include "search/ScreenshotSort.h"
#include "tests/component/packaging/PackagingFixture.h"
#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QRegularExpression>

namespace tessary::testing {
namespace {

QStringList sorted(QStringList words)
{
    words.sort();
    return words;
}

QStringList scopes()
{
    QStringList values;
    for (const ScreenshotScope scope : kScreenshotScopes)
        values.append(rawValue(scope));
    return sorted(values);
}

QStringList sorts()
{
    QStringList values;
    for (const ScreenshotSort sort : kScreenshotSorts)
        values.append(rawValue(sort));
    return sorted(values);
}

QStringList verbs()
{
    QStringList words;
    for (const Verb& verb : allVerbs())
        words.append(QLatin1String(verb.word));
    return sorted(words);
}

/// The long options of a verb, with their dashes.
QStringList optionsOf(const Verb& verb)
{
    QStringList options{QStringLiteral("--help")};
    for (const VerbOption* option : verb.options) {
        if (option != nullptr)
            options.append(QStringLiteral("--") + QLatin1String(option->name));
    }
    return sorted(options);
}

QStringList lines(const ProgramResult& result)
{
    EXPECT_EQ(result.exitStatus, 0) << qPrintable(result.output);
    return sorted(result.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts));
}

/// What a shell offers instead of the last word of a command line. A program called `tessary` stands first
/// in its path and betrays that it was run.
class CompletionsTest : public ::testing::TestWithParam<const char*> {
protected:
    CompletionsTest()
    {
        EXPECT_TRUE(QDir(m_folder.path()).mkpath(QStringLiteral("bin")));
        EXPECT_TRUE(QDir(m_folder.path()).mkpath(QStringLiteral("files/folder with blanks")));
        QFile picture(m_folder.file(QStringLiteral("files/a picture.png")));
        EXPECT_TRUE(picture.open(QIODevice::WriteOnly));
        QFile program(m_folder.file(QStringLiteral("bin/tessary")));
        EXPECT_TRUE(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\n>'" + m_folder.file(QStringLiteral("was run")).toUtf8() + "'\n");
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    ~CompletionsTest() override { EXPECT_FALSE(QFile::exists(m_folder.file(QStringLiteral("was run")))); }

    /// @param words after the program's name; the last is completed.
    [[nodiscard]] QStringList offered(const QStringList& words) const
    {
        const QString surroundings =
            QStringLiteral("cd '%1/files'; PATH='%1/bin':$PATH; ").arg(m_folder.path());
        if (QLatin1String(GetParam()) == QLatin1String("bash"))
            return lines(runProgram(
                QStringLiteral("bash"),
                QStringList{QStringLiteral("--norc"), QStringLiteral("-c"),
                            surroundings +
                                QStringLiteral("source \"$0\"; COMP_WORDS=(tessary \"$@\"); COMP_CWORD=$#; "
                                               "_tessary; printf '%s\\n' \"${COMPREPLY[@]%/}\""),
                            sourcePath("completions/tessary.bash")} +
                    words));
        QStringList found = lines(runProgram(
            QStringLiteral("fish"),
            {QStringLiteral("--no-config"), QStringLiteral("-c"),
             QStringLiteral("cd '%1/files'; set -p PATH '%1/bin'; source '%2'; complete -C 'tessary %3'")
                 .arg(m_folder.path(), sourcePath("completions/tessary.fish"),
                      words.join(QLatin1Char(' ')))}));
        for (QString& line : found) {
            line = line.section(QLatin1Char('\t'), 0, 0);
            line.remove(QLatin1Char('\\'));
            if (line.endsWith(QLatin1Char('/')))
                line.chop(1);
        }
        return sorted(found);
    }
    [[nodiscard]] static QStringList w(const char* words)
    {
        return QString::fromLatin1(words).split(QLatin1Char(' '));
    }

private:
    TemporaryFolder m_folder;
};

TEST_P(CompletionsTest, EachVerbIsOfferedAsTheFirstWord)
{
    EXPECT_EQ(offered(w("-")).filter(QStringLiteral("--")), w("--background --help --version"));
    QStringList first = offered(w(""));
    first.removeIf([](const QString& word) { return word.startsWith(QLatin1Char('-')); });
    EXPECT_EQ(first, verbs());
    EXPECT_EQ(offered(w("tog")), w("toggle"));
}

TEST_P(CompletionsTest, EachScopeAndOrderIsOfferedWhereItIsAskedFor)
{
    EXPECT_EQ(offered(w("search --scope ")), scopes());
    EXPECT_EQ(offered(w("search word --sort ")), sorts());
    EXPECT_EQ(offered(w("search --limit ")), QStringList());
}

TEST_P(CompletionsTest, OptionsAreThoseOfTheVerb)
{
    for (const Verb& verb : allVerbs())
        EXPECT_EQ(offered({QLatin1String(verb.word), QStringLiteral("--")}), optionsOf(verb)) << verb.word;
    EXPECT_EQ(offered(w("status --j")), w("--json"));
    EXPECT_EQ(offered(w("tag ID search --")), w("--help")) << "a tag that is called like a verb";
}

TEST_P(CompletionsTest, FileNamesAreOfferedWhereThereAreFilesOnly)
{
    const QStringList all{QStringLiteral("a picture.png"), QStringLiteral("folder with blanks")};
    EXPECT_EQ(offered(w("import ")), all);
    EXPECT_EQ(offered(w("show ID --output ")), all);
    EXPECT_EQ(offered(w("export ")), all.mid(1));
    EXPECT_EQ(offered(w("restore ")), all.mid(1));
    for (const char* verb : {"copy ", "note ", "tag ", "trash ", "toggle ", "search "})
        EXPECT_EQ(offered(w(verb)), QStringList()) << verb;
}

INSTANTIATE_TEST_SUITE_P(Shells, CompletionsTest, ::testing::Values("bash", "fish"),
                         [](const auto& shell) { return std::string(shell.param); });

TEST(ManualTest, ItExplainsEachVerbWithItsOptionsAndValues)
{
    const ProgramResult page =
        runProgram(QStringLiteral("mandoc"),
                   {QStringLiteral("-Tutf8"), QStringLiteral("-Owidth=1000"), sourcePath("tessary.1.in")});
    static const QRegularExpression overstrike(QStringLiteral(".\\x08"));
    const QString text = QString(page.output).remove(overstrike);
    for (const Verb& verb : allVerbs()) {
        const QRegularExpression heading(QStringLiteral("^ *tessary %1\\b.*$").arg(QLatin1String(verb.word)),
                                         QRegularExpression::MultilineOption);
        const QString line = heading.match(text).captured();
        EXPECT_FALSE(line.isEmpty()) << verb.word;
        for (const QString& option : optionsOf(verb))
            EXPECT_TRUE(option == QLatin1String("--help") || line.contains(option))
                << verb.word << qPrintable(option);
    }
    for (const QString& value : scopes() + sorts())
        EXPECT_TRUE(text.contains(value)) << qPrintable(value);
}

TEST(ZshCompletionTest, ItIsWellFormedAndKnowsTheSameWords)
{
    const QString path = sourcePath("completions/_tessary");
    const ProgramResult syntax = runProgram(QStringLiteral("zsh"), {QStringLiteral("-n"), path});
    EXPECT_EQ(syntax.exitStatus, 0) << qPrintable(syntax.output);
    const QString script =
        QStringLiteral("_arguments() { return 1 }; { source '%1' } 2>&1; print -l ${(P)1}").arg(path);
    const auto values = [&](const char* list) {
        return lines(runProgram(QStringLiteral("zsh"),
                                {QStringLiteral("-f"), QStringLiteral("-c"),
                                 QStringLiteral("f() { %1 }; f %2").arg(script, QLatin1String(list))}));
    };
    EXPECT_EQ(values("scopes"), scopes());
    EXPECT_EQ(values("sorts"), sorts());
    QStringList named = values("verbs");
    for (QString& line : named)
        line = line.section(QLatin1Char(':'), 0, 0);
    EXPECT_EQ(named, verbs());
}

} // namespace
} // namespace tessary::testing

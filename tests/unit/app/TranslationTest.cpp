#include "app/language/InterfaceLanguage.h"
#include "app/language/Translations.h"
#include "tests/support/TemporaryFolder.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace tessary {
namespace {

struct Message {
    QString context;
    QString source;
    QStringList translations; ///< More than one where the number decides.
    bool isFinished = true;
};

Message readMessage(QXmlStreamReader& xml, const QString& context)
{
    Message message;
    message.context = context;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("source")) {
            message.source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            message.isFinished = !xml.attributes().hasAttribute(QStringLiteral("type"));
            QString text;
            while (xml.readNext() != QXmlStreamReader::EndElement) {
                if (xml.isStartElement())
                    message.translations.append(xml.readElementText());
                else if (xml.isCharacters())
                    text += xml.text();
            }
            if (message.translations.isEmpty())
                message.translations.append(text);
        } else {
            xml.skipCurrentElement();
        }
    }
    return message;
}

QList<Message> messagesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    QXmlStreamReader xml(&file);
    QList<Message> messages;
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name"))
            context = xml.readElementText();
        else if (xml.name() == QLatin1String("message"))
            messages.append(readMessage(xml, context));
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return messages;
}

QStringList placeholders(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("%(?:[0-9]+|n|L[0-9]+)"));
    QStringList found;
    for (auto match = pattern.globalMatch(text); match.hasNext();)
        found.append(match.next().captured());
    found.sort();
    return found;
}

bool hasChinese(const QString& text)
{
    static const QRegularExpression chinese(QStringLiteral("[\\p{Han}，。、：；！？（）]"));
    return text.contains(chinese);
}

/// What the sources say now, with the translations that there are.
QList<Message> messagesOfSources()
{
    const testing::TemporaryFolder folder;
    const QString path = folder.file(QStringLiteral("tessary_en.ts"));
    EXPECT_TRUE(QFile::copy(QStringLiteral(TESSARY_TRANSLATION), path));
    QProcess lupdate;
    lupdate.setWorkingDirectory(QStringLiteral(TESSARY_SOURCES));
    lupdate.start(QStringLiteral(TESSARY_LUPDATE),
                  QStringList{QStringLiteral("-silent"), QStringLiteral("-no-obsolete"),
                              QStringLiteral("-locations"), QStringLiteral("none"), QStringLiteral("-I"),
                              QStringLiteral(".")} +
                      QStringLiteral(TESSARY_TEXT_FOLDERS).split(QLatin1Char(' ')) +
                      QStringList{QStringLiteral("-ts"), path});
    EXPECT_TRUE(lupdate.waitForFinished());
    EXPECT_EQ(lupdate.exitCode(), 0) << lupdate.readAllStandardError().toStdString();
    return messagesOf(path);
}

TEST(EnglishTranslationTest, EveryTextOfTheSourcesHasOneWithTheSamePlaceholders)
{
    const QList<Message> messages = messagesOfSources();
    EXPECT_GT(messages.size(), 100);
    for (const Message& message : messages) {
        const std::string where = (message.context + QStringLiteral(": ") + message.source).toStdString();
        EXPECT_TRUE(message.isFinished) << where;
        for (const QString& translation : message.translations) {
            EXPECT_FALSE(translation.isEmpty()) << where;
            EXPECT_FALSE(hasChinese(translation)) << where;
            EXPECT_EQ(placeholders(translation), placeholders(message.source)) << where;
            EXPECT_EQ(translation.endsWith(QLatin1Char(' ')),
                      message.source.endsWith(QLatin1Char(' ')) ||
                          message.source.endsWith(QChar(0xFF1A))) // a Chinese colon needs no blank
                << where;
        }
    }
}

TEST(EnglishTranslationTest, NoChineseTextOfTheSourcesCannotBeTranslated)
{
    QSet<QString> known;
    const QList<Message> messages = messagesOf(QStringLiteral(TESSARY_TRANSLATION));
    for (const Message& message : messages)
        known.insert(message.source);
    static const QRegularExpression literal(QStringLiteral("\"((?:[^\"\\\\\n]|\\\\.)*)\""));
    // What Chinese is read with, and names that stay in the library whatever the language.
    static const QRegularExpression exempt(QStringLiteral(
        "/recognition/(dates/|OCRReminderClassifier)|/store/Pinyin|/platform/testing/|"
        "/workers/recognizer/|/capture/(ScreenshotNames|ClipboardImageName|ScreenshotImporter)"));
    const QStringList folders = QStringLiteral(TESSARY_TEXT_FOLDERS).split(QLatin1Char(' '));
    for (const QString& folder : folders) {
        QDirIterator files(QStringLiteral(TESSARY_SOURCES "/") + folder,
                           {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            if (path.contains(exempt))
                continue;
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
            for (const QString& line : lines) {
                if (line.trimmed().startsWith(QLatin1String("//")))
                    continue;
                for (auto match = literal.globalMatch(line.section(QStringLiteral("//"), 0, 0));
                     match.hasNext();) {
                    const QString text = match.next().captured(1);
                    EXPECT_TRUE(!hasChinese(text) || known.contains(text))
                        << path.toStdString() << ": " << text.toStdString();
                }
            }
        }
    }
}

LocaleVariables locale(const char* base, const char* language = "", const char* all = "",
                       const char* messages = "")
{
    return {QLatin1String(language), QLatin1String(all), QLatin1String(messages), QLatin1String(base)};
}

TEST(InterfaceLanguageTest, EnglishLocalesAreEnglishAndAllOthersChinese)
{
    EXPECT_EQ(interfaceLanguage(locale("en_GB.UTF-8")), InterfaceLanguage::English);
    EXPECT_EQ(interfaceLanguage(locale("en")), InterfaceLanguage::English);
    EXPECT_EQ(interfaceLanguage(locale("zh_CN.UTF-8")), InterfaceLanguage::Chinese);
    EXPECT_EQ(interfaceLanguage(locale("de_DE.UTF-8")), InterfaceLanguage::Chinese);
    EXPECT_EQ(interfaceLanguage(locale("C.UTF-8")), InterfaceLanguage::Chinese);
    EXPECT_EQ(interfaceLanguage(locale("POSIX")), InterfaceLanguage::Chinese);
    EXPECT_EQ(interfaceLanguage(locale("")), InterfaceLanguage::Chinese);
}

TEST(InterfaceLanguageTest, VariablesOverrideOneAnotherAsForGettext)
{
    EXPECT_EQ(interfaceLanguage(locale("zh_CN", "", "", "en_US")), InterfaceLanguage::English);
    EXPECT_EQ(interfaceLanguage(locale("en_US", "", "zh_CN", "en_US")), InterfaceLanguage::Chinese);
    EXPECT_EQ(interfaceLanguage(locale("zh_CN", "de:en_US:zh")), InterfaceLanguage::English);
    EXPECT_EQ(interfaceLanguage(locale("de_DE", "fr")), InterfaceLanguage::Chinese);
    EXPECT_EQ(interfaceLanguage(locale("en_US", "de")), InterfaceLanguage::English);
    EXPECT_EQ(interfaceLanguage(locale("C", "en")), InterfaceLanguage::Chinese);
}

TEST(TranslationsTest, TextsAreEnglishForAsLongAsTheyLive)
{
    const auto results = [](int count) {
        return QCoreApplication::translate("tessary::PanelFooter", "%n 个结果", nullptr, count);
    };
    EXPECT_EQ(results(2), QStringLiteral("2 个结果"));
    {
        const Translations english(InterfaceLanguage::English);
        EXPECT_EQ(results(1), QStringLiteral("1 result"));
        EXPECT_EQ(results(2), QStringLiteral("2 results"));
    }
    EXPECT_EQ(results(2), QStringLiteral("2 个结果"));
}

} // namespace
} // namespace tessary

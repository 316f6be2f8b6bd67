#include "store/PinyinText.h"

#include <QStringList>

#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/translit.h>
#include <unicode/uscript.h>

#include <memory>

namespace tessary {
namespace {

/// What PinyinText has to agree with, made by ICU alone and without any shortcut: each Han character by
/// itself, everything between two of them in one go.
class Oracle {
public:
    Oracle()
    {
        UErrorCode status = U_ZERO_ERROR;
        m_transform.reset(icu::Transliterator::createInstance(
            "Any-Latin; NFD; [:Nonspacing Mark:] Remove; NFC", UTRANS_FORWARD, status));
    }
    QString latin(const QString& text) const
    {
        icu::UnicodeString value(text.utf16(), static_cast<int32_t>(text.size()));
        m_transform->transliterate(value);
        value.toLower(icu::Locale::getRoot());
        return QString(reinterpret_cast<const QChar*>(value.getBuffer()), value.length());
    }
    QString searchText(const QString& text) const
    {
        QString spaced;
        QString run;
        bool afterSyllable = false;
        const auto add = [&](const QString& piece, bool isSyllable) {
            if (piece.isEmpty())
                return;
            const bool touches =
                !spaced.isEmpty() && isAlphanumeric(lastOf(spaced)) && isAlphanumeric(firstOf(piece));
            if (touches && (isSyllable || afterSyllable))
                spaced += QLatin1Char(' ');
            spaced += piece;
            afterSyllable = isSyllable;
        };
        for (const char32_t character : text.toUcs4()) {
            const QString alone = QString::fromUcs4(&character, 1);
            UErrorCode status = U_ZERO_ERROR;
            const bool isHan = uscript_getScript(static_cast<UChar32>(character), &status) == USCRIPT_HAN;
            if (!isHan || latin(alone) == alone) {
                run += alone;
                continue;
            }
            add(latin(run), false);
            run.clear();
            add(latin(alone), true);
        }
        add(latin(run), false);
        QString compact;
        for (const char32_t character : spaced.toUcs4()) {
            if (QChar::isLetterOrNumber(character))
                compact += QString::fromUcs4(&character, 1);
        }
        return spaced + QLatin1Char(' ') + compact;
    }

private:
    static char32_t firstOf(const QString& text) { return text.toUcs4().first(); }
    static char32_t lastOf(const QString& text) { return text.toUcs4().last(); }
    static bool isAlphanumeric(char32_t character) { return QChar::isLetterOrNumber(character); }

    std::unique_ptr<icu::Transliterator> m_transform;
};

TEST(PinyinTextTest, OfTheEmptyTextIsASingleSpace)
{
    EXPECT_EQ(PinyinText().searchText(QString()), QStringLiteral(" "));
}

TEST(PinyinTextTest, GivesSyllablesApartAndRunTogether)
{
    PinyinText pinyin;
    EXPECT_EQ(pinyin.searchText(u"中国"), QStringLiteral("zhong guo zhongguo"));
    EXPECT_EQ(pinyin.searchText(u"你好，世界！"), QStringLiteral("ni hao， shi jie！ nihaoshijie")
                                                      .replace(QStringLiteral("， "), QStringLiteral("，")));
}

TEST(PinyinTextTest, PutsASpaceBetweenASyllableAndALetterOrDigit)
{
    EXPECT_EQ(PinyinText().searchText(u"hello世界2024年"),
              QStringLiteral("hello shi jie 2024 nian helloshijie2024nian"));
}

TEST(PinyinTextTest, StripsMarksAndLowersCase)
{
    EXPECT_EQ(PinyinText().searchText(u"Café İSTANBUL"), QStringLiteral("cafe istanbul cafeistanbul"));
}

TEST(PinyinTextTest, AgreesWithIcuOnEveryHanCharacter)
{
    const Oracle oracle;
    PinyinText pinyin;
    int differences = 0;
    for (char32_t character = 0x3400; character <= 0x9FFF; ++character) {
        const QString text = QString::fromUcs4(&character, 1);
        if (pinyin.searchText(text) != oracle.searchText(text) && ++differences < 5)
            ADD_FAILURE() << std::hex << static_cast<unsigned>(character) << " "
                          << qPrintable(pinyin.searchText(text)) << " / "
                          << qPrintable(oracle.searchText(text));
    }
    EXPECT_EQ(differences, 0);
}

TEST(PinyinTextTest, AgreesWithIcuOnHanCharactersOfTheHigherPlanes)
{
    const Oracle oracle;
    PinyinText pinyin;
    for (char32_t character = 0x20000; character <= 0x32000; character += 7) {
        const QString text = QString::fromUcs4(&character, 1);
        ASSERT_EQ(pinyin.searchText(text), oracle.searchText(text))
            << std::hex << static_cast<unsigned>(character);
    }
}

TEST(PinyinTextTest, AgreesWithIcuOnMixedText)
{
    const Oracle oracle;
    PinyinText pinyin;
    const QStringList texts{
        QStringLiteral("Tessary 把您复制的文字与图片保存在本机。共 128 个结果，可按 app:Firefox 过滤。"),
        QStringLiteral("東京タワーへ行きました。ひらがなとカタカナ、漢字が混ざる文です。しゃしん"),
        QStringLiteral("Привет, мир! Это 中文 и русский текст вместе: абв中文где"),
        QStringLiteral("한국어 문장과 中文字 섞기 hangul"),
        QStringLiteral("Ελληνικά γράμματα και 汉字, naïve façade Straße ﬁ Ⅳ ①②"),
        QStringLiteral("שלום עולם مرحبا بالعالم नमस्ते दुनिया ไทย中文"),
        QStringLiteral("全角ＡＢＣ１２３、引用「中文」《书名》…… —— 100％！？；：（括号）【】"),
        QStringLiteral("emoji 😀中文😀 \U00020000\U00020bb7 〇 々 人々 重庆 银行 沈阳"),
        QStringLiteral("line one\r\n第二行\ttab\u3000全角空格 \u2019quote\u2019 a\u0301bc"),
        QStringLiteral("if (x < 10 && y_1 == \"值\") return 変数[0]; // 注释 comment"),
    };
    for (const QString& text : texts)
        EXPECT_EQ(pinyin.searchText(text).toStdString(), oracle.searchText(text).toStdString());
}

TEST(PinyinTextTest, ALongRunOfAnotherScriptReadsAsItsWordsDo)
{
    const Oracle oracle;
    const QString text = QStringLiteral("Привет мир ").repeated(200);
    EXPECT_EQ(PinyinText().searchText(text), oracle.searchText(text));
}

} // namespace
} // namespace tessary

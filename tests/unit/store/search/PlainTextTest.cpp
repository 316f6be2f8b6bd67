#include "store/search/PlainText.h"

#include "store/search/FullTextPhrase.h"
#include "store/sqlite/SQLiteConnection.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

QByteArray utf8(char32_t character)
{
    return QString::fromUcs4(&character, 1).toUtf8();
}

TEST(PlainTextTest, AllWordsOfAPlainTextStandInItByteForByte)
{
    const SQLiteConnection connection(QStringLiteral(":memory:"));
    const FullTextTokenizer tokenizer(connection.handle());
    constexpr char32_t kLast = 0x10FFFF;
    int plain = 0;
    for (char32_t character = 1; character <= kLast; ++character) {
        const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
        if (isSurrogate || !isPlainText(utf8(character)))
            continue;
        ++plain;
        const QByteArray text = "x" + utf8(character) + "y " + utf8(character) + "z";
        const QByteArray inSmallLetters = text.toLower(); // of ASCII alone, as they are bytes
        tokenizer.tokenize(text, [&](QByteArrayView word) {
            EXPECT_TRUE(inSmallLetters.contains(word)) << std::hex << quint32{character};
            return true;
        });
    }
    EXPECT_GT(plain, 0x9FFF - 0x3000) << "Chinese and Japanese at least";
}

TEST(PlainTextTest, ChineseJapaneseAndAsciiArePlain)
{
    EXPECT_TRUE(isPlainText(""));
    EXPECT_TRUE(isPlainText("Plain words, and many of them."));
    EXPECT_TRUE(isPlainText("把 clipboard 里的文字，都“记下来”：ファイル（全部）… 🎉"));
}

TEST(PlainTextTest, LettersThatBecomeOthersAreNot)
{
    EXPECT_FALSE(isPlainText("caf\u00E9 in a longer text"));
    EXPECT_FALSE(isPlainText("a long text, then cafe\u0301"));
    EXPECT_FALSE(isPlainText("\u212A as in Kelvin"));
    EXPECT_FALSE(isPlainText("\uFF21 of full width"));
    EXPECT_FALSE(isPlainText("\u00B5m"));
}

TEST(PlainTextTest, BrokenCharactersAreNot)
{
    EXPECT_FALSE(isPlainText("\x80"));
    EXPECT_FALSE(isPlainText("\xE4\xB8"));
    EXPECT_FALSE(isPlainText("\xE4\xB8 x"));
    EXPECT_FALSE(isPlainText("\xE4\xB8\xAD\x80"));
    EXPECT_FALSE(isPlainText("\xF0\x9F\x8E"));
    EXPECT_FALSE(isPlainText("\xC2"));
}

} // namespace
} // namespace tessary

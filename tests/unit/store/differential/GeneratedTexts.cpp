#include "tests/unit/store/differential/GeneratedTexts.h"

#include <array>

namespace tessary::testing {
namespace {

constexpr std::array kLatin{
    u"the",         u"The",      u"THE",     u"a",         u"in",
    u"index",       u"Indexes",  u"meeting", u"xylophone", u"report",
    u"e",           u"of",       u"zq",      u"file",      u"files",
    u"2024",        u"42",       u"4",       u"v2",        u"x86",
    u"none",        u"NULL",     u"and",     u"OR",        u"NOT",
    u"near",        u"a.b.c",    u"foo_bar", u"100%",      u"--",
    u"id",          u"café",     u"cafe",    u"naïve",     u"e\u0301t\u00e9",
    u"straße",      u"STRASSE",  u"ſtop",    u"İstanbul",  u"ıslak",
    u"\u212Aelvin", u"Kelvin",   u"ŁÓDŹ",    u"łódź",      u"https://example.org/a?b=c&d=%20",
    u"nihao",       u"zhongguo", u"zhong",   u"guo",       u"beijing",
    u"gg",          u"ggg"};
/// Of few characters, because each connection has to find out how they are read.
constexpr std::array kHan{u"中",   u"国",   u"中国", u"会议", u"会", u"议会", u"北京",        u"北京会议",
                          u"重庆", u"你们", u"你好", u"一",   u"二", u"一二", u"文件",        u"中中",
                          u"國",   u"會議", u"代",   u"京",   u"件", u"𠮷",   u"中国会议文件"};
constexpr std::array kOther{
    u"かな",   u"カナ",   u"ｶﾅ",  u"日本",        u"が",       u"か\u3099", u"한국어",  u"Привет", u"ПРИВЕТ",
    u"привет", u"ΑΣ",     u"ας",  u"ασ",          u"Ω",        u"\u2126",   u"ＡＢＣ",  u"ａｂｃ", u"１２３",
    u"，",     u"“引号”", u"😀",   u"👩‍💻", u"👍🏽", u"🇨🇳",       u"e\u0301", u"\u0301", u"ﬁle",
    u"שלום",   u"مرحبا",  u"ไทย", u"\uFEFF",      u"\u200B",   u"\u00AD"};
constexpr std::array kOddities{u"\"", u"'", u"%",  u"_",  u"\\", u"*",      u"(",      u")",      u"^",
                               u":",  u"-", u"\t", u"\n", u"{",  u"\u0001", u"\u007F", u"\u3000", u"\u00A0",
                               u"[",  u",", u".",  u"+",  u"/",  u"]",      u";",      u"~",      u"&"};
constexpr std::array kSeparators{u" ", u" ", u" ", u"", u"", u"，", u"\n", u"-", u"\u3000", u"_"};

} // namespace

QString GeneratedTexts::oddity()
{
    if (m_hasNul && m_dice.oneIn(8))
        return QString(QChar(u'\0'));
    if (m_dice.oneIn(20))
        return QString(QChar(m_dice.oneIn(2) ? u'\xD83D' : u'\xDE00'));
    return QString::fromUtf16(m_dice.anyOf(kOddities));
}

QString GeneratedTexts::word()
{
    constexpr qsizetype kParts = 20;
    const qsizetype part = m_dice.below(kParts);
    if (part < 8)
        return QString::fromUtf16(m_dice.anyOf(kLatin));
    if (part < 14)
        return QString::fromUtf16(m_dice.anyOf(kHan));
    if (part < 17)
        return QString::fromUtf16(m_dice.anyOf(kOther));
    if (part < 18)
        return oddity();
    return QString::number(m_dice.below(2000));
}

QString GeneratedTexts::text(qsizetype mostWords)
{
    QString text = word();
    for (qsizetype words = m_dice.below(mostWords); words > 0; --words)
        text += QString::fromUtf16(m_dice.anyOf(kSeparators)) + word();
    return text;
}

} // namespace tessary::testing

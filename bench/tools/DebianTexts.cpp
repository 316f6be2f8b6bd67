#include "bench/tools/DebianTexts.h"

#include "bench/tools/HtmlText.h"
#include "bench/tools/MessageCatalogue.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSet>

#include <algorithm>
#include <array>

namespace tessary::bench {
namespace {

constexpr std::array kBooks{
    "/usr/share/debian-reference",
    "/usr/share/doc/debian/FAQ",
    "/usr/share/doc/maint-guide/html",
    "/usr/share/doc/maint-guide-ja/html",
    "/usr/share/doc/maint-guide-zh-cn/html",
    "/usr/share/doc/maint-guide-zh-tw/html",
    "/usr/share/doc/debian-handbook/html/en-US",
    "/usr/share/doc/debian-handbook/html/ja-JP",
    "/usr/share/doc/debian-handbook/html/zh-CN",
    "/usr/share/doc/debian-handbook/html/zh-TW",
};
constexpr char kPolicy[] = "/usr/share/doc/debian-policy/policy.html";
constexpr std::array kLocales{"zh_CN", "zh_TW", "ja"};
constexpr std::array kPrograms{"apt", "coreutils", "dpkg", "git", "glib20", "gtk30", "tar"};
constexpr qsizetype kShortest = 4; // characters

bool isKana(QChar unit)
{
    return unit.unicode() >= 0x3041 && unit.unicode() <= 0x30FF;
}

bool isHan(QChar unit)
{
    return unit.unicode() >= 0x4E00 && unit.unicode() <= 0x9FFF;
}

QStringList pages(const char* folder)
{
    QStringList files;
    QDirIterator found(QString::fromLatin1(folder), {QStringLiteral("*.html")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (found.hasNext())
        files.append(found.next());
    if (files.isEmpty())
        qFatal("There is no documentation in %s: tools/packages install bench", folder);
    files.sort();
    return files;
}

HtmlText readPage(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? htmlText(QString::fromUtf8(file.readAll())) : HtmlText();
}

/// Puts each text where its script belongs, once.
class Collection {
public:
    explicit Collection(DebianTexts& texts) : m_texts(texts) {}

    void addParagraph(const QString& text)
    {
        if (!isNew(text))
            return;
        if (std::any_of(text.begin(), text.end(), isKana))
            m_texts.japanese.append(text);
        else if (std::any_of(text.begin(), text.end(), isHan))
            m_texts.chinese.append(text);
        else
            m_texts.english.append(text);
    }
    void addTo(QStringList& list, const QString& text)
    {
        if (isNew(text))
            list.append(text);
    }

private:
    bool isNew(const QString& text)
    {
        const qsizetype before = m_seen.size();
        if (text.size() >= kShortest)
            m_seen.insert(text);
        return m_seen.size() > before;
    }

    DebianTexts& m_texts;
    QSet<QString> m_seen;
};

} // namespace

DebianTexts DebianTexts::installed()
{
    DebianTexts texts;
    Collection collection(texts);
    for (const char* book : kBooks) {
        for (const QString& page : pages(book)) {
            const HtmlText text = readPage(page);
            for (const QString& paragraph : text.paragraphs)
                collection.addParagraph(paragraph);
            for (const QString& piece : text.code)
                collection.addTo(texts.code, piece);
        }
    }
    for (const QString& page : pages(kPolicy)) {
        for (const QString& paragraph : readPage(page).paragraphs)
            collection.addTo(texts.policy, paragraph);
    }
    for (const char* locale : kLocales) {
        for (const char* program : kPrograms) {
            const QString path = QStringLiteral("/usr/share/locale/%1/LC_MESSAGES/%2.mo")
                                     .arg(QLatin1String(locale), QLatin1String(program));
            for (const QString& message : translatedMessages(path))
                collection.addTo(texts.messages, message);
        }
    }
    return texts;
}

} // namespace tessary::bench

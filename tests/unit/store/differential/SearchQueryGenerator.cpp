#include "tests/unit/store/differential/SearchQueryGenerator.h"

#include "tests/unit/store/differential/LibraryGenerator.h"

#include <array>

namespace tessary::testing {
namespace {

constexpr std::array kLimits{5, 5, 5, 5, 101, 101, 1, 1, 0};
constexpr std::array kTextLimits{0, 1, 5, 20'000};
constexpr std::array kSeparators{u" ", u" ", u" ", u"  ", u"\t", u"\u3000", u"\u00A0", u"\n"};
constexpr std::array kZones{"UTC", "Asia/Shanghai", "America/New_York"};
constexpr qsizetype kMostLearnt = 300;
constexpr qsizetype kLongestKeyword = 40;

} // namespace

void SearchQueryGenerator::learn(const ScreenshotRecord& record)
{
    QStringList columns{record.textContent,
                        record.filename,
                        record.note,
                        record.ocrText,
                        record.generatedTitle.value_or(QString()),
                        record.sourceAppName.value_or(QString()),
                        record.tags.join(QLatin1Char(' '))};
    if (m_dice.oneIn(4))
        columns.append(m_pinyin.searchText(record.searchableText()));
    columns.removeAll(QString());
    if (m_items.size() < kMostLearnt)
        m_items.append(columns);
    else
        m_items[m_dice.below(m_items.size())] = columns;
}

void SearchQueryGenerator::lookAtAnother()
{
    m_columns = m_items.isEmpty() ? QStringList() : m_dice.anyOf(m_items);
}

QString SearchQueryGenerator::piece(const QString& text)
{
    constexpr std::array<qsizetype, 10> kLengths{1, 1, 2, 2, 3, 3, 4, 6, 8, kLongestKeyword};
    const qsizetype longest = m_dice.anyOf(kLengths);
    const qsizetype length = longest > 4 ? m_dice.between(4, longest) : longest;
    return text.mid(m_dice.below(text.size()), length);
}

QString SearchQueryGenerator::inSomeCase(const QString& text)
{
    switch (m_dice.below(4)) {
    case 0:
        return text.toUpper();
    case 1:
        return text.toLower();
    default:
        return text;
    }
}

QString SearchQueryGenerator::changed(QString keyword)
{
    const qsizetype at = m_dice.below(keyword.size() + 1);
    switch (m_dice.below(6)) {
    case 0:
        return inSomeCase(keyword);
    case 1:
        return keyword.remove(at, 1);
    case 2:
        return keyword.insert(at, keyword.mid(at, 1));
    case 3:
        return keyword.replace(at, 1, m_dice.oneIn(2) ? QStringLiteral("%") : QStringLiteral("_"));
    case 4:
        return keyword.insert(at, m_texts.oddity());
    default:
        return keyword.insert(at, m_dice.oneIn(2) ? m_texts.word() : QStringLiteral("*"));
    }
}

QString SearchQueryGenerator::keyword()
{
    constexpr qsizetype kParts = 20;
    const qsizetype part = m_dice.below(kParts);
    QString keyword;
    if (part < 15 && !m_columns.isEmpty())
        keyword = piece(m_dice.anyOf(m_columns));
    else if (part < 18)
        keyword = m_texts.word();
    else
        keyword = m_dice.oneIn(3) ? m_texts.oddity()
                                  : QString(QChar(u'!' + static_cast<char16_t>(m_dice.below(94))));
    for (qsizetype times = m_dice.oneIn(4) ? m_dice.between(1, 3) : 0; times > 0; --times)
        keyword = changed(keyword);
    if (m_dice.oneIn(3000)) // longer than any pattern that SQLite's own LIKE takes
        keyword = QString(m_dice.anyOf(QStringLiteral("x会9-"))).repeated(60'000);
    return keyword;
}

QString SearchQueryGenerator::day()
{
    constexpr qsizetype kDays = 50;
    if (m_dice.oneIn(10))
        return m_texts.word();
    const qint64 daysAgo = m_dice.below(kDays) - 2;
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(kGeneratedNow.secondsSince1970), Qt::UTC)
        .addDays(-daysAgo)
        .toString(QStringLiteral("yyyy-MM-dd"));
}

QString SearchQueryGenerator::operatorText()
{
    const auto value = [this] {
        const QString text = m_columns.isEmpty() ? m_texts.word() : piece(m_dice.anyOf(m_columns));
        return m_dice.oneIn(3) ? u'"' + text + u'"' : text;
    };
    switch (m_dice.below(5)) {
    case 0:
        return inSomeCase(QStringLiteral("app:")) +
               (m_dice.oneIn(3) ? value() : QStringLiteral("fire").left(m_dice.between(1, 4)));
    case 1:
        return inSomeCase(QStringLiteral("tag:")) + (m_dice.oneIn(2) ? value() : m_texts.word());
    case 2:
        return inSomeCase(QStringLiteral("before:")) + day();
    case 3:
        return inSomeCase(QStringLiteral("after:")) + day();
    default:
        return inSomeCase(m_dice.oneIn(8) ? QStringLiteral("is:else") : QStringLiteral("is:favorite"));
    }
}

QString SearchQueryGenerator::separator()
{
    return QString::fromUtf16(m_dice.anyOf(kSeparators));
}

QString SearchQueryGenerator::typed()
{
    constexpr std::array kKeywords{0, 0, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 4};
    QStringList parts;
    lookAtAnother();
    for (int i = m_dice.anyOf(kKeywords); i > 0; --i) {
        parts.append(keyword());
        if (m_dice.oneIn(3))
            lookAtAnother();
    }
    for (qsizetype i = m_dice.oneIn(4) ? m_dice.between(1, 3) : 0; i > 0; --i)
        parts.insert(m_dice.below(parts.size() + 1), operatorText());
    QString text;
    for (const QString& part : std::as_const(parts))
        text += (text.isEmpty() ? QString() : separator()) + part;
    return text;
}

ListRequest SearchQueryGenerator::next()
{
    ListRequest request;
    request.rawQuery = typed();
    request.scope = m_dice.oneIn(2) ? ScreenshotScope::All : m_dice.anyOf(kScreenshotScopes);
    request.sort = m_dice.anyOf(kScreenshotSorts);
    request.limit = m_dice.anyOf(kLimits);
    constexpr std::array<qsizetype, 4> kFarthest{3, 30, 300, 2000};
    if (m_dice.oneIn(4))
        request.offset = static_cast<int>(m_dice.below(m_dice.anyOf(kFarthest)));
    request.now = kGeneratedNow.addingSeconds(static_cast<double>(m_dice.below(3)) * 40'000);
    request.calendar = Calendar{QTimeZone(m_dice.anyOf(kZones))};
    if (!request.calendar.timeZone.isValid())
        request.calendar = Calendar{QTimeZone::utc()};
    if (m_dice.oneIn(3))
        request.maximumTextLength = m_dice.anyOf(kTextLimits);
    return request;
}

} // namespace tessary::testing

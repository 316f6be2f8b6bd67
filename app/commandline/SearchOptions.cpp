#include "app/commandline/SearchOptions.h"

#include "app/commandline/ExitStatus.h"
#include "search/ScreenshotScope.h"
#include "search/ScreenshotSort.h"

namespace tessary {
namespace {

constexpr int kListedText = 400; // UTF-16 units; titles are shorter

using Options = QHash<QByteArray, QByteArray>;

int number(const Options& options, const QByteArray& name, int otherwise)
{
    if (!options.contains(name))
        return otherwise;
    bool isNumber = false;
    const int value = options.value(name).toInt(&isNumber);
    if (!isNumber || value < 0)
        throw CommandError(ExitStatus::WrongUse,
                           QStringLiteral("--%1 takes a number from 0 on").arg(QString::fromUtf8(name)));
    return value;
}

template <typename Values>
void takeName(const Options& options, const QByteArray& name, const Values& values, QVariantMap& into)
{
    if (!options.contains(name))
        return;
    const QString wanted = QString::fromUtf8(options.value(name));
    QStringList known;
    for (const auto value : values)
        known.append(rawValue(value));
    if (!known.contains(wanted))
        throw CommandError(ExitStatus::WrongUse,
                           QStringLiteral("--%1 takes one of %2")
                               .arg(QString::fromUtf8(name), known.join(QLatin1Char(' '))));
    into.insert(QString::fromUtf8(name), wanted);
}

} // namespace

SearchOptions SearchOptions::from(const Options& options)
{
    SearchOptions wanted;
    takeName(options, "scope", kScreenshotScopes, wanted.m_fixed);
    takeName(options, "sort", kScreenshotSorts, wanted.m_fixed);
    wanted.m_limit = number(options, "limit", wanted.m_limit);
    wanted.m_offset = number(options, "offset", wanted.m_offset);
    return wanted;
}

void SearchOptions::cutTexts()
{
    m_fixed.insert(QStringLiteral("maximumTextLength"), uint{kListedText});
}

void SearchOptions::advance(int count)
{
    m_limit -= count;
    m_offset += count;
}

QVariantMap SearchOptions::asked() const
{
    QVariantMap options = m_fixed;
    options.insert(QStringLiteral("limit"), static_cast<uint>(m_limit));
    options.insert(QStringLiteral("offset"), static_cast<uint>(m_offset));
    return options;
}

} // namespace tessary

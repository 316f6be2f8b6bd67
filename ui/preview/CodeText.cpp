#include "ui/preview/CodeText.h"

#include <QRegularExpression>

namespace tessary {
namespace {

constexpr qsizetype kLookedAt = 4'000; // UTF-16 units
constexpr qsizetype kMostLines = 80;

const QRegularExpression& keywordLine()
{
    static const QRegularExpression expression(QStringLiteral(
        R"(^\s*(#include\b|#!|import [\w.{*]|from [\w.]+ import\b|using \w|namespace \w|(public|private|static|final|class|struct|enum|def|fn|func|function|const|let|var|export|package) [\w*&<:]|(if|for|while|switch) ?\(|return\b.*;|SELECT\b.*\bFROM\b|(\$|sudo|git|cd|apt|npm) \S|</?\w+[^>]*>|[\w.-]+ ?= ?['"\[{\d]|"[^"]+" ?:))"));
    return expression;
}

/// Lines that end as statements do, or hold nothing but brackets.
bool endsLikeCode(QStringView line)
{
    if (line.isEmpty())
        return false;
    const QChar last = line.back();
    return last == QLatin1Char(';') || last == QLatin1Char('{') || last == QLatin1Char('}') ||
           line.endsWith(u"},") || line.endsWith(u"):") || line.endsWith(u")") || line.endsWith(u"],");
}

bool isCodeLine(QStringView line)
{
    const QStringView trimmed = line.trimmed();
    if (keywordLine().match(line.toString()).hasMatch())
        return true;
    const bool isIndented = line.startsWith(u"    ") || line.startsWith(u'\t');
    return endsLikeCode(trimmed) && (isIndented || trimmed.size() <= 3 || trimmed.contains(u'(') ||
                                     trimmed.endsWith(u'{') || trimmed.endsWith(u';'));
}

} // namespace

bool looksLikeCode(QStringView text)
{
    constexpr qsizetype kShare = 3; // at least every third line
    qsizetype lines = 0;
    qsizetype code = 0;
    for (const QStringView line : text.first(std::min(kLookedAt, text.size())).split(u'\n')) {
        if (line.trimmed().isEmpty())
            continue;
        ++lines;
        code += isCodeLine(line) ? 1 : 0;
        if (lines == kMostLines)
            break;
    }
    if (lines == 1)
        return code == 1 && (text.contains(u'{') || text.contains(u';') || text.startsWith(u"#!") ||
                             text.startsWith(u"$ ") || text.startsWith(u"SELECT "));
    return code >= 2 && code * kShare >= lines;
}

} // namespace tessary

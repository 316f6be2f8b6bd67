#include "capture/ClipboardImageName.h"

#include <QRegularExpression>

namespace tessary {

QString clipboardImageName(const QDateTime& time)
{
    // Digits of a fixed pattern, whatever the locale: the name is read back after a crash.
    return QStringLiteral("剪贴板图片 ") + time.toString(QStringLiteral("yyyy-MM-dd HH.mm.ss")) +
           QStringLiteral(".png");
}

QString numberedImageName(const QString& name, int n)
{
    return QString(name).insert(name.lastIndexOf(QLatin1Char('.')), QStringLiteral(" #%1").arg(n));
}

QString nominalImageName(const QString& fileName)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(剪贴板图片 \\d{4}-\\d\\d-\\d\\d \\d\\d\\.\\d\\d\\.\\d\\d)( #\\d+)?\\.png$"));
    const QRegularExpressionMatch match = pattern.match(fileName);
    return match.hasMatch() ? match.captured(1) + QStringLiteral(".png") : QString();
}

} // namespace tessary

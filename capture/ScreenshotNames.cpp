#include "capture/ScreenshotNames.h"

#include "capture/AcceptedImages.h"

#include <array>

namespace tessary {
namespace {

const std::array<QString, 9>& screenshotPrefixes()
{
    static const std::array<QString, 9> prefixes{QStringLiteral("screenshot"),
                                                 QStringLiteral("screen shot"),
                                                 QStringLiteral("截屏"),
                                                 QStringLiteral("屏幕快照"),
                                                 QStringLiteral("螢幕截圖"),
                                                 QStringLiteral("bildschirmfoto"),
                                                 QStringLiteral("captura de pantalla"),
                                                 QStringLiteral("capture d’écran"),
                                                 QStringLiteral("capture d'ecran")};
    return prefixes;
}

} // namespace

bool beginsLikeScreenshot(const QString& baseName)
{
    const QString name = baseName.normalized(QString::NormalizationForm_C).toLower();
    const auto& prefixes = screenshotPrefixes();
    return std::any_of(prefixes.begin(), prefixes.end(),
                       [&](const QString& prefix) { return name.startsWith(prefix); });
}

bool isScreenshotName(const QByteArray& name)
{
    const qsizetype dot = name.lastIndexOf('.');
    if (dot <= 0)
        return false;
    const QStringList& extensions = acceptedImageExtensions();
    const QByteArrayView extension = QByteArrayView(name).sliced(dot + 1);
    const bool isPicture = std::any_of(extensions.begin(), extensions.end(), [&](const QString& accepted) {
        return QLatin1String(extension).compare(accepted, Qt::CaseInsensitive) == 0;
    });
    return isPicture && beginsLikeScreenshot(QString::fromUtf8(name.first(dot)));
}

} // namespace tessary

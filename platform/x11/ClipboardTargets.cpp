#include "platform/x11/ClipboardTargets.h"

namespace tessary {
namespace {

const QList<QByteArray>& pngNames()
{
    static const QList<QByteArray> names{"image/png"};
    return names;
}

/// Lossless formats come first.
const QList<QByteArray>& bitmapNames()
{
    static const QList<QByteArray> names{"image/tiff",     "image/bmp",  "image/x-bmp",
                                         "image/x-MS-bmp", "image/jpeg", "image/webp"};
    return names;
}

const QList<QByteArray>& textNames()
{
    static const QList<QByteArray> names{"UTF8_STRING", "text/plain;charset=utf-8",
                                         "text/plain;charset=UTF-8", kLatin1TextTarget};
    return names;
}

QList<QByteArray> offeredOf(const QList<QByteArray>& names, const QSet<QByteArray>& offered)
{
    QList<QByteArray> found;
    for (const QByteArray& name : names) {
        if (offered.contains(name))
            found.append(name);
    }
    return found;
}

} // namespace

QList<QByteArray> ClipboardTargets::knownNames()
{
    return pngNames() + bitmapNames() + textNames() + QList<QByteArray>{kSecrecyHintTarget};
}

ClipboardTargets ClipboardTargets::choose(const QSet<QByteArray>& offered)
{
    ClipboardTargets targets;
    targets.png = offeredOf(pngNames(), offered);
    targets.bitmap = offeredOf(bitmapNames(), offered);
    targets.text = offeredOf(textNames(), offered);
    targets.hasSecrecyHint = offered.contains(kSecrecyHintTarget);
    return targets;
}

ClipboardTargets ClipboardTargets::unannounced()
{
    return choose({"UTF8_STRING", kLatin1TextTarget});
}

} // namespace tessary

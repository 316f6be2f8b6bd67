#include "platform/x11/ClipboardOffer.h"

#include <QString>

#include <algorithm>

namespace tessary {
namespace {

const QByteArray kUtf8("UTF8_STRING");
const QByteArray kLatin1("STRING");
const QByteArray kAnyText("TEXT");
const QByteArray kPng("image/png");

bool isAscii(const QByteArray& utf8)
{
    return std::all_of(utf8.begin(), utf8.end(), [](char byte) { return byte >= 0; });
}

} // namespace

std::shared_ptr<const ClipboardOffer> ClipboardOffer::text(QByteArray utf8)
{
    const std::shared_ptr<ClipboardOffer> offer(new ClipboardOffer);
    offer->m_utf8 = std::move(utf8);
    return offer;
}

std::shared_ptr<const ClipboardOffer> ClipboardOffer::image(std::shared_ptr<const PictureFile> picture)
{
    const std::shared_ptr<ClipboardOffer> offer(new ClipboardOffer);
    offer->m_picture = std::move(picture);
    return offer;
}

QList<QByteArray> ClipboardOffer::targets() const
{
    if (m_utf8)
        return {kUtf8, QByteArrayLiteral("text/plain;charset=utf-8"), QByteArrayLiteral("text/plain"),
                kLatin1, kAnyText};
    QList<QByteArray> names{m_picture->mimeType()};
    if (names.first() != kPng)
        names.append(kPng);
    return names;
}

std::optional<ClipboardOffer::Form> ClipboardOffer::form(const QByteArray& target) const
{
    if (!targets().contains(target))
        return std::nullopt;
    if (m_picture && target == m_picture->mimeType())
        return Form{target, OfferedBytes(m_picture)};
    if (m_picture)
        return Form{target, std::nullopt};
    if (target == kAnyText) // the owner chooses
        return Form{isAscii(*m_utf8) ? kLatin1 : kUtf8, OfferedBytes(*m_utf8)};
    if (target == kLatin1 && !isAscii(*m_utf8))
        return Form{target, OfferedBytes(QString::fromUtf8(*m_utf8).toLatin1())};
    return Form{target, OfferedBytes(*m_utf8)};
}

} // namespace tessary

#include "bench/tools/MessageCatalogue.h"

#include <QFile>
#include <QRegularExpression>
#include <QtEndian>

namespace tessary::bench {
namespace {

constexpr quint32 kMagic = 0x950412de;
constexpr qsizetype kCountAt = 8;
constexpr qsizetype kTranslationsAt = 16;
constexpr qsizetype kEntrySize = 8; // length and place

quint32 number(const QByteArray& data, qsizetype place)
{
    return place + 4 <= data.size() ? qFromLittleEndian<quint32>(data.constData() + place) : 0;
}

} // namespace

QStringList translatedMessages(const QString& path)
{
    static const QRegularExpression marks(QStringLiteral("[%<>\\\\{}|@$]|^Project-Id|\\(_\\w\\)"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray data = file.readAll();
    if (number(data, 0) != kMagic)
        return {};
    QStringList messages;
    const auto table = static_cast<qsizetype>(number(data, kTranslationsAt));
    for (qsizetype i = 0; i < static_cast<qsizetype>(number(data, kCountAt)); ++i) {
        const auto length = static_cast<qsizetype>(number(data, table + i * kEntrySize));
        const auto start = static_cast<qsizetype>(number(data, table + i * kEntrySize + 4));
        const QString message = QString::fromUtf8(data.mid(start, length).split('\0').first()).simplified();
        if (!marks.match(message).hasMatch())
            messages.append(message);
    }
    return messages;
}

} // namespace tessary::bench

#include "bench/recognition/PictureSet.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <stdexcept>

namespace tessary::bench {
namespace {

constexpr QLatin1String kFile("file");
constexpr QLatin1String kHalf("half");
constexpr QLatin1String kGroup("group");
constexpr QLatin1String kDetail("detail");
constexpr QLatin1String kTruth("truth");

QString listIn(const QString& folder)
{
    return folder + QStringLiteral("/set.json");
}

} // namespace

void writePictureSet(const QString& folder, const QList<PictureEntry>& entries)
{
    QJsonArray list;
    for (const PictureEntry& entry : entries)
        list.append(QJsonObject{{kFile, entry.file},
                                {kHalf, entry.half},
                                {kGroup, entry.group},
                                {kDetail, entry.detail},
                                {kTruth, entry.truth}});
    QFile file(listIn(folder));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(list).toJson()) < 0)
        throw std::runtime_error("cannot write " + file.fileName().toStdString());
}

QList<PictureEntry> readPictureSet(const QString& folder)
{
    QFile file(listIn(folder));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + file.fileName().toStdString());
    QList<PictureEntry> entries;
    const QJsonArray list = QJsonDocument::fromJson(file.readAll()).array();
    for (const auto& value : list) {
        const QJsonObject entry = value.toObject();
        entries.append({entry.value(kFile).toString(), entry.value(kHalf).toString(),
                        entry.value(kGroup).toString(), entry.value(kDetail).toString(),
                        entry.value(kTruth).toString()});
    }
    if (entries.isEmpty())
        throw std::runtime_error("no pictures in " + file.fileName().toStdString());
    return entries;
}

} // namespace tessary::bench

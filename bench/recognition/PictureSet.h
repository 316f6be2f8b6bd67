#pragma once

#include <QList>
#include <QString>

namespace tessary::bench {

/// One picture of the set.
struct PictureEntry {
    QString file;   ///< In the folder of the set.
    QString half;   ///< "tuning" or "reporting".
    QString group;  ///< "zh-Hans", "zh-Hant", "ja", "en", "mixed" or "scenes".
    QString detail; ///< Of scenes their name and script, such as "menu ja"; of mixed text its script.
    QString truth;
};

/// @throws std::runtime_error when the file cannot be written or read, or is not a set.
void writePictureSet(const QString& folder, const QList<PictureEntry>& entries);
[[nodiscard]] QList<PictureEntry> readPictureSet(const QString& folder);

} // namespace tessary::bench

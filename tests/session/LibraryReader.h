#pragma once

#include <QSet>
#include <QString>

#include <optional>
#include <vector>

namespace tessary::testing {

/// One row of the projection, as far as the tests look at it.
struct LibraryItem {
    QString id;
    QString contentHash;
    QString filename;
    QString originalPath;
    QString libraryPath;
    QString thumbnailPath;
    QString appName;
    QString bundleIdentifier;
    QString fileType;
    QString text;
    QString note;
    qint64 pixelWidth = 0;
    qint64 pixelHeight = 0;
    qint64 fileSize = 0;
    qint64 duplicateCount = 0;
    qint64 contentType = 0; ///< 0 image, 1 text
    double capturedAt = 0;  ///< Seconds since 1970.
    double lastUsedAt = 0;  ///< Seconds since 1970; 0 when absent.
    bool isFavorite = false;
    bool isPinned = false;
    bool isDeleted = false;
};

/// Reads the databases of a library that a running program writes, without ever changing them.
class LibraryReader {
public:
    /// `root` is the folder that holds both databases; they need not exist yet.
    explicit LibraryReader(QString root);

    /// All items, oldest first; empty while there is no database.
    [[nodiscard]] std::vector<LibraryItem> items() const;
    [[nodiscard]] std::vector<QString> texts() const;
    [[nodiscard]] std::optional<LibraryItem> text(const QString& text) const;
    [[nodiscard]] std::vector<LibraryItem> pictures() const;

    /// The ids in the projection, in its full-text table, and in the store of record.
    [[nodiscard]] QSet<QString> projectionIds() const;
    [[nodiscard]] QSet<QString> searchIds() const;
    [[nodiscard]] QSet<QString> recordIds() const;

private:
    QString m_root;
};

} // namespace tessary::testing

#pragma once

#include "store/AppPaths.h"

#include <QList>
#include <QStringList>
#include <QUuid>

namespace tessary {

/// Remembers on disk which items' files are being written, so that an import cut short by our death leaves
/// nothing behind. An entry is an empty hidden file in the library's root. All functions block on the disk
/// and may run on any threads, one at a time for each item.
class ImportJournal {
public:
    explicit ImportJournal(AppPaths paths) : m_paths(std::move(paths)) {}

    /// @throws FileError.
    void begin(const QUuid& id) const;
    void end(const QUuid& id) const;
    /// Removes whatever files the item may have, and its entry.
    void discard(const QUuid& id) const;

    /// Makes a name that a text can hold for a file whose own name is no text: a hidden temporary link, which
    /// the caller removes. @returns its path. @throws FileError.
    [[nodiscard]] QString linkTo(const QByteArray& target) const;

    /// What earlier runs had begun and not ended.
    [[nodiscard]] QList<QUuid> interrupted() const;
    /// Removes half-written temporaries beside the databases. Only before anything is written there.
    void sweepRoot() const;
    /// Removes half-written temporaries among the items' files. Only while nothing is imported.
    void sweepItemFolders() const;

private:
    [[nodiscard]] QString entryPath(const QUuid& id) const;

    AppPaths m_paths;
};

} // namespace tessary

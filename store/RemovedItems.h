#pragma once

#include <QList>
#include <QStringList>
#include <QUuid>

namespace tessary {

/// An item that is gone from the library, and the files that were its alone.
struct RemovedItem {
    QUuid id;
    QStringList files; ///< Original, thumbnail, icon; absent ones left out.
};

/// What one piece of removing did.
struct RemovedItems {
    QList<RemovedItem> items;
    bool isComplete = true; ///< Nothing is left that the same call would remove.
};

} // namespace tessary

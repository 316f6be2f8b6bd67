#pragma once

#include <QList>
#include <QMetaType>
#include <QUuid>

namespace tessary {

/// What happened to the library's content, for whoever follows it.
struct LibraryChange {
    enum class Kind {
        Opened,   ///< It can be asked for the first time.
        Added,    ///< Items are new.
        Repeated, ///< Content that was there already was captured again.
        Used,     ///< Items were copied back or pasted.
        Edited,   ///< Tags, notes or marks of items changed.
        Trashed,  ///< Items were moved to the trash.
        Removed,  ///< Items are gone for good.
        Cleared,  ///< Every item is gone for good.
    };

    Kind kind = Kind::Edited;
    QList<QUuid> items; ///< Empty where they are many or not known.
};

/// The name by which it is spoken of outside.
[[nodiscard]] QString rawValue(LibraryChange::Kind kind);

} // namespace tessary

Q_DECLARE_METATYPE(tessary::LibraryChange)

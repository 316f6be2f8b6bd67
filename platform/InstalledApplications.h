#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <qcoro/qcorotask.h>

namespace tessary {

/// A program that is installed, under the name by which items and settings know it.
struct InstalledApplication {
    QString bundleIdentifier; ///< As in RunningApplication.
    QString name;             ///< In the person's language.
    QUrl bundleURL;           ///< Where its icon is named.

    friend bool operator==(const InstalledApplication&, const InstalledApplication&) = default;
};

/// The programs that are installed. Main thread only; they are looked for elsewhere.
class InstalledApplications {
public:
    virtual ~InstalledApplications() = default;
    /// Those that the person can start from a menu, by name.
    [[nodiscard]] virtual QCoro::Task<QList<InstalledApplication>> all() = 0;
    /// Those of the identifiers that are installed, in their order, whether in menus or not.
    [[nodiscard]] virtual QCoro::Task<QList<InstalledApplication>> find(QStringList identifiers) = 0;
};

} // namespace tessary

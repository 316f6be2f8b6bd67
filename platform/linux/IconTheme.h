#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace tessary {

/// Finds icon files as the freedesktop icon-theme convention has it. One thread at a time; blocks on the
/// disk.
class IconTheme {
public:
    /// @param baseFolders the `icons` folders, most important first, each holding one folder per theme.
    /// @param unthemedFolders where icons outside any theme lie.
    /// @param name of the theme; Adwaita and hicolor stand behind it.
    IconTheme(QStringList baseFolders, QStringList unthemedFolders, QString name);

    /// The file whose nominal size comes nearest, in pixels at scale 1; empty when no theme has the icon.
    /// @param icon a name, with or without an extension, or an absolute path, which is returned when the file
    ///        exists.
    [[nodiscard]] QString find(const QString& icon, int size);

private:
    enum class Kind { Fixed, Scalable, Threshold };
    struct Folder {
        QString name;
        int size = 0;
        int scale = 1;
        int smallest = 0;
        int largest = 0;
        int threshold = 2;
        Kind kind = Kind::Threshold;

        /// 0 when made for that size; else how many pixels off.
        [[nodiscard]] int distance(int wanted) const;
    };
    struct Theme {
        QList<Folder> folders;
        QStringList parents;
    };

    [[nodiscard]] QString findInTheme(const QString& themeName, const QString& icon, int size,
                                      QStringList& visited);
    [[nodiscard]] QString nearest(const QString& themeName, const Theme& theme, const QString& icon,
                                  int size) const;
    [[nodiscard]] QString findUnthemed(const QString& icon) const;
    const Theme& theme(const QString& name);
    [[nodiscard]] static Theme read(const QString& indexFile);
    [[nodiscard]] static QString fileNamed(const QString& folder, const QString& icon);

    QStringList m_baseFolders;
    QStringList m_unthemedFolders;
    QString m_name;
    QHash<QString, Theme> m_themes;
};

} // namespace tessary

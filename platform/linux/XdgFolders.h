#pragma once

#include "platform/StandardFolders.h"

#include <QByteArray>
#include <QStringList>

namespace tessary {

/// The folders of the XDG base-directory and user-directory conventions, read from the environment at each
/// call. Relative values count as absent, as the conventions ask. Looks at the disk, briefly.
class XdgFolders : public StandardFolders {
public:
    /// $XDG_DATA_HOME, else .local/share at home.
    [[nodiscard]] QString applicationSupport() const override;
    /// As the user-directories file says; without a word from it, `Desktop` at home. Empty
    /// when the file switches it off by naming the home folder.
    [[nodiscard]] QString desktop() const override;

    /// $XDG_CONFIG_HOME, else .config at home. @throws FileError when the person has no usable home.
    [[nodiscard]] QString configuration() const;
    /// The same as `desktop`, for pictures.
    [[nodiscard]] QString pictures() const;
    /// Where programs' shared data lies, the person's own folder first.
    [[nodiscard]] QStringList dataFolders() const;
    /// Where programs' settings for everybody lie.
    [[nodiscard]] QStringList sharedConfigurationFolders() const;
    /// $HOME, else the user database's entry, whether or not it is there; empty without either.
    [[nodiscard]] QString home() const;

private:
    [[nodiscard]] QString folder(const char* variable, const QString& belowHome) const;
    /// The absolute ones among the folders that a variable lists; those usual when it is empty.
    [[nodiscard]] static QStringList listedFolders(const char* variable, const QString& usual);
    [[nodiscard]] QString userFolder(const QByteArray& key, const QString& usualName) const;
};

} // namespace tessary

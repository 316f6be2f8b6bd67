#pragma once

#include "base/SerialLane.h"
#include "platform/LoginItem.h"
#include "platform/linux/XdgFolders.h"

#include <optional>

namespace tessary {

/// The entry by which the desktop starts this program at login: a desktop file in the person's autostart
/// folder, which also shadows one of that name that was installed for everybody.
class AutostartEntry : public LoginItem {
public:
    /// @param identifier of the desktop file, without ".desktop". @param program absolute.
    AutostartEntry(const XdgFolders& folders, QString identifier, QString program);

    [[nodiscard]] QCoro::Task<bool> isEnabled() override;
    [[nodiscard]] QCoro::Task<> enable() override;
    [[nodiscard]] QCoro::Task<> disable() override;

    /// A desktop file that starts the program, whatever characters its path has.
    [[nodiscard]] static QByteArray contents(const QString& identifier, const QString& program);

private:
    [[nodiscard]] QString ownPath() const;
    [[nodiscard]] std::optional<QString> sharedPath() const;
    [[nodiscard]] bool isEnabledNow() const;
    void write(const QByteArray& bytes) const;
    void disableNow() const;

    const XdgFolders& m_folders;
    QString m_identifier;
    QString m_program;
    SerialLane m_lane;
};

} // namespace tessary

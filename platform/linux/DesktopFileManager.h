#pragma once

#include "base/SerialLane.h"
#include "platform/FileManager.h"
#include "platform/linux/OwnBusConnection.h"

#include <functional>

namespace tessary {

/// Asks the file manager on the session bus to select the file. Where none answers within ten seconds, the
/// folder is opened with the desktop's opener for files.
class DesktopFileManager : public FileManager {
public:
    /// Makes the mark by which the window system lets the file manager come to the front; empty when it
    /// cannot. Called on the lane.
    using StartupIdentifier = std::function<QString()>;

    /// @param busAddress of the bus with the file manager; empty means the session bus.
    explicit DesktopFileManager(StartupIdentifier startupIdentifier, const QString& busAddress = {});
    ~DesktopFileManager() override;

    [[nodiscard]] QCoro::Task<> reveal(QString path) override;

private:
    struct Request {
        QString folder;
        bool hasFile = false;
        bool hasBus = false;
        QString startupIdentifier;
    };

    [[nodiscard]] Request prepare(const QString& path);
    [[nodiscard]] QCoro::Task<bool> ask(QString method, QString path, QString startupIdentifier);

    StartupIdentifier m_startupIdentifier;
    OwnBusConnection m_connection;
    SerialLane m_lane;
};

} // namespace tessary

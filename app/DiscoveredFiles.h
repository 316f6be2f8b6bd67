#pragma once

#include "capture/FileFacts.h"
#include "capture/ScreenshotImporter.h"

#include <QByteArray>
#include <QHash>
#include <QSet>

#include <deque>
#include <memory>
#include <optional>

namespace tessary {

/// The files that were found in the screenshot folder, in the order of their imports: a bounded number at
/// once, and each path one at a time, however often it is reported. Main thread only.
class DiscoveredFiles {
public:
    struct Entry {
        QByteArray path;
        CountDuplicate countDuplicate = CountDuplicate::No;
    };

    explicit DiscoveredFiles(int mostAtOnce)
        : m_mostAtOnce(mostAtOnce),
          m_taken(std::make_shared<QHash<QByteArray, FileStamp>>())
    {
    }

    /// The same without those that wait or are being imported: only what was read is remembered, and
    /// what still will be.
    [[nodiscard]] DiscoveredFiles renewed() const;
    /// A path that waits already keeps its place; one that is being imported comes again afterwards.
    void add(const Entry& entry);
    /// The next to import, if there is one and not too many are being imported. To be `finish`ed.
    [[nodiscard]] std::optional<Entry> begin();
    /// @param stamp the state of the file that was read, when it was.
    void finish(const QByteArray& path, const std::optional<FileStamp>& stamp);
    /// Whether exactly this state of the file was read before.
    [[nodiscard]] bool isTaken(const QByteArray& path, const FileStamp& stamp) const;

private:
    int m_mostAtOnce;
    std::deque<Entry> m_waiting;
    QSet<QByteArray> m_waitingPaths;
    QHash<QByteArray, bool> m_running;                     // whether it was reported again
    std::shared_ptr<QHash<QByteArray, FileStamp>> m_taken; // with those that this was renewed from
};

} // namespace tessary

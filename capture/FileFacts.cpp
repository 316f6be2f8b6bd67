#include "capture/FileFacts.h"

#include <QFileInfo>

namespace tessary {

FileFacts factsOf(const QString& path)
{
    const auto dateOf = [](const QDateTime& time) {
        return time.isValid() ? std::optional(Date::fromDateTime(time)) : std::nullopt;
    };
    const QFileInfo file(path);
    return {dateOf(file.birthTime()), dateOf(file.lastModified()), file.exists() ? file.size() : -1};
}

qint64 fileSize(const QString& path)
{
    const QFileInfo file(path);
    return file.exists() ? file.size() : -1;
}

} // namespace tessary

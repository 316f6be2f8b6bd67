#pragma once

#include "base/SerialLane.h"
#include "capture/ImportJournal.h"
#include "capture/SourceApplicationSnapshot.h"
#include "platform/ApplicationIcons.h"
#include "platform/ImageCodec.h"

#include <qcoro/qcorotask.h>

namespace tessary {

/// Makes the pictures that belong to an item: its thumbnail and the icon of its program. Main thread only;
/// their names in the library are prescribed.
class ItemPictures {
public:
    ItemPictures(AppPaths paths, ImageCodec& imageCodec, ApplicationIcons& icons);

    /// Of a picture too big for the decoder, nothing. @param nominalPath for the error.
    /// @throws FileError (ReadCorruptFile) for what is no picture.
    [[nodiscard]] QCoro::Task<QSize> pixelSize(QString path, QString nominalPath);
    /// @returns where it is; nothing when it could not be made.
    [[nodiscard]] QCoro::Task<std::optional<QString>> createThumbnail(QString source, QUuid id);
    /// @returns where it is; nothing without a program, or when it could not be made.
    [[nodiscard]] QCoro::Task<std::optional<QString>>
    saveAppIcon(std::optional<SourceApplicationSnapshot> application, QUuid id);

private:
    AppPaths m_paths;
    ImageCodec& m_imageCodec;
    ApplicationIcons& m_icons;
    ImportJournal m_journal;
    SerialLane m_lane;
};

} // namespace tessary

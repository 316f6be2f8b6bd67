#include "capture/AcceptedImages.h"

namespace tessary {

const QStringList& acceptedImageExtensions()
{
    static const QStringList extensions{QStringLiteral("png"),  QStringLiteral("jpg"),
                                        QStringLiteral("jpeg"), QStringLiteral("heic"),
                                        QStringLiteral("tif"),  QStringLiteral("tiff")};
    return extensions;
}

} // namespace tessary

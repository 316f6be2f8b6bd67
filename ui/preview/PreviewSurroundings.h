#pragma once

#include "ui/kit/ImageLoader.h"
#include "ui/preview/PictureTiles.h"

namespace tessary {

class Theme;

/// What all preview windows share. Outlives them.
struct PreviewSurroundings {
    PreviewSurroundings(const Theme& windowTheme, ImageLoader imageLoader, ImagePartLoader imagePartLoader)
        : theme(windowTheme),
          loader(std::move(imageLoader)),
          partLoader(std::move(imagePartLoader))
    {
    }

    const Theme& theme;
    ImageLoader loader;
    ImagePartLoader partLoader;
    PictureTiles tiles;
    QString pictureFolder; ///< Where a picture was exported to last; empty at first.
    QString textFolder;
};

} // namespace tessary

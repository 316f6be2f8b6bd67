tessary_library(tessary_imagecache
    SOURCES
        DecodedImageCache.cpp
        DecodedImageCache.h
        FileImageCache.cpp
        FileImageCache.h
    USES tessary_platform)

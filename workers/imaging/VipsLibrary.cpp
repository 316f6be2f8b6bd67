#include "workers/imaging/VipsLibrary.h"

#include <vips/vips.h>

namespace tessary::imaging {
namespace {

/// Messages of the libraries may quote what is in a file, and nobody reads them.
GLogWriterOutput dropMessage(GLogLevelFlags, const GLogField*, gsize, gpointer)
{
    return G_LOG_WRITER_HANDLED;
}

void dropOldStyleMessage(const gchar*, GLogLevelFlags, const gchar*, gpointer) {}

void setEnvironment(const char* name, const char* value)
{
    qputenv(name, QByteArray(value));
}

} // namespace

bool startVips(const char* programName)
{
    g_log_set_writer_func(dropMessage, nullptr, nullptr);
    g_log_set_default_handler(dropOldStyleMessage, nullptr);
    // A progressive JPEG keeps all its coefficients in memory; beyond this libjpeg refuses.
    setEnvironment("JPEGMEM", "256M");
    // Larger than the address space: pictures never go to temporary files.
    setEnvironment("VIPS_DISC_THRESHOLD", "8g");
    if (vips_init(programName) != 0)
        return false;
    vips_concurrency_set(1);
    vips_cache_set_max(0);
    vips_operation_block_set("VipsForeignLoad", TRUE);
    allowFormats(AllowedFormats::Files);
    return true;
}

void allowFormats(AllowedFormats formats)
{
    for (const char* loader :
         {"VipsForeignLoadPng", "VipsForeignLoadJpeg", "VipsForeignLoadTiff", "VipsForeignLoadHeif"})
        vips_operation_block_set(loader, FALSE);
    vips_operation_block_set("VipsForeignLoadWebp", formats == AllowedFormats::Bitmaps ? FALSE : TRUE);
}

ImagingFailure vipsFailure()
{
    constexpr qsizetype kLongestDetail = 200;
    const QString detail = QString::fromUtf8(vips_error_buffer()).simplified().left(kLongestDetail);
    vips_error_clear();
    const auto says = [&](const char* text) {
        return detail.contains(QLatin1String(text), Qt::CaseInsensitive);
    };
    // The last is what libjpeg says when JPEGMEM is used up.
    const bool memory = says("memory") || says("allocat") || says("backing store");
    return ImagingFailure(memory ? ImagingFailure::Case::TooLarge : ImagingFailure::Case::NotAnImage, detail);
}

} // namespace tessary::imaging

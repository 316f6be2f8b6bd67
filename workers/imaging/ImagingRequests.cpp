#include "workers/imaging/ImagingRequests.h"

#include "workers/imaging/BitmapReader.h"
#include "workers/imaging/ImageInput.h"
#include "workers/imaging/ImagingProtocol.h"
#include "workers/imaging/PictureConversion.h"
#include "workers/imaging/VipsLibrary.h"

#include <QCborValue>

#include <new>

namespace tessary::imaging {
namespace {

constexpr qint64 kLargestSide = 65535;    // of a JPEG
constexpr qint64 kFarthest = 10'000'000;  // pixel of any picture
constexpr qint64 kMostPixels = 1LL << 24; // of a part, scaled

QString pathOf(const QCborMap& request)
{
    const QString path = request.value(kPath).toString();
    if (path.isEmpty())
        throw ImagingFailure(ImagingFailure::Case::BadRequest, QStringLiteral("path"));
    return path;
}

int numberOf(const QCborMap& request, QLatin1String name, qint64 most)
{
    const qint64 number = request.value(name).toInteger(-1);
    if (number < 1 || number > most)
        throw ImagingFailure(ImagingFailure::Case::BadRequest, QString(name));
    return static_cast<int>(number);
}

QCborMap pixelSize(const QCborMap& request)
{
    const QSize size = ImageInput::fromFile(pathOf(request)).header().size;
    return {{kWidth, size.width()}, {kHeight, size.height()}};
}

QCborMap thumbnail(const QCborMap& request)
{
    const int quality = numberOf(request, kQuality, 100);
    const ImageInput input = ImageInput::fromFile(pathOf(request));
    const GObjectPointer<VipsImage> image =
        input.thumbnail(numberOf(request, kMaximumPixelSize, kLargestSide));
    return {{kBytes, toJpeg(image.get(), quality)}};
}

QCborMap replyWith(VipsImage* picture)
{
    const QImage image = toQImage(picture);
    const QByteArray bytes(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
    return {{kWidth, image.width()},
            {kHeight, image.height()},
            {kOpaque, !image.hasAlphaChannel()},
            {kBytes, bytes}};
}

QCborMap decode(const QCborMap& request)
{
    const ImageInput input = ImageInput::fromFile(pathOf(request));
    const GObjectPointer<VipsImage> picture =
        input.thumbnail(numberOf(request, kMaximumPixelSize, kLargestSide));
    return replyWith(picture.get());
}

QCborMap part(const QCborMap& request)
{
    const auto offset = [&request](QLatin1String name) {
        return int(std::clamp<qint64>(request.value(name).toInteger(-1), -1, kFarthest));
    };
    const QSize area(numberOf(request, kWidth, kFarthest), numberOf(request, kHeight, kFarthest));
    const QSize size(numberOf(request, kScaledWidth, area.width()),
                     numberOf(request, kScaledHeight, area.height()));
    if (qint64{size.width()} * size.height() > kMostPixels)
        throw ImagingFailure(ImagingFailure::Case::BadRequest, QStringLiteral("size"));
    const ImageInput input = ImageInput::fromFile(pathOf(request));
    const GObjectPointer<VipsImage> picture =
        input.part(QRect(QPoint(offset(kLeft), offset(kTop)), area), size);
    return replyWith(picture.get());
}

QCborMap png(QCborMap& request)
{
    QByteArray bytes = request.value(kBytes).toByteArray();
    // They may be a good part of the memory there is.
    request = QCborMap();
    if (isWindowsBitmap(bytes))
        return {{kBytes, toPng(readWindowsBitmap(std::move(bytes)))}};
    allowFormats(AllowedFormats::Bitmaps);
    const ImageInput input = ImageInput::fromBytes(std::move(bytes));
    // Turning needs the pixels in any order; otherwise they stream through.
    const bool upright = input.header().orientation == 1;
    const GObjectPointer<VipsImage> image =
        input.image(upright ? VIPS_ACCESS_SEQUENTIAL : VIPS_ACCESS_RANDOM);
    return {{kBytes, toPng(image.get())}};
}

QCborMap perform(QCborMap& request)
{
    allowFormats(AllowedFormats::Files);
    const QString operation = request.value(kOperation).toString();
    if (operation == kPixelSize)
        return pixelSize(request);
    if (operation == kThumbnail)
        return thumbnail(request);
    if (operation == kDecode)
        return decode(request);
    if (operation == kPart)
        return part(request);
    if (operation == kPng)
        return png(request);
    throw ImagingFailure(ImagingFailure::Case::BadRequest, QStringLiteral("operation"));
}

QLatin1String wordFor(ImagingFailure::Case which)
{
    switch (which) {
    case ImagingFailure::Case::TooLarge:
        return kTooLarge;
    case ImagingFailure::Case::BadRequest:
        return kBadRequest;
    case ImagingFailure::Case::NotAnImage:
        break;
    }
    return kNotAnImage;
}

} // namespace

QCborMap answerImagingRequest(QCborMap& request)
{
    try {
        return perform(request);
    } catch (const ImagingFailure& failure) {
        return {{kError, wordFor(failure.which())}, {kDetail, failure.localizedDescription()}};
    } catch (const std::bad_alloc&) {
        return {{kError, kTooLarge}, {kDetail, QStringLiteral("no memory")}};
    }
}

} // namespace tessary::imaging

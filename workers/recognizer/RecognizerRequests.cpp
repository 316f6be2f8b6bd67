#include "workers/recognizer/RecognizerRequests.h"

#include "workers/recognizer/PictureReader.h"
#include "workers/recognizer/RecognizerFailure.h"
#include "workers/recognizer/RecognizerProtocol.h"

#include <QCborArray>
#include <QCborValue>

#include <new>

namespace tessary::recognizer {
namespace {

using Case = RecognizerFailure::Case;

/// A picture with the bytes that it needs.
struct HeldPicture {
    QByteArray bytes;
    PictureView view;
};

HeldPicture pictureOf(const QCborMap& request)
{
    const qint64 width = request.value(kWidth).toInteger();
    const qint64 height = request.value(kHeight).toInteger();
    if (width < 1 || height < 1)
        throw RecognizerFailure(Case::BadRequest, QStringLiteral("size"));
    if (width > kLongestSide || height > kLongestSide || width * height > kMostPixels)
        throw RecognizerFailure(Case::TooLarge, QStringLiteral("%1 x %2").arg(width).arg(height));
    QByteArray bytes = request.value(kPixels).toByteArray();
    if (bytes.size() != width * height * qint64{sizeof(quint32)})
        throw RecognizerFailure(Case::BadRequest, QStringLiteral("pixels"));
    const auto* pixels = reinterpret_cast<const quint32*>(bytes.constData());
    return {std::move(bytes), {pixels, int(width), int(height)}};
}

QStringList languagesOf(const QCborMap& request)
{
    QStringList languages;
    const QCborArray tags = request.value(kLanguages).toArray();
    for (const auto& tag : tags)
        languages.append(tag.toString());
    return languages;
}

QCborMap perform(EngineSet& engines, QCborMap& request)
{
    const HeldPicture picture = pictureOf(request);
    const QList<Script> scripts = scriptsOf(languagesOf(request));
    const Effort effort = request.value(kFast).toBool() ? Effort::Fast : Effort::Accurate;
    engines.setCorrection(request.value(kCorrection).toBool(true));
    request = QCborMap();
    if (scripts.isEmpty())
        throw RecognizerFailure(Case::BadRequest, QStringLiteral("languages"));
    QCborArray lines;
    PictureReader reader(engines);
    for (const ReadLine& line : reader.read(picture.view, scripts, effort))
        lines.append(QCborMap{{kText, line.text},
                              {kConfidence, line.confidence},
                              {kLeft, line.box.left()},
                              {kTop, line.box.top()},
                              {kWidth, line.box.width()},
                              {kHeight, line.box.height()}});
    return {{kLines, lines}};
}

QLatin1String wordFor(Case which)
{
    switch (which) {
    case Case::ModelsMissing:
        return kModelsMissing;
    case Case::TooLarge:
        return kTooLarge;
    case Case::BadRequest:
        break;
    }
    return kBadRequest;
}

} // namespace

QCborMap answerRecognizerRequest(EngineSet& engines, QCborMap& request)
{
    try {
        return perform(engines, request);
    } catch (const RecognizerFailure& failure) {
        return {{kError, wordFor(failure.which())}, {kDetail, failure.localizedDescription()}};
    } catch (const std::bad_alloc&) {
        return {{kError, kTooLarge}, {kDetail, QStringLiteral("no memory")}};
    }
}

} // namespace tessary::recognizer

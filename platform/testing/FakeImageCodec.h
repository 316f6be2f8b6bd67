#pragma once

#include "base/AtomicFile.h"
#include "platform/ImageCodec.h"
#include "platform/testing/NextTurn.h"

#include <QBuffer>
#include <QHash>
#include <QStringList>

#include <coroutine>
#include <vector>

namespace tessary::testing {

/// A gate that coroutines wait at while it is closed. One thread.
class Gate {
public:
    void close() { m_open = false; }
    /// Lets everybody through, those waiting in the order they came.
    void open()
    {
        m_open = true;
        for (const std::coroutine_handle<> handle : std::exchange(m_waiting, {}))
            handle.resume();
    }
    [[nodiscard]] qsizetype waitingCount() const { return qsizetype(m_waiting.size()); }

    struct Passage {
        Gate* gate;
        [[nodiscard]] bool await_ready() const noexcept { return gate->m_open; }
        void await_suspend(std::coroutine_handle<> handle) { gate->m_waiting.push_back(handle); }
        void await_resume() const noexcept {}
    };
    /// To be awaited at once.
    [[nodiscard]] Passage passed() { return {this}; }

private:
    bool m_open = true;
    std::vector<std::coroutine_handle<>> m_waiting;
};

/// Pretends to read pictures. Answers through the event loop as the real one does, and while `gate` is
/// closed not at all, so that a test decides when an answer comes. Main thread.
class FakeImageCodec : public ImageCodec {
public:
    /// Sizes by path; others have `defaultSize`. An invalid size makes the file "not an image".
    QHash<QString, QSize> sizes;
    QSize defaultSize{4, 3};
    /// Makes every request of that kind fail while it is set.
    std::optional<ImageError::Case> pixelSizeFailure;
    std::optional<ImageError::Case> thumbnailFailure;
    std::optional<ImageError::Case> decodeFailure;
    std::optional<ImageError::Case> pngFailure;
    /// The PNG made of any bitmap; empty: a tiny valid one.
    QByteArray png;
    QColor colour = Qt::red;
    Gate gate;
    /// What was asked, as "operation argument", in order.
    QStringList requests;

    QCoro::Task<QSize> pixelSize(QString path) override
    {
        co_await begin(QStringLiteral("pixelSize ") + path, pixelSizeFailure);
        co_return sizeOf(path);
    }

    /// Writes a real JPEG of at most `maximumPixelSize`.
    QCoro::Task<> writeThumbnail(QString source, QString destination, int maximumPixelSize,
                                 double quality) override
    {
        co_await begin(QStringLiteral("writeThumbnail ") + source, thumbnailFailure);
        const QByteArray jpeg = encoded(picture(source, maximumPixelSize), "jpeg", int(quality * 100));
        try {
            writeFileAtomically(destination, jpeg, Durability::Process);
        } catch (const FileError&) {
            throw ImageError(ImageError::Case::WriteFailed);
        }
    }

    QCoro::Task<QImage> decode(QString path, int maximumPixelSize) override
    {
        co_await begin(QStringLiteral("decode ") + path, decodeFailure);
        co_return picture(path, maximumPixelSize);
    }

    QCoro::Task<QImage> decodePart(QString path, QRect part, QSize size) override
    {
        const QString place = QStringLiteral("%1,%2 %3x%4 as %5x%6")
                                  .arg(part.x())
                                  .arg(part.y())
                                  .arg(part.width())
                                  .arg(part.height())
                                  .arg(size.width())
                                  .arg(size.height());
        co_await begin(QStringLiteral("decodePart %1 %2").arg(path, place), decodeFailure);
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        co_return image;
    }

    QCoro::Task<QByteArray> pngFromBitmap(QByteArray bitmap) override
    {
        co_await begin(QStringLiteral("pngFromBitmap ") + QString::number(bitmap.size()), pngFailure);
        co_return png.isEmpty() ? encoded(picture({}, defaultSize.width()), "png", -1) : png;
    }

private:
    QCoro::Task<> begin(QString request, std::optional<ImageError::Case>& failure)
    {
        requests.append(request);
        co_await NextTurn();
        co_await gate.passed();
        if (failure)
            throw ImageError(*failure);
    }

    [[nodiscard]] QSize sizeOf(const QString& path) const
    {
        const QSize size = sizes.value(path, defaultSize);
        if (!size.isValid())
            throw ImageError(ImageError::Case::NotAnImage);
        return size;
    }

    [[nodiscard]] QImage picture(const QString& path, int maximumPixelSize) const
    {
        QSize size = sizeOf(path);
        if (std::max(size.width(), size.height()) > maximumPixelSize)
            size =
                size.scaled(maximumPixelSize, maximumPixelSize, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        return image;
    }

    [[nodiscard]] static QByteArray encoded(const QImage& image, const char* format, int quality)
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, format, quality);
        return bytes;
    }
};

} // namespace tessary::testing

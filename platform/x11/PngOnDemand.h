#pragma once

#include "platform/x11/ClipboardOffer.h"
#include "platform/x11/X11EventLoop.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tessary {

/// Has a PNG made of an offered picture when somebody asks for one: once for all who ask at the same time,
/// and kept for a while for those who ask after them. On the event loop's thread.
class PngOnDemand {
public:
    using Picture = std::shared_ptr<const PictureFile>;
    /// Called on the loop's thread; calls back exactly once, on any thread, with nothing on failure.
    using Maker = std::function<void(const Picture&, std::function<void(QByteArray)>)>;
    using Receiver = std::function<void(std::optional<OfferedBytes>)>;

    PngOnDemand(X11EventLoop& loop, Maker maker) : m_loop(loop), m_maker(std::move(maker)) {}

    void request(const Picture& picture, Receiver receiver);

private:
    struct Made {
        Picture picture;
        std::optional<OfferedBytes> png; ///< Nothing while it is being made.
        std::vector<Receiver> waiting;
        X11EventLoop::TimerId end = 0;
    };

    [[nodiscard]] Made* find(const Picture& picture);
    void arrived(const Picture& picture, const QByteArray& png);
    void keepForAWhile(Made& made);
    void forget(const Picture& picture);

    X11EventLoop& m_loop;
    Maker m_maker;
    std::vector<std::unique_ptr<Made>> m_made;
};

} // namespace tessary

#include "platform/x11/PngOnDemand.h"

#include <algorithm>

namespace tessary {
namespace {

/// Our own clipboard history asks at once, the program that is pasted into half a second later.
constexpr std::chrono::seconds kKept{10};

} // namespace

void PngOnDemand::request(const Picture& picture, Receiver receiver)
{
    if (Made* made = find(picture)) {
        if (!made->png) {
            made->waiting.push_back(std::move(receiver));
            return;
        }
        keepForAWhile(*made);
        return receiver(made->png);
    }
    m_made.push_back(std::make_unique<Made>());
    m_made.back()->picture = picture;
    m_made.back()->waiting.push_back(std::move(receiver));
    m_maker(picture, [this, picture](const QByteArray& png) {
        m_loop.post([this, picture, png] { arrived(picture, png); });
    });
}

PngOnDemand::Made* PngOnDemand::find(const Picture& picture)
{
    const auto found = std::find_if(m_made.begin(), m_made.end(),
                                    [&picture](const auto& made) { return made->picture == picture; });
    return found == m_made.end() ? nullptr : found->get();
}

void PngOnDemand::arrived(const Picture& picture, const QByteArray& png)
{
    Made* made = find(picture);
    if (made == nullptr)
        return;
    const std::vector<Receiver> waiting = std::move(made->waiting);
    std::optional<OfferedBytes> bytes;
    if (!png.isEmpty()) {
        bytes.emplace(png);
        made->png = bytes;
        keepForAWhile(*made);
    } else {
        forget(picture);
    }
    for (const Receiver& receiver : waiting)
        receiver(bytes);
}

void PngOnDemand::keepForAWhile(Made& made)
{
    m_loop.cancel(made.end);
    made.end = m_loop.runAt(std::chrono::steady_clock::now() + kKept,
                            [this, picture = made.picture] { forget(picture); });
}

void PngOnDemand::forget(const Picture& picture)
{
    std::erase_if(m_made, [&picture](const auto& made) { return made->picture == picture; });
}

} // namespace tessary

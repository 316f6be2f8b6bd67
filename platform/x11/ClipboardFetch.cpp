#include "platform/x11/ClipboardFetch.h"

#include <QString>

namespace tessary {
namespace {

constexpr qint64 kMostTargetBytes = 256 * 1024;
constexpr qint64 kMostHintBytes = 4096;

QByteArray textFrom(const QByteArray& target, QByteArray bytes)
{
    // Some programs count the terminator of a C string as part of the text.
    while (bytes.endsWith('\0'))
        bytes.chop(1);
    return target == kLatin1TextTarget ? QString::fromLatin1(bytes).toUtf8() : bytes;
}

} // namespace

ClipboardFetch::ClipboardFetch(X11EventLoop& loop, xcb_timestamp_t time, const TransferLimits& limits,
                               Completion completion)
    : m_loop(loop),
      m_time(time),
      m_limits(limits),
      m_completion(std::move(completion))
{
    m_limits.mostBytes = kMostTargetBytes;
    request("TARGETS", [this, limits](const Answer& answer) {
        m_limits = limits;
        targetsArrived(answer);
    });
}

void ClipboardFetch::handleEvent(const xcb_generic_event_t& event)
{
    if (m_transfer)
        m_transfer->handleEvent(event);
}

void ClipboardFetch::ownerReplaced()
{
    m_isReplaced = true;
    if (m_transfer && !m_transfer->isAnswered())
        finish();
}

void ClipboardFetch::request(const QByteArray& target, std::function<void(Answer)> then)
{
    if (m_isReplaced)
        return finish();
    m_transfer = std::make_unique<SelectionTransfer>(m_loop, m_loop.atoms().atom("CLIPBOARD"), target, m_time,
                                                     m_limits, [this, then = std::move(then)](Answer answer) {
                                                         const std::unique_ptr<SelectionTransfer> finished =
                                                             std::move(m_transfer);
                                                         then(std::move(answer));
                                                     });
}

void ClipboardFetch::targetsArrived(const Answer& answer)
{
    if (answer.kind == Answer::Kind::Failed)
        return finish();
    const bool isAnnounced = answer.kind == Answer::Kind::Arrived && answer.format == 32;
    m_targets = isAnnounced ? targetsIn(answer) : ClipboardTargets::unannounced();
    if (!m_targets.hasSecrecyHint)
        return fetchImage();
    const qint64 most = std::exchange(m_limits.mostBytes, kMostHintBytes);
    request(kSecrecyHintTarget, [this, most](const Answer& hint) {
        m_limits.mostBytes = most;
        // An owner that offers the hint and does not tell it is taken for one that keeps a secret.
        const bool isSecret = hint.kind != Answer::Kind::Arrived || hint.bytes.startsWith("secret");
        isSecret ? finish() : fetchImage();
    });
}

ClipboardTargets ClipboardFetch::targetsIn(const Answer& answer) const
{
    QSet<QByteArray> offered;
    const auto* atoms = reinterpret_cast<const xcb_atom_t*>(answer.bytes.constData());
    const QSet<xcb_atom_t> present(atoms,
                                   atoms + answer.bytes.size() / static_cast<qsizetype>(sizeof(xcb_atom_t)));
    for (const QByteArray& name : ClipboardTargets::knownNames()) {
        if (present.contains(m_loop.atoms().atom(name)))
            offered.insert(name);
    }
    return ClipboardTargets::choose(offered);
}

void ClipboardFetch::fetchFirst(QList<QByteArray> targets, std::optional<QByteArray> ClipboardSnapshot::*slot,
                                Step next)
{
    if (targets.isEmpty())
        return (this->*next)();
    const QByteArray target = targets.takeFirst();
    request(target, [this, target, targets, slot, next](Answer answer) {
        if (answer.bytes.isEmpty())
            return fetchFirst(targets, slot, next);
        const bool isText = slot == &ClipboardSnapshot::text;
        m_snapshot.*slot = isText ? textFrom(target, std::move(answer.bytes)) : std::move(answer.bytes);
        (this->*next)();
    });
}

void ClipboardFetch::fetchImage()
{
    fetchFirst(m_targets.png, &ClipboardSnapshot::png, &ClipboardFetch::fetchBitmapUnlessPng);
}

void ClipboardFetch::fetchBitmapUnlessPng()
{
    if (m_snapshot.png)
        return finish();
    fetchFirst(m_targets.bitmap, &ClipboardSnapshot::bitmap, &ClipboardFetch::fetchText);
}

void ClipboardFetch::fetchText()
{
    fetchFirst(m_targets.text, &ClipboardSnapshot::text, &ClipboardFetch::finish);
}

void ClipboardFetch::finish()
{
    m_transfer.reset();
    if (const Completion completion = std::exchange(m_completion, nullptr))
        completion(std::move(m_snapshot)); // may be the end of this object
}

} // namespace tessary

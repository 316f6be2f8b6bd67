#include "platform/x11/SelectionServer.h"

#include "platform/x11/WindowProperties.h"
#include "platform/x11/XcbReply.h"

#include <algorithm>

namespace tessary {
namespace {

const QByteArray kClipboard("CLIPBOARD");
const QByteArray kTargets("TARGETS");
const QByteArray kTimestamp("TIMESTAMP");
const QByteArray kMultiple("MULTIPLE");
const QByteArray kSaveTargets("SAVE_TARGETS");

/// The server's time wraps around every 49 days.
bool isBefore(xcb_timestamp_t one, xcb_timestamp_t other)
{
    return static_cast<int32_t>(one - other) < 0;
}

} // namespace

SelectionServer::SelectionServer(const QByteArray& display, const OfferLimits& limits,
                                 PngOnDemand::Maker makePng)
    : m_limits(limits),
      m_loop("tessary.offer", display),
      m_window(createHiddenWindow(m_loop)),
      m_time(m_loop, m_window),
      m_png(m_loop, std::move(makePng)),
      m_handover(m_loop, m_window, limits.managerPatience, limits.managerLongest),
      m_reader(QStringLiteral("tessary.reading"))
{
    m_loop.atoms().prefetch({kClipboard, kTargets, kTimestamp, kMultiple, kSaveTargets, "ATOM_PAIR", "INCR",
                             "CLIPBOARD_MANAGER", "UTF8_STRING", "text/plain;charset=utf-8", "text/plain",
                             "TEXT", "image/png"});
    m_loop.addHandler([this](const xcb_generic_event_t& event) { handleEvent(event); });
    m_loop.setConnectionLostHandler([this] { connectionLost(); });
    m_loop.start();
}

SelectionServer::~SelectionServer()
{
    m_loop.stop();
    m_transfers.clear(); // while there is a loop to take their deadlines from
}

X11AsyncCall<bool> SelectionServer::claim(Offer offer, PasteboardReach reach)
{
    return X11AsyncCall<bool>(m_loop, [this, offer, reach](const X11AsyncCall<bool>::Done& done) {
        m_time.request([this, offer, reach, done](xcb_timestamp_t time) { take(offer, reach, time, done); });
    });
}

X11AsyncCall<bool> SelectionServer::handOver()
{
    return X11AsyncCall<bool>(m_loop, [this](const X11AsyncCall<bool>::Done& done) {
        m_time.request([this, done](xcb_timestamp_t time) {
            const auto held = m_held.find(m_loop.atoms().atom(kClipboard));
            if (held == m_held.end())
                return done(false);
            std::vector<xcb_atom_t> targets;
            for (const QByteArray& name : held->second.offer->targets())
                targets.push_back(m_loop.atoms().atom(name));
            m_handover.start(targets, time, done);
        });
    });
}

SelectionServer::Offer SelectionServer::ownOffer(xcb_window_t owner, xcb_timestamp_t time) const
{
    const std::scoped_lock lock(m_mutex);
    return owner == m_window && time == m_ownTime ? m_ownOffer : nullptr;
}

// --- owning -----------------------------------------------------------------

void SelectionServer::handleEvent(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_SELECTION_REQUEST:
        answer(reinterpret_cast<const Request&>(event));
        break;
    case XCB_SELECTION_CLEAR:
        cleared(reinterpret_cast<const xcb_selection_clear_event_t&>(event));
        break;
    default:
        break;
    }
    m_time.handleEvent(event);
    m_handover.handleEvent(event);
    // A copy: an event may end a transfer.
    const auto transfers = m_transfers;
    for (const auto& transfer : transfers)
        transfer->handleEvent(event);
}

void SelectionServer::connectionLost()
{
    m_time.connectionLost();
    m_handover.end(false);
    m_held.clear();
    m_transfers.clear();
    publish(nullptr, XCB_CURRENT_TIME);
}

void SelectionServer::take(const Offer& offer, PasteboardReach reach, xcb_timestamp_t time,
                           const std::function<void(bool)>& done)
{
    if (time == XCB_CURRENT_TIME)
        return done(false);
    // CLIPBOARD comes last: who sees it change finds the other one in place.
    if (reach == PasteboardReach::ClipboardAndSelection)
        (void)takeSelection(XCB_ATOM_PRIMARY, offer, time);
    publish(offer, time);
    const bool isOurs = takeSelection(m_loop.atoms().atom(kClipboard), offer, time);
    if (!isOurs)
        publish(nullptr, XCB_CURRENT_TIME);
    done(isOurs);
}

bool SelectionServer::takeSelection(xcb_atom_t selection, const Offer& offer, xcb_timestamp_t time)
{
    xcb_connection_t* x = m_loop.connection();
    xcb_set_selection_owner(x, m_window, selection, time);
    const XcbReply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, selection), nullptr));
    if (!owner || owner->owner != m_window)
        return false;
    m_held.insert_or_assign(selection, Held{offer, time});
    return true;
}

void SelectionServer::publish(const Offer& offer, xcb_timestamp_t time)
{
    const std::scoped_lock lock(m_mutex);
    m_ownOffer = offer;
    m_ownTime = time;
}

/// Transfers under way keep what they need.
void SelectionServer::cleared(const xcb_selection_clear_event_t& event)
{
    const auto held = m_held.find(event.selection);
    if (held == m_held.end() || isBefore(event.time, held->second.since))
        return;
    m_held.erase(held);
    if (event.selection == m_loop.atoms().atom(kClipboard))
        publish(nullptr, XCB_CURRENT_TIME);
}

// --- serving ----------------------------------------------------------------

void SelectionServer::answer(const Request& request)
{
    m_handover.noteProgress();
    const Held* held = heldAt(request.selection, request.time);
    if (held == nullptr)
        return notify(request, XCB_ATOM_NONE);
    if (request.target == m_loop.atoms().atom(kMultiple))
        return answerMultiple(request, *held);
    // Programs from before 1988 name no property and mean that of the target's name.
    const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    convert(request, request.target, property, *held, [this, request, property](bool isConverted) {
        notify(request, isConverted ? property : xcb_atom_t{XCB_ATOM_NONE});
    });
}

/// A request from before we owned the selection means what somebody else offered.
const SelectionServer::Held* SelectionServer::heldAt(xcb_atom_t selection, xcb_timestamp_t time) const
{
    const auto held = m_held.find(selection);
    if (held == m_held.end() || (time != XCB_CURRENT_TIME && isBefore(time, held->second.since)))
        return nullptr;
    return &held->second;
}

/// A list of pairs of target and property; a pair that cannot be had gets no property in the answer.
struct SelectionServer::Conversion {
    Request request;
    std::vector<uint32_t> pairs;
    size_t open = 0; ///< Pairs that have not been decided.
};

void SelectionServer::answerMultiple(const Request& request, const Held& held)
{
    const xcb_atom_t pairType = m_loop.atoms().atom("ATOM_PAIR");
    const auto whole = std::make_shared<Conversion>();
    whole->request = request;
    whole->pairs = wordsProperty(m_loop.connection(), request.requestor, request.property, pairType);
    const size_t pairs = whole->pairs.size() / 2;
    if (request.property == XCB_ATOM_NONE || pairs == 0)
        return notify(request, XCB_ATOM_NONE);
    whole->open = pairs;
    for (size_t i = 0; i < pairs; ++i) {
        const xcb_atom_t target = whole->pairs[2 * i];
        const xcb_atom_t property = whole->pairs[2 * i + 1];
        const auto decided = [this, whole, i, pairType](bool isConverted) {
            if (!isConverted)
                whole->pairs[2 * i + 1] = XCB_ATOM_NONE;
            if (--whole->open > 0)
                return;
            setWords(whole->request.requestor, whole->request.property, pairType, whole->pairs);
            notify(whole->request, whole->request.property);
        };
        if (property == XCB_ATOM_NONE)
            decided(false);
        else
            convert(request, target, property, held, decided);
    }
}

void SelectionServer::convert(const Request& request, xcb_atom_t target, xcb_atom_t property,
                              const Held& held, const Converted& converted)
{
    AtomCache& atoms = m_loop.atoms();
    if (target == atoms.atom(kTargets)) {
        setWords(request.requestor, property, XCB_ATOM_ATOM, targetAtoms(*held.offer));
        return converted(true);
    }
    if (target == atoms.atom(kTimestamp)) {
        setWords(request.requestor, property, XCB_ATOM_INTEGER, {held.since});
        return converted(true);
    }
    if (target ==
        atoms.atom(kSaveTargets)) { // there is nothing to do for us; the manager asks whether we can
        setWords(request.requestor, property, atoms.atom("NULL"), {});
        return converted(true);
    }
    const std::optional<ClipboardOffer::Form> form = formOf(*held.offer, target);
    if (!form)
        return converted(false);
    if (form->bytes)
        return send(request, property, *form, converted);
    m_png.request(held.offer->picture(),
                  [this, request, property, form, converted](const std::optional<OfferedBytes>& png) {
                      if (!png)
                          return converted(false);
                      send(request, property, {form->type, png}, converted);
                  });
}

void SelectionServer::send(const Request& request, xcb_atom_t property, const ClipboardOffer::Form& form,
                           const Converted& converted)
{
    OutgoingTransfer::Callbacks callbacks;
    callbacks.placed = converted;
    callbacks.progressed = [this] { m_handover.noteProgress(); };
    const auto transfer = std::make_shared<OutgoingTransfer>(
        m_loop, m_reader,
        OutgoingTransfer::Destination{request.requestor, property, m_loop.atoms().atom(form.type)},
        *form.bytes, m_limits.patience, std::move(callbacks));
    transfer->onFinished([this, ended = transfer.get()] { transferEnded(ended); });
    m_transfers.push_back(transfer);
    transfer->start();
}

std::vector<xcb_atom_t> SelectionServer::targetAtoms(const ClipboardOffer& offer)
{
    std::vector<xcb_atom_t> atoms;
    for (const QByteArray& name :
         QList<QByteArray>{kTargets, kTimestamp, kMultiple, kSaveTargets} + offer.targets())
        atoms.push_back(m_loop.atoms().atom(name));
    return atoms;
}

/// By our own names, so that atoms which others invent are not looked up.
std::optional<ClipboardOffer::Form> SelectionServer::formOf(const ClipboardOffer& offer, xcb_atom_t target)
{
    for (const QByteArray& name : offer.targets()) {
        if (m_loop.atoms().atom(name) == target)
            return offer.form(name);
    }
    return std::nullopt;
}

void SelectionServer::notify(const Request& request, xcb_atom_t property)
{
    xcb_selection_notify_event_t event{};
    event.response_type = XCB_SELECTION_NOTIFY;
    event.time = request.time;
    event.requestor = request.requestor;
    event.selection = request.selection;
    event.target = request.target;
    event.property = property;
    // As long as the protocol wants it, which the structure already is.
    static_assert(sizeof(event) <= 32);
    std::array<char, 32> wire{};
    std::copy_n(reinterpret_cast<const char*>(&event), sizeof event, wire.data());
    xcb_send_event(m_loop.connection(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire.data());
}

void SelectionServer::transferEnded(const OutgoingTransfer* transfer)
{
    const xcb_window_t requestor = transfer->requestor();
    std::erase_if(m_transfers, [transfer](const auto& one) { return one.get() == transfer; });
    const bool isLast = std::none_of(m_transfers.begin(), m_transfers.end(),
                                     [requestor](const auto& one) { return one->requestor() == requestor; });
    if (!isLast)
        return;
    const uint32_t none = XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(m_loop.connection(), requestor, XCB_CW_EVENT_MASK, &none);
}

void SelectionServer::setWords(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                               const std::vector<uint32_t>& words)
{
    xcb_change_property(m_loop.connection(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<uint32_t>(words.size()), words.data());
}

} // namespace tessary

// A program that owns a selection and can be told to do it badly: see OwnerOptions.
// Prints "owning N" each time it has taken the selection (N from 1), then serves until it is ended.
#include "tests/session/clients/OwnerOptions.h"

#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>

namespace tessary::testing {

namespace {

using Clock = std::chrono::steady_clock;

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype([](Reply* reply) { std::free(reply); })>;

/// One incremental transfer under way.
struct Transfer {
    xcb_atom_t type;
    std::string bytes;
    std::size_t sent = 0;
    std::size_t pieces = 0;
};

class ClipboardOwner {
public:
    explicit ClipboardOwner(OwnerOptions options);
    ~ClipboardOwner() { xcb_disconnect(m_connection); }
    ClipboardOwner(const ClipboardOwner&) = delete;
    ClipboardOwner& operator=(const ClipboardOwner&) = delete;

    void run();

private:
    [[nodiscard]] xcb_atom_t atom(const std::string& name);
    void takeSelection();
    void waitForEvents();
    void handle(const xcb_generic_event_t& event);
    void answer(const xcb_selection_request_event_t& request);
    [[nodiscard]] bool write(const xcb_selection_request_event_t& request, xcb_atom_t property);
    void startTransfer(const xcb_selection_request_event_t& request, xcb_atom_t property, std::string bytes);
    void continueTransfer(xcb_window_t window, xcb_atom_t property);

    OwnerOptions m_options;
    xcb_connection_t* m_connection;
    xcb_window_t m_window = XCB_NONE;
    std::map<xcb_atom_t, std::string> m_offers;
    std::vector<xcb_atom_t> m_targets;
    std::map<std::pair<xcb_window_t, xcb_atom_t>, Transfer> m_transfers;
    int m_taken = 0;
    Clock::time_point m_firstTaken;
};

ClipboardOwner::ClipboardOwner(OwnerOptions options)
    : m_options(std::move(options)),
      m_connection(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(m_connection) != 0)
        throw std::runtime_error("no X display");
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    m_window = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    if (!m_options.seriesPrefix.empty())
        m_options.offers.emplace_back("UTF8_STRING", std::string());
    for (const auto& [target, bytes] : m_options.offers) {
        m_offers[atom(target)] = bytes;
        m_targets.push_back(atom(target));
    }
    m_targets.push_back(atom("TARGETS"));
}

xcb_atom_t ClipboardOwner::atom(const std::string& name)
{
    const auto cookie =
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
    if (!reply)
        throw std::runtime_error("no atom for " + name);
    return reply->atom;
}

void ClipboardOwner::takeSelection()
{
    ++m_taken;
    if (!m_options.seriesPrefix.empty())
        m_offers[atom("UTF8_STRING")] = m_options.seriesPrefix + std::to_string(m_taken);
    const xcb_atom_t selection = atom(m_options.selection);
    xcb_set_selection_owner(m_connection, m_window, selection, XCB_CURRENT_TIME);
    const Owned<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, selection), nullptr));
    if (m_taken == 1)
        m_firstTaken = Clock::now();
    // Others may have been quicker by the time of the answer; that is for the test to know.
    std::cout << "owning " << m_taken << std::endl;
    if (m_options.stopsItself)
        std::raise(SIGSTOP);
}

void ClipboardOwner::run()
{
    takeSelection();
    while (true) {
        if (m_options.quitAfter && Clock::now() >= m_firstTaken + *m_options.quitAfter)
            return;
        if (m_taken < m_options.seriesLength &&
            Clock::now() >= m_firstTaken + m_taken * m_options.seriesInterval)
            takeSelection();
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)})
            handle(*event);
        if (xcb_connection_has_error(m_connection) != 0)
            return;
        xcb_flush(m_connection);
        waitForEvents();
    }
}

void ClipboardOwner::waitForEvents()
{
    Clock::time_point until = Clock::now() + std::chrono::hours(1);
    if (m_options.quitAfter)
        until = std::min(until, m_firstTaken + *m_options.quitAfter);
    if (m_taken < m_options.seriesLength)
        until = std::min(until, m_firstTaken + m_taken * m_options.seriesInterval);
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now()).count();
    pollfd file{xcb_get_file_descriptor(m_connection), POLLIN, 0};
    ::poll(&file, 1, static_cast<int>(std::max<std::int64_t>(0, left)));
}

void ClipboardOwner::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_SELECTION_REQUEST:
        answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
        break;
    case XCB_PROPERTY_NOTIFY: {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.state == XCB_PROPERTY_DELETE)
            continueTransfer(change.window, change.atom);
        break;
    }
    default:
        break;
    }
}

void ClipboardOwner::answer(const xcb_selection_request_event_t& request)
{
    const xcb_atom_t property = request.property != XCB_NONE ? request.property : request.target;
    xcb_selection_notify_event_t reply{};
    reply.response_type = XCB_SELECTION_NOTIFY;
    reply.time = request.time;
    reply.requestor = request.requestor;
    reply.selection = request.selection;
    reply.target = request.target;
    reply.property = write(request, property) ? property : xcb_atom_t{XCB_NONE};
    char bytes[32] = {};
    std::memcpy(bytes, &reply, sizeof reply);
    xcb_send_event(m_connection, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, bytes);
    xcb_flush(m_connection);
    if (m_options.dieAfterPieces == 0U && m_transfers.contains({request.requestor, property}))
        ::_exit(3);
}

bool ClipboardOwner::write(const xcb_selection_request_event_t& request, xcb_atom_t property)
{
    if (request.target == atom("TARGETS")) {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, request.requestor, property, XCB_ATOM_ATOM,
                            32, static_cast<std::uint32_t>(m_targets.size()), m_targets.data());
        return true;
    }
    const auto offer = m_offers.find(request.target);
    if (offer == m_offers.end())
        return false;
    if (m_options.announcedSize || offer->second.size() > m_options.pieceSize) {
        startTransfer(request, property, offer->second);
        return true;
    }
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, request.requestor, property, request.target, 8,
                        static_cast<std::uint32_t>(offer->second.size()), offer->second.data());
    return true;
}

void ClipboardOwner::startTransfer(const xcb_selection_request_event_t& request, xcb_atom_t property,
                                   std::string bytes)
{
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection, request.requestor, XCB_CW_EVENT_MASK, &events);
    const std::uint32_t size = m_options.announcedSize.value_or(static_cast<std::uint32_t>(bytes.size()));
    m_transfers[{request.requestor, property}] = {request.target, std::move(bytes)};
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, request.requestor, property, atom("INCR"), 32, 1,
                        &size);
}

void ClipboardOwner::continueTransfer(xcb_window_t window, xcb_atom_t property)
{
    const auto found = m_transfers.find({window, property});
    if (found == m_transfers.end())
        return;
    Transfer& transfer = found->second;
    if (m_options.stallAfterPieces && transfer.pieces >= *m_options.stallAfterPieces)
        return;
    const std::size_t size = std::min(m_options.pieceSize, transfer.bytes.size() - transfer.sent);
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, property, transfer.type, 8,
                        static_cast<std::uint32_t>(size), transfer.bytes.data() + transfer.sent);
    xcb_flush(m_connection);
    transfer.sent += size;
    ++transfer.pieces;
    if (m_options.dieAfterPieces && transfer.pieces >= *m_options.dieAfterPieces)
        ::_exit(3);
    if (size == 0) // the empty piece was the end
        m_transfers.erase(found);
}

} // namespace

} // namespace tessary::testing

int main(int argc, char** argv)
{
    try {
        tessary::testing::ClipboardOwner owner(
            tessary::testing::parseOwnerOptions(std::vector<std::string>(argv + 1, argv + argc)));
        owner.run();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "clipboard_owner: " << error.what() << '\n';
        return 64;
    }
}

// clipboard_keeper [hang | TARGET FILE]: a clipboard manager, as desktops have one.
//
// Owns CLIPBOARD_MANAGER and prints "managing". When a program asks it to save, it fetches TARGET from
// CLIPBOARD into FILE, prints "saved N bytes" and tells the program. With "hang" it prints "asked" and does
// nothing more.
#include "tests/session/x11/Requestor.h"

#include "platform/x11/XcbReply.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <iostream>
#include <unistd.h>

namespace tessary::testing {

namespace {

xcb_atom_t atom(xcb_connection_t* x, const QByteArray& name)
{
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        x, xcb_intern_atom(x, 0, static_cast<uint16_t>(name.size()), name.constData()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_window_t own(xcb_connection_t* x, xcb_atom_t selection)
{
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(x)).data;
    const xcb_window_t window = xcb_generate_id(x);
    xcb_create_window(x, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(x, window, selection, XCB_CURRENT_TIME);
    xcb_flush(x);
    return window;
}

bool save(const QByteArray& target, const QString& path)
{
    Requestor requestor;
    const std::optional<Requestor::Value> value = requestor.paste(target);
    QFile file(path);
    if (!value || !file.open(QIODevice::WriteOnly) || file.write(value->bytes) != value->bytes.size())
        return false;
    std::cout << "saved " << value->bytes.size() << " bytes" << std::endl;
    return true;
}

void answer(xcb_connection_t* x, const xcb_selection_request_event_t& request, bool isSaved)
{
    std::array<char, 32> wire{};
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = isSaved ? request.property : xcb_atom_t{XCB_ATOM_NONE};
    std::copy_n(reinterpret_cast<const char*>(&notify), sizeof notify, wire.data());
    xcb_send_event(x, 0, request.requestor, 0, wire.data());
    xcb_flush(x);
}

int run(const QList<QByteArray>& arguments)
{
    xcb_connection_t* x = xcb_connect(nullptr, nullptr);
    const xcb_atom_t saveTargets = atom(x, "SAVE_TARGETS");
    own(x, atom(x, "CLIPBOARD_MANAGER"));
    atom(x, "SYNC_ONLY"); // an answer means that all before it was done
    std::cout << "managing" << std::endl;
    while (const XcbReply<xcb_generic_event_t> event{xcb_wait_for_event(x)}) {
        if ((event->response_type & 0x7f) != XCB_SELECTION_REQUEST)
            continue;
        const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(*event);
        if (arguments.value(0) == "hang") {
            std::cout << "asked" << std::endl;
            ::pause();
        }
        const bool isSaved =
            request.target == saveTargets && save(arguments.value(0), QFile::decodeName(arguments.value(1)));
        answer(x, request, isSaved);
    }
    return 0;
}

} // namespace

} // namespace tessary::testing

int main(int argc, char** argv)
{
    return tessary::testing::run(QList<QByteArray>(argv + 1, argv + argc));
}

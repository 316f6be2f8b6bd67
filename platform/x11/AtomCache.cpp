#include "platform/x11/AtomCache.h"

#include "platform/x11/XcbReply.h"

#include <utility>
#include <vector>

namespace tessary {
namespace {

/// Other programs choose the names of atoms, so their number has no bound but this one.
constexpr qsizetype kMaximumNames = 4096;

xcb_intern_atom_cookie_t request(xcb_connection_t* connection, const QByteArray& name)
{
    return xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.constData());
}

xcb_atom_t reply(xcb_connection_t* connection, xcb_intern_atom_cookie_t cookie)
{
    const XcbReply<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(connection, cookie, nullptr));
    return answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace

void AtomCache::prefetch(std::initializer_list<QByteArray> names)
{
    std::vector<std::pair<QByteArray, xcb_intern_atom_cookie_t>> asked;
    for (const QByteArray& name : names) {
        if (!m_atoms.contains(name))
            asked.emplace_back(name, request(m_connection, name));
    }
    for (const auto& [name, cookie] : asked)
        store(name, reply(m_connection, cookie));
}

xcb_atom_t AtomCache::atom(const QByteArray& name)
{
    if (const auto known = m_atoms.constFind(name); known != m_atoms.constEnd())
        return *known;
    const xcb_atom_t atom = reply(m_connection, request(m_connection, name));
    store(name, atom);
    return atom;
}

QByteArray AtomCache::name(xcb_atom_t atom)
{
    if (const auto known = m_names.constFind(atom); known != m_names.constEnd())
        return *known;
    const XcbReply<xcb_get_atom_name_reply_t> answer(
        xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, atom), nullptr));
    if (!answer)
        return {};
    QByteArray name(xcb_get_atom_name_name(answer.get()), xcb_get_atom_name_name_length(answer.get()));
    if (m_names.size() < kMaximumNames)
        m_names.insert(atom, name);
    return name;
}

void AtomCache::store(const QByteArray& name, xcb_atom_t atom)
{
    if (atom == XCB_ATOM_NONE || m_atoms.size() >= kMaximumNames)
        return;
    m_atoms.insert(name, atom);
    m_names.insert(atom, name);
}

} // namespace tessary

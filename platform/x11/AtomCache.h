#pragma once

#include <QByteArray>
#include <QHash>

#include <initializer_list>

#include <xcb/xcb.h>

namespace tessary {

/// Atoms by name and names by atom, each asked of the server once. One thread at a time.
class AtomCache {
public:
    explicit AtomCache(xcb_connection_t* connection) : m_connection(connection) {}

    /// Asks for all unknown ones in a single round trip.
    void prefetch(std::initializer_list<QByteArray> names);
    /// XCB_ATOM_NONE when the connection is gone. Blocks for a round trip the first time.
    [[nodiscard]] xcb_atom_t atom(const QByteArray& name);
    /// Empty for an atom that does not exist. Blocks for a round trip the first time. The bytes come from
    /// other programs: they may be anything.
    [[nodiscard]] QByteArray name(xcb_atom_t atom);

private:
    void store(const QByteArray& name, xcb_atom_t atom);

    xcb_connection_t* m_connection;
    QHash<QByteArray, xcb_atom_t> m_atoms;
    QHash<xcb_atom_t, QByteArray> m_names;
};

} // namespace tessary

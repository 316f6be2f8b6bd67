#pragma once

#include <QByteArray>
#include <QList>

#include <chrono>
#include <optional>

#include <xcb/xcb.h>

namespace tessary::testing {

/// A program that pastes, reduced to the bare protocol: one window on a connection of its own. Waits in
/// place, so whoever is asked has to answer from another thread or process.
class Requestor {
public:
    struct Value {
        QByteArray type;
        int format = 0;
        QByteArray bytes;
        bool wasIncremental = false;
    };

    Requestor();
    ~Requestor();
    Requestor(const Requestor&) = delete;
    Requestor& operator=(const Requestor&) = delete;

    /// Asks for CLIPBOARD and waits. @returns whether a property came, named after the target.
    [[nodiscard]] bool convert(const QByteArray& target, xcb_timestamp_t time = XCB_CURRENT_TIME,
                               const QByteArray& selection = "CLIPBOARD");
    /// Asks for several at once. @returns the properties that came, in the order asked; None for those
    /// refused.
    [[nodiscard]] std::optional<QList<QByteArray>> convertMultiple(const QList<QByteArray>& targets);
    /// Takes a property that came, piece by piece where it is announced so.
    [[nodiscard]] std::optional<Value> take(const QByteArray& property);
    /// Both of the above.
    [[nodiscard]] std::optional<Value> paste(const QByteArray& target,
                                             const QByteArray& selection = "CLIPBOARD");
    /// Takes the announcement of a large transfer and its first pieces, then nothing more.
    [[nodiscard]] bool takeFirstPieces(const QByteArray& target, int pieces);
    [[nodiscard]] QList<QByteArray> targets();
    /// Whether any program owns the selection.
    [[nodiscard]] bool isOwned(const QByteArray& selection);
    void destroyWindow();
    /// How many programs, this one included, follow the properties of its window: 1 or 2.
    [[nodiscard]] int watchers();
    /// What the server's clock says now.
    [[nodiscard]] xcb_timestamp_t serverTime();

private:
    [[nodiscard]] xcb_atom_t atom(const QByteArray& name);
    [[nodiscard]] QByteArray name(xcb_atom_t atom);
    [[nodiscard]] bool awaitNotify();
    [[nodiscard]] bool awaitNewValue(xcb_atom_t property);
    [[nodiscard]] std::optional<Value> readAndDelete(xcb_atom_t property);

    xcb_connection_t* m_connection;
    xcb_window_t m_window;
    xcb_atom_t m_answeredProperty = XCB_ATOM_NONE;
};

} // namespace tessary::testing

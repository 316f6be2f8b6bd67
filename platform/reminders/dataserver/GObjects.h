#pragma once

#include <glib-object.h>
#include <memory>

namespace tessary {

struct GObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
/// Owns one reference to an object of GLib.
template <typename Object>
using GObjectPointer = std::unique_ptr<Object, GObjectUnref>;

/// Takes the error that a call of GLib may set, and frees it.
class GErrorSlot {
public:
    GErrorSlot() = default;
    ~GErrorSlot() { g_clear_error(&m_error); }
    GErrorSlot(const GErrorSlot&) = delete;
    GErrorSlot& operator=(const GErrorSlot&) = delete;

    [[nodiscard]] GError** slot() { return &m_error; }
    [[nodiscard]] const GError* error() const { return m_error; }

private:
    GError* m_error = nullptr;
};

} // namespace tessary

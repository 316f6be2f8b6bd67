#pragma once

#include <glib-object.h>

#include <memory>

namespace tessary::imaging {

struct GObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
struct GFree {
    void operator()(gpointer memory) const { g_free(memory); }
};

/// Holds one reference to an object of a GObject library.
template <typename Object>
using GObjectPointer = std::unique_ptr<Object, GObjectUnref>;

/// Holds memory that a GLib library allocated.
template <typename Value>
using GMemory = std::unique_ptr<Value, GFree>;

} // namespace tessary::imaging

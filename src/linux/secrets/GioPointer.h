#pragma once

#include <glib-object.h>

#include <memory>

namespace lumora {

struct GObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference to a GObject.
template <typename Object>
using GioPointer = std::unique_ptr<Object, GObjectUnref>;

} // namespace lumora

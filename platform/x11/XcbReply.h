#pragma once

#include <cstdlib>
#include <memory>

namespace tessary {

struct XcbFree {
    void operator()(void* memory) const noexcept { std::free(memory); }
};

/// Owns what xcb hands out to be freed: a reply, an event, an error. Null when the request failed.
template <typename Reply>
using XcbReply = std::unique_ptr<Reply, XcbFree>;

} // namespace tessary

#include "base/FreedMemory.h"

#include <malloc.h>

namespace tessary {
namespace {

constexpr int kLargeBlock = 512 * 1024; // bytes; a fixed limit, which glibc would otherwise raise by itself
constexpr int kPools = 2;

} // namespace

void keepLittleFreedMemory()
{
    mallopt(M_MMAP_THRESHOLD, kLargeBlock);
    mallopt(M_TRIM_THRESHOLD, kLargeBlock);
    mallopt(M_ARENA_MAX, kPools);
}

void returnFreedMemory()
{
    malloc_trim(0);
}

} // namespace tessary

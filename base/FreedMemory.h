#pragma once

namespace tessary {

/// Sets the allocator up for a program that runs all day: large blocks go back to the system when they are
/// freed, and threads share their pools. Once, before there are other threads.
void keepLittleFreedMemory();

/// Hands memory that was freed back to the system. For the end of work that took tens of megabytes in small
/// pieces; takes milliseconds, on any thread but the main one.
void returnFreedMemory();

} // namespace tessary

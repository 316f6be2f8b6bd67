#pragma once

namespace tessary {

/// Our windows, as far as they must not be in a picture of the screen. Main thread only.
class OwnWindows {
public:
    virtual ~OwnWindows() = default;
    /// Takes those that are shown off the screen, until `restore`. @returns whether there were any.
    virtual bool withdraw() = 0;
    /// Brings them back as they were, without taking the keyboard from other programs.
    virtual void restore() = 0;
};

} // namespace tessary

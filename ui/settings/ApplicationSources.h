#pragma once

namespace tessary {

class ApplicationIcons;
class InstalledApplications;
class WindowPicker;

/// Where programs to exclude come from. All outlive the windows.
struct ApplicationSources {
    InstalledApplications& installed;
    ApplicationIcons& icons;
    WindowPicker& picker;
};

} // namespace tessary

#pragma once

#include "app/AppSettings.h"

namespace tessary {

class AppRuntime;

/// Does what follows from settings that another program has changed, as the settings window does for its own
/// changes. Main thread only; the runtime outlives it.
class RewrittenSettings : public QObject {
public:
    explicit RewrittenSettings(AppRuntime& runtime);

private:
    void follow(const AppSettings::Values& before);

    AppRuntime& m_runtime;
};

} // namespace tessary

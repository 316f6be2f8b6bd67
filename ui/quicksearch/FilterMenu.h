#pragma once

#include "search/ScreenshotScope.h"
#include "search/ScreenshotSort.h"
#include "ui/kit/Menu.h"

namespace tessary {

/// What a person calls that order.
[[nodiscard]] QString sortTitle(ScreenshotSort sort);

/// Scopes and sorts to choose from, the ones in force ticked.
class FilterMenu : public Menu {
    Q_OBJECT
public:
    FilterMenu(const Theme& theme, bool isTranslucent, ScreenshotScope scope, ScreenshotSort sort,
               QWidget* parent = nullptr);

Q_SIGNALS:
    void scopeChosen(tessary::ScreenshotScope scope);
    void sortChosen(tessary::ScreenshotSort sort);
};

} // namespace tessary

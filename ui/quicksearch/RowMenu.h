#pragma once

#include "store/ScreenshotRecord.h"
#include "ui/kit/Menu.h"

namespace tessary {

/// What can be done with one row.
class RowMenu : public Menu {
    Q_OBJECT
public:
    RowMenu(const Theme& theme, bool isTranslucent, const ScreenshotRecord& record,
            QWidget* parent = nullptr);

Q_SIGNALS:
    void copyRequested();
    void pasteRequested();
    void previewRequested();
    void revealRequested();
    void favoriteRequested();
    void pinRequested();
    void deletionRequested();
};

} // namespace tessary

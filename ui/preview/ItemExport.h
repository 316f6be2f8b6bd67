#pragma once

#include "app/ItemExporter.h"
#include "store/ScreenshotRecord.h"

#include <QObject>
#include <QPointer>

class QFileDialog;
class QWidget;

namespace tessary {

class AppRuntime;
class Sheet;
struct PreviewSurroundings;

/// Lets the person choose where an item goes, and writes it there. Main thread only.
class ItemExport : public QObject {
    Q_OBJECT
public:
    /// @param window what is asked over; owns this.
    ItemExport(AppRuntime& runtime, PreviewSurroundings& surroundings, QWidget& window);

    /// Once more while it asks does nothing.
    void begin(const ScreenshotRecord& record);

Q_SIGNALS:
    void done(const QString& path);
    /// In words for the person; it is in the runtime's last error too.
    void failed(const QString& message);

private:
    void write(const QString& path, ItemExporter::IfTaken ifTaken);
    void askToReplace(const QString& path);
    [[nodiscard]] QString& folder() const;

    AppRuntime& m_runtime;
    PreviewSurroundings& m_surroundings;
    QWidget& m_window;
    ScreenshotRecord m_record;
    QPointer<QFileDialog> m_dialog;
    QPointer<Sheet> m_sheet;
};

} // namespace tessary

#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QWidget;

namespace tessary {

class AppSettings;
class WindowEffects;

/// The windows that are in taskbars and switchers while the person wants the program to be seen there, and
/// nowhere but on the screen otherwise. The panel is none of them: it never is there. Main thread only.
class OrdinaryWindows : public QObject {
    Q_OBJECT
public:
    /// Both outlive this.
    OrdinaryWindows(const AppSettings& settings, WindowEffects& effects);

    /// Takes a window that was not shown yet, and lets go of it when it is destroyed.
    void add(QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply(const QWidget& window);
    void applyIfShown(const QWidget* window);
    void applyToAll();

    const AppSettings& m_settings;
    WindowEffects& m_effects;
    QList<QPointer<QWidget>> m_windows;
};

} // namespace tessary

#pragma once

#include <QList>
#include <QWidget>

namespace tessary {

class Hairline;
class Theme;
class ToolbarButton;

/// What can be done to the item. Where the labels have no room, all of them are left out.
class PreviewToolbar : public QWidget {
    Q_OBJECT
public:
    enum class Action { Copy, Reveal, Favorite, Pin, Export, Delete };

    explicit PreviewToolbar(const Theme& theme, QWidget* parent = nullptr);

    void setFavorite(bool isFavorite);
    void setPinned(bool isPinned);
    void setActionEnabled(Action action, bool isEnabled);
    [[nodiscard]] ToolbarButton& button(Action action) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void triggered(tessary::PreviewToolbar::Action action);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] int fullWidth() const;
    void layOut();

    const Theme& m_theme;
    QList<ToolbarButton*> m_buttons; // in the actions' order
    Hairline* m_line;
};

} // namespace tessary

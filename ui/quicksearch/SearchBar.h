#pragma once

#include <QWidget>

namespace tessary {

class SearchField;
class SymbolButton;
class Theme;

/// The panel's top: lens, search field, filter menu, pin and settings buttons.
class SearchBar : public QWidget {
    Q_OBJECT
public:
    explicit SearchBar(const Theme& theme, QWidget* parent = nullptr);

    [[nodiscard]] SearchField& field() const { return *m_field; }
    [[nodiscard]] SymbolButton& filterButton() const { return *m_filter; }
    /// What Tab leaves the bar from.
    [[nodiscard]] SymbolButton& lastButton() const { return *m_settings; }
    void setPinned(bool isPinned);

Q_SIGNALS:
    void filterRequested();
    void pinToggled(bool isPinned);
    void settingsRequested();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void applyTheme();

    const Theme& m_theme;
    SearchField* m_field;
    SymbolButton* m_filter;
    SymbolButton* m_pin;
    SymbolButton* m_settings;
};

} // namespace tessary
